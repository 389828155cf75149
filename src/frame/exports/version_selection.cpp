#include "frame/exports/version_selection.h"

#include "header/format_version.h"

namespace tmrdar::frame {

int32_t select_version(int32_t motion_code, int32_t force_code) {
  for (const header::FormatVersion* version : header::format_versions) {
    if (version_rule_holds(version->database_version, motion_code, force_code)) return version->database_version;
  }
  return 0;
}

}  // namespace tmrdar::frame
