// A small job with an item of every kind, and a host's session over it:
// every export, each answer recorded, so that two sessions can be compared.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "builder/job.h"
#include "tmrdar/tmrdar.h"

namespace tmrdar::testing {

// Three steps, every output flag set, three nodes, two elements, an
// auxiliary node and element, a label of each kind, sets and a stress-strain
// curve: small enough to be cut at every byte.
inline builder::Job small_job(const header::FormatVersion& format) {
  builder::Job job(format);
  header::HeaderVariables& run = job.run;
  run.num_time_steps = 3;
  run.output_flags.fill(1);
  run.num_guide_surfaces = 1;
  run.num_zero_gap_guides = 1;
  run.num_clash_pairs = 2;
  run.num_pip_connections = 1;
  run.num_vessels = 1;
  run.aux_element_result_sets = 1;
  run.analysis_title.assign("Small job");
  job.model.nodes = {{.file_number = 1, .x = 1.0F, .user_number = 10},
                     {.file_number = 2, .x = 2.0F, .user_number = 20},
                     {.file_number = 3, .x = 3.0F, .user_number = 30}};
  job.model.elements = {{.file_number = 1, .user_number = 100, .nodes = {1, 2}},
                        {.file_number = 2, .user_number = 200, .nodes = {2, 3}}};
  job.model.aux_nodes = {{.number = 7}};
  job.model.aux_elements = {{.number = 5, .nodes = {1, 2}}};
  job.model.boundary_conditions = {3};
  job.model.damper_elements = {1};
  job.model.labels = {{.name = "top", .number = 10, .kind = 1}, {.name = "sag", .number = 200, .kind = 2}};
  job.model.element_sets = {{"all", {100, 200}}};
  job.model.node_sets = {{"ends", {10, 30}}};
  job.model.nonlinear_e_tables = {{.curve = 1, .points = 2, .value_1 = 0.0F, .value_2 = 0.0F},
                                  {.curve = 0, .points = 0, .value_1 = 0.001F, .value_2 = 200.0F},
                                  {.curve = 0, .points = 0, .value_1 = 0.002F, .value_2 = 300.0F}};
  return job;
}

// What the exports answered, in the order asked: result codes and every
// integer output, and every real output (compared bit for bit).
struct Answers {
  std::vector<int32_t> codes;
  std::vector<float> reals;
  bool operator==(const Answers& other) const {
    return codes == other.codes && reals.size() == other.reals.size() &&
           std::equal(reals.begin(), reals.end(), other.reals.begin(),
                      [](float a, float b) { return std::memcmp(&a, &b, sizeof a) == 0; });
  }
};

// The output types 1 to 18 as a request names their items: the node (or
// index) argument, the element and the highest subtype.
struct TypeItem {
  int32_t node, element, subtypes;
};
inline constexpr std::array<TypeItem, 18> type_items{{{0, 0, 1},   {0, 0, 1},   {0, 0, 1},   {0, 0, 1},  {10, 0, 7},
                                                       {20, 0, 7},  {30, 0, 7},  {1, 0, 9},   {1, 0, 6},  {10, 0, 7},
                                                       {2, 0, 3},   {7, 0, 3},   {30, 0, 7},  {1, 0, 4},  {1, 0, 4},
                                                       {1, 0, 4},   {0, 100, 14}, {0, 200, 2}}};

// How much a session asks.
enum class Asked {
  each_export_once,  // every export once, on a node and an element
  each_type,         // the model queries of every item, and the first and last subtype of each output type
                     // at the last step and as a history
  every_subtype,     // every subtype of every output type at every step, with the error decoders
};

// The model queries, the analysis details, and single values and histories
// of the job open under the two codes.
inline Answers ask_every_export(int32_t motion, int32_t force, int32_t steps, Asked asked) {
  Answers a;
  if (asked == Asked::each_export_once) {
    int32_t d1 = 0, d2 = 0, node = 10, element = 100, kind = 0, length = 15, position = 2, curve = 1, capacity = 4;
    int32_t type = 5, subtype = 1, step = 1, history = 17;
    float d3 = 0.0F, distance = 0.0F, value = 0.0F;
    std::array<char, 20> title{};
    std::array<float, 15> reals{};
    std::array<int32_t, 16> ints{};
    std::vector<float> values(static_cast<std::size_t>(std::max(steps, 0)));
    a.codes = {GetAnalysisDetails(&d1, &d2, &d3, title.data(), 20),
               GetNodeProperties(&motion, &force, &node, &kind, reals.data()),
               GetElementProperties(&motion, &force, &element, &kind, &length, ints.data(), reals.data()),
               GetDistanceAlongRiser(&motion, &force, &element, &position, &distance),
               GetProcessedDirectStressStrainData(&motion, &force, &curve, &capacity, reals.data()),
               GetRequestedSingleValue(&motion, &force, &type, &subtype, &node, &element, &position, &steps, &step,
                                       &value, nullptr, 0),
               GetRequestedHistory(&motion, &force, &history, &subtype, &node, &element, &position, &steps, &steps,
                                   values.data(), nullptr, 0)};
    a.codes.push_back(GetRequestedSingleValueError(&a.codes[5], &length, ints.data()));
    a.codes.push_back(GetRequestedHistoryError(&a.codes[6], &length, ints.data()));
    return a;
  }
  const bool every_subtype = asked == Asked::every_subtype;
  int32_t d1 = 0, d2 = 0;
  float d3 = 0.0F;
  std::string title(20, ' ');
  a.codes.push_back(GetAnalysisDetails(&d1, &d2, &d3, title.data(), static_cast<int64_t>(title.size())));
  a.codes.insert(a.codes.end(), {d1, d2});
  a.reals.push_back(d3);
  for (const char c : title) a.codes.push_back(c);
  for (const int32_t kind : {0, 1}) {
    for (const int32_t number : {10, 30, 7, 5, 100, 200, 99}) {
      std::array<float, 3> xyz{};
      a.codes.push_back(GetNodeProperties(&motion, &force, &number, &kind, xyz.data()));
      a.reals.insert(a.reals.end(), xyz.begin(), xyz.end());
      int32_t length = 15;
      std::array<int32_t, 15> ints{};
      std::array<float, 15> reals{};
      a.codes.push_back(GetElementProperties(&motion, &force, &number, &kind, &length, ints.data(), reals.data()));
      a.codes.insert(a.codes.end(), ints.begin(), ints.end());
      a.reals.insert(a.reals.end(), reals.begin(), reals.end());
    }
  }
  for (const int32_t element : {100, 200, 5}) {
    for (int32_t position = 1; position <= 3; ++position) {
      float distance = 0.0F;
      a.codes.push_back(GetDistanceAlongRiser(&motion, &force, &element, &position, &distance));
      a.reals.push_back(distance);
    }
  }
  for (const int32_t curve : {1, 2}) {
    int32_t capacity = 4;
    std::array<float, 8> pairs{};
    a.codes.push_back(GetProcessedDirectStressStrainData(&motion, &force, &curve, &capacity, pairs.data()));
    a.reals.insert(a.reals.end(), pairs.begin(), pairs.end());
  }
  for (int32_t type = 1; type <= 18; ++type) {
    const TypeItem& item = type_items[static_cast<std::size_t>(type - 1)];
    for (int32_t subtype = 1; subtype <= item.subtypes; ++subtype) {
      if (!every_subtype && subtype != 1 && subtype != item.subtypes) continue;
      for (int32_t step = every_subtype ? 1 : steps; step <= steps; ++step) {
        int32_t node = item.node, element = item.element, position = item.element != 0 ? 2 : 0;
        float value = -7777.0F;
        const int32_t status = GetRequestedSingleValue(&motion, &force, &type, &subtype, &node, &element, &position,
                                                       &steps, &step, &value, nullptr, 0);
        a.codes.insert(a.codes.end(), {status, node, element, position});
        a.reals.push_back(value);
        if (every_subtype) {
          int32_t length = 16;
          std::array<int32_t, 16> flags{};
          a.codes.push_back(GetRequestedSingleValueError(&status, &length, flags.data()));
          a.codes.insert(a.codes.end(), flags.begin(), flags.end());
        }
      }
      int32_t node = item.node, element = item.element, position = item.element != 0 ? 1 : 0;
      std::vector<float> values(static_cast<std::size_t>(std::max(steps, 0)), -7777.0F);
      a.codes.push_back(GetRequestedHistory(&motion, &force, &type, &subtype, &node, &element, &position, &steps,
                                            &steps, values.data(), "sag", 3));
      a.reals.insert(a.reals.end(), values.begin(), values.end());
    }
  }
  return a;
}

}  // namespace tmrdar::testing
