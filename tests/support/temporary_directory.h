// Points TMPDIR, where scratch files are made, at a directory for the life of
// the object, and puts the old setting back.
#pragma once

#include <stdlib.h>

#include <optional>
#include <string>

namespace tmrdar::testing {

class TEMPORARY_DIRECTORY_SET {
 public:
  explicit TEMPORARY_DIRECTORY_SET(const std::string& directory) {
    if (const char* old = ::getenv("TMPDIR")) saved_ = old;
    ::setenv("TMPDIR", directory.c_str(), 1);
  }
  ~TEMPORARY_DIRECTORY_SET() { saved_ ? ::setenv("TMPDIR", saved_->c_str(), 1) : ::unsetenv("TMPDIR"); }
  TEMPORARY_DIRECTORY_SET(const TEMPORARY_DIRECTORY_SET&) = delete;
  TEMPORARY_DIRECTORY_SET& operator=(const TEMPORARY_DIRECTORY_SET&) = delete;

 private:
  std::optional<std::string> saved_;
};

}  // namespace tmrdar::testing
