#include <gtest/gtest.h>

#include "core/platform/platform.h"
#include "frame/exports/resolve_path.h"
#include "frame/exports/version_selection.h"

namespace tmrdar::frame {
namespace {

// The pairs of codes that opening a job does not meet: a file that cannot
// be read beside one of a format, and a code of no format beside one.
TEST(VersionSelection, AnUnreadableFileBesideOneOfAFormatSelectsIt) {
  for (const auto& [motion, force, selected] : {std::tuple{13, -1, 13}, {-1, 3, 3}, {7, 0, 7}, {2, 13, 0}}) {
    EXPECT_EQ(SELECT_VERSION(motion, force), selected) << motion << " " << force;
  }
}

TEST(PathResolution, FoldsDotsByTextAndSplitsAtTheLastDot) {
  EXPECT_EQ(platform::FOLD_PATH("a/./b/../c.dbm", "/run"), "/run/a/c.dbm");
  EXPECT_EQ(platform::FOLD_PATH("../../../x", "/run"), "/x");
  EXPECT_EQ(platform::FOLD_PATH("/a//b/", "/ignored"), "/a/b/");
  EXPECT_EQ(platform::FOLD_PATH("", "/run"), "/run");

  const RESOLVED_PATH plain = RESOLVE_PATH("/run/jobs/riser.v2.DBM");
  EXPECT_EQ(plain.DRIVE, "");
  EXPECT_EQ(plain.DIRECTORY, "/run/jobs/");
  EXPECT_EQ(plain.NAME, "riser.v2");
  EXPECT_EQ(plain.EXTENSION, ".dbm");

  const RESOLVED_PATH bare = RESOLVE_PATH("/run/jobs/riser");
  EXPECT_EQ(bare.NAME, "riser");
  EXPECT_EQ(bare.EXTENSION, "");

  // A name that would come out blank keeps the whole last component.
  const RESOLVED_PATH hidden = RESOLVE_PATH("/run/.Job");
  EXPECT_EQ(hidden.DIRECTORY, "/run/");
  EXPECT_EQ(hidden.NAME, ".Job");
  EXPECT_EQ(hidden.EXTENSION, ".job");

  const RESOLVED_PATH folder = RESOLVE_PATH("/run.d/");
  EXPECT_EQ(folder.DIRECTORY, "/run.d/");
  EXPECT_EQ(folder.NAME, "");

  const RESOLVED_PATH relative = RESOLVE_PATH("sub/../riser.dbf");
  EXPECT_EQ(relative.DIRECTORY, *platform::CURRENT_DIRECTORY() + "/");
  EXPECT_EQ(relative.NAME, "riser");

  // Paths are not cut at any fixed length.
  const std::string deep = "/" + std::string(300, 'd') + "/" + std::string(300, 'n') + ".dbm";
  EXPECT_EQ(RESOLVE_PATH(deep).NAME, std::string(300, 'n'));
}

}  // namespace
}  // namespace tmrdar::frame
