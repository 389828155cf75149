// Range graphs of the effective tension through the C++ interface: a model
// of 10,000 elements over 1,000 output steps, the graph of its first N
// element positions, one history read each, up to every one of its 30,000.
// items/s counts the history reads.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>
#include <vector>

#include "builder/job.h"
#include "tmrdar/tmrdar.hpp"

namespace {

constexpr int32_t ELEMENTS = 10'000;
constexpr int32_t STEPS = 1'000;

// The job, written once into the temporary directory, and held open.
tmrdar::JOB& LONG_RISER() {
  static tmrdar::JOB job = [] {
    const std::filesystem::path dir = std::filesystem::temp_directory_path() / "tmrdar_range_graph_benchmark";
    std::filesystem::create_directories(dir);
    const std::string stem = (dir / "riser").string();
    tmrdar::builder::JOB riser;
    riser.RUN.NUM_TIME_STEPS = STEPS;
    riser.RUN.OUTPUT_FLAGS[4] = 1;  // the first element section
    for (int32_t n = 1; n <= ELEMENTS + 1; ++n) {
      riser.MODEL.NODES.push_back({.FILE_NUMBER = n, .X = static_cast<float>(n), .USER_NUMBER = n});
    }
    for (int32_t e = 1; e <= ELEMENTS; ++e) {
      riser.MODEL.ELEMENTS.push_back({.FILE_NUMBER = e, .USER_NUMBER = e, .NODES = {e, e + 1}, .LENGTH = 1.0F});
    }
    for (int32_t step = 1; step <= STEPS; step += 97) {
      riser.RESULTS.SET(tmrdar::builder::SECTION_KIND::ELEMENT_9, step, 1 + step % ELEMENTS, 2,
                        static_cast<float>(step));
    }
    riser.WRITE(stem);
    return tmrdar::JOB(stem);
  }();
  return job;
}

void RANGE_GRAPH(benchmark::State& state) {
  const tmrdar::JOB& job = LONG_RISER();
  tmrdar::REQUEST tension;
  tension.OUTPUT_TYPE = tmrdar::OUTPUT_TYPE::ELEMENT_FORCE;
  tension.SUBTYPE = tmrdar::ELEMENT_FORCE::SECTION_1;
  std::vector<tmrdar::RISER_POINT> points = job.RISER_POINTS(tension.OUTPUT_TYPE);
  points.resize(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    const std::vector<tmrdar::RANGE_POINT> graph = job.RANGE_GRAPH(tension, 1, STEPS, points);
    benchmark::DoNotOptimize(graph.data());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
  state.counters["history_reads"] = static_cast<double>(state.range(0));
}

BENCHMARK(RANGE_GRAPH)->Arg(300)->Arg(3'000)->Arg(30'000)->Unit(benchmark::kMillisecond);

}  // namespace
