// A fresh directory for the files of one test, removed with its contents when
// the test ends.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tmrdar::testing {

class SCRATCH_DIR {
 public:
  SCRATCH_DIR();
  ~SCRATCH_DIR();
  SCRATCH_DIR(const SCRATCH_DIR&) = delete;
  SCRATCH_DIR& operator=(const SCRATCH_DIR&) = delete;

  const std::filesystem::path& PATH() const { return path_; }
  // The path of a file in the directory.
  std::string FILE(std::string_view name) const;
  // Writes bytes to a file in the directory and returns its path.
  std::string WRITE(std::string_view name, std::string_view bytes) const;

 private:
  std::filesystem::path path_;
};

}  // namespace tmrdar::testing
