// The result frames of a job for the database builder: the sections of one
// step's frame in file order, and the words that name a place in them.
//
// A frame is walked section by section, each section on a record boundary:
//
//   motion frame   displacement, velocity, acceleration (each one entry a
//                  node, present by its flag), guide surfaces, zero gap
//                  guides, node contact, clashing, auxiliary nodes, the
//                  step record, then the tail: one record a vessel, the
//                  two-record items of both tail counts, the auxiliary
//                  element result sets;
//   force frame    reactions (flag 4), the ten element sections of flags 5
//                  to 14, the guide surface, zero gap guide, pipe-in-pipe
//                  and clash pair reactions (flag 4), temperatures (flag
//                  15), pressures (flag 16), the three sub-sections of flag
//                  18 and the two of flag 19, one spare record, the section
//                  of flag 17 (one word an element), the step record, then
//                  one record a damper element.
//
// Formats before V841 hold 7 node contact words a node instead of 8, and no
// format before V861 has flags 17 to 19 or dampers: their force frames end
// with the pressures and the step record, with no spare record between. The
// tail of a motion frame has the counts as the format holds them (no tail
// items in V815 and V811, no auxiliary element sets in V811).
//
// A section present by a flag takes the flag times its records; a section
// whose count is tested takes no record at a count of 0, any other section
// takes at least one. A section of n words takes truncate(single(n) / 8) + 1
// records, with the product formed in 32-bit floating point; the auxiliary
// element sets take truncate(double(count) / 8 + 1) records each. The tail
// thereby ends each frame, as the readers find it from the frame's end.
//
// A word of a frame is named by its section, step, entry and component:
//
//   FRAME_WORD{.SECTION = SECTION_KIND::DISPLACEMENT, .STEP = 7, .ENTRY = 3, .COMPONENT = 2}
//
// is component 2 of node row 3 at step 7, word 6 * (3 - 1) + 2 of the
// section with 6 degrees of freedom a node. Entries and components count
// from 1; each section's entry shape is below. The words that a section's
// records hold beyond its entries are named by the same shape, with entries
// past the count.
#pragma once

#include <compare>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <map>
#include <optional>
#include <string_view>
#include <vector>

#include "builder/format_layout.h"
#include "header/tide3_database_files.h"

namespace tmrdar::builder {

enum class FILE_KIND { MOTION, FORCE };

// The sections of the two frames, each of one file, in file order. The
// element sections are named by the force parameter that reads them.
// Words an entry in brackets; DOFS is DOFS_PER_NODE.
enum class SECTION_KIND : uint8_t {
  // Motion frame.
  DISPLACEMENT,        // node row (DOFS)
  VELOCITY,            // node row (DOFS)
  ACCELERATION,        // node row (DOFS)
  GUIDE_SURFACE,       // guide surface (9)
  ZERO_GAP_GUIDE,      // zero gap guide (6)
  NODE_CONTACT,        // node row (8; 7 before V841)
  CLASHING,            // clash pair (1)
  AUX_NODE,            // auxiliary node row (DOFS)
  MOTION_STEP_RECORD,  // one entry (8): STEP_WORD below
  VESSEL,              // vessel (8): X, Y, Z, O, 1, 2 at components 1 to 6
  TAIL_ITEM_A,         // item of TAIL_PAIR_COUNT_A (16)
  TAIL_ITEM_B,         // item of TAIL_PAIR_COUNT_B (16)
  AUX_ELEMENT_SET,     // result set (8 times the records of a set), component = auxiliary element row
  // Force frame.
  REACTION,            // boundary condition (DOFS)
  ELEMENT_9,           // flag 5: element row (3), component = location
  ELEMENT_10,          // flag 6
  ELEMENT_11,          // flag 7
  ELEMENT_12,          // flag 8
  ELEMENT_13,          // flag 9
  ELEMENT_14,          // flag 10
  ELEMENT_15,          // flag 11
  ELEMENT_24,          // flag 12
  ELEMENT_25,          // flag 13
  ELEMENT_28,          // flag 14
  GUIDE_SURFACE_REACTION,   // guide surface (3)
  ZERO_GAP_GUIDE_REACTION,  // zero gap guide (3)
  PIP_REACTION,             // pipe-in-pipe connection (3)
  CLASH_FORCE,              // clash pair (2)
  TEMPERATURE,              // flag 15, force parameter 29: element row (3), component = location
  PRESSURE,                 // flag 16: element row (6), component 2 (location - 1) + k, k = 1, 2
  ELEMENT_37,               // flag 18, first sub-section: element row (3)
  ELEMENT_38,               // flag 18, second
  ELEMENT_39,               // flag 18, third
  ELEMENT_40,               // flag 19, first
  ELEMENT_41,               // flag 19, second
  SPARE_RECORD,             // one entry (8), behind the sub-sections
  ELEMENT_36,               // flag 17: element row (1)
  FORCE_STEP_RECORD,        // one entry (8): STEP_WORD below
  DAMPER,                   // damper element (8)
};

// The file whose frames hold a section.
FILE_KIND FILE_OF(SECTION_KIND section);
// The section's name as written above, e.g. "DISPLACEMENT".
std::string_view NAME_OF(SECTION_KIND section);
// The element section that force parameter 9 to 15, 24, 25, 28, 29 (the
// temperatures), 30 (the pressures) or 36 to 41 reads; throws
// std::invalid_argument for any other number.
SECTION_KIND ELEMENT_SECTION(int32_t force_parameter);

// The components of a step record that the readers know.
namespace STEP_WORD {
inline constexpr int32_t TIME = 1;
inline constexpr int32_t SURFACE_ELEVATION = 2;  // letter S
inline constexpr int32_t P = 3;                  // letter P
inline constexpr int32_t B = 5;                  // letter B
}  // namespace STEP_WORD

// One section of a frame as laid out: its first word as an offset within
// the frame (1 for the frame's first word), its size in words (whole
// records), the words of one entry, and the entries the model has.
struct FRAME_SECTION {
  SECTION_KIND KIND = SECTION_KIND::DISPLACEMENT;
  int64_t FIRST_WORD = 1;
  int64_t WORDS = 0;
  int64_t WORDS_PER_ENTRY = 1;
  int64_t ENTRIES = 0;

  int64_t RECORDS() const { return WORDS / 8; }
  int64_t LAST_WORD() const { return FIRST_WORD + WORDS - 1; }
  friend bool operator==(const FRAME_SECTION&, const FRAME_SECTION&) = default;
};
using FRAME_LAYOUT = std::vector<FRAME_SECTION>;

// One word of one step's frame. Ordered by section, step, entry, component.
struct FRAME_WORD {
  SECTION_KIND SECTION = SECTION_KIND::DISPLACEMENT;
  int32_t STEP = 1;
  int64_t ENTRY = 1;
  int32_t COMPONENT = 1;

  FILE_KIND FILE() const { return FILE_OF(SECTION); }
  friend auto operator<=>(const FRAME_WORD&, const FRAME_WORD&) = default;
};
// E.g. "DISPLACEMENT step 7 entry 3 component 2".
std::ostream& operator<<(std::ostream& out, const FRAME_WORD& word);

// Records of a frame section of n words, in 32-bit floating point.
int64_t SECTION_RECORDS(int64_t n);

// The sections of one frame of the file in the format's layout, in file
// order, for the run's counts and flags; sections that take no records are
// left out. Throws std::invalid_argument when a negative flag or count gives
// a section fewer than no records.
FRAME_LAYOUT FRAME_SECTIONS(FILE_KIND kind, const header::HEADER_VARIABLES& run,
                            const FORMAT_LAYOUT& layout = V861_LAYOUT);
// The words of one frame: the sections back to back.
int64_t FRAME_WORDS(const FRAME_LAYOUT& layout);
// The section of this kind, or nullptr when the frame has none.
const FRAME_SECTION* FIND_SECTION(const FRAME_LAYOUT& layout, SECTION_KIND kind);
// The offset within the frame (from 1) of the word's section, entry and
// component; the step plays no part. Throws std::out_of_range when the frame
// has no such section, the component lies outside the entry's words or the
// word outside the section's records.
int64_t WORD_OFFSET(const FRAME_LAYOUT& layout, const FRAME_WORD& word);
// The word at an offset (from 1) of the frame of a step; throws
// std::out_of_range outside the frame.
FRAME_WORD WORD_AT(const FRAME_LAYOUT& layout, int32_t step, int64_t offset);

// The value that every frame word holds unless a test says otherwise: the
// word's place among the frame words of its file, (step - 1) * frame words
// + offset, positive in the motion file and negative in the force file, as
// a 32-bit real. No two words share a value, and none is 0, while the
// frames of a file hold at most 2^24 words; beyond that the values round.
// The step time keeps its own word.
float DEFAULT_VALUE(FILE_KIND kind, int32_t step, int64_t offset, int64_t frame_words);
// Values set word by word, which stand in place of whatever else the
// builder would write there:
//
//   job.RESULTS.SET(SECTION_KIND::DISPLACEMENT, 7, 3, 2, 1.25F);
class FRAME_VALUES {
 public:
  FRAME_VALUES& SET(SECTION_KIND section, int32_t step, int64_t entry, int32_t component, float value);
  FRAME_VALUES& SET(const FRAME_WORD& word, float value);
  // The value set at the word, if any.
  std::optional<float> FIND(const FRAME_WORD& word) const;
  const std::map<FRAME_WORD, float>& ALL() const { return values_; }
  bool EMPTY() const { return values_.empty(); }
  void CLEAR() { values_.clear(); }

 private:
  std::map<FRAME_WORD, float> values_;
};

// A value for every word of every frame, or nothing to keep the word as
// the builder has it.
using FRAME_FUNCTION = std::function<std::optional<float>(const FRAME_WORD&)>;

}  // namespace tmrdar::builder
