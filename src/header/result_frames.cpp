// Reading words of the result frames, and the step times read at open.
#include "header/result_frames.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>

#include "frame/base/error_handling.h"
#include "header/block_reading.h"

namespace tmrdar::header {

namespace {

void REPORT_READ_FAILURE(bool& error) {
  ERROR_HANDLING::ERROR3(true, ERROR_HANDLING::DATABASE_POSTPROCESSING, "Unable to read record from database.");
  error = true;
}

// A word before the start of a file is no word of it, and neither is one
// whose byte position no file could reach.
bool WORD_IN_RANGE(int64_t word) { return word >= 1 && word <= std::numeric_limits<int64_t>::max() / 8; }

}  // namespace

DATABASE_FILE TIDE3_DATABASE_FILES::RESULT_FILE(bool motion) {
  if (VERSION.ACCESS == FILE_ACCESS::FRAME_UNITS) {
    return DATABASE_FILE(IO_UNITS::UNIT(motion ? IO_UNITS::MOTION_UNIT : IO_UNITS::FORCE_UNIT));
  }
  return DATABASE_FILE(motion ? MOTION_FILE : FORCE_FILE);
}

void TIDE3_DATABASE_FILES::READIN(int32_t file, int64_t word, float& value, bool& error) {
  error = false;
  if (file == 1 || file == 2) selected_result_file_ = file;
  DATABASE_FILE source = RESULT_FILE(selected_result_file_ == 1);
  if (READ_LOG != nullptr) READ_LOG->emplace_back(selected_result_file_, word);
  int32_t status = WORD_IN_RANGE(word) ? 0 : 1;
  std::array<float, 8> record{};
  if (status == 0) source.READ_REAL_AT(record, 32 * WORD_RECORD(word) - 31, status);
  if (status != 0) return REPORT_READ_FAILURE(error);
  value = record[static_cast<std::size_t>(WORD_PLACE(word) - 1)];
}

void TIDE3_DATABASE_FILES::READIN_ARRAY(int32_t file, int64_t word, std::span<float> values, bool& error) {
  error = false;
  if (file == 1 || file == 2) selected_result_file_ = file;
  const auto f = static_cast<std::size_t>(selected_result_file_ - 1);
  if (!WORD_IN_RANGE(word)) return REPORT_READ_FAILURE(error);
  const int64_t r = WORD_RECORD(word);
  const int64_t p = WORD_PLACE(word);
  const std::size_t count = std::min<std::size_t>(values.size(), static_cast<std::size_t>(17 - p));
  const bool one_record = p + static_cast<int64_t>(count) - 1 <= 8;
  std::array<int64_t, 2>& cached = cached_record_[f];
  std::array<std::array<float, 8>, 2>& cache = record_cache_[f];

  const bool hit = one_record ? cached[0] == r : cached[0] == r && cached[1] == r + 1;
  if (!hit) {
    DATABASE_FILE source = RESULT_FILE(selected_result_file_ == 1);
    std::array<float, 8> record{};
    int32_t status = 0;
    source.READ_REAL_AT(record, 32 * r - 31, status);
    if (status != 0) return REPORT_READ_FAILURE(error);
    cache[0] = record;
    cached[0] = r;
    if (!one_record) {
      source.READ_REAL_AT(record, 32 * r + 1, status);
      if (status != 0) return REPORT_READ_FAILURE(error);
      cache[1] = record;
      cached[1] = r + 1;
    }
  }
  for (std::size_t i = 0; i < count; ++i) {
    const auto place = static_cast<std::size_t>(p - 1) + i;
    values[i] = place < 8 ? cache[0][place] : cache[1][place - 8];
  }
}

void TIDE3_DATABASE_FILES::CLEAR_RECORD_CACHE() { cached_record_ = {}; }

bool TIDE3_DATABASE_FILES::GATHER_WORDS(int32_t file, int64_t first, int64_t stride, std::span<float> values) {
  if constexpr (std::endian::native != std::endian::little) return false;
  if ((file != 1 && file != 2) || values.empty() || first < 1 || stride < 0) return false;
  const auto steps = static_cast<int64_t>(values.size());
  // The last word, without wrapping: it must be a word some file could hold.
  constexpr int64_t LIMIT = std::numeric_limits<int64_t>::max() / 8;
  if (stride != 0 && steps - 1 > (LIMIT - first) / stride) return false;
  const int64_t last = first + (steps - 1) * stride;
  const DATABASE_FILE source = RESULT_FILE(file == 1);
  const std::span<const std::byte> bytes = source.MAPPED_BYTES();
  const int64_t last_record = WORD_RECORD(last);
  if (source.IS_UNIT() && last_record > std::numeric_limits<int32_t>::max()) return false;
  if (bytes.empty() || 32 * last_record > static_cast<int64_t>(bytes.size())) return false;
  selected_result_file_ = file;
  const std::byte* word = bytes.data() + 4 * (first - 1);
  const std::size_t step = static_cast<std::size_t>(4 * stride);
  for (float& value : values) {
    std::memcpy(&value, word, sizeof(float));
    word += step;
  }
  return true;
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
  // The step records stand one frame apart: one gather from the mapping when
  // the file holds them all, else word by word.
  const bool motion = MOTION_FILE_OPEN;
  if (NUM_TIME_STEPS >= 2 && (motion || FORCE_FILE_OPEN) &&
      static_cast<int64_t>(times.DATA().size()) >= NUM_TIME_STEPS) {
    const auto word = [&](int64_t n) { return motion ? TB(*this, n) - 7 : FT(*this, n) - 7; };
    const int64_t first = word(1);
    const int64_t stride = word(2) - first;
    const std::span<float> all(&times(1), static_cast<std::size_t>(NUM_TIME_STEPS));
    if (word(NUM_TIME_STEPS) == frame_words::ADD(first, frame_words::MUL(NUM_TIME_STEPS - 1, stride)) &&
        GATHER_WORDS(motion ? 1 : 2, first, stride, all)) {
      START_TIME = times(1);
      END_TIME = times(NUM_TIME_STEPS);
      return;
    }
  }
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
