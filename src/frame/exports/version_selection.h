// Which format a pair of database version codes selects.
#pragma once

#include <cstdint>

namespace tmrdar::frame {

// The rule for one candidate code: the motion code is the candidate and the
// force code is the candidate or below 1, or the motion code is below 1 and
// the force code is the candidate.
constexpr bool version_rule_holds(int32_t candidate, int32_t motion_code, int32_t force_code) {
  return (motion_code == candidate && (force_code == candidate || force_code < 1)) ||
         (motion_code < 1 && force_code == candidate);
}

// The code of the first format, in the order 13, 11, 10, 7, 4, 3, for which the
// rule holds; 0 when none does.
int32_t select_version(int32_t motion_code, int32_t force_code);

}  // namespace tmrdar::frame
