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

using header::frame_words::add;
using header::frame_words::mul;

constexpr std::string_view not_included =
    "The requested force data is not included in the database. Use the *DATABASE CONTENT keyword to manage the "
    "contents of the database.";

// The output flag that a force parameter's section belongs to, and the
// sub-section within flags 18 and 19; a section of 0 for a parameter that
// no section holds.
struct ForceSection {
  int32_t section = 0;
  int32_t sub = 0;
};

constexpr ForceSection section_of(int32_t parameter) {
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
ForceSection section_in_format(header::ForceNumbering numbering, int32_t parameter) {
  switch (numbering) {
    case header::ForceNumbering::section_by_parameter: {
      // A section that no output flag stands for is none the frames hold.
      const int64_t section = int64_t{parameter} + 4;
      return {section >= 1 && section <= header::num_output_flags ? static_cast<int32_t>(section) : -1, 0};
    }
    case header::ForceNumbering::table_to_section_16: {
      const ForceSection s = section_of(parameter);
      return s.section <= 16 ? s : ForceSection{};
    }
    case header::ForceNumbering::table:
      break;
  }
  return section_of(parameter);
}

}  // namespace

// The element sections are counted from the end of the reaction section by
// their flags alone. Nothing here steps over the guide, pipe-in-pipe and
// clashing reactions that stand between flag 14's section and the
// temperatures, so the sections from flag 15 on are addressed as if those
// were absent.
void readf(header::FormatReader& db, int32_t step, int32_t element, int32_t location, int32_t parameter,
           float& value, bool& error) {
  error = false;
  const HeaderVariables& h = db;
  const ForceSection s = section_in_format(db.version.force_parameters, parameter);
  if (s.section == 0) return;  // no section holds it: nothing
  const auto f = [&h](int32_t i) { return int64_t{h.output_flags[static_cast<std::size_t>(i - 1)]}; };
  if (s.section < 0 || f(s.section) != 1) {
    error_handling::error3(true, error_handling::database_postprocessing, not_included);
    error = true;
    return;
  }

  int64_t ahead = 0;  // element sections ahead of this one
  for (int32_t i = 5; i < std::min(s.section, 16); ++i) ahead += f(i);
  const int64_t r3_records = r3(h);
  int64_t base = mul(reaction_records(h), f(4));
  base = add(base, h.result_start_record);
  base = add(base, h.force_start_offset);
  base = add(base, mul(int64_t{step} - 1, h.force_frame_records));
  base = add(base, mul(ahead, r3_records));
  if (s.section > 16) base = add(base, mul(pressure_records(h), f(16)));

  int64_t word = 0;
  if (s.section == 17) {
    // One word an element, one record behind the sub-sections of flags 18 and 19.
    const int64_t records = add(add(base, mul(3 * f(18) + 2 * f(19), r3_records)), 1);
    word = add(mul(8, records), element);
  } else {
    int64_t records = base;
    if (s.section == 18) records = add(base, mul(s.sub, r3_records));
    if (s.section == 19) records = add(base, mul(s.sub + 3 * f(18), r3_records));
    word = add(mul(8, records), 3 * int64_t{element} + location - 3);
  }
  db.readin(2, word, value, error);
}

float find_stress(std::span<const float> table, float x) {
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
