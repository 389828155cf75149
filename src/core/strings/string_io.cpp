// Records, files and the console.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <span>
#include <string>
#include <system_error>

#include "core/strings/string.h"

namespace tmrdar::strings {

int32_t String::num_records(int32_t record_length) const {
  if (record_length < 1) return 0;
  return static_cast<int32_t>((int64_t{length_} + record_length - 1) / record_length);
}

void String::get_record(int32_t n, std::span<char> out, int32_t record_length) const {
  std::fill(out.begin(), out.end(), ' ');
  if (n < 1 || record_length < 1) return;
  const int64_t first = (int64_t{n} - 1) * record_length;  // from 0
  const int64_t last = std::min(int64_t{n} * record_length, int64_t{length_});
  if (first >= last) return;
  const auto count = std::min(static_cast<std::size_t>(last - first), out.size());
  std::copy_n(buffer_.get() + first, count, out.begin());
}

void String::to_file(record_files::RecordFile& unit, int32_t* open_status, int32_t* write_status) const {
  if (open_status != nullptr) *open_status = 0;
  if (!unit.is_open()) return;
  int32_t status = 0;
  unit.write_char(view(), &status);
  if (write_status != nullptr) *write_status = status;
}

void String::to_file(record_files::RecordFile& unit, std::string_view path, int32_t* open_status,
                       int32_t* write_status) const {
  unit.close();
  const bool opened = unit.open(path, record_files::mode_write);
  if (open_status != nullptr) *open_status = opened ? 0 : 1;
  if (!opened) return;
  int32_t status = 0;
  unit.write_char(view(), &status);
  if (write_status != nullptr) *write_status = status;
  unit.close();
}

void String::from_file(std::string_view path, record_files::RecordFile& unit, int32_t* open_status,
                         int32_t* read_status) {
  unit.close();
  const bool opened = unit.open(path, record_files::mode_read);
  if (open_status != nullptr) *open_status = opened ? 0 : 1;
  if (!opened) return;

  int32_t status = 0;
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(std::filesystem::path(unit.name()), error);
  if (error || size > static_cast<std::uintmax_t>(std::numeric_limits<int32_t>::max())) {
    status = 1;
  } else {
    String content;
    content.create_string(static_cast<int32_t>(size), &status);
    if (status == 0) {
      content.length_ = content.capacity_;
      // Reading short of the size is no failure: what is missing stays blank.
      unit.read_char(std::span<char>(content.buffer_.get(), static_cast<std::size_t>(size)), &status);
    }
    if (status == 0) *this = std::move(content);
  }
  if (read_status != nullptr) *read_status = status;
  unit.close();
}

void String::to_console(bool advance) const {
  const std::string_view used = view();
  if (!used.empty()) std::fwrite(used.data(), 1, used.size(), stdout);
  if (advance) std::fputc('\n', stdout);
  std::fflush(stdout);
}

}  // namespace tmrdar::strings
