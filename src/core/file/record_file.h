// The record file object: a binary file with 1-based byte addresses,
// through which the database files are read. A file opened for reading is
// read through the mapped layer (`mapped_file.h`), a copy out of a mapping of
// the file or out of a large chunk read by descriptor; a file opened for
// writing is a buffered stream.
//
// Failure rule: every transfer takes an optional status. When the status is
// already non-zero on entry, the transfer does nothing at all; afterwards the
// status is the stream's error indicator. A chain of reads is therefore checked
// once at its end. Reading at or past the end of the file is no failure: what
// the file holds is filled in and the rest of the array keeps its old bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "core/file/mapped_file.h"

namespace tmrdar::record_files {

inline constexpr int32_t mode_read = 1;
inline constexpr int32_t mode_write = 2;

// Byte address of the start of record n (records of 32 bytes, from 1).
constexpr int64_t recn4(int32_t n) { return int64_t{n} * 32 - 31; }
constexpr int64_t recn8(int64_t n) { return n * 32 - 31; }

// A strided view of items: element i stands at base[i * stride]. A row of a
// column-major table is such a view.
template <typename T>
struct Strided {
  T* base;
  std::size_t count;
  std::ptrdiff_t stride;
};

class RecordFile {
 public:
  RecordFile() = default;
  ~RecordFile() { final_file(); }
  RecordFile(const RecordFile&) = delete;
  RecordFile& operator=(const RecordFile&) = delete;
  RecordFile(RecordFile&& other) noexcept;
  RecordFile& operator=(RecordFile&& other) noexcept;

  // Stores the mode first; an open object is not reopened (false). Mode bit 2
  // opens for writing, truncating; anything else opens for reading.
  bool open(std::string_view path, int32_t mode);
  void close();
  // Closes the file if it is open and deletes it, when it exists.
  void remove();
  bool is_open() const { return handle_ != nullptr || source_ != nullptr; }
  // Whether a file of the stored name exists.
  bool exists() const;
  bool has_mode(int32_t mode) const { return (mode_ & mode) != 0; }

  const std::string& name() const { return name_; }
  // Size of the open file in bytes; 0 when it is not open. For a file open
  // for reading, the size last seen, which is where its reads end.
  int64_t size() const;
  // The mapped layer of a file open for reading; nullptr otherwise.
  MappedFile* source() const { return source_.get(); }
  int32_t mode() const { return mode_; }

  // Reads at the current position.
  void read_int(std::span<int32_t> items, int32_t* status = nullptr);
  void read_real(std::span<float> items, int32_t* status = nullptr);
  void read_real8(std::span<double> items, int32_t* status = nullptr);
  void read_char(std::span<char> text, int32_t* status = nullptr);
  void read_1_int(int32_t& item, int32_t* status = nullptr);
  void read_1_real(float& item, int32_t* status = nullptr);

  // Reads at a 1-based byte address. An address below 1 fails with status 1.
  void read_int_at(std::span<int32_t> items, int64_t address, int32_t* status = nullptr);
  void read_real_at(std::span<float> items, int64_t address, int32_t* status = nullptr);
  void read_real8_at(std::span<double> items, int64_t address, int32_t* status = nullptr);
  void read_char_at(std::span<char> text, int64_t address, int32_t* status = nullptr);
  void read_1_int_at(int32_t& item, int64_t address, int32_t* status = nullptr);
  void read_1_real_at(float& item, int64_t address, int32_t* status = nullptr);

  // The `count` bytes at a 1-based address, straight out of the mapping, when
  // the file is mapped, has not failed, and holds them all; the position then
  // stands behind them, as after a read of them. nullptr, with nothing
  // changed, otherwise: the caller then reads them.
  const std::byte* mapped_at(int64_t address, int64_t count) {
    const std::byte* data = mapped_view(address, count);
    if (data != nullptr) position_ = address - 1 + count;
    return data;
  }
  // The same bytes with nothing changed, the position included.
  const std::byte* mapped_view(int64_t address, int64_t count) const {
    if (source_ == nullptr || failed_ || address < 1 || count < 0) return nullptr;
    const std::byte* data = source_->data();
    if (data == nullptr || count > source_->size() - (address - 1)) return nullptr;
    return data + (address - 1);
  }

  // Strided forms: packed into a contiguous copy for the transfer.
  void read_int_at(Strided<int32_t> items, int64_t address, int32_t* status = nullptr);
  void read_real_at(Strided<float> items, int64_t address, int32_t* status = nullptr);

  // Writes at the current position; write_1_real_at is the one positioned write.
  void write_int(std::span<const int32_t> items, int32_t* status = nullptr);
  void write_real(std::span<const float> items, int32_t* status = nullptr);
  void write_byte_array(std::span<const std::byte> items, int32_t* status = nullptr);
  void write_char(std::string_view text, int32_t* status = nullptr);
  void write_1_int(int32_t item, int32_t* status = nullptr);
  void write_1_real(float item, int32_t* status = nullptr);
  void write_1_real_at(float item, int64_t address, int32_t* status = nullptr);
  // Writes the single byte 13.
  void endl(int32_t* status = nullptr);

 private:
  void final_file() { close(); }
  // Positions the stream; false (status 1) for an address below 1 or a failed move.
  bool move_to(int64_t address, int32_t* status);
  template <typename T>
  void read_items(T* items, std::size_t count, int32_t* status);
  template <typename T>
  void read_strided_at(Strided<T> items, int64_t address, int32_t* status);
  template <typename T>
  void write_items(const T* items, std::size_t count, int32_t* status);
  void set_status(int32_t* status) const;

  std::string name_;
  std::FILE* handle_ = nullptr;  // a file open for writing
  std::unique_ptr<MappedFile> source_;  // a file open for reading
  int64_t position_ = 0;  // of the next read, from 0
  bool failed_ = false;  // a read failed: the stream's error indicator
  int32_t mode_ = 0;
};

}  // namespace tmrdar::record_files
