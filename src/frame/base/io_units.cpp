#include "frame/base/io_units.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tmrdar::IO_UNITS {

bool DIRECT_ACCESS_UNIT::OPEN(const std::string& path, int64_t record_length) {
  CLOSE();
  if (record_length < 1) return false;
  const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return false;
  struct stat info {};
  if (::fstat(descriptor, &info) != 0 || !S_ISREG(info.st_mode)) {
    ::close(descriptor);
    return false;
  }
  descriptor_ = descriptor;
  record_length_ = record_length;
  file_size_ = static_cast<int64_t>(info.st_size);
  return true;
}

bool DIRECT_ACCESS_UNIT::CLOSE() {
  if (descriptor_ < 0) return true;
  const bool closed = ::close(descriptor_) == 0;
  descriptor_ = -1;
  record_length_ = 0;
  file_size_ = 0;
  return closed;
}

bool DIRECT_ACCESS_UNIT::READ(int64_t record, int64_t offset, std::span<std::byte> bytes) const {
  if (descriptor_ < 0 || record < 1 || offset < 0) return false;
  const auto count = static_cast<int64_t>(bytes.size());
  if (offset + count > record_length_) return false;
  // Records past the end of the file, or cut short by it, do not exist.
  if (record > file_size_ / record_length_) return false;
  const int64_t start = (record - 1) * record_length_ + offset;
  int64_t done = 0;
  while (done < count) {
    const ssize_t got = ::pread(descriptor_, bytes.data() + done, static_cast<std::size_t>(count - done),
                                static_cast<off_t>(start + done));
    if (got <= 0) return false;
    done += got;
  }
  return true;
}

namespace {

// Made on first use and destroyed only by RELEASE_UNITS: the unloading of the
// library closes them after the library's static objects are gone.
DIRECT_ACCESS_UNIT* units[2] = {nullptr, nullptr};

}  // namespace

DIRECT_ACCESS_UNIT& UNIT(int32_t number) {
  DIRECT_ACCESS_UNIT*& unit = units[number == MOTION_UNIT ? 0 : 1];
  if (unit == nullptr) unit = new DIRECT_ACCESS_UNIT();
  return *unit;
}

void RELEASE_UNITS() {
  for (DIRECT_ACCESS_UNIT*& unit : units) {
    delete unit;
    unit = nullptr;
  }
}

}  // namespace tmrdar::IO_UNITS
