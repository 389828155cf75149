#include "frame/exports/resolve_path.h"

#include <optional>
#include <string>
#include <utility>

#include "core/platform/platform.h"

namespace tmrdar::frame {

ResolvedPath resolve_path(std::string_view path) {
  platform::PathParts split = platform::split_path(platform::full_path(path).value_or(std::string()));
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
