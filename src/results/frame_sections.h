// Where the sections of a step's frames begin, by the header's counts: the
// word just before a section, so that entry word k of the section is the
// section's start plus k. Sizes follow the single-precision record rule of
// a frame's sections, and products of two counts are formed in wrapping
// 32-bit integer arithmetic, as the frames were laid out.
#pragma once

#include <cstdint>

#include "header/result_frames.h"
#include "header/tide3_database_files.h"

namespace tmrdar::results {

using header::HEADER_VARIABLES;

// The files of a job as the word reads name them.
inline constexpr int32_t MOTION = 1;
inline constexpr int32_t FORCE = 2;

// a * b in 32-bit integer arithmetic that wraps.
constexpr int32_t TIMES_32(int32_t a, int32_t b) {
  return static_cast<int32_t>(static_cast<uint32_t>(a) * static_cast<uint32_t>(b));
}

// Words of a section of `n` words: whole records by the frame's rule.
constexpr int64_t SECTION_WORDS(int32_t n) { return 8 * header::SECTION_RECORDS(n); }

// Word k (from 1) of node i's entry in a nodal section: (i - 1) * DOFS + k.
constexpr int64_t NODE_WORD(const HEADER_VARIABLES& h, int64_t i, int64_t k) {
  return header::frame_words::ADD(header::frame_words::MUL(i - 1, h.DOFS_PER_NODE), k);
}

// The words of one nodal motion section (displacement, velocity or acceleration).
constexpr int64_t NODAL_WORDS(const HEADER_VARIABLES& h) {
  return SECTION_WORDS(TIMES_32(h.NUM_NODES, h.DOFS_PER_NODE));
}
// The guide surface, zero gap guide, node contact and clashing sections of a
// motion frame; a section of no guides or no pairs takes no words, the node
// contact section (7 or 8 words a node, by the format) always takes some.
constexpr int64_t GUIDE_WORDS(const HEADER_VARIABLES& h) {
  return h.NUM_GUIDE_SURFACES > 0 ? SECTION_WORDS(TIMES_32(9, h.NUM_GUIDE_SURFACES)) : 0;
}
constexpr int64_t ZERO_GAP_WORDS(const HEADER_VARIABLES& h) {
  return h.NUM_ZERO_GAP_GUIDES > 0 ? SECTION_WORDS(TIMES_32(6, h.NUM_ZERO_GAP_GUIDES)) : 0;
}
constexpr int64_t CONTACT_WORDS(const HEADER_VARIABLES& h) {
  return SECTION_WORDS(TIMES_32(h.NODE_CONTACT_WORDS, h.NUM_NODES));
}
constexpr int64_t CLASH_WORDS(const HEADER_VARIABLES& h) {
  return h.NUM_CLASH_PAIRS > 0 ? SECTION_WORDS(h.NUM_CLASH_PAIRS) : 0;
}

// The word behind the nodal motion sections of motion frame n.
constexpr int64_t MA(const HEADER_VARIABLES& h, int64_t n) {
  using namespace header::frame_words;
  const int64_t flags = int64_t{h.OUTPUT_FLAGS[0]} + h.OUTPUT_FLAGS[1] + h.OUTPUT_FLAGS[2];
  return ADD(header::MB(h, n), MUL(flags, NODAL_WORDS(h)));
}

// Records of one element section of a force frame: 3 words an element.
constexpr int64_t R3(const HEADER_VARIABLES& h) { return header::SECTION_RECORDS(TIMES_32(3, h.NUM_ELEMENTS)); }

// The word before the auxiliary node section of motion frame n: behind the
// guide surface, zero gap guide, node contact and clashing sections.
constexpr int64_t AUX_NODE_BASE(const HEADER_VARIABLES& h, int64_t n) {
  using header::frame_words::ADD;
  return ADD(ADD(ADD(ADD(MA(h, n), GUIDE_WORDS(h)), ZERO_GAP_WORDS(h)), CONTACT_WORDS(h)), CLASH_WORDS(h));
}

// Records of the reaction section of a force frame, one entry a boundary
// condition, and of the element pressure section, 6 words an element.
constexpr int64_t REACTION_RECORDS(const HEADER_VARIABLES& h) {
  return header::SECTION_RECORDS(TIMES_32(h.NUM_BOUNDARY_CONDITIONS, h.DOFS_PER_NODE));
}
constexpr int64_t PRESSURE_RECORDS(const HEADER_VARIABLES& h) {
  return header::SECTION_RECORDS(TIMES_32(6, h.NUM_ELEMENTS));
}

// The sections of a force frame ahead of its contact reactions: the ten
// element sections of flags 5 to 14, and the reactions of the boundary
// conditions under flag 4.
constexpr int64_t ELEMENT_FLAG_SUM(const HEADER_VARIABLES& h) {
  int64_t sum = 0;
  for (std::size_t k = 4; k < 14; ++k) sum += h.OUTPUT_FLAGS[k];
  return sum;
}
constexpr int64_t ELEMENT_FORCE_WORDS(const HEADER_VARIABLES& h) {
  return header::frame_words::MUL(8 * R3(h), ELEMENT_FLAG_SUM(h));
}
constexpr int64_t BOUNDARY_REACTION_WORDS(const HEADER_VARIABLES& h) {
  return header::frame_words::MUL(8 * REACTION_RECORDS(h), h.OUTPUT_FLAGS[3]);
}
// The contact sections of a force frame, 3 words an entry (2 a clash pair),
// as they stand when flag 4 is set; a section of no entries takes no words.
constexpr int64_t GUIDE_REACTION_WORDS(const HEADER_VARIABLES& h) {
  return h.NUM_GUIDE_SURFACES < 1 ? 0 : SECTION_WORDS(TIMES_32(3, h.NUM_GUIDE_SURFACES));
}
constexpr int64_t ZERO_GAP_REACTION_WORDS(const HEADER_VARIABLES& h) {
  return h.NUM_ZERO_GAP_GUIDES < 1 ? 0 : SECTION_WORDS(TIMES_32(3, h.NUM_ZERO_GAP_GUIDES));
}
constexpr int64_t PIP_REACTION_WORDS(const HEADER_VARIABLES& h) {
  return h.NUM_PIP_CONNECTIONS < 1 ? 0 : SECTION_WORDS(TIMES_32(3, h.NUM_PIP_CONNECTIONS));
}
constexpr int64_t CLASH_FORCE_WORDS(const HEADER_VARIABLES& h) {
  return h.NUM_CLASH_PAIRS < 1 ? 0 : SECTION_WORDS(TIMES_32(2, h.NUM_CLASH_PAIRS));
}

}  // namespace tmrdar::results
