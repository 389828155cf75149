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

using header::frame_words::ADD;
using header::frame_words::MUL;

constexpr int32_t FAILED = -1;

// One word of a frame straight into `value`, which a failed read leaves.
void READ_WORD(header::TIDE3_DATABASE_FILES& db, int32_t file, int64_t word, float& value, int32_t& status) {
  bool error = false;
  db.READIN(file, word, value, error);
  status = error ? FAILED : 0;
}

// The contact sections of a force frame that lie ahead of a later section,
// present under flag 4: guide surface, zero gap guide and pipe-in-pipe
// reactions, and the clashing forces where `with_clashes`.
int64_t CONTACT_SECTIONS(const header::HEADER_VARIABLES& h, bool with_clashes) {
  int64_t words = ADD(ADD(GUIDE_REACTION_WORDS(h), ZERO_GAP_REACTION_WORDS(h)), PIP_REACTION_WORDS(h));
  if (with_clashes) words = ADD(words, CLASH_FORCE_WORDS(h));
  return MUL(words, h.OUTPUT_FLAGS[3]);
}

// The word before the first section behind the contact sections, when the
// element sections ahead of it take `element_words`.
int64_t BEHIND_CONTACT(const header::HEADER_VARIABLES& h, int32_t step, int64_t element_words, bool with_clashes) {
  const int64_t ahead = ADD(ADD(CONTACT_SECTIONS(h, with_clashes), element_words), BOUNDARY_REACTION_WORDS(h));
  return ADD(ahead, header::FB(h, step));
}

// The words of the element sections ahead of the pressures: the ten of flags
// 5 to 14 and the temperatures under flag 15, each of K records. These two
// products are formed in 32-bit integer arithmetic, as the frame's writer
// forms them.
int64_t ELEMENT_WORDS_AHEAD_OF_PRESSURES(const header::HEADER_VARIABLES& h) {
  const auto k = static_cast<int32_t>(R3(h));
  int32_t f = 0;
  for (std::size_t i = 4; i < 14; ++i) {
    f = static_cast<int32_t>(static_cast<uint32_t>(f) + static_cast<uint32_t>(h.OUTPUT_FLAGS[i]));
  }
  const int32_t temperatures = TIMES_32(TIMES_32(h.OUTPUT_FLAGS[14], 8), k);
  const int32_t sections = TIMES_32(TIMES_32(f, 8), k);
  return ADD(temperatures, sections);
}

// The positions and the difference of the distance between two nodes. They
// are kept from one call to the next, one set for each format's reader, so a
// position that could not be read is the one read last time.
struct DISTANCE_WORK {
  std::array<float, 3> FIRST{};
  std::array<float, 3> SECOND{};
  std::array<float, 3> DIFFERENCE{};
};

DISTANCE_WORK& DISTANCE_WORK_OF(const header::TIDE3_DATABASE_FILES& db) {
  static std::array<DISTANCE_WORK, header::FORMAT_VERSIONS.size() + 1> work{};
  for (std::size_t k = 0; k < header::FORMAT_VERSIONS.size(); ++k) {
    if (header::FORMAT_VERSIONS[k]->DATABASE_VERSION == db.VERSION.DATABASE_VERSION) return work[k];
  }
  return work.back();
}

}  // namespace

void RETRIEVE_ELEMENT_PRESSURES(header::TIDE3_DATABASE_FILES& db, int32_t step, int32_t element, int32_t location,
                                int32_t selector, float& value, int32_t& status) {
  status = 0;
  // The newest format tests the flag here too; the others read the word.
  if (db.VERSION.PRESSURE_FLAG_TEST && db.OUTPUT_FLAGS[15] != 1) {
    ERROR_HANDLING::ERROR3(true, ERROR_HANDLING::DATABASE_POSTPROCESSING, "Database does not contain pressure data.");
    status = FAILED;
    return;
  }
  const int64_t k = selector == 0 ? 1 : selector;
  // Each element has 6 words: two pressures at each of its three locations.
  const int64_t entry = 6 * int64_t{element} + 2 * int64_t{location} - 8 + k;
  const int64_t word = ADD(BEHIND_CONTACT(db, step, ELEMENT_WORDS_AHEAD_OF_PRESSURES(db), true), entry);
  READ_WORD(db, FORCE, word, value, status);
}

void RETRIEVE_ELEMENT_TEMPERATURE(header::TIDE3_DATABASE_FILES& db, int32_t step, int32_t element, int32_t location,
                                  float& value, int32_t& status) {
  status = 0;
  const int64_t entry = int64_t{location} + 3 * int64_t{element} - 3;
  const int64_t word = ADD(BEHIND_CONTACT(db, step, ELEMENT_FORCE_WORDS(db), true), entry);
  READ_WORD(db, FORCE, word, value, status);
}

void RETRIEVE_CLASHING_RESULTS(header::TIDE3_DATABASE_FILES& db, int32_t step, int32_t pair, int32_t code, float& value,
                               int32_t& status) {
  status = 0;
  const bool second_spelling = db.VERSION.CLASH_CODES_33_TO_35;
  if (code == 1 || (second_spelling && code == 33)) {
    // Word i of the clashing section of the motion frame, behind the node
    // contact section.
    const int64_t section = ADD(ADD(ADD(MA(db, step), GUIDE_WORDS(db)), ZERO_GAP_WORDS(db)), CONTACT_WORDS(db));
    return READ_WORD(db, MOTION, ADD(section, pair), value, status);
  }
  // The clashing forces stand behind the pipe-in-pipe reactions; the pair's
  // word is the one before its two, and codes 2 and 3 step onto them. The
  // formats without the second spelling add the code less 1, whatever it is.
  int64_t word = ADD(BEHIND_CONTACT(db, step, ELEMENT_FORCE_WORDS(db), false), 2 * int64_t{pair} - 2);
  if (!second_spelling) {
    word = ADD(word, int64_t{code} - 1);
  } else if (code == 2 || code == 34) {
    word = ADD(word, 1);
  } else if (code == 3 || code == 35) {
    word = ADD(word, 2);
  }
  READ_WORD(db, FORCE, word, value, status);
}

void RETRIEVE_DISTANCE_TWO_NODES(header::TIDE3_DATABASE_FILES& db, int32_t step, int32_t first_node,
                                 int32_t second_node, float& value, int32_t& status) {
  DISTANCE_WORK& w = DISTANCE_WORK_OF(db);
  // Each read sets the outcome anew: only the last one's is reported, and
  // the distance is formed from whatever the positions hold.
  bool error = false;
  for (int32_t c = 1; c <= 3; ++c) {
    DABFND(db, step, 0, first_node, c, 'D', w.FIRST[static_cast<std::size_t>(c - 1)], error);
  }
  for (int32_t c = 1; c <= 3; ++c) {
    DABFND(db, step, 0, second_node, c, 'D', w.SECOND[static_cast<std::size_t>(c - 1)], error);
  }
  status = error ? FAILED : 0;
  for (std::size_t c = 0; c < 3; ++c) w.DIFFERENCE[c] = w.SECOND[c] - w.FIRST[c];
  const std::array<float, 3>& d = w.DIFFERENCE;
  value = std::sqrt((d[0] * d[0] + d[1] * d[1]) + d[2] * d[2]);
}

}  // namespace tmrdar::results
