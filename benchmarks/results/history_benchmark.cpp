// Histories over 100,000 output steps: a displacement, an element force and
// a guide surface reaction magnitude, each one value a step read from its
// own frame; in the newest format, in V841 (the record file without a
// directory) and in V811 (the direct-access units). Beside them, in the same
// run and on the same file, the two anchors of the displacement history: the
// same 100,000 words read by one pread each, and gathered from a mapping of
// the file (the machine's limit for this access pattern).
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstring>

#include <filesystem>
#include <string>
#include <vector>

#include "builder/job.h"
#include "header/tide3_database_files.h"
#include "results/requests.h"

namespace {

using tmrdar::builder::JOB;
using tmrdar::results::REQUEST_ARGUMENTS;

constexpr int32_t STEPS = 100'000;

tmrdar::header::TIDE3_DATABASE_FILES& OPEN_LONG_RUN(const tmrdar::header::FORMAT_VERSION& format) {
  static const std::string dir = [] {
    const std::filesystem::path path = std::filesystem::temp_directory_path() / "tmrdar_history_benchmark";
    std::filesystem::create_directories(path);
    return path.string() + "/";
  }();
  const std::string name = "long-" + std::string(format.NAME);
  tmrdar::header::TIDE3_DATABASE_FILES& db = *tmrdar::header::TIDE3_DATABASE_MODULE(format.DATABASE_VERSION);
  if (db.NUM_TIME_STEPS != STEPS) {
    JOB job(format);
    job.RUN.NUM_TIME_STEPS = STEPS;
    job.MODEL.NODES = {{.FILE_NUMBER = 1, .USER_NUMBER = 1}, {.FILE_NUMBER = 2, .X = 10.0F, .USER_NUMBER = 2}};
    job.MODEL.ELEMENTS = {{.FILE_NUMBER = 1, .USER_NUMBER = 1, .NODES = {1, 2}, .LENGTH = 10.0F}};
    job.MODEL.GUIDE_SURFACES = {{.ID = 1, .NAME = "Guide"}};
    job.RUN.OUTPUT_FLAGS[0] = 1;  // displacements
    job.RUN.OUTPUT_FLAGS[3] = 1;  // reactions and contact sections
    job.RUN.OUTPUT_FLAGS[4] = 1;  // the first element section
    job.WRITE(dir + name);
    bool failed = false;
    db.OPEN_TIDE3_DATABASE_FILES(name, dir, failed);
  }
  return db;
}

void HISTORY(benchmark::State& state, const tmrdar::header::FORMAT_VERSION* format, REQUEST_ARGUMENTS request) {
  tmrdar::header::TIDE3_DATABASE_FILES& db = OPEN_LONG_RUN(*format);
  std::vector<float> values(STEPS);
  for (auto _ : state) {
    int32_t status = 0;
    tmrdar::results::GETREQUESTEDHISTORY(db, request, values, status);
    if (status != 0) state.SkipWithError("the history was refused");
    benchmark::DoNotOptimize(values.data());
  }
  state.SetItemsProcessed(state.iterations() * STEPS);
}

constexpr REQUEST_ARGUMENTS DISPLACEMENT{.OUTPUT_TYPE = 5, .PARAMETER = 2, .NODE = 2};
constexpr REQUEST_ARGUMENTS ELEMENT_FORCE{.OUTPUT_TYPE = 17, .PARAMETER = 1, .ELEMENT = 1, .LOCATION = 2};
constexpr REQUEST_ARGUMENTS GUIDE_REACTION{.OUTPUT_TYPE = 14, .PARAMETER = 4, .NODE = 1};
using tmrdar::header::V811;
using tmrdar::header::V841;
using tmrdar::header::V861;

// The byte offsets (from 0) of the displacement's word in each step's frame
// of the newest format's motion file, as the library reads them.
const std::vector<int64_t>& DISPLACEMENT_OFFSETS() {
  static const std::vector<int64_t> offsets = [] {
    tmrdar::header::TIDE3_DATABASE_FILES& db = OPEN_LONG_RUN(tmrdar::header::V861);
    std::vector<std::pair<int32_t, int64_t>> log;
    db.READ_LOG = &log;
    for (int32_t step = 1; step <= STEPS; ++step) {
      float value = 0.0F;
      int32_t status = 0;
      tmrdar::results::GETREQUESTEDSINGLEVALUE(db, DISPLACEMENT, step, value, status);
    }
    db.READ_LOG = nullptr;
    std::vector<int64_t> result;
    for (const auto& [file, word] : log) result.push_back(4 * (word - 1));
    return result;
  }();
  return offsets;
}

void ANCHOR_PREAD_LOOP(benchmark::State& state) {
  const std::vector<int64_t>& offsets = DISPLACEMENT_OFFSETS();
  const int descriptor = ::open(OPEN_LONG_RUN(tmrdar::header::V861).MOTION_FILE.NAME().c_str(), O_RDONLY);
  std::vector<float> values(offsets.size());
  for (auto _ : state) {
    for (std::size_t i = 0; i < offsets.size(); ++i) {
      if (::pread(descriptor, &values[i], 4, static_cast<off_t>(offsets[i])) != 4) state.SkipWithError("short read");
    }
    benchmark::DoNotOptimize(values.data());
  }
  ::close(descriptor);
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(offsets.size()));
}

void ANCHOR_MAPPED_GATHER(benchmark::State& state) {
  const std::vector<int64_t>& offsets = DISPLACEMENT_OFFSETS();
  const int descriptor = ::open(OPEN_LONG_RUN(tmrdar::header::V861).MOTION_FILE.NAME().c_str(), O_RDONLY);
  struct stat info {};
  ::fstat(descriptor, &info);
  const auto size = static_cast<std::size_t>(info.st_size);
  void* map = ::mmap(nullptr, size, PROT_READ, MAP_SHARED, descriptor, 0);
  const auto* bytes = static_cast<const char*>(map);
  std::vector<float> values(offsets.size());
  for (auto _ : state) {
    for (std::size_t i = 0; i < offsets.size(); ++i) std::memcpy(&values[i], bytes + offsets[i], 4);
    benchmark::DoNotOptimize(values.data());
  }
  ::munmap(map, size);
  ::close(descriptor);
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(offsets.size()));
}

BENCHMARK(ANCHOR_PREAD_LOOP)->Unit(benchmark::kMillisecond);
BENCHMARK(ANCHOR_MAPPED_GATHER)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(HISTORY, displacement_V861, &V861, DISPLACEMENT)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(HISTORY, element_force_V861, &V861, ELEMENT_FORCE)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(HISTORY, guide_reaction_magnitude_V861, &V861, GUIDE_REACTION)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(HISTORY, displacement_V841, &V841, DISPLACEMENT)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(HISTORY, displacement_V811, &V811, DISPLACEMENT)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(HISTORY, element_force_V811, &V811, ELEMENT_FORCE)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(HISTORY, guide_reaction_magnitude_V811, &V811, GUIDE_REACTION)->Unit(benchmark::kMillisecond);

}  // namespace
