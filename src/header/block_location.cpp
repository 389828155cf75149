#include "header/block_location.h"

#include <array>
#include <limits>

#include "core/text/line_scanning.h"

namespace tmrdar::header {
namespace {

using common_database::BlockCounts;

// The names of the model blocks from Element Data (block 16) on.
constexpr std::array<std::string_view, 31> block_names{
    "Element Data",      "Material Properties",        "NonLinear E Tables",    "Node Data",
    "Auxiliary Elements", "Auxiliary Nodes",           "Seabed",                "Wave Harmonics",
    "Wave Harmonics for the DSP", "Contact Diameters", "Element Sets",          "Node Sets",
    "Labels",            "Point Masses",               "Point Loads",           "Boundary Conditions",
    "Current Profile",   "Pipe-In-Pipe",               "Guide Surfaces",        "Panel Data",
    "Zero Gap Guides",   "Installation Criteria",      "Floating Body",         "Vessel Data",
    "Stinger Data",      "Target Spectrum",            "Distributed Loads",     "Point Buoys",
    "Vessel Profiles",   "Body Profiles",              "Binary Data"};
constexpr int32_t first_model_block = 16;

int32_t narrow(int64_t address) {
  return address >= std::numeric_limits<int32_t>::min() && address <= std::numeric_limits<int32_t>::max()
             ? static_cast<int32_t>(address)
             : -1;
}

}  // namespace

int64_t element_data_record(const FormatVersion& version) { return int64_t{version.run_control[15]} + 3; }

std::string block_title(const FormatVersion& version, int32_t k) {
  const int32_t last = std::min<int32_t>(version.last_block, first_model_block + int32_t{block_names.size()} - 1);
  if (k < first_model_block || k > last) return {};
  return "Block " + std::to_string(k - version.title_number_shift) + " - " +
         std::string(block_names[static_cast<std::size_t>(k - first_model_block)]) + ".";
}

int64_t format_block_records(const FormatVersion& version, int32_t k, const BlockCounts& counts) {
  switch (k) {
    case 34: return (int64_t{version.guide_surface_head_records} + 8) * counts.num_guide_surfaces;
    case 41: {
      if (counts.num_target_spectrum_intervals <= 0) return 0;
      const int64_t extra = version.spectrum == SpectrumRecords::pairs_and_one ? 1 : 0;
      return common_database::p4(int64_t{counts.num_target_spectrum_intervals} + 1) + extra;
    }
    default: break;
  }
  // Without a directory, the two blocks ahead of the binary data are a block
  // of 3 records an element and a packed block, in 32-bit arithmetic.
  if (version.blocks != BlockLocation::directory) {
    if (k == 46) return 3 * int64_t{counts.num_elements};
    if (k == 47) return common_database::p8_single(counts.packed_block_count);
  }
  return common_database::block_records(k, counts);
}

void get_header_address(const FormatVersion& version, std::string_view title, const BlockCounts& counts,
                              int32_t& address) {
  int64_t running = element_data_record(version);
  for (int32_t k = first_model_block; k <= version.last_block; ++k) {
    if (string_compare(title, block_title(version, k))) {
      address = narrow(running);
      return;
    }
    running += format_block_records(version, k, counts);
  }
  address = narrow(running);
}

void v841_set_block_addresses(const FormatVersion& version, const BlockCounts& counts,
                              common_database::BlockAddresses& blocks, int64_t* total) {
  blocks.num_blocks = num_computed_addresses;
  blocks.addresses.assign(num_computed_addresses, 0);
  std::array<int64_t, num_computed_addresses + 1> entry{};  // entry[k] for block k
  for (int32_t k = 1; k < first_model_block; ++k) entry[static_cast<std::size_t>(k)] = k - 1;
  entry[first_model_block] = 17;
  for (int32_t k = first_model_block + 1; k <= num_computed_addresses; ++k) {
    const auto i = static_cast<std::size_t>(k);
    entry[i] = entry[i - 1] + format_block_records(version, k - 1, counts);
  }
  for (int32_t k = 1; k <= num_computed_addresses; ++k) {
    blocks.addresses[static_cast<std::size_t>(k - 1)] = narrow(entry[static_cast<std::size_t>(k)]);
  }
  if (total != nullptr) *total = entry[num_computed_addresses] + counts.binary_data_records;
}

}  // namespace tmrdar::header
