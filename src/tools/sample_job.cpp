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
//   tmrdar_sample_job [--format name] stem
//
// writes stem.dbm and stem.dbf in the layout of format name (V861, V841,
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

using tmrdar::builder::FrameWord;
using tmrdar::builder::Job;
using tmrdar::builder::Model;
using tmrdar::builder::SectionKind;

constexpr int32_t elements = 300;
constexpr int32_t nodes = elements + 1;
constexpr int32_t steps = 1000;
constexpr double time_step = 0.1;             // s; 1000 steps are ten periods of the wave
constexpr double wave_period = 10.0;          // s
constexpr int32_t touchdown_zone = 200;       // the elements past this one are of a heavier section
constexpr int32_t stiffener_elements = 7;     // the bend stiffener covers the top elements, about 6 m
constexpr double water_depth = 200.0;
constexpr double hang_off_depth = 10.0;
constexpr double catenary_parameter = 100.0;  // horizontal tension over weight a length, m
constexpr float outer_diameter = 0.3556F;     // 14 inch pipe
constexpr double submerged_weight = 1.2;      // kN/m
constexpr double bending_stiffness = 6.17e4;  // kN m^2
constexpr double heave = 0.9;                 // amplitudes of the hang-off's motion, m
constexpr double surge = 0.6;
constexpr double pitch = 0.02;                // rad
constexpr double dynamic_tension = 35.0;      // kN at the hang-off
constexpr double touchdown_share = 0.2;       // of the dynamic tension that reaches touchdown
constexpr double stiffener_force = 15.0;      // kN, the stiffener's mean push on the riser
constexpr double stiffener_swing = 10.0;      // kN, and its swing with the wave

// The catenary from touchdown (arc length 0) up to the hang-off.
struct Catenary {
  double span = 0.0;       // touchdown to hang-off, horizontally
  double length = 0.0;     // arc length
  double top_angle = 0.0;  // of the riser at the hang-off, from the horizontal

  Catenary() {
    const double a = catenary_parameter;
    span = a * std::acosh(1.0 + (water_depth - hang_off_depth) / a);
    length = a * std::sinh(span / a);
    top_angle = std::atan(length / a);
  }
  // Arc length above touchdown of node n, or of a point n - 1 + f along
  // element n at a fraction f.
  static double arc(double n, double length) { return length * (nodes - n) / elements; }
};

// The riser hangs as a catenary from the hang-off (node 1) down to the
// touchdown point (the last node), the nodes evenly spaced along its length.
// x runs horizontally away from the vessel, z up from the still water level.
void add_riser(Model& model) {
  const Catenary riser;
  const double a = catenary_parameter;
  for (int32_t n = 1; n <= nodes; ++n) {
    const double s = Catenary::arc(n, riser.length);
    const double x = a * std::asinh(s / a);
    const double z = std::sqrt(a * a + s * s) - a;
    model.nodes.push_back({.file_number = n,
                           .x = static_cast<float>(riser.span - x),
                           .z = static_cast<float>(z - water_depth),
                           .user_number = n,
                           .boundary_slot = n == 1 ? 1 : n == nodes ? 2 : 0});
  }
  for (int32_t e = 1; e <= elements; ++e) {
    const auto& top = model.nodes[static_cast<std::size_t>(e - 1)];
    const auto& bottom = model.nodes[static_cast<std::size_t>(e)];
    const float dx = bottom.x - top.x;
    const float dz = bottom.z - top.z;
    // The first words of record B describe the fluid inside.
    model.elements.push_back({.file_number = e,
                              .user_number = e,
                              .nodes = {e, e + 1},
                              .length = std::sqrt(dx * dx + dz * dz),
                              .b1 = 850.0F,
                              .b2 = 5.0e6F,
                              .b3 = 60.0F,
                              .material_1 = 1,
                              .material_2 = e <= touchdown_zone ? 1 : 2,
                              .material_3 = outer_diameter,
                              .material_4 = 1});
    model.contact_diameters.push_back(outer_diameter);
  }
}

// The riser's results at time t. Components of a node entry: 1 the
// vertical coordinate, 2 and 3 the horizontal ones, 4 to 6 rotations; of a
// reaction: the force in the same order, then the moments; the guide
// surface's position and its two axes, and its push on the riser, take the
// order of a node's coordinates too. Forces in kN, moments in kN m.
class RiserResults {
 public:
  explicit RiserResults(const Job& job) : job_(job) {
    for (const auto& h : job.model.wave_harmonics) waves_.push_back(h);
    // A node's share of the hang-off's motion, once for every node.
    for (int32_t n = 1; n <= nodes; ++n) share_.push_back(share(Catenary::arc(n, riser_.length)));
  }

  std::optional<float> operator()(const FrameWord& w) const {
    const double t = job_.step_time(w.step);
    switch (w.section) {
      case SectionKind::displacement: return node(w, t, false);
      case SectionKind::velocity: return node(w, t, true);
      case SectionKind::guide_surface: return stiffener(w, t);
      case SectionKind::reaction: return reaction(w, t);
      case SectionKind::guide_surface_reaction: return stiffener_push(w, t);
      case SectionKind::element_9:
      case SectionKind::element_10: return element(w, t);
      case SectionKind::motion_step_record:
      case SectionKind::force_step_record:
        if (w.component == tmrdar::builder::step_word::time) return std::nullopt;  // the step time stays
        if (w.component == tmrdar::builder::step_word::surface_elevation) return static_cast<float>(elevation(t));
        return 0.0F;
      default: return 0.0F;
    }
  }

 private:
  static constexpr double omega = 2.0 * std::numbers::pi / wave_period;

  // The share of the hang-off's motion at arc length s above touchdown.
  double share(double s) const { return std::pow(s / riser_.length, 1.5); }
  // The dynamic tension's share there: a little of it reaches the seabed.
  double tension_share(double s) const { return touchdown_share + (1.0 - touchdown_share) * share(s); }
  // The riser's angle at the hang-off from the horizontal, the vessel's
  // pitch included.
  double top_angle(double t) const { return riser_.top_angle + pitch * std::sin(omega * t); }

  // The sea surface at the hang-off, from the wave's harmonics: amplitude,
  // period and phase.
  double elevation(double t) const {
    double eta = 0.0;
    for (const auto& h : waves_) eta += h[0] * std::cos(2.0 * std::numbers::pi * t / h[1] - h[2]);
    return eta;
  }

  std::optional<float> node(const FrameWord& w, double t, bool velocity) const {
    if (w.entry > nodes) return 0.0F;
    const auto& node = job_.model.nodes[static_cast<std::size_t>(w.entry - 1)];
    const double f = share_[static_cast<std::size_t>(w.entry - 1)];
    const double c = std::cos(omega * t);
    const double s = std::sin(omega * t);
    double value = 0.0;
    switch (w.component) {
      case 1: value = velocity ? -heave * f * omega * s : node.z + heave * f * c; break;
      case 2: value = velocity ? surge * f * omega * c : node.x + surge * f * s; break;
      case 5: value = velocity ? pitch * f * omega * c : pitch * f * s; break;
      default: break;
    }
    return static_cast<float>(value);
  }

  // The bend stiffener at the hang-off: words 1 to 3 its position, that of
  // the hang-off; 4 to 6 its axis, down along the riser and turning with the
  // pitch; 7 to 9 its second axis, square to the riser's plane.
  std::optional<float> stiffener(const FrameWord& w, double t) const {
    if (w.entry != 1) return 0.0F;
    const double angle = top_angle(t);
    switch (w.component) {
      case 1:
      case 2: return node({.section = SectionKind::displacement, .step = w.step, .entry = 1, .component = w.component},
                          t, false);
      case 4: return static_cast<float>(-std::sin(angle));
      case 5: return static_cast<float>(std::cos(angle));
      case 9: return 1.0F;
      default: return 0.0F;
    }
  }

  // The stiffener's push on the riser, square to its axis in the riser's
  // plane, growing and easing as the vessel pitches.
  std::optional<float> stiffener_push(const FrameWord& w, double t) const {
    if (w.entry != 1) return 0.0F;
    const double angle = top_angle(t);
    const double push = stiffener_force + stiffener_swing * std::sin(omega * t);
    if (w.component == 1) return static_cast<float>(push * std::cos(angle));
    if (w.component == 2) return static_cast<float>(push * std::sin(angle));
    return 0.0F;
  }

  // Effective tension (the first element section) and bending moment (the
  // second) at the element's ends and middle, locations 1 to 3 from its
  // upper node.
  std::optional<float> element(const FrameWord& w, double t) const {
    if (w.entry > elements) return 0.0F;
    const double a = catenary_parameter;
    const double s = Catenary::arc(static_cast<double>(w.entry) + 0.5 * (w.component - 1), riser_.length);
    if (w.section == SectionKind::element_9) {
      return static_cast<float>(submerged_weight * std::sqrt(a * a + s * s) +
                                dynamic_tension * tension_share(s) * std::cos(omega * t));
    }
    const double curvature = a / (a * a + s * s);
    return static_cast<float>(bending_stiffness * curvature *
                              (1.0 + 0.1 * (1.0 - s / riser_.length) * std::sin(omega * t)));
  }

  // The hang-off (boundary condition 1) holds the tension at the top: the
  // weight of the suspended length and the pull towards the vessel; the
  // anchor at touchdown takes the tension that reaches the seabed, all of it
  // horizontal.
  std::optional<float> reaction(const FrameWord& w, double t) const {
    const double horizontal = submerged_weight * catenary_parameter;
    const double dynamic = dynamic_tension * std::cos(omega * t);
    if (w.entry == 1 && w.component == 1) {
      return static_cast<float>(submerged_weight * riser_.length + dynamic * std::sin(riser_.top_angle));
    }
    if (w.entry == 1 && w.component == 2) return static_cast<float>(-horizontal - dynamic * std::cos(riser_.top_angle));
    if (w.entry == 2 && w.component == 2) return static_cast<float>(horizontal + touchdown_share * dynamic);
    return 0.0F;
  }

  const Job& job_;
  Catenary riser_;
  std::vector<double> share_;
  std::vector<std::array<float, 5>> waves_;
};

// The format of a name, or nothing.
const tmrdar::header::FormatVersion* format_named(std::string_view name) {
  for (const tmrdar::header::FormatVersion* format : tmrdar::header::format_versions) {
    if (format->name == name) return format;
  }
  return nullptr;
}

}  // namespace

int main(int argc, char** argv) {
  const tmrdar::header::FormatVersion* format = &tmrdar::header::v861;
  const char* stem = nullptr;
  for (int a = 1; a < argc; ++a) {
    const std::string_view argument = argv[a];
    if (argument == "--format" && a + 1 < argc) {
      format = format_named(argv[++a]);
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
    Job job(*format);
    job.motion.first.analysis_detail_2 = 1;
    job.force.first.analysis_detail_2 = 1;
    job.motion.first.file_words = {2026, 11, 21, 0, 0};
    job.force.first.file_words = {2026, 11, 21, 0, 0};
    job.run.analysis_detail_1 = 2;
    job.run.analysis_detail_3 = 1025.0F;
    job.run.analysis_title.assign("Sample catenary riser in a regular wave");

    // Steps of 0.1 s over ten periods of the wave; displacements,
    // velocities, reactions and two element sections in the frames.
    job.run.num_time_steps = steps;
    job.time_step = static_cast<float>(time_step);
    // Each step's time is rounded once from its exact value, as 0.9 and not
    // nine 0.1s added up.
    for (int32_t n = 1; n <= steps; ++n) job.step_times.push_back(static_cast<float>(n * time_step));
    job.run.start_time = job.time_step;
    job.run.hdr_4_2 = static_cast<float>(wave_period);
    for (const std::size_t flag : {1, 2, 4, 5, 6}) job.run.output_flags[flag - 1] = 1;

    Model& model = job.model;
    add_riser(model);
    // A profile of the seabed along the riser's plane: distance, height.
    job.seabed_code = 3;
    model.seabed.points = {{-200.0F, -200.0F}, {0.0F, -200.0F}, {300.0F, -201.5F}, {600.0F, -204.0F}};
    // A 2 m regular wave of 10 s with two small harmonics riding on it.
    model.wave_harmonics = {{1.0F, static_cast<float>(wave_period), 0.0F, 180.0F, 0.0403F},
                            {0.15F, 5.0F, 0.5F, 180.0F, 0.0242F},
                            {0.05F, 3.3F, 1.2F, 180.0F, 0.0178F}};
    model.element_sets = {{"Riser", {}}, {"Bend stiffener", {}}, {"Touchdown zone", {}}};
    for (int32_t e = 1; e <= elements; ++e) {
      model.element_sets[0].members.push_back(e);
      if (e <= stiffener_elements) model.element_sets[1].members.push_back(e);
      if (e > touchdown_zone) model.element_sets[2].members.push_back(e);
    }
    // The riser's end nodes (kind 1 names a node), and the end (kind 3) of
    // the last element under the stiffener.
    model.labels = {{"HANG-OFF", 1, 1}, {"TOUCHDOWN", nodes, 1}, {"STIFFENER TIP", stiffener_elements, 3}};
    model.boundary_conditions = {1, nodes};  // the hang-off and the anchor at touchdown
    // The bend stiffener: its length and root diameter, m.
    model.guide_surfaces = {{.id = 1, .values = {6.0F, 0.9F}, .flag = 1, .name = "BEND STIFFENER"}};
    model.current_profile = {{0.0F, 0.8F, 90.0F}, {-50.0F, 0.5F, 90.0F}, {-200.0F, 0.1F, 90.0F}};
    // The results of every frame, from the model above.
    const RiserResults results(job);
    job.frame_value = [&results](const FrameWord& w) { return results(w); };
    job.write(stem);
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "tmrdar_sample_job: %s\n", failure.what());
    return 1;
  }
  return 0;
}
