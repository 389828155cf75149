#include "results/frame_sections.h"

namespace tmrdar::results {

// The sizes are checked here against the rule's own examples, so that a
// change of the arithmetic cannot pass unnoticed.
static_assert(SECTION_WORDS(8) == 16 && SECTION_WORDS(7) == 8 && SECTION_WORDS(9) == 16);
static_assert(header::SECTION_RECORDS(16'777'231) == 2'097'155);
static_assert(TIMES_32(3, 1'000'000'000) == -1'294'967'296);

}  // namespace tmrdar::results
