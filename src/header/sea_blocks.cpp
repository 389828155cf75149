// The environment blocks of a header: the seabed points (22), the wave
// harmonics (23 and 24), the contact diameters (25), the current profile (32)
// and the target spectrum (41).
#include <algorithm>

#include "header/block_reading.h"

namespace tmrdar::header {
namespace {

constexpr std::string_view SEABED_FAILURE = "Unable to read seabed data from database header.";
constexpr std::string_view WAVE_FAILURE = "Unable to read wave data from database header.";
constexpr std::string_view DIAMETER_FAILURE = "Unable to read contact diameters from database header.";
constexpr std::string_view CURRENT_FAILURE = "Unable to read current profile data from database header.";
constexpr std::string_view SPECTRUM_FAILURE = "Unable to read Target Spectrum data from database header.";
constexpr std::string_view LOWER_CASE_SPECTRUM_FAILURE = "Unable to read target spectrum data from database header.";
constexpr std::string_view SPECTRUM_ALLOCATION_FAILURE =
    "Unable to allocate memory for target spectrum database header data.";

// Pair i (from 1) of a list packed 4 pairs to a record: its record (from 0),
// by the 64-bit rule of the layout, and its place in the record (from 1).
constexpr int64_t PAIR_RECORD(int64_t i) { return static_cast<int64_t>(static_cast<double>(i - 1) * 0.25); }
constexpr int64_t PAIR_PLACE(int64_t i) { return i - 4 * PAIR_RECORD(i); }

// The rows of a block that are read: its count, but never more than the
// table that holds them has.
int64_t ROWS(int32_t count, int64_t table_rows) { return std::min<int64_t>(count, table_rows); }

}  // namespace

bool TIDE3_DATABASE_FILES::READ_SEA_BLOCKS(int32_t& flag) {
  HEADER_TABLES& t = TABLES;
  std::array<float, 8>& re = HEADER_REALS;
  int32_t status = 0;
  // `count` reals at record `record` (from 0) of a block.
  const auto read = [&](int64_t block, int64_t record, std::size_t count) {
    HEADER_FILE.READ_REAL_AT(std::span<float>(re.data(), count), RECORD_AT(block, record), status);
    return status == 0;
  };

  // Block 22: four points a record, each point's record read anew. The pair
  // goes to the point's row crossed: its first word is the distance, in
  // column 2, and its second the height, in column 1.
  if (SEABED_GEOMETRY != 4 && SEABED_GEOMETRY != 5 && NUM_SEABED_POINTS > 0) {
    const int64_t block = BLOCK_POSITION(22);
    const auto points = static_cast<int32_t>(ROWS(NUM_SEABED_POINTS, SEABED_PROFILE.NUM_NODES()));
    for (int32_t i = 1; i <= points; ++i) {
      if (!read(block, PAIR_RECORD(i), 8)) return HEADER_FAILURE(SEABED_FAILURE, flag);
      const auto p = static_cast<std::size_t>(PAIR_PLACE(i));
      SEABED_PROFILE.SET_NODE(i, 2, re[2 * p - 2]);
      SEABED_PROFILE.SET_NODE(i, 1, re[2 * p - 1]);
    }
    // A plane slope keeps its angle in word 5 of the last record read.
    if (SEABED_GEOMETRY == 2) SEABED_PROFILE.SET_SLOPE(re[4]);
  }

  // Blocks 23 and 24: one record a harmonic, held in two tables of opposite
  // index order.
  if (NUM_WAVE_HARMONICS > 0) {
    const int64_t block = BLOCK_POSITION(23);
    const int64_t rows = ROWS(NUM_WAVE_HARMONICS, t.WAVE_HARMONICS.EXTENT(1));
    for (int64_t r = 1; r <= rows; ++r) {
      if (!read(block, r - 1, 5)) return HEADER_FAILURE(WAVE_FAILURE, flag);
      for (int64_t c = 1; c <= 5; ++c) {
        if (t.WAVE_HARMONICS.CONTAINS(r, c)) t.WAVE_HARMONICS(r, c) = re[static_cast<std::size_t>(c - 1)];
      }
    }
  }
  if (NUM_DSP_WAVE_HARMONICS > 0) {
    const int64_t block = BLOCK_POSITION(24);
    const int64_t rows = ROWS(NUM_DSP_WAVE_HARMONICS, t.DSP_WAVE_HARMONICS.EXTENT(2));
    for (int64_t r = 1; r <= rows; ++r) {
      if (!read(block, r - 1, 5)) return HEADER_FAILURE(WAVE_FAILURE, flag);
      for (int64_t c = 1; c <= 5; ++c) {
        if (t.DSP_WAVE_HARMONICS.CONTAINS(c, r)) t.DSP_WAVE_HARMONICS(c, r) = re[static_cast<std::size_t>(c - 1)];
      }
    }
  }

  // Block 25: a diameter an element, eight to a record. Each record is read
  // once: reading it again for each of its elements would give the same
  // words, the same stale ones past the end, and fail at the same element.
  if (NUM_ELEMENTS > 0) {
    const int64_t block = BLOCK_POSITION(25);
    const int64_t rows = ROWS(NUM_ELEMENTS, t.CONTACT_DIAMETERS.EXTENT(1));
    for (int64_t i = 1; i <= rows; ++i) {
      const bool new_record = i == 1 || PACKED_RECORD(i) != PACKED_RECORD(i - 1);
      if (new_record && !read(block, PACKED_RECORD(i), 8)) return HEADER_FAILURE(DIAMETER_FAILURE, flag);
      t.CONTACT_DIAMETERS(i) = re[static_cast<std::size_t>(PACKED_PLACE(i) - 1)];
    }
  }
  return true;
}

bool TIDE3_DATABASE_FILES::READ_CURRENT_PROFILE(int32_t& flag) {
  if (NUM_CURRENT_POINTS <= 0) return true;
  TABLE<float, 2>& profile = TABLES.CURRENT_PROFILE;
  std::array<float, 8>& re = HEADER_REALS;
  const int64_t block = BLOCK_POSITION(32);
  int32_t status = 0;

  // A profile of one point gives only its last two columns; the first stays 0.
  if (NUM_CURRENT_POINTS == 1) {
    HEADER_FILE.READ_REAL_AT(std::span<float>(re.data(), 2), block, status);
    if (status != 0) return HEADER_FAILURE(CURRENT_FAILURE, flag);
    if (profile.CONTAINS(1, 3)) {
      profile(1, 2) = re[0];
      profile(1, 3) = re[1];
    }
    return true;
  }
  const int64_t rows = ROWS(NUM_CURRENT_POINTS, profile.EXTENT(1));
  for (int64_t r = 1; r <= rows; ++r) {
    HEADER_FILE.READ_REAL_AT(std::span<float>(re.data(), 3), RECORD_AT(block, r - 1), status);
    if (status != 0) return HEADER_FAILURE(CURRENT_FAILURE, flag);
    for (int64_t c = 1; c <= 3; ++c) {
      if (profile.CONTAINS(r, c)) profile(r, c) = re[static_cast<std::size_t>(c - 1)];
    }
  }
  return true;
}

bool TIDE3_DATABASE_FILES::READ_TARGET_SPECTRUM(int32_t& flag) {
  if (NUM_TARGET_SPECTRUM_INTERVALS <= 0) return true;
  TABLE<float, 2>& spectrum = TABLES.TARGET_SPECTRUM;
  std::array<float, 8>& re = HEADER_REALS;
  const int64_t rows = int64_t{NUM_TARGET_SPECTRUM_INTERVALS} + 1;

  // A spectrum larger than the file could hold is garbage, and is refused as
  // memory that cannot be had would be.
  if (MOD_COMMON_DATABASE::P4(rows) > FILE_RECORDS() || !spectrum.ALLOCATE({rows, 2}, 0.0F)) {
    return HEADER_FAILURE(SPECTRUM_ALLOCATION_FAILURE, flag);
  }

  // Four pairs a record from the block's first record; each record is read
  // once, at its first pair. The oldest format reports a failure behind the
  // first record in its own words.
  const int64_t block = BLOCK_POSITION(41);
  int32_t status = 0;
  for (int64_t r = 1; r <= rows; ++r) {
    const int64_t p = PAIR_PLACE(r);
    if (p == 1) {
      HEADER_FILE.READ_REAL_AT(re, RECORD_AT(block, PAIR_RECORD(r)), status);
      if (status != 0) {
        const bool lower_case = VERSION.LOWER_CASE_SPECTRUM_MESSAGE && r > 1;
        return HEADER_FAILURE(lower_case ? LOWER_CASE_SPECTRUM_FAILURE : SPECTRUM_FAILURE, flag);
      }
    }
    spectrum(r, 1) = re[static_cast<std::size_t>(2 * p - 2)];
    spectrum(r, 2) = re[static_cast<std::size_t>(2 * p - 1)];
  }
  return true;
}

}  // namespace tmrdar::header
