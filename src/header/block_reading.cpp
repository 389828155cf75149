#include "header/block_reading.h"

#include <algorithm>
#include <bit>
#include <climits>
#include <cstdint>
#include <cstring>

#include "frame/base/error_handling.h"

namespace tmrdar::header {

void read_runs(FormatReader& db, int64_t position, std::span<const Run> runs, int32_t& status) {
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

BlockRecords::BlockRecords(FormatReader& db, int64_t block, int64_t records, int32_t records_per_row)
    : db_(db), block_(block), per_row_(std::clamp(records_per_row, 1, max_records_per_row)) {
  const auto size = static_cast<int64_t>(db.header_file.mapped_bytes().size());
  if (std::endian::native != std::endian::little || db.header_file.is_unit() || block < 1 || block > size) return;
  int64_t whole = std::min((size - (block - 1)) / 32, std::max<int64_t>(records, 0));
  whole -= whole % per_row_;
  mapped_ = db.header_file.mapped_view(block, 32 * whole);
  if (mapped_ != nullptr) mapped_records_ = whole;
}

void BlockRecords::replay() {
  for (int64_t r = std::max<int64_t>(last_ - last_ % per_row_, 0); r <= last_; ++r) {
    read_runs(db_, record_at(block_, r), row_runs_[static_cast<std::size_t>(r % per_row_)], status_);
  }
  last_ = -1;
}

const std::byte* BlockRecords::read(int64_t r, std::span<const Run> runs) {
  replay();
  read_runs(db_, record_at(block_, r), runs, status_);
  if (status_ != 0) return nullptr;
  std::size_t ints = 0;
  std::size_t reals = 0;
  std::byte* place = image_.data();
  for (const Run& run : runs) {
    const std::size_t bytes = 4 * static_cast<std::size_t>(run.count);
    if (run.kind == Words::ints) {
      std::memcpy(place, db_.header_ints.data() + ints, bytes);
      ints += static_cast<std::size_t>(run.count);
    } else {
      std::memcpy(place, db_.header_reals.data() + reals, bytes);
      reals += static_cast<std::size_t>(run.count);
    }
    place += bytes;
  }
  return image_.data();
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
