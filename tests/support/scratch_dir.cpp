#include "support/scratch_dir.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <random>

namespace tmrdar::testing {

ScratchDir::ScratchDir() {
  // A new directory of a random name in the system's temporary folder; the
  // creation fails when the name is taken, and another name is tried.
  std::mt19937_64 random(std::random_device{}() ^
                         static_cast<uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count()));
  const std::filesystem::path base = std::filesystem::temp_directory_path();
  for (int attempt = 0; attempt < 100; ++attempt) {
    std::filesystem::path candidate = base / ("tmrdar-test-" + std::to_string(random() % 1000000000000U));
    std::error_code error;
    if (std::filesystem::create_directory(candidate, error)) {
      path_ = candidate;
      return;
    }
  }
  ADD_FAILURE() << "cannot create a scratch directory";
}

ScratchDir::~ScratchDir() {
  if (path_.empty()) return;
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::string ScratchDir::file(std::string_view name) const { return (path_ / name).string(); }

std::string ScratchDir::write(std::string_view name, std::string_view bytes) const {
  const std::string path = file(name);
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  return path;
}

}  // namespace tmrdar::testing
