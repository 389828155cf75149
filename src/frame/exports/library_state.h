// The library-level state of the frame: the version codes of the last opened
// job, and the lock that serialises the exports.
#pragma once

#include <cstdint>
#include <mutex>
#include <span>
#include <string_view>

#include "header/format_reader.h"

namespace tmrdar::frame {

struct LibraryState {
  int32_t library_motion_code = 0;
  int32_t library_force_code = 0;
};

LibraryState& library();

// Every export holds this lock for its whole duration.
std::mutex& library_lock();

// The reader that the two codes select; null when they select none.
header::FormatReader* selected_reader(int32_t motion_code, int32_t force_code);

// The work of the exports, called with the lock held.
int32_t close_job();
int32_t load_notification(uint32_t reason);
int32_t database_info(int32_t& motion_code, int32_t& force_code, std::span<int32_t, 5> motion_words,
                      std::span<int32_t, 5> force_words, int32_t n, std::span<int32_t> dimensions,
                      std::string_view path);
int32_t analysis_details(int32_t& detail_1, int32_t& detail_2, float& detail_3, std::span<char> title);

}  // namespace tmrdar::frame
