// What the readers of the header blocks share: mixed records read in runs,
// name fields, record positions within a block and the failure report.
#pragma once

#include <cstdint>
#include <initializer_list>
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
void read_runs(FormatReader& db, int64_t position, std::initializer_list<Run> runs, int32_t& status);

// Byte position of record `record` (from 0) of a block that starts at `block`.
constexpr int64_t record_at(int64_t block, int64_t record) { return block + 32 * record; }

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
