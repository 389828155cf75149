// Paths as Windows forms them: the long path routines with their prefixes and
// capacities, and the job path's resolution with drives, both separators,
// UNC names and its length limit.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/paths/full_paths.h"
#include "core/paths/wide_strings.h"
#include "frame/exports/resolve_path.h"
#include "support/scratch_dir.h"

namespace tmrdar {
namespace {

struct LongPath {
  bool failed = true;
  std::u16string text;
  int32_t length = 0;
};

LongPath long_path(const std::u16string& path, int32_t capacity) {
  std::vector<char16_t> out(path_buffer_units);
  LongPath result;
  getfulllongunicodepathww(path, out, capacity, result.length, result.failed);
  result.text = up_to_zero(std::u16string_view(out.data(), out.size()));
  return result;
}

TEST(WindowsPaths, LongFormsAndTheirCapacities) {
  testing::ScratchDir dir;
  const std::u16string file = utf8_to_utf16(dir.write("riser.dbm", "x"));
  const auto size = static_cast<int32_t>(file.size());  // a full path already
  // A drive path: the prefix \\?\ and 5 units more than the full path.
  EXPECT_TRUE(long_path(file, size + 4).failed);
  const LongPath drive = long_path(file, size + 5);
  ASSERT_FALSE(drive.failed);
  EXPECT_EQ(drive.text, u"\\\\?\\" + file);
  EXPECT_EQ(drive.length, size + 4);
  // Already in the long form: as it stands.
  EXPECT_EQ(long_path(drive.text, 32767).text, drive.text);

  // A network path: \\?\UNC\ in place of its two backslashes, 7 units more,
  // never through the long name call, and the length of the path before.
  const std::u16string unc = u"\\\\server\\share\\x.dbm";
  const auto unc_size = static_cast<int32_t>(unc.size());
  EXPECT_TRUE(long_path(unc, unc_size + 6).failed);
  const LongPath network = long_path(unc, unc_size + 7);
  ASSERT_FALSE(network.failed);
  EXPECT_EQ(network.text, u"\\\\?\\UNC\\server\\share\\x.dbm");
  EXPECT_EQ(network.length, unc_size);
}

TEST(WindowsPaths, JobPathsWithDrivesSeparatorsAndUncNames) {
  struct Case {
    std::string path, directory, name, extension;
  };
  for (const Case& c : {Case{"C:/runs/a/../b/riser.v2.DBM", "C:\\runs\\b\\", "riser.v2", ".dbm"},
                        Case{"d:\\runs\\riser", "d:\\runs\\", "riser", ""},
                        Case{"\\\\server\\share\\runs\\riser.dbf", "\\\\server\\share\\runs\\", "riser", ".dbf"}}) {
    const frame::ResolvedPath parts = frame::resolve_path(c.path);
    EXPECT_EQ(parts.drive + parts.directory, c.directory) << c.path;
    EXPECT_EQ(parts.name, c.name) << c.path;
    EXPECT_EQ(parts.extension, c.extension) << c.path;
  }
  // The full path of a job is cut at 256 characters.
  const std::string long_name = "C:\\" + std::string(300, 'a');
  const frame::ResolvedPath cut = frame::resolve_path(long_name);
  EXPECT_EQ(cut.directory, "C:\\");
  EXPECT_EQ(cut.name, std::string(253, 'a'));
}

}  // namespace
}  // namespace tmrdar
