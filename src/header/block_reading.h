// What the readers of the header blocks share: mixed records read in runs,
// name fields, record positions within a block and the failure report.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <span>
#include <string_view>

#include "header/format_reader.h"

namespace tmrdar::header {

enum class Words { ints, reals };

struct Run {
  Words kind;
  int32_t count;
};

// Reads one record as runs of integers and reals: each run goes to the next
// free places of its scratch buffer, both buffers from place 1. The first run
// is read at `position`, the others behind it.
void read_runs(FormatReader& db, int64_t position, std::span<const Run> runs, int32_t& status);
inline void read_runs(FormatReader& db, int64_t position, std::initializer_list<Run> runs, int32_t& status) {
  read_runs(db, position, std::span<const Run>(runs.begin(), runs.size()), status);
}

// Byte position of record `record` (from 0) of a block that starts at `block`.
constexpr int64_t record_at(int64_t block, int64_t record) { return block + 32 * record; }

// The records of a block, taken in turn by the block's decoder: rows of
// `records_per_row` records from the block's first, in order, each record
// with the runs it holds, the same runs for the same record of every row.
// The whole rows that lie in the file's mapping are pointers into it, and
// nothing is copied; any later record is read as read_runs reads it and
// handed over as an image with its runs at their places: the same words, the
// same stale words past the end of the file, the same failure. The scratch
// buffers and the file's position are left as the reads of every record
// taken would leave them: before the first record read, and when the decoder
// is done, the records of the last row taken out of the mapping are read
// again, which writes every place of the scratch buffers that a row writes,
// in the order the rows write them.
class BlockRecords {
 public:
  // The block at `block`, of which the decoder takes at most `records`.
  BlockRecords(FormatReader& db, int64_t block, int64_t records, int32_t records_per_row = 1);
  ~BlockRecords() { replay(); }
  BlockRecords(const BlockRecords&) = delete;
  BlockRecords& operator=(const BlockRecords&) = delete;

  // Record r (from 0) of the block, 8 words; nullptr when its read fails.
  // The runs must outlive the decoder.
  const std::byte* record(int64_t r, std::span<const Run> runs) {
    if (r >= mapped_records_) return read(r, runs);
    last_ = r;
    row_runs_[static_cast<std::size_t>(r % per_row_)] = runs;
    return mapped_ + 32 * r;
  }

 private:
  static constexpr int32_t max_records_per_row = 4;
  const std::byte* read(int64_t r, std::span<const Run> runs);
  void replay();

  FormatReader& db_;
  int64_t block_;
  int32_t per_row_;
  const std::byte* mapped_ = nullptr;
  int64_t mapped_records_ = 0;
  int64_t last_ = -1;
  std::array<std::span<const Run>, max_records_per_row> row_runs_{};
  std::array<std::byte, 32> image_{};
  int32_t status_ = 0;
};

// Word w (from 1) of a record, as an integer or a real.
inline int32_t int_word(const std::byte* record, int w) {
  int32_t value = 0;
  std::memcpy(&value, record + 4 * (w - 1), 4);
  return value;
}
inline float real_word(const std::byte* record, int w) {
  float value = 0.0F;
  std::memcpy(&value, record + 4 * (w - 1), 4);
  return value;
}

// A name field of 8 records from `position`: 32 bytes of each of the first 7
// and 31 of the 8th, each read at the start of its record, so the 256th
// character keeps the blank it had.
void read_name_field(DatabaseFile& file, int64_t position, NameField& name, int32_t& status);

// Reports a header failure under "Database Postprocessing", sets the flag to
// -1 and returns false, so a reader can `return header_failure(...)`.
bool header_failure(std::string_view message, int32_t& flag);

// Value i (from 1) of a list packed 8 to a record: its record (from 0) and
// place (from 1), by the 64-bit rule of the layout.
constexpr int64_t packed_record(int64_t i) { return static_cast<int64_t>(static_cast<double>(i - 1) * 0.125); }
constexpr int64_t packed_place(int64_t i) { return i - 8 * packed_record(i); }

}  // namespace tmrdar::header
