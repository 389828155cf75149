#include "builder/job.h"

#include <stdexcept>

namespace tmrdar::builder {

using MOD_COMMON_DATABASE::T_BLOCK_ADDRESSES;

T_BLOCK_ADDRESSES JOB::DIRECTORY(int64_t* header_end) const {
  T_BLOCK_ADDRESSES directory;
  int32_t status = 0;
  MOD_COMMON_DATABASE::INIT_BLOCK_ADDRESSES(directory, NUM_BLOCK_ADDRESSES, status);
  int64_t total = 0;
  MOD_COMMON_DATABASE::SET_BLOCK_ADDRESSES(directory, COUNTS, total);
  if (header_end != nullptr) *header_end = total;
  return directory;
}

int32_t JOB::LAST_DIRECTORY_RECORD() const {
  // The directory starts in record 3 and fills eight entries a record.
  return 2 + (NUM_BLOCK_ADDRESSES + 7) / 8;
}

FILE_IMAGE JOB::IMAGE(FILE_KIND kind) const {
  const DATABASE_FILE_DESCRIPTION& file = kind == FILE_KIND::MOTION ? MOTION : FORCE;
  FILE_IMAGE image;

  // Record 0: the first record.
  RECORD first = RECORD::INTS({file.FIRST.DATABASE_VERSION, file.FIRST.WORD_2, file.FIRST.ANALYSIS_DETAIL_2});
  for (int w = 0; w < 5; ++w) first.INT(4 + w, file.FIRST.FILE_WORDS[static_cast<std::size_t>(w)]);
  image.PUT(0, first);

  // Record 1: the directory size record; then the entries, 8 a record.
  const int32_t last_directory_record = LAST_DIRECTORY_RECORD();
  image.PUT(1, RECORD::INTS({NUM_BLOCK_ADDRESSES, last_directory_record}));
  int64_t total = 0;
  const T_BLOCK_ADDRESSES directory = DIRECTORY(&total);
  for (std::size_t i = 0; i < directory.ADDRESSES.size(); ++i) {
    image.PUT_INT(2 + static_cast<int64_t>(i / 8), static_cast<int>(i % 8) + 1, directory.ADDRESSES[i]);
  }

  // The blocks, each at its entry, each within the records reserved for it.
  const int64_t after_directory = last_directory_record;  // 0-based record behind the directory
  for (const auto& [k, records] : BLOCKS) {
    if (k < 2 || k > MOD_COMMON_DATABASE::NUM_HEADER_BLOCKS || k > NUM_BLOCK_ADDRESSES) {
      throw std::invalid_argument("block " + std::to_string(k) + " has no directory entry");
    }
    const int64_t start = directory.ENTRY(k) - 1;  // 0-based record
    const int64_t reserved = MOD_COMMON_DATABASE::BLOCK_RECORDS(k, COUNTS);
    if (start < after_directory || static_cast<int64_t>(records.size()) > reserved) {
      throw std::invalid_argument("block " + std::to_string(k) + " does not fit its place in the layout");
    }
    for (std::size_t r = 0; r < records.size(); ++r) image.PUT(start + static_cast<int64_t>(r), records[r]);
  }
  // The header ends before the first record behind it (1-based `total`).
  image.EXTEND_TO(total - 1);
  return image;
}

void JOB::WRITE(const std::string& stem) const {
  if (MOTION.PRESENT && !IMAGE(FILE_KIND::MOTION).WRITE(stem + ".dbm")) {
    throw std::runtime_error("cannot write " + stem + ".dbm");
  }
  if (FORCE.PRESENT && !IMAGE(FILE_KIND::FORCE).WRITE(stem + ".dbf")) {
    throw std::runtime_error("cannot write " + stem + ".dbf");
  }
}

}  // namespace tmrdar::builder
