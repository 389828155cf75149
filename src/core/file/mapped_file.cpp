#include "core/file/mapped_file.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <mutex>
#include <vector>

#include "core/platform/platform.h"

namespace tmrdar::MOD_FILE {
namespace {

// The fallback reads this many bytes at a time, from a page boundary.
constexpr int64_t CHUNK = int64_t{1} << 18;
constexpr int64_t PAGE = 4096;

// The open files, for REFRESH_OPEN_FILES. Never destroyed: the frame's units
// are closed when the library is unloaded, after its static objects are gone.
struct REGISTRY {
  std::mutex LOCK;
  std::vector<MAPPED_FILE*> FILES;
};
REGISTRY& OPEN_FILES() {
  static REGISTRY* registry = new REGISTRY();
  return *registry;
}

void ENLIST(MAPPED_FILE* file) {
  REGISTRY& r = OPEN_FILES();
  const std::lock_guard<std::mutex> hold(r.LOCK);
  r.FILES.push_back(file);
}

void DELIST(MAPPED_FILE* file) {
  REGISTRY& r = OPEN_FILES();
  const std::lock_guard<std::mutex> hold(r.LOCK);
  r.FILES.erase(std::remove(r.FILES.begin(), r.FILES.end(), file), r.FILES.end());
}

}  // namespace

bool MAPPED_FILE::OPEN(const std::string& path) {
  CLOSE();
  const int descriptor = platform::OPEN_FOR_READING(path);
  if (descriptor < 0) return false;
  const std::optional<platform::FILE_FACTS> facts = platform::DESCRIPTOR_FACTS(descriptor);
  if (!facts || facts->DIRECTORY) {
    platform::CLOSE_DESCRIPTOR(descriptor);
    return false;
  }
  descriptor_ = descriptor;
  regular_ = facts->REGULAR;
  size_ = regular_ ? facts->SIZE : 0;
  MAP();
  ENLIST(this);
  return true;
}

bool MAPPED_FILE::CLOSE() {
  if (descriptor_ < 0) return true;
  DELIST(this);
  UNMAP();
  window_.reset();
  window_length_ = 0;
  const bool closed = platform::CLOSE_DESCRIPTOR(descriptor_);
  descriptor_ = -1;
  regular_ = false;
  size_ = 0;
  return closed;
}

void MAPPED_FILE::MAP() {
  window_length_ = 0;
  if (!regular_ || size_ <= 0 || platform::MAPPING_DISABLED()) return;
  map_ = platform::MAP_READ_ONLY(descriptor_, size_);
  mapped_size_ = map_ != nullptr ? size_ : 0;
}

void MAPPED_FILE::UNMAP() {
  platform::UNMAP(map_, mapped_size_);
  map_ = nullptr;
  mapped_size_ = 0;
}

void MAPPED_FILE::REFRESH() {
  if (descriptor_ < 0 || !regular_) return;
  const std::optional<platform::FILE_FACTS> facts = platform::DESCRIPTOR_FACTS(descriptor_);
  if (!facts) return;
  if (facts->SIZE == size_) return;
  UNMAP();
  size_ = facts->SIZE;
  MAP();
}

int64_t MAPPED_FILE::READ_SLOW(int64_t offset, std::byte* bytes, int64_t count) {
  if (descriptor_ < 0 || offset < 0) return -1;
  if (count <= 0) return 0;
  // A regular file ends at the size last seen; anything else where its reads end.
  const int64_t limit = regular_ ? size_ : std::numeric_limits<int64_t>::max();
  if (offset >= limit) return 0;
  const int64_t wanted = std::min(count, limit - offset);
  if (map_ != nullptr) {
    std::memcpy(bytes, map_ + offset, static_cast<std::size_t>(wanted));
    return wanted;
  }
  if (wanted > CHUNK / 2) return platform::READ_AT_OFFSET(descriptor_, bytes, wanted, offset);
  const bool inside = offset >= window_start_ && offset + wanted <= window_start_ + window_length_;
  // A window shorter than a chunk ended at the end of the file when it was read.
  const bool at_end = window_length_ < CHUNK && offset >= window_start_ && offset < window_start_ + window_length_;
  if (!inside && !at_end) {
    if (!window_) window_ = std::make_unique<std::byte[]>(static_cast<std::size_t>(CHUNK));
    window_start_ = offset - offset % PAGE;
    const int64_t got = platform::READ_AT_OFFSET(descriptor_, window_.get(), CHUNK, window_start_);
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

void REFRESH_OPEN_FILES() {
  REGISTRY& r = OPEN_FILES();
  const std::lock_guard<std::mutex> hold(r.LOCK);
  for (MAPPED_FILE* file : r.FILES) file->REFRESH();
}

}  // namespace tmrdar::MOD_FILE
