// Records, files and the console.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <span>
#include <string>
#include <system_error>

#include "core/strings/t_string.h"

namespace tmrdar::MOD_STRING {

int32_t T_STRING::NUM_RECORDS(int32_t record_length) const {
  if (record_length < 1) return 0;
  return static_cast<int32_t>((int64_t{length_} + record_length - 1) / record_length);
}

void T_STRING::GET_RECORD(int32_t n, std::span<char> out, int32_t record_length) const {
  std::fill(out.begin(), out.end(), ' ');
  if (n < 1 || record_length < 1) return;
  const int64_t first = (int64_t{n} - 1) * record_length;  // from 0
  const int64_t last = std::min(int64_t{n} * record_length, int64_t{length_});
  if (first >= last) return;
  const auto count = std::min(static_cast<std::size_t>(last - first), out.size());
  std::copy_n(buffer_.get() + first, count, out.begin());
}

void T_STRING::TO_FILE(MOD_FILE::T_FILE& unit, int32_t* open_status, int32_t* write_status) const {
  if (open_status != nullptr) *open_status = 0;
  if (!unit.IS_OPEN()) return;
  int32_t status = 0;
  unit.WRITE_CHAR(VIEW(), &status);
  if (write_status != nullptr) *write_status = status;
}

void T_STRING::TO_FILE(MOD_FILE::T_FILE& unit, std::string_view path, int32_t* open_status,
                       int32_t* write_status) const {
  unit.CLOSE();
  const bool opened = unit.OPEN(path, MOD_FILE::MODE_WRITE);
  if (open_status != nullptr) *open_status = opened ? 0 : 1;
  if (!opened) return;
  int32_t status = 0;
  unit.WRITE_CHAR(VIEW(), &status);
  if (write_status != nullptr) *write_status = status;
  unit.CLOSE();
}

void T_STRING::FROM_FILE(std::string_view path, MOD_FILE::T_FILE& unit, int32_t* open_status,
                         int32_t* read_status) {
  unit.CLOSE();
  const bool opened = unit.OPEN(path, MOD_FILE::MODE_READ);
  if (open_status != nullptr) *open_status = opened ? 0 : 1;
  if (!opened) return;

  int32_t status = 0;
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(std::filesystem::path(unit.NAME()), error);
  if (error || size > static_cast<std::uintmax_t>(std::numeric_limits<int32_t>::max())) {
    status = 1;
  } else {
    T_STRING content;
    content.CREATE_STRING(static_cast<int32_t>(size), &status);
    if (status == 0) {
      content.length_ = content.capacity_;
      // Reading short of the size is no failure: what is missing stays blank.
      unit.READ_CHAR(std::span<char>(content.buffer_.get(), static_cast<std::size_t>(size)), &status);
    }
    if (status == 0) *this = std::move(content);
  }
  if (read_status != nullptr) *read_status = status;
  unit.CLOSE();
}

void T_STRING::TO_CONSOLE(bool advance) const {
  const std::string_view used = VIEW();
  if (!used.empty()) std::fwrite(used.data(), 1, used.size(), stdout);
  if (advance) std::fputc('\n', stdout);
  std::fflush(stdout);
}

}  // namespace tmrdar::MOD_STRING
