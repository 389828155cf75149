// Writes the sample job: the motion and force files of a steel catenary riser
// in 200 m of water, hung off 10 m below the surface and resting on a gently
// falling seabed, with 100 output steps over one period of a regular wave.
#include <cmath>
#include <cstdio>
#include <exception>
#include <string>

#include "builder/job.h"

namespace {

using tmrdar::builder::JOB;
using tmrdar::builder::MODEL;

constexpr int32_t ELEMENTS = 60;
constexpr double WATER_DEPTH = 200.0;
constexpr double HANG_OFF_DEPTH = 10.0;
constexpr double CATENARY_PARAMETER = 100.0;  // horizontal tension over weight a length, m
constexpr float OUTER_DIAMETER = 0.3556F;     // 14 inch pipe

// The riser hangs as a catenary from the hang-off (node 1) down to the
// touchdown point (the last node), the nodes evenly spaced along its length.
// x runs horizontally away from the vessel, z up from the still water level.
void ADD_RISER(MODEL& model) {
  const double a = CATENARY_PARAMETER;
  const double height = WATER_DEPTH - HANG_OFF_DEPTH;
  const double span = a * std::acosh(1.0 + height / a);  // touchdown to hang-off, horizontally
  const double length = a * std::sinh(span / a);
  for (int32_t n = 1; n <= ELEMENTS + 1; ++n) {
    const double s = length * static_cast<double>(ELEMENTS + 1 - n) / ELEMENTS;  // arc length above touchdown
    const double x = a * std::asinh(s / a);
    const double z = std::sqrt(a * a + s * s) - a;
    model.NODES.push_back({.FILE_NUMBER = n,
                           .X = static_cast<float>(span - x),
                           .Z = static_cast<float>(z - WATER_DEPTH),
                           .USER_NUMBER = n,
                           .BOUNDARY_SLOT = n == 1 ? 1 : n == ELEMENTS + 1 ? 2 : 0});
  }
  for (int32_t e = 1; e <= ELEMENTS; ++e) {
    const auto& top = model.NODES[static_cast<std::size_t>(e - 1)];
    const auto& bottom = model.NODES[static_cast<std::size_t>(e)];
    const float dx = bottom.X - top.X;
    const float dz = bottom.Z - top.Z;
    // The first words of record B describe the fluid inside.
    model.ELEMENTS.push_back({.FILE_NUMBER = e,
                              .USER_NUMBER = e,
                              .NODES = {e, e + 1},
                              .LENGTH = std::sqrt(dx * dx + dz * dz),
                              .B1 = 850.0F,
                              .B2 = 5.0e6F,
                              .B3 = 60.0F,
                              .MATERIAL_1 = 1,
                              .MATERIAL_2 = e <= 40 ? 1 : 2,  // a section of its own in the touchdown zone
                              .MATERIAL_3 = OUTER_DIAMETER,
                              .MATERIAL_4 = 1});
    model.CONTACT_DIAMETERS.push_back(OUTER_DIAMETER);
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: tmrdar_sample_job STEM   (writes STEM.dbm and STEM.dbf)\n");
    return 2;
  }
  try {
    JOB job;
    job.MOTION.FIRST.ANALYSIS_DETAIL_2 = 1;
    job.FORCE.FIRST.ANALYSIS_DETAIL_2 = 1;
    job.MOTION.FIRST.FILE_WORDS = {2026, 11, 21, 0, 0};
    job.FORCE.FIRST.FILE_WORDS = {2026, 11, 21, 0, 0};
    job.RUN.ANALYSIS_DETAIL_1 = 2;
    job.RUN.ANALYSIS_DETAIL_3 = 1025.0F;
    job.RUN.ANALYSIS_TITLE.ASSIGN("Sample catenary riser in a regular wave");

    // 100 steps of 0.1 s, one period of the wave; displacements, velocities,
    // reactions and two element sections in the frames.
    job.RUN.NUM_TIME_STEPS = 100;
    job.TIME_STEP = 0.1F;
    job.RUN.START_TIME = job.TIME_STEP;
    job.RUN.HDR_4_2 = 10.0F;
    for (const std::size_t flag : {1, 2, 4, 5, 6}) job.RUN.OUTPUT_FLAGS[flag - 1] = 1;

    MODEL& model = job.MODEL;
    ADD_RISER(model);
    // A profile of the seabed along the riser's plane: distance, height.
    job.SEABED_CODE = 3;
    model.SEABED.POINTS = {{-200.0F, -200.0F}, {0.0F, -200.0F}, {300.0F, -201.5F}, {600.0F, -204.0F}};
    // A 2 m regular wave of 10 s with two small harmonics riding on it.
    model.WAVE_HARMONICS = {{1.0F, 10.0F, 0.0F, 180.0F, 0.0403F},
                            {0.15F, 5.0F, 0.5F, 180.0F, 0.0242F},
                            {0.05F, 3.3F, 1.2F, 180.0F, 0.0178F}};
    model.ELEMENT_SETS = {{"Riser", {}}, {"Touchdown zone", {}}};
    for (int32_t e = 1; e <= ELEMENTS; ++e) {
      model.ELEMENT_SETS[0].MEMBERS.push_back(e);
      if (e > 40) model.ELEMENT_SETS[1].MEMBERS.push_back(e);
    }
    // A node label (kind 1) and one at the lower end of an element (kind 2).
    model.LABELS = {{"Hang-off", 1, 1}, {"Touchdown", ELEMENTS, 2}};
    model.BOUNDARY_CONDITIONS = {1, ELEMENTS + 1};  // the hang-off and the anchor at touchdown
    model.CURRENT_PROFILE = {{0.0F, 0.8F, 90.0F}, {-50.0F, 0.5F, 90.0F}, {-200.0F, 0.1F, 90.0F}};
    job.WRITE(argv[1]);
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "tmrdar_sample_job: %s\n", failure.what());
    return 1;
  }
  return 0;
}
