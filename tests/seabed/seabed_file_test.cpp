// Reading seabed files: the two forms, the documented examples, and files
// that must be refused with a status and the line of the fault.
#include <gtest/gtest.h>

#include <string>

#include "seabed/library/seabed.h"
#include "support/scratch_dir.h"

namespace tmrdar::seabed {
namespace {

struct LOADED {
  int32_t STATUS = -1, INTERPOLATION = -1, COUNT = -1, TRIANGLES = -1, CELLS = -1;
  std::vector<float> NODES;
  std::vector<double> M;
  std::vector<int32_t> TABLE;
  TRIANGLE_GRID GRID;
  LOAD_REPORT REPORT;
};

LOADED LOAD_2D(const std::string& path) {
  LOADED r;
  r.STATUS = load_seabed_2d(path, r.INTERPOLATION, r.COUNT, r.NODES, r.M, &r.REPORT);
  return r;
}

LOADED LOAD_3D(const std::string& path) {
  LOADED r;
  r.STATUS = load_seabed_3d(path, r.INTERPOLATION, r.COUNT, r.TRIANGLES, r.CELLS, r.NODES, r.TABLE, r.GRID, r.M,
                            &r.REPORT);
  return r;
}

TEST(SeabedFile, ProfileLoadsAsAColumnMajorTableWithItsSpline) {
  testing::SCRATCH_DIR dir;
  const auto path = dir.WRITE("p.seabed", "TMRDAR SEABED 1\r\n# comment\r\n\r\nProfile CUBIC  # any case\r\n"
                                          "0 0\r\n+1.0 1e0\r\n2\t0\r\n");
  EXPECT_EQ(open_seabed_file(path), STATUS_OK);
  const auto r = LOAD_2D(path);
  ASSERT_EQ(r.STATUS, STATUS_OK) << r.REPORT.TEXT;
  EXPECT_EQ(r.INTERPOLATION, PROFILE_CUBIC);
  EXPECT_EQ(r.COUNT, 3);
  EXPECT_EQ(r.NODES, (std::vector<float>{0, 1, 0, 0, 1, 2}));  // heights, then distances
  EXPECT_EQ(r.M, (std::vector<double>{0, -3, 0}));              // 2(1 + 1) M2 = 6(-1 - 1)
}

TEST(SeabedFile, SurfaceLoadsWithItsCodeAndTheCellsOfItsGrid) {
  testing::SCRATCH_DIR dir;
  const auto r = LOAD_3D(dir.WRITE("s.seabed", "TMRDAR SEABED 1\nsurface linear\nnodes\n1 0 0 5\n2 10 0 5\n"
                                               "3 0 10 5\n4 10 10 5\ntriangles\n1 2 4\n1 4 3\n"));
  ASSERT_EQ(r.STATUS, STATUS_OK) << r.REPORT.TEXT;
  EXPECT_EQ(std::make_pair(r.INTERPOLATION, r.TRIANGLES), std::make_pair(SURFACE_LINEAR, 2));
  EXPECT_EQ(r.CELLS, r.GRID.NX * r.GRID.NY);
  EXPECT_GE(r.CELLS, 1);
}

TEST(SeabedFile, DocumentedExamplesLoad) {
  const std::string docs = TMRDAR_DOCS_DIR;
  const auto profile = LOAD_2D(docs + "/examples/channel-profile.seabed");
  EXPECT_EQ(profile.STATUS, STATUS_OK) << profile.REPORT.LINE << ": " << profile.REPORT.TEXT;
  EXPECT_EQ(profile.COUNT, 7);
  const auto surface = LOAD_3D(docs + "/examples/mound-surface.seabed");
  EXPECT_EQ(surface.STATUS, STATUS_OK) << surface.REPORT.LINE << ": " << surface.REPORT.TEXT;
  EXPECT_EQ(surface.TRIANGLES, 8);
  EXPECT_EQ(surface.INTERPOLATION, SURFACE_CUBIC);
}

struct BAD_FILE {
  std::string TEXT;
  int32_t STATUS;
  int32_t LINE;
};

void EXPECT_REFUSED(const BAD_FILE& c, LOADED (*load)(const std::string&)) {
  testing::SCRATCH_DIR dir;
  const auto path = dir.WRITE("bad.seabed", c.TEXT);
  const auto r = load(path);
  EXPECT_EQ(r.STATUS, c.STATUS) << c.TEXT << r.REPORT.TEXT;
  EXPECT_EQ(r.REPORT.LINE, c.LINE) << c.TEXT;
  EXPECT_EQ(r.COUNT, -1) << c.TEXT << "outputs are written only on success";
  EXPECT_EQ(open_seabed_file(path), c.STATUS) << c.TEXT;
}

TEST(SeabedFile, BadProfilesAreRefusedAtTheirLine) {
  const std::string head = "TMRDAR SEABED 1\n";
  const BAD_FILE cases[] = {
      {"", STATUS_NOT_SEABED, 1},
      {"TMRDAR SEABED 2\nprofile linear\n0 0\n1 1\n", STATUS_NOT_SEABED, 1},
      {"\x7f" "ELF\x02\x01", STATUS_NOT_SEABED, 1},
      {head, STATUS_BAD_DATA, 2},                           // nothing described
      {head + "profile linear\n", STATUS_BAD_DATA, 3},      // empty profile
      {head + "profile cubic\n0 -10\n", STATUS_BAD_DATA, 4},  // one node
      {head + "profiles linear\n", STATUS_SYNTAX, 2},
      {head + "profile spline\n", STATUS_SYNTAX, 2},
      {head + "profile linear\n0 1\n1 2 3\n", STATUS_SYNTAX, 4},
      {head + "profile linear\n0 1\n1 2m\n", STATUS_SYNTAX, 4},
      {head + "profile linear\n0 1\n+-1 2\n", STATUS_SYNTAX, 4},
      {head + "profile linear\n0 1\nnan 2\n", STATUS_SYNTAX, 4},
      {head + "profile linear\n0 1\n1 1e39\n", STATUS_SYNTAX, 4},  // beyond 32 bits
      {head + "profile linear\n0 1\n5 2\n4 2\n", STATUS_BAD_DATA, 5},
  };
  for (const auto& c : cases) EXPECT_REFUSED(c, LOAD_2D);
}

TEST(SeabedFile, BadSurfacesAreRefusedAtTheirLine) {
  const std::string head = "TMRDAR SEABED 1\nsurface cubic\n";
  const std::string nodes = head + "nodes\n1 0 0 0\n2 1 0 0\n3 0 1 0\n4 2 2 0\n";  // lines 1-7
  const BAD_FILE cases[] = {
      {nodes + "triangles\n1 2 2\n", STATUS_BAD_DATA, 9},            // repeated node
      {nodes + "triangles\n1 2 5\n", STATUS_BAD_DATA, 9},            // out of range
      {nodes + "triangles\n0 1 2\n", STATUS_BAD_DATA, 9},
      {nodes + "triangles\n1 2 99999999999\n", STATUS_BAD_DATA, 9},
      {nodes + "triangles\n2 3 1\n1 2\n", STATUS_SYNTAX, 10},
      {nodes, STATUS_BAD_DATA, 8},                                   // no triangles line
      {nodes + "triangles\n", STATUS_BAD_DATA, 9},                   // no triangles
      {head + "nodes\n1 0 0 0\n3 1 0 0\n", STATUS_BAD_DATA, 5},      // out of sequence
      {head + "1 0 0 0\n", STATUS_SYNTAX, 3},                        // no nodes line
      {head + "nodes\n1 0 0 0\n2 1 1 0\n3 2 2 0\ntriangles\n1 2 3\n", STATUS_BAD_DATA, 8},  // collinear
      {head + "nodes\n1 0 0 0\n2 0 0 1\n3 2 2 0\ntriangles\n1 2 3\n", STATUS_BAD_DATA, 8},  // coincident
  };
  for (const auto& c : cases) EXPECT_REFUSED(c, LOAD_3D);
}

TEST(SeabedFile, EachLoaderRefusesTheOtherFormAndWhatIsNoFile) {
  testing::SCRATCH_DIR dir;
  const auto profile = dir.WRITE("p.seabed", "TMRDAR SEABED 1\nprofile linear\n0 0\n1 1\n");
  const auto surface = dir.WRITE("s.seabed", "TMRDAR SEABED 1\nsurface linear\nnodes\n1 0 0 0\n2 1 0 0\n"
                                             "3 0 1 0\ntriangles\n1 2 3\n");
  EXPECT_EQ(LOAD_3D(profile).STATUS, STATUS_WRONG_FORM);
  EXPECT_EQ(LOAD_2D(surface).STATUS, STATUS_WRONG_FORM);
  EXPECT_EQ(LOAD_2D(dir.FILE("missing")).STATUS, STATUS_CANNOT_READ);
  EXPECT_EQ(open_seabed_file(dir.PATH().string()), STATUS_CANNOT_READ);  // a directory
}

}  // namespace
}  // namespace tmrdar::seabed
