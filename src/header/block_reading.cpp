#include "header/block_reading.h"

#include <bit>
#include <cstring>

#include "frame/base/error_handling.h"

namespace tmrdar::header {

void READ_RUNS(TIDE3_DATABASE_FILES& db, int64_t position, std::initializer_list<RUN> runs, int32_t& status) {
  // The runs stand back to back: when the mapping holds them all, they are
  // copied out of it in one pass, as the reads one by one would copy them.
  if (std::endian::native == std::endian::little && status == 0) {
    int64_t bytes = 0;
    for (const RUN& run : runs) bytes += 4 * int64_t{run.COUNT};
    if (const std::byte* data = db.HEADER_FILE.MAPPED_AT(position, bytes)) {
      std::size_t ints = 0;
      std::size_t reals = 0;
      for (const RUN& run : runs) {
        const auto count = static_cast<std::size_t>(run.COUNT);
        if (run.KIND == WORDS::INTS) {
          const std::span<int32_t> items(db.HEADER_INTS.data() + ints, count);
          std::memcpy(items.data(), data, items.size_bytes());
          ints += count;
        } else {
          const std::span<float> items(db.HEADER_REALS.data() + reals, count);
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
  for (const RUN& run : runs) {
    const auto count = static_cast<std::size_t>(run.COUNT);
    if (run.KIND == WORDS::INTS) {
      const std::span<int32_t> items(db.HEADER_INTS.data() + ints, count);
      first ? db.HEADER_FILE.READ_INT_AT(items, position, status) : db.HEADER_FILE.READ_INT(items, status);
      ints += count;
    } else {
      const std::span<float> items(db.HEADER_REALS.data() + reals, count);
      first ? db.HEADER_FILE.READ_REAL_AT(items, position, status) : db.HEADER_FILE.READ_REAL(items, status);
      reals += count;
    }
    first = false;
  }
}

void READ_NAME_FIELD(DATABASE_FILE& file, int64_t position, NAME_FIELD& name, int32_t& status) {
  const std::span<char> field = name.SPAN();
  for (int64_t r = 0; r < 8; ++r) {
    const std::size_t bytes = r < 7 ? 32 : 31;
    file.READ_CHAR_AT(field.subspan(static_cast<std::size_t>(32 * r), bytes), RECORD_AT(position, r), status);
  }
}

bool HEADER_FAILURE(std::string_view message, int32_t& flag) {
  ERROR_HANDLING::ERROR3(true, ERROR_HANDLING::DATABASE_POSTPROCESSING, message);
  flag = -1;
  return false;
}

}  // namespace tmrdar::header
