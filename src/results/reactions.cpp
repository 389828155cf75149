// The reactions of guide surfaces, zero gap guides and pipe-in-pipe
// connections: three components an entry in the contact sections of a force
// frame, and their magnitude.
#include <cmath>
#include <string_view>

#include "frame/base/error_handling.h"
#include "results/derived_results.h"
#include "results/frame_sections.h"

namespace tmrdar::results {

namespace {

using header::frame_words::add;
using header::frame_words::mul;

constexpr int32_t failed = -1;

// What a component code asks for. Codes 1 to 3 are a stored component and 4
// the magnitude; any other code gives nothing, or, where `other_magnitude`,
// the magnitude as well.
enum class Asked { component, magnitude, nothing };

constexpr Asked asked_by(int32_t code, bool other_magnitude = false) {
  if (code >= 1 && code <= 3) return Asked::component;
  if (code == 4 || other_magnitude) return Asked::magnitude;
  return Asked::nothing;
}

// The word before the contact sections of force frame n: the element
// sections and the reactions of the boundary conditions lie ahead of them.
int64_t contact_base(const header::HeaderVariables& h, int32_t step) {
  return add(add(header::fb(h, step), element_force_words(h)), boundary_reaction_words(h));
}

// The word before component 1 of entry i of a contact section that starts
// `ahead` words (counted when flag 4 is set) behind the contact base.
int64_t entry_word(const header::HeaderVariables& h, int32_t step, int64_t ahead, int32_t entry) {
  return add(add(contact_base(h, step), mul(h.output_flags[3], ahead)), 3 * int64_t{entry} - 3);
}

// The magnitude of three components, all in single precision: the sum of
// the squares is stored first and stays when its root cannot be taken.
void magnitude(const std::array<float, 3>& r, float& value, int32_t& status, std::string_view message) {
  const float sum = (r[0] * r[0] + r[1] * r[1]) + r[2] * r[2];
  value = sum;
  if (sqrt_arg_ok(sum)) {
    value = std::sqrt(sum);
  } else {
    error_handling::error3(true, error_handling::database_postprocessing, message);
    status = failed;
  }
}

// Components 1 to 3 behind `word`, each read on its own, into `r`. The
// first failure ends the reads with the components behind it unread.
bool read_three(header::FormatReader& db, int64_t word, std::array<float, 3>& r, int32_t& status) {
  for (int64_t c = 1; c <= 3; ++c) {
    bool error = false;
    db.readin(force, add(word, c), r[static_cast<std::size_t>(c - 1)], error);
    status = error ? failed : 0;
    if (error) return false;
  }
  return true;
}

// The zero gap guide and pipe-in-pipe reactions read only what the code asks
// for: one word straight into the value, or the three through it for the
// magnitude, so that a failed read leaves the last component read there.
void calculate_guide_reaction(header::FormatReader& db, int64_t word, int32_t code, bool other_magnitude,
                              float& value, int32_t& status, std::string_view message) {
  status = 0;
  switch (asked_by(code, other_magnitude)) {
    case Asked::component: {
      bool error = false;
      db.readin(force, add(word, code), value, error);
      if (error) status = failed;
      return;
    }
    case Asked::magnitude: {
      std::array<float, 3> r{};
      for (int64_t c = 1; c <= 3; ++c) {
        bool error = false;
        db.readin(force, add(word, c), value, error);
        if (error) {
          status = failed;
          return;
        }
        r[static_cast<std::size_t>(c - 1)] = value;
      }
      magnitude(r, value, status, message);
      return;
    }
    case Asked::nothing:
      return;
  }
}

}  // namespace

void read_contact_reactions(header::FormatReader& db, int32_t step, int32_t entry,
                            std::array<float, 3>& components, int32_t& status) {
  read_three(db, entry_word(db, step, 0, entry), components, status);
}

void calculate_contact_reactions(header::FormatReader& db, int32_t step, int32_t entry, int32_t code,
                                 float& value, int32_t& status) {
  // All three are read whatever the code asks for.
  std::array<float, 3> r{};
  if (!read_three(db, entry_word(db, step, 0, entry), r, status)) return;
  switch (asked_by(code, db.version.any_other_code_is_magnitude)) {
    case Asked::component:
      value = r[static_cast<std::size_t>(code - 1)];
      return;
    case Asked::magnitude:
      magnitude(r, value, status, "Invalid square root argument when calculating contact surface reaction.");
      return;
    case Asked::nothing:
      return;
  }
}

void calculate_zg_guide_reactions(header::FormatReader& db, int32_t step, int32_t entry, int32_t code,
                                  float& value, int32_t& status) {
  // The zero gap guide section stands behind the guide surface section.
  calculate_guide_reaction(db, entry_word(db, step, guide_reaction_words(db), entry), code,
                           db.version.any_other_code_is_magnitude, value, status,
                           "Invalid square root argument when calculating guide reaction.");
}

void calculate_pip_reactions(header::FormatReader& db, int32_t step, int32_t entry, int32_t code, float& value,
                             int32_t& status) {
  // The pipe-in-pipe section stands behind both guide sections.
  const int64_t ahead = add(guide_reaction_words(db), zero_gap_reaction_words(db));
  // Every format gives nothing here for a code other than 1 to 4.
  calculate_guide_reaction(db, entry_word(db, step, ahead, entry), code, false, value, status,
                           "Invalid square root argument when calculating the magnitude of the Pipe-In-Pipe reaction.");
}

}  // namespace tmrdar::results
