// Writes the sample job: the motion and force files of a steel catenary riser
// in 200 m of water, hung off 10 m below the surface through a bend stiffener
// and resting on a gently falling seabed, in 300 elements, with 1000 output
// steps over ten periods of a regular wave.
//
// The frames hold what such a riser does in the wave: the hang-off heaves,
// surges and pitches with the vessel and the motion dies out towards
// touchdown; the effective tension grows with height above touchdown and the
// bending moment peaks at touchdown, both breathing with the wave; the ends
// carry the riser's weight and its horizontal pull, in balance with the
// tension at each end; the bend stiffener moves and turns with the hang-off
// and pushes on the riser square to its axis. Every other word of the frames
// is 0.
//
//   tmrdar_sample_job [--format NAME] STEM
//
// writes STEM.dbm and STEM.dbf in the layout of format NAME (V861, V841,
// V831, V821, V815 or V811; V861 by default). An older format keeps of the
// same riser what it has a place for.
#include <array>
#include <cmath>
#include <cstdio>
#include <exception>
#include <numbers>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "builder/job.h"
#include "header/format_version.h"

namespace {

using tmrdar::builder::FRAME_WORD;
using tmrdar::builder::JOB;
using tmrdar::builder::MODEL;
using tmrdar::builder::SECTION_KIND;

constexpr int32_t ELEMENTS = 300;
constexpr int32_t NODES = ELEMENTS + 1;
constexpr int32_t STEPS = 1000;
constexpr double TIME_STEP = 0.1;             // s; 1000 steps are ten periods of the wave
constexpr double WAVE_PERIOD = 10.0;          // s
constexpr int32_t TOUCHDOWN_ZONE = 200;       // the elements past this one are of a heavier section
constexpr int32_t STIFFENER_ELEMENTS = 7;     // the bend stiffener covers the top elements, about 6 m
constexpr double WATER_DEPTH = 200.0;
constexpr double HANG_OFF_DEPTH = 10.0;
constexpr double CATENARY_PARAMETER = 100.0;  // horizontal tension over weight a length, m
constexpr float OUTER_DIAMETER = 0.3556F;     // 14 inch pipe
constexpr double SUBMERGED_WEIGHT = 1.2;      // kN/m
constexpr double BENDING_STIFFNESS = 6.17e4;  // kN m^2
constexpr double HEAVE = 0.9;                 // amplitudes of the hang-off's motion, m
constexpr double SURGE = 0.6;
constexpr double PITCH = 0.02;                // rad
constexpr double DYNAMIC_TENSION = 35.0;      // kN at the hang-off
constexpr double TOUCHDOWN_SHARE = 0.2;       // of the dynamic tension that reaches touchdown
constexpr double STIFFENER_FORCE = 15.0;      // kN, the stiffener's mean push on the riser
constexpr double STIFFENER_SWING = 10.0;      // kN, and its swing with the wave

// The catenary from touchdown (arc length 0) up to the hang-off.
struct CATENARY {
  double SPAN = 0.0;       // touchdown to hang-off, horizontally
  double LENGTH = 0.0;     // arc length
  double TOP_ANGLE = 0.0;  // of the riser at the hang-off, from the horizontal

  CATENARY() {
    const double a = CATENARY_PARAMETER;
    SPAN = a * std::acosh(1.0 + (WATER_DEPTH - HANG_OFF_DEPTH) / a);
    LENGTH = a * std::sinh(SPAN / a);
    TOP_ANGLE = std::atan(LENGTH / a);
  }
  // Arc length above touchdown of node n, or of a point n - 1 + f along
  // element n at a fraction f.
  static double ARC(double n, double length) { return length * (NODES - n) / ELEMENTS; }
};

// The riser hangs as a catenary from the hang-off (node 1) down to the
// touchdown point (the last node), the nodes evenly spaced along its length.
// x runs horizontally away from the vessel, z up from the still water level.
void ADD_RISER(MODEL& model) {
  const CATENARY riser;
  const double a = CATENARY_PARAMETER;
  for (int32_t n = 1; n <= NODES; ++n) {
    const double s = CATENARY::ARC(n, riser.LENGTH);
    const double x = a * std::asinh(s / a);
    const double z = std::sqrt(a * a + s * s) - a;
    model.NODES.push_back({.FILE_NUMBER = n,
                           .X = static_cast<float>(riser.SPAN - x),
                           .Z = static_cast<float>(z - WATER_DEPTH),
                           .USER_NUMBER = n,
                           .BOUNDARY_SLOT = n == 1 ? 1 : n == NODES ? 2 : 0});
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
                              .MATERIAL_2 = e <= TOUCHDOWN_ZONE ? 1 : 2,
                              .MATERIAL_3 = OUTER_DIAMETER,
                              .MATERIAL_4 = 1});
    model.CONTACT_DIAMETERS.push_back(OUTER_DIAMETER);
  }
}

// The riser's results at time t. Components of a node entry: 1 the
// vertical coordinate, 2 and 3 the horizontal ones, 4 to 6 rotations; of a
// reaction: the force in the same order, then the moments; the guide
// surface's position and its two axes, and its push on the riser, take the
// order of a node's coordinates too. Forces in kN, moments in kN m.
class RISER_RESULTS {
 public:
  explicit RISER_RESULTS(const JOB& job) : job_(job) {
    for (const auto& h : job.MODEL.WAVE_HARMONICS) waves_.push_back(h);
    // A node's share of the hang-off's motion, once for every node.
    for (int32_t n = 1; n <= NODES; ++n) share_.push_back(SHARE(CATENARY::ARC(n, riser_.LENGTH)));
  }

  std::optional<float> operator()(const FRAME_WORD& w) const {
    const double t = job_.STEP_TIME(w.STEP);
    switch (w.SECTION) {
      case SECTION_KIND::DISPLACEMENT: return NODE(w, t, false);
      case SECTION_KIND::VELOCITY: return NODE(w, t, true);
      case SECTION_KIND::GUIDE_SURFACE: return STIFFENER(w, t);
      case SECTION_KIND::REACTION: return REACTION(w, t);
      case SECTION_KIND::GUIDE_SURFACE_REACTION: return STIFFENER_PUSH(w, t);
      case SECTION_KIND::ELEMENT_9:
      case SECTION_KIND::ELEMENT_10: return ELEMENT(w, t);
      case SECTION_KIND::MOTION_STEP_RECORD:
      case SECTION_KIND::FORCE_STEP_RECORD:
        if (w.COMPONENT == tmrdar::builder::STEP_WORD::TIME) return std::nullopt;  // the step time stays
        if (w.COMPONENT == tmrdar::builder::STEP_WORD::SURFACE_ELEVATION) return static_cast<float>(ELEVATION(t));
        return 0.0F;
      default: return 0.0F;
    }
  }

 private:
  static constexpr double OMEGA = 2.0 * std::numbers::pi / WAVE_PERIOD;

  // The share of the hang-off's motion at arc length s above touchdown.
  double SHARE(double s) const { return std::pow(s / riser_.LENGTH, 1.5); }
  // The dynamic tension's share there: a little of it reaches the seabed.
  double TENSION_SHARE(double s) const { return TOUCHDOWN_SHARE + (1.0 - TOUCHDOWN_SHARE) * SHARE(s); }
  // The riser's angle at the hang-off from the horizontal, the vessel's
  // pitch included.
  double TOP_ANGLE(double t) const { return riser_.TOP_ANGLE + PITCH * std::sin(OMEGA * t); }

  // The sea surface at the hang-off, from the wave's harmonics: amplitude,
  // period and phase.
  double ELEVATION(double t) const {
    double eta = 0.0;
    for (const auto& h : waves_) eta += h[0] * std::cos(2.0 * std::numbers::pi * t / h[1] - h[2]);
    return eta;
  }

  std::optional<float> NODE(const FRAME_WORD& w, double t, bool velocity) const {
    if (w.ENTRY > NODES) return 0.0F;
    const auto& node = job_.MODEL.NODES[static_cast<std::size_t>(w.ENTRY - 1)];
    const double f = share_[static_cast<std::size_t>(w.ENTRY - 1)];
    const double c = std::cos(OMEGA * t);
    const double s = std::sin(OMEGA * t);
    double value = 0.0;
    switch (w.COMPONENT) {
      case 1: value = velocity ? -HEAVE * f * OMEGA * s : node.Z + HEAVE * f * c; break;
      case 2: value = velocity ? SURGE * f * OMEGA * c : node.X + SURGE * f * s; break;
      case 5: value = velocity ? PITCH * f * OMEGA * c : PITCH * f * s; break;
      default: break;
    }
    return static_cast<float>(value);
  }

  // The bend stiffener at the hang-off: words 1 to 3 its position, that of
  // the hang-off; 4 to 6 its axis, down along the riser and turning with the
  // pitch; 7 to 9 its second axis, square to the riser's plane.
  std::optional<float> STIFFENER(const FRAME_WORD& w, double t) const {
    if (w.ENTRY != 1) return 0.0F;
    const double angle = TOP_ANGLE(t);
    switch (w.COMPONENT) {
      case 1:
      case 2: return NODE({.SECTION = SECTION_KIND::DISPLACEMENT, .STEP = w.STEP, .ENTRY = 1, .COMPONENT = w.COMPONENT},
                          t, false);
      case 4: return static_cast<float>(-std::sin(angle));
      case 5: return static_cast<float>(std::cos(angle));
      case 9: return 1.0F;
      default: return 0.0F;
    }
  }

  // The stiffener's push on the riser, square to its axis in the riser's
  // plane, growing and easing as the vessel pitches.
  std::optional<float> STIFFENER_PUSH(const FRAME_WORD& w, double t) const {
    if (w.ENTRY != 1) return 0.0F;
    const double angle = TOP_ANGLE(t);
    const double push = STIFFENER_FORCE + STIFFENER_SWING * std::sin(OMEGA * t);
    if (w.COMPONENT == 1) return static_cast<float>(push * std::cos(angle));
    if (w.COMPONENT == 2) return static_cast<float>(push * std::sin(angle));
    return 0.0F;
  }

  // Effective tension (the first element section) and bending moment (the
  // second) at the element's ends and middle, locations 1 to 3 from its
  // upper node.
  std::optional<float> ELEMENT(const FRAME_WORD& w, double t) const {
    if (w.ENTRY > ELEMENTS) return 0.0F;
    const double a = CATENARY_PARAMETER;
    const double s = CATENARY::ARC(static_cast<double>(w.ENTRY) + 0.5 * (w.COMPONENT - 1), riser_.LENGTH);
    if (w.SECTION == SECTION_KIND::ELEMENT_9) {
      return static_cast<float>(SUBMERGED_WEIGHT * std::sqrt(a * a + s * s) +
                                DYNAMIC_TENSION * TENSION_SHARE(s) * std::cos(OMEGA * t));
    }
    const double curvature = a / (a * a + s * s);
    return static_cast<float>(BENDING_STIFFNESS * curvature *
                              (1.0 + 0.1 * (1.0 - s / riser_.LENGTH) * std::sin(OMEGA * t)));
  }

  // The hang-off (boundary condition 1) holds the tension at the top: the
  // weight of the suspended length and the pull towards the vessel; the
  // anchor at touchdown takes the tension that reaches the seabed, all of it
  // horizontal.
  std::optional<float> REACTION(const FRAME_WORD& w, double t) const {
    const double horizontal = SUBMERGED_WEIGHT * CATENARY_PARAMETER;
    const double dynamic = DYNAMIC_TENSION * std::cos(OMEGA * t);
    if (w.ENTRY == 1 && w.COMPONENT == 1) {
      return static_cast<float>(SUBMERGED_WEIGHT * riser_.LENGTH + dynamic * std::sin(riser_.TOP_ANGLE));
    }
    if (w.ENTRY == 1 && w.COMPONENT == 2) return static_cast<float>(-horizontal - dynamic * std::cos(riser_.TOP_ANGLE));
    if (w.ENTRY == 2 && w.COMPONENT == 2) return static_cast<float>(horizontal + TOUCHDOWN_SHARE * dynamic);
    return 0.0F;
  }

  const JOB& job_;
  CATENARY riser_;
  std::vector<double> share_;
  std::vector<std::array<float, 5>> waves_;
};

// The format of a name, or nothing.
const tmrdar::header::FORMAT_VERSION* FORMAT_NAMED(std::string_view name) {
  for (const tmrdar::header::FORMAT_VERSION* format : tmrdar::header::FORMAT_VERSIONS) {
    if (format->NAME == name) return format;
  }
  return nullptr;
}

}  // namespace

int main(int argc, char** argv) {
  const tmrdar::header::FORMAT_VERSION* format = &tmrdar::header::V861;
  const char* stem = nullptr;
  for (int a = 1; a < argc; ++a) {
    const std::string_view argument = argv[a];
    if (argument == "--format" && a + 1 < argc) {
      format = FORMAT_NAMED(argv[++a]);
      if (format == nullptr) {
        std::fprintf(stderr, "tmrdar_sample_job: unknown format %s (V861, V841, V831, V821, V815 or V811)\n", argv[a]);
        return 2;
      }
    } else if (stem == nullptr && !argument.starts_with("--")) {
      stem = argv[a];
    } else {
      stem = nullptr;
      break;
    }
  }
  if (stem == nullptr) {
    std::fprintf(stderr, "usage: tmrdar_sample_job [--format NAME] STEM   (writes STEM.dbm and STEM.dbf)\n");
    return 2;
  }
  try {
    JOB job(*format);
    job.MOTION.FIRST.ANALYSIS_DETAIL_2 = 1;
    job.FORCE.FIRST.ANALYSIS_DETAIL_2 = 1;
    job.MOTION.FIRST.FILE_WORDS = {2026, 11, 21, 0, 0};
    job.FORCE.FIRST.FILE_WORDS = {2026, 11, 21, 0, 0};
    job.RUN.ANALYSIS_DETAIL_1 = 2;
    job.RUN.ANALYSIS_DETAIL_3 = 1025.0F;
    job.RUN.ANALYSIS_TITLE.ASSIGN("Sample catenary riser in a regular wave");

    // Steps of 0.1 s over ten periods of the wave; displacements,
    // velocities, reactions and two element sections in the frames.
    job.RUN.NUM_TIME_STEPS = STEPS;
    job.TIME_STEP = static_cast<float>(TIME_STEP);
    // Each step's time is rounded once from its exact value, as 0.9 and not
    // nine 0.1s added up.
    for (int32_t n = 1; n <= STEPS; ++n) job.STEP_TIMES.push_back(static_cast<float>(n * TIME_STEP));
    job.RUN.START_TIME = job.TIME_STEP;
    job.RUN.HDR_4_2 = static_cast<float>(WAVE_PERIOD);
    for (const std::size_t flag : {1, 2, 4, 5, 6}) job.RUN.OUTPUT_FLAGS[flag - 1] = 1;

    MODEL& model = job.MODEL;
    ADD_RISER(model);
    // A profile of the seabed along the riser's plane: distance, height.
    job.SEABED_CODE = 3;
    model.SEABED.POINTS = {{-200.0F, -200.0F}, {0.0F, -200.0F}, {300.0F, -201.5F}, {600.0F, -204.0F}};
    // A 2 m regular wave of 10 s with two small harmonics riding on it.
    model.WAVE_HARMONICS = {{1.0F, static_cast<float>(WAVE_PERIOD), 0.0F, 180.0F, 0.0403F},
                            {0.15F, 5.0F, 0.5F, 180.0F, 0.0242F},
                            {0.05F, 3.3F, 1.2F, 180.0F, 0.0178F}};
    model.ELEMENT_SETS = {{"Riser", {}}, {"Bend stiffener", {}}, {"Touchdown zone", {}}};
    for (int32_t e = 1; e <= ELEMENTS; ++e) {
      model.ELEMENT_SETS[0].MEMBERS.push_back(e);
      if (e <= STIFFENER_ELEMENTS) model.ELEMENT_SETS[1].MEMBERS.push_back(e);
      if (e > TOUCHDOWN_ZONE) model.ELEMENT_SETS[2].MEMBERS.push_back(e);
    }
    // The riser's end nodes (kind 1 names a node), and the end (kind 3) of
    // the last element under the stiffener.
    model.LABELS = {{"HANG-OFF", 1, 1}, {"TOUCHDOWN", NODES, 1}, {"STIFFENER TIP", STIFFENER_ELEMENTS, 3}};
    model.BOUNDARY_CONDITIONS = {1, NODES};  // the hang-off and the anchor at touchdown
    // The bend stiffener: its length and root diameter, m.
    model.GUIDE_SURFACES = {{.ID = 1, .VALUES = {6.0F, 0.9F}, .FLAG = 1, .NAME = "BEND STIFFENER"}};
    model.CURRENT_PROFILE = {{0.0F, 0.8F, 90.0F}, {-50.0F, 0.5F, 90.0F}, {-200.0F, 0.1F, 90.0F}};
    // The results of every frame, from the model above.
    const RISER_RESULTS results(job);
    job.FRAME_VALUE = [&results](const FRAME_WORD& w) { return results(w); };
    job.WRITE(stem);
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "tmrdar_sample_job: %s\n", failure.what());
    return 1;
  }
  return 0;
}
