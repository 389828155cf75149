#include "frame/exports/library_state.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <string>

#include "core/chars/blank_padded.h"
#include "core/platform/platform.h"
#include "frame/base/header_data.h"
#include "frame/base/io_units.h"
#include "frame/exports/resolve_path.h"
#include "frame/exports/version_selection.h"

namespace tmrdar::frame {

LibraryState& library() {
  static LibraryState state;  // trivially destroyed: valid through the unloading of the library
  return state;
}

std::mutex& library_lock() {
  static std::mutex lock;  // trivially destroyed: taken by the unloading of the library too
  return lock;
}

header::FormatReader* selected_reader(int32_t motion_code, int32_t force_code) {
  return header::reader_for_version(select_version(motion_code, force_code));
}

int32_t close_job() {
  int32_t result = 0;
  io_units::DirectAccessUnit& motion = io_units::unit(io_units::motion_unit);
  io_units::DirectAccessUnit& force = io_units::unit(io_units::force_unit);
  if (motion.is_open() && !motion.close()) result += 1;
  if (force.is_open() && !force.close()) result += 2;
  // The reader's own files close with the job, so that a host that closed
  // it may move, delete or rewrite the files; a query after this reads as
  // from files that are not open.
  const LibraryState& state = library();
  if (header::FormatReader* module = selected_reader(state.library_motion_code, state.library_force_code)) {
    module->close_database_files();
    module->deallocate_database_header_arrays();
  }
  return result;
}

int32_t load_notification(uint32_t reason) {
  if (reason == 1) {
    library().library_motion_code = 0;
    library().library_force_code = 0;
  } else if (reason == 0) {
    close_job();
  }
  return 1;
}

namespace {

// Connects a unit to a database file that exists and reads its first record:
// the file's version code, or -1 when it cannot be opened or read.
int32_t read_first_record(int32_t unit_number, const std::string& path, std::array<int32_t, 8>& record,
                          std::span<int32_t, 5> words) {
  io_units::DirectAccessUnit& unit = io_units::unit(unit_number);
  if (!unit.open(path, io_units::database_record_length)) return -1;
  if (!unit.read(1, 0, std::as_writable_bytes(std::span(record)))) return -1;
  std::copy(record.begin() + 3, record.end(), words.begin());
  return record[0];
}

}  // namespace

int32_t database_info(int32_t& motion_code, int32_t& force_code, std::span<int32_t, 5> motion_words,
                      std::span<int32_t, 5> force_words, int32_t n, std::span<int32_t> dimensions,
                      std::string_view path) {
  motion_code = -1;
  force_code = -1;
  std::fill(motion_words.begin(), motion_words.end(), 0);
  std::fill(force_words.begin(), force_words.end(), 0);
  std::fill(dimensions.begin(), dimensions.end(), -1);
  std::array<int32_t, 8> record{};

  if (chars::is_blank(path)) return -1;
  // The length is an integer and so always a number; the test has its code.
  if (std::isnan(static_cast<float>(n))) return -2;

  const ResolvedPath parts = resolve_path(chars::trim(path));
  const std::string directory = parts.drive + parts.directory;
  const std::string stem = directory + parts.name;
  const std::string motion_path = stem + ".dbm";
  const std::string force_path = stem + ".dbf";

  LibraryState& state = library();
  motion_code = platform::path_exists(motion_path)
                    ? read_first_record(io_units::motion_unit, motion_path, record, motion_words)
                    : 0;
  force_code = platform::path_exists(force_path)
                   ? read_first_record(io_units::force_unit, force_path, record, force_words)
                   : 0;
  state.library_force_code = force_code;
  state.library_motion_code = motion_code;

  if (motion_code < 1 && force_code < 1) {
    // A file whose first record could not be read leaves no unit open.
    close_job();
    return -3;
  }

  if (header::FormatReader* module = selected_reader(motion_code, force_code)) {
    bool failed = false;
    module->open_database_files(parts.name, directory, failed);
    // The open's own failure is told by the dimensions: the flag is rewritten
    // here, and only a short dimension array fails the call.
    int32_t required = 0;
    module->update_dimensions(dimensions, required, failed);
    if (!failed) return 0;
    close_job();
    return required;
  }
  if (version_rule_holds(1, motion_code, force_code)) {
    close_job();
    return -3;
  }
  state.library_motion_code = 0;
  state.library_force_code = 0;
  close_job();
  return -3;
}

int32_t analysis_details(int32_t& detail_1, int32_t& detail_2, float& detail_3, std::span<char> title) {
  const header_data::State& data = header_data::data();
  detail_1 = data.analysis_detail_1;
  detail_2 = data.analysis_detail_2;
  detail_3 = data.analysis_detail_3;
  const auto length = static_cast<std::size_t>(data.analysis_title_length);
  if (length > title.size()) return data.analysis_title_length;
  chars::assign_padded(title, data.analysis_title.view().substr(0, length));
  return 0;
}

}  // namespace tmrdar::frame
