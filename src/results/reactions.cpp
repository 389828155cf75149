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

using header::frame_words::ADD;
using header::frame_words::MUL;

constexpr int32_t FAILED = -1;

// What a component code asks for. Codes 1 to 3 are a stored component and 4
// the magnitude; any other code gives nothing, or, where `other_magnitude`,
// the magnitude as well.
enum class ASKED { COMPONENT, MAGNITUDE, NOTHING };

constexpr ASKED ASKED_BY(int32_t code, bool other_magnitude = false) {
  if (code >= 1 && code <= 3) return ASKED::COMPONENT;
  if (code == 4 || other_magnitude) return ASKED::MAGNITUDE;
  return ASKED::NOTHING;
}

// The word before the contact sections of force frame n: the element
// sections and the reactions of the boundary conditions lie ahead of them.
int64_t CONTACT_BASE(const header::HEADER_VARIABLES& h, int32_t step) {
  return ADD(ADD(header::FB(h, step), ELEMENT_FORCE_WORDS(h)), BOUNDARY_REACTION_WORDS(h));
}

// The word before component 1 of entry i of a contact section that starts
// `ahead` words (counted when flag 4 is set) behind the contact base.
int64_t ENTRY_WORD(const header::HEADER_VARIABLES& h, int32_t step, int64_t ahead, int32_t entry) {
  return ADD(ADD(CONTACT_BASE(h, step), MUL(h.OUTPUT_FLAGS[3], ahead)), 3 * int64_t{entry} - 3);
}

// The magnitude of three components, all in single precision: the sum of
// the squares is stored first and stays when its root cannot be taken.
void MAGNITUDE(const std::array<float, 3>& r, float& value, int32_t& status, std::string_view message) {
  const float sum = (r[0] * r[0] + r[1] * r[1]) + r[2] * r[2];
  value = sum;
  if (SQRT_ARG_OK(sum)) {
    value = std::sqrt(sum);
  } else {
    ERROR_HANDLING::ERROR3(true, ERROR_HANDLING::DATABASE_POSTPROCESSING, message);
    status = FAILED;
  }
}

// Components 1 to 3 behind `word`, each read on its own, into `r`. The
// first failure ends the reads with the components behind it unread.
bool READ_THREE(header::TIDE3_DATABASE_FILES& db, int64_t word, std::array<float, 3>& r, int32_t& status) {
  for (int64_t c = 1; c <= 3; ++c) {
    bool error = false;
    db.READIN(FORCE, ADD(word, c), r[static_cast<std::size_t>(c - 1)], error);
    status = error ? FAILED : 0;
    if (error) return false;
  }
  return true;
}

// The zero gap guide and pipe-in-pipe reactions read only what the code asks
// for: one word straight into the value, or the three through it for the
// magnitude, so that a failed read leaves the last component read there.
void CALCULATE_GUIDE_REACTION(header::TIDE3_DATABASE_FILES& db, int64_t word, int32_t code, bool other_magnitude,
                              float& value, int32_t& status, std::string_view message) {
  status = 0;
  switch (ASKED_BY(code, other_magnitude)) {
    case ASKED::COMPONENT: {
      bool error = false;
      db.READIN(FORCE, ADD(word, code), value, error);
      if (error) status = FAILED;
      return;
    }
    case ASKED::MAGNITUDE: {
      std::array<float, 3> r{};
      for (int64_t c = 1; c <= 3; ++c) {
        bool error = false;
        db.READIN(FORCE, ADD(word, c), value, error);
        if (error) {
          status = FAILED;
          return;
        }
        r[static_cast<std::size_t>(c - 1)] = value;
      }
      MAGNITUDE(r, value, status, message);
      return;
    }
    case ASKED::NOTHING:
      return;
  }
}

}  // namespace

void READ_CONTACT_REACTIONS(header::TIDE3_DATABASE_FILES& db, int32_t step, int32_t entry,
                            std::array<float, 3>& components, int32_t& status) {
  READ_THREE(db, ENTRY_WORD(db, step, 0, entry), components, status);
}

void CALCULATE_CONTACT_REACTIONS(header::TIDE3_DATABASE_FILES& db, int32_t step, int32_t entry, int32_t code,
                                 float& value, int32_t& status) {
  // All three are read whatever the code asks for.
  std::array<float, 3> r{};
  if (!READ_THREE(db, ENTRY_WORD(db, step, 0, entry), r, status)) return;
  switch (ASKED_BY(code, db.VERSION.ANY_OTHER_CODE_IS_MAGNITUDE)) {
    case ASKED::COMPONENT:
      value = r[static_cast<std::size_t>(code - 1)];
      return;
    case ASKED::MAGNITUDE:
      MAGNITUDE(r, value, status, "Invalid square root argument when calculating contact surface reaction.");
      return;
    case ASKED::NOTHING:
      return;
  }
}

void CALCULATE_ZG_GUIDE_REACTIONS(header::TIDE3_DATABASE_FILES& db, int32_t step, int32_t entry, int32_t code,
                                  float& value, int32_t& status) {
  // The zero gap guide section stands behind the guide surface section.
  CALCULATE_GUIDE_REACTION(db, ENTRY_WORD(db, step, GUIDE_REACTION_WORDS(db), entry), code,
                           db.VERSION.ANY_OTHER_CODE_IS_MAGNITUDE, value, status,
                           "Invalid square root argument when calculating guide reaction.");
}

void CALCULATE_PIP_REACTIONS(header::TIDE3_DATABASE_FILES& db, int32_t step, int32_t entry, int32_t code, float& value,
                             int32_t& status) {
  // The pipe-in-pipe section stands behind both guide sections.
  const int64_t ahead = ADD(GUIDE_REACTION_WORDS(db), ZERO_GAP_REACTION_WORDS(db));
  // Every format gives nothing here for a code other than 1 to 4.
  CALCULATE_GUIDE_REACTION(db, ENTRY_WORD(db, step, ahead, entry), code, false, value, status,
                           "Invalid square root argument when calculating the magnitude of the Pipe-In-Pipe reaction.");
}

}  // namespace tmrdar::results
