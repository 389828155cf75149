// What the fuzz targets share: a scratch directory of the process on a
// memory file system, files written there and checked unchanged after the
// library has read them, the small job every format is seeded with, and a
// host's session of queries over an open job.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "builder/job.h"

namespace tmrdar::fuzzing {

// The directory of this process's files: under /dev/shm when it is there,
// else under TMPDIR or /tmp; removed when the process ends.
const std::string& scratch_directory();

// Writes the bytes to the file, replacing it.
void write_file(const std::string& path, std::span<const std::byte> bytes);
void remove_file(const std::string& path);
// Aborts, so that the fuzzer keeps the input, when the file does not hold
// exactly these bytes: the library must never write to a database file.
void check_unchanged(const std::string& path, std::span<const std::byte> bytes);

// The small job of the tests (tests/support/host_session.h): a few items
// of every kind, so that mutations are fast and the requests find items.
builder::Job small_job(const header::FormatVersion& format);

// GetDatabaseInfo on the stem; the codes it gives and its result.
struct Opened {
  int32_t result = 0;
  int32_t motion = 0;
  int32_t force = 0;
  std::vector<int32_t> dimensions = std::vector<int32_t>(14, 0);
};
Opened open_job(const std::string& stem);

// The analysis details and the model queries a host makes after an open:
// nodes, elements, distances and stress-strain curves, by the numbers and
// kinds that `choice` picks (bytes read in turn, repeated).
void ask_model_queries(const Opened& opened, std::span<const uint8_t> choice);

}  // namespace tmrdar::fuzzing
