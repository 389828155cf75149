#include "builder/format_layout.h"

#include <stdexcept>
#include <string>

namespace tmrdar::builder {

using common_database::BlockCounts;
using common_database::num_header_blocks;

namespace {

constexpr std::array<const FormatLayout*, 6> layouts{&v861_layout, &v841_layout, &v831_layout,
                                                      &v821_layout, &v815_layout, &v811_layout};

// Blocks 46, 47 and 52 of a header that ends with the element block, the
// packed block and the binary items.
bool in_element_packed_items(int32_t k) { return k == 46 || k == 47 || k == 52; }

}  // namespace

const FormatLayout& layout_of(const header::FormatVersion& format) {
  for (const FormatLayout* layout : layouts) {
    if (layout->name == format.name && layout->database_version == format.database_version) return *layout;
  }
  throw std::invalid_argument("the builder writes no format " + std::string(format.name) + " of code " +
                              std::to_string(format.database_version));
}

bool has_block(const FormatLayout& layout, int32_t k) {
  if (k < 2 || k > num_header_blocks) return false;
  if (layout.block_directory) return true;
  if (k <= 14) return layout.run_control_records[static_cast<std::size_t>(k - 2)] >= 0;
  if (k <= layout.last_model_block) return true;  // the title and the model blocks
  return layout.end == HeaderEnd::element_packed_items && in_element_packed_items(k);
}

bool holds_rows(const FormatLayout& layout, int32_t k) {
  if (!has_block(layout, k)) return false;
  if (k == 24) return has_block(layout, 13);
  if (k == 52) return layout.binary_items;
  return true;
}

void hold_run(const FormatLayout& layout, header::HeaderVariables& v) {
  if (!has_block(layout, 2)) {
    v.tail_pair_count_a = 0;
    v.tail_pair_count_b = 0;
    v.num_binary_items = 0;
    v.hdr_2_8 = 0;
  }
  if (!layout.binary_items) v.num_binary_items = 0;
  if (!has_block(layout, 12)) {
    v.num_damper_elements = 0;
    v.output_flags[16] = 0;
  }
  if (!has_block(layout, 13)) {
    v.hdr_13_1 = 0;
    v.num_dsp_wave_harmonics = 0;
    v.hdr_13_3 = 0;
    v.hdr_13_4 = 0;
    v.hdr_13_6 = 0;
    v.aux_element_result_sets = 0;
  }
  if (layout.block_14 == Block14Form::angle) v.hdr_14_7 = 0;
  if (!has_block(layout, 48)) {
    v.shape_function_flag = 0;
    v.num_plastic_hardening_models = 0;
    v.output_flags[17] = 0;
    v.output_flags[18] = 0;
    v.shape_function_order = 0;
  }
}

int64_t spectrum_records(const FormatLayout& layout, int32_t n) {
  if (n <= 0) return 0;
  const double pairs = static_cast<double>(int64_t{n} + 1);
  switch (layout.spectrum) {
    case SpectrumRecordsRule::pairs: return static_cast<int64_t>(pairs * 0.25) + 1;
    case SpectrumRecordsRule::words: return static_cast<int64_t>(pairs * 2.0 * 0.125) + 1;
    case SpectrumRecordsRule::words_and_one: return static_cast<int64_t>(pairs * 2.0 * 0.125) + 2;
  }
  throw std::logic_error("a target spectrum rule without its records");
}

int64_t model_block_records(const FormatLayout& layout, int32_t k, const BlockCounts& counts) {
  switch (k) {
    case 34: return (int64_t{layout.guide_surface_head_records} + 8) * counts.num_guide_surfaces;
    case 41: return spectrum_records(layout, counts.num_target_spectrum_intervals);
    default: break;
  }
  if (layout.end == HeaderEnd::element_packed_items) {
    // The block of three records an element, and the packed block counted
    // in single precision.
    if (k == 46) return 3 * int64_t{counts.num_elements};
    if (k == 47) return common_database::p8_single(counts.packed_block_count);
    if (k == 52) return layout.binary_items ? counts.binary_data_records : 0;
  }
  // Every other model block takes what it takes in a V861 file.
  return common_database::block_records(k, counts);
}

const BlockPlace& HeaderPlan::place(int32_t k) const {
  static constexpr BlockPlace none{};
  return k >= 0 && k <= num_header_blocks ? blocks[static_cast<std::size_t>(k)] : none;
}

HeaderPlan plan_without_directory(const FormatLayout& layout, const BlockCounts& counts) {
  if (layout.block_directory) throw std::logic_error("a format with a directory is placed by its directory");
  HeaderPlan plan;
  const auto place = [&plan](int32_t k, int64_t first, int64_t records) {
    plan.blocks[static_cast<std::size_t>(k)] = {.first = first, .records = records};
  };
  for (int32_t k = 2; k <= 14; ++k) {
    const int32_t r = layout.run_control_records[static_cast<std::size_t>(k - 2)];
    if (r >= 0) place(k, r, 1);
  }
  place(15, layout.title_record, 3);
  int64_t r = layout.element_data_record;
  const auto follow = [&](int32_t k) {
    const int64_t records = model_block_records(layout, k, counts);
    place(k, r, records);
    r += records;
  };
  for (int32_t k = 16; k <= layout.last_model_block; ++k) follow(k);
  if (layout.end == HeaderEnd::element_packed_items) {
    for (const int32_t k : {46, 47, 52}) follow(k);
  }
  plan.end = r;
  return plan;
}

}  // namespace tmrdar::builder
