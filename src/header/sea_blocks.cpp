// The environment blocks of a header: the seabed points (22), the wave
// harmonics (23 and 24), the contact diameters (25), the current profile (32)
// and the target spectrum (41).
#include <algorithm>

#include "header/block_reading.h"

namespace tmrdar::header {
namespace {

constexpr std::string_view seabed_failure = "Unable to read seabed data from database header.";
constexpr std::string_view wave_failure = "Unable to read wave data from database header.";
constexpr std::string_view diameter_failure = "Unable to read contact diameters from database header.";
constexpr std::string_view current_failure = "Unable to read current profile data from database header.";
constexpr std::string_view spectrum_failure = "Unable to read Target Spectrum data from database header.";
constexpr std::string_view lower_case_spectrum_failure = "Unable to read target spectrum data from database header.";
constexpr std::string_view spectrum_allocation_failure =
    "Unable to allocate memory for target spectrum database header data.";

// Pair i (from 1) of a list packed 4 pairs to a record: its record (from 0),
// by the 64-bit rule of the layout, and its place in the record (from 1).
constexpr int64_t pair_record(int64_t i) { return static_cast<int64_t>(static_cast<double>(i - 1) * 0.25); }
constexpr int64_t pair_place(int64_t i) { return i - 4 * pair_record(i); }

// The rows of a block that are read: its count, but never more than the
// table that holds them has.
int64_t rows_read(int32_t count, int64_t table_rows) { return std::min<int64_t>(count, table_rows); }

constexpr Run five_reals[] = {{Words::reals, 5}};
constexpr Run eight_reals[] = {{Words::reals, 8}};

}  // namespace

bool FormatReader::read_sea_blocks(int32_t& flag) {
  HeaderTables& t = tables;
  const std::array<float, 8>& re = header_reals;

  // Block 22: four points a record. The pair goes to the point's row
  // crossed: its first word is the distance, in column 2, and its second the
  // height, in column 1. A record is read once, at its first point: reading
  // it again for each of its points would give the same words, the same
  // stale ones past the end, and fail at the same point.
  if (seabed_geometry != 4 && seabed_geometry != 5 && num_seabed_points > 0) {
    const auto points = static_cast<int32_t>(rows_read(num_seabed_points, seabed_profile.num_nodes()));
    {
      BlockRecords records(*this, block_position(22), points > 0 ? pair_record(points) + 1 : 0);
      const std::byte* r = nullptr;
      for (int32_t i = 1; i <= points; ++i) {
        if (pair_place(i) == 1 && (r = records.record(pair_record(i), eight_reals)) == nullptr) {
          return header_failure(seabed_failure, flag);
        }
        const auto p = static_cast<int>(pair_place(i));
        seabed_profile.set_node(i, 2, real_word(r, 2 * p - 1));
        seabed_profile.set_node(i, 1, real_word(r, 2 * p));
      }
    }
    // A plane slope keeps its angle in word 5 of the last record read.
    if (seabed_geometry == 2) seabed_profile.set_slope(re[4]);
  }

  // Blocks 23 and 24: one record a harmonic, held in two tables of opposite
  // index order: harmonic by column, and column by harmonic.
  const auto harmonics = [&](int32_t k, int32_t count, Table<float, 2>& table, bool harmonic_first) {
    const int64_t harmonic_extent = table.extent(harmonic_first ? 1 : 2);
    const int64_t rows = table.extent(harmonic_first ? 2 : 1) >= 5 ? rows_read(count, harmonic_extent) : 0;
    const std::span<float> stored = table.storage();
    const int64_t leading = table.extent(1);
    BlockRecords records(*this, block_position(k), rows);
    for (int64_t h = 1; h <= rows; ++h) {
      const std::byte* r = records.record(h - 1, five_reals);
      if (r == nullptr) return header_failure(wave_failure, flag);
      for (int64_t c = 1; c <= 5; ++c) {
        const int64_t entry = harmonic_first ? (h - 1) + (c - 1) * leading : (c - 1) + (h - 1) * leading;
        stored[static_cast<std::size_t>(entry)] = real_word(r, static_cast<int>(c));
      }
    }
    return true;
  };
  if (num_wave_harmonics > 0 && !harmonics(23, num_wave_harmonics, t.wave_harmonics, true)) return false;
  if (num_dsp_wave_harmonics > 0 && !harmonics(24, num_dsp_wave_harmonics, t.dsp_wave_harmonics, false)) return false;

  // Block 25: a diameter an element, eight to a record, each record read
  // once, as the seabed points are.
  if (num_elements > 0) {
    const int64_t rows = rows_read(num_elements, t.contact_diameters.extent(1));
    const std::span<float> diameters = t.contact_diameters.storage();
    BlockRecords records(*this, block_position(25), rows > 0 ? packed_record(rows) + 1 : 0);
    const std::byte* r = nullptr;
    for (int64_t i = 1; i <= rows; ++i) {
      const auto place = static_cast<int>(packed_place(i));
      if (place == 1 && (r = records.record(packed_record(i), eight_reals)) == nullptr) {
        return header_failure(diameter_failure, flag);
      }
      diameters[static_cast<std::size_t>(i - 1)] = real_word(r, place);
    }
  }
  return true;
}

bool FormatReader::read_current_profile(int32_t& flag) {
  if (num_current_points <= 0) return true;
  Table<float, 2>& profile = tables.current_profile;
  std::array<float, 8>& re = header_reals;
  const int64_t block = block_position(32);
  int32_t status = 0;

  // A profile of one point gives only its last two columns; the first stays 0.
  if (num_current_points == 1) {
    header_file.read_real_at(std::span<float>(re.data(), 2), block, status);
    if (status != 0) return header_failure(current_failure, flag);
    if (profile.contains(1, 3)) {
      profile(1, 2) = re[0];
      profile(1, 3) = re[1];
    }
    return true;
  }
  const int64_t rows = rows_read(num_current_points, profile.extent(1));
  for (int64_t r = 1; r <= rows; ++r) {
    header_file.read_real_at(std::span<float>(re.data(), 3), record_at(block, r - 1), status);
    if (status != 0) return header_failure(current_failure, flag);
    for (int64_t c = 1; c <= 3; ++c) {
      if (profile.contains(r, c)) profile(r, c) = re[static_cast<std::size_t>(c - 1)];
    }
  }
  return true;
}

bool FormatReader::read_target_spectrum(int32_t& flag) {
  if (num_target_spectrum_intervals <= 0) return true;
  Table<float, 2>& spectrum = tables.target_spectrum;
  std::array<float, 8>& re = header_reals;
  const int64_t rows = int64_t{num_target_spectrum_intervals} + 1;

  // A spectrum larger than the file could hold is garbage, and is refused as
  // memory that cannot be had would be.
  if (common_database::p4(rows) > file_records() || !spectrum.allocate({rows, 2}, 0.0F)) {
    return header_failure(spectrum_allocation_failure, flag);
  }

  // Four pairs a record from the block's first record; each record is read
  // once, at its first pair. The oldest format reports a failure behind the
  // first record in its own words.
  const int64_t block = block_position(41);
  int32_t status = 0;
  for (int64_t r = 1; r <= rows; ++r) {
    const int64_t p = pair_place(r);
    if (p == 1) {
      header_file.read_real_at(re, record_at(block, pair_record(r)), status);
      if (status != 0) {
        const bool lower_case = version.lower_case_spectrum_message && r > 1;
        return header_failure(lower_case ? lower_case_spectrum_failure : spectrum_failure, flag);
      }
    }
    spectrum(r, 1) = re[static_cast<std::size_t>(2 * p - 2)];
    spectrum(r, 2) = re[static_cast<std::size_t>(2 * p - 1)];
  }
  return true;
}

}  // namespace tmrdar::header
