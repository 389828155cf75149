// What the process holds open of the files under a directory, as the kernel
// tells it in /proc/self: descriptors with their access mode, and mappings.
#pragma once

#include <fcntl.h>

#include <filesystem>
#include <fstream>
#include <ostream>
#include <string>
#include <vector>

namespace tmrdar::testing {

struct OpenFile {
  std::string path;
  bool read_only = false;  // opened O_RDONLY
  bool operator==(const OpenFile&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const OpenFile& file) {
  return out << file.path << (file.read_only ? " (read only)" : " (writable)");
}

inline bool under(const std::string& path, const std::filesystem::path& directory) {
  const std::string prefix = directory.string() + "/";
  return path.compare(0, prefix.size(), prefix) == 0;
}

// The descriptors of this process on files under `directory`.
inline std::vector<OpenFile> descriptors_under(const std::filesystem::path& directory) {
  std::vector<OpenFile> found;
  std::error_code ignored;
  for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd", ignored)) {
    const std::filesystem::path target = std::filesystem::read_symlink(entry.path(), ignored);
    if (ignored || !under(target.string(), directory)) continue;
    std::ifstream info("/proc/self/fdinfo/" + entry.path().filename().string());
    std::string key;
    int flags = -1;
    while (info >> key) {
      if (key == "flags:") {
        info >> std::oct >> flags;
        break;
      }
    }
    found.push_back({target.string(), flags >= 0 && (flags & O_ACCMODE) == O_RDONLY});
  }
  return found;
}

// The mappings of files under `directory` that allow writing.
inline std::vector<std::string> writable_mappings_under(const std::filesystem::path& directory) {
  std::vector<std::string> found;
  std::ifstream maps("/proc/self/maps");
  for (std::string line; std::getline(maps, line);) {
    const std::size_t slash = line.find('/');
    if (slash == std::string::npos || !under(line.substr(slash), directory)) continue;
    const std::size_t space = line.find(' ');
    if (space != std::string::npos && line.size() > space + 2 && line[space + 2] == 'w') found.push_back(line);
  }
  return found;
}

}  // namespace tmrdar::testing
