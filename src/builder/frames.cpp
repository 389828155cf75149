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

constexpr std::array<std::string_view, static_cast<std::size_t>(SectionKind::damper) + 1> names{
    "DISPLACEMENT", "VELOCITY",      "ACCELERATION", "GUIDE_SURFACE", "ZERO_GAP_GUIDE", "NODE_CONTACT",
    "CLASHING",     "AUX_NODE",      "MOTION_STEP_RECORD", "VESSEL",  "TAIL_ITEM_A",    "TAIL_ITEM_B",
    "AUX_ELEMENT_SET", "REACTION",   "ELEMENT_9",    "ELEMENT_10",    "ELEMENT_11",     "ELEMENT_12",
    "ELEMENT_13",   "ELEMENT_14",    "ELEMENT_15",   "ELEMENT_24",    "ELEMENT_25",     "ELEMENT_28",
    "GUIDE_SURFACE_REACTION", "ZERO_GAP_GUIDE_REACTION", "PIP_REACTION", "CLASH_FORCE", "TEMPERATURE",
    "PRESSURE",     "ELEMENT_37",    "ELEMENT_38",   "ELEMENT_39",    "ELEMENT_40",     "ELEMENT_41",
    "SPARE_RECORD", "ELEMENT_36",    "FORCE_STEP_RECORD", "DAMPER"};

// The element sections of flags 5 to 14, in file order.
constexpr std::array<SectionKind, 10> flagged_element_sections{
    SectionKind::element_9,  SectionKind::element_10, SectionKind::element_11, SectionKind::element_12,
    SectionKind::element_13, SectionKind::element_14, SectionKind::element_15, SectionKind::element_24,
    SectionKind::element_25, SectionKind::element_28};

// Lays out sections one behind the other from the frame's first word.
class Walk {
 public:
  // A section of `records` records, entries of `shape` words (a shape of
  // none makes the whole section one entry).
  void add(SectionKind kind, int64_t records, int64_t shape, int64_t entries) {
    if (records < 0) {
      throw std::invalid_argument("the frame's " + std::string(name_of(kind)) +
                                  " section takes fewer than no records: a flag or count is negative");
    }
    if (records == 0) return;
    const int64_t words = 8 * records;
    sections_.push_back({.kind = kind,
                         .first_word = next_,
                         .words = words,
                         .words_per_entry = shape > 0 ? shape : words,
                         .entries = entries});
    next_ += words;
  }
  FrameLayout take() { return std::move(sections_); }

 private:
  FrameLayout sections_;
  int64_t next_ = 1;
};

int64_t flagged(int32_t flag, int64_t records) { return int64_t{flag} * records; }

FrameLayout motion_sections(const header::HeaderVariables& v, const FormatLayout& layout) {
  const std::array<int32_t, 19>& f = v.output_flags;
  const int64_t dofs = v.dofs_per_node;
  Walk walk;
  const int64_t nodal = section_records(int64_t{v.num_nodes} * dofs);
  walk.add(SectionKind::displacement, flagged(f[0], nodal), dofs, v.num_nodes);
  walk.add(SectionKind::velocity, flagged(f[1], nodal), dofs, v.num_nodes);
  walk.add(SectionKind::acceleration, flagged(f[2], nodal), dofs, v.num_nodes);
  if (v.num_guide_surfaces > 0) {
    walk.add(SectionKind::guide_surface, section_records(9 * int64_t{v.num_guide_surfaces}), 9, v.num_guide_surfaces);
  }
  if (v.num_zero_gap_guides > 0) {
    walk.add(SectionKind::zero_gap_guide, section_records(6 * int64_t{v.num_zero_gap_guides}), 6,
             v.num_zero_gap_guides);
  }
  const int64_t contact = layout.node_contact_words;
  walk.add(SectionKind::node_contact, section_records(contact * v.num_nodes), contact, v.num_nodes);
  if (v.num_clash_pairs > 0) walk.add(SectionKind::clashing, section_records(v.num_clash_pairs), 1, v.num_clash_pairs);
  walk.add(SectionKind::aux_node, section_records(int64_t{v.num_aux_nodes} * dofs), dofs, v.num_aux_nodes);
  walk.add(SectionKind::motion_step_record, 1, 8, 1);
  // The tail: whole records by the counts, the auxiliary element sets by the
  // 64-bit form of the record rule.
  walk.add(SectionKind::vessel, v.num_vessels, 8, v.num_vessels);
  walk.add(SectionKind::tail_item_a, 2 * int64_t{v.tail_pair_count_a}, 16, v.tail_pair_count_a);
  walk.add(SectionKind::tail_item_b, 2 * int64_t{v.tail_pair_count_b}, 16, v.tail_pair_count_b);
  if (v.aux_element_result_sets < 0) {
    throw std::invalid_argument("the frame's AUX_ELEMENT_SET section has a negative count of sets");
  }
  const auto set_records = static_cast<int64_t>(static_cast<double>(v.num_aux_elements) * 0.125 + 1.0);
  walk.add(SectionKind::aux_element_set, v.aux_element_result_sets * set_records, 8 * set_records,
           v.aux_element_result_sets);
  return walk.take();
}

FrameLayout force_sections(const header::HeaderVariables& v, const FormatLayout& layout) {
  const std::array<int32_t, 19>& f = v.output_flags;
  const int64_t elements = v.num_elements;
  const int64_t r3 = section_records(3 * elements);
  Walk walk;
  walk.add(SectionKind::reaction, flagged(f[3], section_records(int64_t{v.num_boundary_conditions} * v.dofs_per_node)),
           v.dofs_per_node, v.num_boundary_conditions);
  for (std::size_t k = 0; k < flagged_element_sections.size(); ++k) {
    walk.add(flagged_element_sections[k], flagged(f[4 + k], r3), 3, elements);
  }
  // The contact sections: under flag 4, each only with entries.
  const auto contact = [&](SectionKind kind, int32_t count, int64_t shape) {
    if (count > 0) walk.add(kind, flagged(f[3], section_records(shape * count)), shape, count);
  };
  contact(SectionKind::guide_surface_reaction, v.num_guide_surfaces, 3);
  contact(SectionKind::zero_gap_guide_reaction, v.num_zero_gap_guides, 3);
  contact(SectionKind::pip_reaction, v.num_pip_connections, 3);
  contact(SectionKind::clash_force, v.num_clash_pairs, 2);
  walk.add(SectionKind::temperature, flagged(f[14], r3), 3, elements);
  walk.add(SectionKind::pressure, flagged(f[15], section_records(6 * elements)), 6, elements);
  if (!layout.late_force_sections) {
    walk.add(SectionKind::force_step_record, 1, 8, 1);
    return walk.take();
  }
  for (const SectionKind kind : {SectionKind::element_37, SectionKind::element_38, SectionKind::element_39}) {
    walk.add(kind, flagged(f[17], r3), 3, elements);
  }
  for (const SectionKind kind : {SectionKind::element_40, SectionKind::element_41}) {
    walk.add(kind, flagged(f[18], r3), 3, elements);
  }
  walk.add(SectionKind::spare_record, 1, 8, 1);
  walk.add(SectionKind::element_36, flagged(f[16], section_records(elements)), 1, elements);
  walk.add(SectionKind::force_step_record, 1, 8, 1);
  walk.add(SectionKind::damper, v.num_damper_elements, 8, v.num_damper_elements);
  return walk.take();
}

std::string describe(const FrameWord& word) {
  std::ostringstream text;
  text << word;
  return text.str();
}

const FrameSection& step_section(const FrameLayout& layout, FileKind kind) {
  const FrameSection* section = find_section(
      layout, kind == FileKind::motion ? SectionKind::motion_step_record : SectionKind::force_step_record);
  if (section == nullptr) throw std::logic_error("a frame without its step record");
  return *section;
}

bool is_step_time(const FrameWord& word) {
  return (word.section == SectionKind::motion_step_record || word.section == SectionKind::force_step_record) &&
         word.entry == 1 && word.component == step_word::time;
}

}  // namespace

FileKind file_of(SectionKind section) {
  return section < SectionKind::reaction ? FileKind::motion : FileKind::force;
}

std::string_view name_of(SectionKind section) {
  const auto k = static_cast<std::size_t>(section);
  return k < names.size() ? names[k] : std::string_view("UNKNOWN");
}

SectionKind element_section(int32_t force_parameter) {
  switch (force_parameter) {
    case 9: return SectionKind::element_9;
    case 10: return SectionKind::element_10;
    case 11: return SectionKind::element_11;
    case 12: return SectionKind::element_12;
    case 13: return SectionKind::element_13;
    case 14: return SectionKind::element_14;
    case 15: return SectionKind::element_15;
    case 24: return SectionKind::element_24;
    case 25: return SectionKind::element_25;
    case 28: return SectionKind::element_28;
    case 29: return SectionKind::temperature;
    case 30: return SectionKind::pressure;
    case 36: return SectionKind::element_36;
    case 37: return SectionKind::element_37;
    case 38: return SectionKind::element_38;
    case 39: return SectionKind::element_39;
    case 40: return SectionKind::element_40;
    case 41: return SectionKind::element_41;
    default: break;
  }
  throw std::invalid_argument("force parameter " + std::to_string(force_parameter) + " reads no element section");
}

std::ostream& operator<<(std::ostream& out, const FrameWord& word) {
  return out << name_of(word.section) << " step " << word.step << " entry " << word.entry << " component "
             << word.component;
}

int64_t section_records(int64_t n) { return static_cast<int64_t>(static_cast<float>(n) * 0.125F) + 1; }

FrameLayout frame_sections(FileKind kind, const header::HeaderVariables& run, const FormatLayout& layout) {
  return kind == FileKind::motion ? motion_sections(run, layout) : force_sections(run, layout);
}

int64_t frame_words(const FrameLayout& layout) { return layout.empty() ? 0 : layout.back().last_word(); }

const FrameSection* find_section(const FrameLayout& layout, SectionKind kind) {
  const auto found = std::find_if(layout.begin(), layout.end(), [&](const FrameSection& s) { return s.kind == kind; });
  return found == layout.end() ? nullptr : &*found;
}

int64_t word_offset(const FrameLayout& layout, const FrameWord& word) {
  const FrameSection* section = find_section(layout, word.section);
  if (section == nullptr) throw std::out_of_range("the frame has no " + std::string(name_of(word.section)) + " section");
  const int64_t shape = section->words_per_entry;
  // Word (entry - 1) * shape + component of the section, which must lie
  // within its records.
  if (word.entry < 1 || word.component < 1 || word.component > shape || word.component > section->words ||
      word.entry - 1 > (section->words - word.component) / shape) {
    throw std::out_of_range(describe(word) + " lies outside the section's " + std::to_string(section->words) +
                            " words of " + std::to_string(shape) + " an entry");
  }
  return section->first_word + (word.entry - 1) * shape + word.component - 1;
}

FrameWord word_at(const FrameLayout& layout, int32_t step, int64_t offset) {
  // The first section that ends at the offset or behind it.
  const auto found = std::upper_bound(layout.begin(), layout.end(), offset,
                                      [](int64_t k, const FrameSection& s) { return k <= s.last_word(); });
  if (offset < 1 || found == layout.end()) {
    throw std::out_of_range("offset " + std::to_string(offset) + " lies outside the frame");
  }
  const int64_t j = offset - found->first_word;
  return {.section = found->kind,
          .step = step,
          .entry = j / found->words_per_entry + 1,
          .component = static_cast<int32_t>(j % found->words_per_entry + 1)};
}

float default_value(FileKind kind, int32_t step, int64_t offset, int64_t frame_words) {
  const auto place = static_cast<float>((int64_t{step} - 1) * frame_words + offset);
  return kind == FileKind::motion ? place : -place;
}

FrameValues& FrameValues::set(SectionKind section, int32_t step, int64_t entry, int32_t component, float value) {
  return set({.section = section, .step = step, .entry = entry, .component = component}, value);
}

FrameValues& FrameValues::set(const FrameWord& word, float value) {
  values_[word] = value;
  return *this;
}

std::optional<float> FrameValues::find(const FrameWord& word) const {
  const auto found = values_.find(word);
  if (found == values_.end()) return std::nullopt;
  return found->second;
}

// ---------------------------------------------------------------------------
// The frames of a job.

FrameLayout Job::frame_sections(FileKind kind) const {
  return builder::frame_sections(kind, counted_run(), layout_of(*format));
}

int64_t Job::motion_frame_records() const { return frame_words(frame_sections(FileKind::motion)) / 8; }
int64_t Job::force_frame_records() const { return frame_words(frame_sections(FileKind::force)) / 8; }

float Job::step_time(int32_t step) const {
  return step >= 1 && static_cast<std::size_t>(step) <= step_times.size() ? step_times[static_cast<std::size_t>(step - 1)]
                                                                          : static_cast<float>(step) * time_step;
}

int64_t Job::word_number(const FrameWord& word) const {
  if (run.result_start_record != 0) throw std::out_of_range("no frames are written: RUN sets the result start record");
  const header::HeaderVariables v = written_run();
  const FrameLayout layout = frame_sections(word.file());
  const int64_t offset = word_offset(layout, word);
  const int64_t records = frame_words(layout) / 8;
  return 8 * (v.result_start_record + (int64_t{word.step} - 1) * records) + offset;
}

float Job::value(const FrameWord& word) const {
  if (run.result_start_record != 0) throw std::out_of_range("no frames are written: RUN sets the result start record");
  const header::HeaderVariables v = counted_run();
  const FrameLayout layout = builder::frame_sections(word.file(), v, layout_of(*format));
  const int64_t offset = word_offset(layout, word);
  if (word.step < 1 || word.step > v.num_time_steps) {
    throw std::out_of_range(describe(word) + ": the job has " + std::to_string(v.num_time_steps) + " steps");
  }
  // What stands in a word, last writer first: a set value, the frame
  // function's, the step time, the default.
  if (const std::optional<float> set = results.find(word)) return *set;
  if (frame_value) {
    if (const std::optional<float> value = frame_value(word)) return *value;
  }
  if (is_step_time(word)) return step_time(word.step);
  return default_value(word.file(), word.step, offset, frame_words(layout));
}

std::optional<FrameWord> Job::word_of_default(float value) const {
  constexpr float exact = 16'777'216.0F;  // 2^24: every whole number up to it is a 32-bit real
  if (run.result_start_record != 0 || !std::isfinite(value) || value == 0.0F) return std::nullopt;
  const float place = std::fabs(value);
  if (place > exact || place != std::floor(place)) return std::nullopt;
  const FileKind kind = value > 0.0F ? FileKind::motion : FileKind::force;
  const header::HeaderVariables v = counted_run();
  const FrameLayout layout = builder::frame_sections(kind, v, layout_of(*format));
  const int64_t words = frame_words(layout);
  const auto m = static_cast<int64_t>(place);
  if (words <= 0 || v.num_time_steps < 1 || m > words * v.num_time_steps) return std::nullopt;
  return word_at(layout, static_cast<int32_t>((m - 1) / words + 1), (m - 1) % words + 1);
}

void Job::put_frames(FileImage& image, FileKind kind, int64_t first_record) const {
  const header::HeaderVariables v = counted_run();
  const FrameLayout layout = builder::frame_sections(kind, v, layout_of(*format));
  const int64_t words = frame_words(layout);
  const int64_t records = words / 8;
  const int64_t time_offset = step_section(layout, kind).first_word + step_word::time - 1;
  const int32_t steps = std::max(v.num_time_steps, 0);

  // The set values of this file, checked against the frames and ordered by step.
  std::vector<std::tuple<int32_t, int64_t, float>> set;
  for (const auto& [word, value] : results.all()) {
    if (word.file() != kind) continue;
    if (word.step < 1 || word.step > steps) {
      throw std::invalid_argument(describe(word) + " is set, and the job has " + std::to_string(steps) + " steps");
    }
    try {
      set.emplace_back(word.step, word_offset(layout, word), value);
    } catch (const std::out_of_range& outside) {
      throw std::invalid_argument(std::string("a value is set outside the frames: ") + outside.what());
    }
  }
  std::stable_sort(set.begin(), set.end(),
                   [](const auto& a, const auto& b) { return std::get<0>(a) < std::get<0>(b); });

  image.extend_to(first_record + int64_t{steps} * records);
  const float sign = kind == FileKind::motion ? 1.0F : -1.0F;
  std::vector<float> frame(static_cast<std::size_t>(words));
  auto next_set = set.begin();
  for (int32_t n = 1; n <= steps; ++n) {
    // default_value of every word, the step time in its place.
    const int64_t before = (int64_t{n} - 1) * words;
    for (int64_t k = 1; k <= words; ++k) frame[static_cast<std::size_t>(k - 1)] = sign * static_cast<float>(before + k);
    frame[static_cast<std::size_t>(time_offset - 1)] = step_time(n);
    if (frame_value) {
      for (const FrameSection& section : layout) {
        FrameWord word{.section = section.kind, .step = n, .entry = 1, .component = 1};
        for (int64_t j = 0; j < section.words; ++j) {
          word.entry = j / section.words_per_entry + 1;
          word.component = static_cast<int32_t>(j % section.words_per_entry + 1);
          if (const std::optional<float> value = frame_value(word)) {
            frame[static_cast<std::size_t>(section.first_word + j - 1)] = *value;
          }
        }
      }
    }
    for (; next_set != set.end() && std::get<0>(*next_set) == n; ++next_set) {
      frame[static_cast<std::size_t>(std::get<1>(*next_set) - 1)] = std::get<2>(*next_set);
    }
    image.put_reals(first_record + (int64_t{n} - 1) * records, frame);
  }
}

}  // namespace tmrdar::builder
