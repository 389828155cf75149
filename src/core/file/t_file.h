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

namespace tmrdar::MOD_FILE {

inline constexpr int32_t MODE_READ = 1;
inline constexpr int32_t MODE_WRITE = 2;

// Byte address of the start of record n (records of 32 bytes, from 1).
constexpr int64_t RECN4(int32_t n) { return int64_t{n} * 32 - 31; }
constexpr int64_t RECN8(int64_t n) { return n * 32 - 31; }

// A strided view of items: element i stands at base[i * stride]. A row of a
// column-major table is such a view.
template <typename T>
struct STRIDED {
  T* base;
  std::size_t count;
  std::ptrdiff_t stride;
};

class T_FILE {
 public:
  T_FILE() = default;
  ~T_FILE() { FINAL_FILE(); }
  T_FILE(const T_FILE&) = delete;
  T_FILE& operator=(const T_FILE&) = delete;
  T_FILE(T_FILE&& other) noexcept;
  T_FILE& operator=(T_FILE&& other) noexcept;

  // Stores the mode first; an open object is not reopened (false). Mode bit 2
  // opens for writing, truncating; anything else opens for reading.
  bool OPEN(std::string_view path, int32_t mode);
  void CLOSE();
  // Closes the file if it is open and deletes it, when it exists.
  void REMOVE();
  bool IS_OPEN() const { return handle_ != nullptr || source_ != nullptr; }
  // Whether a file of the stored name exists.
  bool EXISTS() const;
  bool HAS_MODE(int32_t mode) const { return (mode_ & mode) != 0; }

  const std::string& NAME() const { return name_; }
  // Size of the open file in bytes; 0 when it is not open. For a file open
  // for reading, the size last seen, which is where its reads end.
  int64_t SIZE() const;
  // The mapped layer of a file open for reading; nullptr otherwise.
  MAPPED_FILE* SOURCE() const { return source_.get(); }
  int32_t MODE() const { return mode_; }

  // Reads at the current position.
  void READ_INT(std::span<int32_t> items, int32_t* status = nullptr);
  void READ_REAL(std::span<float> items, int32_t* status = nullptr);
  void READ_REAL8(std::span<double> items, int32_t* status = nullptr);
  void READ_CHAR(std::span<char> text, int32_t* status = nullptr);
  void READ_1_INT(int32_t& item, int32_t* status = nullptr);
  void READ_1_REAL(float& item, int32_t* status = nullptr);

  // Reads at a 1-based byte address. An address below 1 fails with status 1.
  void READ_INT_AT(std::span<int32_t> items, int64_t address, int32_t* status = nullptr);
  void READ_REAL_AT(std::span<float> items, int64_t address, int32_t* status = nullptr);
  void READ_REAL8_AT(std::span<double> items, int64_t address, int32_t* status = nullptr);
  void READ_CHAR_AT(std::span<char> text, int64_t address, int32_t* status = nullptr);
  void READ_1_INT_AT(int32_t& item, int64_t address, int32_t* status = nullptr);
  void READ_1_REAL_AT(float& item, int64_t address, int32_t* status = nullptr);

  // The `count` bytes at a 1-based address, straight out of the mapping, when
  // the file is mapped, has not failed, and holds them all; the position then
  // stands behind them, as after a read of them. nullptr, with nothing
  // changed, otherwise: the caller then reads them.
  const std::byte* MAPPED_AT(int64_t address, int64_t count) {
    if (source_ == nullptr || failed_ || address < 1 || count < 0) return nullptr;
    const std::byte* data = source_->DATA();
    if (data == nullptr || count > source_->SIZE() - (address - 1)) return nullptr;
    position_ = address - 1 + count;
    return data + (address - 1);
  }

  // Strided forms: packed into a contiguous copy for the transfer.
  void READ_INT_AT(STRIDED<int32_t> items, int64_t address, int32_t* status = nullptr);
  void READ_REAL_AT(STRIDED<float> items, int64_t address, int32_t* status = nullptr);

  // Writes at the current position; WRITE_1_REAL_AT is the one positioned write.
  void WRITE_INT(std::span<const int32_t> items, int32_t* status = nullptr);
  void WRITE_REAL(std::span<const float> items, int32_t* status = nullptr);
  void WRITE_BYTE_ARRAY(std::span<const std::byte> items, int32_t* status = nullptr);
  void WRITE_CHAR(std::string_view text, int32_t* status = nullptr);
  void WRITE_1_INT(int32_t item, int32_t* status = nullptr);
  void WRITE_1_REAL(float item, int32_t* status = nullptr);
  void WRITE_1_REAL_AT(float item, int64_t address, int32_t* status = nullptr);
  // Writes the single byte 13.
  void ENDL(int32_t* status = nullptr);

 private:
  void FINAL_FILE() { CLOSE(); }
  // Positions the stream; false (status 1) for an address below 1 or a failed move.
  bool MOVE_TO(int64_t address, int32_t* status);
  template <typename T>
  void READ_ITEMS(T* items, std::size_t count, int32_t* status);
  template <typename T>
  void READ_STRIDED_AT(STRIDED<T> items, int64_t address, int32_t* status);
  template <typename T>
  void WRITE_ITEMS(const T* items, std::size_t count, int32_t* status);
  void SET_STATUS(int32_t* status) const;

  std::string name_;
  std::FILE* handle_ = nullptr;  // a file open for writing
  std::unique_ptr<MAPPED_FILE> source_;  // a file open for reading
  int64_t position_ = 0;  // of the next read, from 0
  bool failed_ = false;  // a read failed: the stream's error indicator
  int32_t mode_ = 0;
};

}  // namespace tmrdar::MOD_FILE
