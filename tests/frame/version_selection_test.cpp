#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "core/platform/platform.h"
#include "frame/exports/resolve_path.h"
#include "frame/exports/version_selection.h"

namespace tmrdar::frame {
namespace {

// The pairs of codes that opening a job does not meet: a file that cannot
// be read beside one of a format, and a code of no format beside one.
TEST(VersionSelection, AnUnreadableFileBesideOneOfAFormatSelectsIt) {
  for (const auto& [motion, force, selected] : {std::tuple{13, -1, 13}, {-1, 3, 3}, {7, 0, 7}, {2, 13, 0}}) {
    EXPECT_EQ(select_version(motion, force), selected) << motion << " " << force;
  }
}

TEST(PathResolution, FoldsDotsByTextAndSplitsAtTheLastDot) {
  EXPECT_EQ(platform::fold_path("a/./b/../c.dbm", "/run"), "/run/a/c.dbm");
  EXPECT_EQ(platform::fold_path("../../../x", "/run"), "/x");
  EXPECT_EQ(platform::fold_path("/a//b/", "/ignored"), "/a/b/");
  EXPECT_EQ(platform::fold_path("", "/run"), "/run");

  const std::string deep = "/" + std::string(300, 'd') + "/" + std::string(300, 'n') + ".dbm";
  const struct {
    std::string path, directory, name, extension;
  } rows[] = {
      {"/run/jobs/riser.v2.DBM", "/run/jobs/", "riser.v2", ".dbm"},
      {"/run/jobs/riser", "/run/jobs/", "riser", ""},
      {"/run/.Job", "/run/", ".Job", ".job"},  // a blank name keeps the whole last component
      {"/run.d/", "/run.d/", "", ""},
      {"sub/../riser.dbf", *platform::current_directory() + "/", "riser", ".dbf"},
      {deep, "/" + std::string(300, 'd') + "/", std::string(300, 'n'), ".dbm"},  // not cut at any length
  };
  for (const auto& row : rows) {
    const ResolvedPath r = resolve_path(row.path);
    EXPECT_EQ(std::tuple(r.drive, r.directory, r.name, r.extension), std::tuple("", row.directory, row.name, row.extension))
        << row.path;
  }
}

}  // namespace
}  // namespace tmrdar::frame
