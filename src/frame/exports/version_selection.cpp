#include "frame/exports/version_selection.h"

#include "header/format_version.h"

namespace tmrdar::frame {

int32_t SELECT_VERSION(int32_t motion_code, int32_t force_code) {
  for (const header::FORMAT_VERSION* version : header::FORMAT_VERSIONS) {
    if (VERSION_RULE_HOLDS(version->DATABASE_VERSION, motion_code, force_code)) return version->DATABASE_VERSION;
  }
  return 0;
}

}  // namespace tmrdar::frame
