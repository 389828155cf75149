#include "core/file/record_file.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>
#include <vector>

#include "core/platform/platform.h"

namespace tmrdar::record_files {
namespace {

// Items on disk are little-endian images.
template <typename T>
void to_native(T* items, std::size_t count) {
  if constexpr (std::endian::native == std::endian::big && sizeof(T) > 1) {
    for (std::size_t i = 0; i < count; ++i) {
      auto* bytes = reinterpret_cast<unsigned char*>(items + i);
      std::reverse(bytes, bytes + sizeof(T));
    }
  } else {
    (void)items;
    (void)count;
  }
}

}  // namespace

RecordFile::RecordFile(RecordFile&& other) noexcept
    : name_(std::move(other.name_)),
      handle_(std::exchange(other.handle_, nullptr)),
      source_(std::move(other.source_)),
      position_(std::exchange(other.position_, 0)),
      failed_(std::exchange(other.failed_, false)),
      mode_(std::exchange(other.mode_, 0)) {}

RecordFile& RecordFile::operator=(RecordFile&& other) noexcept {
  if (this != &other) {
    close();
    name_ = std::move(other.name_);
    handle_ = std::exchange(other.handle_, nullptr);
    source_ = std::move(other.source_);
    position_ = std::exchange(other.position_, 0);
    failed_ = std::exchange(other.failed_, false);
    mode_ = std::exchange(other.mode_, 0);
  }
  return *this;
}

bool RecordFile::open(std::string_view path, int32_t mode) {
  mode_ = mode;
  if (is_open()) return false;
  name_.assign(path);
  position_ = 0;
  failed_ = false;
  if (!has_mode(mode_write)) {
    // A directory holds no bytes, and the mapped layer refuses it.
    auto source = std::make_unique<MappedFile>();
    if (source->open(name_)) source_ = std::move(source);
    return source_ != nullptr;
  }
  handle_ = platform::create_for_writing(name_);
  return handle_ != nullptr;
}

void RecordFile::close() {
  if (handle_ != nullptr) std::fclose(handle_);
  handle_ = nullptr;
  source_.reset();
  position_ = 0;
  failed_ = false;
  mode_ = 0;
}

bool RecordFile::exists() const { return !name_.empty() && platform::path_exists(name_); }

int64_t RecordFile::size() const {
  if (source_ != nullptr) return source_->size();
  if (handle_ == nullptr) return 0;
  return platform::stream_size(handle_).value_or(0);
}

void RecordFile::remove() {
  if (!exists()) return;
  close();
  platform::delete_file(name_);
}

void RecordFile::set_status(int32_t* status) const {
  if (status == nullptr) return;
  *status = (source_ != nullptr ? failed_ : std::ferror(handle_) != 0) ? 1 : 0;
}

bool RecordFile::move_to(int64_t address, int32_t* status) {
  if (source_ != nullptr) {
    // A position past the end is no failure; the reads there find nothing.
    if (address < 1 || failed_) {
      if (status != nullptr) *status = 1;
      return false;
    }
    position_ = address - 1;
    return true;
  }
  if (handle_ == nullptr || address < 1 ||
      !platform::seek_stream(handle_, address - 1) ||
      std::ferror(handle_) != 0) {
    if (status != nullptr) *status = 1;
    return false;
  }
  return true;
}

template <typename T>
void RecordFile::read_items(T* items, std::size_t count, int32_t* status) {
  if (status != nullptr && *status != 0) return;
  if (source_ != nullptr) {
    // What the file does not hold keeps its old bytes, a part of an item too.
    const int64_t got = source_->read(position_, reinterpret_cast<std::byte*>(items),
                                      static_cast<int64_t>(count * sizeof(T)));
    if (got < 0) {
      failed_ = true;
    } else {
      position_ += got;
      to_native(items, static_cast<std::size_t>(got) / sizeof(T));
    }
    set_status(status);
    return;
  }
  if (handle_ == nullptr) {
    if (status != nullptr) *status = 1;
    return;
  }
  const std::size_t bytes = std::fread(items, 1, count * sizeof(T), handle_);
  to_native(items, bytes / sizeof(T));
  set_status(status);
}

template <typename T>
void RecordFile::read_strided_at(Strided<T> items, int64_t address, int32_t* status) {
  if (status != nullptr && *status != 0) return;
  if (!move_to(address, status)) return;
  // The copy starts from the items as they are, so what the file does not
  // hold stays stale after the unpacking.
  std::vector<T> packed(items.count);
  for (std::size_t i = 0; i < items.count; ++i) packed[i] = items.base[i * items.stride];
  read_items(packed.data(), packed.size(), status);
  for (std::size_t i = 0; i < items.count; ++i) items.base[i * items.stride] = packed[i];
}

template <typename T>
void RecordFile::write_items(const T* items, std::size_t count, int32_t* status) {
  if (status != nullptr && *status != 0) return;
  if (source_ != nullptr) {
    // A file open for reading refuses the write, and stays failed.
    failed_ = true;
    set_status(status);
    return;
  }
  if (handle_ == nullptr) {
    if (status != nullptr) *status = 1;
    return;
  }
  if constexpr (std::endian::native == std::endian::big && sizeof(T) > 1) {
    std::vector<T> swapped(items, items + count);
    to_native(swapped.data(), count);
    std::fwrite(swapped.data(), sizeof(T), count, handle_);
  } else {
    std::fwrite(items, sizeof(T), count, handle_);
  }
  set_status(status);
}

void RecordFile::read_int(std::span<int32_t> items, int32_t* status) {
  read_items(items.data(), items.size(), status);
}
void RecordFile::read_real(std::span<float> items, int32_t* status) {
  read_items(items.data(), items.size(), status);
}
void RecordFile::read_real8(std::span<double> items, int32_t* status) {
  read_items(items.data(), items.size(), status);
}
void RecordFile::read_char(std::span<char> text, int32_t* status) {
  read_items(text.data(), text.size(), status);
}
void RecordFile::read_1_int(int32_t& item, int32_t* status) { read_items(&item, 1, status); }
void RecordFile::read_1_real(float& item, int32_t* status) { read_items(&item, 1, status); }

void RecordFile::read_int_at(std::span<int32_t> items, int64_t address, int32_t* status) {
  if (status != nullptr && *status != 0) return;
  if (move_to(address, status)) read_int(items, status);
}
void RecordFile::read_real_at(std::span<float> items, int64_t address, int32_t* status) {
  if (status != nullptr && *status != 0) return;
  if (move_to(address, status)) read_real(items, status);
}
void RecordFile::read_real8_at(std::span<double> items, int64_t address, int32_t* status) {
  if (status != nullptr && *status != 0) return;
  if (move_to(address, status)) read_real8(items, status);
}
void RecordFile::read_char_at(std::span<char> text, int64_t address, int32_t* status) {
  if (status != nullptr && *status != 0) return;
  if (move_to(address, status)) read_char(text, status);
}
void RecordFile::read_1_int_at(int32_t& item, int64_t address, int32_t* status) {
  read_int_at(std::span<int32_t>(&item, 1), address, status);
}
void RecordFile::read_1_real_at(float& item, int64_t address, int32_t* status) {
  read_real_at(std::span<float>(&item, 1), address, status);
}
void RecordFile::read_int_at(Strided<int32_t> items, int64_t address, int32_t* status) {
  read_strided_at(items, address, status);
}
void RecordFile::read_real_at(Strided<float> items, int64_t address, int32_t* status) {
  read_strided_at(items, address, status);
}

void RecordFile::write_int(std::span<const int32_t> items, int32_t* status) {
  write_items(items.data(), items.size(), status);
}
void RecordFile::write_real(std::span<const float> items, int32_t* status) {
  write_items(items.data(), items.size(), status);
}
void RecordFile::write_byte_array(std::span<const std::byte> items, int32_t* status) {
  write_items(items.data(), items.size(), status);
}
void RecordFile::write_char(std::string_view text, int32_t* status) {
  write_items(text.data(), text.size(), status);
}
void RecordFile::write_1_int(int32_t item, int32_t* status) { write_items(&item, 1, status); }
void RecordFile::write_1_real(float item, int32_t* status) { write_items(&item, 1, status); }
void RecordFile::write_1_real_at(float item, int64_t address, int32_t* status) {
  if (status != nullptr && *status != 0) return;
  if (move_to(address, status)) write_1_real(item, status);
}
void RecordFile::endl(int32_t* status) {
  const char carriage_return = 13;
  write_items(&carriage_return, 1, status);
}

}  // namespace tmrdar::record_files
