#include "frame/exports/resolve_path.h"

#include <optional>

#include "core/platform/platform.h"

namespace tmrdar::frame {

RESOLVED_PATH RESOLVE_PATH(std::string_view path) {
  RESOLVED_PATH parts;
  const std::string full = platform::FULL_PATH(path).value_or(std::string());

  const std::size_t slash = full.rfind(platform::PATH_SEPARATOR);
  const std::size_t start = slash == std::string::npos ? 0 : slash + 1;
  parts.DIRECTORY = full.substr(0, start);
  const std::string_view last = std::string_view(full).substr(start);
  const std::size_t dot = last.rfind('.');
  parts.NAME = last.substr(0, dot);
  if (dot != std::string_view::npos) parts.EXTENSION = last.substr(dot);

  if (parts.NAME.empty()) {
    // Positions from 1, with 0 for a character that is not there.
    const std::size_t slash_at = slash == std::string::npos ? 0 : slash + 1;
    const std::size_t dot_in_full = full.rfind('.');
    const std::size_t dot_at = dot_in_full == std::string::npos ? 0 : dot_in_full + 1;
    if (dot_at > slash_at + 1) {
      parts.NAME = full.substr(slash_at, dot_at - slash_at - 1);
      parts.EXTENSION = full.substr(dot_at - 1);
    } else {
      parts.NAME = full.substr(slash_at);
    }
  }

  for (char& c : parts.EXTENSION) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return parts;
}

}  // namespace tmrdar::frame
