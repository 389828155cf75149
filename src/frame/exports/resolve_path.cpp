#include "frame/exports/resolve_path.h"

#include <optional>
#include <string>
#include <utility>

#include "core/platform/platform.h"

namespace tmrdar::frame {

RESOLVED_PATH RESOLVE_PATH(std::string_view path) {
  platform::PATH_PARTS split = platform::SPLIT_PATH(platform::FULL_PATH(path).value_or(std::string()));
  RESOLVED_PATH parts;
  parts.DIRECTORY = std::move(split.DIRECTORY);
  parts.NAME = std::move(split.NAME);
  parts.EXTENSION = std::move(split.EXTENSION);
  for (char& c : parts.EXTENSION) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return parts;
}

}  // namespace tmrdar::frame
