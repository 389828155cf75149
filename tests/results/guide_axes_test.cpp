// The guide axes routines of the V841 reader, one row a routine: axes and
// transforms worked by hand, and frame reads against the words the builder
// placed (every word holds a value of its own).
#include "results/guide_axes.h"

#include <bit>
#include <cmath>
#include <functional>
#include <numbers>
#include <string>
#include <vector>

#include "results/written_job.h"

namespace tmrdar::results {
namespace {

using builder::SECTION_KIND;
using V = std::array<float, 3>;
using VALUES = std::vector<double>;
constexpr int32_t NO_STEP = -2'000'000'000;  // a frame before the start of the file

template <typename M>
VALUES STORED(const M& m) { return VALUES(m.begin(), m.end()); }
// A matrix given by its rows, as it is stored.
VALUES ROWS(V a, V b, V c) { return {a[0], b[0], c[0], a[1], b[1], c[1], a[2], b[2], c[2]}; }

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
};

TEST_F(GuideAxes, EachRoutineAgainstItsWorkedValues) {
  // Guide surface 1 at step 2: origin (0.5, 0, 0), p = (1, 1, 1), q = (1, -1, 0).
  const std::array<float, 9> words{0.5F, 0, 0, 1, 1, 1, 1, -1, 0};
  for (int32_t k = 1; k <= 9; ++k) job.RESULTS.SET(SECTION_KIND::GUIDE_SURFACE, 2, 1, k, words[k - 1]);
  // The active flag of node row r is word W - 24 + r of a frame of W words.
  const builder::FRAME_LAYOUT layout = job.FRAME_SECTIONS(builder::FILE_KIND::MOTION);
  const int64_t frame = builder::FRAME_WORDS(layout);
  for (int32_t r = 1; r <= 3; ++r) job.RESULTS.SET(builder::WORD_AT(layout, 2, frame - 24 + r), std::bit_cast<float>(2 - r));
  OPEN();
  header::HEADER_TABLES& t = db.TABLES;
  bool error = true;

  UPDATE_GUIDE_COORDS_AXES(db, 2, error);
  ASSERT_FALSE(error);
  VALUES tables, wanted;
  for (int32_t i = 1; i <= 2; ++i) {
    for (int32_t k = 1; k <= 3; ++k) {
      tables.insert(tables.end(), {t.ORIGIN_TABLE(i, k), t.AXES_TABLE(i, 1, k), t.AXES_TABLE(i, 2, k),
                                   t.ZGG_ORIGIN(i, k), t.ZGG_DIRECTION(i, k)});
      wanted.insert(wanted.end(), {AT(SECTION_KIND::GUIDE_SURFACE, 2, i, k), AT(SECTION_KIND::GUIDE_SURFACE, 2, i, 3 + k),
                                   AT(SECTION_KIND::GUIDE_SURFACE, 2, i, 6 + k), AT(SECTION_KIND::ZERO_GAP_GUIDE, 2, i, k),
                                   AT(SECTION_KIND::ZERO_GAP_GUIDE, 2, i, 3 + k)});
    }
  }
  EXPECT_EQ(tables, wanted);
  const auto ZGG_AXES = [&](V n) {
    for (int k = 1; k <= 3; ++k) t.ZGG_DIRECTION(1, k) = n[static_cast<std::size_t>(k - 1)];
    MATRIX3<float> axes{};
    EXPECT_TRUE(FORM_ZGG_AXES(db, 1, axes));
    return STORED(axes);
  };
  const double c = std::cos(std::numbers::pi / 2);
  std::array<float, 6> dofs{};
  VALUES velocities;
  for (int32_t k = 1; k <= 6; ++k) velocities.push_back(AT(SECTION_KIND::VELOCITY, 2, 3, k));

  const struct {
    const char* routine;
    std::function<VALUES()> got;
    VALUES want;
  } rows[] = {
      {"FORM_AXES: rows p, q and p x q",
       [&] { MATRIX3<float> a{}; return FORM_AXES(db, 1, a) ? STORED(a) : VALUES{}; },
       {1, 1, 1, 1, -1, 1, 1, 0, -2}},
      // p.d summed from component 3 is (-1e8 + 1e8) + 1 = 1; from component 1, 0.
      {"TRANSFORM", [&] { V p{1.5F, 1e8F, -1e8F}; return TRANSFORM(db, 1, p) && !TRANSFORM(db, 3, p) ? STORED(p) : VALUES{}; },
       {1, -1e8F, 3e8F}},
      {"FORM_ZGG_AXES: n1 above 1e-20", [&] { return ZGG_AXES({-4, 3, 7}); },
       ROWS({-4, 3, 7}, {0.6F, 0.8F, 0}, {0 - 7 * 0.8F, 7 * 0.6F, -5})},
      {"FORM_ZGG_AXES: n1 at 1e-20", [&] { return ZGG_AXES({1e-20F, 4, -3}); },
       ROWS({1e-20F, 4, -3}, {0, 0.6F, 0.8F}, {5, -(0.8F * 1e-20F), 0.6F * 1e-20F})},
      {"FORM_ZGG_AXES: n1 and n2 at 1e-20", [&] { return ZGG_AXES({0, 1e-20F, 2}); },
       ROWS({0, 1e-20F, 2}, {1, 0, 0}, {0, 2, -1e-20F})},
      // n = (1, 1, 1), d = (1, 1e8, -1e8): n.d summed from component 1 is 0.
      {"TRANSFORM_ZGG", [&] {
         ZGG_AXES({1, 1, 1});
         for (int k = 1; k <= 3; ++k) t.ZGG_ORIGIN(1, k) = 0;
         V p{1, 1e8F, -1e8F};
         return TRANSFORM_ZGG(db, 1, p) && !TRANSFORM_ZGG(db, 8, p) ? VALUES{p[0]} : VALUES{};
       }, {0}},
      {"EIGVEC", [&] { MATRIX3<double> m{}; EIGVEC(std::numbers::pi / 2, std::array<double, 3>{0, 0, 2}, m); return STORED(m); },
       {c, -2, 0, 2, c, 0, 0, 0, 4}},
      {"FIND_ACTIVE_NODE_FLAG of rows 1 to 3, and of a step before the file", [&] {
         VALUES flags;
         for (const int32_t step : {2, 2, 2, NO_STEP}) {
           int32_t flag = 99;
           FIND_ACTIVE_NODE_FLAG(db, static_cast<int32_t>(flags.size() % 3) + 1, step, flag, error);
           flags.push_back(error == (step == NO_STEP) ? flag : 99);
         }
         return flags;
       }, {1, 0, -1, 0}},
      {"READ_NODE_DOFS", [&] { READ_NODE_DOFS(db, 2, 3, dofs, error); return error ? VALUES{} : STORED(dofs); }, velocities},
      {"UPDATE_GUIDE_COORDS_AXES before the file", [&] { UPDATE_GUIDE_COORDS_AXES(db, NO_STEP, error); return VALUES{double(error)}; },
       {1}},
  };
  for (const auto& row : rows) EXPECT_EQ(row.got(), row.want) << row.routine;

  READ_NODE_DOFS(db, NO_STEP, 1, dofs, error);
  EXPECT_EQ(std::pair(error, ERROR_HANDLING::LAST_MESSAGE()),
            std::pair(true, std::string_view("Error: Database Postprocessing: Unable to read nodal motion results from database.")));

  // The first difference from the request is reported.
  std::vector<int32_t> same(19, 0);
  same[1] = 1;
  const struct {
    std::vector<int32_t> flags;
    int32_t count;
    std::vector<int32_t> elements;
    std::string message;  // none when they match
  } requests[] = {
      {same, 2, {100, 200}, ""},
      {std::vector<int32_t>(20, 0), 2, {100, 200}, "The contents of the database files do not match what is requested."},
      {same, 3, {100, 200, 300}, "The number of elements in the database files does not match the number requested."},
      {same, 2, {1, 2}, "The elements included in the database files do not match those requested."},
  };
  for (const auto& r : requests) {
    ERROR_HANDLING::ERROR3(false, "", "");
    EXPECT_EQ(DO_DATABASE_FILES_MATCH_KEYWORD_FILE(db, r.flags, r.count, r.elements), r.message.empty());
    EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(),
              r.message.empty() ? "" : "Error: Database Postprocessing: " + r.message + " You should rerun the analysis.");
  }
}

}  // namespace
}  // namespace tmrdar::results
