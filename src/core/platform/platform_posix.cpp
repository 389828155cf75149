#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "core/platform/platform.h"

namespace tmrdar::platform {

std::optional<std::string> CURRENT_DIRECTORY() {
  std::vector<char> buffer(4096);
  for (;;) {
    if (::getcwd(buffer.data(), buffer.size()) != nullptr) return std::string(buffer.data());
    if (errno != ERANGE || buffer.size() > (1U << 20)) return std::nullopt;
    buffer.resize(buffer.size() * 2);
  }
}

bool PATH_EXISTS(const std::string& path) {
  struct stat info {};
  return ::stat(path.c_str(), &info) == 0;
}

bool IS_DIRECTORY(const std::string& path) {
  struct stat info {};
  return ::stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

std::string TEMPORARY_DIRECTORY() {
  const char* tmpdir = std::getenv("TMPDIR");
  std::string directory = (tmpdir != nullptr && *tmpdir != '\0') ? tmpdir : "/tmp";
  while (directory.size() > 1 && directory.back() == PATH_SEPARATOR) directory.pop_back();
  return directory;
}

std::optional<std::string> CREATE_TEMPORARY_FILE(std::string_view prefix) {
  std::string name = TEMPORARY_DIRECTORY();
  name.push_back(PATH_SEPARATOR);
  name.append(prefix).append("XXXXXX");
  const int descriptor = ::mkstemp(name.data());
  if (descriptor < 0) return std::nullopt;
  ::close(descriptor);
  return name;
}

bool DELETE_FILE(const std::string& path) { return std::remove(path.c_str()) == 0; }

}  // namespace tmrdar::platform
