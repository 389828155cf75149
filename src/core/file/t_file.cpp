#include "core/file/t_file.h"

#include <sys/stat.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>
#include <vector>

namespace tmrdar::MOD_FILE {
namespace {

// Items on disk are little-endian images.
template <typename T>
void TO_NATIVE(T* items, std::size_t count) {
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

T_FILE::T_FILE(T_FILE&& other) noexcept
    : name_(std::move(other.name_)),
      handle_(std::exchange(other.handle_, nullptr)),
      source_(std::move(other.source_)),
      position_(std::exchange(other.position_, 0)),
      failed_(std::exchange(other.failed_, false)),
      mode_(std::exchange(other.mode_, 0)) {}

T_FILE& T_FILE::operator=(T_FILE&& other) noexcept {
  if (this != &other) {
    CLOSE();
    name_ = std::move(other.name_);
    handle_ = std::exchange(other.handle_, nullptr);
    source_ = std::move(other.source_);
    position_ = std::exchange(other.position_, 0);
    failed_ = std::exchange(other.failed_, false);
    mode_ = std::exchange(other.mode_, 0);
  }
  return *this;
}

bool T_FILE::OPEN(std::string_view path, int32_t mode) {
  mode_ = mode;
  if (IS_OPEN()) return false;
  name_.assign(path);
  position_ = 0;
  failed_ = false;
  if (!HAS_MODE(MODE_WRITE)) {
    // A directory holds no bytes, and the mapped layer refuses it.
    auto source = std::make_unique<MAPPED_FILE>();
    if (source->OPEN(name_)) source_ = std::move(source);
    return source_ != nullptr;
  }
  handle_ = std::fopen(name_.c_str(), "wb");
  if (handle_ != nullptr) {
    struct stat info {};
    if (::fstat(::fileno(handle_), &info) != 0 || S_ISDIR(info.st_mode)) {
      std::fclose(handle_);
      handle_ = nullptr;
    }
  }
  return handle_ != nullptr;
}

void T_FILE::CLOSE() {
  if (handle_ != nullptr) std::fclose(handle_);
  handle_ = nullptr;
  source_.reset();
  position_ = 0;
  failed_ = false;
  mode_ = 0;
}

bool T_FILE::EXISTS() const {
  struct stat info {};
  return !name_.empty() && ::stat(name_.c_str(), &info) == 0;
}

int64_t T_FILE::SIZE() const {
  if (source_ != nullptr) return source_->SIZE();
  struct stat info {};
  if (handle_ == nullptr || ::fstat(::fileno(handle_), &info) != 0) return 0;
  return static_cast<int64_t>(info.st_size);
}

void T_FILE::REMOVE() {
  if (!EXISTS()) return;
  CLOSE();
  std::remove(name_.c_str());
}

void T_FILE::SET_STATUS(int32_t* status) const {
  if (status == nullptr) return;
  *status = (source_ != nullptr ? failed_ : std::ferror(handle_) != 0) ? 1 : 0;
}

bool T_FILE::MOVE_TO(int64_t address, int32_t* status) {
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
      ::fseeko(handle_, static_cast<off_t>(address - 1), SEEK_SET) != 0 ||
      std::ferror(handle_) != 0) {
    if (status != nullptr) *status = 1;
    return false;
  }
  return true;
}

template <typename T>
void T_FILE::READ_ITEMS(T* items, std::size_t count, int32_t* status) {
  if (status != nullptr && *status != 0) return;
  if (source_ != nullptr) {
    // What the file does not hold keeps its old bytes, a part of an item too.
    const int64_t got = source_->READ(position_, reinterpret_cast<std::byte*>(items),
                                      static_cast<int64_t>(count * sizeof(T)));
    if (got < 0) {
      failed_ = true;
    } else {
      position_ += got;
      TO_NATIVE(items, static_cast<std::size_t>(got) / sizeof(T));
    }
    SET_STATUS(status);
    return;
  }
  if (handle_ == nullptr) {
    if (status != nullptr) *status = 1;
    return;
  }
  const std::size_t bytes = std::fread(items, 1, count * sizeof(T), handle_);
  TO_NATIVE(items, bytes / sizeof(T));
  SET_STATUS(status);
}

template <typename T>
void T_FILE::READ_STRIDED_AT(STRIDED<T> items, int64_t address, int32_t* status) {
  if (status != nullptr && *status != 0) return;
  if (!MOVE_TO(address, status)) return;
  // The copy starts from the items as they are, so what the file does not
  // hold stays stale after the unpacking.
  std::vector<T> packed(items.count);
  for (std::size_t i = 0; i < items.count; ++i) packed[i] = items.base[i * items.stride];
  READ_ITEMS(packed.data(), packed.size(), status);
  for (std::size_t i = 0; i < items.count; ++i) items.base[i * items.stride] = packed[i];
}

template <typename T>
void T_FILE::WRITE_ITEMS(const T* items, std::size_t count, int32_t* status) {
  if (status != nullptr && *status != 0) return;
  if (source_ != nullptr) {
    // A file open for reading refuses the write, and stays failed.
    failed_ = true;
    SET_STATUS(status);
    return;
  }
  if (handle_ == nullptr) {
    if (status != nullptr) *status = 1;
    return;
  }
  if constexpr (std::endian::native == std::endian::big && sizeof(T) > 1) {
    std::vector<T> swapped(items, items + count);
    TO_NATIVE(swapped.data(), count);
    std::fwrite(swapped.data(), sizeof(T), count, handle_);
  } else {
    std::fwrite(items, sizeof(T), count, handle_);
  }
  SET_STATUS(status);
}

void T_FILE::READ_INT(std::span<int32_t> items, int32_t* status) {
  READ_ITEMS(items.data(), items.size(), status);
}
void T_FILE::READ_REAL(std::span<float> items, int32_t* status) {
  READ_ITEMS(items.data(), items.size(), status);
}
void T_FILE::READ_REAL8(std::span<double> items, int32_t* status) {
  READ_ITEMS(items.data(), items.size(), status);
}
void T_FILE::READ_CHAR(std::span<char> text, int32_t* status) {
  READ_ITEMS(text.data(), text.size(), status);
}
void T_FILE::READ_1_INT(int32_t& item, int32_t* status) { READ_ITEMS(&item, 1, status); }
void T_FILE::READ_1_REAL(float& item, int32_t* status) { READ_ITEMS(&item, 1, status); }

void T_FILE::READ_INT_AT(std::span<int32_t> items, int64_t address, int32_t* status) {
  if (status != nullptr && *status != 0) return;
  if (MOVE_TO(address, status)) READ_INT(items, status);
}
void T_FILE::READ_REAL_AT(std::span<float> items, int64_t address, int32_t* status) {
  if (status != nullptr && *status != 0) return;
  if (MOVE_TO(address, status)) READ_REAL(items, status);
}
void T_FILE::READ_REAL8_AT(std::span<double> items, int64_t address, int32_t* status) {
  if (status != nullptr && *status != 0) return;
  if (MOVE_TO(address, status)) READ_REAL8(items, status);
}
void T_FILE::READ_CHAR_AT(std::span<char> text, int64_t address, int32_t* status) {
  if (status != nullptr && *status != 0) return;
  if (MOVE_TO(address, status)) READ_CHAR(text, status);
}
void T_FILE::READ_1_INT_AT(int32_t& item, int64_t address, int32_t* status) {
  READ_INT_AT(std::span<int32_t>(&item, 1), address, status);
}
void T_FILE::READ_1_REAL_AT(float& item, int64_t address, int32_t* status) {
  READ_REAL_AT(std::span<float>(&item, 1), address, status);
}
void T_FILE::READ_INT_AT(STRIDED<int32_t> items, int64_t address, int32_t* status) {
  READ_STRIDED_AT(items, address, status);
}
void T_FILE::READ_REAL_AT(STRIDED<float> items, int64_t address, int32_t* status) {
  READ_STRIDED_AT(items, address, status);
}

void T_FILE::WRITE_INT(std::span<const int32_t> items, int32_t* status) {
  WRITE_ITEMS(items.data(), items.size(), status);
}
void T_FILE::WRITE_REAL(std::span<const float> items, int32_t* status) {
  WRITE_ITEMS(items.data(), items.size(), status);
}
void T_FILE::WRITE_BYTE_ARRAY(std::span<const std::byte> items, int32_t* status) {
  WRITE_ITEMS(items.data(), items.size(), status);
}
void T_FILE::WRITE_CHAR(std::string_view text, int32_t* status) {
  WRITE_ITEMS(text.data(), text.size(), status);
}
void T_FILE::WRITE_1_INT(int32_t item, int32_t* status) { WRITE_ITEMS(&item, 1, status); }
void T_FILE::WRITE_1_REAL(float item, int32_t* status) { WRITE_ITEMS(&item, 1, status); }
void T_FILE::WRITE_1_REAL_AT(float item, int64_t address, int32_t* status) {
  if (status != nullptr && *status != 0) return;
  if (MOVE_TO(address, status)) WRITE_1_REAL(item, status);
}
void T_FILE::ENDL(int32_t* status) {
  const char carriage_return = 13;
  WRITE_ITEMS(&carriage_return, 1, status);
}

}  // namespace tmrdar::MOD_FILE
