// A fresh directory for the files of one test, removed with its contents when
// the test ends.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tmrdar::testing {

class ScratchDir {
 public:
  ScratchDir();
  ~ScratchDir();
  ScratchDir(const ScratchDir&) = delete;
  ScratchDir& operator=(const ScratchDir&) = delete;

  const std::filesystem::path& path() const { return path_; }
  // The path of a file in the directory.
  std::string file(std::string_view name) const;
  // Writes bytes to a file in the directory and returns its path.
  std::string write(std::string_view name, std::string_view bytes) const;

 private:
  std::filesystem::path path_;
};

}  // namespace tmrdar::testing
