#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
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

}  // namespace tmrdar::platform
