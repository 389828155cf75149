// The stored element results of a force frame, by force parameter, and the
// ordinate lookup of a stress-strain table.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string_view>

#include "frame/base/error_handling.h"
#include "header/result_frames.h"
#include "results/frame_sections.h"
#include "results/letter_lookup.h"

namespace tmrdar::results {

namespace {

using header::frame_words::ADD;
using header::frame_words::MUL;

constexpr std::string_view NOT_INCLUDED =
    "The requested force data is not included in the database. Use the *DATABASE CONTENT keyword to manage the "
    "contents of the database.";

// The output flag that a force parameter's section belongs to, and the
// sub-section within flags 18 and 19; a section of 0 for a parameter that
// no section holds.
struct FORCE_SECTION {
  int32_t SECTION = 0;
  int32_t SUB = 0;
};

constexpr FORCE_SECTION SECTION_OF(int32_t parameter) {
  if (parameter >= 9 && parameter <= 15) return {parameter - 4, 0};  // flags 5 to 11
  switch (parameter) {
    case 24: return {12, 0};
    case 25: return {13, 0};
    case 28: return {14, 0};
    case 29: return {15, 0};
    case 30: return {16, 0};
    case 36: return {17, 0};
    case 37: case 38: case 39: return {18, parameter - 37};
    case 40: case 41: return {19, parameter - 40};
    default: return {};
  }
}

// The section of a force parameter in the format's numbering: by the table,
// by the table as far as the pressures (16), or, in the formats that number
// parameters as requests do, the parameter's own number plus 4.
FORCE_SECTION SECTION_IN_FORMAT(header::FORCE_NUMBERING numbering, int32_t parameter) {
  switch (numbering) {
    case header::FORCE_NUMBERING::SECTION_BY_PARAMETER: {
      // A section that no output flag stands for is none the frames hold.
      const int64_t section = int64_t{parameter} + 4;
      return {section >= 1 && section <= header::NUM_OUTPUT_FLAGS ? static_cast<int32_t>(section) : -1, 0};
    }
    case header::FORCE_NUMBERING::TABLE_TO_SECTION_16: {
      const FORCE_SECTION s = SECTION_OF(parameter);
      return s.SECTION <= 16 ? s : FORCE_SECTION{};
    }
    case header::FORCE_NUMBERING::TABLE:
      break;
  }
  return SECTION_OF(parameter);
}

}  // namespace

// The element sections are counted from the end of the reaction section by
// their flags alone. Nothing here steps over the guide, pipe-in-pipe and
// clashing reactions that stand between flag 14's section and the
// temperatures, so the sections from flag 15 on are addressed as if those
// were absent.
void READF(header::TIDE3_DATABASE_FILES& db, int32_t step, int32_t element, int32_t location, int32_t parameter,
           float& value, bool& error) {
  error = false;
  const HEADER_VARIABLES& h = db;
  const FORCE_SECTION s = SECTION_IN_FORMAT(db.VERSION.FORCE_PARAMETERS, parameter);
  if (s.SECTION == 0) return;  // no section holds it: nothing
  const auto F = [&h](int32_t i) { return int64_t{h.OUTPUT_FLAGS[static_cast<std::size_t>(i - 1)]}; };
  if (s.SECTION < 0 || F(s.SECTION) != 1) {
    ERROR_HANDLING::ERROR3(true, ERROR_HANDLING::DATABASE_POSTPROCESSING, NOT_INCLUDED);
    error = true;
    return;
  }

  int64_t ahead = 0;  // element sections ahead of this one
  for (int32_t i = 5; i < std::min(s.SECTION, 16); ++i) ahead += F(i);
  const int64_t r3 = R3(h);
  int64_t base = MUL(REACTION_RECORDS(h), F(4));
  base = ADD(base, h.RESULT_START_RECORD);
  base = ADD(base, h.FORCE_START_OFFSET);
  base = ADD(base, MUL(int64_t{step} - 1, h.FORCE_FRAME_RECORDS));
  base = ADD(base, MUL(ahead, r3));
  if (s.SECTION > 16) base = ADD(base, MUL(PRESSURE_RECORDS(h), F(16)));

  int64_t word = 0;
  if (s.SECTION == 17) {
    // One word an element, one record behind the sub-sections of flags 18 and 19.
    const int64_t records = ADD(ADD(base, MUL(3 * F(18) + 2 * F(19), r3)), 1);
    word = ADD(MUL(8, records), element);
  } else {
    int64_t records = base;
    if (s.SECTION == 18) records = ADD(base, MUL(s.SUB, r3));
    if (s.SECTION == 19) records = ADD(base, MUL(s.SUB + 3 * F(18), r3));
    word = ADD(MUL(8, records), 3 * int64_t{element} + location - 3);
  }
  db.READIN(2, word, value, error);
}

float FIND_STRESS(std::span<const float> table, float x) {
  const std::size_t n = table.size() / 2;
  if (n == 0) return 0.0F;
  const auto a = [&table](std::size_t i) { return table[i]; };          // abscissa i, from 0
  const auto o = [&table, n](std::size_t i) { return table[n + i]; };   // its ordinate
  if (n == 1) return o(0);

  // The two entries between which x is interpolated, or beyond which it is
  // extrapolated.
  std::size_t upper = n - 1;
  if (x < a(0)) {
    upper = 1;
  } else if (!(x > a(n - 1))) {
    for (std::size_t i = 0; i < n; ++i) {
      if (std::fabs(a(i) - x) < 1e-10F) return o(i);
      if (a(i) > x) {
        upper = i;
        break;
      }
    }
    if (upper == 0) upper = 1;
  }
  const std::size_t lower = upper - 1;
  const float slope = (o(upper) - o(lower)) / (a(upper) - a(lower));
  return o(lower) + slope * (x - a(lower));
}

}  // namespace tmrdar::results
