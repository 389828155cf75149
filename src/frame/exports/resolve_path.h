// Splitting the host's job path into drive, directory, name and extension.
#pragma once

#include <string>
#include <string_view>

namespace tmrdar::frame {

struct ResolvedPath {
  std::string drive;      // blank: a drive letter stands in the directory
  std::string directory;  // absolute, ending with the separator
  std::string name;
  std::string extension;  // from the last "." of the last component on, lower case
};

// The full path of the input, folded by text alone, split at the last
// separator and at the last "." of the last component. A name that would come
// out blank (".job") is split by hand: the name is what stands between the
// last separator and the last ".", when that "." is not right behind the
// separator, and otherwise everything behind the separator.
ResolvedPath resolve_path(std::string_view path);

}  // namespace tmrdar::frame
