#include <vector>

#include "core/platform/platform.h"

namespace tmrdar::platform {

std::string fold_path(std::string_view path, std::string_view current_directory) {
  std::string joined;
  if (path.empty() || path.front() != path_separator) {
    joined.append(current_directory);
    joined.push_back(path_separator);
  }
  joined.append(path);

  std::vector<std::string_view> parts;
  std::string_view rest = joined;
  while (!rest.empty()) {
    const std::size_t cut = rest.find(path_separator);
    const std::string_view part = rest.substr(0, cut);
    rest = cut == std::string_view::npos ? std::string_view{} : rest.substr(cut + 1);
    if (part.empty() || part == ".") continue;
    if (part == "..") {
      if (!parts.empty()) parts.pop_back();  // ".." of the root is the root
      continue;
    }
    parts.push_back(part);
  }

  std::string full(1, path_separator);
  for (std::size_t i = 0; i < parts.size(); ++i) {
    if (i > 0) full.push_back(path_separator);
    full.append(parts[i]);
  }
  if (!path.empty() && path.back() == path_separator && !parts.empty()) {
    full.push_back(path_separator);
  }
  return full;
}

PathParts split_path(std::string_view full_path) {
  const std::size_t separator = full_path.find_last_of(path_separators);
  const std::size_t start = separator == std::string_view::npos ? 0 : separator + 1;
  const std::string_view last = full_path.substr(start);
  const std::size_t point = last.rfind('.');
  PathParts parts;
  parts.directory = full_path.substr(0, start);
  parts.name = last.substr(0, point);
  if (point != std::string_view::npos) parts.extension = last.substr(point);

  if (parts.name.find_first_not_of(' ') == std::string::npos) {
    // `start` is also the place of the separator counted from 1, 0 without one.
    const std::size_t last_point = full_path.rfind('.');
    const std::size_t point_place = last_point == std::string_view::npos ? 0 : last_point + 1;
    if (point_place > start + 1) {
      parts.name = full_path.substr(start, point_place - 1 - start);
      parts.extension = full_path.substr(point_place - 1);
    } else {
      parts.name = last;
    }
  }
  return parts;
}

}  // namespace tmrdar::platform
