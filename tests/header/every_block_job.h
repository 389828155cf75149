// A model with a row in every header block, each value a different small
// number, for the tests that read a whole header.
#pragma once

#include <array>
#include <string>

#include "builder/job.h"
#include "seabed/seabed_profile.h"

namespace tmrdar::header {

// The next integer, real or name of a running count.
struct Counter {
  int32_t n = 0;
  int32_t integer() { return ++n; }
  float real() { return static_cast<float>(++n) + 0.25F; }
  std::string name(const std::string& what) { return what + " " + std::to_string(++n); }
  template <std::size_t n>
  std::array<float, n> reals() {
    std::array<float, n> values{};
    for (float& value : values) value = real();
    return values;
  }
};

// 9 elements, 8 contact diameters a record, and 9 dampers, so that the
// packed lists cross a record; 6 seabed points, leaving word 5 of their
// second record to the slope; every set, label and name field different.
inline builder::Job every_block_job(const FormatVersion& format = v861) {
  Counter c;
  builder::Job job(format);
  builder::Model& m = job.model;
  for (int k = 0; k < 5; ++k) {
    m.nodes.push_back({c.integer() + 100, c.real(), c.real(), c.real(), c.integer(), k == 0 ? 0 : c.integer()});
  }
  for (int k = 0; k < 9; ++k) {
    const int32_t first = m.nodes[static_cast<std::size_t>(k % 5)].file_number;
    const int32_t second = m.nodes[static_cast<std::size_t>((k + 3) % 5)].file_number;
    m.elements.push_back({c.integer(), c.integer(), {first, second}, c.real(), c.real(), c.real(), c.integer(), c.real(),
                          c.real(), c.real(), c.real(), c.integer(), c.real(), c.real(), c.real(), c.real(), c.integer(),
                          c.integer(), c.real(), c.integer()});
    m.contact_diameters.push_back(c.real());
  }
  m.nonlinear_e_tables = {{c.integer(), c.integer(), c.real(), c.real()}, {c.integer(), c.integer(), c.real(), c.real()}};
  m.aux_elements = {{c.integer(), c.integer(), {c.integer(), c.integer()}, c.real(), c.real(), c.real(), c.integer(), c.integer(), c.integer()}};
  m.aux_nodes = {{c.integer(), c.real(), c.real(), c.real()}, {c.integer(), c.real(), c.real(), c.real()}};
  job.seabed_code = 2;  // a plane slope, whose angle follows the points
  for (int k = 0; k < 6; ++k) m.seabed.points.push_back({c.real(), c.real()});
  m.seabed.slope = c.real();
  m.wave_harmonics = {c.reals<5>(), c.reals<5>()};
  m.dsp_wave_harmonics = {c.reals<5>(), c.reals<5>(), c.reals<5>()};
  m.element_sets = {{std::string(256, 'e'), {c.integer(), c.integer()}}, {c.name("empty"), {}}, {c.name("one"), {c.integer()}}};
  m.node_sets = {{c.name("nodes"), {c.integer(), c.integer(), c.integer()}}};
  m.labels = {{c.name("label"), c.integer(), 1}, {c.name("label"), c.integer(), c.integer()}};
  m.point_masses = {c.integer(), c.integer()};
  m.point_loads = {{c.integer(), c.integer(), c.real()}, {c.integer(), c.integer(), c.real()}};
  m.boundary_conditions = {c.integer(), c.integer(), c.integer()};  // room for the slots of 3 of the 4 nodes that have one
  m.current_profile = {c.reals<3>(), c.reals<3>()};
  m.pipe_in_pipe = {{{c.integer(), c.integer()}, {c.integer(), c.integer()}}, {{c.integer(), c.integer()}, {c.integer(), c.integer()}}};
  m.guide_surfaces = {{c.integer(), c.reals<2>(), {1, c.integer()}, 1, c.reals<2>(), c.name("guide")},
                      {c.integer(), c.reals<2>(), {c.integer(), 1}, c.integer(), c.reals<2>(), c.name("guide")}};
  for (int k = 0; k < 2; ++k) {
    m.panels.push_back({c.integer(), c.integer(), c.integer(), c.integer(), c.integer(), c.integer(), c.integer()});
    m.zero_gap_guides.push_back({c.integer(), c.reals<7>()});
    m.installation.criteria.push_back({c.integer(), c.real(), c.real(), c.name("criterion")});
    m.floating_bodies.push_back({c.integer(), c.name("body"), c.integer() + 0.1, c.integer()});
  }
  m.installation.settings = {c.integer(), c.integer(), c.integer(), c.integer(), c.integer()};
  m.vessels = {{{c.name("v"), "", std::string(32, 'x'), c.name("w"), "", "", "", c.name("z")}}};
  m.stinger = c.reals<6>();
  for (int k = 0; k < 5; ++k) m.target_spectrum.push_back(c.reals<2>());
  job.run.shape_function_flag = 2;  // 1 would build the integration points
  job.run.shape_function_order = c.integer();
  job.run.output_flags[17] = 1;
  job.run.output_flags[18] = 1;
  for (const int32_t points : {3, 0, 5}) {
    builder::PlasticHardeningModel model{c.integer(), c.integer(), 0, {}};
    for (int p = 0; p < points; ++p) model.points.push_back(c.reals<2>());
    m.plastic_hardening_models.push_back(model);
  }
  for (int k = 0; k < 9; ++k) m.damper_elements.push_back(c.integer());
  const std::string seabed_file = "seabed file bytes, 64 of them" + std::string(35, '.');
  m.binary_items = {{c.integer() + 10, c.integer(), std::string(70, 's')},
                    {seabed_profile::seabed_block_type, c.integer(), seabed_file}};
  return job;
}

}  // namespace tmrdar::header
