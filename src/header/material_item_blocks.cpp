// Blocks 48 to 52 of a header: the shape function and plastic hardening
// counts, the plastic hardening models with their curves, the damper elements
// and the chain of binary items, of which a seabed file is kept.
//
// Every count here comes from the file. None may ask for more than the file
// can hold: a model count, a curve or an item that could not stand in the
// file's records is refused as a failed allocation would be, before any
// memory is sized by it, and every walk through a block stays within as many
// records as the file has.
#include <algorithm>
#include <array>
#include <cmath>
#include <new>
#include <span>
#include <string>

#include "header/block_reading.h"
#include "plastic_hardening/plastic_hardening.h"

namespace tmrdar::header {
namespace {

constexpr std::string_view counts_failure = "Unable to read from database header.";
constexpr std::string_view models_failure = "Unable to allocate memory for plastic hardening models.";
constexpr std::string_view dampers_failure = "Unable to read damper elements from database header.";
constexpr std::string_view items_failure = "Unable to allocate memory for seabed database header data.";

// The type of a binary item that carries a seabed file.
constexpr int32_t seabed_item_type = 3;
constexpr int64_t item_chunk_bytes = 32;

// Records of a model's curve in block 50, 4 pairs a record: the product of
// the rows of its pair array and its points, in 32-bit arithmetic. A curve
// that fills its last record exactly still takes one record more.
int64_t curve_records(int32_t points, int32_t rows_ub) {
  const int64_t m = std::max(points, 1);
  return static_cast<int64_t>(static_cast<float>(m * rows_ub) * 0.125F) + 1;
}

// Records of the data of a binary item of `length` bytes behind its head, in
// 32-bit arithmetic: floor((length - 1) / 32) + 1, so an item of length 0
// has none. A negative length, which the rule would take backwards through
// the chain, has none either.
int64_t item_records(int32_t length) {
  const float scaled = static_cast<float>(int64_t{length} - 1) * 0.03125F;
  return std::max<int64_t>(static_cast<int64_t>(std::floor(scaled)) + 1, 0);
}

}  // namespace

bool FormatReader::read_material_and_item_blocks(int32_t& flag) {
  namespace ph = plastic_hardening;
  // The older formats have none of blocks 48 to 51; one of them keeps
  // binary items in the last block of its address table.
  if (!version.material_blocks) {
    return version.items != BinaryItems::address_table_end || read_binary_items(block_position(version.last_block), flag);
  }
  const std::array<int32_t, 8>& words = header_ints;
  const std::array<float, 8>& reals = header_reals;
  const int64_t records_in_file = file_records();
  int32_t status = 0;

  // Block 48: one record of 5 counts and flags.
  read_runs(*this, block_position(48), {{Words::ints, 5}}, status);
  if (status != 0) return header_failure(counts_failure, flag);
  shape_function_flag = words[0];
  num_plastic_hardening_models = words[1];
  output_flags[17] = words[2];
  output_flags[18] = words[3];
  shape_function_order = words[4];

  // Blocks 49 and 50: a head record a model, then the curves of all models
  // one after the other. Each model has one record in block 49.
  if (num_plastic_hardening_models > 0) {
    const int32_t count = num_plastic_hardening_models;
    Table<ph::PlasticHardening>& models = tables.plastic_hardening_models;
    if (count > records_in_file || !models.allocate({count})) return header_failure(models_failure, flag);

    // The points of all curves stand 4 to a record, so together they cannot
    // outnumber four times the file's records.
    const int64_t heads = block_position(49);
    int64_t all_points = 0;
    for (int32_t m = 1; m <= count; ++m) {
      read_runs(*this, record_at(heads, m - 1), {{Words::ints, 3}}, status);
      if (status != 0) return header_failure(models_failure, flag);
      const int32_t rule = words[1];
      const int32_t points = words[2];
      const int32_t pairs = std::max(points, 0);
      all_points += pairs;
      if (all_points > 4 * records_in_file) return header_failure(models_failure, flag);

      ph::PlasticHardening& model = models(m);
      ph::plastic_hardening_init(model);
      ph::allocate_data_pairs(model, pairs, status);
      if (status != 0) return header_failure(models_failure, flag);
      ph::set_scalars_sub(model, rule, ph::default_kinematic_share, ph::default_curve_tolerance);
      model.num_points = points;
    }

    // Each curve from the record where the one before it ended, the curves
    // together within as many records as the file holds. The pairs go in as
    // they come, 4 a record, until the model has all its points.
    const int64_t curves = block_position(50);
    int64_t record = 0;
    for (int32_t m = 1; m <= count; ++m) {
      ph::PlasticHardening& model = models(m);
      const int64_t records = curve_records(model.num_points, model.data_rows_ub());
      if (records > records_in_file - record) return header_failure(models_failure, flag);
      int32_t point = 0;
      for (int64_t r = 0; r < records; ++r) {
        read_runs(*this, record_at(curves, record + r), {{Words::reals, 8}}, status);
        if (status != 0) return header_failure(models_failure, flag);
        for (std::size_t p = 0; p < 4 && point < model.num_points; ++p) {
          ++point;
          ph::set_data_iso_sub(model, point, static_cast<double>(reals[2 * p]),
                               static_cast<double>(reals[2 * p + 1]), status);
          if (status != 0) return header_failure(models_failure, flag);
        }
      }
      record += records;
    }
  }

  // Block 51: the damper elements, 8 to a record, as many as their table,
  // which the file backs, has room for.
  if (num_damper_elements > 0) {
    Table<int32_t>& dampers = tables.damper_elements;
    const int64_t block = block_position(51);
    const int64_t count = std::min<int64_t>(num_damper_elements, dampers.extent());
    for (int64_t i = 1; i <= count; ++i) {
      if (packed_place(i) == 1) {
        read_runs(*this, record_at(block, packed_record(i)), {{Words::ints, 8}}, status);
        if (status != 0) return header_failure(dampers_failure, flag);
      }
      dampers(i) = words[static_cast<std::size_t>(packed_place(i) - 1)];
    }
  }

  return read_binary_items(block_position(52), flag);
}

// The binary items, each a head record of type, id and length in bytes
// followed by its data. An item whose data would reach past as many records
// as the file holds is refused; since every item takes its head record, so
// is a chain of more items than that.
bool FormatReader::read_binary_items(int64_t block, int32_t& flag) {
  const std::array<int32_t, 8>& words = header_ints;
  const int64_t records_in_file = file_records();
  int32_t status = 0;
  if (num_binary_items > 0) {
    int64_t record = 0;
    for (int32_t item = 1; item <= num_binary_items; ++item) {
      read_runs(*this, record_at(block, record), {{Words::ints, 3}}, status);
      if (status != 0) return header_failure(items_failure, flag);
      const int32_t type = words[0];
      const int32_t id = words[1];
      const int32_t length = words[2];
      record += 1;
      const int64_t records = item_records(length);
      if (records > records_in_file - record) return header_failure(items_failure, flag);

      if (type == seabed_item_type) {
        // Whole chunks of 32 bytes, and a last one of what is left over.
        const int64_t left_over = length % item_chunk_bytes;
        const int64_t last_chunk = left_over == 0 ? item_chunk_bytes : left_over;
        std::array<char, item_chunk_bytes> chunk{};
        std::string bytes;
        try {
          for (int64_t r = 0; r < records; ++r) {
            const auto size = static_cast<std::size_t>(r + 1 < records ? item_chunk_bytes : last_chunk);
            header_file.read_char_at(std::span<char>(chunk.data(), size), record_at(block, record + r), status);
            if (status != 0) return header_failure(items_failure, flag);
            bytes.append(chunk.data(), size);
          }
          seabed_profile.set_data_block(bytes, type, id);
        } catch (const std::bad_alloc&) {
          return header_failure(items_failure, flag);
        }
      }
      record += records;
    }
  }
  return true;
}

}  // namespace tmrdar::header
