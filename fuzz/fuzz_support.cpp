#include "fuzz_support.h"

#include <unistd.h>

#include <array>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "support/host_session.h"
#include "tmrdar/tmrdar.h"

namespace tmrdar::fuzzing {

namespace {

// Kept for the whole process: the exit handler removes the directory after
// the static objects are gone.
const std::string* made_directory = nullptr;

const std::string* make_scratch_directory() {
  std::filesystem::path base = "/dev/shm";
  std::error_code error;
  if (!std::filesystem::is_directory(base, error)) base = std::filesystem::temp_directory_path(error);
  const std::filesystem::path dir = base / ("tmrdar-fuzz-" + std::to_string(::getpid()));
  std::filesystem::create_directories(dir, error);
  if (error) {
    std::fprintf(stderr, "cannot make the scratch directory %s\n", dir.c_str());
    std::abort();
  }
  made_directory = new std::string(dir.string() + "/");
  std::atexit([] {
    std::error_code ignored;
    std::filesystem::remove_all(*made_directory, ignored);
  });
  return made_directory;
}

}  // namespace

const std::string& scratch_directory() {
  static const std::string* dir = make_scratch_directory();
  return *dir;
}

void write_file(const std::string& path, std::span<const std::byte> bytes) {
  std::FILE* file = std::fopen(path.c_str(), "wb");
  if (file == nullptr) std::abort();
  if (!bytes.empty() && std::fwrite(bytes.data(), 1, bytes.size(), file) != bytes.size()) std::abort();
  if (std::fclose(file) != 0) std::abort();
}

void remove_file(const std::string& path) { std::remove(path.c_str()); }

void check_unchanged(const std::string& path, std::span<const std::byte> bytes) {
  std::ifstream in(path, std::ios::binary);
  const std::vector<char> now{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  if (now.size() != bytes.size() ||
      !std::equal(now.begin(), now.end(), reinterpret_cast<const char*>(bytes.data()))) {
    std::fprintf(stderr, "the library changed %s\n", path.c_str());
    std::abort();
  }
}

builder::Job small_job(const header::FormatVersion& format) { return testing::small_job(format); }

Opened open_job(const std::string& stem) {
  Opened o;
  int32_t n = 14;
  std::array<int32_t, 5> motion_words{};
  std::array<int32_t, 5> force_words{};
  o.result = GetDatabaseInfo(&o.motion, &o.force, motion_words.data(), force_words.data(), &n, o.dimensions.data(),
                             stem.data(), static_cast<int64_t>(stem.size()));
  return o;
}

void ask_model_queries(const Opened& opened, std::span<const uint8_t> choice) {
  std::size_t next = 0;
  const auto pick = [&]() -> int32_t {
    if (choice.empty()) return 1;
    const int32_t value = choice[next % choice.size()];
    ++next;
    return value;
  };
  int32_t d1 = 0, d2 = 0;
  float d3 = 0.0F;
  std::array<char, 80> title{};
  GetAnalysisDetails(&d1, &d2, &d3, title.data(), static_cast<int64_t>(title.size()));
  GetAnalysisDetails(&d1, &d2, &d3, nullptr, 5);

  int32_t m = opened.motion, f = opened.force;
  // Numbers near the counts of the dimensions, their ends, and ones of the choice.
  // The counts come from the files: their neighbours are formed without overflow.
  const auto after = [](int32_t count) { return count < INT32_MAX ? count + 1 : count; };
  const int32_t elements = opened.dimensions[2], nodes = opened.dimensions[3];
  const std::array<int32_t, 10> numbers{0, 1, 2, -1, elements, after(elements), nodes, after(nodes), 10, 100};
  for (int k = 0; k < 12; ++k) {
    const int32_t wild = pick() % 2 == 0 ? numbers[static_cast<std::size_t>(pick() % 10)] : pick() * 10 - 128;
    int32_t kind = pick() % 3;
    std::array<float, 3> coordinates{};
    GetNodeProperties(&m, &f, &wild, &kind, coordinates.data());
    int32_t length = pick() % 17;
    std::array<int32_t, 16> ints{};
    std::array<float, 16> reals{};
    GetElementProperties(&m, &f, &wild, &kind, &length, ints.data(), reals.data());
    int32_t position = pick() % 5;
    float distance = 0.0F;
    GetDistanceAlongRiser(&m, &f, &wild, &position, &distance);
    int32_t capacity = pick() % 9 - 1;
    std::array<float, 16> pairs{};
    GetProcessedDirectStressStrainData(&m, &f, &wild, &capacity, pairs.data());
  }
}

}  // namespace tmrdar::fuzzing
