// Where the result frames of each output step stand, by the header's counts.
// Word numbers count from 1 at the start of a file; record r (from 1) holds
// words 8r - 7 to 8r and starts at byte 32r - 31.
//
// The arithmetic runs in 64-bit words that wrap instead of overflowing, so a
// garbage count gives a word the read then refuses or finds stale, never
// undefined behaviour.
#pragma once

#include <cstdint>

#include "header/format_reader.h"

namespace tmrdar::header {

// Records of a section of n words: truncate(single(n) * 0.125) + 1, in 32-bit
// floating point, so above 2^24 words the count follows the rounded n.
constexpr int64_t section_records(int32_t n) {
  return static_cast<int64_t>(static_cast<float>(n) * 0.125F) + 1;
}

namespace frame_words {
constexpr int64_t add(int64_t a, int64_t b) {
  return static_cast<int64_t>(static_cast<uint64_t>(a) + static_cast<uint64_t>(b));
}
constexpr int64_t mul(int64_t a, int64_t b) {
  return static_cast<int64_t>(static_cast<uint64_t>(a) * static_cast<uint64_t>(b));
}
}  // namespace frame_words

// The records ahead of a file's first frame: the shared start record and the
// file's own offset, summed in 64 bits, or in 32 bits that wrap (the older
// formats' rule) and then widened.
constexpr int64_t start_records(const HeaderVariables& h, int64_t offset) {
  if (h.start_sum_64) return frame_words::add(h.result_start_record, offset);
  const uint32_t sum = static_cast<uint32_t>(h.result_start_record) + static_cast<uint32_t>(offset);
  return static_cast<int32_t>(sum);
}

// The last word of frame n of the motion file; the word before frame n is
// the last word of frame n - 1.
constexpr int64_t me(const HeaderVariables& h, int64_t n) {
  using namespace frame_words;
  return mul(8, add(start_records(h, h.motion_start_offset), mul(n, h.motion_frame_records)));
}
constexpr int64_t mb(const HeaderVariables& h, int64_t n) { return me(h, n - 1); }
// The last word of the step record of motion frame n: the frame's end less
// the vessel records, the two-record tail items and the auxiliary element sets.
constexpr int64_t tb(const HeaderVariables& h, int64_t n) {
  using namespace frame_words;
  const auto aux_records = static_cast<int64_t>(static_cast<double>(h.num_aux_elements) * 0.125 + 1.0);
  int64_t word = me(h, n);
  word = add(word, -mul(8, h.num_vessels));
  word = add(word, -mul(16, add(h.tail_pair_count_a, h.tail_pair_count_b)));
  return add(word, -mul(mul(8, h.aux_element_result_sets), aux_records));
}
// The last word of frame n of the force file, and the word before it.
constexpr int64_t fe(const HeaderVariables& h, int64_t n) {
  using namespace frame_words;
  return mul(8, add(start_records(h, h.force_start_offset), mul(n, h.force_frame_records)));
}
constexpr int64_t fb(const HeaderVariables& h, int64_t n) { return fe(h, n - 1); }
// The last word of the step record of force frame n, ahead of the damper records.
constexpr int64_t ft(const HeaderVariables& h, int64_t n) {
  using namespace frame_words;
  return add(fe(h, n), -mul(8, h.num_damper_elements));
}

// Record (from 1) and place (1 to 8) of a word number: the record is the
// quotient rounded up, the division truncating towards zero.
constexpr int64_t word_record(int64_t word) { return word / 8 + (word % 8 != 0 ? 1 : 0); }
constexpr int64_t word_place(int64_t word) { return word - 8 * (word_record(word) - 1); }

}  // namespace tmrdar::header
