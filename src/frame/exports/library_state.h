// The library-level state of the frame: the version codes of the last opened
// job, and the lock that serialises the exports.
#pragma once

#include <cstdint>
#include <mutex>
#include <span>
#include <string_view>

#include "header/tide3_database_files.h"

namespace tmrdar::frame {

struct LIBRARY_STATE {
  int32_t LIBRARY_MOTION_CODE = 0;
  int32_t LIBRARY_FORCE_CODE = 0;
};

LIBRARY_STATE& LIBRARY();

// Every export holds this lock for its whole duration.
std::mutex& LIBRARY_LOCK();

// The reader that the two codes select; null when they select none.
header::TIDE3_DATABASE_FILES* SELECTED_MODULE(int32_t motion_code, int32_t force_code);

// The work of the exports, called with the lock held.
int32_t CLOSE_JOB();
int32_t LOAD_NOTIFICATION(uint32_t reason);
int32_t DATABASE_INFO(int32_t& motion_code, int32_t& force_code, std::span<int32_t, 5> motion_words,
                      std::span<int32_t, 5> force_words, int32_t n, std::span<int32_t> dimensions,
                      std::string_view path);
int32_t ANALYSIS_DETAILS(int32_t& detail_1, int32_t& detail_2, float& detail_3, std::span<char> title);

}  // namespace tmrdar::frame
