#include "builder/format_layout.h"

#include <stdexcept>
#include <string>

namespace tmrdar::builder {

using MOD_COMMON_DATABASE::BLOCK_COUNTS;
using MOD_COMMON_DATABASE::NUM_HEADER_BLOCKS;

namespace {

constexpr std::array<const FORMAT_LAYOUT*, 6> LAYOUTS{&V861_LAYOUT, &V841_LAYOUT, &V831_LAYOUT,
                                                      &V821_LAYOUT, &V815_LAYOUT, &V811_LAYOUT};

// Blocks 46, 47 and 52 of a header that ends with the element block, the
// packed block and the binary items.
bool IN_ELEMENT_PACKED_ITEMS(int32_t k) { return k == 46 || k == 47 || k == 52; }

}  // namespace

const FORMAT_LAYOUT& LAYOUT_OF(const header::FORMAT_VERSION& format) {
  for (const FORMAT_LAYOUT* layout : LAYOUTS) {
    if (layout->NAME == format.NAME && layout->DATABASE_VERSION == format.DATABASE_VERSION) return *layout;
  }
  throw std::invalid_argument("the builder writes no format " + std::string(format.NAME) + " of code " +
                              std::to_string(format.DATABASE_VERSION));
}

bool HAS_BLOCK(const FORMAT_LAYOUT& layout, int32_t k) {
  if (k < 2 || k > NUM_HEADER_BLOCKS) return false;
  if (layout.BLOCK_DIRECTORY) return true;
  if (k <= 14) return layout.RUN_CONTROL_RECORDS[static_cast<std::size_t>(k - 2)] >= 0;
  if (k <= layout.LAST_MODEL_BLOCK) return true;  // the title and the model blocks
  return layout.END == HEADER_END::ELEMENT_PACKED_ITEMS && IN_ELEMENT_PACKED_ITEMS(k);
}

bool HOLDS_ROWS(const FORMAT_LAYOUT& layout, int32_t k) {
  if (!HAS_BLOCK(layout, k)) return false;
  if (k == 24) return HAS_BLOCK(layout, 13);
  if (k == 52) return layout.BINARY_ITEMS;
  return true;
}

void HOLD_RUN(const FORMAT_LAYOUT& layout, header::HEADER_VARIABLES& v) {
  if (!HAS_BLOCK(layout, 2)) {
    v.TAIL_PAIR_COUNT_A = 0;
    v.TAIL_PAIR_COUNT_B = 0;
    v.NUM_BINARY_ITEMS = 0;
    v.HDR_2_8 = 0;
  }
  if (!layout.BINARY_ITEMS) v.NUM_BINARY_ITEMS = 0;
  if (!HAS_BLOCK(layout, 12)) {
    v.NUM_DAMPER_ELEMENTS = 0;
    v.OUTPUT_FLAGS[16] = 0;
  }
  if (!HAS_BLOCK(layout, 13)) {
    v.HDR_13_1 = 0;
    v.NUM_DSP_WAVE_HARMONICS = 0;
    v.HDR_13_3 = 0;
    v.HDR_13_4 = 0;
    v.HDR_13_6 = 0;
    v.AUX_ELEMENT_RESULT_SETS = 0;
  }
  if (layout.BLOCK_14 == BLOCK_14_FORM::ANGLE) v.HDR_14_7 = 0;
  if (!HAS_BLOCK(layout, 48)) {
    v.SHAPE_FUNCTION_FLAG = 0;
    v.NUM_PLASTIC_HARDENING_MODELS = 0;
    v.OUTPUT_FLAGS[17] = 0;
    v.OUTPUT_FLAGS[18] = 0;
    v.SHAPE_FUNCTION_ORDER = 0;
  }
}

int64_t SPECTRUM_RECORDS(const FORMAT_LAYOUT& layout, int32_t n) {
  if (n <= 0) return 0;
  const double pairs = static_cast<double>(int64_t{n} + 1);
  switch (layout.SPECTRUM) {
    case SPECTRUM_RECORDS_RULE::PAIRS: return static_cast<int64_t>(pairs * 0.25) + 1;
    case SPECTRUM_RECORDS_RULE::WORDS: return static_cast<int64_t>(pairs * 2.0 * 0.125) + 1;
    case SPECTRUM_RECORDS_RULE::WORDS_AND_ONE: return static_cast<int64_t>(pairs * 2.0 * 0.125) + 2;
  }
  throw std::logic_error("a target spectrum rule without its records");
}

int64_t MODEL_BLOCK_RECORDS(const FORMAT_LAYOUT& layout, int32_t k, const BLOCK_COUNTS& counts) {
  switch (k) {
    case 34: return (int64_t{layout.GUIDE_SURFACE_HEAD_RECORDS} + 8) * counts.NUM_GUIDE_SURFACES;
    case 41: return SPECTRUM_RECORDS(layout, counts.NUM_TARGET_SPECTRUM_INTERVALS);
    default: break;
  }
  if (layout.END == HEADER_END::ELEMENT_PACKED_ITEMS) {
    // The block of three records an element, and the packed block counted
    // in single precision.
    if (k == 46) return 3 * int64_t{counts.NUM_ELEMENTS};
    if (k == 47) return MOD_COMMON_DATABASE::P8_SINGLE(counts.PACKED_BLOCK_COUNT);
    if (k == 52) return layout.BINARY_ITEMS ? counts.BINARY_DATA_RECORDS : 0;
  }
  // Every other model block takes what it takes in a V861 file.
  return MOD_COMMON_DATABASE::BLOCK_RECORDS(k, counts);
}

const BLOCK_PLACE& HEADER_PLAN::PLACE(int32_t k) const {
  static constexpr BLOCK_PLACE NONE{};
  return k >= 0 && k <= NUM_HEADER_BLOCKS ? BLOCKS[static_cast<std::size_t>(k)] : NONE;
}

HEADER_PLAN PLAN_WITHOUT_DIRECTORY(const FORMAT_LAYOUT& layout, const BLOCK_COUNTS& counts) {
  if (layout.BLOCK_DIRECTORY) throw std::logic_error("a format with a directory is placed by its directory");
  HEADER_PLAN plan;
  const auto place = [&plan](int32_t k, int64_t first, int64_t records) {
    plan.BLOCKS[static_cast<std::size_t>(k)] = {.FIRST = first, .RECORDS = records};
  };
  for (int32_t k = 2; k <= 14; ++k) {
    const int32_t r = layout.RUN_CONTROL_RECORDS[static_cast<std::size_t>(k - 2)];
    if (r >= 0) place(k, r, 1);
  }
  place(15, layout.TITLE_RECORD, 3);
  int64_t r = layout.ELEMENT_DATA_RECORD;
  const auto follow = [&](int32_t k) {
    const int64_t records = MODEL_BLOCK_RECORDS(layout, k, counts);
    place(k, r, records);
    r += records;
  };
  for (int32_t k = 16; k <= layout.LAST_MODEL_BLOCK; ++k) follow(k);
  if (layout.END == HEADER_END::ELEMENT_PACKED_ITEMS) {
    for (const int32_t k : {46, 47, 52}) follow(k);
  }
  plan.END = r;
  return plan;
}

}  // namespace tmrdar::builder
