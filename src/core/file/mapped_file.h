// The mapped layer under the record files and the frame's file units: a file
// opened for reading is mapped whole, read-only and shared, and a read is a
// copy out of the mapping. A file that cannot be mapped (a pipe, a special
// file, a file system that refuses, or TMRDAR_NO_MMAP=1) is read by
// descriptor in large chunks through a window of its bytes.
//
// The size of a regular file is taken at open and again by refresh, which
// every export runs for every open file before it does anything else; a read
// never reaches past the size last seen, so a file cut short by another
// program reads as the shorter file from the next export on.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>

#include "core/platform/platform.h"

namespace tmrdar::record_files {

class MappedFile {
 public:
  MappedFile() = default;
  ~MappedFile() { close(); }
  MappedFile(const MappedFile&) = delete;
  MappedFile& operator=(const MappedFile&) = delete;

  // Opens an existing file that is no directory; false when it cannot be had.
  bool open(const std::string& path);
  // Closes; false only when closing the file failed.
  bool close();
  bool is_open() const { return descriptor_ != platform::no_file; }
  bool is_regular() const { return regular_; }
  // Size in bytes as last seen (at open or by refresh); 0 for a file that is
  // not regular.
  int64_t size() const { return size_; }
  // Takes the size anew; a file whose size changed is mapped again at its new
  // size, or read by descriptor when the mapping is refused.
  void refresh();

  // Copies the bytes from `offset` (from 0) on, as many of `count` as the
  // file holds; returns how many, or -1 when a read by descriptor failed.
  int64_t read(int64_t offset, std::byte* bytes, int64_t count) {
    // The common case inline: a mapped file and bytes it holds.
    if (map_ != nullptr && offset >= 0 && count >= 0 && count <= size_ - offset) {
      std::memcpy(bytes, map_ + offset, static_cast<std::size_t>(count));
      return count;
    }
    return read_slow(offset, bytes, count);
  }
  // The file's bytes, size() of them, when it is mapped; nullptr otherwise.
  const std::byte* data() const { return map_; }

 private:
  int64_t read_slow(int64_t offset, std::byte* bytes, int64_t count);
  void map();
  void unmap();
  void enlist();
  void delist();
  friend void refresh_open_files();

  platform::FileHandle descriptor_ = platform::no_file;
  bool regular_ = false;
  int64_t size_ = 0;
  const std::byte* map_ = nullptr;
  int64_t mapped_size_ = 0;
  // The fallback's window: bytes [window_start_, window_start_ + window_length_).
  std::unique_ptr<std::byte[]> window_;
  int64_t window_start_ = 0;
  int64_t window_length_ = 0;
  // Neighbours in the list of open files.
  MappedFile* previous_ = nullptr;
  MappedFile* next_ = nullptr;
};

// Refreshes every open mapped file. The exports call it first, under the
// library's lock.
void refresh_open_files();

}  // namespace tmrdar::record_files
