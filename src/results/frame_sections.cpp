#include "results/frame_sections.h"

namespace tmrdar::results {

// The sizes are checked here against the rule's own examples, so that a
// change of the arithmetic cannot pass unnoticed.
static_assert(section_words(8) == 16 && section_words(7) == 8 && section_words(9) == 16);
static_assert(header::section_records(16'777'231) == 2'097'155);
static_assert(times_32(3, 1'000'000'000) == -1'294'967'296);

}  // namespace tmrdar::results
