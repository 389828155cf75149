// The run control blocks 2 to 15 of a header: the counts that size every
// table behind them, the layout of the result frames and the title.
#include <initializer_list>
#include <string>

#include "frame/base/error_handling.h"
#include "header/block_location.h"
#include "header/block_reading.h"

namespace tmrdar::header {

int64_t FormatReader::block_position(int32_t k) const {
  int32_t record = -1;
  if (version.blocks == BlockLocation::directory) {
    if (block_addresses != nullptr) record = block_addresses->entry(k);
  } else if (k >= 2 && k <= 15) {
    record = version.run_control[static_cast<std::size_t>(k)];
  } else if (version.blocks == BlockLocation::fixed_layout) {
    if (block_addresses != nullptr && k <= version.last_block) record = block_addresses->entry(k);
  } else {
    const std::string title = block_title(version, k);
    if (!title.empty()) get_header_address(version, title, header_block_counts(), record);
  }
  return 32 * int64_t{record} + 1;
}

common_database::BlockCounts FormatReader::header_block_counts() const {
  common_database::BlockCounts c;
  c.num_elements = num_elements;
  c.num_nonlinear_e_tables = num_nonlinear_e_tables;
  c.num_nodes = num_nodes;
  c.num_aux_elements = num_aux_elements;
  c.num_aux_nodes = num_aux_nodes;
  c.num_seabed_points = num_seabed_points;
  c.num_wave_harmonics = num_wave_harmonics;
  c.num_dsp_wave_harmonics = num_dsp_wave_harmonics;
  c.num_element_sets = num_element_sets;
  c.num_node_sets = num_node_sets;
  c.num_labels = num_labels;
  c.num_point_masses = num_point_masses;
  c.num_point_loads = num_point_loads;
  c.num_boundary_conditions = num_boundary_conditions;
  c.num_current_points = num_current_points;
  c.pip_nodes_per_pair = pip_nodes_per_pair;
  c.num_pipe_in_pipe = num_pipe_in_pipe;
  c.num_guide_surfaces = num_guide_surfaces;
  c.num_panels = num_panels;
  c.num_zero_gap_guides = num_zero_gap_guides;
  c.num_installation_criteria = num_installation_criteria;
  c.num_floating_bodies = num_floating_bodies;
  c.num_vessels = num_vessels;
  c.num_target_spectrum_intervals = num_target_spectrum_intervals;
  c.num_plastic_hardening_models = num_plastic_hardening_models;
  c.num_damper_elements = num_damper_elements;
  return c;
}

void FormatReader::read_run_control_blocks(int32_t& flag) {
  const std::array<int32_t, 8>& i = header_ints;
  const std::array<float, 8>& r = header_reals;
  constexpr Words ints = Words::ints;
  constexpr Words reals = Words::reals;
  int32_t status = 0;
  // A block that cannot be read ends the header; what was stored stays. A
  // block that the format does not have keeps its values at their defaults.
  const auto has = [this](int32_t k) {
    return version.blocks == BlockLocation::directory || version.run_control[static_cast<std::size_t>(k)] != no_record;
  };
  const auto read = [&](int32_t k, std::initializer_list<Run> runs) {
    read_runs(*this, block_position(k), runs, status);
    if (status == 0) return true;
    error_handling::error3(true, error_handling::database_postprocessing, "Unable to read from database header.");
    flag = -1;
    return false;
  };

  if (has(2)) {
    if (!read(2, {{ints, 8}})) return;
    tail_pair_count_a = i[4];
    tail_pair_count_b = i[5];
    num_binary_items = i[6];
    hdr_2_8 = i[7];
  }

  if (!read(3, {{ints, 8}})) return;
  result_start_record = i[0];
  motion_step_records = i[1];
  force_step_records = i[2];
  hdr_3_4 = i[3];
  motion_start_offset = i[4];
  force_start_offset = i[5];
  hdr_3_7 = i[6];
  num_panels = i[7];

  if (!read(4, {{reals, 6}, {ints, 2}})) return;
  start_time = r[0];
  end_time = r[1];
  hdr_4_2 = r[1];
  hdr_4_3 = r[2];
  hdr_4_4 = r[3];
  hdr_4_5 = r[4];
  hdr_4_6 = r[5];
  pip_nodes_per_pair = i[0];
  num_nonlinear_e_tables = i[1];

  if (!read(5, {{reals, 3}, {ints, 5}})) return;
  analysis_detail_3 = r[0];
  external_fluid_default_a = r[1];
  external_fluid_default_b = r[2];
  num_guide_surfaces = i[0];
  num_zero_gap_guides = i[1];
  num_pip_connections = i[2];
  num_pipe_in_pipe = i[3];
  num_clash_pairs = i[4];

  if (!read(6, {{ints, 8}})) return;
  num_elements = i[0];
  num_nodes = i[1];
  nodes_per_element = i[2];
  coords_per_node = i[3];
  dofs_per_node = i[4];
  num_boundary_conditions = i[5];
  num_element_sets = i[6];
  num_node_sets = i[7];

  if (!read(7, {{ints, 2}})) return;
  num_time_steps = i[0];

  if (!read(8, {{ints, 5}, {reals, 1}, {ints, 2}})) return;
  analysis_detail_1 = i[0];
  hdr_8_2 = i[1];
  seabed_profile.set_geometry_and_interpolation(i[2]);
  seabed_geometry = seabed_profile.geometry();
  num_seabed_points = i[3];
  num_wave_harmonics = i[4];
  hdr_8_6 = r[0];
  num_vessels = i[5];
  hdr_8_8 = i[6];

  if (!read(9, {{ints, 8}})) return;
  std::copy(i.begin(), i.end(), output_flags.begin());
  if (!read(10, {{ints, 8}})) return;
  std::copy(i.begin(), i.end(), output_flags.begin() + 8);

  if (!read(11, {{ints, 8}})) return;
  num_aux_nodes = i[0];
  num_aux_elements = i[1];
  num_point_masses = i[2];
  num_point_loads = i[3];
  num_current_points = i[4];
  num_floating_bodies = i[5];
  num_installation_criteria = i[6];
  num_labels = i[7];

  if (has(12)) {
    if (!read(12, {{ints, 2}})) return;
    num_damper_elements = i[0];
    output_flags[16] = i[1];
  }

  if (has(13)) {
    if (!read(13, {{ints, 6}, {reals, 1}, {ints, 1}})) return;
    hdr_13_1 = i[0];
    num_dsp_wave_harmonics = i[1];
    hdr_13_3 = i[2];
    hdr_13_4 = i[3];
    hdr_13_6 = i[5];
    aux_element_result_sets = i[6];
  }

  // Block 14: the seabed angle in word 6, and a word 7, as the format has them.
  switch (version.block_14) {
    case Block14Words::ints_real_int:
      if (!read(14, {{ints, 5}, {reals, 1}, {ints, 1}})) return;
      break;
    case Block14Words::ints_real:
      if (!read(14, {{ints, 5}, {reals, 1}})) return;
      break;
    case Block14Words::ints:
      if (!read(14, {{ints, 8}})) return;
      break;
  }
  num_target_spectrum_intervals = i[0];
  hdr_14_3 = i[2];
  hdr_14_4 = i[3];
  switch (i[4]) {
    case 1: hdr_14_5 = 4; break;
    case 2: hdr_14_5 = 1; break;
    case 3: hdr_14_5 = 2; break;
    default: break;
  }
  if (version.block_14 != Block14Words::ints) seabed_profile.set_direction(r[0]);
  if (version.block_14 == Block14Words::ints_real_int) hdr_14_7 = i[5];
  if (version.block_14 == Block14Words::ints) hdr_14_7 = i[6];

  // The title: three pieces, each at the start of its record.
  const int64_t title = block_position(15);
  header_file.read_char_at(analysis_title.span().subspan(0, 28), title, status);
  header_file.read_char_at(analysis_title.span().subspan(28, 28), title + 32, status);
  header_file.read_char_at(analysis_title.span().subspan(56, 24), title + 64, status);
  if (status != 0) {
    error_handling::error3(true, error_handling::database_postprocessing, "Unable to read from database header.");
    flag = -1;
    return;
  }

  if (num_time_steps < 1) {
    error_handling::error3(true, error_handling::database_postprocessing,
                           "No solution time steps were outputted to the database.");
    flag = -1;
  }
}

}  // namespace tmrdar::header
