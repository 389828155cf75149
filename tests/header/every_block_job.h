// A model with a row in every header block, each value a different small
// number, for the tests that read a whole header.
#pragma once

#include <array>
#include <string>

#include "builder/job.h"
#include "seabed/seabed_profile.h"

namespace tmrdar::header {

// The next integer, real or name of a running count.
struct COUNTER {
  int32_t n = 0;
  int32_t INT() { return ++n; }
  float REAL() { return static_cast<float>(++n) + 0.25F; }
  std::string NAME(const std::string& what) { return what + " " + std::to_string(++n); }
  template <std::size_t N>
  std::array<float, N> REALS() {
    std::array<float, N> values{};
    for (float& value : values) value = REAL();
    return values;
  }
};

// 9 elements, 8 contact diameters a record, and 9 dampers, so that the
// packed lists cross a record; 6 seabed points, leaving word 5 of their
// second record to the slope; every set, label and name field different.
inline builder::JOB EVERY_BLOCK_JOB(const FORMAT_VERSION& format = V861) {
  COUNTER c;
  builder::JOB job(format);
  builder::MODEL& m = job.MODEL;
  for (int k = 0; k < 5; ++k) {
    m.NODES.push_back({c.INT() + 100, c.REAL(), c.REAL(), c.REAL(), c.INT(), k == 0 ? 0 : c.INT()});
  }
  for (int k = 0; k < 9; ++k) {
    const int32_t first = m.NODES[static_cast<std::size_t>(k % 5)].FILE_NUMBER;
    const int32_t second = m.NODES[static_cast<std::size_t>((k + 3) % 5)].FILE_NUMBER;
    m.ELEMENTS.push_back({c.INT(), c.INT(), {first, second}, c.REAL(), c.REAL(), c.REAL(), c.INT(), c.REAL(),
                          c.REAL(), c.REAL(), c.REAL(), c.INT(), c.REAL(), c.REAL(), c.REAL(), c.REAL(), c.INT(),
                          c.INT(), c.REAL(), c.INT()});
    m.CONTACT_DIAMETERS.push_back(c.REAL());
  }
  m.NONLINEAR_E_TABLES = {{c.INT(), c.INT(), c.REAL(), c.REAL()}, {c.INT(), c.INT(), c.REAL(), c.REAL()}};
  m.AUX_ELEMENTS = {{c.INT(), c.INT(), {c.INT(), c.INT()}, c.REAL(), c.REAL(), c.REAL(), c.INT(), c.INT(), c.INT()}};
  m.AUX_NODES = {{c.INT(), c.REAL(), c.REAL(), c.REAL()}, {c.INT(), c.REAL(), c.REAL(), c.REAL()}};
  job.SEABED_CODE = 2;  // a plane slope, whose angle follows the points
  for (int k = 0; k < 6; ++k) m.SEABED.POINTS.push_back({c.REAL(), c.REAL()});
  m.SEABED.SLOPE = c.REAL();
  m.WAVE_HARMONICS = {c.REALS<5>(), c.REALS<5>()};
  m.DSP_WAVE_HARMONICS = {c.REALS<5>(), c.REALS<5>(), c.REALS<5>()};
  m.ELEMENT_SETS = {{std::string(256, 'e'), {c.INT(), c.INT()}}, {c.NAME("empty"), {}}, {c.NAME("one"), {c.INT()}}};
  m.NODE_SETS = {{c.NAME("nodes"), {c.INT(), c.INT(), c.INT()}}};
  m.LABELS = {{c.NAME("label"), c.INT(), 1}, {c.NAME("label"), c.INT(), c.INT()}};
  m.POINT_MASSES = {c.INT(), c.INT()};
  m.POINT_LOADS = {{c.INT(), c.INT(), c.REAL()}, {c.INT(), c.INT(), c.REAL()}};
  m.BOUNDARY_CONDITIONS = {c.INT(), c.INT(), c.INT()};  // room for the slots of 3 of the 4 nodes that have one
  m.CURRENT_PROFILE = {c.REALS<3>(), c.REALS<3>()};
  m.PIPE_IN_PIPE = {{{c.INT(), c.INT()}, {c.INT(), c.INT()}}, {{c.INT(), c.INT()}, {c.INT(), c.INT()}}};
  m.GUIDE_SURFACES = {{c.INT(), c.REALS<2>(), {1, c.INT()}, 1, c.REALS<2>(), c.NAME("guide")},
                      {c.INT(), c.REALS<2>(), {c.INT(), 1}, c.INT(), c.REALS<2>(), c.NAME("guide")}};
  for (int k = 0; k < 2; ++k) {
    m.PANELS.push_back({c.INT(), c.INT(), c.INT(), c.INT(), c.INT(), c.INT(), c.INT()});
    m.ZERO_GAP_GUIDES.push_back({c.INT(), c.REALS<7>()});
    m.INSTALLATION.CRITERIA.push_back({c.INT(), c.REAL(), c.REAL(), c.NAME("criterion")});
    m.FLOATING_BODIES.push_back({c.INT(), c.NAME("body"), c.INT() + 0.1, c.INT()});
  }
  m.INSTALLATION.SETTINGS = {c.INT(), c.INT(), c.INT(), c.INT(), c.INT()};
  m.VESSELS = {{{c.NAME("v"), "", std::string(32, 'x'), c.NAME("w"), "", "", "", c.NAME("z")}}};
  m.STINGER = c.REALS<6>();
  for (int k = 0; k < 5; ++k) m.TARGET_SPECTRUM.push_back(c.REALS<2>());
  job.RUN.SHAPE_FUNCTION_FLAG = 2;  // 1 would build the integration points
  job.RUN.SHAPE_FUNCTION_ORDER = c.INT();
  job.RUN.OUTPUT_FLAGS[17] = 1;
  job.RUN.OUTPUT_FLAGS[18] = 1;
  for (const int32_t points : {3, 0, 5}) {
    builder::PLASTIC_HARDENING_MODEL model{c.INT(), c.INT(), 0, {}};
    for (int p = 0; p < points; ++p) model.POINTS.push_back(c.REALS<2>());
    m.PLASTIC_HARDENING_MODELS.push_back(model);
  }
  for (int k = 0; k < 9; ++k) m.DAMPER_ELEMENTS.push_back(c.INT());
  const std::string seabed_file = "seabed file bytes, 64 of them" + std::string(35, '.');
  m.BINARY_ITEMS = {{c.INT() + 10, c.INT(), std::string(70, 's')},
                    {MOD_SEABED_PROFILE::SEABED_BLOCK_TYPE, c.INT(), seabed_file}};
  return job;
}

}  // namespace tmrdar::header
