#include "frame/base/io_units.h"


namespace tmrdar::IO_UNITS {

bool DIRECT_ACCESS_UNIT::OPEN(const std::string& path, int64_t record_length) {
  CLOSE();
  if (record_length < 1) return false;
  auto file = std::make_unique<MOD_FILE::MAPPED_FILE>();
  if (!file->OPEN(path) || !file->IS_REGULAR()) return false;
  file_ = std::move(file);
  record_length_ = record_length;
  return true;
}

bool DIRECT_ACCESS_UNIT::CLOSE() {
  if (file_ == nullptr) return true;
  const bool closed = file_->CLOSE();
  file_.reset();
  record_length_ = 0;
  return closed;
}

bool DIRECT_ACCESS_UNIT::READ(int64_t record, int64_t offset, std::span<std::byte> bytes) const {
  if (file_ == nullptr || record < 1 || offset < 0) return false;
  const auto count = static_cast<int64_t>(bytes.size());
  if (offset + count > record_length_) return false;
  // Records past the end of the file, or cut short by it, do not exist.
  if (record > file_->SIZE() / record_length_) return false;
  const int64_t start = (record - 1) * record_length_ + offset;
  return file_->READ(start, bytes.data(), count) == count;
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
