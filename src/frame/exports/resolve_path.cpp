#include "frame/exports/resolve_path.h"

#include <optional>
#include <string>
#include <utility>

#include "core/platform/platform.h"

namespace tmrdar::frame {

ResolvedPath resolve_path(std::string_view path) {
  std::string full = platform::full_path(path).value_or(std::string());
  // Where the system bounds the full path of a job, a longer one is cut there.
  if (platform::job_path_limit > 0 && full.size() > platform::job_path_limit) full.resize(platform::job_path_limit);
  platform::PathParts split = platform::split_path(full);
  ResolvedPath parts;
  parts.directory = std::move(split.directory);
  parts.name = std::move(split.name);
  parts.extension = std::move(split.extension);
  for (char& c : parts.extension) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return parts;
}

}  // namespace tmrdar::frame
