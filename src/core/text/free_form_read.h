// Reading of one number from a field of text as free-form input reads it.
//
// A free-form read takes the characters up to the first blank, tab, carriage
// return, line feed, comma or slash; blanks of those four kinds before it are
// skipped. An empty field before a comma or a slash is a null value: the read
// succeeds and leaves the value alone. Nothing at all is a failed read.
//
// A field may carry a repeat count r, a positive decimal number: r*value
// stands for r copies of the value, so one read gives the value, and r* alone
// for r null values. A count of zero, a missing count or one that is not
// decimal digits makes the field malformed.
#pragma once

#include <cstdint>
#include <string_view>

namespace tmrdar {

enum class FreeFormRead {
  value,         // a value was read
  null_value,    // nothing before a comma or slash, or r*; value untouched
  malformed,     // not a number of the type; value untouched
  out_of_range,  // a number, but too large for the type; value untouched
};

// An integer: an optional sign and decimal digits. out_of_range beyond 32 bits.
FreeFormRead read_free_form_integer(std::string_view field, int32_t& value);

// A 32-bit real: an optional sign, digits with an optional decimal point, and
// an optional exponent written with E, D or Q (either case) or with a sign
// alone, as in 1.5-3; or INF, INFINITY or NAN in either case, NAN perhaps
// followed by characters in parentheses, as in NAN(1). out_of_range when the
// magnitude rounds beyond the largest finite value; a magnitude below the
// smallest one reads as zero.
FreeFormRead read_free_form_real(std::string_view field, float& value);

}  // namespace tmrdar
