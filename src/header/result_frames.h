// Where the result frames of each output step stand, by the header's counts.
// Word numbers count from 1 at the start of a file; record r (from 1) holds
// words 8r - 7 to 8r and starts at byte 32r - 31.
//
// The arithmetic runs in 64-bit words that wrap instead of overflowing, so a
// garbage count gives a word the read then refuses or finds stale, never
// undefined behaviour.
#pragma once

#include <cstdint>

#include "header/tide3_database_files.h"

namespace tmrdar::header {

// Records of a section of n words: truncate(single(n) * 0.125) + 1, in 32-bit
// floating point, so above 2^24 words the count follows the rounded n.
constexpr int64_t SECTION_RECORDS(int32_t n) {
  return static_cast<int64_t>(static_cast<float>(n) * 0.125F) + 1;
}

namespace frame_words {
constexpr int64_t ADD(int64_t a, int64_t b) {
  return static_cast<int64_t>(static_cast<uint64_t>(a) + static_cast<uint64_t>(b));
}
constexpr int64_t MUL(int64_t a, int64_t b) {
  return static_cast<int64_t>(static_cast<uint64_t>(a) * static_cast<uint64_t>(b));
}
}  // namespace frame_words

// The records ahead of a file's first frame: the shared start record and the
// file's own offset, summed in 64 bits, or in 32 bits that wrap (the older
// formats' rule) and then widened.
constexpr int64_t START_RECORDS(const HEADER_VARIABLES& h, int64_t offset) {
  if (h.START_SUM_64) return frame_words::ADD(h.RESULT_START_RECORD, offset);
  const uint32_t sum = static_cast<uint32_t>(h.RESULT_START_RECORD) + static_cast<uint32_t>(offset);
  return static_cast<int32_t>(sum);
}

// The last word of frame n of the motion file; the word before frame n is
// the last word of frame n - 1.
constexpr int64_t ME(const HEADER_VARIABLES& h, int64_t n) {
  using namespace frame_words;
  return MUL(8, ADD(START_RECORDS(h, h.MOTION_START_OFFSET), MUL(n, h.MOTION_FRAME_RECORDS)));
}
constexpr int64_t MB(const HEADER_VARIABLES& h, int64_t n) { return ME(h, n - 1); }
// The last word of the step record of motion frame n: the frame's end less
// the vessel records, the two-record tail items and the auxiliary element sets.
constexpr int64_t TB(const HEADER_VARIABLES& h, int64_t n) {
  using namespace frame_words;
  const auto aux_records = static_cast<int64_t>(static_cast<double>(h.NUM_AUX_ELEMENTS) * 0.125 + 1.0);
  int64_t word = ME(h, n);
  word = ADD(word, -MUL(8, h.NUM_VESSELS));
  word = ADD(word, -MUL(16, ADD(h.TAIL_PAIR_COUNT_A, h.TAIL_PAIR_COUNT_B)));
  return ADD(word, -MUL(MUL(8, h.AUX_ELEMENT_RESULT_SETS), aux_records));
}
// The last word of frame n of the force file, and the word before it.
constexpr int64_t FE(const HEADER_VARIABLES& h, int64_t n) {
  using namespace frame_words;
  return MUL(8, ADD(START_RECORDS(h, h.FORCE_START_OFFSET), MUL(n, h.FORCE_FRAME_RECORDS)));
}
constexpr int64_t FB(const HEADER_VARIABLES& h, int64_t n) { return FE(h, n - 1); }
// The last word of the step record of force frame n, ahead of the damper records.
constexpr int64_t FT(const HEADER_VARIABLES& h, int64_t n) {
  using namespace frame_words;
  return ADD(FE(h, n), -MUL(8, h.NUM_DAMPER_ELEMENTS));
}

// Record (from 1) and place (1 to 8) of a word number: the record is the
// quotient rounded up, the division truncating towards zero.
constexpr int64_t WORD_RECORD(int64_t word) { return word / 8 + (word % 8 != 0 ? 1 : 0); }
constexpr int64_t WORD_PLACE(int64_t word) { return word - 8 * (WORD_RECORD(word) - 1); }

}  // namespace tmrdar::header
