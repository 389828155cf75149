#include "core/paths/system_services.h"

#include <optional>
#include <string>

#include "core/chars/blank_padded.h"
#include "core/platform/platform.h"

namespace tmrdar {

void GET_TEMPORARY_FILE(std::span<char> name, bool& failed) {
  chars::ASSIGN_PADDED(name, {});
  const std::optional<std::string> created = platform::CREATE_TEMPORARY_FILE("td3");
  failed = !created;
  if (failed) return;
  if (created->size() > TEMPORARY_NAME_WIDTH) {
    platform::DELETE_FILE(*created);
    failed = true;
    return;
  }
  chars::ASSIGN_PADDED(name, *created);
}

void SET_MODE() { platform::CLEAR_CONSOLE(); }

void SETCUR(int32_t row, int32_t column) { platform::SET_CONSOLE_CURSOR(row, column); }

}  // namespace tmrdar
