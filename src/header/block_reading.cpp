#include "header/block_reading.h"

#include <bit>
#include <cstring>

#include "frame/base/error_handling.h"

namespace tmrdar::header {

void read_runs(FormatReader& db, int64_t position, std::initializer_list<Run> runs, int32_t& status) {
  // The runs stand back to back: when the mapping holds them all, they are
  // copied out of it in one pass, as the reads one by one would copy them.
  if (std::endian::native == std::endian::little && status == 0) {
    int64_t bytes = 0;
    for (const Run& run : runs) bytes += 4 * int64_t{run.count};
    if (const std::byte* data = db.header_file.mapped_at(position, bytes)) {
      std::size_t ints = 0;
      std::size_t reals = 0;
      for (const Run& run : runs) {
        const auto count = static_cast<std::size_t>(run.count);
        if (run.kind == Words::ints) {
          const std::span<int32_t> items(db.header_ints.data() + ints, count);
          std::memcpy(items.data(), data, items.size_bytes());
          ints += count;
        } else {
          const std::span<float> items(db.header_reals.data() + reals, count);
          std::memcpy(items.data(), data, items.size_bytes());
          reals += count;
        }
        data += 4 * count;
      }
      return;
    }
  }
  std::size_t ints = 0;
  std::size_t reals = 0;
  bool first = true;
  for (const Run& run : runs) {
    const auto count = static_cast<std::size_t>(run.count);
    if (run.kind == Words::ints) {
      const std::span<int32_t> items(db.header_ints.data() + ints, count);
      first ? db.header_file.read_int_at(items, position, status) : db.header_file.read_int(items, status);
      ints += count;
    } else {
      const std::span<float> items(db.header_reals.data() + reals, count);
      first ? db.header_file.read_real_at(items, position, status) : db.header_file.read_real(items, status);
      reals += count;
    }
    first = false;
  }
}

void read_name_field(DatabaseFile& file, int64_t position, NameField& name, int32_t& status) {
  const std::span<char> field = name.span();
  for (int64_t r = 0; r < 8; ++r) {
    const std::size_t bytes = r < 7 ? 32 : 31;
    file.read_char_at(field.subspan(static_cast<std::size_t>(32 * r), bytes), record_at(position, r), status);
  }
}

bool header_failure(std::string_view message, int32_t& flag) {
  error_handling::error3(true, error_handling::database_postprocessing, message);
  flag = -1;
  return false;
}

}  // namespace tmrdar::header
