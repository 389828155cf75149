// Every output type and subtype, as a single value of each step and as a
// history, through the exports, of a job whose frames hold every section and
// of jobs that lack one section, kind of item or file at a time, in each of
// the six formats. Each request is stated by what it means and checked
// against the word that the builder put there (every word holds a value of
// its own); a failure names the word that was read.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <functional>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "builder/job.h"
#include "frame/base/request_mask.h"
#include "header/format_version.h"
#include "support/open_through_exports.h"
#include "support/scratch_dir.h"
#include "tmrdar/tmrdar.h"

namespace tmrdar::frame {
namespace {

using builder::FileKind;
using builder::FrameWord;
using S = builder::SectionKind;
namespace mask = request_checks;

constexpr int32_t step_count = 3;
constexpr float untouched = -7777.0F;

// The kinds of item a request names.
enum class Item { none, node, boundary, guide, zero_gap, clash, aux_node, pip, element };

// One item as the request names it, and its entry in the frame sections (0:
// no such item in the job whatever its counts).
struct ItemArguments {
  int32_t node = 0;
  int32_t element = 0;
  int32_t location = 0;
  int32_t entry = 0;
};

// The items of each kind asked for. Node rows are not their numbers, and
// the boundary conditions list node 40 ahead of node 10; auxiliary element
// 5 is asked for as element -5 (with a node number, which spares it a
// label) and addresses entry -1, the words ahead of the section's first.
std::vector<ItemArguments> items(Item item) {
  switch (item) {
    case Item::none: return {{}};
    case Item::node: return {{.node = 20, .entry = 2}, {.node = 40, .entry = 4}, {.node = 50}};
    case Item::boundary: return {{.node = 40, .entry = 1}, {.node = 10, .entry = 2}, {.node = 20}};
    case Item::guide: return {{.node = 1, .entry = 1}, {.node = 2, .entry = 2}, {.node = 3}};
    case Item::zero_gap: return {{.node = 2, .entry = 2}, {.node = 3}};
    case Item::clash: return {{.node = 1, .entry = 1}, {.node = 3, .entry = 3}, {.node = 4}};
    case Item::aux_node: return {{.node = 8, .entry = 2}, {.node = 9}};
    case Item::pip: return {{.node = 2, .entry = 2}, {.node = 3}};
    case Item::element:
      return {{.element = 300, .location = 1, .entry = 3}, {.element = 300, .location = 3, .entry = 3},
              {.element = 100, .location = 2, .entry = 1}, {.node = 1, .element = -5, .location = 2, .entry = -1},
              {.element = 400, .location = 2}};
  }
  return {};
}

// What a request gives.
enum class Result {
  word,         // the word at words[0]
  magnitude,    // the square root of the sum of the squares of the words, in that order, in single precision
  zero,         // 0 with no error
  step_record,  // place K of the motion frame's step record; without a motion file, place K of the last
                // record of the force frame
  force_step,   // place K of the motion frame's step record; without a motion file, of the force frame's
};

// A word of an entry: its section and its component. For element sections
// the component is that of location 1, and each location further on is
// `location_stride` words on.
struct Place {
  S section;
  int32_t component;
};

struct Request {
  int32_t type;
  int32_t subtype;
  Item item_kind;
  Result how;
  std::vector<Place> words{};
  std::vector<int> flags{};  // output flags without which the files lack what it needs
  int32_t k = 0;             // the place of a step record word
};

int32_t location_stride(S section) { return section == S::pressure ? 2 : 1; }

// The formats up to V831 number element results as the requests do, and
// answer parameter 10 with the resultant of parameters 2 and 3.
bool request_numbered(const header::FormatVersion& format) {
  return format.database_version <= header::v831.database_version;
}

std::vector<Request> all_requests(const header::FormatVersion& format) {
  std::vector<Request> all = {
      {1, 1, Item::none, Result::step_record, {}, {}, 1},
      {2, 1, Item::none, Result::step_record, {}, {}, 3},
      {3, 1, Item::none, Result::force_step, {}, {}, 2},
      {4, 1, Item::none, Result::step_record, {}, {}, 5},
  };
  const auto nodal = [&](int32_t type, S section, int flag, int32_t components) {
    for (int32_t p = 1; p <= components; ++p) all.push_back({type, p, Item::node, Result::word, {{section, p}}, {flag}});
  };
  nodal(5, S::displacement, 1, 6);
  nodal(6, S::velocity, 2, 6);
  nodal(7, S::acceleration, 3, 6);
  for (const auto& [type, section] : {std::pair{5, S::displacement}, {6, S::velocity}, {7, S::acceleration}}) {
    all.push_back({type, 7, Item::node, Result::magnitude, {{section, 4}, {section, 5}, {section, 6}}, {type - 4}});
  }
  const auto entry = [&](int32_t type, Item item, S section, int32_t subtypes, std::vector<int> flags) {
    for (int32_t p = 1; p <= subtypes; ++p) all.push_back({type, p, item, Result::word, {{section, p}}, flags});
  };
  entry(8, Item::guide, S::guide_surface, 9, {});
  entry(9, Item::zero_gap, S::zero_gap_guide, 6, {});
  entry(10, Item::node, S::node_contact, 7, {});
  entry(12, Item::aux_node, S::aux_node, 3, {});
  entry(13, Item::boundary, S::reaction, 6, {4});
  all.push_back({13, 7, Item::boundary, Result::magnitude, {{S::reaction, 4}, {S::reaction, 5}, {S::reaction, 6}}, {4}});
  // Clashing: the pair's word of the motion frame, and its two force words.
  all.push_back({11, 1, Item::clash, Result::word, {{S::clashing, 1}}, {}});
  all.push_back({11, 2, Item::clash, Result::word, {{S::clash_force, 1}}, {4}});
  all.push_back({11, 3, Item::clash, Result::word, {{S::clash_force, 2}}, {4}});
  // Contact reactions: three components and their magnitude.
  for (const auto& [type, item, section] : {std::tuple{14, Item::guide, S::guide_surface_reaction},
                                            {15, Item::zero_gap, S::zero_gap_guide_reaction},
                                            {16, Item::pip, S::pip_reaction}}) {
    entry(type, item, section, 3, {4});
    all.push_back({type, 4, item, Result::magnitude, {{section, 1}, {section, 2}, {section, 3}}, {4}});
  }
  // Element results.
  const S element_sections[] = {S::element_9, S::element_10, S::element_11, S::element_12,
                                S::element_13, S::element_14, S::element_15};
  for (int32_t p = 1; p <= 7; ++p) {
    all.push_back({17, p, Item::element, Result::word, {{element_sections[p - 1], 1}}, {p + 4}});
  }
  all.push_back({17, 8, Item::element, Result::magnitude, {{S::element_13, 1}, {S::element_14, 1}}, {9, 10}});
  all.push_back({17, 9, Item::element, Result::magnitude, {{S::element_24, 1}, {S::element_25, 1}}, {12, 13}});
  if (request_numbered(format)) {
    all.push_back({17, 10, Item::element, Result::magnitude, {{S::element_10, 1}, {S::element_11, 1}}, {6, 7}});
  } else {
    all.push_back({17, 10, Item::element, Result::zero, {}, {6, 7}});
  }
  all.push_back({17, 11, Item::element, Result::word, {{S::element_24, 1}}, {12}});
  all.push_back({17, 12, Item::element, Result::word, {{S::element_25, 1}}, {13}});
  all.push_back({17, 13, Item::element, Result::word, {{S::element_28, 1}}, {14}});
  all.push_back({17, 14, Item::element, Result::word, {{S::temperature, 1}}, {15}});
  all.push_back({18, 1, Item::element, Result::word, {{S::pressure, 1}}, {16}});
  all.push_back({18, 2, Item::element, Result::word, {{S::pressure, 2}}, {16}});
  return all;
}

// The file that a request needs, or nothing for either.
std::optional<FileKind> file_needed(const Request& r) {
  if (r.type <= 4) return std::nullopt;
  if (r.words.empty()) return FileKind::force;
  return builder::file_of(r.words.front().section);
}

// The full job: every flag set, two or more items of every kind, sections
// whose words do not fill their last record and sections that do.
builder::Job full_job(const header::FormatVersion& format) {
  builder::Job job(format);
  header::HeaderVariables& run = job.run;
  run.num_time_steps = step_count;
  run.output_flags.fill(1);
  run.num_guide_surfaces = 2;
  run.num_zero_gap_guides = 2;
  run.num_clash_pairs = 3;
  run.num_pip_connections = 2;
  run.num_vessels = 1;
  run.aux_element_result_sets = 1;
  job.model.nodes = {{.file_number = 1, .user_number = 10}, {.file_number = 2, .user_number = 20},
                     {.file_number = 3, .user_number = 30}, {.file_number = 4, .user_number = 40}};
  job.model.elements = {{.file_number = 1, .user_number = 100, .nodes = {1, 2}},
                        {.file_number = 2, .user_number = 200, .nodes = {2, 3}},
                        {.file_number = 3, .user_number = 300, .nodes = {3, 4}}};
  job.model.aux_nodes = {{.number = 7}, {.number = 8}};
  job.model.aux_elements = {{.number = 5, .nodes = {1, 2}}};
  job.model.boundary_conditions = {4, 1};
  job.model.damper_elements = {1, 2};
  return job;
}

struct Variant {
  std::string name;
  std::function<void(builder::Job&)> change;
};

std::vector<Variant> variants() {
  std::vector<Variant> all = {{"every section", [](builder::Job&) {}}};
  for (int f = 1; f <= 19; ++f) {
    all.push_back({"output flag " + std::to_string(f) + " off",
                   [f](builder::Job& job) { job.run.output_flags[static_cast<std::size_t>(f - 1)] = 0; }});
  }
  all.push_back({"no guide surfaces", [](builder::Job& job) { job.run.num_guide_surfaces = 0; }});
  all.push_back({"no zero gap guides", [](builder::Job& job) { job.run.num_zero_gap_guides = 0; }});
  all.push_back({"no clash pairs", [](builder::Job& job) { job.run.num_clash_pairs = 0; }});
  all.push_back({"no pipe-in-pipe connections", [](builder::Job& job) { job.run.num_pip_connections = 0; }});
  all.push_back({"no auxiliary nodes", [](builder::Job& job) {
                   job.model.aux_nodes.clear();
                   job.model.aux_elements.clear();
                 }});
  all.push_back({"no boundary conditions", [](builder::Job& job) { job.model.boundary_conditions.clear(); }});
  all.push_back({"no dampers, no vessels", [](builder::Job& job) {
                   job.model.damper_elements.clear();
                   job.run.num_vessels = 0;
                 }});
  all.push_back({"no motion file", [](builder::Job& job) { job.motion.present = false; }});
  all.push_back({"no motion file, no dampers", [](builder::Job& job) {
                   job.motion.present = false;
                   job.model.damper_elements.clear();
                 }});
  all.push_back({"no force file", [](builder::Job& job) { job.force.present = false; }});
  return all;
}

// The number of items of a kind in the job (for nodes and elements, those
// of the request are always there when they have an entry).
int64_t count(const header::HeaderVariables& run, Item item) {
  switch (item) {
    case Item::boundary: return run.num_boundary_conditions;
    case Item::guide: return run.num_guide_surfaces;
    case Item::zero_gap: return run.num_zero_gap_guides;
    case Item::clash: return run.num_clash_pairs;
    case Item::aux_node: return run.num_aux_nodes;
    case Item::pip: return run.num_pip_connections;
    default: return INT64_MAX;
  }
}

struct Outcome {
  int32_t status = 0;
  std::optional<float> value;  // nothing where the value cannot be told (a word before the file's frames)
};

class RequestSweep : public ::testing::TestWithParam<const header::FormatVersion*> {
 protected:
  void TearDown() override { XIT(); }

  // Writes the job under a stem of its own and opens it.
  void open(const builder::Job& built, const std::string& stem) {
    XIT();
    job = &built;
    const std::string path = dir.file(stem);
    built.write(path);
    ASSERT_EQ(testing::open_through_exports(path, motion, force), 0);
    run = built.written_run();
    for (const FileKind kind : {FileKind::motion, FileKind::force}) layouts[kind == FileKind::force] = built.frame_sections(kind);
  }

  const builder::FrameLayout& layout(FileKind kind) const { return layouts[kind == FileKind::force]; }
  bool present(FileKind kind) const { return (kind == FileKind::motion ? job->motion : job->force).present; }

  // The value at an entry's word; entries below 1 continue the section
  // backwards from its first entry, into the sections and frames ahead of it.
  std::optional<float> value(S section, int32_t step, int64_t entry, int32_t component) const {
    const builder::FrameLayout& frames = layout(builder::file_of(section));
    const builder::FrameSection* found = builder::find_section(frames, section);
    if (found == nullptr) return std::nullopt;
    int64_t offset = builder::word_offset(frames, {section, step, 1, component}) + found->words_per_entry * (entry - 1);
    const int64_t frame_words = builder::frame_words(frames);
    while (offset < 1) {
      offset += frame_words;
      --step;
    }
    if (step < 1) return std::nullopt;
    return job->value(builder::word_at(frames, step, offset));
  }

  // What the request gives at a step, by the meaning of the request.
  Outcome expected_outcome(const Request& r, const ItemArguments& item, int32_t step) const {
    const std::optional<FileKind> file = file_needed(r);
    if (file && !present(*file)) {
      return {.status = r.type == 11 ? mask::type_11_file_missing : mask::output_type_bad, .value = untouched};
    }
    Outcome out;
    if (r.item_kind == Item::element) {
      if (item.entry == 0 || -item.entry > run.num_aux_elements) out.status += mask::element_not_found;
    } else if (r.item_kind != Item::none && (item.entry == 0 || count(run, r.item_kind) < item.entry)) {
      out.status += mask::item_not_found;
    }
    for (const int f : r.flags) {
      if (run.output_flags[static_cast<std::size_t>(f - 1)] != 1) {
        out.status += mask::output_not_written;
        break;
      }
    }
    out.value = 0.0F;
    if (out.status != 0) return out;

    const auto at = [&](const Place& place) {
      const int32_t component = place.component + (item.location > 0 ? location_stride(place.section) * (item.location - 1) : 0);
      return value(place.section, step, item.entry, component);
    };
    switch (r.how) {
      case Result::word: out.value = at(r.words.front()); break;
      case Result::zero: break;
      case Result::magnitude: {
        float sum = 0.0F;
        for (std::size_t i = 0; i < r.words.size(); ++i) {
          const std::optional<float> v = at(r.words[i]);
          if (!v) return {.status = 0, .value = std::nullopt};
          sum = i == 0 ? *v * *v : sum + *v * *v;
        }
        out.value = std::sqrt(sum);
        break;
      }
      case Result::step_record:
      case Result::force_step:
        if (present(FileKind::motion)) {
          out.value = value(S::motion_step_record, step, 1, r.k);
        } else if (r.how == Result::force_step) {
          out.value = value(S::force_step_record, step, 1, r.k);
        } else {
          const builder::FrameLayout& frames = layout(FileKind::force);
          out.value = job->value(builder::word_at(frames, step, builder::frame_words(frames) - 8 + r.k));
        }
        break;
    }
    return out;
  }

  static std::string name(const Request& r, const ItemArguments& item) {
    std::ostringstream out;
    out << "type " << r.type << " subtype " << r.subtype << " node " << item.node << " element " << item.element
        << " location " << item.location;
    return out.str();
  }
  // Which frame word a value is, for the messages.
  std::string which(float value) const {
    std::ostringstream out;
    out << value;
    if (const std::optional<FrameWord> word = job->word_of_default(value)) out << " (" << *word << ")";
    return out.str();
  }

  void check(const std::string& variant, const Request& r, const ItemArguments& item) {
    SCOPED_TRACE(variant + ": " + name(r, item));
    int32_t type = r.type, subtype = r.subtype, steps = step_count;
    std::vector<float> history(step_count, untouched);
    int32_t node = item.node, element = item.element, location = item.location;
    const int32_t history_status = GetRequestedHistory(&motion, &force, &type, &subtype, &node, &element, &location,
                                                       &steps, &steps, history.data(), nullptr, 0);
    for (int32_t step = 1; step <= step_count; ++step) {
      const Outcome expected = expected_outcome(r, item, step);
      float value = untouched;
      node = item.node, element = item.element, location = item.location;
      const int32_t status = GetRequestedSingleValue(&motion, &force, &type, &subtype, &node, &element, &location,
                                                     &steps, &step, &value, nullptr, 0);
      EXPECT_EQ(status, expected.status) << "step " << step;
      EXPECT_EQ(history_status, expected.status);
      if (expected.value) {
        EXPECT_EQ(value, *expected.value) << "step " << step << ": read " << which(value) << ", wanted "
                                          << which(*expected.value);
        EXPECT_EQ(history[static_cast<std::size_t>(step - 1)], *expected.value)
            << "history step " << step << ": read " << which(history[static_cast<std::size_t>(step - 1)]);
      } else {
        EXPECT_EQ(history[static_cast<std::size_t>(step - 1)], value) << "history step " << step;
      }
    }
  }

  // A step past the count, and histories shorter than the steps or of none.
  void step_edges() {
    int32_t type = 1, subtype = 1, none = 0, steps = step_count, step = step_count + 1, count = step_count - 1;
    float value = untouched;
    std::vector<float> history(step_count, untouched);
    const auto history_of = [&](float* values) {
      return GetRequestedHistory(&motion, &force, &type, &subtype, &none, &none, &none, &steps, &count, values, nullptr, 0);
    };
    EXPECT_EQ(GetRequestedSingleValue(&motion, &force, &type, &subtype, &none, &none, &none, &steps, &step, &value,
                                      nullptr, 0), mask::step_bad);
    EXPECT_EQ(history_of(history.data()), 0);
    EXPECT_EQ(std::pair(value, history.back()), std::pair(untouched, untouched));
    count = 0;
    EXPECT_EQ(history_of(nullptr), 0);
  }

  testing::ScratchDir dir;
  const builder::Job* job = nullptr;
  header::HeaderVariables run;
  builder::FrameLayout layouts[2];
  int32_t motion = 0;
  int32_t force = 0;
};

TEST_P(RequestSweep, EveryTypeAndSubtypeReadsItsOwnWordWithSectionsPresentAndAbsent) {
  const header::FormatVersion& format = *GetParam();
  const std::vector<Request> requests = all_requests(format);
  int stem = 0;
  for (const Variant& variant : variants()) {
    builder::Job built = full_job(format);
    variant.change(built);
    open(built, "job" + std::to_string(++stem));
    if (HasFatalFailure()) return;
    if (stem == 1) step_edges();
    for (const Request& r : requests) {
      for (const ItemArguments& item : items(r.item_kind)) check(variant.name, r, item);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(, RequestSweep, ::testing::ValuesIn(header::format_versions),
                         [](const auto& info) { return std::string(info.param->name); });

}  // namespace
}  // namespace tmrdar::frame
