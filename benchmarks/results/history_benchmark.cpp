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

#include <cstdlib>
#include <cstring>

#include <filesystem>
#include <string>
#include <vector>

#include "builder/job.h"
#include "header/format_reader.h"
#include "results/requests.h"

namespace {

using tmrdar::builder::Job;
using tmrdar::results::RequestArguments;

constexpr int32_t steps = 100'000;

tmrdar::header::FormatReader& open_long_run(const tmrdar::header::FormatVersion& format) {
  static const std::string dir = [] {
    const std::filesystem::path path = std::filesystem::temp_directory_path() / "tmrdar_history_benchmark";
    std::filesystem::create_directories(path);
    return path.string() + "/";
  }();
  const std::string name = "long-" + std::string(format.name);
  tmrdar::header::FormatReader& db = *tmrdar::header::reader_for_version(format.database_version);
  if (db.num_time_steps != steps) {
    Job job(format);
    job.run.num_time_steps = steps;
    job.model.nodes = {{.file_number = 1, .user_number = 1}, {.file_number = 2, .x = 10.0F, .user_number = 2}};
    job.model.elements = {{.file_number = 1, .user_number = 1, .nodes = {1, 2}, .length = 10.0F}};
    job.model.guide_surfaces = {{.id = 1, .name = "Guide"}};
    job.run.output_flags[0] = 1;  // displacements
    job.run.output_flags[3] = 1;  // reactions and contact sections
    job.run.output_flags[4] = 1;  // the first element section
    job.write(dir + name);
    bool failed = false;
    db.open_database_files(name, dir, failed);
  }
  return db;
}

void history(benchmark::State& state, const tmrdar::header::FormatVersion* format, RequestArguments request) {
  tmrdar::header::FormatReader& db = open_long_run(*format);
  std::vector<float> values(steps);
  for (auto _ : state) {
    int32_t status = 0;
    tmrdar::results::getrequestedhistory(db, request, values, status);
    if (status != 0) state.SkipWithError("the history was refused");
    benchmark::DoNotOptimize(values.data());
  }
  state.SetItemsProcessed(state.iterations() * steps);
}

constexpr RequestArguments displacement{.output_type = 5, .parameter = 2, .node = 2};
constexpr RequestArguments element_force{.output_type = 17, .parameter = 1, .element = 1, .location = 2};
constexpr RequestArguments guide_reaction{.output_type = 14, .parameter = 4, .node = 1};
using tmrdar::header::v811;
using tmrdar::header::v841;
using tmrdar::header::v861;

// The byte offsets (from 0) of the displacement's word in each step's frame
// of the newest format's motion file, as the library reads them.
const std::vector<int64_t>& displacement_offsets() {
  static const std::vector<int64_t> offsets = [] {
    tmrdar::header::FormatReader& db = open_long_run(tmrdar::header::v861);
    std::vector<int64_t> result;
    for (int32_t step = 1; step <= steps; ++step) {
      tmrdar::header::FormatReader::ReadLog log;
      db.read_log = &log;
      float value = 0.0F;
      int32_t status = 0;
      tmrdar::results::getrequestedsinglevalue(db, displacement, step, value, status);
      db.read_log = nullptr;
      if (log.count != 1) std::abort();  // one word a step
      result.push_back(4 * (log.reads[0].second - 1));
    }
    return result;
  }();
  return offsets;
}

void anchor_pread_loop(benchmark::State& state) {
  const std::vector<int64_t>& offsets = displacement_offsets();
  const int descriptor = ::open(open_long_run(tmrdar::header::v861).motion_file.name().c_str(), O_RDONLY);
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

void anchor_mapped_gather(benchmark::State& state) {
  const std::vector<int64_t>& offsets = displacement_offsets();
  const int descriptor = ::open(open_long_run(tmrdar::header::v861).motion_file.name().c_str(), O_RDONLY);
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

BENCHMARK(anchor_pread_loop)->Unit(benchmark::kMillisecond);
BENCHMARK(anchor_mapped_gather)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(history, displacement_V861, &v861, displacement)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(history, element_force_V861, &v861, element_force)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(history, guide_reaction_magnitude_V861, &v861, guide_reaction)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(history, displacement_V841, &v841, displacement)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(history, displacement_V811, &v811, displacement)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(history, element_force_V811, &v811, element_force)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(history, guide_reaction_magnitude_V811, &v811, guide_reaction)->Unit(benchmark::kMillisecond);

}  // namespace
