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

using builder::SectionKind;
using V = std::array<float, 3>;
using Values = std::vector<double>;
constexpr int32_t no_step = -2'000'000'000;  // a frame before the start of the file

template <typename M>
Values stored(const M& m) { return Values(m.begin(), m.end()); }
// A matrix given by its rows, as it is stored.
Values matrix_rows(V a, V b, V c) { return {a[0], b[0], c[0], a[1], b[1], c[1], a[2], b[2], c[2]}; }

class GuideAxes : public WrittenJob {
 protected:
  GuideAxes() : WrittenJob(header::v841) {
    job.run.num_time_steps = 2;
    job.run.output_flags[1] = 1;  // velocities alone: the frame opens with them
    job.model.nodes = {{.file_number = 1}, {.file_number = 2}, {.file_number = 3}};
    job.model.elements = {{.file_number = 1, .user_number = 100, .nodes = {1, 2}},
                          {.file_number = 2, .user_number = 200, .nodes = {2, 3}}};
    job.model.guide_surfaces.resize(2);
    job.model.zero_gap_guides.resize(2);
    job.model.vessels.resize(1);
  }
};

TEST_F(GuideAxes, EachRoutineAgainstItsWorkedValues) {
  // Guide surface 1 at step 2: origin (0.5, 0, 0), p = (1, 1, 1), q = (1, -1, 0).
  const std::array<float, 9> words{0.5F, 0, 0, 1, 1, 1, 1, -1, 0};
  for (int32_t k = 1; k <= 9; ++k) job.results.set(SectionKind::guide_surface, 2, 1, k, words[k - 1]);
  // The active flag of node row r is word W - 24 + r of a frame of W words.
  const builder::FrameLayout layout = job.frame_sections(builder::FileKind::motion);
  const int64_t frame = builder::frame_words(layout);
  for (int32_t r = 1; r <= 3; ++r) job.results.set(builder::word_at(layout, 2, frame - 24 + r), std::bit_cast<float>(2 - r));
  open();
  header::HeaderTables& t = db.tables;
  bool error = true;

  update_guide_coords_axes(db, 2, error);
  ASSERT_FALSE(error);
  Values tables, wanted;
  for (int32_t i = 1; i <= 2; ++i) {
    for (int32_t k = 1; k <= 3; ++k) {
      tables.insert(tables.end(), {t.origin_table(i, k), t.axes_table(i, 1, k), t.axes_table(i, 2, k),
                                   t.zgg_origin(i, k), t.zgg_direction(i, k)});
      wanted.insert(wanted.end(), {at(SectionKind::guide_surface, 2, i, k), at(SectionKind::guide_surface, 2, i, 3 + k),
                                   at(SectionKind::guide_surface, 2, i, 6 + k), at(SectionKind::zero_gap_guide, 2, i, k),
                                   at(SectionKind::zero_gap_guide, 2, i, 3 + k)});
    }
  }
  EXPECT_EQ(tables, wanted);
  const auto zgg_axes = [&](V n) {
    for (int k = 1; k <= 3; ++k) t.zgg_direction(1, k) = n[static_cast<std::size_t>(k - 1)];
    Matrix3<float> axes{};
    EXPECT_TRUE(form_zgg_axes(db, 1, axes));
    return stored(axes);
  };
  const double c = std::cos(std::numbers::pi / 2);
  std::array<float, 6> dofs{};
  Values velocities;
  for (int32_t k = 1; k <= 6; ++k) velocities.push_back(at(SectionKind::velocity, 2, 3, k));

  const struct {
    const char* routine;
    std::function<Values()> got;
    Values want;
  } rows[] = {
      {"FORM_AXES: rows p, q and p x q",
       [&] { Matrix3<float> a{}; return form_axes(db, 1, a) ? stored(a) : Values{}; },
       {1, 1, 1, 1, -1, 1, 1, 0, -2}},
      // p.d summed from component 3 is (-1e8 + 1e8) + 1 = 1; from component 1, 0.
      {"TRANSFORM", [&] { V p{1.5F, 1e8F, -1e8F}; return transform(db, 1, p) && !transform(db, 3, p) ? stored(p) : Values{}; },
       {1, -1e8F, 3e8F}},
      {"FORM_ZGG_AXES: n1 above 1e-20", [&] { return zgg_axes({-4, 3, 7}); },
       matrix_rows({-4, 3, 7}, {0.6F, 0.8F, 0}, {0 - 7 * 0.8F, 7 * 0.6F, -5})},
      {"FORM_ZGG_AXES: n1 at 1e-20", [&] { return zgg_axes({1e-20F, 4, -3}); },
       matrix_rows({1e-20F, 4, -3}, {0, 0.6F, 0.8F}, {5, -(0.8F * 1e-20F), 0.6F * 1e-20F})},
      {"FORM_ZGG_AXES: n1 and n2 at 1e-20", [&] { return zgg_axes({0, 1e-20F, 2}); },
       matrix_rows({0, 1e-20F, 2}, {1, 0, 0}, {0, 2, -1e-20F})},
      // n = (1, 1, 1), d = (1, 1e8, -1e8): n.d summed from component 1 is 0.
      {"TRANSFORM_ZGG", [&] {
         zgg_axes({1, 1, 1});
         for (int k = 1; k <= 3; ++k) t.zgg_origin(1, k) = 0;
         V p{1, 1e8F, -1e8F};
         return transform_zgg(db, 1, p) && !transform_zgg(db, 8, p) ? Values{p[0]} : Values{};
       }, {0}},
      {"EIGVEC", [&] { Matrix3<double> m{}; eigvec(std::numbers::pi / 2, std::array<double, 3>{0, 0, 2}, m); return stored(m); },
       {c, -2, 0, 2, c, 0, 0, 0, 4}},
      {"FIND_ACTIVE_NODE_FLAG of rows 1 to 3, and of a step before the file", [&] {
         Values flags;
         for (const int32_t step : {2, 2, 2, no_step}) {
           int32_t flag = 99;
           find_active_node_flag(db, static_cast<int32_t>(flags.size() % 3) + 1, step, flag, error);
           flags.push_back(error == (step == no_step) ? flag : 99);
         }
         return flags;
       }, {1, 0, -1, 0}},
      {"READ_NODE_DOFS", [&] { read_node_dofs(db, 2, 3, dofs, error); return error ? Values{} : stored(dofs); }, velocities},
      {"UPDATE_GUIDE_COORDS_AXES before the file", [&] { update_guide_coords_axes(db, no_step, error); return Values{double(error)}; },
       {1}},
  };
  for (const auto& row : rows) EXPECT_EQ(row.got(), row.want) << row.routine;

  read_node_dofs(db, no_step, 1, dofs, error);
  EXPECT_EQ(std::pair(error, error_handling::last_message()),
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
    error_handling::error3(false, "", "");
    EXPECT_EQ(do_database_files_match_keyword_file(db, r.flags, r.count, r.elements), r.message.empty());
    EXPECT_EQ(error_handling::last_message(),
              r.message.empty() ? "" : "Error: Database Postprocessing: " + r.message + " You should rerun the analysis.");
  }
}

}  // namespace
}  // namespace tmrdar::results
