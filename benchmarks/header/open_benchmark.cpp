// Opening jobs, with the anchors the opens are measured against in the same
// run: a model of 100,000 elements and 100,001 nodes whose node file numbers
// are shuffled (the element ends are translated from file numbers to rows at
// open), against a plain read of the motion file's bytes; and a small model
// (two nodes) with 100,000 output steps, whose step time list is read at
// open, against the same model with one step. (The large model's frames hold
// a contact entry for every node, 3.2 MB a step, so it cannot be written
// with 100,000 steps.)
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "builder/job.h"
#include "header/tide3_database_files.h"

namespace {

using tmrdar::builder::JOB;
using tmrdar::builder::RECORD;

constexpr int32_t ELEMENTS = 100'000;
constexpr int32_t NODES = ELEMENTS + 1;

std::string BENCHMARK_DIR() {
  const std::filesystem::path dir = std::filesystem::temp_directory_path() / "tmrdar_open_benchmark";
  std::filesystem::create_directories(dir);
  return dir.string() + "/";
}

// Node row r has file number FILE_NUMBERS[r - 1], a permutation of 1 to
// NODES; element e joins the nodes of rows e and e + 1 by their file numbers.
std::string WRITE_LARGE_MODEL(int32_t steps, const std::string& name) {  // steps of 3.2 MB each
  std::vector<int32_t> file_numbers(NODES);
  std::iota(file_numbers.begin(), file_numbers.end(), 1);
  std::shuffle(file_numbers.begin(), file_numbers.end(), std::mt19937(20));
  JOB job;
  job.RUN.NUM_ELEMENTS = ELEMENTS;
  job.RUN.NUM_NODES = NODES;
  job.RUN.NUM_TIME_STEPS = steps;
  std::vector<RECORD>& elements = job.BLOCKS[16];
  std::vector<RECORD>& nodes = job.BLOCKS[19];
  for (int32_t i = 1; i <= ELEMENTS; ++i) {
    const int32_t first = file_numbers[static_cast<std::size_t>(i - 1)];
    const int32_t second = file_numbers[static_cast<std::size_t>(i)];
    elements.push_back(RECORD::INTS({i, i, first, second}).REAL(5, 1.5F));
    elements.emplace_back();
    elements.emplace_back();
  }
  for (int32_t i = 1; i <= NODES; ++i) {
    nodes.push_back(RECORD::INTS({file_numbers[static_cast<std::size_t>(i - 1)]}).REAL(2, static_cast<float>(i)).INT(5, i));
  }
  const std::string dir = BENCHMARK_DIR();
  job.WRITE(dir + name);
  return dir;
}

const std::string& LARGE_MODEL_DIR() {
  static const std::string dir = WRITE_LARGE_MODEL(10, "large");
  return dir;
}

void BM_OpenLargeModel(benchmark::State& state) {
  const int32_t steps = 10;
  const std::string name = "large";
  const std::string& dir = LARGE_MODEL_DIR();
  tmrdar::header::TIDE3_DATABASE_FILES& db = tmrdar::header::V861_TIDE3_DATABASE_FILES();
  for (auto _ : state) {
    bool failed = false;
    db.OPEN_TIDE3_DATABASE_FILES(name, dir, failed);
    if (failed || db.TABLES.ELEMENT_NODES(ELEMENTS, 2) != NODES || db.NUM_TIME_STEPS != steps) {
      state.SkipWithError("the model did not read back");
    }
    db.CLOSE_TIDE3_DATABASE_FILES();
  }
  state.SetItemsProcessed(state.iterations() * ELEMENTS);
}
BENCHMARK(BM_OpenLargeModel)->Unit(benchmark::kMillisecond);

// The anchor: every byte of the large model's motion file, read into memory
// in chunks of 1 MiB.
void BM_PlainReadOfLargeModel(benchmark::State& state) {
  const std::string path = LARGE_MODEL_DIR() + "large.dbm";
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
std::string WRITE_RUN(int32_t steps) {
  const std::string dir = BENCHMARK_DIR();
  const std::string name = "run-" + std::to_string(steps);
  JOB job;
  job.RUN.NUM_TIME_STEPS = steps;
  job.MODEL.NODES = {{.FILE_NUMBER = 1, .USER_NUMBER = 1}, {.FILE_NUMBER = 2, .X = 10.0F, .USER_NUMBER = 2}};
  job.MODEL.ELEMENTS = {{.FILE_NUMBER = 1, .USER_NUMBER = 1, .NODES = {1, 2}, .LENGTH = 10.0F}};
  job.MODEL.GUIDE_SURFACES = {{.ID = 1, .NAME = "Guide"}};
  job.RUN.OUTPUT_FLAGS[0] = 1;
  job.RUN.OUTPUT_FLAGS[3] = 1;
  job.RUN.OUTPUT_FLAGS[4] = 1;
  job.WRITE(dir + name);
  return name;
}

void BM_OpenRun(benchmark::State& state) {
  const auto steps = static_cast<int32_t>(state.range(0));
  const std::string name = WRITE_RUN(steps);
  const std::string dir = BENCHMARK_DIR();
  tmrdar::header::TIDE3_DATABASE_FILES& db = tmrdar::header::V861_TIDE3_DATABASE_FILES();
  for (auto _ : state) {
    bool failed = false;
    db.OPEN_TIDE3_DATABASE_FILES(name, dir, failed);
    if (failed || db.NUM_TIME_STEPS != steps) state.SkipWithError("the run did not open");
    db.CLOSE_TIDE3_DATABASE_FILES();
  }
}
BENCHMARK(BM_OpenRun)->Arg(1)->Arg(100'000)->Unit(benchmark::kMillisecond);

}  // namespace
