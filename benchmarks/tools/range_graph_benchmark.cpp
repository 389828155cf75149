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

constexpr int32_t elements = 10'000;
constexpr int32_t steps = 1'000;

// The job, written once into the temporary directory, and held open.
tmrdar::job& long_riser() {
  static tmrdar::job job = [] {
    const std::filesystem::path dir = std::filesystem::temp_directory_path() / "tmrdar_range_graph_benchmark";
    std::filesystem::create_directories(dir);
    const std::string stem = (dir / "riser").string();
    tmrdar::builder::Job riser;
    riser.run.num_time_steps = steps;
    riser.run.output_flags[4] = 1;  // the first element section
    for (int32_t n = 1; n <= elements + 1; ++n) {
      riser.model.nodes.push_back({.file_number = n, .x = static_cast<float>(n), .user_number = n});
    }
    for (int32_t e = 1; e <= elements; ++e) {
      riser.model.elements.push_back({.file_number = e, .user_number = e, .nodes = {e, e + 1}, .length = 1.0F});
    }
    for (int32_t step = 1; step <= steps; step += 97) {
      riser.results.set(tmrdar::builder::SectionKind::element_9, step, 1 + step % elements, 2,
                        static_cast<float>(step));
    }
    riser.write(stem);
    return tmrdar::job(stem);
  }();
  return job;
}

void range_graph(benchmark::State& state) {
  const tmrdar::job& job = long_riser();
  tmrdar::request tension;
  tension.output_type = tmrdar::output_type::element_force;
  tension.subtype = tmrdar::element_force::section_1;
  std::vector<tmrdar::riser_point> points = job.riser_points(tension.output_type);
  points.resize(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    const std::vector<tmrdar::range_point> graph = job.range_graph(tension, 1, steps, points);
    benchmark::DoNotOptimize(graph.data());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
  state.counters["history_reads"] = static_cast<double>(state.range(0));
}

BENCHMARK(range_graph)->Arg(300)->Arg(3'000)->Arg(30'000)->Unit(benchmark::kMillisecond);

}  // namespace
