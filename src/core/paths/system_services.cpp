#include "core/paths/system_services.h"

#include <optional>
#include <string>

#include "core/chars/blank_padded.h"
#include "core/platform/platform.h"

namespace tmrdar {

void get_temporary_file(std::span<char> name, bool& failed) {
  chars::assign_padded(name, {});
  const std::optional<std::string> created = platform::create_temporary_file("td3");
  failed = !created;
  if (failed) return;
  if (created->size() > temporary_name_width) {
    platform::delete_file(*created);
    failed = true;
    return;
  }
  chars::assign_padded(name, *created);
}

void set_mode() { platform::clear_console(); }

void setcur(int32_t row, int32_t column) { platform::set_console_cursor(row, column); }

}  // namespace tmrdar
