// TODO(helper): READ FIRST /tmp/briefs/common.md -- the binding house rules
// (never mention the specification or its Parts in code/comments/tests/commits,
// tests a quarter to a third of the code, commit only your own paths with
// `git commit -- <paths>`, never `git add -A`), and a map of the code base.
// Remove this note when you write the file.
#include "header/block_reading.h"

namespace tmrdar::header {

bool TIDE3_DATABASE_FILES::READ_STRUCTURE_BLOCKS(int32_t& /*flag*/) { return true; }

}  // namespace tmrdar::header
