// The block directory of a database file, and the record-count rules by
// which the blocks of a header are laid out.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace tmrdar::common_database {

// Records taken by a packed list: 8 words a record, or 4 pairs a record.
// The count is widened to a 64-bit real, so a list that fills its last record
// exactly still takes one record more.
constexpr int64_t p8(int64_t n) { return static_cast<int64_t>(static_cast<double>(n) * 0.125) + 1; }
constexpr int64_t p4(int64_t n) { return static_cast<int64_t>(static_cast<double>(n) * 0.25) + 1; }
// The single-precision form of P8, which two blocks of the layout use: the
// count is rounded to a 32-bit real and multiplied in 32-bit arithmetic.
constexpr int64_t p8_single(int64_t n) {
  return static_cast<int64_t>(static_cast<float>(n) * 0.125F) + 1;
}

// The block directory in memory. Entries count from 1; after a header read
// they hold 0-based record numbers, so block k starts at byte 32 * entry + 1.
struct BlockAddresses {
  int32_t num_blocks = 0;
  std::vector<int32_t> addresses;  // addresses[k - 1] is entry k

  // Entry k (from 1). An entry that the directory does not have reads as -1,
  // the invalid address that an entry the file left at 0 becomes.
  int32_t entry(int32_t k) const {
    return k >= 1 && static_cast<std::size_t>(k) <= addresses.size() ? addresses[k - 1] : -1;
  }
};

// Sets the count and a zeroed array of that many entries (none below 1).
// A failed allocation gives a non-zero status and a cleaned directory.
void init_block_addresses(BlockAddresses& blocks, int32_t count, int32_t& status);

// Count 0, array released.
void clean_block_addresses(BlockAddresses& blocks);

// Copies up to `values.size()` values into the entries from `next` on, never
// past entry num_blocks, and advances `next` past the last entry written.
void get_block_addresses(BlockAddresses& blocks, int32_t& next, std::span<const int32_t> values);

// What sizes the blocks of a header: the header's own counts, and the counts
// of the blocks whose size the header does not hold.
struct BlockCounts {
  int32_t num_elements = 0;
  int32_t num_nonlinear_e_tables = 0;
  int32_t num_nodes = 0;
  int32_t num_aux_elements = 0;
  int32_t num_aux_nodes = 0;
  int32_t num_seabed_points = 0;
  int32_t num_wave_harmonics = 0;
  int32_t num_dsp_wave_harmonics = 0;
  int32_t num_element_sets = 0;
  int32_t num_node_sets = 0;
  int32_t num_labels = 0;
  int32_t num_point_masses = 0;
  int32_t num_point_loads = 0;
  int32_t num_boundary_conditions = 0;
  int32_t num_current_points = 0;
  int32_t pip_nodes_per_pair = 0;
  int32_t num_pipe_in_pipe = 0;
  int32_t num_guide_surfaces = 0;
  int32_t num_panels = 0;
  int32_t num_zero_gap_guides = 0;
  int32_t num_installation_criteria = 0;
  int32_t num_floating_bodies = 0;
  int32_t num_vessels = 0;
  int32_t num_target_spectrum_intervals = 0;
  int32_t num_distributed_loads = 0;
  int32_t num_point_buoys = 0;
  int32_t num_vessel_profiles = 0;
  int32_t num_body_profiles = 0;
  int32_t element_value_sets = 0;     // the k of the element value block
  int32_t packed_block_count = 0;     // the count of the packed block
  int32_t num_plastic_hardening_models = 0;
  int32_t plastic_hardening_records = 0;  // sum of the models' point records
  int32_t num_damper_elements = 0;
  int32_t binary_data_records = 0;    // sum of the binary items' records
};

// Highest directory entry of a header.
inline constexpr int32_t num_header_blocks = 52;

// Records that block k (from 2 to num_header_blocks) takes in the layout.
int64_t block_records(int32_t k, const BlockCounts& counts);

// Fills the whole directory from the counts in 1-based record numbers, as a
// writer lays out a file, and returns in `total` the first record behind the
// header. Entries past the last block hold that record as well.
void set_block_addresses(BlockAddresses& blocks, const BlockCounts& counts, int64_t& total);

}  // namespace tmrdar::common_database
