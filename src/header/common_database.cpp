#include "header/common_database.h"

#include <algorithm>
#include <new>

namespace tmrdar::MOD_COMMON_DATABASE {

void INIT_BLOCK_ADDRESSES(T_BLOCK_ADDRESSES& blocks, int32_t count, int32_t& status) {
  status = 0;
  blocks.NUM_BLOCKS = count;
  try {
    blocks.ADDRESSES.assign(static_cast<std::size_t>(std::max(count, 0)), 0);
  } catch (const std::bad_alloc&) {
    status = 1;
    CLEAN_BLOCK_ADDRESSES(blocks);
  }
}

void CLEAN_BLOCK_ADDRESSES(T_BLOCK_ADDRESSES& blocks) {
  blocks.NUM_BLOCKS = 0;
  blocks.ADDRESSES.clear();
  blocks.ADDRESSES.shrink_to_fit();
}

void GET_BLOCK_ADDRESSES(T_BLOCK_ADDRESSES& blocks, int32_t& next, std::span<const int32_t> values) {
  if (next < 1 || next > blocks.NUM_BLOCKS || values.empty()) return;
  const auto last = static_cast<int32_t>(std::min<std::size_t>(blocks.ADDRESSES.size(),
                                                               static_cast<std::size_t>(blocks.NUM_BLOCKS)));
  for (const int32_t value : values) {
    if (next > last) break;
    blocks.ADDRESSES[static_cast<std::size_t>(next - 1)] = value;
    ++next;
  }
}

int64_t BLOCK_RECORDS(int32_t k, const BLOCK_COUNTS& c) {
  const int64_t elements = c.NUM_ELEMENTS;
  const int64_t nodes = c.NUM_NODES;
  switch (k) {
    case 15: return 3;  // the title
    case 16: return 3 * elements;
    case 17: return elements;
    case 18: return c.NUM_NONLINEAR_E_TABLES;
    case 19: return nodes;
    case 20: return 2 * int64_t{c.NUM_AUX_ELEMENTS};
    case 21: return c.NUM_AUX_NODES;
    case 22: return P8(2 * int64_t{c.NUM_SEABED_POINTS});
    case 23: return c.NUM_WAVE_HARMONICS;
    case 24: return c.NUM_DSP_WAVE_HARMONICS;
    case 25: return P8(elements);
    case 26: return (elements + 9) * c.NUM_ELEMENT_SETS;
    case 27: return (nodes + 9) * c.NUM_NODE_SETS;
    case 28: return 9 * int64_t{c.NUM_LABELS};
    case 29: return c.NUM_POINT_MASSES == 0 ? 0 : P8(c.NUM_POINT_MASSES);
    case 30: return c.NUM_POINT_LOADS;
    case 31: return c.NUM_BOUNDARY_CONDITIONS == 0 ? 0 : P8(c.NUM_BOUNDARY_CONDITIONS);
    case 32: return c.NUM_CURRENT_POINTS;
    case 33: return int64_t{c.PIP_NODES_PER_PAIR} * c.NUM_PIPE_IN_PIPE;
    case 34: return 11 * int64_t{c.NUM_GUIDE_SURFACES};
    case 35: return c.NUM_PANELS;
    case 36: return c.NUM_ZERO_GAP_GUIDES;
    case 37: return c.NUM_INSTALLATION_CRITERIA == 0 ? 0 : 9 * int64_t{c.NUM_INSTALLATION_CRITERIA} + 1;
    case 38: return 4 * int64_t{c.NUM_FLOATING_BODIES};
    case 39: return 9 * int64_t{c.NUM_VESSELS};
    case 40: return 1;
    case 41: return c.NUM_TARGET_SPECTRUM_INTERVALS > 0 ? P4(int64_t{c.NUM_TARGET_SPECTRUM_INTERVALS} + 1) : 0;
    case 42: return c.NUM_DISTRIBUTED_LOADS;
    case 43: return c.NUM_POINT_BUOYS;
    case 44: return 2 * int64_t{c.NUM_VESSEL_PROFILES};
    case 45: return 2 * int64_t{c.NUM_BODY_PROFILES};
    case 46: return P8(2 * int64_t{c.ELEMENT_VALUE_SETS} * elements);
    case 47: return P8_SINGLE(c.PACKED_BLOCK_COUNT);
    case 48: return 1;
    case 49: return c.NUM_PLASTIC_HARDENING_MODELS;
    case 50: return c.PLASTIC_HARDENING_RECORDS;
    case 51: return P8_SINGLE(c.NUM_DAMPER_ELEMENTS);
    case 52: return c.BINARY_DATA_RECORDS;
    default: return (k >= 2 && k <= 14) ? 1 : 0;  // the run control blocks
  }
}

void SET_BLOCK_ADDRESSES(T_BLOCK_ADDRESSES& blocks, const BLOCK_COUNTS& counts, int64_t& total) {
  const auto b = static_cast<int64_t>(static_cast<double>(blocks.NUM_BLOCKS) * 0.125);
  std::vector<int64_t> entry(NUM_HEADER_BLOCKS + 1, 0);
  for (int32_t k = 1; k <= 15; ++k) entry[k] = b + 2 + k;
  entry[16] = b + 20;
  for (int32_t k = 17; k <= NUM_HEADER_BLOCKS; ++k) entry[k] = entry[k - 1] + BLOCK_RECORDS(k - 1, counts);
  total = entry[NUM_HEADER_BLOCKS] + BLOCK_RECORDS(NUM_HEADER_BLOCKS, counts);

  for (std::size_t i = 0; i < blocks.ADDRESSES.size(); ++i) {
    const auto k = static_cast<int32_t>(i + 1);
    blocks.ADDRESSES[i] = static_cast<int32_t>(k <= NUM_HEADER_BLOCKS ? entry[k] : total);
  }
}

}  // namespace tmrdar::MOD_COMMON_DATABASE
