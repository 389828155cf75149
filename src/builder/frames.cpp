#include "builder/frames.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <tuple>

#include "builder/job.h"

namespace tmrdar::builder {
namespace {

constexpr std::array<std::string_view, static_cast<std::size_t>(SECTION_KIND::DAMPER) + 1> NAMES{
    "DISPLACEMENT", "VELOCITY",      "ACCELERATION", "GUIDE_SURFACE", "ZERO_GAP_GUIDE", "NODE_CONTACT",
    "CLASHING",     "AUX_NODE",      "MOTION_STEP_RECORD", "VESSEL",  "TAIL_ITEM_A",    "TAIL_ITEM_B",
    "AUX_ELEMENT_SET", "REACTION",   "ELEMENT_9",    "ELEMENT_10",    "ELEMENT_11",     "ELEMENT_12",
    "ELEMENT_13",   "ELEMENT_14",    "ELEMENT_15",   "ELEMENT_24",    "ELEMENT_25",     "ELEMENT_28",
    "GUIDE_SURFACE_REACTION", "ZERO_GAP_GUIDE_REACTION", "PIP_REACTION", "CLASH_FORCE", "TEMPERATURE",
    "PRESSURE",     "ELEMENT_37",    "ELEMENT_38",   "ELEMENT_39",    "ELEMENT_40",     "ELEMENT_41",
    "SPARE_RECORD", "ELEMENT_36",    "FORCE_STEP_RECORD", "DAMPER"};

// The element sections of flags 5 to 14, in file order.
constexpr std::array<SECTION_KIND, 10> FLAGGED_ELEMENT_SECTIONS{
    SECTION_KIND::ELEMENT_9,  SECTION_KIND::ELEMENT_10, SECTION_KIND::ELEMENT_11, SECTION_KIND::ELEMENT_12,
    SECTION_KIND::ELEMENT_13, SECTION_KIND::ELEMENT_14, SECTION_KIND::ELEMENT_15, SECTION_KIND::ELEMENT_24,
    SECTION_KIND::ELEMENT_25, SECTION_KIND::ELEMENT_28};

// Lays out sections one behind the other from the frame's first word.
class WALK {
 public:
  // A section of `records` records, entries of `shape` words (a shape of
  // none makes the whole section one entry).
  void ADD(SECTION_KIND kind, int64_t records, int64_t shape, int64_t entries) {
    if (records < 0) {
      throw std::invalid_argument("the frame's " + std::string(NAME_OF(kind)) +
                                  " section takes fewer than no records: a flag or count is negative");
    }
    if (records == 0) return;
    const int64_t words = 8 * records;
    sections_.push_back({.KIND = kind,
                         .FIRST_WORD = next_,
                         .WORDS = words,
                         .WORDS_PER_ENTRY = shape > 0 ? shape : words,
                         .ENTRIES = entries});
    next_ += words;
  }
  FRAME_LAYOUT TAKE() { return std::move(sections_); }

 private:
  FRAME_LAYOUT sections_;
  int64_t next_ = 1;
};

int64_t FLAGGED(int32_t flag, int64_t records) { return int64_t{flag} * records; }

FRAME_LAYOUT MOTION_SECTIONS(const header::HEADER_VARIABLES& v, const FORMAT_LAYOUT& layout) {
  const std::array<int32_t, 19>& f = v.OUTPUT_FLAGS;
  const int64_t dofs = v.DOFS_PER_NODE;
  WALK walk;
  const int64_t nodal = SECTION_RECORDS(int64_t{v.NUM_NODES} * dofs);
  walk.ADD(SECTION_KIND::DISPLACEMENT, FLAGGED(f[0], nodal), dofs, v.NUM_NODES);
  walk.ADD(SECTION_KIND::VELOCITY, FLAGGED(f[1], nodal), dofs, v.NUM_NODES);
  walk.ADD(SECTION_KIND::ACCELERATION, FLAGGED(f[2], nodal), dofs, v.NUM_NODES);
  if (v.NUM_GUIDE_SURFACES > 0) {
    walk.ADD(SECTION_KIND::GUIDE_SURFACE, SECTION_RECORDS(9 * int64_t{v.NUM_GUIDE_SURFACES}), 9, v.NUM_GUIDE_SURFACES);
  }
  if (v.NUM_ZERO_GAP_GUIDES > 0) {
    walk.ADD(SECTION_KIND::ZERO_GAP_GUIDE, SECTION_RECORDS(6 * int64_t{v.NUM_ZERO_GAP_GUIDES}), 6,
             v.NUM_ZERO_GAP_GUIDES);
  }
  const int64_t contact = layout.NODE_CONTACT_WORDS;
  walk.ADD(SECTION_KIND::NODE_CONTACT, SECTION_RECORDS(contact * v.NUM_NODES), contact, v.NUM_NODES);
  if (v.NUM_CLASH_PAIRS > 0) walk.ADD(SECTION_KIND::CLASHING, SECTION_RECORDS(v.NUM_CLASH_PAIRS), 1, v.NUM_CLASH_PAIRS);
  walk.ADD(SECTION_KIND::AUX_NODE, SECTION_RECORDS(int64_t{v.NUM_AUX_NODES} * dofs), dofs, v.NUM_AUX_NODES);
  walk.ADD(SECTION_KIND::MOTION_STEP_RECORD, 1, 8, 1);
  // The tail: whole records by the counts, the auxiliary element sets by the
  // 64-bit form of the record rule.
  walk.ADD(SECTION_KIND::VESSEL, v.NUM_VESSELS, 8, v.NUM_VESSELS);
  walk.ADD(SECTION_KIND::TAIL_ITEM_A, 2 * int64_t{v.TAIL_PAIR_COUNT_A}, 16, v.TAIL_PAIR_COUNT_A);
  walk.ADD(SECTION_KIND::TAIL_ITEM_B, 2 * int64_t{v.TAIL_PAIR_COUNT_B}, 16, v.TAIL_PAIR_COUNT_B);
  if (v.AUX_ELEMENT_RESULT_SETS < 0) {
    throw std::invalid_argument("the frame's AUX_ELEMENT_SET section has a negative count of sets");
  }
  const auto set_records = static_cast<int64_t>(static_cast<double>(v.NUM_AUX_ELEMENTS) * 0.125 + 1.0);
  walk.ADD(SECTION_KIND::AUX_ELEMENT_SET, v.AUX_ELEMENT_RESULT_SETS * set_records, 8 * set_records,
           v.AUX_ELEMENT_RESULT_SETS);
  return walk.TAKE();
}

FRAME_LAYOUT FORCE_SECTIONS(const header::HEADER_VARIABLES& v, const FORMAT_LAYOUT& layout) {
  const std::array<int32_t, 19>& f = v.OUTPUT_FLAGS;
  const int64_t elements = v.NUM_ELEMENTS;
  const int64_t r3 = SECTION_RECORDS(3 * elements);
  WALK walk;
  walk.ADD(SECTION_KIND::REACTION, FLAGGED(f[3], SECTION_RECORDS(int64_t{v.NUM_BOUNDARY_CONDITIONS} * v.DOFS_PER_NODE)),
           v.DOFS_PER_NODE, v.NUM_BOUNDARY_CONDITIONS);
  for (std::size_t k = 0; k < FLAGGED_ELEMENT_SECTIONS.size(); ++k) {
    walk.ADD(FLAGGED_ELEMENT_SECTIONS[k], FLAGGED(f[4 + k], r3), 3, elements);
  }
  // The contact sections: under flag 4, each only with entries.
  const auto contact = [&](SECTION_KIND kind, int32_t count, int64_t shape) {
    if (count > 0) walk.ADD(kind, FLAGGED(f[3], SECTION_RECORDS(shape * count)), shape, count);
  };
  contact(SECTION_KIND::GUIDE_SURFACE_REACTION, v.NUM_GUIDE_SURFACES, 3);
  contact(SECTION_KIND::ZERO_GAP_GUIDE_REACTION, v.NUM_ZERO_GAP_GUIDES, 3);
  contact(SECTION_KIND::PIP_REACTION, v.NUM_PIP_CONNECTIONS, 3);
  contact(SECTION_KIND::CLASH_FORCE, v.NUM_CLASH_PAIRS, 2);
  walk.ADD(SECTION_KIND::TEMPERATURE, FLAGGED(f[14], r3), 3, elements);
  walk.ADD(SECTION_KIND::PRESSURE, FLAGGED(f[15], SECTION_RECORDS(6 * elements)), 6, elements);
  if (!layout.LATE_FORCE_SECTIONS) {
    walk.ADD(SECTION_KIND::FORCE_STEP_RECORD, 1, 8, 1);
    return walk.TAKE();
  }
  for (const SECTION_KIND kind : {SECTION_KIND::ELEMENT_37, SECTION_KIND::ELEMENT_38, SECTION_KIND::ELEMENT_39}) {
    walk.ADD(kind, FLAGGED(f[17], r3), 3, elements);
  }
  for (const SECTION_KIND kind : {SECTION_KIND::ELEMENT_40, SECTION_KIND::ELEMENT_41}) {
    walk.ADD(kind, FLAGGED(f[18], r3), 3, elements);
  }
  walk.ADD(SECTION_KIND::SPARE_RECORD, 1, 8, 1);
  walk.ADD(SECTION_KIND::ELEMENT_36, FLAGGED(f[16], SECTION_RECORDS(elements)), 1, elements);
  walk.ADD(SECTION_KIND::FORCE_STEP_RECORD, 1, 8, 1);
  walk.ADD(SECTION_KIND::DAMPER, v.NUM_DAMPER_ELEMENTS, 8, v.NUM_DAMPER_ELEMENTS);
  return walk.TAKE();
}

std::string DESCRIBE(const FRAME_WORD& word) {
  std::ostringstream text;
  text << word;
  return text.str();
}

const FRAME_SECTION& STEP_SECTION(const FRAME_LAYOUT& layout, FILE_KIND kind) {
  const FRAME_SECTION* section = FIND_SECTION(
      layout, kind == FILE_KIND::MOTION ? SECTION_KIND::MOTION_STEP_RECORD : SECTION_KIND::FORCE_STEP_RECORD);
  if (section == nullptr) throw std::logic_error("a frame without its step record");
  return *section;
}

bool IS_STEP_TIME(const FRAME_WORD& word) {
  return (word.SECTION == SECTION_KIND::MOTION_STEP_RECORD || word.SECTION == SECTION_KIND::FORCE_STEP_RECORD) &&
         word.ENTRY == 1 && word.COMPONENT == STEP_WORD::TIME;
}

}  // namespace

FILE_KIND FILE_OF(SECTION_KIND section) {
  return section < SECTION_KIND::REACTION ? FILE_KIND::MOTION : FILE_KIND::FORCE;
}

std::string_view NAME_OF(SECTION_KIND section) {
  const auto k = static_cast<std::size_t>(section);
  return k < NAMES.size() ? NAMES[k] : std::string_view("UNKNOWN");
}

SECTION_KIND ELEMENT_SECTION(int32_t force_parameter) {
  switch (force_parameter) {
    case 9: return SECTION_KIND::ELEMENT_9;
    case 10: return SECTION_KIND::ELEMENT_10;
    case 11: return SECTION_KIND::ELEMENT_11;
    case 12: return SECTION_KIND::ELEMENT_12;
    case 13: return SECTION_KIND::ELEMENT_13;
    case 14: return SECTION_KIND::ELEMENT_14;
    case 15: return SECTION_KIND::ELEMENT_15;
    case 24: return SECTION_KIND::ELEMENT_24;
    case 25: return SECTION_KIND::ELEMENT_25;
    case 28: return SECTION_KIND::ELEMENT_28;
    case 29: return SECTION_KIND::TEMPERATURE;
    case 30: return SECTION_KIND::PRESSURE;
    case 36: return SECTION_KIND::ELEMENT_36;
    case 37: return SECTION_KIND::ELEMENT_37;
    case 38: return SECTION_KIND::ELEMENT_38;
    case 39: return SECTION_KIND::ELEMENT_39;
    case 40: return SECTION_KIND::ELEMENT_40;
    case 41: return SECTION_KIND::ELEMENT_41;
    default: break;
  }
  throw std::invalid_argument("force parameter " + std::to_string(force_parameter) + " reads no element section");
}

std::ostream& operator<<(std::ostream& out, const FRAME_WORD& word) {
  return out << NAME_OF(word.SECTION) << " step " << word.STEP << " entry " << word.ENTRY << " component "
             << word.COMPONENT;
}

int64_t SECTION_RECORDS(int64_t n) { return static_cast<int64_t>(static_cast<float>(n) * 0.125F) + 1; }

FRAME_LAYOUT FRAME_SECTIONS(FILE_KIND kind, const header::HEADER_VARIABLES& run, const FORMAT_LAYOUT& layout) {
  return kind == FILE_KIND::MOTION ? MOTION_SECTIONS(run, layout) : FORCE_SECTIONS(run, layout);
}

int64_t FRAME_WORDS(const FRAME_LAYOUT& layout) { return layout.empty() ? 0 : layout.back().LAST_WORD(); }

const FRAME_SECTION* FIND_SECTION(const FRAME_LAYOUT& layout, SECTION_KIND kind) {
  const auto found = std::find_if(layout.begin(), layout.end(), [&](const FRAME_SECTION& s) { return s.KIND == kind; });
  return found == layout.end() ? nullptr : &*found;
}

int64_t WORD_OFFSET(const FRAME_LAYOUT& layout, const FRAME_WORD& word) {
  const FRAME_SECTION* section = FIND_SECTION(layout, word.SECTION);
  if (section == nullptr) throw std::out_of_range("the frame has no " + std::string(NAME_OF(word.SECTION)) + " section");
  const int64_t shape = section->WORDS_PER_ENTRY;
  // Word (entry - 1) * shape + component of the section, which must lie
  // within its records.
  if (word.ENTRY < 1 || word.COMPONENT < 1 || word.COMPONENT > shape || word.COMPONENT > section->WORDS ||
      word.ENTRY - 1 > (section->WORDS - word.COMPONENT) / shape) {
    throw std::out_of_range(DESCRIBE(word) + " lies outside the section's " + std::to_string(section->WORDS) +
                            " words of " + std::to_string(shape) + " an entry");
  }
  return section->FIRST_WORD + (word.ENTRY - 1) * shape + word.COMPONENT - 1;
}

FRAME_WORD WORD_AT(const FRAME_LAYOUT& layout, int32_t step, int64_t offset) {
  // The first section that ends at the offset or behind it.
  const auto found = std::upper_bound(layout.begin(), layout.end(), offset,
                                      [](int64_t k, const FRAME_SECTION& s) { return k <= s.LAST_WORD(); });
  if (offset < 1 || found == layout.end()) {
    throw std::out_of_range("offset " + std::to_string(offset) + " lies outside the frame");
  }
  const int64_t j = offset - found->FIRST_WORD;
  return {.SECTION = found->KIND,
          .STEP = step,
          .ENTRY = j / found->WORDS_PER_ENTRY + 1,
          .COMPONENT = static_cast<int32_t>(j % found->WORDS_PER_ENTRY + 1)};
}

float DEFAULT_VALUE(FILE_KIND kind, int32_t step, int64_t offset, int64_t frame_words) {
  const auto place = static_cast<float>((int64_t{step} - 1) * frame_words + offset);
  return kind == FILE_KIND::MOTION ? place : -place;
}

FRAME_VALUES& FRAME_VALUES::SET(SECTION_KIND section, int32_t step, int64_t entry, int32_t component, float value) {
  return SET({.SECTION = section, .STEP = step, .ENTRY = entry, .COMPONENT = component}, value);
}

FRAME_VALUES& FRAME_VALUES::SET(const FRAME_WORD& word, float value) {
  values_[word] = value;
  return *this;
}

std::optional<float> FRAME_VALUES::FIND(const FRAME_WORD& word) const {
  const auto found = values_.find(word);
  if (found == values_.end()) return std::nullopt;
  return found->second;
}

// ---------------------------------------------------------------------------
// The frames of a job.

FRAME_LAYOUT JOB::FRAME_SECTIONS(FILE_KIND kind) const {
  return builder::FRAME_SECTIONS(kind, COUNTED_RUN(), LAYOUT_OF(*FORMAT));
}

int64_t JOB::MOTION_FRAME_RECORDS() const { return FRAME_WORDS(FRAME_SECTIONS(FILE_KIND::MOTION)) / 8; }
int64_t JOB::FORCE_FRAME_RECORDS() const { return FRAME_WORDS(FRAME_SECTIONS(FILE_KIND::FORCE)) / 8; }

float JOB::STEP_TIME(int32_t step) const {
  return step >= 1 && static_cast<std::size_t>(step) <= STEP_TIMES.size() ? STEP_TIMES[static_cast<std::size_t>(step - 1)]
                                                                          : static_cast<float>(step) * TIME_STEP;
}

int64_t JOB::WORD_NUMBER(const FRAME_WORD& word) const {
  if (RUN.RESULT_START_RECORD != 0) throw std::out_of_range("no frames are written: RUN sets the result start record");
  const header::HEADER_VARIABLES v = WRITTEN_RUN();
  const FRAME_LAYOUT layout = FRAME_SECTIONS(word.FILE());
  const int64_t offset = WORD_OFFSET(layout, word);
  const int64_t records = FRAME_WORDS(layout) / 8;
  return 8 * (v.RESULT_START_RECORD + (int64_t{word.STEP} - 1) * records) + offset;
}

float JOB::VALUE(const FRAME_WORD& word) const {
  if (RUN.RESULT_START_RECORD != 0) throw std::out_of_range("no frames are written: RUN sets the result start record");
  const header::HEADER_VARIABLES v = COUNTED_RUN();
  const FRAME_LAYOUT layout = builder::FRAME_SECTIONS(word.FILE(), v, LAYOUT_OF(*FORMAT));
  const int64_t offset = WORD_OFFSET(layout, word);
  if (word.STEP < 1 || word.STEP > v.NUM_TIME_STEPS) {
    throw std::out_of_range(DESCRIBE(word) + ": the job has " + std::to_string(v.NUM_TIME_STEPS) + " steps");
  }
  // What stands in a word, last writer first: a set value, the frame
  // function's, the step time, the default.
  if (const std::optional<float> set = RESULTS.FIND(word)) return *set;
  if (FRAME_VALUE) {
    if (const std::optional<float> value = FRAME_VALUE(word)) return *value;
  }
  if (IS_STEP_TIME(word)) return STEP_TIME(word.STEP);
  return DEFAULT_VALUE(word.FILE(), word.STEP, offset, FRAME_WORDS(layout));
}

std::optional<FRAME_WORD> JOB::WORD_OF_DEFAULT(float value) const {
  constexpr float EXACT = 16'777'216.0F;  // 2^24: every whole number up to it is a 32-bit real
  if (RUN.RESULT_START_RECORD != 0 || !std::isfinite(value) || value == 0.0F) return std::nullopt;
  const float place = std::fabs(value);
  if (place > EXACT || place != std::floor(place)) return std::nullopt;
  const FILE_KIND kind = value > 0.0F ? FILE_KIND::MOTION : FILE_KIND::FORCE;
  const header::HEADER_VARIABLES v = COUNTED_RUN();
  const FRAME_LAYOUT layout = builder::FRAME_SECTIONS(kind, v, LAYOUT_OF(*FORMAT));
  const int64_t words = FRAME_WORDS(layout);
  const auto m = static_cast<int64_t>(place);
  if (words <= 0 || v.NUM_TIME_STEPS < 1 || m > words * v.NUM_TIME_STEPS) return std::nullopt;
  return WORD_AT(layout, static_cast<int32_t>((m - 1) / words + 1), (m - 1) % words + 1);
}

void JOB::PUT_FRAMES(FILE_IMAGE& image, FILE_KIND kind, int64_t first_record) const {
  const header::HEADER_VARIABLES v = COUNTED_RUN();
  const FRAME_LAYOUT layout = builder::FRAME_SECTIONS(kind, v, LAYOUT_OF(*FORMAT));
  const int64_t words = FRAME_WORDS(layout);
  const int64_t records = words / 8;
  const int64_t time_offset = STEP_SECTION(layout, kind).FIRST_WORD + STEP_WORD::TIME - 1;
  const int32_t steps = std::max(v.NUM_TIME_STEPS, 0);

  // The set values of this file, checked against the frames and ordered by step.
  std::vector<std::tuple<int32_t, int64_t, float>> set;
  for (const auto& [word, value] : RESULTS.ALL()) {
    if (word.FILE() != kind) continue;
    if (word.STEP < 1 || word.STEP > steps) {
      throw std::invalid_argument(DESCRIBE(word) + " is set, and the job has " + std::to_string(steps) + " steps");
    }
    try {
      set.emplace_back(word.STEP, WORD_OFFSET(layout, word), value);
    } catch (const std::out_of_range& outside) {
      throw std::invalid_argument(std::string("a value is set outside the frames: ") + outside.what());
    }
  }
  std::stable_sort(set.begin(), set.end(),
                   [](const auto& a, const auto& b) { return std::get<0>(a) < std::get<0>(b); });

  image.EXTEND_TO(first_record + int64_t{steps} * records);
  const float sign = kind == FILE_KIND::MOTION ? 1.0F : -1.0F;
  std::vector<float> frame(static_cast<std::size_t>(words));
  auto next_set = set.begin();
  for (int32_t n = 1; n <= steps; ++n) {
    // DEFAULT_VALUE of every word, the step time in its place.
    const int64_t before = (int64_t{n} - 1) * words;
    for (int64_t k = 1; k <= words; ++k) frame[static_cast<std::size_t>(k - 1)] = sign * static_cast<float>(before + k);
    frame[static_cast<std::size_t>(time_offset - 1)] = STEP_TIME(n);
    if (FRAME_VALUE) {
      for (const FRAME_SECTION& section : layout) {
        FRAME_WORD word{.SECTION = section.KIND, .STEP = n, .ENTRY = 1, .COMPONENT = 1};
        for (int64_t j = 0; j < section.WORDS; ++j) {
          word.ENTRY = j / section.WORDS_PER_ENTRY + 1;
          word.COMPONENT = static_cast<int32_t>(j % section.WORDS_PER_ENTRY + 1);
          if (const std::optional<float> value = FRAME_VALUE(word)) {
            frame[static_cast<std::size_t>(section.FIRST_WORD + j - 1)] = *value;
          }
        }
      }
    }
    for (; next_set != set.end() && std::get<0>(*next_set) == n; ++next_set) {
      frame[static_cast<std::size_t>(std::get<1>(*next_set) - 1)] = std::get<2>(*next_set);
    }
    image.PUT_REALS(first_record + (int64_t{n} - 1) * records, frame);
  }
}

}  // namespace tmrdar::builder
