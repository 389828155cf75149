#include "frame/base/io_units.h"


namespace tmrdar::io_units {

bool DirectAccessUnit::open(const std::string& path, int64_t record_length) {
  close();
  if (record_length < 1) return false;
  auto file = std::make_unique<record_files::MappedFile>();
  if (!file->open(path) || !file->is_regular()) return false;
  file_ = std::move(file);
  record_length_ = record_length;
  return true;
}

bool DirectAccessUnit::close() {
  if (file_ == nullptr) return true;
  const bool closed = file_->close();
  file_.reset();
  record_length_ = 0;
  return closed;
}

bool DirectAccessUnit::read(int64_t record, int64_t offset, std::span<std::byte> bytes) const {
  if (file_ == nullptr || record < 1 || offset < 0) return false;
  const auto count = static_cast<int64_t>(bytes.size());
  if (offset + count > record_length_) return false;
  // Records past the end of the file, or cut short by it, do not exist.
  if (record > file_->size() / record_length_) return false;
  const int64_t start = (record - 1) * record_length_ + offset;
  return file_->read(start, bytes.data(), count) == count;
}

namespace {

// Made on first use and destroyed only by release_units: the unloading of the
// library closes them after the library's static objects are gone.
DirectAccessUnit* units[2] = {nullptr, nullptr};

}  // namespace

DirectAccessUnit& unit(int32_t number) {
  DirectAccessUnit*& unit = units[number == motion_unit ? 0 : 1];
  if (unit == nullptr) unit = new DirectAccessUnit();
  return *unit;
}

void release_units() {
  for (DirectAccessUnit*& unit : units) {
    delete unit;
    unit = nullptr;
  }
}

}  // namespace tmrdar::io_units
