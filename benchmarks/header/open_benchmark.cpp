// Opening jobs, with the anchors the opens are measured against in the same
// run: a model of 100,000 elements and 100,001 nodes whose node file numbers
// are shuffled (the element ends are translated from file numbers to rows at
// open), against a plain read of the motion file's bytes; and a small model
// (two nodes) with 100,000 output steps, whose step time list is read at
// open, against the same model with one step. (The large model's frames hold
// a contact entry for every node, 3.2 mb a step, so it cannot be written
// with 100,000 steps.)
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "builder/job.h"
#include "header/format_reader.h"
#include "header/result_frames.h"

namespace {

using tmrdar::builder::Job;
using tmrdar::builder::Record;

constexpr int32_t element_count = 100'000;
constexpr int32_t node_count = element_count + 1;

std::string benchmark_dir() {
  const std::filesystem::path dir = std::filesystem::temp_directory_path() / "tmrdar_open_benchmark";
  std::filesystem::create_directories(dir);
  return dir.string() + "/";
}

// Node row r has file number FILE_NUMBERS[r - 1], a permutation of 1 to
// nodes; element e joins the nodes of rows e and e + 1 by their file numbers.
std::string write_large_model(int32_t steps, const std::string& name) {  // steps of 3.2 mb each
  std::vector<int32_t> file_numbers(node_count);
  std::iota(file_numbers.begin(), file_numbers.end(), 1);
  std::shuffle(file_numbers.begin(), file_numbers.end(), std::mt19937(20));
  Job job;
  job.run.num_elements = element_count;
  job.run.num_nodes = node_count;
  job.run.num_time_steps = steps;
  std::vector<Record>& elements = job.blocks[16];
  std::vector<Record>& nodes = job.blocks[19];
  for (int32_t i = 1; i <= element_count; ++i) {
    const int32_t first = file_numbers[static_cast<std::size_t>(i - 1)];
    const int32_t second = file_numbers[static_cast<std::size_t>(i)];
    elements.push_back(Record::ints({i, i, first, second}).real(5, 1.5F));
    elements.emplace_back();
    elements.emplace_back();
  }
  for (int32_t i = 1; i <= node_count; ++i) {
    nodes.push_back(Record::ints({file_numbers[static_cast<std::size_t>(i - 1)]}).real(2, static_cast<float>(i)).integer(5, i));
  }
  const std::string dir = benchmark_dir();
  job.write(dir + name);
  return dir;
}

const std::string& large_model_dir() {
  static const std::string dir = write_large_model(10, "large");
  return dir;
}

void BM_OpenLargeModel(benchmark::State& state) {
  const int32_t steps = 10;
  const std::string name = "large";
  const std::string& dir = large_model_dir();
  tmrdar::header::FormatReader& db = tmrdar::header::v861_database_files();
  for (auto _ : state) {
    bool failed = false;
    db.open_database_files(name, dir, failed);
    if (failed || db.tables.element_nodes(element_count, 2) != node_count || db.num_time_steps != steps) {
      state.SkipWithError("the model did not read back");
    }
    db.close_database_files();
  }
  state.SetItemsProcessed(state.iterations() * element_count);
}
BENCHMARK(BM_OpenLargeModel)->Unit(benchmark::kMillisecond);

// The anchor: every byte of the large model's motion file, read into memory
// in chunks of 1 MiB.
void BM_PlainReadOfLargeModel(benchmark::State& state) {
  const std::string path = large_model_dir() + "large.dbm";
  std::vector<char> buffer(std::filesystem::file_size(path));
  for (auto _ : state) {
    const int descriptor = ::open(path.c_str(), O_RDONLY);
    std::size_t done = 0;
    while (done < buffer.size()) {
      const ssize_t got = ::read(descriptor, buffer.data() + done, std::min<std::size_t>(buffer.size() - done, 1 << 20));
      if (got <= 0) break;
      done += static_cast<std::size_t>(got);
    }
    ::close(descriptor);
    if (done != buffer.size()) state.SkipWithError("short read");
    benchmark::DoNotOptimize(buffer.data());
  }
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(buffer.size()));
}
BENCHMARK(BM_PlainReadOfLargeModel)->Unit(benchmark::kMillisecond);

// A small model (two nodes, one element, a guide surface; displacements,
// reactions and one element section written) with the given number of steps.
std::string write_run(int32_t steps) {
  const std::string dir = benchmark_dir();
  const std::string name = "run-" + std::to_string(steps);
  Job job;
  job.run.num_time_steps = steps;
  job.model.nodes = {{.file_number = 1, .user_number = 1}, {.file_number = 2, .x = 10.0F, .user_number = 2}};
  job.model.elements = {{.file_number = 1, .user_number = 1, .nodes = {1, 2}, .length = 10.0F}};
  job.model.guide_surfaces = {{.id = 1, .name = "Guide"}};
  job.run.output_flags[0] = 1;
  job.run.output_flags[3] = 1;
  job.run.output_flags[4] = 1;
  job.write(dir + name);
  return name;
}

void BM_OpenRun(benchmark::State& state) {
  const auto steps = static_cast<int32_t>(state.range(0));
  const std::string name = write_run(steps);
  const std::string dir = benchmark_dir();
  tmrdar::header::FormatReader& db = tmrdar::header::v861_database_files();
  for (auto _ : state) {
    bool failed = false;
    db.open_database_files(name, dir, failed);
    if (failed || db.num_time_steps != steps) state.SkipWithError("the run did not open");
    db.close_database_files();
  }
}
BENCHMARK(BM_OpenRun)->Arg(1)->Arg(100'000)->Unit(benchmark::kMillisecond);

// The anchor of the step times: what the open of the 100,000-step run must
// do at the least, a fresh mapping of its motion file and a copy of each
// step's time out of it, by the offsets the reader forms.
void BM_StepTimeGatherAnchor(benchmark::State& state) {
  const int32_t steps = 100'000;
  const std::string path = benchmark_dir() + write_run(steps) + ".dbm";
  tmrdar::header::FormatReader& db = tmrdar::header::v861_database_files();
  bool failed = false;
  db.open_database_files("run-" + std::to_string(steps), benchmark_dir(), failed);
  std::vector<int64_t> offsets;
  for (int32_t n = 1; n <= steps; ++n) offsets.push_back(4 * (tmrdar::header::tb(db, n) - 7 - 1));
  db.close_database_files();
  std::vector<float> times(offsets.size());
  for (auto _ : state) {
    const int descriptor = ::open(path.c_str(), O_RDONLY);
    struct stat info {};
    ::fstat(descriptor, &info);
    const auto size = static_cast<std::size_t>(info.st_size);
    void* map = ::mmap(nullptr, size, PROT_READ, MAP_SHARED, descriptor, 0);
    const auto* bytes = static_cast<const char*>(map);
    for (std::size_t i = 0; i < offsets.size(); ++i) std::memcpy(&times[i], bytes + offsets[i], 4);
    benchmark::DoNotOptimize(times.data());
    ::munmap(map, size);
    ::close(descriptor);
  }
  if (failed) state.SkipWithError("the run did not open");
}
BENCHMARK(BM_StepTimeGatherAnchor)->Unit(benchmark::kMillisecond);

}  // namespace
