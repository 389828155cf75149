// Splitting the host's job path into drive, directory, name and extension.
#pragma once

#include <string>
#include <string_view>

namespace tmrdar::frame {

struct RESOLVED_PATH {
  std::string DRIVE;      // blank on this platform
  std::string DIRECTORY;  // absolute, ending with the separator
  std::string NAME;
  std::string EXTENSION;  // from the last "." of the last component on, lower case
};

// The full path of the input, folded by text alone, split at the last
// separator and at the last "." of the last component. A name that would come
// out blank (".job") is split by hand: the name is what stands between the
// last separator and the last ".", when that "." is not right behind the
// separator, and otherwise everything behind the separator.
RESOLVED_PATH RESOLVE_PATH(std::string_view path);

}  // namespace tmrdar::frame
