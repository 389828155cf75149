// Blocks 33 to 40 of a header: pipe-in-pipe connections, guide surfaces,
// panels, zero gap guides, installation criteria, floating bodies, vessels
// and the stinger.
#include <algorithm>
#include <array>
#include <string>

#include "core/chars/blank_padded.h"
#include "header/block_reading.h"

namespace tmrdar::header {

bool FormatReader::read_contact_blocks(int32_t& flag) {
  HeaderTables& t = tables;
  const std::array<int32_t, 8>& i = header_ints;
  const std::array<float, 8>& r = header_reals;
  constexpr Words ints = Words::ints;
  constexpr Words reals = Words::reals;
  int32_t status = 0;

  // Pipe-in-pipe: for each connection, one record of 2 integers a row.
  if (num_pipe_in_pipe > 0) {
    constexpr Run two_ints[] = {{ints, 2}};
    // A table of no rows has none to read, whatever its connection count.
    const int64_t rows = t.pip_data.extent(2) == 2 ? t.pip_data.extent(1) : 0;
    const int64_t connections = rows > 0 ? t.pip_data.extent(3) : 0;
    const std::span<int32_t> stored = t.pip_data.storage();
    BlockRecords records(*this, block_position(33), rows * connections);
    for (int64_t c = 1; c <= connections; ++c) {
      for (int64_t j = 1; j <= rows; ++j) {
        const std::byte* r = records.record((c - 1) * rows + j - 1, two_ints);
        if (r == nullptr) return header_failure("Unable to read pipe-in-pipe data from database header.", flag);
        // Entry (j, w, c) of a table of rows x 2 x connections.
        stored[static_cast<std::size_t>((j - 1) + rows * (2 * (c - 1)))] = int_word(r, 1);
        stored[static_cast<std::size_t>((j - 1) + rows * (1 + 2 * (c - 1)))] = int_word(r, 2);
      }
    }
  }

  // Guide surfaces: a head of 3 records a surface (2 in the older formats),
  // of which only the first is read, for every surface; then a name field a
  // surface behind all heads.
  t.guide_surface_flag_count = 0;
  if (num_guide_surfaces > 0) {
    const int64_t block = block_position(34);
    const int64_t surfaces = t.guide_surface_ids.extent();
    const int64_t head = version.guide_surface_head_records;
    for (int64_t g = 1; g <= surfaces; ++g) {
      read_runs(*this, record_at(block, head * (g - 1)), {{ints, 1}, {reals, 2}, {ints, 3}, {reals, 2}}, status);
      if (status != 0) return header_failure("Unable to read guide surface data from database header.", flag);
      t.guide_surface_ids(g) = i[0];
      t.guide_surface_values(g, 1) = r[0];
      t.guide_surface_values(g, 2) = r[1];
      t.guide_surface_switches(g, 1) = i[1] == 1;
      t.guide_surface_switches(g, 2) = i[2] == 1;
      t.guide_surface_flags(g) = i[3] == 1;
      if (i[3] == 1) ++t.guide_surface_flag_count;
    }
    const int64_t names = record_at(block, head * surfaces);
    for (int64_t g = 1; g <= surfaces; ++g) {
      read_name_field(header_file, record_at(names, 8 * (g - 1)), t.guide_surface_names(g), status);
      if (status != 0) return header_failure("Unable to read guide surface names from database header.", flag);
    }
  }

  // Panels: 7 integers a record; words 5 and 7 are not kept.
  if (num_panels > 0) {
    const int64_t block = block_position(35);
    for (int64_t p = 1; p <= t.panel_values.extent(); ++p) {
      read_runs(*this, record_at(block, p - 1), {{ints, 7}}, status);
      if (status != 0) return header_failure("Unable to read panel data from database header.", flag);
      t.panel_table(p, 2) = i[0];
      t.panel_table(p, 3) = i[1];
      t.panel_table(p, 4) = i[2];
      t.panel_values(p) = i[3];
      t.panel_table(p, 1) = i[5];
    }
  }

  // Zero gap guides: an integer and 7 reals a record, of which the first two
  // words are kept.
  if (num_zero_gap_guides > 0) {
    const int64_t block = block_position(36);
    for (int64_t z = 1; z <= t.zero_gap_guide_ids.extent(); ++z) {
      read_runs(*this, record_at(block, z - 1), {{ints, 1}, {reals, 7}}, status);
      if (status != 0) return header_failure("Unable to read zero gap guide dimensions from database header.", flag);
      t.zero_gap_guide_ids(z) = i[0];
      t.zero_gap_guide_values(z) = r[0];
    }
  }

  // Installation criteria: a record of 5 settings, then 9 records a
  // criterion: an integer and 2 reals, and a name field.
  if (num_installation_criteria > 0) {
    constexpr std::string_view message = "Unable to read installation criteria data from database header.";
    const int64_t block = block_position(37);
    read_runs(*this, block, {{ints, 5}}, status);
    if (status != 0) return header_failure(message, flag);
    std::copy_n(i.begin(), t.installation_settings.size(), t.installation_settings.begin());
    for (int64_t c = 1; c <= t.installation_criteria_ids.extent(); ++c) {
      const int64_t first = record_at(block, 1 + 9 * (c - 1));
      read_runs(*this, first, {{ints, 1}, {reals, 2}}, status);
      if (status != 0) return header_failure(message, flag);
      t.installation_criteria_ids(c) = i[0];
      t.installation_criteria_value_1(c) = r[0];
      t.installation_criteria_value_2(c) = r[1];
      read_name_field(header_file, record_at(first, 1), t.installation_criteria_names(c), status);
      if (status != 0) return header_failure(message, flag);
    }
  }

  // Floating bodies: 4 records a body, each read from its start: an integer,
  // 32 characters, a 64-bit real and an integer.
  if (num_floating_bodies > 0) {
    constexpr std::string_view message = "Unable to read floating body data from database header.";
    const int64_t block = block_position(38);
    for (int64_t b = 1; b <= t.floating_body_ids.extent(); ++b) {
      const int64_t first = record_at(block, 4 * (b - 1));
      read_runs(*this, first, {{ints, 1}}, status);
      if (status != 0) return header_failure(message, flag);
      t.floating_body_ids(b) = i[0];
      header_file.read_char_at(t.floating_body_names(b).span(), record_at(first, 1), status);
      header_file.read_real8_at(std::span(&t.floating_body_values(b), 1), record_at(first, 2), status);
      read_runs(*this, record_at(first, 3), {{ints, 1}}, status);
      if (status != 0) return header_failure(message, flag);
      t.floating_body_codes(b) = i[0];
    }
  }

  // Vessels: 9 records a vessel, of which the first 8 hold 32 characters of
  // the name each. Each piece joins the name as trimmed so far, so the blanks
  // that end a piece are lost and a piece of blanks leaves no trace; eight
  // full pieces make a name of the whole 256 characters.
  if (num_vessels > 0) {
    const int64_t block = block_position(39);
    std::string name;
    std::array<char, 32> piece{};
    for (int64_t v = 1; v <= t.vessel_names.extent(); ++v) {
      name.clear();
      for (int64_t c = 0; c < 8; ++c) {
        piece.fill(' ');
        header_file.read_char_at(piece, record_at(block, 9 * (v - 1) + c), status);
        name.resize(chars::len_trim(name));
        name.append(piece.data(), piece.size());
      }
      if (status != 0) return header_failure("Unable to read vessel data from database header.", flag);
      t.vessel_names(v).assign(name);
    }
  }

  // The stinger: 6 reals, read whether or not the model has a stinger.
  read_runs(*this, block_position(40), {{reals, 6}}, status);
  if (status != 0) return header_failure("Unable to read stinger plane data from database header", flag);
  const auto stinger = static_cast<std::size_t>(std::min<int64_t>(t.stinger_data.extent(), 6));
  std::copy_n(r.begin(), stinger, t.stinger_data.storage().begin());
  return true;
}

}  // namespace tmrdar::header
