// Single stored results found by their place in a step's frames: element
// pressures and temperatures and the results of clash pairs; and the
// distance between two nodes at a step, from their displaced positions.
#include <cmath>
#include <cstddef>

#include "frame/base/error_handling.h"
#include "results/derived_results.h"
#include "results/frame_sections.h"
#include "results/letter_lookup.h"

namespace tmrdar::results {

namespace {

using header::frame_words::add;
using header::frame_words::mul;

constexpr int32_t failed = -1;

// One word of a frame straight into `value`, which a failed read leaves.
void read_word(header::FormatReader& db, int32_t file, int64_t word, float& value, int32_t& status) {
  bool error = false;
  db.readin(file, word, value, error);
  status = error ? failed : 0;
}

// The contact sections of a force frame that lie ahead of a later section,
// present under flag 4: guide surface, zero gap guide and pipe-in-pipe
// reactions, and the clashing forces where `with_clashes`.
int64_t contact_sections(const header::HeaderVariables& h, bool with_clashes) {
  int64_t words = add(add(guide_reaction_words(h), zero_gap_reaction_words(h)), pip_reaction_words(h));
  if (with_clashes) words = add(words, clash_force_words(h));
  return mul(words, h.output_flags[3]);
}

// The word before the first section behind the contact sections, when the
// element sections ahead of it take `element_words`.
int64_t behind_contact(const header::HeaderVariables& h, int32_t step, int64_t element_words, bool with_clashes) {
  const int64_t ahead = add(add(contact_sections(h, with_clashes), element_words), boundary_reaction_words(h));
  return add(ahead, header::fb(h, step));
}

// The words of the element sections ahead of the pressures: the ten of flags
// 5 to 14 and the temperatures under flag 15, each of K records. These two
// products are formed in 32-bit integer arithmetic, as the frame's writer
// forms them.
int64_t element_words_ahead_of_pressures(const header::HeaderVariables& h) {
  const auto k = static_cast<int32_t>(r3(h));
  int32_t f = 0;
  for (std::size_t i = 4; i < 14; ++i) {
    f = static_cast<int32_t>(static_cast<uint32_t>(f) + static_cast<uint32_t>(h.output_flags[i]));
  }
  const int32_t temperatures = times_32(times_32(h.output_flags[14], 8), k);
  const int32_t sections = times_32(times_32(f, 8), k);
  return add(temperatures, sections);
}

// The positions and the difference of the distance between two nodes. They
// are kept from one call to the next, one set for each format's reader, so a
// position that could not be read is the one read last time.
struct DistanceWork {
  std::array<float, 3> first{};
  std::array<float, 3> second{};
  std::array<float, 3> difference{};
};

DistanceWork& distance_work_of(const header::FormatReader& db) {
  static std::array<DistanceWork, header::format_versions.size() + 1> work{};
  for (std::size_t k = 0; k < header::format_versions.size(); ++k) {
    if (header::format_versions[k]->database_version == db.version.database_version) return work[k];
  }
  return work.back();
}

}  // namespace

void retrieve_element_pressures(header::FormatReader& db, int32_t step, int32_t element, int32_t location,
                                int32_t selector, float& value, int32_t& status) {
  status = 0;
  // The newest format tests the flag here too; the others read the word.
  if (db.version.pressure_flag_test && db.output_flags[15] != 1) {
    error_handling::error3(true, error_handling::database_postprocessing, "Database does not contain pressure data.");
    status = failed;
    return;
  }
  const int64_t k = selector == 0 ? 1 : selector;
  // Each element has 6 words: two pressures at each of its three locations.
  const int64_t entry = 6 * int64_t{element} + 2 * int64_t{location} - 8 + k;
  const int64_t word = add(behind_contact(db, step, element_words_ahead_of_pressures(db), true), entry);
  read_word(db, force, word, value, status);
}

void retrieve_element_temperature(header::FormatReader& db, int32_t step, int32_t element, int32_t location,
                                  float& value, int32_t& status) {
  status = 0;
  const int64_t entry = int64_t{location} + 3 * int64_t{element} - 3;
  const int64_t word = add(behind_contact(db, step, element_force_words(db), true), entry);
  read_word(db, force, word, value, status);
}

void retrieve_clashing_results(header::FormatReader& db, int32_t step, int32_t pair, int32_t code, float& value,
                               int32_t& status) {
  status = 0;
  const bool second_spelling = db.version.clash_codes_33_to_35;
  if (code == 1 || (second_spelling && code == 33)) {
    // Word i of the clashing section of the motion frame, behind the node
    // contact section.
    const int64_t section = add(add(add(ma(db, step), guide_words(db)), zero_gap_words(db)), contact_words(db));
    return read_word(db, motion, add(section, pair), value, status);
  }
  // The clashing forces stand behind the pipe-in-pipe reactions; the pair's
  // word is the one before its two, and codes 2 and 3 step onto them. The
  // formats without the second spelling add the code less 1, whatever it is.
  int64_t word = add(behind_contact(db, step, element_force_words(db), false), 2 * int64_t{pair} - 2);
  if (!second_spelling) {
    word = add(word, int64_t{code} - 1);
  } else if (code == 2 || code == 34) {
    word = add(word, 1);
  } else if (code == 3 || code == 35) {
    word = add(word, 2);
  }
  read_word(db, force, word, value, status);
}

void retrieve_distance_two_nodes(header::FormatReader& db, int32_t step, int32_t first_node,
                                 int32_t second_node, float& value, int32_t& status) {
  DistanceWork& w = distance_work_of(db);
  // Each read sets the outcome anew: only the last one's is reported, and
  // the distance is formed from whatever the positions hold.
  bool error = false;
  for (int32_t c = 1; c <= 3; ++c) {
    dabfnd(db, step, 0, first_node, c, 'D', w.first[static_cast<std::size_t>(c - 1)], error);
  }
  for (int32_t c = 1; c <= 3; ++c) {
    dabfnd(db, step, 0, second_node, c, 'D', w.second[static_cast<std::size_t>(c - 1)], error);
  }
  status = error ? failed : 0;
  for (std::size_t c = 0; c < 3; ++c) w.difference[c] = w.second[c] - w.first[c];
  const std::array<float, 3>& d = w.difference;
  value = std::sqrt((d[0] * d[0] + d[1] * d[1]) + d[2] * d[2]);
}

}  // namespace tmrdar::results
