// Rows of the numbers that the user knows: the first row that holds a number,
// except that an element number held by its own row is that row.
#include <gtest/gtest.h>

#include <limits>

#include "builder/job.h"
#include "frame/base/error_handling.h"
#include "header/tide3_database_files.h"
#include "support/scratch_dir.h"

namespace tmrdar::header {
namespace {

TEST(Lookups, NumbersFindTheirRows) {
  builder::JOB job;
  builder::MODEL& m = job.MODEL;
  // Elements numbered out of order, 2 twice: in rows 2 and 4, and row 2 is
  // not its own number's row, so the search from the top finds it first.
  m.ELEMENTS = {{.FILE_NUMBER = 1, .USER_NUMBER = 30}, {.FILE_NUMBER = 2, .USER_NUMBER = 2},
                {.FILE_NUMBER = 3, .USER_NUMBER = 10}, {.FILE_NUMBER = 4, .USER_NUMBER = 3},
                {.FILE_NUMBER = 5, .USER_NUMBER = 3}};
  m.NODES = {{.FILE_NUMBER = 1, .USER_NUMBER = 7}, {.FILE_NUMBER = 2, .USER_NUMBER = 5},
             {.FILE_NUMBER = 3, .USER_NUMBER = 7}};
  m.AUX_ELEMENTS = {{.NUMBER = 4}, {.NUMBER = 9}, {.NUMBER = 9}};
  m.AUX_NODES = {{.NUMBER = 11}, {.NUMBER = 12}};
  testing::SCRATCH_DIR dir;
  job.WRITE(dir.FILE("job"));
  TIDE3_DATABASE_FILES& db = V861_TIDE3_DATABASE_FILES();
  bool failed = true;
  db.OPEN_TIDE3_DATABASE_FILES("job", dir.PATH().string() + "/", failed);
  ASSERT_FALSE(failed) << ERROR_HANDLING::LAST_MESSAGE();

  EXPECT_EQ(db.POST_NODE_CODING(7), 1);
  EXPECT_EQ(db.POST_NODE_CODING(5), 2);
  EXPECT_EQ(db.POST_NODE_CODING(1), 0) << "a file number is no user's number";
  EXPECT_EQ(db.POST_AUX_NODE_CODING(12), 2);
  EXPECT_EQ(db.POST_AUX_NODE_CODING(-12), 0);

  EXPECT_EQ(db.POST_ELEM_CODING(30), 1);
  EXPECT_EQ(db.POST_ELEM_CODING(2), 2) << "row 2 holds 2";
  EXPECT_EQ(db.POST_ELEM_CODING(3), 4) << "row 3 holds another number; the first row holding 3 is 4";
  EXPECT_EQ(db.POST_ELEM_CODING(10), 3);
  EXPECT_EQ(db.POST_ELEM_CODING(6), 0);
  EXPECT_EQ(db.POST_ELEM_CODING(0), 0);
  EXPECT_EQ(db.POST_ELEM_CODING(-9), -2) << "an auxiliary element, its row negated";
  EXPECT_EQ(db.POST_ELEM_CODING(-30), 0);
  EXPECT_EQ(db.POST_ELEM_CODING(std::numeric_limits<int32_t>::min()), 0);
  EXPECT_EQ(db.POST_AUX_ELEM_CODING(4), 1);
  db.CLOSE_TIDE3_DATABASE_FILES();
}

}  // namespace
}  // namespace tmrdar::header
