// Histories over 100,000 output steps: a displacement, an element force and
// a guide surface reaction magnitude, each one value a step read from its
// own frame; in the newest format, in V841 (the record file without a
// directory) and in V811 (the direct-access units).
#include <benchmark/benchmark.h>

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

BENCHMARK_CAPTURE(HISTORY, displacement_V861, &V861, DISPLACEMENT)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(HISTORY, element_force_V861, &V861, ELEMENT_FORCE)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(HISTORY, guide_reaction_magnitude_V861, &V861, GUIDE_REACTION)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(HISTORY, displacement_V841, &V841, DISPLACEMENT)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(HISTORY, displacement_V811, &V811, DISPLACEMENT)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(HISTORY, element_force_V811, &V811, ELEMENT_FORCE)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(HISTORY, guide_reaction_magnitude_V811, &V811, GUIDE_REACTION)->Unit(benchmark::kMillisecond);

}  // namespace
