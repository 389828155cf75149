// The guide axes routines of the V841 reader: axes and transforms worked by
// hand, and the frame reads against the words that the builder placed in a
// V841 job, every word of which holds a value of its own.
#include "results/guide_axes.h"

#include <bit>
#include <cmath>
#include <numbers>
#include <string>
#include <vector>

#include "results/written_job.h"

namespace tmrdar::results {
namespace {

using builder::SECTION_KIND;
using V = std::array<float, 3>;
constexpr int32_t NO_STEP = -2'000'000'000;  // a frame before the start of the file

V ROW(const MATRIX3<float>& m, int i) { return {m[M3(i, 1)], m[M3(i, 2)], m[M3(i, 3)]}; }

class GuideAxes : public WRITTEN_JOB {
 protected:
  GuideAxes() : WRITTEN_JOB(header::V841) {
    job.RUN.NUM_TIME_STEPS = 2;
    job.RUN.OUTPUT_FLAGS[1] = 1;  // velocities alone: the frame opens with them
    job.MODEL.NODES = {{.FILE_NUMBER = 1}, {.FILE_NUMBER = 2}, {.FILE_NUMBER = 3}};
    job.MODEL.ELEMENTS = {{.FILE_NUMBER = 1, .USER_NUMBER = 100, .NODES = {1, 2}},
                          {.FILE_NUMBER = 2, .USER_NUMBER = 200, .NODES = {2, 3}}};
    job.MODEL.GUIDE_SURFACES.resize(2);
    job.MODEL.ZERO_GAP_GUIDES.resize(2);
    job.MODEL.VESSELS.resize(1);
  }
  bool error = true;
};

TEST_F(GuideAxes, GuidePositionsOfAStepAndThePointInTheirAxes) {
  // Guide surface 1 at step 2: origin (0.5, 0, 0), p = (1, 1, 1), q = (1, -1, 0).
  const std::array<float, 9> words{0.5F, 0, 0, 1, 1, 1, 1, -1, 0};
  for (int32_t k = 1; k <= 9; ++k) job.RESULTS.SET(SECTION_KIND::GUIDE_SURFACE, 2, 1, k, words[k - 1]);
  OPEN();
  UPDATE_GUIDE_COORDS_AXES(db, 2, error);
  ASSERT_FALSE(error);
  const header::HEADER_TABLES& t = db.TABLES;
  for (int32_t i = 1; i <= 2; ++i) {
    for (int32_t k = 1; k <= 3; ++k) {
      EXPECT_EQ(t.ORIGIN_TABLE(i, k), AT(SECTION_KIND::GUIDE_SURFACE, 2, i, k));
      EXPECT_EQ(t.AXES_TABLE(i, 1, k), AT(SECTION_KIND::GUIDE_SURFACE, 2, i, 3 + k));
      EXPECT_EQ(t.AXES_TABLE(i, 2, k), AT(SECTION_KIND::GUIDE_SURFACE, 2, i, 6 + k));
      EXPECT_EQ(t.ZGG_ORIGIN(i, k), AT(SECTION_KIND::ZERO_GAP_GUIDE, 2, i, k));
      EXPECT_EQ(t.ZGG_DIRECTION(i, k), AT(SECTION_KIND::ZERO_GAP_GUIDE, 2, i, 3 + k));
    }
  }
  MATRIX3<float> axes{};
  ASSERT_TRUE(FORM_AXES(db, 1, axes));
  EXPECT_EQ(axes, (MATRIX3<float>{1, 1, 1, 1, -1, 1, 1, 0, -2}));  // rows p, q and w = p x q
  // d = (1, 1e8, -1e8): p.d summed from component 3 is (-1e8 + 1e8) + 1 = 1,
  // from component 1 it would be (1 + 1e8) - 1e8 = 0.
  V point{1.5F, 1e8F, -1e8F};
  ASSERT_TRUE(TRANSFORM(db, 1, point));
  EXPECT_EQ(point, (V{1, -1e8F, 3e8F}));
  EXPECT_FALSE(TRANSFORM(db, 3, point));
  EXPECT_EQ(point, (V{1, -1e8F, 3e8F}));

  UPDATE_GUIDE_COORDS_AXES(db, NO_STEP, error);
  EXPECT_TRUE(error);
}

TEST(ZeroGapGuideAxes, TheTangentFromTheFirstComponentAboveTheThreshold) {
  const float above = std::nextafter(1e-20F, 1.0F);
  const std::vector<std::array<V, 3>> cases{
      // n, t, b = n x t. |n1| > 1e-20: t = (3 / 4, 1, 0) / 1.25.
      {V{-4, 3, 7}, {0.6F, 0.8F, 0}, {0 - 7 * 0.8F, 7 * 0.6F, -5}},
      // 1e-20 is not above it: t = (0, -3 / -4, 1) / 1.25.
      {V{1e-20F, 4, -3}, {0, 0.6F, 0.8F}, {5, -(0.8F * 1e-20F), 0.6F * 1e-20F}},
      {V{above, 4, -3}, {0, 0, 0}, {0, 0, 0}},  // t = (-4e20, 1, 0), its length inf
      {V{0, 1e-20F, 2}, {1, 0, 0}, {0, 2, -1e-20F}},
      {V{0, 0, 1}, {1, 0, 0}, {0, 1, 0}},
      {V{1, 1, 1}, {}, {}},
  };
  header::TIDE3_DATABASE_FILES reader(header::V841);
  header::HEADER_TABLES& t = reader.TABLES;
  ASSERT_TRUE(t.ZGG_DIRECTION.ALLOCATE({7, 3}) && t.ZGG_ORIGIN.ALLOCATE({7, 3}));
  for (int32_t r = 1; r <= 6; ++r) {
    for (int k = 1; k <= 3; ++k) t.ZGG_DIRECTION(r, k) = cases[r - 1][0][k - 1];
  }
  for (int32_t r = 1; r <= 5; ++r) {
    MATRIX3<float> axes{};
    ASSERT_TRUE(FORM_ZGG_AXES(reader, r, axes));
    for (int i = 1; i <= 3; ++i) EXPECT_EQ(ROW(axes, i), cases[r - 1][i - 1]) << r << " " << i;
  }
  MATRIX3<float> axes{};
  ASSERT_TRUE(FORM_ZGG_AXES(reader, 7, axes));  // n = 0: 0 / 0
  EXPECT_TRUE(std::isnan(axes[M3(2, 1)]) && std::isnan(axes[M3(3, 3)]));

  // With n = (0, 0, 1) the point is (d3, d1, d2); with n = (1, 1, 1) and d =
  // (1, 1e8, -1e8), n.d summed from component 1 is (1 + 1e8) - 1e8 = 0.
  t.ZGG_ORIGIN(5, 1) = 1;
  V point{2, 4, 8};
  ASSERT_TRUE(TRANSFORM_ZGG(reader, 5, point));
  EXPECT_EQ(point, (V{8, 1, 4}));
  point = {1, 1e8F, -1e8F};
  ASSERT_TRUE(TRANSFORM_ZGG(reader, 6, point));
  EXPECT_EQ(point[0], 0.0F);
  EXPECT_FALSE(TRANSFORM_ZGG(reader, 8, point));
}

TEST(Eigvec, TurnsAxesAboutTheAxisAsItStands) {
  MATRIX3<double> m{};
  EIGVEC(0.0, std::array<double, 3>{0.6, 0.8, 0}, m);
  EXPECT_EQ(m, (MATRIX3<double>{1, 0, 0, 0, 1, 0, 0, 0, 1}));
  EIGVEC(std::numbers::pi / 2, std::array<double, 3>{0, 0, 2}, m);  // (1, 2) carries +a3 sin
  const double c = std::cos(std::numbers::pi / 2);
  EXPECT_EQ(m, (MATRIX3<double>{c, -2, 0, 2, c, 0, 0, 0, 4}));
}

TEST_F(GuideAxes, NodeMotionAndActiveFlagsFromTheFrame) {
  // The active flag of node row r is word ME - 8 * 1 vessel - 8 * truncate(3
  // nodes / 8) - 16 + r, ME the last word of the step's frame: offset W - 24
  // + r of a frame of W words, the record before the step record.
  const builder::FRAME_LAYOUT layout = job.FRAME_SECTIONS(builder::FILE_KIND::MOTION);
  const int64_t w = builder::FRAME_WORDS(layout);
  ASSERT_EQ(builder::FIND_SECTION(layout, SECTION_KIND::MOTION_STEP_RECORD)->FIRST_WORD, w - 15);
  const std::array<int32_t, 3> flags{1, 0, -1};
  for (int32_t r = 1; r <= 3; ++r)
    job.RESULTS.SET(builder::WORD_AT(layout, 2, w - 24 + r), std::bit_cast<float>(flags[r - 1]));
  OPEN();
  for (int32_t r = 1; r <= 3; ++r) {
    int32_t flag = 99;
    FIND_ACTIVE_NODE_FLAG(db, r, 2, flag, error);
    EXPECT_EQ(flag, flags[r - 1]) << r;
    EXPECT_FALSE(error);
  }
  std::array<float, 6> dofs{};
  READ_NODE_DOFS(db, 2, 3, dofs, error);
  ASSERT_FALSE(error);
  for (int32_t k = 1; k <= 6; ++k) EXPECT_EQ(dofs[k - 1], AT(SECTION_KIND::VELOCITY, 2, 3, k));

  int32_t flag = 99;
  FIND_ACTIVE_NODE_FLAG(db, 1, NO_STEP, flag, error);
  EXPECT_TRUE(error && flag == 0);
  READ_NODE_DOFS(db, NO_STEP, 1, dofs, error);
  EXPECT_TRUE(error);
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(),
            "Error: Database Postprocessing: Unable to read nodal motion results from database.");
}

TEST_F(GuideAxes, TheFirstDifferenceFromTheRequestIsReported) {
  OPEN();
  const std::string flags = "The contents of the database files do not match what is requested.";
  const std::string count = "The number of elements in the database files does not match the number requested.";
  const std::string elements = "The elements included in the database files do not match those requested.";
  std::vector<int32_t> same(19, 0);
  same[1] = 1;
  std::vector<int32_t> other = same;
  other[4] = 1;
  struct CASE {
    std::vector<int32_t> flags;
    int32_t count;
    std::vector<int32_t> elements;
    std::string message;  // none when they match
  };
  for (const CASE& c : std::vector<CASE>{{same, 2, {100, 200}, ""},
                                         {{0, 1}, 2, {100, 200}, ""},
                                         {other, 3, {1}, flags},
                                         {std::vector<int32_t>(20, 0), 2, {100, 200}, flags},
                                         {same, 3, {100, 200, 300}, count},
                                         {same, 2, {100, 201}, elements},
                                         {same, 2, {1, 2}, elements},  // file numbers are not the user's
                                         {same, 2, {100}, elements}}) {
    ERROR_HANDLING::ERROR3(false, "", "");
    EXPECT_EQ(DO_DATABASE_FILES_MATCH_KEYWORD_FILE(db, c.flags, c.count, c.elements), c.message.empty());
    EXPECT_EQ(
        ERROR_HANDLING::LAST_MESSAGE(),
        c.message.empty() ? "" : "Error: Database Postprocessing: " + c.message + " You should rerun the analysis.");
  }
}

}  // namespace
}  // namespace tmrdar::results
