// The tables of a header: made once the run control counts are known, filled
// by the block readers, released by deallocate_database_header_arrays
// or by the next header read. Each table names the block it comes from.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "core/chars/blank_padded.h"
#include "header/number_index.h"
#include "header/table.h"
#include "plastic_hardening/plastic_hardening.h"

namespace tmrdar::header {

inline constexpr std::size_t name_field_width = 256;
inline constexpr std::size_t floating_body_name_width = 32;
using NameField = chars::BlankPadded<name_field_width>;

struct HeaderTables {
  // Element data (block 16): numbers, end nodes (rows of the node table once
  // translated), length and the other words of records A, B and C.
  Table<int32_t, 2> element_numbers;  // (num_elements, 2): file number, user's number
  Table<int32_t, 2> element_nodes;    // (num_elements, nodes_per_element)
  Table<float> element_length;
  Table<float> element_a6;
  Table<float> element_a7;
  Table<int32_t> element_a8;
  Table<float> element_b1;
  Table<float> element_b2;
  Table<float> element_b3;
  Table<float> element_b4;
  Table<int32_t> element_b5;
  Table<float> element_b6;
  Table<float> element_b7;
  Table<float> element_b8;
  Table<float> element_c1;
  // Material properties (block 17): (num_elements, 4).
  Table<float, 2> element_section_table;
  // Nonlinear E tables (block 18): (num_nonlinear_e_tables, 4).
  Table<float, 2> nonlinear_e_table;
  // Node data (block 19).
  Table<int32_t, 2> node_numbers;     // (num_nodes, 2): file number, user's number
  Table<float, 2> node_coordinates;   // (coords_per_node, num_nodes)
  Table<int32_t> condition_nodes;     // (num_boundary_conditions)
  // Auxiliary elements (block 20) and nodes (block 21).
  Table<int32_t> aux_element_numbers;
  Table<int32_t, 2> aux_element_nodes;  // (2, num_aux_elements)
  Table<float> aux_element_r5;
  Table<float> aux_element_r6;
  Table<float> aux_element_r7;
  Table<int32_t> aux_element_w8;
  Table<int32_t> aux_element_w9;
  Table<int32_t> aux_node_numbers;
  Table<float, 2> aux_node_coordinates;  // (num_aux_nodes, 3)

  // Environment (blocks 23 to 25, 32 and 41); the seabed points live in the
  // seabed profile.
  Table<float, 2> wave_harmonics;      // (num_wave_harmonics, 5)
  Table<float, 2> dsp_wave_harmonics;  // (5, num_dsp_wave_harmonics)
  Table<float> contact_diameters;      // (num_elements)
  Table<float, 2> current_profile;     // (num_current_points, 3)
  Table<float, 2> target_spectrum;     // (num_target_spectrum_intervals + 1, 2), made by its reader

  // Sets and labels (blocks 26 to 28). A set's members are kept as a list of
  // the length the file gives it.
  Table<NameField> element_set_names;
  Table<int32_t> element_set_counts;
  std::vector<std::vector<int32_t>> element_set_members;
  Table<NameField> node_set_names;
  Table<int32_t> node_set_counts;
  std::vector<std::vector<int32_t>> node_set_members;
  Table<NameField> label_names;
  Table<int32_t, 2> label_targets;  // (num_labels, 2): number, kind
  // Point masses, point loads, boundary conditions (blocks 29 to 31).
  Table<int32_t> point_mass_nodes;
  Table<float, 2> point_loads;  // (3, num_point_loads)
  Table<int32_t> boundary_condition_nodes;

  // Contact and installation (blocks 33 to 40).
  Table<int32_t, 3> pip_data;  // (pip_nodes_per_pair, 2, num_pipe_in_pipe)
  Table<int32_t> guide_surface_ids;
  Table<float, 2> guide_surface_values;   // (num_guide_surfaces, 2)
  Table<Logical, 2> guide_surface_switches;  // (num_guide_surfaces, 2)
  Table<Logical> guide_surface_flags;
  int32_t guide_surface_flag_count = 0;
  Table<NameField> guide_surface_names;
  Table<int32_t, 2> panel_table;  // (num_panels, 4)
  Table<int32_t> panel_values;
  Table<int32_t> zero_gap_guide_ids;      // word 1 of a zero gap guide
  Table<float> zero_gap_guide_values;     // word 2
  // Where the guides stood at an output step, as the motion frame of that
  // step gives them; the V841 reader's update_guide_coords_axes fills them.
  Table<float, 3> axes_table;     // (num_guide_surfaces, 2, 3): two axes a guide surface
  Table<float, 2> origin_table;   // (num_guide_surfaces, 3)
  Table<float, 2> zgg_direction;  // (num_zero_gap_guides, 3): the first axis of a zero gap guide
  Table<float, 2> zgg_origin;     // (num_zero_gap_guides, 3)
  std::array<int32_t, 5> installation_settings{};  // the first record of block 37
  Table<int32_t> installation_criteria_ids;
  Table<float> installation_criteria_value_1;
  Table<float> installation_criteria_value_2;
  Table<NameField> installation_criteria_names;
  Table<int32_t> floating_body_ids;
  Table<chars::BlankPadded<floating_body_name_width>> floating_body_names;
  Table<double> floating_body_values;
  Table<int32_t> floating_body_codes;
  Table<NameField> vessel_names;
  Table<float> stinger_data;  // 6 values

  // Plastic hardening models (blocks 49 and 50), made by their reader, and
  // the damper elements (block 51).
  Table<plastic_hardening::PlasticHardening> plastic_hardening_models;
  Table<int32_t> damper_elements;

  // The time of each output step, read from the result frames.
  Table<float> time_list;

  // Integration point locations along each element: (10, num_elements),
  // made by the open when the header asks for them.
  Table<double, 2> integration_points;

  // Indexes from a number to the first row that holds it, made once the
  // tables they cover are read.
  NumberIndex node_file_number_index;  // node_numbers(:, 1)
  NumberIndex node_user_number_index;  // node_numbers(:, 2)
  NumberIndex element_user_number_index;  // element_numbers(:, 2)
  NumberIndex aux_node_number_index;
  NumberIndex aux_element_number_index;
  NumberIndex boundary_condition_index;  // boundary_condition_nodes
  // Label names, trimmed and with A to Z in lower case, to their first row.
  std::unordered_map<std::string, int32_t> label_index;

  // What the model queries answer from, made with the indexes: for each
  // element row the lengths of the rows before it summed in single precision
  // in row order, the node rows of its two ends (0 for an end whose file
  // number no node has), and the first pipe-in-pipe pair whose search finds
  // the row (0 for none).
  struct ModelQueryTables {
    Table<float> distance_prefix;     // (num_elements)
    Table<int32_t, 2> end_node_rows;  // (num_elements, 2)
    Table<int32_t> enclosing_pair;    // (num_elements)
  } model_queries;
};

class FormatReader;
// Makes the reader's model_queries from its tables as read; false when the
// memory cannot be had.
bool build_model_query_tables(FormatReader& db);

}  // namespace tmrdar::header
