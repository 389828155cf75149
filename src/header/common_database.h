// The block directory of a database file, and the record-count rules by
// which the blocks of a header are laid out.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace tmrdar::MOD_COMMON_DATABASE {

// Records taken by a packed list: 8 words a record, or 4 pairs a record.
// The count is widened to a 64-bit real, so a list that fills its last record
// exactly still takes one record more.
constexpr int64_t P8(int64_t n) { return static_cast<int64_t>(static_cast<double>(n) * 0.125) + 1; }
constexpr int64_t P4(int64_t n) { return static_cast<int64_t>(static_cast<double>(n) * 0.25) + 1; }
// The single-precision form of P8, which two blocks of the layout use: the
// count is rounded to a 32-bit real and multiplied in 32-bit arithmetic.
constexpr int64_t P8_SINGLE(int64_t n) {
  return static_cast<int64_t>(static_cast<float>(n) * 0.125F) + 1;
}

// The block directory in memory. Entries count from 1; after a header read
// they hold 0-based record numbers, so block k starts at byte 32 * entry + 1.
struct T_BLOCK_ADDRESSES {
  int32_t NUM_BLOCKS = 0;
  std::vector<int32_t> ADDRESSES;  // ADDRESSES[k - 1] is entry k

  // Entry k (from 1). An entry that the directory does not have reads as -1,
  // the invalid address that an entry the file left at 0 becomes.
  int32_t ENTRY(int32_t k) const {
    return k >= 1 && static_cast<std::size_t>(k) <= ADDRESSES.size() ? ADDRESSES[k - 1] : -1;
  }
};

// Sets the count and a zeroed array of that many entries (none below 1).
// A failed allocation gives a non-zero status and a cleaned directory.
void INIT_BLOCK_ADDRESSES(T_BLOCK_ADDRESSES& blocks, int32_t count, int32_t& status);

// Count 0, array released.
void CLEAN_BLOCK_ADDRESSES(T_BLOCK_ADDRESSES& blocks);

// Copies up to `values.size()` values into the entries from `next` on, never
// past entry NUM_BLOCKS, and advances `next` past the last entry written.
void GET_BLOCK_ADDRESSES(T_BLOCK_ADDRESSES& blocks, int32_t& next, std::span<const int32_t> values);

// What sizes the blocks of a header: the header's own counts, and the counts
// of the blocks whose size the header does not hold.
struct BLOCK_COUNTS {
  int32_t NUM_ELEMENTS = 0;
  int32_t NUM_NONLINEAR_E_TABLES = 0;
  int32_t NUM_NODES = 0;
  int32_t NUM_AUX_ELEMENTS = 0;
  int32_t NUM_AUX_NODES = 0;
  int32_t NUM_SEABED_POINTS = 0;
  int32_t NUM_WAVE_HARMONICS = 0;
  int32_t NUM_DSP_WAVE_HARMONICS = 0;
  int32_t NUM_ELEMENT_SETS = 0;
  int32_t NUM_NODE_SETS = 0;
  int32_t NUM_LABELS = 0;
  int32_t NUM_POINT_MASSES = 0;
  int32_t NUM_POINT_LOADS = 0;
  int32_t NUM_BOUNDARY_CONDITIONS = 0;
  int32_t NUM_CURRENT_POINTS = 0;
  int32_t PIP_NODES_PER_PAIR = 0;
  int32_t NUM_PIPE_IN_PIPE = 0;
  int32_t NUM_GUIDE_SURFACES = 0;
  int32_t NUM_PANELS = 0;
  int32_t NUM_ZERO_GAP_GUIDES = 0;
  int32_t NUM_INSTALLATION_CRITERIA = 0;
  int32_t NUM_FLOATING_BODIES = 0;
  int32_t NUM_VESSELS = 0;
  int32_t NUM_TARGET_SPECTRUM_INTERVALS = 0;
  int32_t NUM_DISTRIBUTED_LOADS = 0;
  int32_t NUM_POINT_BUOYS = 0;
  int32_t NUM_VESSEL_PROFILES = 0;
  int32_t NUM_BODY_PROFILES = 0;
  int32_t ELEMENT_VALUE_SETS = 0;     // the k of the element value block
  int32_t PACKED_BLOCK_COUNT = 0;     // the count of the packed block
  int32_t NUM_PLASTIC_HARDENING_MODELS = 0;
  int32_t PLASTIC_HARDENING_RECORDS = 0;  // sum of the models' point records
  int32_t NUM_DAMPER_ELEMENTS = 0;
  int32_t BINARY_DATA_RECORDS = 0;    // sum of the binary items' records
};

// Highest directory entry of a header.
inline constexpr int32_t NUM_HEADER_BLOCKS = 52;

// Records that block k (from 2 to NUM_HEADER_BLOCKS) takes in the layout.
int64_t BLOCK_RECORDS(int32_t k, const BLOCK_COUNTS& counts);

// Fills the whole directory from the counts in 1-based record numbers, as a
// writer lays out a file, and returns in `total` the first record behind the
// header. Entries past the last block hold that record as well.
void SET_BLOCK_ADDRESSES(T_BLOCK_ADDRESSES& blocks, const BLOCK_COUNTS& counts, int64_t& total);

}  // namespace tmrdar::MOD_COMMON_DATABASE
