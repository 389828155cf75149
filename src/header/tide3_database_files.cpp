#include "header/tide3_database_files.h"

#include <limits>
#include <new>
#include <string>

#include "core/platform/platform.h"
#include "frame/base/error_handling.h"
#include "frame/base/header_data.h"
#include "frame/base/io_units.h"
#include "header/block_location.h"

namespace tmrdar::header {
namespace {

void REPORT(std::string_view text) {
  ERROR_HANDLING::ERROR3(true, ERROR_HANDLING::DATABASE_POSTPROCESSING, text);
}

constexpr std::string_view HEADER_READ_FAILURE = "Unable to read from database header.";

}  // namespace

void TIDE3_DATABASE_FILES::REPORT_OPEN_FAILURE(std::string_view message, const std::string& path) const {
  if (VERSION.OPEN_MESSAGE_HAS_PATH) {
    REPORT(std::string(message) + " " + path);
  } else {
    REPORT(message);
  }
}

void TIDE3_DATABASE_FILES::OPEN_TIDE3_DATABASE_FILES(std::string_view name, std::string_view directory,
                                                     bool& failed) {
  failed = false;
  static_cast<HEADER_VARIABLES&>(*this) = HEADER_VARIABLES{};
  START_SUM_64 = VERSION.START_SUM_64;
  NODE_CONTACT_WORDS = VERSION.NODE_CONTACT_WORDS;
  CLEAR_RECORD_CACHE();
  CLOSE_TIDE3_DATABASE_FILES();

  const std::string stem = std::string(directory) + std::string(name);
  const std::string motion_path = stem + ".dbm";
  const std::string force_path = stem + ".dbf";
  MOTION_FILE_OPEN = platform::PATH_EXISTS(motion_path);
  FORCE_FILE_OPEN = platform::PATH_EXISTS(force_path);
  if (!MOTION_FILE_OPEN && !FORCE_FILE_OPEN) {
    REPORT("No database files exist for opening.");
    failed = true;
    return;
  }

  const auto open = [this](MOD_FILE::T_FILE& file, int32_t unit, const std::string& path) {
    if (VERSION.ACCESS == FILE_ACCESS::FRAME_UNITS) {
      return IO_UNITS::UNIT(unit).OPEN(path, IO_UNITS::DATABASE_RECORD_LENGTH);
    }
    return file.OPEN(path, MOD_FILE::MODE_READ);
  };
  if (MOTION_FILE_OPEN && !open(MOTION_FILE, IO_UNITS::MOTION_UNIT, motion_path)) {
    REPORT_OPEN_FAILURE("Unable to open the specified motion database file:", motion_path);
    failed = true;
    return;
  }
  if (FORCE_FILE_OPEN && !open(FORCE_FILE, IO_UNITS::FORCE_UNIT, force_path)) {
    REPORT_OPEN_FAILURE("Unable to open the specified force database file:", force_path);
    failed = true;
    return;
  }

  int32_t flag = 0;
  READ_TIDE3_DATABASE_HEADER(flag);
  failed = (flag & 1) != 0;
  if (VERSION.BUILDS_INTEGRATION_POINTS && SHAPE_FUNCTION_FLAG == 1) BUILD_INTEGRATION_POINTS(failed);
}

void TIDE3_DATABASE_FILES::CLOSE_TIDE3_DATABASE_FILES() {
  if (VERSION.ACCESS == FILE_ACCESS::FRAME_UNITS) {
    IO_UNITS::UNIT(IO_UNITS::MOTION_UNIT).CLOSE();
    IO_UNITS::UNIT(IO_UNITS::FORCE_UNIT).CLOSE();
    return;
  }
  if (MOTION_FILE.IS_OPEN()) MOTION_FILE.CLOSE();
  if (FORCE_FILE.IS_OPEN()) FORCE_FILE.CLOSE();
}

std::array<int32_t, NUM_MODEL_DIMENSIONS> TIDE3_DATABASE_FILES::MODEL_DIMENSIONS() const {
  return {NUM_TIME_STEPS,   PIP_NODES_PER_PAIR,      NUM_ELEMENTS,       NUM_NODES,
          NUM_AUX_ELEMENTS, NUM_AUX_NODES,           NUM_LABELS,         NUM_BOUNDARY_CONDITIONS,
          NUM_GUIDE_SURFACES, NUM_ZERO_GAP_GUIDES,   NUM_PIPE_IN_PIPE,   NUM_PIP_CONNECTIONS,
          NUM_CLASH_PAIRS,  NUM_NONLINEAR_E_TABLES};
}

void TIDE3_DATABASE_FILES::UPDATE_DIMENSIONS(std::span<int32_t> dims, int32_t& required, bool& failed) {
  required = static_cast<int32_t>(NUM_MODEL_DIMENSIONS);
  failed = dims.size() < NUM_MODEL_DIMENSIONS;
  if (failed) return;
  const std::array<int32_t, NUM_MODEL_DIMENSIONS> dimensions = MODEL_DIMENSIONS();
  std::copy(dimensions.begin(), dimensions.end(), dims.begin());
  HEADER_DATA::SAVE_MODEL_DIMENSIONS(0, dimensions, ANALYSIS_DETAIL_1, ANALYSIS_DETAIL_2,
                                     ANALYSIS_DETAIL_3, ANALYSIS_TITLE.VIEW());
}

void TIDE3_DATABASE_FILES::READ_TIDE3_DATABASE_HEADER(int32_t& flag) {
  HEADER_INTS.fill(0);
  HEADER_REALS.fill(0.0F);
  ANALYSIS_TITLE.BLANK();
  flag = 0;
  if (VERSION.ACCESS == FILE_ACCESS::FRAME_UNITS) {
    HEADER_FILE = DATABASE_FILE(IO_UNITS::UNIT(MOTION_FILE_OPEN ? IO_UNITS::MOTION_UNIT : IO_UNITS::FORCE_UNIT));
  } else {
    HEADER_FILE = DATABASE_FILE(MOTION_FILE_OPEN ? MOTION_FILE : FORCE_FILE);
  }

  int32_t status = 0;
  HEADER_FILE.READ_INT_AT(HEADER_INTS, 1, status);
  if (status != 0) {
    REPORT(HEADER_READ_FAILURE);
    flag = -1;
    return;
  }
  (MOTION_FILE_OPEN ? MOTION_DB_VERSION : FORCE_DB_VERSION) = HEADER_INTS[0];
  ANALYSIS_DETAIL_2 = HEADER_INTS[2];
  std::copy(HEADER_INTS.begin() + 3, HEADER_INTS.end(), FILE_WORDS.begin());

  // A format without a directory keeps its run control blocks at fixed
  // records, and finds its model blocks from the counts once the tables
  // are made.
  if (VERSION.BLOCKS == BLOCK_LOCATION::DIRECTORY) {
    LOAD_BLOCK_DIRECTORY(flag);
  } else {
    BLOCK_ADDRESSES.reset();
  }
  if (flag != 0) return;
  READ_RUN_CONTROL_BLOCKS(flag);
  if (flag != 0) return;

  MOTION_FRAME_RECORDS = MOTION_STEP_RECORDS;
  FORCE_FRAME_RECORDS = FORCE_STEP_RECORDS;
  DEALLOCATE_TIDE3_DATABASE_HEADER_ARRAYS();
  ALLOCATE_TIDE3_DATABASE_HEADER_ARRAYS(flag);
  if (flag == 0 && VERSION.BLOCKS == BLOCK_LOCATION::FIXED_LAYOUT) SET_COMPUTED_BLOCK_ADDRESSES(flag);
  if (flag == 0) READ_MODEL_BLOCKS(flag);
  // The indexes cover the tables as far as they were read, so that a lookup
  // finds what a search of the tables would find.
  if (!BUILD_INDEXES() && flag == 0) {
    ERROR_HANDLING::ERROR3(true, ERROR_HANDLING::DATABASE_POSTPROCESSING,
                           "Unable to allocate memory for database header data.");
    flag = -1;
  }
}

void TIDE3_DATABASE_FILES::READ_MODEL_BLOCKS(int32_t& flag) {
  if (!READ_STRUCTURE_BLOCKS(flag) || !READ_SEA_BLOCKS(flag) || !READ_SET_BLOCKS(flag) ||
      !READ_CURRENT_PROFILE(flag) || !READ_CONTACT_BLOCKS(flag) || !READ_TARGET_SPECTRUM(flag) ||
      !READ_MATERIAL_AND_ITEM_BLOCKS(flag)) {
    return;
  }
  READ_TIME_LIST(flag);
}

bool TIDE3_DATABASE_FILES::BUILD_INDEXES() {
  HEADER_TABLES& t = TABLES;
  const auto column = [](const TABLE<int32_t, 2>& table, int64_t j) {
    const auto rows = static_cast<std::size_t>(table.EXTENT(1));
    if (!table.ALLOCATED() || table.EXTENT(2) < j) return std::span<const int32_t>();
    return std::span<const int32_t>(table.DATA()).subspan(static_cast<std::size_t>(j - 1) * rows, rows);
  };
  // The element ends were translated through the node file number index; it
  // is built again only when it covers other rows than the whole column.
  const std::span<const int32_t> file_numbers = column(t.NODE_NUMBERS, 1);
  return (t.NODE_FILE_NUMBER_INDEX.COVERS(file_numbers) || t.NODE_FILE_NUMBER_INDEX.BUILD(file_numbers)) &&
         t.NODE_USER_NUMBER_INDEX.BUILD(column(t.NODE_NUMBERS, 2)) &&
         t.ELEMENT_USER_NUMBER_INDEX.BUILD(column(t.ELEMENT_NUMBERS, 2)) &&
         t.AUX_NODE_NUMBER_INDEX.BUILD(t.AUX_NODE_NUMBERS.DATA()) &&
         t.AUX_ELEMENT_NUMBER_INDEX.BUILD(t.AUX_ELEMENT_NUMBERS.DATA()) &&
         t.BOUNDARY_CONDITION_INDEX.BUILD(t.BOUNDARY_CONDITION_NODES.DATA()) && BUILD_LABEL_INDEX() &&
         BUILD_MODEL_QUERY_TABLES(*this);
}

void TIDE3_DATABASE_FILES::LOAD_BLOCK_DIRECTORY(int32_t& flag) {
  using MOD_COMMON_DATABASE::T_BLOCK_ADDRESSES;
  BLOCK_ADDRESSES.reset();

  // The size record goes to the same buffer as the first record; a read that
  // finds nothing leaves that record's words in place.
  int32_t status = 0;
  HEADER_FILE.READ_INT_AT(HEADER_INTS, 33, status);
  NUM_BLOCK_ADDRESSES = HEADER_INTS[0];
  LAST_DIRECTORY_RECORD = HEADER_INTS[1];

  // A count of more entries than the file has words for is garbage, and is
  // refused before it can size an allocation.
  const int64_t file_records = (HEADER_FILE.SIZE() + 31) / 32;
  BLOCK_ADDRESSES.reset(new (std::nothrow) T_BLOCK_ADDRESSES());
  status = BLOCK_ADDRESSES == nullptr || int64_t{NUM_BLOCK_ADDRESSES} > 8 * file_records ? 1 : 0;
  if (status == 0) MOD_COMMON_DATABASE::INIT_BLOCK_ADDRESSES(*BLOCK_ADDRESSES, NUM_BLOCK_ADDRESSES, status);
  if (status != 0) {
    REPORT(HEADER_READ_FAILURE);
    flag = -1;
    return;
  }

  T_BLOCK_ADDRESSES& blocks = *BLOCK_ADDRESSES;
  int32_t next = 1;
  // Records behind a full directory would copy nothing, so the walk ends there.
  for (int64_t r = 3; r <= LAST_DIRECTORY_RECORD && next <= blocks.NUM_BLOCKS; ++r) {
    HEADER_FILE.READ_INT_AT(HEADER_INTS, 32 * (r - 1) + 1, status);
    if (status != 0) {
      REPORT("Unable to database header record numbers.");
      flag = -1;
      return;
    }
    MOD_COMMON_DATABASE::GET_BLOCK_ADDRESSES(blocks, next, HEADER_INTS);
  }
  // To 0-based records. The lowest entry cannot go lower and stays what it
  // is: an address before the start of the file either way.
  for (int32_t& address : blocks.ADDRESSES) {
    if (address != std::numeric_limits<int32_t>::min()) address -= 1;
  }
}

void TIDE3_DATABASE_FILES::SET_COMPUTED_BLOCK_ADDRESSES(int32_t& flag) {
  BLOCK_ADDRESSES.reset(new (std::nothrow) MOD_COMMON_DATABASE::T_BLOCK_ADDRESSES());
  if (BLOCK_ADDRESSES == nullptr) {
    REPORT(HEADER_READ_FAILURE);
    flag = -1;
    return;
  }
  V841_SET_BLOCK_ADDRESSES(VERSION, HEADER_BLOCK_COUNTS(), *BLOCK_ADDRESSES);
}

namespace {

using READERS = std::array<TIDE3_DATABASE_FILES, FORMAT_VERSIONS.size()>;

// One reader per format, in the order of FORMAT_VERSIONS. Made on first use
// and destroyed only by RELEASE_READERS: the unloading of the library
// releases the last job after the library's static objects are gone.
READERS* readers = nullptr;

READERS& MODULES() {
  if (readers != nullptr) return *readers;
  readers = new READERS{
      TIDE3_DATABASE_FILES(*FORMAT_VERSIONS[0]), TIDE3_DATABASE_FILES(*FORMAT_VERSIONS[1]),
      TIDE3_DATABASE_FILES(*FORMAT_VERSIONS[2]), TIDE3_DATABASE_FILES(*FORMAT_VERSIONS[3]),
      TIDE3_DATABASE_FILES(*FORMAT_VERSIONS[4]), TIDE3_DATABASE_FILES(*FORMAT_VERSIONS[5])};
  return *readers;
}

}  // namespace

void RELEASE_READERS() {
  delete readers;
  readers = nullptr;
}

TIDE3_DATABASE_FILES* TIDE3_DATABASE_MODULE(int32_t database_version) {
  for (TIDE3_DATABASE_FILES& module : MODULES()) {
    if (module.VERSION.DATABASE_VERSION == database_version) return &module;
  }
  return nullptr;
}

TIDE3_DATABASE_FILES& V861_TIDE3_DATABASE_FILES() { return *TIDE3_DATABASE_MODULE(V861.DATABASE_VERSION); }
TIDE3_DATABASE_FILES& V841_TIDE3_DATABASE_FILES() { return *TIDE3_DATABASE_MODULE(V841.DATABASE_VERSION); }
TIDE3_DATABASE_FILES& V831_TIDE3_DATABASE_FILES() { return *TIDE3_DATABASE_MODULE(V831.DATABASE_VERSION); }
TIDE3_DATABASE_FILES& V821_TIDE3_DATABASE_FILES() { return *TIDE3_DATABASE_MODULE(V821.DATABASE_VERSION); }
TIDE3_DATABASE_FILES& V815_TIDE3_DATABASE_FILES() { return *TIDE3_DATABASE_MODULE(V815.DATABASE_VERSION); }
TIDE3_DATABASE_FILES& V811_TIDE3_DATABASE_FILES() { return *TIDE3_DATABASE_MODULE(V811.DATABASE_VERSION); }

}  // namespace tmrdar::header
