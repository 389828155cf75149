#include <gtest/gtest.h>

#include <string>

#include "core/platform/platform.h"

namespace tmrdar::platform {
namespace {

TEST(SplitPath, AtTheLastSeparatorAndTheLastPointOfTheLastComponent) {
  struct CASE {
    std::string_view full, directory, name, extension;
  };
  const CASE cases[] = {
      {"/run/jobs/riser.v2.DBM", "/run/jobs/", "riser.v2", ".DBM"},
      {"/run.d/jobs/riser", "/run.d/jobs/", "riser", ""},
      {"riser.dbf", "", "riser", ".dbf"},
      {"/a/b.", "/a/", "b", "."},
      {"/a/..", "/a/", ".", "."},
      {"/a/.b.c", "/a/", ".b", ".c"},
      {"", "", "", ""},
      // A blank name is taken by hand. A component that starts with its only
      // point keeps it in the name, and the extension from the first split
      // stays.
      {"/run/.Job", "/run/", ".Job", ".Job"},
      {".job", "", ".job", ".job"},
      // Behind a trailing separator there is nothing, whatever points stand
      // before it.
      {"/run.d/", "/run.d/", "", ""},
      {"/", "/", "", ""},
      // A name of blanks is what stands between the separator and the point.
      {"/a/  .x", "/a/", "  ", ".x"},
      {"/a.b/  ", "/a.b/", "  ", ""},
  };
  for (const CASE& c : cases) {
    const PATH_PARTS parts = SPLIT_PATH(c.full);
    EXPECT_EQ(parts.DIRECTORY, c.directory) << c.full;
    EXPECT_EQ(parts.NAME, c.name) << c.full;
    EXPECT_EQ(parts.EXTENSION, c.extension) << c.full;
  }
}

TEST(SplitPath, NothingIsCut) {
  const std::string directory = "/" + std::string(300, 'd') + "/";
  const PATH_PARTS parts = SPLIT_PATH(directory + std::string(300, 'n') + "." + std::string(300, 'e'));
  EXPECT_EQ(parts.DIRECTORY, directory);
  EXPECT_EQ(parts.NAME, std::string(300, 'n'));
  EXPECT_EQ(parts.EXTENSION, "." + std::string(300, 'e'));
}

}  // namespace
}  // namespace tmrdar::platform
