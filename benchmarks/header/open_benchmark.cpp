// Opening a large model: 100,000 elements and 100,000 nodes, whose element
// ends are translated from file numbers to rows at open.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>

#include "builder/job.h"
#include "header/tide3_database_files.h"

namespace {

using tmrdar::builder::JOB;
using tmrdar::builder::RECORD;

constexpr int32_t COUNT = 100'000;

// A model whose node file numbers run backwards, so that no row holds the
// number of its own position.
std::string WRITE_LARGE_MODEL() {
  const std::filesystem::path dir = std::filesystem::temp_directory_path() / "tmrdar_open_benchmark";
  std::filesystem::create_directories(dir);
  JOB job;
  job.RUN.NUM_ELEMENTS = COUNT;
  job.RUN.NUM_NODES = COUNT;
  job.RUN.NUM_TIME_STEPS = 10;
  std::vector<RECORD>& elements = job.BLOCKS[16];
  std::vector<RECORD>& nodes = job.BLOCKS[19];
  for (int32_t i = 1; i <= COUNT; ++i) {
    const int32_t first = COUNT + 1 - i;
    const int32_t second = i < COUNT ? first - 1 : first;
    elements.push_back(RECORD::INTS({i, i, first, second}).REAL(5, 1.5F));
    elements.emplace_back();
    elements.emplace_back();
    nodes.push_back(RECORD::INTS({COUNT + 1 - i}).REAL(2, static_cast<float>(i)).INT(5, i));
  }
  const std::string stem = (dir / "large").string();
  job.WRITE(stem);
  return dir.string() + "/";
}

void BM_OpenLargeModel(benchmark::State& state) {
  static const std::string dir = WRITE_LARGE_MODEL();
  tmrdar::header::TIDE3_DATABASE_FILES& db = tmrdar::header::V861_TIDE3_DATABASE_FILES();
  for (auto _ : state) {
    bool failed = false;
    db.OPEN_TIDE3_DATABASE_FILES("large", dir, failed);
    if (failed || db.TABLES.ELEMENT_NODES(COUNT, 1) != COUNT) state.SkipWithError("the model did not read back");
    db.CLOSE_TIDE3_DATABASE_FILES();
  }
  state.SetItemsProcessed(state.iterations() * COUNT);
}
BENCHMARK(BM_OpenLargeModel)->Unit(benchmark::kMillisecond);

}  // namespace
