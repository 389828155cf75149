// Asking for every node, every element and every distance of a model, through
// the exports, for models of 10,000 to 100,000 elements: the cost of the whole
// walk grows linearly with the model.
//
// The models are numbered backwards, so that no element number is found by
// its own row, and half their elements lie inside pipe-in-pipe connections
// whose table is as long as the model has elements.
#include <benchmark/benchmark.h>

#include <array>
#include <filesystem>
#include <map>
#include <string>

#include "builder/job.h"
#include "tmrdar/tmrdar.h"

namespace {

using tmrdar::builder::Job;

constexpr int32_t rows_per_connection = 50;

std::string write_model(int32_t elements) {
  const std::filesystem::path dir = std::filesystem::temp_directory_path() / "tmrdar_query_benchmark";
  std::filesystem::create_directories(dir);
  Job job;
  job.run.num_time_steps = 1;
  tmrdar::builder::Model& m = job.model;
  const int32_t nodes = elements + 1;
  m.nodes.reserve(static_cast<std::size_t>(nodes));
  for (int32_t j = 1; j <= nodes; ++j) {
    m.nodes.push_back({.file_number = j, .x = static_cast<float>(j), .user_number = nodes + 1 - j});
  }
  m.elements.reserve(static_cast<std::size_t>(elements));
  for (int32_t i = 1; i <= elements; ++i) {
    m.elements.push_back({.file_number = i,
                          .user_number = elements + 1 - i,
                          .nodes = {i, i + 1},
                          .length = 1.5F,
                          .b1 = 1.0F,
                          .material_2 = 3});
  }
  // Connection c: elements 2Rc + 1 to 2Rc + R around elements 2Rc + R + 1 to
  // 2Rc + 2R, R rows each.
  for (int32_t c = 0; 2 * rows_per_connection * (c + 1) <= elements; ++c) {
    tmrdar::builder::PipConnection connection;
    for (int32_t r = 1; r <= rows_per_connection; ++r) {
      const int32_t outer = 2 * rows_per_connection * c + r;
      connection.push_back({outer, outer + rows_per_connection});
    }
    m.pipe_in_pipe.push_back(connection);
  }
  const std::string stem = (dir / ("model_" + std::to_string(elements))).string();
  job.write(stem);
  return stem;
}

// Opens the model of this many elements, writing it the first time.
bool open_model(int32_t elements) {
  static std::map<int32_t, std::string> written;
  static int32_t open = 0;
  if (open == elements) return true;
  auto found = written.find(elements);
  if (found == written.end()) found = written.emplace(elements, write_model(elements)).first;
  const std::string& stem = found->second;
  int32_t m = 0;
  int32_t f = 0;
  std::array<int32_t, 5> words{};
  std::array<int32_t, 14> dims{};
  const int32_t n = 14;
  const bool ok = GetDatabaseInfo(&m, &f, words.data(), words.data(), &n, dims.data(), stem.data(),
                                  static_cast<int64_t>(stem.size())) == 0 &&
                  m == 13 && dims[2] == elements;
  open = ok ? elements : 0;
  return ok;
}

const int32_t code = 13;

void BM_EveryNode(benchmark::State& state) {
  const auto elements = static_cast<int32_t>(state.range(0));
  if (!open_model(elements)) return state.SkipWithError("the model did not open");
  const int32_t kind = 0;
  for (auto _ : state) {
    double sum = 0.0;
    for (int32_t node = 1; node <= elements + 1; ++node) {
      std::array<float, 3> xyz{};
      if (GetNodeProperties(&code, &code, &node, &kind, xyz.data()) != elements + 2 - node) {
        return state.SkipWithError("a node was not found in its row");
      }
      sum += xyz[0];
    }
    benchmark::DoNotOptimize(sum);
  }
  state.SetComplexityN(elements);
  state.SetItemsProcessed(state.iterations() * (elements + 1));
}

void BM_EveryElement(benchmark::State& state) {
  const auto elements = static_cast<int32_t>(state.range(0));
  if (!open_model(elements)) return state.SkipWithError("the model did not open");
  const int32_t kind = 0;
  const int32_t n = 15;
  for (auto _ : state) {
    int64_t sum = 0;
    for (int32_t element = 1; element <= elements; ++element) {
      std::array<int32_t, 15> ints{};
      std::array<float, 15> reals{};
      if (GetElementProperties(&code, &code, &element, &kind, &n, ints.data(), reals.data()) != 0) {
        return state.SkipWithError("an element was not found");
      }
      sum += ints[0] + ints[1];
    }
    benchmark::DoNotOptimize(sum);
  }
  state.SetComplexityN(elements);
  state.SetItemsProcessed(state.iterations() * elements);
}

void BM_EveryDistance(benchmark::State& state) {
  const auto elements = static_cast<int32_t>(state.range(0));
  if (!open_model(elements)) return state.SkipWithError("the model did not open");
  for (auto _ : state) {
    float last = 0.0F;
    for (int32_t element = 1; element <= elements; ++element) {
      for (int32_t position = 1; position <= 3; ++position) {
        if (GetDistanceAlongRiser(&code, &code, &element, &position, &last) != 0) {
          return state.SkipWithError("an element was not found");
        }
      }
    }
    benchmark::DoNotOptimize(last);
  }
  state.SetComplexityN(elements);
  state.SetItemsProcessed(state.iterations() * elements * 3);
}

BENCHMARK(BM_EveryNode)->Arg(10'000)->Arg(25'000)->Arg(50'000)->Arg(100'000)->Unit(benchmark::kMillisecond)->Complexity(benchmark::oN);
BENCHMARK(BM_EveryElement)->Arg(10'000)->Arg(25'000)->Arg(50'000)->Arg(100'000)->Unit(benchmark::kMillisecond)->Complexity(benchmark::oN);
BENCHMARK(BM_EveryDistance)->Arg(10'000)->Arg(25'000)->Arg(50'000)->Arg(100'000)->Unit(benchmark::kMillisecond)->Complexity(benchmark::oN);

}  // namespace
