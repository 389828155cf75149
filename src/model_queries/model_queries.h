// Answers from the model tables of an open job: where a node lies, what an
// element is made of, how far along the riser an element lies, and the points
// of a nonlinear material curve. Written once over a format's reader; every
// format's tables are read the same way. Nothing here reads a file.
//
// The routines named after the format take rows of the tables; the others
// take the numbers that the user knows and find the rows first, through the
// indexes made at open.
#pragma once

#include <cstdint>
#include <span>

#include "header/format_reader.h"

namespace tmrdar::model_queries {

using header::FormatReader;

// Node and element kinds.
inline constexpr int32_t main_kind = 0;
inline constexpr int32_t auxiliary_kind = 1;

// The slots that an element's answer needs: 15 for a main element, 4 for an
// auxiliary one.
inline constexpr int32_t element_slots = 15;
inline constexpr int32_t aux_element_slots = 4;

// The mark of a slot that holds nothing.
inline constexpr int32_t no_integer = -1;
inline constexpr float no_real = -1.0F;

// Nearest integer of a stored real, halves away from zero; values past the
// 32-bit range give its ends, and a value that is not a number gives 0.
int32_t nearest_integer(float value);

// --- Nodes ---------------------------------------------------------------

// Writes x, y and z of node row `row` of kind `kind` to `coordinates`. Writes
// nothing for another kind, for a row that the table does not hold, or to
// fewer than three places.
void v861_getnodeproperties(const FormatReader& db, int32_t row, int32_t kind,
                            std::span<float> coordinates);

// The row of node `number` of kind `kind` (0 or 1), the first that holds it,
// with its coordinates written; 0, with nothing written, for a number that no
// row holds.
int32_t node_properties(const FormatReader& db, int32_t number, int32_t kind,
                        std::span<float> coordinates);

// --- Elements ------------------------------------------------------------

// The row of element `number`. Kind 0: a positive number held by its own row
// is that row, another the first row that holds it; a negative number is the
// negated row of the auxiliary element with its absolute value; 0 is none.
// Kind 1: the first auxiliary row that holds the number as given. 0 for none.
int32_t element_row(const FormatReader& db, int32_t number, int32_t kind);

// The external fluid values of element row `row`: the first three B values
// of the element that encloses it, when the first pipe-in-pipe pair whose
// search finds the row names one in its first row; else the two defaults of
// the run and 0.0.
void get_external_fluid_prop(const FormatReader& db, int32_t row, float& value_1, float& value_2,
                             float& value_3);

// Fills the first `n` slots of both arrays (as far as they reach) with -1 and
// -1.0, then the slots of element row `row` of kind `kind`. Status 15 (kind 0)
// or 4 (kind 1) when `n` is short of that, with only the marks written; else
// 0. A negative row of kind 0 is the negated row of an auxiliary element and
// is answered as kind 1. A row that the tables do not hold keeps the marks.
void v861_getelementproperties(const FormatReader& db, int32_t row, int32_t kind, int32_t n,
                               std::span<int32_t> integers, std::span<float> reals, int32_t& status);

// The element of `number` and kind 0 or 1 into arrays of `n` slots, already
// marked: 0, 15 or 4 as v861_getelementproperties gives, or -1 for a number
// that no row holds.
int32_t element_properties(const FormatReader& db, int32_t number, int32_t kind, int32_t n,
                           std::span<int32_t> integers, std::span<float> reals);

// --- Distance along the riser ---------------------------------------------

// Position codes on an element.
inline constexpr int32_t element_start = 1;
inline constexpr int32_t element_middle = 2;
inline constexpr int32_t element_end = 3;

// The distance from the start of element row 1 to the start (any code but 2
// and 3), the middle (2) or the end (3) of element row `row`, the rows laid
// end to end in row order, in single precision. Writes nothing for a row
// that the tables do not hold.
void v861_getdistancealongriser(const FormatReader& db, int32_t row, int32_t position, float& distance);

// The distance of element `number` at `position`: 0, or -1 with 0.0 for a
// number of no element row (every number below 1 among them).
int32_t distance_along_riser(const FormatReader& db, int32_t number, int32_t position, float& distance);

// --- Nonlinear material curves --------------------------------------------

// Curve `curve` of the nonlinear E tables into `values` as pairs, for a
// caller with room for `capacity` pairs. The curve starts at the first row
// whose curve number is `curve` and runs for the row's point count m. Status:
// -curve when no row has the number or m is 0; m when `capacity` is below m,
// nothing written; else 0, and the pairs of the m rows from there written
// when m is at least 1 (rows past the end of the table, and places past the
// end of `values`, are left alone).
void v861_getnonlinearmaterial(const FormatReader& db, int32_t curve, int32_t capacity,
                               std::span<float> values, int32_t& status);

}  // namespace tmrdar::model_queries
