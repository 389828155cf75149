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
//   frame_word{.section = section_kind::displacement, .step = 7, .entry = 3, .component = 2}
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
#include "header/format_reader.h"

namespace tmrdar::builder {

enum class FileKind { motion, force };

// The sections of the two frames, each of one file, in file order. The
// element sections are named by the force parameter that reads them.
// Words an entry in brackets; DOFS is dofs_per_node.
enum class SectionKind : uint8_t {
  // Motion frame.
  displacement,        // node row (DOFS)
  velocity,            // node row (DOFS)
  acceleration,        // node row (DOFS)
  guide_surface,       // guide surface (9)
  zero_gap_guide,      // zero gap guide (6)
  node_contact,        // node row (8; 7 before V841)
  clashing,            // clash pair (1)
  aux_node,            // auxiliary node row (DOFS)
  motion_step_record,  // one entry (8): step_word below
  vessel,              // vessel (8): X, Y, Z, O, 1, 2 at components 1 to 6
  tail_item_a,         // item of tail_pair_count_a (16)
  tail_item_b,         // item of tail_pair_count_b (16)
  aux_element_set,     // result set (8 times the records of a set), component = auxiliary element row
  // Force frame.
  reaction,            // boundary condition (DOFS)
  element_9,           // flag 5: element row (3), component = location
  element_10,          // flag 6
  element_11,          // flag 7
  element_12,          // flag 8
  element_13,          // flag 9
  element_14,          // flag 10
  element_15,          // flag 11
  element_24,          // flag 12
  element_25,          // flag 13
  element_28,          // flag 14
  guide_surface_reaction,   // guide surface (3)
  zero_gap_guide_reaction,  // zero gap guide (3)
  pip_reaction,             // pipe-in-pipe connection (3)
  clash_force,              // clash pair (2)
  temperature,              // flag 15, force parameter 29: element row (3), component = location
  pressure,                 // flag 16: element row (6), component 2 (location - 1) + k, k = 1, 2
  element_37,               // flag 18, first sub-section: element row (3)
  element_38,               // flag 18, second
  element_39,               // flag 18, third
  element_40,               // flag 19, first
  element_41,               // flag 19, second
  spare_record,             // one entry (8), behind the sub-sections
  element_36,               // flag 17: element row (1)
  force_step_record,        // one entry (8): step_word below
  damper,                   // damper element (8)
};

// The file whose frames hold a section.
FileKind file_of(SectionKind section);
// The section's name as written above, e.g. "displacement".
std::string_view name_of(SectionKind section);
// The element section that force parameter 9 to 15, 24, 25, 28, 29 (the
// temperatures), 30 (the pressures) or 36 to 41 reads; throws
// std::invalid_argument for any other number.
SectionKind element_section(int32_t force_parameter);

// The components of a step record that the readers know.
namespace step_word {
inline constexpr int32_t time = 1;
inline constexpr int32_t surface_elevation = 2;  // letter S
inline constexpr int32_t p = 3;                  // letter P
inline constexpr int32_t b = 5;                  // letter B
}  // namespace step_word

// One section of a frame as laid out: its first word as an offset within
// the frame (1 for the frame's first word), its size in words (whole
// records), the words of one entry, and the entries the model has.
struct FrameSection {
  SectionKind kind = SectionKind::displacement;
  int64_t first_word = 1;
  int64_t words = 0;
  int64_t words_per_entry = 1;
  int64_t entries = 0;

  int64_t records() const { return words / 8; }
  int64_t last_word() const { return first_word + words - 1; }
  friend bool operator==(const FrameSection&, const FrameSection&) = default;
};
using FrameLayout = std::vector<FrameSection>;

// One word of one step's frame. Ordered by section, step, entry, component.
struct FrameWord {
  SectionKind section = SectionKind::displacement;
  int32_t step = 1;
  int64_t entry = 1;
  int32_t component = 1;

  FileKind file() const { return file_of(section); }
  friend auto operator<=>(const FrameWord&, const FrameWord&) = default;
};
// E.g. "displacement step 7 entry 3 component 2".
std::ostream& operator<<(std::ostream& out, const FrameWord& word);

// Records of a frame section of n words, in 32-bit floating point.
int64_t section_records(int64_t n);

// The sections of one frame of the file in the format's layout, in file
// order, for the run's counts and flags; sections that take no records are
// left out. Throws std::invalid_argument when a negative flag or count gives
// a section fewer than no records.
FrameLayout frame_sections(FileKind kind, const header::HeaderVariables& run,
                            const FormatLayout& layout = v861_layout);
// The words of one frame: the sections back to back.
int64_t frame_words(const FrameLayout& layout);
// The section of this kind, or nullptr when the frame has none.
const FrameSection* find_section(const FrameLayout& layout, SectionKind kind);
// The offset within the frame (from 1) of the word's section, entry and
// component; the step plays no part. Throws std::out_of_range when the frame
// has no such section, the component lies outside the entry's words or the
// word outside the section's records.
int64_t word_offset(const FrameLayout& layout, const FrameWord& word);
// The word at an offset (from 1) of the frame of a step; throws
// std::out_of_range outside the frame.
FrameWord word_at(const FrameLayout& layout, int32_t step, int64_t offset);

// The value that every frame word holds unless a test says otherwise: the
// word's place among the frame words of its file, (step - 1) * frame words
// + offset, positive in the motion file and negative in the force file, as
// a 32-bit real. No two words share a value, and none is 0, while the
// frames of a file hold at most 2^24 words; beyond that the values round.
// The step time keeps its own word.
float default_value(FileKind kind, int32_t step, int64_t offset, int64_t frame_words);
// Values set word by word, which stand in place of whatever else the
// builder would write there:
//
//   job.results.set(section_kind::displacement, 7, 3, 2, 1.25F);
class FrameValues {
 public:
  FrameValues& set(SectionKind section, int32_t step, int64_t entry, int32_t component, float value);
  FrameValues& set(const FrameWord& word, float value);
  // The value set at the word, if any.
  std::optional<float> find(const FrameWord& word) const;
  const std::map<FrameWord, float>& all() const { return values_; }
  bool empty() const { return values_.empty(); }
  void clear() { values_.clear(); }

 private:
  std::map<FrameWord, float> values_;
};

// A value for every word of every frame, or nothing to keep the word as
// the builder has it.
using FrameFunction = std::function<std::optional<float>(const FrameWord&)>;

}  // namespace tmrdar::builder
