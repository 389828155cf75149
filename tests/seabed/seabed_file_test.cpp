// Reading seabed files: the two forms, the documented examples, and files
// that must be refused with a status and the line of the fault.
#include <gtest/gtest.h>

#include <string>

#include "seabed/library/seabed.h"
#include "support/scratch_dir.h"

namespace tmrdar::seabed {
namespace {

struct LOADED_2D {
  int32_t STATUS = -1;
  int32_t INTERPOLATION = -1;
  int32_t COUNT = -1;
  std::vector<float> NODES;
  std::vector<double> M;
  LOAD_REPORT REPORT;
};

LOADED_2D LOAD_2D(const std::string& path) {
  LOADED_2D r;
  r.STATUS = load_seabed_2d(path, r.INTERPOLATION, r.COUNT, r.NODES, r.M, &r.REPORT);
  return r;
}

struct LOADED_3D {
  int32_t STATUS = -1;
  int32_t INTERPOLATION = -1;
  int32_t COUNT = -1;
  int32_t TRIANGLES = -1;
  int32_t CELLS = -1;
  std::vector<float> NODES;
  std::vector<int32_t> TABLE;
  TRIANGLE_GRID GRID;
  std::vector<double> GRADIENTS;
  LOAD_REPORT REPORT;
};

LOADED_3D LOAD_3D(const std::string& path) {
  LOADED_3D r;
  r.STATUS = load_seabed_3d(path, r.INTERPOLATION, r.COUNT, r.TRIANGLES, r.CELLS, r.NODES, r.TABLE, r.GRID,
                            r.GRADIENTS, &r.REPORT);
  return r;
}

TEST(SeabedFile, ProfileLoadsAsAColumnMajorTableWithItsSpline) {
  testing::SCRATCH_DIR dir;
  const auto path = dir.WRITE("p.seabed",
                              "TMRDAR SEABED 1\r\n"
                              "# comment\r\n"
                              "\r\n"
                              "Profile CUBIC   # keywords in any case\r\n"
                              "0 0\r\n"
                              "+1.0 1e0\r\n"
                              "2\t0\r\n");
  EXPECT_EQ(open_seabed_file(path), STATUS_OK);
  const auto r = LOAD_2D(path);
  ASSERT_EQ(r.STATUS, STATUS_OK) << r.REPORT.TEXT;
  EXPECT_EQ(r.INTERPOLATION, PROFILE_CUBIC);
  EXPECT_EQ(r.COUNT, 3);
  EXPECT_EQ(r.NODES, (std::vector<float>{0, 1, 0, 0, 1, 2}));  // heights, then distances
  // Natural spline through (0,0), (1,1), (2,0): 2(1+1) M2 = 6(-1-1).
  ASSERT_EQ(r.M.size(), 3U);
  EXPECT_DOUBLE_EQ(r.M[0], 0.0);
  EXPECT_DOUBLE_EQ(r.M[1], -3.0);
  EXPECT_DOUBLE_EQ(r.M[2], 0.0);
}

TEST(SeabedFile, SurfaceLoadsWithGridAndGradients) {
  testing::SCRATCH_DIR dir;
  const auto path = dir.WRITE("s.seabed",
                              "TMRDAR SEABED 1\n"
                              "surface linear\n"
                              "nodes\n"
                              "1 0 0 5\n"
                              "2 10 0 5\n"
                              "3 0 10 5\n"
                              "4 10 10 5\n"
                              "triangles\n"
                              "1 2 4\n"
                              "1 4 3\n");
  const auto r = LOAD_3D(path);
  ASSERT_EQ(r.STATUS, STATUS_OK) << r.REPORT.TEXT;
  EXPECT_EQ(r.INTERPOLATION, SURFACE_LINEAR);
  EXPECT_EQ(r.COUNT, 4);
  EXPECT_EQ(r.TRIANGLES, 2);
  EXPECT_EQ(r.NODES, (std::vector<float>{5, 5, 5, 5, 0, 10, 0, 10, 0, 0, 10, 10}));
  EXPECT_EQ(r.TABLE, (std::vector<int32_t>{1, 2, 4, 1, 4, 3}));
  EXPECT_EQ(r.CELLS, r.GRID.NX * r.GRID.NY);
  EXPECT_GE(r.CELLS, 1);
  EXPECT_EQ(r.GRADIENTS, std::vector<double>(8, 0.0));
}

TEST(SeabedFile, DocumentedExamplesLoad) {
  const std::string docs = TMRDAR_DOCS_DIR;
  const auto profile = LOAD_2D(docs + "/examples/channel-profile.seabed");
  EXPECT_EQ(profile.STATUS, STATUS_OK) << profile.REPORT.LINE << ": " << profile.REPORT.TEXT;
  EXPECT_EQ(profile.COUNT, 7);
  const auto surface = LOAD_3D(docs + "/examples/mound-surface.seabed");
  EXPECT_EQ(surface.STATUS, STATUS_OK) << surface.REPORT.LINE << ": " << surface.REPORT.TEXT;
  EXPECT_EQ(surface.COUNT, 9);
  EXPECT_EQ(surface.TRIANGLES, 8);
  EXPECT_EQ(surface.INTERPOLATION, SURFACE_CUBIC);
}

struct BAD_FILE {
  const char* NAME;
  const char* TEXT;
  int32_t STATUS;
  int32_t LINE;
};

constexpr const char* HEAD = "TMRDAR SEABED 1\n";

TEST(SeabedFile, BadProfilesAreRefusedAtTheirLine) {
  const std::string head = HEAD;
  const BAD_FILE cases[] = {
      {"empty file", "", STATUS_NOT_SEABED, 1},
      {"other first line", "TMRDAR SEABED 2\nprofile linear\n0 0\n1 1\n", STATUS_NOT_SEABED, 1},
      {"binary", "\x7f" "ELF\x02\x01", STATUS_NOT_SEABED, 1},
      {"nothing after the first line", HEAD, STATUS_BAD_DATA, 2},
      {"empty profile", "TMRDAR SEABED 1\nprofile linear\n", STATUS_BAD_DATA, 3},
      {"one node", "TMRDAR SEABED 1\nprofile cubic\n0 -10\n", STATUS_BAD_DATA, 4},
      {"unknown form", "TMRDAR SEABED 1\nprofiles linear\n", STATUS_SYNTAX, 2},
      {"unknown interpolation", "TMRDAR SEABED 1\nprofile spline\n", STATUS_SYNTAX, 2},
      {"three words", "TMRDAR SEABED 1\nprofile linear\n0 1\n1 2 3\n", STATUS_SYNTAX, 4},
      {"not a number", "TMRDAR SEABED 1\nprofile linear\n0 1\n1 x\n", STATUS_SYNTAX, 4},
      {"trailing junk", "TMRDAR SEABED 1\nprofile linear\n0 1\n1 2m\n", STATUS_SYNTAX, 4},
      {"nan", "TMRDAR SEABED 1\nprofile linear\n0 1\nnan 2\n", STATUS_SYNTAX, 4},
      {"beyond 32 bits", "TMRDAR SEABED 1\nprofile linear\n0 1\n1 1e39\n", STATUS_SYNTAX, 4},
      {"decreasing", "TMRDAR SEABED 1\nprofile linear\n0 1\n5 2\n4 2\n", STATUS_BAD_DATA, 5},
  };
  testing::SCRATCH_DIR dir;
  for (const auto& c : cases) {
    const auto path = dir.WRITE("bad.seabed", c.TEXT);
    const auto r = LOAD_2D(path);
    EXPECT_EQ(r.STATUS, c.STATUS) << c.NAME;
    EXPECT_EQ(r.REPORT.LINE, c.LINE) << c.NAME;
    EXPECT_FALSE(r.REPORT.TEXT.empty()) << c.NAME;
    EXPECT_EQ(r.COUNT, -1) << c.NAME << ": outputs are written only on success";
    EXPECT_EQ(open_seabed_file(path), c.STATUS) << c.NAME;
  }
}

TEST(SeabedFile, BadSurfacesAreRefusedAtTheirLine) {
  const std::string nodes =
      "TMRDAR SEABED 1\nsurface cubic\nnodes\n1 0 0 0\n2 1 0 0\n3 0 1 0\n4 2 2 0\n";  // lines 1-7
  const std::string cases_text[] = {
      nodes + "triangles\n1 2 2\n",            // repeated node
      nodes + "triangles\n1 2 5\n",            // out of range
      nodes + "triangles\n0 1 2\n",            // node 0
      nodes + "triangles\n1 2 -3\n",           // negative
      nodes + "triangles\n1 2 99999999999\n",  // beyond 32 bits
      nodes + "triangles\n1 3 4\n",            // (0,0), (0,1), (2,2): fine
      nodes + "triangles\n2 3 1\n1 2\n",       // two numbers
      nodes,                                   // no triangles line
      nodes + "triangles\n",                   // no triangles
      "TMRDAR SEABED 1\nsurface cubic\nnodes\n1 0 0 0\n3 1 0 0\n",  // out of sequence
      "TMRDAR SEABED 1\nsurface cubic\n1 0 0 0\n",                  // no nodes line
      "TMRDAR SEABED 1\nsurface cubic\nnodes\n1 0 0 0\n2 1 1 0\n3 2 2 0\ntriangles\n1 2 3\n",  // collinear
      "TMRDAR SEABED 1\nsurface cubic\nnodes\n1 0 0 0\n2 0 0 1\n3 2 2 0\ntriangles\n1 2 3\n",  // coincident
  };
  const int32_t expected_status[] = {STATUS_BAD_DATA, STATUS_BAD_DATA, STATUS_BAD_DATA, STATUS_BAD_DATA,
                                     STATUS_BAD_DATA, STATUS_OK,       STATUS_SYNTAX,   STATUS_BAD_DATA,
                                     STATUS_BAD_DATA, STATUS_BAD_DATA, STATUS_SYNTAX,   STATUS_BAD_DATA,
                                     STATUS_BAD_DATA};
  const int32_t expected_line[] = {9, 9, 9, 9, 9, 0, 10, 8, 9, 5, 3, 8, 8};
  testing::SCRATCH_DIR dir;
  for (std::size_t i = 0; i < std::size(cases_text); ++i) {
    const auto path = dir.WRITE("bad.seabed", cases_text[i]);
    const auto r = LOAD_3D(path);
    EXPECT_EQ(r.STATUS, expected_status[i]) << "case " << i << ": " << r.REPORT.TEXT;
    EXPECT_EQ(r.REPORT.LINE, expected_line[i]) << "case " << i;
    EXPECT_EQ(open_seabed_file(path), expected_status[i]) << "case " << i;
  }
}

TEST(SeabedFile, EachLoaderRefusesTheOtherFormAndMissingFiles) {
  testing::SCRATCH_DIR dir;
  const auto profile = dir.WRITE("p.seabed", std::string(HEAD) + "profile linear\n0 0\n1 1\n");
  const auto surface =
      dir.WRITE("s.seabed", std::string(HEAD) + "surface linear\nnodes\n1 0 0 0\n2 1 0 0\n3 0 1 0\ntriangles\n1 2 3\n");
  EXPECT_EQ(LOAD_3D(profile).STATUS, STATUS_WRONG_FORM);
  EXPECT_EQ(LOAD_2D(surface).STATUS, STATUS_WRONG_FORM);
  EXPECT_EQ(LOAD_2D(dir.FILE("missing.seabed")).STATUS, STATUS_CANNOT_READ);
  EXPECT_EQ(open_seabed_file(dir.FILE("missing.seabed")), STATUS_CANNOT_READ);
  EXPECT_NE(open_seabed_file(dir.PATH().string()), STATUS_OK);  // a directory
  // Without a report the loaders answer just the same.
  int32_t interpolation = 0;
  int32_t count = 0;
  std::vector<float> nodes;
  std::vector<double> m;
  EXPECT_EQ(load_seabed_2d(surface, interpolation, count, nodes, m), STATUS_WRONG_FORM);
}

TEST(SeabedFile, FreeReleasesTheArrays) {
  std::vector<float> nodes(10);
  std::vector<double> m(5);
  std::vector<int32_t> triangles(6);
  TRIANGLE_GRID grid;
  grid.NX = 3;
  grid.FIRST.assign(4, 1);
  std::vector<double> gradients(4);
  free_seabed_2d(nodes, m);
  EXPECT_EQ(nodes.capacity(), 0U);
  EXPECT_EQ(m.capacity(), 0U);
  nodes.resize(3);
  free_seabed_3d(nodes, triangles, grid, gradients);
  EXPECT_TRUE(nodes.empty() && triangles.empty() && gradients.empty() && grid.FIRST.empty());
  EXPECT_EQ(grid.NX, 0);
}

}  // namespace
}  // namespace tmrdar::seabed
