#include "header/common_database.h"

#include <algorithm>
#include <new>

namespace tmrdar::common_database {

void init_block_addresses(BlockAddresses& blocks, int32_t count, int32_t& status) {
  status = 0;
  blocks.num_blocks = count;
  try {
    blocks.addresses.assign(static_cast<std::size_t>(std::max(count, 0)), 0);
  } catch (const std::bad_alloc&) {
    status = 1;
    clean_block_addresses(blocks);
  }
}

void clean_block_addresses(BlockAddresses& blocks) {
  blocks.num_blocks = 0;
  blocks.addresses.clear();
  blocks.addresses.shrink_to_fit();
}

void get_block_addresses(BlockAddresses& blocks, int32_t& next, std::span<const int32_t> values) {
  if (next < 1 || next > blocks.num_blocks || values.empty()) return;
  const auto last = static_cast<int32_t>(std::min<std::size_t>(blocks.addresses.size(),
                                                               static_cast<std::size_t>(blocks.num_blocks)));
  for (const int32_t value : values) {
    if (next > last) break;
    blocks.addresses[static_cast<std::size_t>(next - 1)] = value;
    ++next;
  }
}

int64_t block_records(int32_t k, const BlockCounts& c) {
  const int64_t elements = c.num_elements;
  const int64_t nodes = c.num_nodes;
  switch (k) {
    case 15: return 3;  // the title
    case 16: return 3 * elements;
    case 17: return elements;
    case 18: return c.num_nonlinear_e_tables;
    case 19: return nodes;
    case 20: return 2 * int64_t{c.num_aux_elements};
    case 21: return c.num_aux_nodes;
    case 22: return p8(2 * int64_t{c.num_seabed_points});
    case 23: return c.num_wave_harmonics;
    case 24: return c.num_dsp_wave_harmonics;
    case 25: return p8(elements);
    case 26: return (elements + 9) * c.num_element_sets;
    case 27: return (nodes + 9) * c.num_node_sets;
    case 28: return 9 * int64_t{c.num_labels};
    case 29: return c.num_point_masses == 0 ? 0 : p8(c.num_point_masses);
    case 30: return c.num_point_loads;
    case 31: return c.num_boundary_conditions == 0 ? 0 : p8(c.num_boundary_conditions);
    case 32: return c.num_current_points;
    case 33: return int64_t{c.pip_nodes_per_pair} * c.num_pipe_in_pipe;
    case 34: return 11 * int64_t{c.num_guide_surfaces};
    case 35: return c.num_panels;
    case 36: return c.num_zero_gap_guides;
    case 37: return c.num_installation_criteria == 0 ? 0 : 9 * int64_t{c.num_installation_criteria} + 1;
    case 38: return 4 * int64_t{c.num_floating_bodies};
    case 39: return 9 * int64_t{c.num_vessels};
    case 40: return 1;
    case 41: return c.num_target_spectrum_intervals > 0 ? p4(int64_t{c.num_target_spectrum_intervals} + 1) : 0;
    case 42: return c.num_distributed_loads;
    case 43: return c.num_point_buoys;
    case 44: return 2 * int64_t{c.num_vessel_profiles};
    case 45: return 2 * int64_t{c.num_body_profiles};
    case 46: return p8(2 * int64_t{c.element_value_sets} * elements);
    case 47: return p8_single(c.packed_block_count);
    case 48: return 1;
    case 49: return c.num_plastic_hardening_models;
    case 50: return c.plastic_hardening_records;
    case 51: return p8_single(c.num_damper_elements);
    case 52: return c.binary_data_records;
    default: return (k >= 2 && k <= 14) ? 1 : 0;  // the run control blocks
  }
}

void set_block_addresses(BlockAddresses& blocks, const BlockCounts& counts, int64_t& total) {
  const auto b = static_cast<int64_t>(static_cast<double>(blocks.num_blocks) * 0.125);
  std::vector<int64_t> entry(num_header_blocks + 1, 0);
  for (int32_t k = 1; k <= 15; ++k) entry[k] = b + 2 + k;
  entry[16] = b + 20;
  for (int32_t k = 17; k <= num_header_blocks; ++k) entry[k] = entry[k - 1] + block_records(k - 1, counts);
  total = entry[num_header_blocks] + block_records(num_header_blocks, counts);

  for (std::size_t i = 0; i < blocks.addresses.size(); ++i) {
    const auto k = static_cast<int32_t>(i + 1);
    blocks.addresses[i] = static_cast<int32_t>(k <= num_header_blocks ? entry[k] : total);
  }
}

}  // namespace tmrdar::common_database
