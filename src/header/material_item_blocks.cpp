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

constexpr std::string_view COUNTS_FAILURE = "Unable to read from database header.";
constexpr std::string_view MODELS_FAILURE = "Unable to allocate memory for plastic hardening models.";
constexpr std::string_view DAMPERS_FAILURE = "Unable to read damper elements from database header.";
constexpr std::string_view ITEMS_FAILURE = "Unable to allocate memory for seabed database header data.";

// The type of a binary item that carries a seabed file.
constexpr int32_t SEABED_ITEM_TYPE = 3;
constexpr int64_t ITEM_CHUNK_BYTES = 32;

// Records of a model's curve in block 50, 4 pairs a record: the product of
// the rows of its pair array and its points, in 32-bit arithmetic. A curve
// that fills its last record exactly still takes one record more.
int64_t CURVE_RECORDS(int32_t points, int32_t rows_ub) {
  const int64_t m = std::max(points, 1);
  return static_cast<int64_t>(static_cast<float>(m * rows_ub) * 0.125F) + 1;
}

// Records of the data of a binary item of `length` bytes behind its head, in
// 32-bit arithmetic: floor((length - 1) / 32) + 1, so an item of length 0
// has none. A negative length, which the rule would take backwards through
// the chain, has none either.
int64_t ITEM_RECORDS(int32_t length) {
  const float scaled = static_cast<float>(int64_t{length} - 1) * 0.03125F;
  return std::max<int64_t>(static_cast<int64_t>(std::floor(scaled)) + 1, 0);
}

}  // namespace

bool TIDE3_DATABASE_FILES::READ_MATERIAL_AND_ITEM_BLOCKS(int32_t& flag) {
  namespace PH = MOD_PLASTIC_HARDENING;
  // The older formats have none of blocks 48 to 51; one of them keeps
  // binary items in the last block of its address table.
  if (!VERSION.MATERIAL_BLOCKS) {
    return VERSION.ITEMS != BINARY_ITEMS::ADDRESS_TABLE_END || READ_BINARY_ITEMS(BLOCK_POSITION(VERSION.LAST_BLOCK), flag);
  }
  const std::array<int32_t, 8>& words = HEADER_INTS;
  const std::array<float, 8>& reals = HEADER_REALS;
  const int64_t file_records = FILE_RECORDS();
  int32_t status = 0;

  // Block 48: one record of 5 counts and flags.
  READ_RUNS(*this, BLOCK_POSITION(48), {{WORDS::INTS, 5}}, status);
  if (status != 0) return HEADER_FAILURE(COUNTS_FAILURE, flag);
  SHAPE_FUNCTION_FLAG = words[0];
  NUM_PLASTIC_HARDENING_MODELS = words[1];
  OUTPUT_FLAGS[17] = words[2];
  OUTPUT_FLAGS[18] = words[3];
  SHAPE_FUNCTION_ORDER = words[4];

  // Blocks 49 and 50: a head record a model, then the curves of all models
  // one after the other. Each model has one record in block 49.
  if (NUM_PLASTIC_HARDENING_MODELS > 0) {
    const int32_t count = NUM_PLASTIC_HARDENING_MODELS;
    TABLE<PH::T_PLASTIC_HARDENING>& models = TABLES.PLASTIC_HARDENING_MODELS;
    if (count > file_records || !models.ALLOCATE({count})) return HEADER_FAILURE(MODELS_FAILURE, flag);

    // The points of all curves stand 4 to a record, so together they cannot
    // outnumber four times the file's records.
    const int64_t heads = BLOCK_POSITION(49);
    int64_t all_points = 0;
    for (int32_t m = 1; m <= count; ++m) {
      READ_RUNS(*this, RECORD_AT(heads, m - 1), {{WORDS::INTS, 3}}, status);
      if (status != 0) return HEADER_FAILURE(MODELS_FAILURE, flag);
      const int32_t rule = words[1];
      const int32_t points = words[2];
      const int32_t pairs = std::max(points, 0);
      all_points += pairs;
      if (all_points > 4 * file_records) return HEADER_FAILURE(MODELS_FAILURE, flag);

      PH::T_PLASTIC_HARDENING& model = models(m);
      PH::PLASTIC_HARDENING_INIT(model);
      PH::ALLOCATE_DATA_PAIRS(model, pairs, status);
      if (status != 0) return HEADER_FAILURE(MODELS_FAILURE, flag);
      PH::SET_SCALARS_SUB(model, rule, PH::DEFAULT_KINEMATIC_SHARE, PH::DEFAULT_CURVE_TOLERANCE);
      model.NUM_POINTS = points;
    }

    // Each curve from the record where the one before it ended, the curves
    // together within as many records as the file holds. The pairs go in as
    // they come, 4 a record, until the model has all its points.
    const int64_t curves = BLOCK_POSITION(50);
    int64_t record = 0;
    for (int32_t m = 1; m <= count; ++m) {
      PH::T_PLASTIC_HARDENING& model = models(m);
      const int64_t records = CURVE_RECORDS(model.NUM_POINTS, model.DATA_ROWS_UB());
      if (records > file_records - record) return HEADER_FAILURE(MODELS_FAILURE, flag);
      int32_t point = 0;
      for (int64_t r = 0; r < records; ++r) {
        READ_RUNS(*this, RECORD_AT(curves, record + r), {{WORDS::REALS, 8}}, status);
        if (status != 0) return HEADER_FAILURE(MODELS_FAILURE, flag);
        for (std::size_t p = 0; p < 4 && point < model.NUM_POINTS; ++p) {
          ++point;
          PH::SET_DATA_ISO_SUB(model, point, static_cast<double>(reals[2 * p]),
                               static_cast<double>(reals[2 * p + 1]), status);
          if (status != 0) return HEADER_FAILURE(MODELS_FAILURE, flag);
        }
      }
      record += records;
    }
  }

  // Block 51: the damper elements, 8 to a record, as many as their table,
  // which the file backs, has room for.
  if (NUM_DAMPER_ELEMENTS > 0) {
    TABLE<int32_t>& dampers = TABLES.DAMPER_ELEMENTS;
    const int64_t block = BLOCK_POSITION(51);
    const int64_t count = std::min<int64_t>(NUM_DAMPER_ELEMENTS, dampers.EXTENT());
    for (int64_t i = 1; i <= count; ++i) {
      if (PACKED_PLACE(i) == 1) {
        READ_RUNS(*this, RECORD_AT(block, PACKED_RECORD(i)), {{WORDS::INTS, 8}}, status);
        if (status != 0) return HEADER_FAILURE(DAMPERS_FAILURE, flag);
      }
      dampers(i) = words[static_cast<std::size_t>(PACKED_PLACE(i) - 1)];
    }
  }

  return READ_BINARY_ITEMS(BLOCK_POSITION(52), flag);
}

// The binary items, each a head record of type, id and length in bytes
// followed by its data. An item whose data would reach past as many records
// as the file holds is refused; since every item takes its head record, so
// is a chain of more items than that.
bool TIDE3_DATABASE_FILES::READ_BINARY_ITEMS(int64_t block, int32_t& flag) {
  const std::array<int32_t, 8>& words = HEADER_INTS;
  const int64_t file_records = FILE_RECORDS();
  int32_t status = 0;
  if (NUM_BINARY_ITEMS > 0) {
    int64_t record = 0;
    for (int32_t item = 1; item <= NUM_BINARY_ITEMS; ++item) {
      READ_RUNS(*this, RECORD_AT(block, record), {{WORDS::INTS, 3}}, status);
      if (status != 0) return HEADER_FAILURE(ITEMS_FAILURE, flag);
      const int32_t type = words[0];
      const int32_t id = words[1];
      const int32_t length = words[2];
      record += 1;
      const int64_t records = ITEM_RECORDS(length);
      if (records > file_records - record) return HEADER_FAILURE(ITEMS_FAILURE, flag);

      if (type == SEABED_ITEM_TYPE) {
        // Whole chunks of 32 bytes, and a last one of what is left over.
        const int64_t left_over = length % ITEM_CHUNK_BYTES;
        const int64_t last_chunk = left_over == 0 ? ITEM_CHUNK_BYTES : left_over;
        std::array<char, ITEM_CHUNK_BYTES> chunk{};
        std::string bytes;
        try {
          for (int64_t r = 0; r < records; ++r) {
            const auto size = static_cast<std::size_t>(r + 1 < records ? ITEM_CHUNK_BYTES : last_chunk);
            HEADER_FILE.READ_CHAR_AT(std::span<char>(chunk.data(), size), RECORD_AT(block, record + r), status);
            if (status != 0) return HEADER_FAILURE(ITEMS_FAILURE, flag);
            bytes.append(chunk.data(), size);
          }
          SEABED_PROFILE.SET_DATA_BLOCK(bytes, type, id);
        } catch (const std::bad_alloc&) {
          return HEADER_FAILURE(ITEMS_FAILURE, flag);
        }
      }
      record += records;
    }
  }
  return true;
}

}  // namespace tmrdar::header
