// Where the sections of a step's frames begin, by the header's counts: the
// word just before a section, so that entry word k of the section is the
// section's start plus k. Sizes follow the single-precision record rule of
// a frame's sections, and products of two counts are formed in wrapping
// 32-bit integer arithmetic, as the frames were laid out.
#pragma once

#include <cstdint>

#include "header/result_frames.h"
#include "header/format_reader.h"

namespace tmrdar::results {

using header::HeaderVariables;

// The files of a job as the word reads name them.
inline constexpr int32_t motion = 1;
inline constexpr int32_t force = 2;

// a * b in 32-bit integer arithmetic that wraps.
constexpr int32_t times_32(int32_t a, int32_t b) {
  return static_cast<int32_t>(static_cast<uint32_t>(a) * static_cast<uint32_t>(b));
}

// Words of a section of `n` words: whole records by the frame's rule.
constexpr int64_t section_words(int32_t n) { return 8 * header::section_records(n); }

// Word k (from 1) of node i's entry in a nodal section: (i - 1) * DOFS + k.
constexpr int64_t node_word(const HeaderVariables& h, int64_t i, int64_t k) {
  return header::frame_words::add(header::frame_words::mul(i - 1, h.dofs_per_node), k);
}

// The words of one nodal motion section (displacement, velocity or acceleration).
constexpr int64_t nodal_words(const HeaderVariables& h) {
  return section_words(times_32(h.num_nodes, h.dofs_per_node));
}
// The guide surface, zero gap guide, node contact and clashing sections of a
// motion frame; a section of no guides or no pairs takes no words, the node
// contact section (7 or 8 words a node, by the format) always takes some.
constexpr int64_t guide_words(const HeaderVariables& h) {
  return h.num_guide_surfaces > 0 ? section_words(times_32(9, h.num_guide_surfaces)) : 0;
}
constexpr int64_t zero_gap_words(const HeaderVariables& h) {
  return h.num_zero_gap_guides > 0 ? section_words(times_32(6, h.num_zero_gap_guides)) : 0;
}
constexpr int64_t contact_words(const HeaderVariables& h) {
  return section_words(times_32(h.node_contact_words, h.num_nodes));
}
constexpr int64_t clash_words(const HeaderVariables& h) {
  return h.num_clash_pairs > 0 ? section_words(h.num_clash_pairs) : 0;
}

// The word behind the nodal motion sections of motion frame n.
constexpr int64_t ma(const HeaderVariables& h, int64_t n) {
  using namespace header::frame_words;
  const int64_t flags = int64_t{h.output_flags[0]} + h.output_flags[1] + h.output_flags[2];
  return add(header::mb(h, n), mul(flags, nodal_words(h)));
}

// Records of one element section of a force frame: 3 words an element.
constexpr int64_t r3(const HeaderVariables& h) { return header::section_records(times_32(3, h.num_elements)); }

// The word before the auxiliary node section of motion frame n: behind the
// guide surface, zero gap guide, node contact and clashing sections.
constexpr int64_t aux_node_base(const HeaderVariables& h, int64_t n) {
  using header::frame_words::add;
  return add(add(add(add(ma(h, n), guide_words(h)), zero_gap_words(h)), contact_words(h)), clash_words(h));
}

// Records of the reaction section of a force frame, one entry a boundary
// condition, and of the element pressure section, 6 words an element.
constexpr int64_t reaction_records(const HeaderVariables& h) {
  return header::section_records(times_32(h.num_boundary_conditions, h.dofs_per_node));
}
constexpr int64_t pressure_records(const HeaderVariables& h) {
  return header::section_records(times_32(6, h.num_elements));
}

// The sections of a force frame ahead of its contact reactions: the ten
// element sections of flags 5 to 14, and the reactions of the boundary
// conditions under flag 4.
constexpr int64_t element_flag_sum(const HeaderVariables& h) {
  int64_t sum = 0;
  for (std::size_t k = 4; k < 14; ++k) sum += h.output_flags[k];
  return sum;
}
constexpr int64_t element_force_words(const HeaderVariables& h) {
  return header::frame_words::mul(8 * r3(h), element_flag_sum(h));
}
constexpr int64_t boundary_reaction_words(const HeaderVariables& h) {
  return header::frame_words::mul(8 * reaction_records(h), h.output_flags[3]);
}
// The contact sections of a force frame, 3 words an entry (2 a clash pair),
// as they stand when flag 4 is set; a section of no entries takes no words.
constexpr int64_t guide_reaction_words(const HeaderVariables& h) {
  return h.num_guide_surfaces < 1 ? 0 : section_words(times_32(3, h.num_guide_surfaces));
}
constexpr int64_t zero_gap_reaction_words(const HeaderVariables& h) {
  return h.num_zero_gap_guides < 1 ? 0 : section_words(times_32(3, h.num_zero_gap_guides));
}
constexpr int64_t pip_reaction_words(const HeaderVariables& h) {
  return h.num_pip_connections < 1 ? 0 : section_words(times_32(3, h.num_pip_connections));
}
constexpr int64_t clash_force_words(const HeaderVariables& h) {
  return h.num_clash_pairs < 1 ? 0 : section_words(times_32(2, h.num_clash_pairs));
}

}  // namespace tmrdar::results
