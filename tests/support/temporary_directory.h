// Points TMPDIR, where scratch files are made, at a directory for the life of
// the object, and puts the old setting back.
#pragma once

#include <stdlib.h>

#include <optional>
#include <string>

namespace tmrdar::testing {

class TemporaryDirectorySet {
 public:
  explicit TemporaryDirectorySet(const std::string& directory) {
    if (const char* old = ::getenv("TMPDIR")) saved_ = old;
    ::setenv("TMPDIR", directory.c_str(), 1);
  }
  ~TemporaryDirectorySet() { saved_ ? ::setenv("TMPDIR", saved_->c_str(), 1) : ::unsetenv("TMPDIR"); }
  TemporaryDirectorySet(const TemporaryDirectorySet&) = delete;
  TemporaryDirectorySet& operator=(const TemporaryDirectorySet&) = delete;

 private:
  std::optional<std::string> saved_;
};

}  // namespace tmrdar::testing
