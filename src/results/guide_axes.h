// The guide axes routines of the V841 reader (header::v841_database_files()):
// the local axes of a guide surface and of a zero gap guide, the change of
// a point into them, the matrix that turns axes about an axis, the reads of
// a step's guide positions, of a node's motion and of a node's active flag
// from the motion frames, and the comparison of the open files with what a
// keyword file asks for.
//
// Nothing in the library calls them. They stand where that format keeps
// them, and work on the state of whichever reader they are given. All of
// them work in 32-bit reals except eigvec, in 64-bit reals.
#pragma once

#include <cstdint>
#include <span>

#include "core/numerics/vectors.h"
#include "header/format_reader.h"

namespace tmrdar::results {

// The axes of guide surface `row`: row 1 of `axes` is the first stored axis
// p = axes_table(row, 1, :), row 2 the second q = axes_table(row, 2, :) and
// row 3 w = p x q. Nothing is normalised, so w has the length that p and q
// give it. False, with `axes` untouched, for a row the table does not hold.
bool form_axes(const header::FormatReader& db, int32_t row, Matrix3<float>& axes);

// The axes of zero gap guide `row`: row 1 is its direction n =
// zgg_direction(row, :) as stored, row 2 a unit vector t at right angles to
// n, row 3 b = n x t. t is (n2 / (0 - n1), 1, 0) when |n1| > 1e-20, else
// (0, n3 / (0 - n2), 1) when |n2| > 1e-20, else (1, 0, (0 - n1) / n3), then
// normalised; n = 0 thus divides by zero. False, with `axes` untouched, for
// a row the table does not hold.
bool form_zgg_axes(const header::FormatReader& db, int32_t row, Matrix3<float>& axes);

// The point in the axes of guide surface `row`: d = point - origin_table(row, :),
// then component i is the product of axis i of form_axes with d, summed from
// component 3: (x3 d3 + x2 d2) + x1 d1. False, with the point untouched, for
// a row the tables do not hold.
bool transform(const header::FormatReader& db, int32_t row, std::span<float, 3> point);

// The point in the axes of zero gap guide `row`: d = point - zgg_origin(row, :),
// then the products of n, t and b of form_zgg_axes with d, each summed from
// component 1: (x1 d1 + x2 d2) + x3 d3. False, with the point untouched, for
// a row the tables do not hold.
bool transform_zgg(const header::FormatReader& db, int32_t row, std::span<float, 3> point);

// The matrix that turns axes by `angle` about `axis`, taken as it stands:
// element (i, j) is a_i a_j + (delta_ij - a_i a_j) cos angle + e_ijk a_k sin angle,
// k the third index and e_123 = +1, so (1, 2) carries +a3 sin angle. It is the
// transpose of the matrix that turns a vector about the axis.
void eigvec(double angle, std::span<const double, 3> axis, Matrix3<double>& matrix);

// The active flag of node row `node_row` at output step `step`: one word of a
// section of one word a node that ends a record before the step record, as
// counted back from the end of the frame over the vessel records alone
// (the tail items and auxiliary element sets behind them are not counted):
// record R = S + step * motion_step_records - num_vessels -
// truncate(single(num_nodes) * 0.125) + q + 1, q = truncate(single(node_row - 1) * 0.125),
// word 8R + (node_row - (8q + 8)) - 16, where S is result_start_record +
// motion_start_offset summed by the format's rule. The word's 32 bits are the
// flag, as stored. The flag is 0 and `error` true after a failed read (reported).
void find_active_node_flag(header::FormatReader& db, int32_t node_row, int32_t step, int32_t& flag,
                           bool& error);

// Fills origin_table and axes_table of every guide surface with words 1 to
// 3 and 4 to 9 of its entry of step `step` (letter G), and zgg_origin and
// zgg_direction of every zero gap guide with words 1 to 3 and 4 to 6 of
// its entry (letter H), each word as it is read. The first failure sets
// `error` and stops; a guide that its table has no row for fails so too.
void update_guide_coords_axes(header::FormatReader& db, int32_t step, bool& error);

// Words 6 node - 5 to 6 node of the motion frame of step `step`, six a
// node whatever dofs_per_node says, one record read a word: word w stands at
// place w - 8q of record S + (step - 1) * motion_step_records + 1 + q, S as
// above, q = truncate(single(w - 1) * 0.125), so where q rounds the place
// counts on into a neighbouring record. A failed read reports "Unable to read
// nodal motion results from database.", sets `error` and stops, with the
// words read before it written.
void read_node_dofs(header::FormatReader& db, int32_t step, int32_t node, std::span<float, 6> dofs,
                    bool& error);

// Whether the open files hold what a keyword file asks for, compared in this
// order and reported at the first difference: the requested output flags,
// flag i at requested_flags[i - 1], against output_flags (more flags than the
// files hold differ); the element count against num_elements; the user's
// number of each element row from 1 to that count against element_numbers
// (a list shorter than the count differs).
bool do_database_files_match_keyword_file(const header::FormatReader& db,
                                          std::span<const int32_t> requested_flags, int32_t requested_elements,
                                          std::span<const int32_t> element_numbers);

}  // namespace tmrdar::results
