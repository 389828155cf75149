#include "header/block_location.h"

#include <array>
#include <limits>

#include "core/text/line_scanning.h"

namespace tmrdar::header {
namespace {

using MOD_COMMON_DATABASE::BLOCK_COUNTS;

// The names of the model blocks from Element Data (block 16) on.
constexpr std::array<std::string_view, 31> BLOCK_NAMES{
    "Element Data",      "Material Properties",        "NonLinear E Tables",    "Node Data",
    "Auxiliary Elements", "Auxiliary Nodes",           "Seabed",                "Wave Harmonics",
    "Wave Harmonics for the DSP", "Contact Diameters", "Element Sets",          "Node Sets",
    "Labels",            "Point Masses",               "Point Loads",           "Boundary Conditions",
    "Current Profile",   "Pipe-In-Pipe",               "Guide Surfaces",        "Panel Data",
    "Zero Gap Guides",   "Installation Criteria",      "Floating Body",         "Vessel Data",
    "Stinger Data",      "Target Spectrum",            "Distributed Loads",     "Point Buoys",
    "Vessel Profiles",   "Body Profiles",              "Binary Data"};
constexpr int32_t FIRST_MODEL_BLOCK = 16;

int32_t NARROW(int64_t address) {
  return address >= std::numeric_limits<int32_t>::min() && address <= std::numeric_limits<int32_t>::max()
             ? static_cast<int32_t>(address)
             : -1;
}

}  // namespace

int64_t ELEMENT_DATA_RECORD(const FORMAT_VERSION& version) { return int64_t{version.RUN_CONTROL[15]} + 3; }

std::string BLOCK_TITLE(const FORMAT_VERSION& version, int32_t k) {
  const int32_t last = std::min<int32_t>(version.LAST_BLOCK, FIRST_MODEL_BLOCK + int32_t{BLOCK_NAMES.size()} - 1);
  if (k < FIRST_MODEL_BLOCK || k > last) return {};
  return "Block " + std::to_string(k - version.TITLE_NUMBER_SHIFT) + " - " +
         std::string(BLOCK_NAMES[static_cast<std::size_t>(k - FIRST_MODEL_BLOCK)]) + ".";
}

int64_t FORMAT_BLOCK_RECORDS(const FORMAT_VERSION& version, int32_t k, const BLOCK_COUNTS& counts) {
  switch (k) {
    case 34: return (int64_t{version.GUIDE_SURFACE_HEAD_RECORDS} + 8) * counts.NUM_GUIDE_SURFACES;
    case 41: {
      if (counts.NUM_TARGET_SPECTRUM_INTERVALS <= 0) return 0;
      const int64_t extra = version.SPECTRUM == SPECTRUM_RECORDS::PAIRS_AND_ONE ? 1 : 0;
      return MOD_COMMON_DATABASE::P4(int64_t{counts.NUM_TARGET_SPECTRUM_INTERVALS} + 1) + extra;
    }
    default: break;
  }
  // Without a directory, the two blocks ahead of the binary data are a block
  // of 3 records an element and a packed block, in 32-bit arithmetic.
  if (version.BLOCKS != BLOCK_LOCATION::DIRECTORY) {
    if (k == 46) return 3 * int64_t{counts.NUM_ELEMENTS};
    if (k == 47) return MOD_COMMON_DATABASE::P8_SINGLE(counts.PACKED_BLOCK_COUNT);
  }
  return MOD_COMMON_DATABASE::BLOCK_RECORDS(k, counts);
}

void GET_TIDE3_HEADER_ADDRESS(const FORMAT_VERSION& version, std::string_view title, const BLOCK_COUNTS& counts,
                              int32_t& address) {
  int64_t running = ELEMENT_DATA_RECORD(version);
  for (int32_t k = FIRST_MODEL_BLOCK; k <= version.LAST_BLOCK; ++k) {
    if (STRING_COMPARE(title, BLOCK_TITLE(version, k))) {
      address = NARROW(running);
      return;
    }
    running += FORMAT_BLOCK_RECORDS(version, k, counts);
  }
  address = NARROW(running);
}

void V841_SET_BLOCK_ADDRESSES(const FORMAT_VERSION& version, const BLOCK_COUNTS& counts,
                              MOD_COMMON_DATABASE::T_BLOCK_ADDRESSES& blocks, int64_t* total) {
  blocks.NUM_BLOCKS = NUM_COMPUTED_ADDRESSES;
  blocks.ADDRESSES.assign(NUM_COMPUTED_ADDRESSES, 0);
  std::array<int64_t, NUM_COMPUTED_ADDRESSES + 1> entry{};  // entry[k] for block k
  for (int32_t k = 1; k < FIRST_MODEL_BLOCK; ++k) entry[static_cast<std::size_t>(k)] = k - 1;
  entry[FIRST_MODEL_BLOCK] = 17;
  for (int32_t k = FIRST_MODEL_BLOCK + 1; k <= NUM_COMPUTED_ADDRESSES; ++k) {
    const auto i = static_cast<std::size_t>(k);
    entry[i] = entry[i - 1] + FORMAT_BLOCK_RECORDS(version, k - 1, counts);
  }
  for (int32_t k = 1; k <= NUM_COMPUTED_ADDRESSES; ++k) {
    blocks.ADDRESSES[static_cast<std::size_t>(k - 1)] = NARROW(entry[static_cast<std::size_t>(k)]);
  }
  if (total != nullptr) *total = entry[NUM_COMPUTED_ADDRESSES] + counts.BINARY_DATA_RECORDS;
}

}  // namespace tmrdar::header
