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

LIBRARY_STATE& LIBRARY() {
  static LIBRARY_STATE state;  // trivially destroyed: valid through the unloading of the library
  return state;
}

std::mutex& LIBRARY_LOCK() {
  static std::mutex lock;  // trivially destroyed: taken by the unloading of the library too
  return lock;
}

header::TIDE3_DATABASE_FILES* SELECTED_MODULE(int32_t motion_code, int32_t force_code) {
  return header::TIDE3_DATABASE_MODULE(SELECT_VERSION(motion_code, force_code));
}

int32_t CLOSE_JOB() {
  int32_t result = 0;
  IO_UNITS::DIRECT_ACCESS_UNIT& motion = IO_UNITS::UNIT(IO_UNITS::MOTION_UNIT);
  IO_UNITS::DIRECT_ACCESS_UNIT& force = IO_UNITS::UNIT(IO_UNITS::FORCE_UNIT);
  if (motion.IS_OPEN() && !motion.CLOSE()) result += 1;
  if (force.IS_OPEN() && !force.CLOSE()) result += 2;
  const LIBRARY_STATE& library = LIBRARY();
  if (header::TIDE3_DATABASE_FILES* module = SELECTED_MODULE(library.LIBRARY_MOTION_CODE, library.LIBRARY_FORCE_CODE)) {
    module->DEALLOCATE_TIDE3_DATABASE_HEADER_ARRAYS();
  }
  return result;
}

int32_t LOAD_NOTIFICATION(uint32_t reason) {
  if (reason == 1) {
    LIBRARY().LIBRARY_MOTION_CODE = 0;
    LIBRARY().LIBRARY_FORCE_CODE = 0;
  } else if (reason == 0) {
    CLOSE_JOB();
  }
  return 1;
}

namespace {

// Connects a unit to a database file that exists and reads its first record:
// the file's version code, or -1 when it cannot be opened or read.
int32_t READ_FIRST_RECORD(int32_t unit_number, const std::string& path, std::array<int32_t, 8>& record,
                          std::span<int32_t, 5> words) {
  IO_UNITS::DIRECT_ACCESS_UNIT& unit = IO_UNITS::UNIT(unit_number);
  if (!unit.OPEN(path, IO_UNITS::DATABASE_RECORD_LENGTH)) return -1;
  if (!unit.READ(1, 0, std::as_writable_bytes(std::span(record)))) return -1;
  std::copy(record.begin() + 3, record.end(), words.begin());
  return record[0];
}

}  // namespace

int32_t DATABASE_INFO(int32_t& motion_code, int32_t& force_code, std::span<int32_t, 5> motion_words,
                      std::span<int32_t, 5> force_words, int32_t n, std::span<int32_t> dimensions,
                      std::string_view path) {
  motion_code = -1;
  force_code = -1;
  std::fill(motion_words.begin(), motion_words.end(), 0);
  std::fill(force_words.begin(), force_words.end(), 0);
  std::fill(dimensions.begin(), dimensions.end(), -1);
  std::array<int32_t, 8> record{};

  if (chars::IS_BLANK(path)) return -1;
  // The length is an integer and so always a number; the test has its code.
  if (std::isnan(static_cast<float>(n))) return -2;

  const RESOLVED_PATH parts = RESOLVE_PATH(chars::TRIM(path));
  const std::string directory = parts.DRIVE + parts.DIRECTORY;
  const std::string stem = directory + parts.NAME;
  const std::string motion_path = stem + ".dbm";
  const std::string force_path = stem + ".dbf";

  LIBRARY_STATE& library = LIBRARY();
  motion_code = platform::PATH_EXISTS(motion_path)
                    ? READ_FIRST_RECORD(IO_UNITS::MOTION_UNIT, motion_path, record, motion_words)
                    : 0;
  force_code = platform::PATH_EXISTS(force_path)
                   ? READ_FIRST_RECORD(IO_UNITS::FORCE_UNIT, force_path, record, force_words)
                   : 0;
  library.LIBRARY_FORCE_CODE = force_code;
  library.LIBRARY_MOTION_CODE = motion_code;

  if (motion_code < 1 && force_code < 1) return -3;

  if (header::TIDE3_DATABASE_FILES* module = SELECTED_MODULE(motion_code, force_code)) {
    bool failed = false;
    module->OPEN_TIDE3_DATABASE_FILES(parts.NAME, directory, failed);
    // The open's own failure is told by the dimensions: the flag is rewritten
    // here, and only a short dimension array fails the call.
    int32_t required = 0;
    module->UPDATE_DIMENSIONS(dimensions, required, failed);
    if (!failed) return 0;
    CLOSE_JOB();
    return required;
  }
  if (VERSION_RULE_HOLDS(1, motion_code, force_code)) {
    CLOSE_JOB();
    return -3;
  }
  library.LIBRARY_MOTION_CODE = 0;
  library.LIBRARY_FORCE_CODE = 0;
  CLOSE_JOB();
  return -3;
}

int32_t ANALYSIS_DETAILS(int32_t& detail_1, int32_t& detail_2, float& detail_3, std::span<char> title) {
  const HEADER_DATA::STATE& data = HEADER_DATA::DATA();
  detail_1 = data.ANALYSIS_DETAIL_1;
  detail_2 = data.ANALYSIS_DETAIL_2;
  detail_3 = data.ANALYSIS_DETAIL_3;
  const auto length = static_cast<std::size_t>(data.ANALYSIS_TITLE_LENGTH);
  if (length > title.size()) return data.ANALYSIS_TITLE_LENGTH;
  chars::ASSIGN_PADDED(title, data.ANALYSIS_TITLE.VIEW().substr(0, length));
  return 0;
}

}  // namespace tmrdar::frame
