// Reading words of the result frames, and the step times read at open.
#include "header/result_frames.h"

#include "frame/base/error_handling.h"
#include "header/block_reading.h"

namespace tmrdar::header {

void TIDE3_DATABASE_FILES::READIN(int32_t file, int64_t word, float& value, bool& error) {
  error = false;
  if (file == 1 || file == 2) selected_result_file_ = file;
  const bool motion = selected_result_file_ == 1;
  DATABASE_FILE source;
  if (VERSION.ACCESS == FILE_ACCESS::FRAME_UNITS) {
    source = DATABASE_FILE(IO_UNITS::UNIT(motion ? IO_UNITS::MOTION_UNIT : IO_UNITS::FORCE_UNIT));
  } else {
    source = DATABASE_FILE(motion ? MOTION_FILE : FORCE_FILE);
  }
  // A word before the start of the file is no word of it.
  int32_t status = word < 1 ? 1 : 0;
  std::array<float, 8> record{};
  if (status == 0) source.READ_REAL_AT(record, 32 * WORD_RECORD(word) - 31, status);
  if (status != 0) {
    ERROR_HANDLING::ERROR3(true, ERROR_HANDLING::DATABASE_POSTPROCESSING, "Unable to read record from database.");
    error = true;
    return;
  }
  value = record[static_cast<std::size_t>(WORD_PLACE(word) - 1)];
}

void TIDE3_DATABASE_FILES::READ_TIMES(int32_t step, float& time, bool& error) {
  error = false;
  if (MOTION_FILE_OPEN) {
    READIN(1, TB(*this, step) - 7, time, error);
  } else if (FORCE_FILE_OPEN) {
    READIN(2, FT(*this, step) - 7, time, error);
  }
}

void TIDE3_DATABASE_FILES::READ_TIME_LIST(int32_t& flag) {
  TABLE<float>& times = TABLES.TIME_LIST;
  for (int32_t n = 1; n <= NUM_TIME_STEPS; ++n) {
    bool error = false;
    READ_TIMES(n, times(n), error);
    if (error) {
      flag = -1;
      return;
    }
  }
  START_TIME = times(1);
  END_TIME = times(NUM_TIME_STEPS);
}

}  // namespace tmrdar::header
