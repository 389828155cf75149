// The sea floor of a model: each geometry's height, normal, arc length and
// edge distance, the codes and nodes the header sets, and its loading.
#include "seabed/seabed_profile.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <numbers>
#include <string>
#include <tuple>

#include "support/scratch_dir.h"
#include "support/temporary_directory.h"

namespace tmrdar::seabed_profile {
namespace {

constexpr double pi = std::numbers::pi;

void expect_normal(const NormalVector& n, const NormalVector& expected, double tolerance = 1e-12) {
  for (int c = 0; c < 3; ++c) EXPECT_NEAR(n[c], expected[c], tolerance) << "component " << c;
}

// h = 0.5 d - 3 with nodes at 0, 4 and 10: a straight line, given as a cubic.
constexpr const char* slope_profile = "TMRDAR SEABED 1\nprofile cubic\n0 -3\n4 -1\n10 2\n";
constexpr const char* level_profile = "TMRDAR SEABED 1\nprofile linear\n-100 -50\n100 -50\n";
// The plane h = 0.5 x - 0.25 y - 30 over the square 0..10, in two triangles.
constexpr const char* plane_surface =
    "TMRDAR SEABED 1\nsurface cubic\nnodes\n1 0 0 -30\n2 10 0 -25\n3 0 10 -32.5\n4 10 10 -27.5\n"
    "triangles\n1 2 4\n1 4 3\n";

SeabedProfile loaded(const testing::ScratchDir& dir, int32_t code, const char* text) {
  SeabedProfile p;
  p.set_geometry_and_interpolation(code);
  int32_t status = -1;
  std::string why;
  p.load_from_file(nullptr, dir.write("floor.seabed", text), &why, status);
  EXPECT_EQ(status, 0) << why;
  return p;
}

TEST(SeabedProfile, FlatSlopeAndCodes) {
  SeabedProfile p;
  p.set_geometry_and_interpolation(geometry_flat);
  double h = -1.0;
  NormalVector n{7.0, 8.0, 9.0};
  int32_t hint = 42;
  p.height(-1e6, 37.5, h, &n, &hint);
  EXPECT_EQ(std::make_tuple(h, n, hint), std::make_tuple(0.0, NormalVector{1.0, 0.0, 0.0}, 1));
  EXPECT_EQ(p.horizontal_distance_to_edge(0.0, 0.0, 0.0), -1.0);
  p.set_geometry_and_interpolation(geometry_slope);
  p.set_direction(90.0F);  // the floor rises towards +y
  p.set_slope(10.0F);
  p.height(500.0, 20.0, h, &n);
  EXPECT_NEAR(h, 20.0 * std::tan(10.0 * pi / 180.0), 1e-12);
  expect_normal(n, {std::cos(10.0 * pi / 180.0), 0.0, -std::sin(10.0 * pi / 180.0)}, 1e-15);

  // Combined codes 4 to 8 set both fields; below 4 only the geometry, above 8 nothing.
  p.set_interpolation(3);
  const std::tuple<int32_t, int32_t, int32_t, int32_t> codes[] = {
      {2, 2, 3, 2}, {4, 4, 0, 4}, {5, 4, 2, 5}, {6, 4, 3, 6}, {7, 5, 0, 7}, {8, 5, 1, 8}, {9, 5, 1, 8}};
  for (const auto& [code, geometry, interpolation, combined] : codes) {
    p.set_geometry_and_interpolation(code);
    EXPECT_EQ(std::make_tuple(p.geometry(), p.interpolation(), p.geometry_and_interpolation()),
              std::make_tuple(geometry, interpolation, combined)) << code;
  }
  p.set_geometry(4);
  p.set_interpolation(1);
  EXPECT_EQ(p.geometry_and_interpolation(), -1);
}

TEST(SeabedProfile, NodeProfileFromTheHeader) {
  SeabedProfile p;
  p.set_geometry_and_interpolation(3);
  p.set_direction(90.0F);  // distance along +y
  int32_t status = -1;
  const auto set_nodes = [&](const std::vector<float>& nodes) {  // (distance, height) pairs
    p.allocate_nodes(static_cast<int32_t>(nodes.size() / 2), &status);
    for (int32_t i = 1; 2 * i <= static_cast<int32_t>(nodes.size()); ++i) {
      p.set_node(i, 2, nodes[2 * i - 2]), p.set_node(i, 1, nodes[2 * i - 1]);
    }
    return p.any_vertical_slopes();
  };
  ASSERT_FALSE(set_nodes({2, 0, 0, 0, 1, 1}) || status != 0);  // out of order
  p.set_node(4, 1, 5.0F);  // outside the table: ignored
  EXPECT_EQ(p.node(4, 1), 0.0F);
  p.sort();
  EXPECT_EQ(std::make_tuple(p.node(1, 2), p.node(2, 2), p.node(3, 2), p.node(2, 1)), std::tuple(0.F, 1.F, 2.F, 1.F));
  double h = 0.0;
  NormalVector n{};
  p.height(123.0, 0.5, h, &n);
  EXPECT_NEAR(h, 0.5, 1e-13);
  expect_normal(n, {std::sqrt(0.5), 0.0, -std::sqrt(0.5)});
  p.set_interpolation(2);  // the natural spline, fitted when first needed
  p.height(0.0, 0.5, h);
  EXPECT_DOUBLE_EQ(h, 0.6875);
  p.set_node(2, 1, 2.0F);  // a changed node refits it: M = (0, -6, 0)
  p.height(0.0, 0.5, h);
  EXPECT_DOUBLE_EQ(h, 1.375);
  p.set_interpolation(1);  // no profile code: level at 0
  p.height(0.0, 1.0, h, &n);
  EXPECT_EQ(h, 0.0);
  // Vertical slopes are neighbours at one distance, of different heights.
  EXPECT_TRUE(set_nodes({0, 0, 1, 0, 1, 5, 2, 5}));
  EXPECT_FALSE(set_nodes({0, 0, 1, 3, 1, 3, 2, 5}));
  EXPECT_FALSE(set_nodes({0, 0, 1, 0, 2, 5, 1, 7}));
}

TEST(SeabedProfile, ProfileAndSurfaceFilesAnswerHeightNormalArcAndEdge) {
  testing::ScratchDir dir;
  SeabedProfile p = loaded(dir, 4, slope_profile);
  EXPECT_EQ(p.geometry_and_interpolation(), 5);  // the file says cubic
  double h = 0.0;
  NormalVector n{};
  int32_t hint = -50;  // any value will do, and the new one comes back
  p.height(7.0, -3.0, h, &n, &hint);
  EXPECT_NEAR(h, 0.5, 1e-14);
  EXPECT_EQ(hint, 3);
  expect_normal(n, {1.0 / std::sqrt(1.25), -0.5 / std::sqrt(1.25), 0.0});
  EXPECT_NEAR(p.arc_length(0.0, 0.0, 6.0, 8.0), std::sqrt(36.0 * 1.25 + 64.0), 1e-12);
  // The edges are the nodes at 0, 4 and 10; -1 across the profile, before
  // the first, after the last, and with nothing ahead.
  const std::tuple<double, double, double, double> edges[] = {
      {1.0, 0.0, 0.0, 3.0}, {1.0, 5.0, pi / 3.0, 6.0}, {10.0, 0.0, pi, 6.0}, {1.0, 0.0, pi / 2.0, -1.0},
      {-5.0, 0.0, 0.0, -1.0}, {20.0, 0.0, pi, -1.0}, {10.0, 0.0, 0.0, -1.0}};
  for (const auto& [x, y, direction, distance] : edges) {
    EXPECT_NEAR(p.horizontal_distance_to_edge(x, y, direction), distance, 1e-9) << x << ", " << y << ", " << direction;
  }
  for (const int32_t code : {7, 8}) {
    SeabedProfile s = loaded(dir, code, plane_surface);
    s.set_interpolation(code - 7);  // the file said cubic: try both
    const double k = 1.0 / std::sqrt(1.3125);
    int32_t flag = -1;
    hint = 99;
    s.height(7.5, 2.5, h, &n, &hint, &flag);
    EXPECT_NEAR(h, -26.875, 1e-12);
    expect_normal(n, {k, -0.5 * k, 0.25 * k});
    EXPECT_EQ(std::make_pair(flag, hint), std::make_pair(0, 1));
    s.height(-1.0, 5.0, h, &n, &hint, &flag);
    EXPECT_EQ(flag, 1);
    // From (6, 1) up and to the left the diagonal is ahead; from outside, nothing.
    EXPECT_NEAR(s.horizontal_distance_to_edge(2.0, 1.0, 0.0), 8.0, 1e-12);
    EXPECT_NEAR(s.horizontal_distance_to_edge(6.0, 1.0, 0.75 * pi), 5.0 / std::sqrt(2.0), 1e-12);
    EXPECT_EQ(s.horizontal_distance_to_edge(10.0, 1.0, 0.0), -1.0);
  }
}

// A normal of its own reaches arc_length through the type's table.
class ConstantNormal : public SeabedProfile {
 public:
  void normal(double, double, NormalVector& normal) override { normal = NormalVector{0.6, 0.0, -0.8}; }
};

TEST(SeabedProfile, HelperProcedures) {
  PlanPoint x{};
  intersection({0, 0}, {1, 1}, {0, 1}, {1, 2}, x);  // parallel: far away
  EXPECT_EQ(x, (PlanPoint{1e10, 1e10}));
  EXPECT_NEAR(distance_to_line({1, 1}, pi, {4, -5}, {4, 5}), -3.0, 1e-12);  // behind
  // Gradient (0, 4/3): along y the length is 5/3 a metre. A flat floor writes
  // no normal and integrates the slope the last one left.
  EXPECT_NEAR(ConstantNormal().arc_length(0.0, 0.0, 0.0, 3.0), 5.0, 1e-12);
  testing::ScratchDir dir;
  SeabedProfile flat;
  flat.set_geometry(geometry_flat);
  SeabedProfile level = loaded(dir, 4, level_profile);
  SeabedProfile sloped = loaded(dir, 4, slope_profile);
  for (const auto& [last, length] : {std::pair{&level, 10.0}, {&sloped, 10.0 * std::sqrt(1.25)}}) {
    last->arc_length(0.0, 0.0, 1.0, 0.0);
    EXPECT_NEAR(flat.arc_length(0.0, 0.0, 10.0, 0.0), length, 1e-12);
  }
}

TEST(SeabedProfile, FailedLoadsKeepWhatWasLoadedAndDestroyReleases) {
  testing::ScratchDir dir;
  SeabedProfile p = loaded(dir, 4, slope_profile);
  int32_t status = -1;
  int32_t line = -1;
  std::string why;
  p.load_from_file(&line, dir.write("bad.seabed", "TMRDAR SEABED 1\nprofile linear\n0 0\n2 1\n1 1\n"), &why,
                   status);
  EXPECT_EQ(std::make_pair(status, line), std::make_pair(seabed::status_bad_data, 5));
  EXPECT_FALSE(why.empty());
  p.load_from_file(&line, dir.write("s.seabed", plane_surface), &why, status);
  EXPECT_EQ(status, seabed::status_wrong_form);
  double h = 0.0;
  p.height(4.0, 0.0, h);
  EXPECT_NEAR(h, -1.0, 1e-14);
  EXPECT_TRUE(is_tidemar_seabed_file(dir.write("ok.seabed", level_profile)));
  EXPECT_FALSE(is_tidemar_seabed_file(dir.write("no.seabed", "a,b,c\n1,2,3\n")));
  p.set_geometry(geometry_flat);  // other geometries load nothing and clear the status
  p.load_from_file(nullptr, dir.file("missing"), nullptr, status);
  EXPECT_EQ(status, 0);

  SeabedProfile s = loaded(dir, 8, plane_surface);
  s.set_data_block("bytes", 3, 12);
  s.destroy();
  EXPECT_EQ(std::make_tuple(s.num_nodes(), s.data_block().length_string(), s.geometry_and_interpolation()),
            std::make_tuple(0, 0, 8));  // codes stay
  int32_t flag = 0;
  s.height(5.0, 5.0, h, nullptr, nullptr, &flag);
  EXPECT_EQ(flag, 1);
}

TEST(SeabedDataBlock, LoadsThroughAScratchFileThatIsAlwaysRemoved) {
  testing::ScratchDir scratch;
  SeabedProfile p;
  p.set_geometry_and_interpolation(7);
  // Bytes, block type, whether the temporary directory exists, and the status.
  for (const auto& [bytes, type, directory, expected] :
       {std::tuple<const char*, int32_t, bool, int32_t>{plane_surface, 2, true, status_wrong_block_type},
        {plane_surface, seabed_block_type, false, status_open_failed}, {plane_surface, seabed_block_type, true, 0},
        {"not a seabed", seabed_block_type, true, seabed::status_not_seabed}}) {
    testing::TemporaryDirectorySet tmpdir(directory ? scratch.path().string() : scratch.file("none"));
    p.set_data_block(bytes, type, 4);
    int32_t status = -1;
    p.load_from_data_block(nullptr, nullptr, status);
    EXPECT_EQ(status, expected) << bytes;
    EXPECT_TRUE(std::filesystem::is_empty(scratch.path()));
  }
  double h = 0.0;
  p.height(10.0, 10.0, h);  // the failed load kept the surface
  EXPECT_NEAR(h, -27.5, 1e-12);
  EXPECT_EQ(std::make_pair(p.num_triangles(), p.data_block().get_key()), std::make_pair(2, 4));
}

}  // namespace
}  // namespace tmrdar::seabed_profile
