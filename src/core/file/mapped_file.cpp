#include "core/file/mapped_file.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <mutex>
#include <type_traits>
#include <vector>

#include "core/platform/platform.h"

namespace tmrdar::record_files {
namespace {

// The fallback reads this many bytes at a time, from a page boundary.
constexpr int64_t chunk = int64_t{1} << 18;
constexpr int64_t page = 4096;

// The open files, for refresh_open_files: a list through the files
// themselves, so that it holds no memory of its own. Its head and lock are
// trivially destroyed, so they stay valid when the frame's units close at
// the unloading of the library, after its other static objects are gone.
struct Registry {
  platform::StaticLock lock;
  MappedFile* head = nullptr;
};
static_assert(std::is_trivially_destructible_v<Registry>);
constinit Registry open_files;

}  // namespace

void MappedFile::enlist() {
  const std::lock_guard<platform::StaticLock> hold(open_files.lock);
  previous_ = nullptr;
  next_ = open_files.head;
  if (next_ != nullptr) next_->previous_ = this;
  open_files.head = this;
}

void MappedFile::delist() {
  const std::lock_guard<platform::StaticLock> hold(open_files.lock);
  if (previous_ != nullptr) previous_->next_ = next_;
  if (next_ != nullptr) next_->previous_ = previous_;
  if (open_files.head == this) open_files.head = next_;
  previous_ = next_ = nullptr;
}

bool MappedFile::open(const std::string& path) {
  close();
  const platform::FileHandle descriptor = platform::open_for_reading(path);
  if (descriptor == platform::no_file) return false;
  const std::optional<platform::FileFacts> facts = platform::descriptor_facts(descriptor);
  if (!facts || facts->directory) {
    platform::close_descriptor(descriptor);
    return false;
  }
  descriptor_ = descriptor;
  regular_ = facts->regular;
  size_ = regular_ ? facts->size : 0;
  map();
  enlist();
  return true;
}

bool MappedFile::close() {
  if (descriptor_ == platform::no_file) return true;
  delist();
  unmap();
  window_.reset();
  window_length_ = 0;
  const bool closed = platform::close_descriptor(descriptor_);
  descriptor_ = platform::no_file;
  regular_ = false;
  size_ = 0;
  return closed;
}

void MappedFile::map() {
  window_length_ = 0;
  if (!regular_ || size_ <= 0 || platform::mapping_disabled()) return;
  map_ = platform::map_read_only(descriptor_, size_);
  mapped_size_ = map_ != nullptr ? size_ : 0;
}

void MappedFile::unmap() {
  platform::unmap(map_, mapped_size_);
  map_ = nullptr;
  mapped_size_ = 0;
}

void MappedFile::refresh() {
  if (descriptor_ == platform::no_file || !regular_) return;
  const std::optional<int64_t> size = platform::file_size(descriptor_);
  if (!size || *size == size_) return;
  unmap();
  size_ = *size;
  map();
}

int64_t MappedFile::read_slow(int64_t offset, std::byte* bytes, int64_t count) {
  if (descriptor_ == platform::no_file || offset < 0) return -1;
  if (count <= 0) return 0;
  // A regular file ends at the size last seen; anything else where its reads end.
  const int64_t limit = regular_ ? size_ : std::numeric_limits<int64_t>::max();
  if (offset >= limit) return 0;
  const int64_t wanted = std::min(count, limit - offset);
  if (map_ != nullptr) {
    std::memcpy(bytes, map_ + offset, static_cast<std::size_t>(wanted));
    return wanted;
  }
  if (wanted > chunk / 2) return platform::read_at_offset(descriptor_, bytes, wanted, offset);
  const bool inside = offset >= window_start_ && offset + wanted <= window_start_ + window_length_;
  // A window shorter than a chunk ended at the end of the file when it was read.
  const bool at_end = window_length_ < chunk && offset >= window_start_ && offset < window_start_ + window_length_;
  if (!inside && !at_end) {
    if (!window_) window_ = std::make_unique<std::byte[]>(static_cast<std::size_t>(chunk));
    window_start_ = offset - offset % page;
    const int64_t got = platform::read_at_offset(descriptor_, window_.get(), chunk, window_start_);
    if (got < 0) {
      window_length_ = 0;
      return -1;
    }
    window_length_ = got;
  }
  const int64_t held = std::clamp<int64_t>(window_start_ + window_length_ - offset, 0, wanted);
  if (held > 0) std::memcpy(bytes, window_.get() + (offset - window_start_), static_cast<std::size_t>(held));
  return held;
}

void refresh_open_files() {
  const std::lock_guard<platform::StaticLock> hold(open_files.lock);
  for (MappedFile* file = open_files.head; file != nullptr; file = file->next_) file->refresh();
}

}  // namespace tmrdar::record_files
