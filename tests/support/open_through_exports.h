// Opens a job through the exports, as a host does, for tests of the requests.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "tmrdar/tmrdar.h"

namespace tmrdar::testing {

// GetDatabaseInfo on the files of the stem, with room for every dimension;
// the version codes of the two files land in `motion` and `force`.
inline int32_t open_through_exports(const std::string& stem, int32_t& motion, int32_t& force) {
  int32_t n = 14;
  std::array<int32_t, 5> words{};
  std::vector<int32_t> dims(14);
  return GetDatabaseInfo(&motion, &force, words.data(), words.data(), &n, dims.data(), stem.data(),
                         static_cast<int64_t>(stem.size()));
}

}  // namespace tmrdar::testing
