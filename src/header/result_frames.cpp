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

void report_read_failure(bool& error) {
  error_handling::error3(true, error_handling::database_postprocessing, "Unable to read record from database.");
  error = true;
}

// A word before the start of a file is no word of it, and neither is one
// whose byte position no file could reach.
bool word_in_range(int64_t word) { return word >= 1 && word <= std::numeric_limits<int64_t>::max() / 8; }

}  // namespace

DatabaseFile FormatReader::result_file(bool motion) {
  if (version.access == FileAccess::frame_units) {
    return DatabaseFile(io_units::unit(motion ? io_units::motion_unit : io_units::force_unit));
  }
  return DatabaseFile(motion ? motion_file : force_file);
}

void FormatReader::readin(int32_t file, int64_t word, float& value, bool& error) {
  error = false;
  if (file == 1 || file == 2) selected_result_file_ = file;
  DatabaseFile source = result_file(selected_result_file_ == 1);
  if (read_log != nullptr) {
    if (read_log->count < 2) read_log->reads[static_cast<std::size_t>(read_log->count)] = {selected_result_file_, word};
    ++read_log->count;
  }
  int32_t status = word_in_range(word) ? 0 : 1;
  std::array<float, 8> record{};
  if (status == 0) source.read_real_at(record, 32 * word_record(word) - 31, status);
  if (status != 0) return report_read_failure(error);
  value = record[static_cast<std::size_t>(word_place(word) - 1)];
}

void FormatReader::readin_array(int32_t file, int64_t word, std::span<float> values, bool& error) {
  error = false;
  if (file == 1 || file == 2) selected_result_file_ = file;
  const auto f = static_cast<std::size_t>(selected_result_file_ - 1);
  if (!word_in_range(word)) return report_read_failure(error);
  const int64_t r = word_record(word);
  const int64_t p = word_place(word);
  const std::size_t count = std::min<std::size_t>(values.size(), static_cast<std::size_t>(17 - p));
  const bool one_record = p + static_cast<int64_t>(count) - 1 <= 8;
  std::array<int64_t, 2>& cached = cached_record_[f];
  std::array<std::array<float, 8>, 2>& cache = record_cache_[f];

  const bool hit = one_record ? cached[0] == r : cached[0] == r && cached[1] == r + 1;
  if (!hit) {
    DatabaseFile source = result_file(selected_result_file_ == 1);
    std::array<float, 8> record{};
    int32_t status = 0;
    source.read_real_at(record, 32 * r - 31, status);
    if (status != 0) return report_read_failure(error);
    cache[0] = record;
    cached[0] = r;
    if (!one_record) {
      source.read_real_at(record, 32 * r + 1, status);
      if (status != 0) return report_read_failure(error);
      cache[1] = record;
      cached[1] = r + 1;
    }
  }
  for (std::size_t i = 0; i < count; ++i) {
    const auto place = static_cast<std::size_t>(p - 1) + i;
    values[i] = place < 8 ? cache[0][place] : cache[1][place - 8];
  }
}

void FormatReader::clear_record_cache() { cached_record_ = {}; }

bool FormatReader::gather_words(int32_t file, int64_t first, int64_t stride, std::span<float> values) {
  if constexpr (std::endian::native != std::endian::little) return false;
  if ((file != 1 && file != 2) || values.empty() || first < 1 || stride < 0) return false;
  const auto steps = static_cast<int64_t>(values.size());
  // The last word, without wrapping: it must be a word some file could hold.
  constexpr int64_t limit = std::numeric_limits<int64_t>::max() / 8;
  if (stride != 0 && steps - 1 > (limit - first) / stride) return false;
  const int64_t last = first + (steps - 1) * stride;
  const DatabaseFile source = result_file(file == 1);
  const std::span<const std::byte> bytes = source.mapped_bytes();
  const int64_t last_record = word_record(last);
  if (source.is_unit() && last_record > std::numeric_limits<int32_t>::max()) return false;
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

void FormatReader::read_times(int32_t step, float& time, bool& error) {
  error = false;
  if (motion_file_open) {
    readin(1, tb(*this, step) - 7, time, error);
  } else if (force_file_open) {
    readin(2, ft(*this, step) - 7, time, error);
  }
}

void FormatReader::read_time_list(int32_t& flag) {
  Table<float>& times = tables.time_list;
  // The step records stand one frame apart: one gather from the mapping when
  // the file holds them all, else word by word.
  const bool motion = motion_file_open;
  if (num_time_steps >= 2 && (motion || force_file_open) &&
      static_cast<int64_t>(times.data().size()) >= num_time_steps) {
    const auto word = [&](int64_t n) { return motion ? tb(*this, n) - 7 : ft(*this, n) - 7; };
    const int64_t first = word(1);
    const int64_t stride = word(2) - first;
    const std::span<float> all(&times(1), static_cast<std::size_t>(num_time_steps));
    if (word(num_time_steps) == frame_words::add(first, frame_words::mul(num_time_steps - 1, stride)) &&
        gather_words(motion ? 1 : 2, first, stride, all)) {
      start_time = times(1);
      end_time = times(num_time_steps);
      return;
    }
  }
  for (int32_t n = 1; n <= num_time_steps; ++n) {
    bool error = false;
    read_times(n, times(n), error);
    if (error) {
      flag = -1;
      return;
    }
  }
  start_time = times(1);
  end_time = times(num_time_steps);
}

}  // namespace tmrdar::header
