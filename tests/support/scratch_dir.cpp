#include "support/scratch_dir.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

namespace tmrdar::testing {

ScratchDir::ScratchDir() {
  std::string pattern = (std::filesystem::temp_directory_path() / "tmrdar-test-XXXXXX").string();
  if (::mkdtemp(pattern.data()) == nullptr) {
    ADD_FAILURE() << "cannot create a scratch directory";
  }
  path_ = pattern;
}

ScratchDir::~ScratchDir() {
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
