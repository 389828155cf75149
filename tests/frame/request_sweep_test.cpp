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

using builder::FILE_KIND;
using builder::FRAME_WORD;
using S = builder::SECTION_KIND;
namespace MASK = REVISION_IDS;

constexpr int32_t STEPS = 3;
constexpr float UNTOUCHED = -7777.0F;

// The kinds of item a request names.
enum class ITEM { NONE, NODE, BOUNDARY, GUIDE, ZERO_GAP, CLASH, AUX_NODE, PIP, ELEMENT };

// One item as the request names it, and its entry in the frame sections (0:
// no such item in the job whatever its counts).
struct ITEM_ARGUMENTS {
  int32_t NODE = 0;
  int32_t ELEMENT = 0;
  int32_t LOCATION = 0;
  int32_t ENTRY = 0;
};

// The items of each kind asked for. Node rows are not their numbers, and
// the boundary conditions list node 40 ahead of node 10; auxiliary element
// 5 is asked for as element -5 (with a node number, which spares it a
// label) and addresses entry -1, the words ahead of the section's first.
std::vector<ITEM_ARGUMENTS> ITEMS(ITEM item) {
  switch (item) {
    case ITEM::NONE: return {{}};
    case ITEM::NODE: return {{.NODE = 20, .ENTRY = 2}, {.NODE = 40, .ENTRY = 4}, {.NODE = 50}};
    case ITEM::BOUNDARY: return {{.NODE = 40, .ENTRY = 1}, {.NODE = 10, .ENTRY = 2}, {.NODE = 20}};
    case ITEM::GUIDE: return {{.NODE = 1, .ENTRY = 1}, {.NODE = 2, .ENTRY = 2}, {.NODE = 3}};
    case ITEM::ZERO_GAP: return {{.NODE = 2, .ENTRY = 2}, {.NODE = 3}};
    case ITEM::CLASH: return {{.NODE = 1, .ENTRY = 1}, {.NODE = 3, .ENTRY = 3}, {.NODE = 4}};
    case ITEM::AUX_NODE: return {{.NODE = 8, .ENTRY = 2}, {.NODE = 9}};
    case ITEM::PIP: return {{.NODE = 2, .ENTRY = 2}, {.NODE = 3}};
    case ITEM::ELEMENT:
      return {{.ELEMENT = 300, .LOCATION = 1, .ENTRY = 3}, {.ELEMENT = 300, .LOCATION = 3, .ENTRY = 3},
              {.ELEMENT = 100, .LOCATION = 2, .ENTRY = 1}, {.NODE = 1, .ELEMENT = -5, .LOCATION = 2, .ENTRY = -1},
              {.ELEMENT = 400, .LOCATION = 2}};
  }
  return {};
}

// What a request gives.
enum class RESULT {
  WORD,         // the word at WORDS[0]
  MAGNITUDE,    // the square root of the sum of the squares of the WORDS, in that order, in single precision
  ZERO,         // 0 with no error
  STEP_RECORD,  // place K of the motion frame's step record; without a motion file, place K of the last
                // record of the force frame
  FORCE_STEP,   // place K of the motion frame's step record; without a motion file, of the force frame's
};

// A word of an entry: its section and its component. For element sections
// the component is that of location 1, and each location further on is
// `LOCATION_STRIDE` words on.
struct PLACE {
  S SECTION;
  int32_t COMPONENT;
};

struct REQUEST {
  int32_t TYPE;
  int32_t SUBTYPE;
  ITEM ITEM_KIND;
  RESULT HOW;
  std::vector<PLACE> WORDS{};
  std::vector<int> FLAGS{};  // output flags without which the files lack what it needs
  int32_t K = 0;             // the place of a step record word
};

int32_t LOCATION_STRIDE(S section) { return section == S::PRESSURE ? 2 : 1; }

// The formats up to V831 number element results as the requests do, and
// answer parameter 10 with the resultant of parameters 2 and 3.
bool REQUEST_NUMBERED(const header::FORMAT_VERSION& format) {
  return format.DATABASE_VERSION <= header::V831.DATABASE_VERSION;
}

std::vector<REQUEST> ALL_REQUESTS(const header::FORMAT_VERSION& format) {
  std::vector<REQUEST> all = {
      {1, 1, ITEM::NONE, RESULT::STEP_RECORD, {}, {}, 1},
      {2, 1, ITEM::NONE, RESULT::STEP_RECORD, {}, {}, 3},
      {3, 1, ITEM::NONE, RESULT::FORCE_STEP, {}, {}, 2},
      {4, 1, ITEM::NONE, RESULT::STEP_RECORD, {}, {}, 5},
  };
  const auto NODAL = [&](int32_t type, S section, int flag, int32_t components) {
    for (int32_t p = 1; p <= components; ++p) all.push_back({type, p, ITEM::NODE, RESULT::WORD, {{section, p}}, {flag}});
  };
  NODAL(5, S::DISPLACEMENT, 1, 6);
  NODAL(6, S::VELOCITY, 2, 6);
  NODAL(7, S::ACCELERATION, 3, 6);
  for (const auto& [type, section] : {std::pair{5, S::DISPLACEMENT}, {6, S::VELOCITY}, {7, S::ACCELERATION}}) {
    all.push_back({type, 7, ITEM::NODE, RESULT::MAGNITUDE, {{section, 4}, {section, 5}, {section, 6}}, {type - 4}});
  }
  const auto ENTRY = [&](int32_t type, ITEM item, S section, int32_t subtypes, std::vector<int> flags) {
    for (int32_t p = 1; p <= subtypes; ++p) all.push_back({type, p, item, RESULT::WORD, {{section, p}}, flags});
  };
  ENTRY(8, ITEM::GUIDE, S::GUIDE_SURFACE, 9, {});
  ENTRY(9, ITEM::ZERO_GAP, S::ZERO_GAP_GUIDE, 6, {});
  ENTRY(10, ITEM::NODE, S::NODE_CONTACT, 7, {});
  ENTRY(12, ITEM::AUX_NODE, S::AUX_NODE, 3, {});
  ENTRY(13, ITEM::BOUNDARY, S::REACTION, 6, {4});
  all.push_back({13, 7, ITEM::BOUNDARY, RESULT::MAGNITUDE, {{S::REACTION, 4}, {S::REACTION, 5}, {S::REACTION, 6}}, {4}});
  // Clashing: the pair's word of the motion frame, and its two force words.
  all.push_back({11, 1, ITEM::CLASH, RESULT::WORD, {{S::CLASHING, 1}}, {}});
  all.push_back({11, 2, ITEM::CLASH, RESULT::WORD, {{S::CLASH_FORCE, 1}}, {4}});
  all.push_back({11, 3, ITEM::CLASH, RESULT::WORD, {{S::CLASH_FORCE, 2}}, {4}});
  // Contact reactions: three components and their magnitude.
  for (const auto& [type, item, section] : {std::tuple{14, ITEM::GUIDE, S::GUIDE_SURFACE_REACTION},
                                            {15, ITEM::ZERO_GAP, S::ZERO_GAP_GUIDE_REACTION},
                                            {16, ITEM::PIP, S::PIP_REACTION}}) {
    ENTRY(type, item, section, 3, {4});
    all.push_back({type, 4, item, RESULT::MAGNITUDE, {{section, 1}, {section, 2}, {section, 3}}, {4}});
  }
  // Element results.
  const S ELEMENT_SECTIONS[] = {S::ELEMENT_9, S::ELEMENT_10, S::ELEMENT_11, S::ELEMENT_12,
                                S::ELEMENT_13, S::ELEMENT_14, S::ELEMENT_15};
  for (int32_t p = 1; p <= 7; ++p) {
    all.push_back({17, p, ITEM::ELEMENT, RESULT::WORD, {{ELEMENT_SECTIONS[p - 1], 1}}, {p + 4}});
  }
  all.push_back({17, 8, ITEM::ELEMENT, RESULT::MAGNITUDE, {{S::ELEMENT_13, 1}, {S::ELEMENT_14, 1}}, {9, 10}});
  all.push_back({17, 9, ITEM::ELEMENT, RESULT::MAGNITUDE, {{S::ELEMENT_24, 1}, {S::ELEMENT_25, 1}}, {12, 13}});
  if (REQUEST_NUMBERED(format)) {
    all.push_back({17, 10, ITEM::ELEMENT, RESULT::MAGNITUDE, {{S::ELEMENT_10, 1}, {S::ELEMENT_11, 1}}, {6, 7}});
  } else {
    all.push_back({17, 10, ITEM::ELEMENT, RESULT::ZERO, {}, {6, 7}});
  }
  all.push_back({17, 11, ITEM::ELEMENT, RESULT::WORD, {{S::ELEMENT_24, 1}}, {12}});
  all.push_back({17, 12, ITEM::ELEMENT, RESULT::WORD, {{S::ELEMENT_25, 1}}, {13}});
  all.push_back({17, 13, ITEM::ELEMENT, RESULT::WORD, {{S::ELEMENT_28, 1}}, {14}});
  all.push_back({17, 14, ITEM::ELEMENT, RESULT::WORD, {{S::TEMPERATURE, 1}}, {15}});
  all.push_back({18, 1, ITEM::ELEMENT, RESULT::WORD, {{S::PRESSURE, 1}}, {16}});
  all.push_back({18, 2, ITEM::ELEMENT, RESULT::WORD, {{S::PRESSURE, 2}}, {16}});
  return all;
}

// The file that a request needs, or nothing for either.
std::optional<FILE_KIND> FILE_NEEDED(const REQUEST& r) {
  if (r.TYPE <= 4) return std::nullopt;
  if (r.WORDS.empty()) return FILE_KIND::FORCE;
  return builder::FILE_OF(r.WORDS.front().SECTION);
}

// The full job: every flag set, two or more items of every kind, sections
// whose words do not fill their last record and sections that do.
builder::JOB FULL_JOB(const header::FORMAT_VERSION& format) {
  builder::JOB job(format);
  header::HEADER_VARIABLES& run = job.RUN;
  run.NUM_TIME_STEPS = STEPS;
  run.OUTPUT_FLAGS.fill(1);
  run.NUM_GUIDE_SURFACES = 2;
  run.NUM_ZERO_GAP_GUIDES = 2;
  run.NUM_CLASH_PAIRS = 3;
  run.NUM_PIP_CONNECTIONS = 2;
  run.NUM_VESSELS = 1;
  run.AUX_ELEMENT_RESULT_SETS = 1;
  job.MODEL.NODES = {{.FILE_NUMBER = 1, .USER_NUMBER = 10}, {.FILE_NUMBER = 2, .USER_NUMBER = 20},
                     {.FILE_NUMBER = 3, .USER_NUMBER = 30}, {.FILE_NUMBER = 4, .USER_NUMBER = 40}};
  job.MODEL.ELEMENTS = {{.FILE_NUMBER = 1, .USER_NUMBER = 100, .NODES = {1, 2}},
                        {.FILE_NUMBER = 2, .USER_NUMBER = 200, .NODES = {2, 3}},
                        {.FILE_NUMBER = 3, .USER_NUMBER = 300, .NODES = {3, 4}}};
  job.MODEL.AUX_NODES = {{.NUMBER = 7}, {.NUMBER = 8}};
  job.MODEL.AUX_ELEMENTS = {{.NUMBER = 5, .NODES = {1, 2}}};
  job.MODEL.BOUNDARY_CONDITIONS = {4, 1};
  job.MODEL.DAMPER_ELEMENTS = {1, 2};
  return job;
}

struct VARIANT {
  std::string NAME;
  std::function<void(builder::JOB&)> CHANGE;
};

std::vector<VARIANT> VARIANTS() {
  std::vector<VARIANT> all = {{"every section", [](builder::JOB&) {}}};
  for (int f = 1; f <= 19; ++f) {
    all.push_back({"output flag " + std::to_string(f) + " off",
                   [f](builder::JOB& job) { job.RUN.OUTPUT_FLAGS[static_cast<std::size_t>(f - 1)] = 0; }});
  }
  all.push_back({"no guide surfaces", [](builder::JOB& job) { job.RUN.NUM_GUIDE_SURFACES = 0; }});
  all.push_back({"no zero gap guides", [](builder::JOB& job) { job.RUN.NUM_ZERO_GAP_GUIDES = 0; }});
  all.push_back({"no clash pairs", [](builder::JOB& job) { job.RUN.NUM_CLASH_PAIRS = 0; }});
  all.push_back({"no pipe-in-pipe connections", [](builder::JOB& job) { job.RUN.NUM_PIP_CONNECTIONS = 0; }});
  all.push_back({"no auxiliary nodes", [](builder::JOB& job) {
                   job.MODEL.AUX_NODES.clear();
                   job.MODEL.AUX_ELEMENTS.clear();
                 }});
  all.push_back({"no boundary conditions", [](builder::JOB& job) { job.MODEL.BOUNDARY_CONDITIONS.clear(); }});
  all.push_back({"no dampers, no vessels", [](builder::JOB& job) {
                   job.MODEL.DAMPER_ELEMENTS.clear();
                   job.RUN.NUM_VESSELS = 0;
                 }});
  all.push_back({"no motion file", [](builder::JOB& job) { job.MOTION.PRESENT = false; }});
  all.push_back({"no motion file, no dampers", [](builder::JOB& job) {
                   job.MOTION.PRESENT = false;
                   job.MODEL.DAMPER_ELEMENTS.clear();
                 }});
  all.push_back({"no force file", [](builder::JOB& job) { job.FORCE.PRESENT = false; }});
  return all;
}

// The number of items of a kind in the job (for nodes and elements, those
// of the request are always there when they have an entry).
int64_t COUNT(const header::HEADER_VARIABLES& run, ITEM item) {
  switch (item) {
    case ITEM::BOUNDARY: return run.NUM_BOUNDARY_CONDITIONS;
    case ITEM::GUIDE: return run.NUM_GUIDE_SURFACES;
    case ITEM::ZERO_GAP: return run.NUM_ZERO_GAP_GUIDES;
    case ITEM::CLASH: return run.NUM_CLASH_PAIRS;
    case ITEM::AUX_NODE: return run.NUM_AUX_NODES;
    case ITEM::PIP: return run.NUM_PIP_CONNECTIONS;
    default: return INT64_MAX;
  }
}

struct OUTCOME {
  int32_t STATUS = 0;
  std::optional<float> VALUE;  // nothing where the value cannot be told (a word before the file's frames)
};

class RequestSweep : public ::testing::TestWithParam<const header::FORMAT_VERSION*> {
 protected:
  void TearDown() override { XIT(); }

  // Writes the job under a stem of its own and opens it.
  void OPEN(const builder::JOB& built, const std::string& stem) {
    XIT();
    job = &built;
    const std::string path = dir.FILE(stem);
    built.WRITE(path);
    ASSERT_EQ(testing::OPEN_THROUGH_EXPORTS(path, motion, force), 0);
    run = built.WRITTEN_RUN();
    for (const FILE_KIND kind : {FILE_KIND::MOTION, FILE_KIND::FORCE}) layout[kind == FILE_KIND::FORCE] = built.FRAME_SECTIONS(kind);
  }

  const builder::FRAME_LAYOUT& LAYOUT(FILE_KIND kind) const { return layout[kind == FILE_KIND::FORCE]; }
  bool PRESENT(FILE_KIND kind) const { return (kind == FILE_KIND::MOTION ? job->MOTION : job->FORCE).PRESENT; }

  // The value at an entry's word; entries below 1 continue the section
  // backwards from its first entry, into the sections and frames ahead of it.
  std::optional<float> VALUE(S section, int32_t step, int64_t entry, int32_t component) const {
    const builder::FRAME_LAYOUT& frames = LAYOUT(builder::FILE_OF(section));
    const builder::FRAME_SECTION* found = builder::FIND_SECTION(frames, section);
    if (found == nullptr) return std::nullopt;
    int64_t offset = builder::WORD_OFFSET(frames, {section, step, 1, component}) + found->WORDS_PER_ENTRY * (entry - 1);
    const int64_t frame_words = builder::FRAME_WORDS(frames);
    while (offset < 1) {
      offset += frame_words;
      --step;
    }
    if (step < 1) return std::nullopt;
    return job->VALUE(builder::WORD_AT(frames, step, offset));
  }

  // What the request gives at a step, by the meaning of the request.
  OUTCOME EXPECTED(const REQUEST& r, const ITEM_ARGUMENTS& item, int32_t step) const {
    const std::optional<FILE_KIND> file = FILE_NEEDED(r);
    if (file && !PRESENT(*file)) {
      return {.STATUS = r.TYPE == 11 ? MASK::TYPE_11_FILE_MISSING : MASK::OUTPUT_TYPE_BAD, .VALUE = UNTOUCHED};
    }
    OUTCOME out;
    if (r.ITEM_KIND == ITEM::ELEMENT) {
      if (item.ENTRY == 0 || -item.ENTRY > run.NUM_AUX_ELEMENTS) out.STATUS += MASK::ELEMENT_NOT_FOUND;
    } else if (r.ITEM_KIND != ITEM::NONE && (item.ENTRY == 0 || COUNT(run, r.ITEM_KIND) < item.ENTRY)) {
      out.STATUS += MASK::ITEM_NOT_FOUND;
    }
    for (const int f : r.FLAGS) {
      if (run.OUTPUT_FLAGS[static_cast<std::size_t>(f - 1)] != 1) {
        out.STATUS += MASK::OUTPUT_NOT_WRITTEN;
        break;
      }
    }
    out.VALUE = 0.0F;
    if (out.STATUS != 0) return out;

    const auto AT = [&](const PLACE& place) {
      const int32_t component = place.COMPONENT + (item.LOCATION > 0 ? LOCATION_STRIDE(place.SECTION) * (item.LOCATION - 1) : 0);
      return VALUE(place.SECTION, step, item.ENTRY, component);
    };
    switch (r.HOW) {
      case RESULT::WORD: out.VALUE = AT(r.WORDS.front()); break;
      case RESULT::ZERO: break;
      case RESULT::MAGNITUDE: {
        float sum = 0.0F;
        for (std::size_t i = 0; i < r.WORDS.size(); ++i) {
          const std::optional<float> v = AT(r.WORDS[i]);
          if (!v) return {.STATUS = 0, .VALUE = std::nullopt};
          sum = i == 0 ? *v * *v : sum + *v * *v;
        }
        out.VALUE = std::sqrt(sum);
        break;
      }
      case RESULT::STEP_RECORD:
      case RESULT::FORCE_STEP:
        if (PRESENT(FILE_KIND::MOTION)) {
          out.VALUE = VALUE(S::MOTION_STEP_RECORD, step, 1, r.K);
        } else if (r.HOW == RESULT::FORCE_STEP) {
          out.VALUE = VALUE(S::FORCE_STEP_RECORD, step, 1, r.K);
        } else {
          const builder::FRAME_LAYOUT& frames = LAYOUT(FILE_KIND::FORCE);
          out.VALUE = job->VALUE(builder::WORD_AT(frames, step, builder::FRAME_WORDS(frames) - 8 + r.K));
        }
        break;
    }
    return out;
  }

  static std::string NAME(const REQUEST& r, const ITEM_ARGUMENTS& item) {
    std::ostringstream out;
    out << "type " << r.TYPE << " subtype " << r.SUBTYPE << " node " << item.NODE << " element " << item.ELEMENT
        << " location " << item.LOCATION;
    return out.str();
  }
  // Which frame word a value is, for the messages.
  std::string WHICH(float value) const {
    std::ostringstream out;
    out << value;
    if (const std::optional<FRAME_WORD> word = job->WORD_OF_DEFAULT(value)) out << " (" << *word << ")";
    return out.str();
  }

  void CHECK(const std::string& variant, const REQUEST& r, const ITEM_ARGUMENTS& item) {
    SCOPED_TRACE(variant + ": " + NAME(r, item));
    int32_t type = r.TYPE, subtype = r.SUBTYPE, steps = STEPS;
    std::vector<float> history(STEPS, UNTOUCHED);
    int32_t node = item.NODE, element = item.ELEMENT, location = item.LOCATION;
    const int32_t history_status = GetRequestedHistory(&motion, &force, &type, &subtype, &node, &element, &location,
                                                       &steps, &steps, history.data(), nullptr, 0);
    for (int32_t step = 1; step <= STEPS; ++step) {
      const OUTCOME expected = EXPECTED(r, item, step);
      float value = UNTOUCHED;
      node = item.NODE, element = item.ELEMENT, location = item.LOCATION;
      const int32_t status = GetRequestedSingleValue(&motion, &force, &type, &subtype, &node, &element, &location,
                                                     &steps, &step, &value, nullptr, 0);
      EXPECT_EQ(status, expected.STATUS) << "step " << step;
      EXPECT_EQ(history_status, expected.STATUS);
      if (expected.VALUE) {
        EXPECT_EQ(value, *expected.VALUE) << "step " << step << ": read " << WHICH(value) << ", wanted "
                                          << WHICH(*expected.VALUE);
        EXPECT_EQ(history[static_cast<std::size_t>(step - 1)], *expected.VALUE)
            << "history step " << step << ": read " << WHICH(history[static_cast<std::size_t>(step - 1)]);
      } else {
        EXPECT_EQ(history[static_cast<std::size_t>(step - 1)], value) << "history step " << step;
      }
    }
  }

  // A step past the count, and histories shorter than the steps or of none.
  void STEP_EDGES() {
    int32_t type = 1, subtype = 1, none = 0, steps = STEPS, step = STEPS + 1, count = STEPS - 1;
    float value = UNTOUCHED;
    std::vector<float> history(STEPS, UNTOUCHED);
    const auto HISTORY = [&](float* values) {
      return GetRequestedHistory(&motion, &force, &type, &subtype, &none, &none, &none, &steps, &count, values, nullptr, 0);
    };
    EXPECT_EQ(GetRequestedSingleValue(&motion, &force, &type, &subtype, &none, &none, &none, &steps, &step, &value,
                                      nullptr, 0), MASK::STEP_BAD);
    EXPECT_EQ(HISTORY(history.data()), 0);
    EXPECT_EQ(std::pair(value, history.back()), std::pair(UNTOUCHED, UNTOUCHED));
    count = 0;
    EXPECT_EQ(HISTORY(nullptr), 0);
  }

  testing::SCRATCH_DIR dir;
  const builder::JOB* job = nullptr;
  header::HEADER_VARIABLES run;
  builder::FRAME_LAYOUT layout[2];
  int32_t motion = 0;
  int32_t force = 0;
};

TEST_P(RequestSweep, EveryTypeAndSubtypeReadsItsOwnWordWithSectionsPresentAndAbsent) {
  const header::FORMAT_VERSION& format = *GetParam();
  const std::vector<REQUEST> requests = ALL_REQUESTS(format);
  int stem = 0;
  for (const VARIANT& variant : VARIANTS()) {
    builder::JOB built = FULL_JOB(format);
    variant.CHANGE(built);
    OPEN(built, "job" + std::to_string(++stem));
    if (HasFatalFailure()) return;
    if (stem == 1) STEP_EDGES();
    for (const REQUEST& r : requests) {
      for (const ITEM_ARGUMENTS& item : ITEMS(r.ITEM_KIND)) CHECK(variant.NAME, r, item);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(, RequestSweep, ::testing::ValuesIn(header::FORMAT_VERSIONS),
                         [](const auto& info) { return std::string(info.param->NAME); });

}  // namespace
}  // namespace tmrdar::frame
