// Blocks 33 to 40 of a header: pipe-in-pipe connections, guide surfaces,
// panels, zero gap guides, installation criteria, floating bodies, vessels
// and the stinger.
#include <algorithm>
#include <array>
#include <string>

#include "core/chars/blank_padded.h"
#include "header/block_reading.h"

namespace tmrdar::header {

bool TIDE3_DATABASE_FILES::READ_CONTACT_BLOCKS(int32_t& flag) {
  HEADER_TABLES& t = TABLES;
  const std::array<int32_t, 8>& i = HEADER_INTS;
  const std::array<float, 8>& r = HEADER_REALS;
  constexpr WORDS I = WORDS::INTS;
  constexpr WORDS R = WORDS::REALS;
  int32_t status = 0;

  // Pipe-in-pipe: for each connection, one record of 2 integers a row.
  if (NUM_PIPE_IN_PIPE > 0) {
    const int64_t block = BLOCK_POSITION(33);
    const int64_t rows = t.PIP_DATA.EXTENT(1);
    for (int64_t c = 1; c <= t.PIP_DATA.EXTENT(3); ++c) {
      for (int64_t j = 1; j <= rows; ++j) {
        READ_RUNS(*this, RECORD_AT(block, (c - 1) * rows + j - 1), {{I, 2}}, status);
        if (status != 0) return HEADER_FAILURE("Unable to read pipe-in-pipe data from database header.", flag);
        t.PIP_DATA(j, 1, c) = i[0];
        t.PIP_DATA(j, 2, c) = i[1];
      }
    }
  }

  // Guide surfaces: a head of 3 records a surface (2 in the older formats),
  // of which only the first is read, for every surface; then a name field a
  // surface behind all heads.
  t.GUIDE_SURFACE_FLAG_COUNT = 0;
  if (NUM_GUIDE_SURFACES > 0) {
    const int64_t block = BLOCK_POSITION(34);
    const int64_t surfaces = t.GUIDE_SURFACE_IDS.EXTENT();
    const int64_t head = VERSION.GUIDE_SURFACE_HEAD_RECORDS;
    for (int64_t g = 1; g <= surfaces; ++g) {
      READ_RUNS(*this, RECORD_AT(block, head * (g - 1)), {{I, 1}, {R, 2}, {I, 3}, {R, 2}}, status);
      if (status != 0) return HEADER_FAILURE("Unable to read guide surface data from database header.", flag);
      t.GUIDE_SURFACE_IDS(g) = i[0];
      t.GUIDE_SURFACE_VALUES(g, 1) = r[0];
      t.GUIDE_SURFACE_VALUES(g, 2) = r[1];
      t.GUIDE_SURFACE_SWITCHES(g, 1) = i[1] == 1;
      t.GUIDE_SURFACE_SWITCHES(g, 2) = i[2] == 1;
      t.GUIDE_SURFACE_FLAGS(g) = i[3] == 1;
      if (i[3] == 1) ++t.GUIDE_SURFACE_FLAG_COUNT;
    }
    const int64_t names = RECORD_AT(block, head * surfaces);
    for (int64_t g = 1; g <= surfaces; ++g) {
      READ_NAME_FIELD(HEADER_FILE, RECORD_AT(names, 8 * (g - 1)), t.GUIDE_SURFACE_NAMES(g), status);
      if (status != 0) return HEADER_FAILURE("Unable to read guide surface names from database header.", flag);
    }
  }

  // Panels: 7 integers a record; words 5 and 7 are not kept.
  if (NUM_PANELS > 0) {
    const int64_t block = BLOCK_POSITION(35);
    for (int64_t p = 1; p <= t.PANEL_VALUES.EXTENT(); ++p) {
      READ_RUNS(*this, RECORD_AT(block, p - 1), {{I, 7}}, status);
      if (status != 0) return HEADER_FAILURE("Unable to read panel data from database header.", flag);
      t.PANEL_TABLE(p, 2) = i[0];
      t.PANEL_TABLE(p, 3) = i[1];
      t.PANEL_TABLE(p, 4) = i[2];
      t.PANEL_VALUES(p) = i[3];
      t.PANEL_TABLE(p, 1) = i[5];
    }
  }

  // Zero gap guides: an integer and 7 reals a record, of which the first two
  // words are kept.
  if (NUM_ZERO_GAP_GUIDES > 0) {
    const int64_t block = BLOCK_POSITION(36);
    for (int64_t z = 1; z <= t.ZERO_GAP_GUIDE_IDS.EXTENT(); ++z) {
      READ_RUNS(*this, RECORD_AT(block, z - 1), {{I, 1}, {R, 7}}, status);
      if (status != 0) return HEADER_FAILURE("Unable to read zero gap guide dimensions from database header.", flag);
      t.ZERO_GAP_GUIDE_IDS(z) = i[0];
      t.ZERO_GAP_GUIDE_VALUES(z) = r[0];
    }
  }

  // Installation criteria: a record of 5 settings, then 9 records a
  // criterion: an integer and 2 reals, and a name field.
  if (NUM_INSTALLATION_CRITERIA > 0) {
    constexpr std::string_view message = "Unable to read installation criteria data from database header.";
    const int64_t block = BLOCK_POSITION(37);
    READ_RUNS(*this, block, {{I, 5}}, status);
    if (status != 0) return HEADER_FAILURE(message, flag);
    std::copy_n(i.begin(), t.INSTALLATION_SETTINGS.size(), t.INSTALLATION_SETTINGS.begin());
    for (int64_t c = 1; c <= t.INSTALLATION_CRITERIA_IDS.EXTENT(); ++c) {
      const int64_t first = RECORD_AT(block, 1 + 9 * (c - 1));
      READ_RUNS(*this, first, {{I, 1}, {R, 2}}, status);
      if (status != 0) return HEADER_FAILURE(message, flag);
      t.INSTALLATION_CRITERIA_IDS(c) = i[0];
      t.INSTALLATION_CRITERIA_VALUE_1(c) = r[0];
      t.INSTALLATION_CRITERIA_VALUE_2(c) = r[1];
      READ_NAME_FIELD(HEADER_FILE, RECORD_AT(first, 1), t.INSTALLATION_CRITERIA_NAMES(c), status);
      if (status != 0) return HEADER_FAILURE(message, flag);
    }
  }

  // Floating bodies: 4 records a body, each read from its start: an integer,
  // 32 characters, a 64-bit real and an integer.
  if (NUM_FLOATING_BODIES > 0) {
    constexpr std::string_view message = "Unable to read floating body data from database header.";
    const int64_t block = BLOCK_POSITION(38);
    for (int64_t b = 1; b <= t.FLOATING_BODY_IDS.EXTENT(); ++b) {
      const int64_t first = RECORD_AT(block, 4 * (b - 1));
      READ_RUNS(*this, first, {{I, 1}}, status);
      if (status != 0) return HEADER_FAILURE(message, flag);
      t.FLOATING_BODY_IDS(b) = i[0];
      HEADER_FILE.READ_CHAR_AT(t.FLOATING_BODY_NAMES(b).SPAN(), RECORD_AT(first, 1), status);
      HEADER_FILE.READ_REAL8_AT(std::span(&t.FLOATING_BODY_VALUES(b), 1), RECORD_AT(first, 2), status);
      READ_RUNS(*this, RECORD_AT(first, 3), {{I, 1}}, status);
      if (status != 0) return HEADER_FAILURE(message, flag);
      t.FLOATING_BODY_CODES(b) = i[0];
    }
  }

  // Vessels: 9 records a vessel, of which the first 8 hold 32 characters of
  // the name each. Each piece joins the name as trimmed so far, so the blanks
  // that end a piece are lost and a piece of blanks leaves no trace; eight
  // full pieces make a name of the whole 256 characters.
  if (NUM_VESSELS > 0) {
    const int64_t block = BLOCK_POSITION(39);
    std::string name;
    std::array<char, 32> piece{};
    for (int64_t v = 1; v <= t.VESSEL_NAMES.EXTENT(); ++v) {
      name.clear();
      for (int64_t c = 0; c < 8; ++c) {
        piece.fill(' ');
        HEADER_FILE.READ_CHAR_AT(piece, RECORD_AT(block, 9 * (v - 1) + c), status);
        name.resize(chars::LEN_TRIM(name));
        name.append(piece.data(), piece.size());
      }
      if (status != 0) return HEADER_FAILURE("Unable to read vessel data from database header.", flag);
      t.VESSEL_NAMES(v).ASSIGN(name);
    }
  }

  // The stinger: 6 reals, read whether or not the model has a stinger.
  READ_RUNS(*this, BLOCK_POSITION(40), {{R, 6}}, status);
  if (status != 0) return HEADER_FAILURE("Unable to read stinger plane data from database header", flag);
  const auto stinger = static_cast<std::size_t>(std::min<int64_t>(t.STINGER_DATA.EXTENT(), 6));
  std::copy_n(r.begin(), stinger, t.STINGER_DATA.STORAGE().begin());
  return true;
}

}  // namespace tmrdar::header
