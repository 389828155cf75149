// Making and releasing the tables of a header.
//
// A header's counts come from the file and may be garbage. A table is made
// only when the block that fills it fits in the file by the layout rule, the
// table has no more entries than the file has words, and all the tables made
// so far take no more than twice the file's bytes; anything larger is
// refused as a failed allocation would be, so no count can ask for memory
// out of proportion to the file.
#include <algorithm>

#include "header/block_reading.h"
#include "header/format_reader.h"

namespace tmrdar::header {
namespace {

constexpr std::string_view allocation_failure = "Unable to allocate memory for database header data.";
constexpr int64_t table_bytes_per_file_byte = 2;

// Makes tables while the file can back them; the first refusal or failure
// stops every later one.
class TableMaker {
 public:
  explicit TableMaker(int64_t file_records)
      : records_(file_records), words_(8 * file_records), budget_(table_bytes_per_file_byte * 32 * file_records) {}

  bool ok() const { return ok_; }
  void fail() { ok_ = false; }

  // True when a block of `records` records fits in the file.
  bool fits(int64_t records) {
    if (records > records_) ok_ = false;
    return ok_;
  }

  template <typename T, std::size_t rank>
  void make(Table<T, rank>& table, const std::array<int64_t, rank>& extents, const T& fill = T{}) {
    if (!ok_) return;
    int64_t entries = 1;
    for (const int64_t extent : extents) {
      entries *= std::max<int64_t>(extent, 0);
      if (entries > words_) break;
    }
    const int64_t bytes = entries * static_cast<int64_t>(sizeof(T));
    ok_ = entries <= words_ && bytes <= budget_ - made_ && table.allocate(extents, fill);
    if (ok_) made_ += bytes;
  }

 private:
  int64_t records_;
  int64_t words_;
  int64_t budget_;
  int64_t made_ = 0;
  bool ok_ = true;
};

int64_t times(int64_t count, int64_t records) { return std::max<int64_t>(count, 0) * records; }

}  // namespace

int64_t FormatReader::file_records() const { return (header_file.size() + 31) / 32; }

void FormatReader::allocate_database_header_arrays(int32_t& flag) {
  using common_database::p8;
  HeaderTables& t = tables;
  TableMaker make(file_records());

  if (seabed_geometry != 4 && seabed_geometry != 5 && make.fits(p8(2 * int64_t{num_seabed_points}))) {
    int32_t status = 0;
    seabed_profile.allocate_nodes(num_seabed_points, &status);
    if (status != 0) make.fail();
  }

  // Structure: the end nodes always have room for the two that block 16
  // gives, and the coordinates for the three that block 19 gives.
  const int64_t elements = num_elements;
  if (make.fits(times(elements, 3)) && make.fits(elements)) {
    make.make(t.element_numbers, {elements, 2});
    make.make(t.element_nodes, {elements, std::max(nodes_per_element, 2)});
    for (Table<float>* table : {&t.element_length, &t.element_a6, &t.element_a7, &t.element_b1, &t.element_b2,
                                &t.element_b3, &t.element_b4, &t.element_b6, &t.element_b7, &t.element_b8,
                                &t.element_c1, &t.contact_diameters}) {
      make.make(*table, {elements});
    }
    make.make(t.element_a8, {elements});
    make.make(t.element_b5, {elements});
    make.make(t.element_section_table, {elements, 4});
  }
  if (make.fits(num_nonlinear_e_tables)) make.make(t.nonlinear_e_table, {num_nonlinear_e_tables, 4});
  if (make.fits(num_nodes)) {
    make.make(t.node_numbers, {num_nodes, 2});
    make.make(t.node_coordinates, {std::max(coords_per_node, 3), num_nodes});
  }
  if (make.fits(p8(num_boundary_conditions))) {
    make.make(t.condition_nodes, {num_boundary_conditions});
    make.make(t.boundary_condition_nodes, {num_boundary_conditions});
  }
  if (make.fits(times(num_aux_elements, 2))) {
    make.make(t.aux_element_numbers, {num_aux_elements});
    make.make(t.aux_element_nodes, {2, num_aux_elements});
    for (Table<float>* table : {&t.aux_element_r5, &t.aux_element_r6, &t.aux_element_r7}) {
      make.make(*table, {num_aux_elements});
    }
    make.make(t.aux_element_w8, {num_aux_elements});
    make.make(t.aux_element_w9, {num_aux_elements});
  }
  if (make.fits(num_aux_nodes)) {
    make.make(t.aux_node_numbers, {num_aux_nodes});
    make.make(t.aux_node_coordinates, {num_aux_nodes, 3});
  }

  // Environment.
  if (make.fits(num_wave_harmonics)) make.make(t.wave_harmonics, {num_wave_harmonics, 5});
  if (make.fits(num_dsp_wave_harmonics)) make.make(t.dsp_wave_harmonics, {5, num_dsp_wave_harmonics});
  if (make.fits(num_current_points)) make.make(t.current_profile, {num_current_points, 3});

  // Sets and labels: a set takes at least 9 records, a label 9.
  if (make.fits(times(num_element_sets, 9))) {
    make.make(t.element_set_names, {num_element_sets});
    make.make(t.element_set_counts, {num_element_sets});
    if (make.ok()) t.element_set_members.assign(static_cast<std::size_t>(std::max(num_element_sets, 0)), {});
  }
  if (make.fits(times(num_node_sets, 9))) {
    make.make(t.node_set_names, {num_node_sets});
    make.make(t.node_set_counts, {num_node_sets});
    if (make.ok()) t.node_set_members.assign(static_cast<std::size_t>(std::max(num_node_sets, 0)), {});
  }
  if (make.fits(times(num_labels, 9))) {
    make.make(t.label_names, {num_labels});
    make.make(t.label_targets, {num_labels, 2});
  }
  if (make.fits(p8(num_point_masses))) make.make(t.point_mass_nodes, {num_point_masses});
  if (make.fits(num_point_loads)) make.make(t.point_loads, {3, num_point_loads});

  // Contact and installation.
  if (make.fits(times(pip_nodes_per_pair, std::max(num_pipe_in_pipe, 0)))) {
    make.make(t.pip_data, {pip_nodes_per_pair, 2, num_pipe_in_pipe});
  }
  if (make.fits(times(num_guide_surfaces, version.guide_surface_head_records + 8))) {
    make.make(t.guide_surface_ids, {num_guide_surfaces});
    make.make(t.guide_surface_values, {num_guide_surfaces, 2});
    make.make(t.guide_surface_switches, {num_guide_surfaces, 2});
    make.make(t.guide_surface_flags, {num_guide_surfaces});
    make.make(t.guide_surface_names, {num_guide_surfaces});
    make.make(t.axes_table, {num_guide_surfaces, 2, 3});
    make.make(t.origin_table, {num_guide_surfaces, 3});
  }
  if (make.fits(num_panels)) {
    make.make(t.panel_table, {num_panels, 4});
    make.make(t.panel_values, {num_panels});
  }
  if (make.fits(num_zero_gap_guides)) {
    make.make(t.zero_gap_guide_ids, {num_zero_gap_guides});
    make.make(t.zero_gap_guide_values, {num_zero_gap_guides});
    make.make(t.zgg_direction, {num_zero_gap_guides, 3});
    make.make(t.zgg_origin, {num_zero_gap_guides, 3});
  }
  if (make.fits(times(num_installation_criteria, 9))) {
    make.make(t.installation_criteria_ids, {num_installation_criteria});
    make.make(t.installation_criteria_value_1, {num_installation_criteria});
    make.make(t.installation_criteria_value_2, {num_installation_criteria});
    make.make(t.installation_criteria_names, {num_installation_criteria});
  }
  if (make.fits(times(num_floating_bodies, 4))) {
    make.make(t.floating_body_ids, {num_floating_bodies});
    make.make(t.floating_body_names, {num_floating_bodies});
    make.make(t.floating_body_values, {num_floating_bodies});
    make.make(t.floating_body_codes, {num_floating_bodies});
  }
  if (make.fits(times(num_vessels, 9))) make.make(t.vessel_names, {num_vessels});
  make.make(t.stinger_data, {6});
  if (make.fits(p8(num_damper_elements))) make.make(t.damper_elements, {num_damper_elements});

  // Every step has a frame of at least one record.
  if (make.fits(num_time_steps)) make.make(t.time_list, {num_time_steps});

  if (!make.ok()) header_failure(allocation_failure, flag);
}

void FormatReader::deallocate_database_header_arrays() {
  seabed_profile.destroy();
  // The plastic hardening models release their own arrays first; then every
  // table goes at once, so no table of the last header can outlive it.
  Table<plastic_hardening::PlasticHardening>& models = tables.plastic_hardening_models;
  for (int64_t m = 1; m <= models.extent(); ++m) plastic_hardening::deallocate(models(m));
  tables = HeaderTables{};
}

}  // namespace tmrdar::header
