#include "builder/model.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <string_view>
#include <type_traits>

namespace tmrdar::builder {
namespace {

// The records of one block under construction, counted from the block's
// first record; a record that nothing was written to stays zero.
class BLOCK {
 public:
  RECORD& AT(int64_t r) {
    if (r < 0) throw std::out_of_range("records of a block count from 0");
    if (static_cast<std::size_t>(r) >= records_.size()) records_.resize(static_cast<std::size_t>(r) + 1);
    return records_[static_cast<std::size_t>(r)];
  }

  // Text of up to `records` * 32 characters from record r on, 32 characters
  // a record, padded with blanks to the whole field.
  void TEXT(int64_t r, std::string_view text, int64_t records, const char* what) {
    const auto width = static_cast<std::size_t>(records) * NAME_CHUNK_BYTES;
    if (text.size() > width) {
      throw std::invalid_argument(std::string(what) + " has more than " + std::to_string(width) + " characters");
    }
    std::string field(text);
    field.resize(width, ' ');
    for (int64_t k = 0; k < records; ++k) {
      AT(r + k).CHARS(0,
                      std::string_view(field).substr(static_cast<std::size_t>(k) * NAME_CHUNK_BYTES, NAME_CHUNK_BYTES));
    }
  }
  // A name field: 8 records.
  void NAME(int64_t r, std::string_view name, const char* what) { TEXT(r, name, 8, what); }

  bool EMPTY() const { return records_.empty(); }
  std::vector<RECORD> TAKE() { return std::move(records_); }

 private:
  std::vector<RECORD> records_;
};

// Value i (from 1) of a list packed 8 to a record: its record (from 0), by
// the 64-bit rule of the layout, and its word (from 1).
int64_t LIST_RECORD(int64_t i) { return static_cast<int64_t>(static_cast<double>(i - 1) * 0.125); }
int LIST_WORD(int64_t i) { return static_cast<int>(i - 8 * LIST_RECORD(i)); }
// Pair i (from 1) of a list packed 4 pairs to a record: its record, and the
// word of its first value; the second stands in the word behind.
int64_t PAIR_RECORD(int64_t i) { return static_cast<int64_t>(static_cast<double>(i - 1) * 0.25); }
int PAIR_WORD(int64_t i) { return static_cast<int>(2 * (i - 4 * PAIR_RECORD(i)) - 1); }

int32_t COUNT_OF(std::size_t size) {
  if (size > static_cast<std::size_t>(std::numeric_limits<int32_t>::max())) {
    throw std::invalid_argument("a model list is longer than a count of the header can say");
  }
  return static_cast<int32_t>(size);
}

int32_t POINT_COUNT(const PLASTIC_HARDENING_MODEL& model) {
  return model.W3 != 0 ? model.W3 : COUNT_OF(model.POINTS.size());
}

template <typename ROW, typename WRITE>
std::vector<RECORD> ONE_RECORD_A_ROW(const std::vector<ROW>& rows, WRITE write) {
  std::vector<RECORD> records;
  records.reserve(rows.size());
  for (const ROW& row : rows) records.push_back(write(row));
  return records;
}

template <typename T, typename PUT>
std::vector<RECORD> PACKED_LIST(const std::vector<T>& values, PUT put) {
  BLOCK block;
  for (std::size_t k = 0; k < values.size(); ++k) {
    const auto i = static_cast<int64_t>(k) + 1;
    put(block.AT(LIST_RECORD(i)), LIST_WORD(i), values[k]);
  }
  return block.TAKE();
}

std::vector<RECORD> PACKED_INTS(const std::vector<int32_t>& values) {
  return PACKED_LIST(values, [](RECORD& record, int word, int32_t value) { record.INT(word, value); });
}

template <typename PAIR>
void PUT_PAIRS(BLOCK& block, const std::vector<PAIR>& pairs) {
  for (std::size_t k = 0; k < pairs.size(); ++k) {
    const auto i = static_cast<int64_t>(k) + 1;
    const int word = PAIR_WORD(i);
    RECORD& record = block.AT(PAIR_RECORD(i));
    if constexpr (std::is_same_v<PAIR, SEABED_POINT>) {
      record.REAL(word, pairs[k].FIRST).REAL(word + 1, pairs[k].SECOND);
    } else {
      record.REAL(word, pairs[k][0]).REAL(word + 1, pairs[k][1]);
    }
  }
}

std::vector<RECORD> ELEMENT_BLOCK(const std::vector<ELEMENT>& elements) {
  std::vector<RECORD> records;
  records.reserve(3 * elements.size());
  for (const ELEMENT& e : elements) {
    records.push_back(RECORD::INTS({e.FILE_NUMBER, e.USER_NUMBER, e.NODES[0], e.NODES[1]})
                          .REAL(5, e.LENGTH)
                          .REAL(6, e.A6)
                          .REAL(7, e.A7)
                          .INT(8, e.A8));
    records.push_back(RECORD::REALS({e.B1, e.B2, e.B3, e.B4}).INT(5, e.B5).REAL(6, e.B6).REAL(7, e.B7).REAL(8, e.B8));
    records.push_back(RECORD::REALS({e.C1}));
  }
  return records;
}

std::vector<RECORD> AUX_ELEMENT_BLOCK(const std::vector<AUX_ELEMENT>& elements) {
  std::vector<RECORD> records;
  records.reserve(2 * elements.size());
  for (const AUX_ELEMENT& e : elements) {
    records.push_back(
        RECORD::INTS({e.W1, e.NUMBER, e.NODES[0], e.NODES[1]}).REAL(5, e.R5).REAL(6, e.R6).REAL(7, e.R7).INT(8, e.W8));
    records.push_back(RECORD::INTS({e.W9, e.W10}));
  }
  return records;
}

// The points, four pairs a record, and the slope in word 5 of the record of
// the last point, which must not hold a third point.
std::vector<RECORD> SEABED_BLOCK(const SEABED_DATA& seabed) {
  BLOCK block;
  PUT_PAIRS(block, seabed.POINTS);
  if (seabed.SLOPE.has_value()) {
    const auto n = static_cast<int64_t>(seabed.POINTS.size());
    const int64_t last = n == 0 ? 0 : PAIR_RECORD(n);
    if (n > 0 && n - 4 * last >= 3) {
      throw std::invalid_argument("the seabed slope has no free word behind the last point");
    }
    block.AT(last).REAL(5, *seabed.SLOPE);
  }
  return block.TAKE();
}

// Sets back to back: a name field, the count, then one record a member.
std::vector<RECORD> SET_BLOCK(const std::vector<NAMED_SET>& sets) {
  BLOCK block;
  int64_t r = 0;
  for (const NAMED_SET& set : sets) {
    block.NAME(r, set.NAME, "a set name");
    block.AT(r + 8).INT(1, COUNT_OF(set.MEMBERS.size()));
    for (std::size_t m = 0; m < set.MEMBERS.size(); ++m) {
      block.AT(r + 9 + static_cast<int64_t>(m)).INT(1, set.MEMBERS[m]);
    }
    r += 9 + static_cast<int64_t>(set.MEMBERS.size());
  }
  return block.TAKE();
}

std::vector<RECORD> LABEL_BLOCK(const std::vector<LABEL>& labels) {
  BLOCK block;
  for (std::size_t l = 0; l < labels.size(); ++l) {
    const auto r = 9 * static_cast<int64_t>(l);
    block.NAME(r, labels[l].NAME, "a label name");
    block.AT(r + 8).INT(1, labels[l].NUMBER).INT(2, labels[l].KIND);
  }
  return block.TAKE();
}

// Each connection takes `rows` records, one a row.
std::vector<RECORD> PIPE_IN_PIPE_BLOCK(const std::vector<PIP_CONNECTION>& connections, int32_t rows) {
  BLOCK block;
  for (std::size_t c = 0; c < connections.size(); ++c) {
    if (connections[c].size() > static_cast<std::size_t>(std::max(rows, 0))) {
      throw std::invalid_argument("a pipe-in-pipe connection has more rows than each connection takes");
    }
    for (std::size_t j = 0; j < connections[c].size(); ++j) {
      block.AT(static_cast<int64_t>(c) * rows + static_cast<int64_t>(j))
          .INT(1, connections[c][j][0])
          .INT(2, connections[c][j][1]);
    }
  }
  return block.TAKE();
}

// The heads of all `count` surfaces, `heads` records each of which the first
// is written, then their names.
std::vector<RECORD> GUIDE_SURFACE_BLOCK(const std::vector<GUIDE_SURFACE>& surfaces, int32_t count, int32_t heads) {
  BLOCK block;
  const int64_t names = int64_t{heads} * count;
  for (std::size_t g = 0; g < surfaces.size(); ++g) {
    const GUIDE_SURFACE& s = surfaces[g];
    block.AT(heads * static_cast<int64_t>(g)) = RECORD::INTS({s.ID})
                                                .REAL(2, s.VALUES[0])
                                                .REAL(3, s.VALUES[1])
                                                .INT(4, s.SWITCHES[0])
                                                .INT(5, s.SWITCHES[1])
                                                .INT(6, s.FLAG)
                                                .REAL(7, s.W7_W8[0])
                                                .REAL(8, s.W7_W8[1]);
    block.NAME(names + 8 * static_cast<int64_t>(g), s.NAME, "a guide surface name");
  }
  return block.TAKE();
}

std::vector<RECORD> INSTALLATION_BLOCK(const INSTALLATION_DATA& installation) {
  BLOCK block;
  if (installation.CRITERIA.empty() && installation.SETTINGS == std::array<int32_t, 5>{}) return block.TAKE();
  RECORD& settings = block.AT(0);
  for (int w = 1; w <= 5; ++w) settings.INT(w, installation.SETTINGS[static_cast<std::size_t>(w - 1)]);
  for (std::size_t c = 0; c < installation.CRITERIA.size(); ++c) {
    const INSTALLATION_CRITERION& criterion = installation.CRITERIA[c];
    const int64_t r = 1 + 9 * static_cast<int64_t>(c);
    block.AT(r) = RECORD::INTS({criterion.ID}).REAL(2, criterion.VALUE_1).REAL(3, criterion.VALUE_2);
    block.NAME(r + 1, criterion.NAME, "an installation criterion name");
  }
  return block.TAKE();
}

std::vector<RECORD> FLOATING_BODY_BLOCK(const std::vector<FLOATING_BODY>& bodies) {
  BLOCK block;
  for (std::size_t b = 0; b < bodies.size(); ++b) {
    const auto r = 4 * static_cast<int64_t>(b);
    block.AT(r).INT(1, bodies[b].ID);
    block.TEXT(r + 1, bodies[b].NAME, 1, "a floating body name");
    block.AT(r + 2).REAL8(1, bodies[b].VALUE);
    block.AT(r + 3).INT(1, bodies[b].CODE);
  }
  return block.TAKE();
}

std::vector<RECORD> VESSEL_BLOCK(const std::vector<VESSEL>& vessels) {
  BLOCK block;
  for (std::size_t v = 0; v < vessels.size(); ++v) {
    const auto r = 9 * static_cast<int64_t>(v);
    for (std::size_t k = 0; k < VESSEL_NAME_CHUNKS; ++k) {
      block.TEXT(r + static_cast<int64_t>(k), vessels[v].NAME_CHUNKS[k], 1, "a chunk of a vessel name");
    }
    block.AT(r + 8);  // the record that ends a vessel
  }
  return block.TAKE();
}

// Block 49 (the heads) and block 50 (the points, each model from a new record).
void PLASTIC_HARDENING_BLOCKS(const std::vector<PLASTIC_HARDENING_MODEL>& models,
                              std::map<int32_t, std::vector<RECORD>>& blocks) {
  BLOCK points;
  int64_t r = 0;
  for (const PLASTIC_HARDENING_MODEL& model : models) {
    const int32_t w3 = POINT_COUNT(model);
    blocks[49].push_back(RECORD::INTS({model.W1, model.W2, w3}));
    const int64_t records = PLASTIC_HARDENING_RECORDS(w3);
    if (static_cast<int64_t>(model.POINTS.size()) > 4 * records) {
      throw std::invalid_argument("a plastic hardening model has more points than its records hold");
    }
    BLOCK own;
    PUT_PAIRS(own, model.POINTS);
    std::vector<RECORD> written = own.TAKE();
    for (std::size_t k = 0; k < written.size(); ++k) points.AT(r + static_cast<int64_t>(k)) = written[k];
    r += records;
    if (r > 0) points.AT(r - 1);  // the model's records stand whole, empty ones too
  }
  if (!points.EMPTY()) blocks[50] = points.TAKE();
}

// Items back to back: a head record, then the bytes 32 a record.
std::vector<RECORD> BINARY_ITEM_BLOCK(const std::vector<BINARY_ITEM>& items) {
  BLOCK block;
  int64_t r = 0;
  for (const BINARY_ITEM& item : items) {
    const int32_t length = COUNT_OF(item.BYTES.size());
    block.AT(r) = RECORD::INTS({item.TYPE, item.ID, length});
    const int64_t records = BINARY_DATA_RECORDS(length);
    const std::string_view bytes(item.BYTES);
    for (int64_t k = 0; k < records; ++k) {
      const auto first = static_cast<std::size_t>(k) * RECORD_BYTES;
      block.AT(r + 1 + k).CHARS(0, first < bytes.size() ? bytes.substr(first, RECORD_BYTES) : std::string_view());
    }
    r += 1 + records;
  }
  return block.TAKE();
}

}  // namespace

int64_t PLASTIC_HARDENING_RECORDS(int32_t w3) {
  const int32_t m = std::max(1, w3);
  return static_cast<int64_t>(static_cast<float>(int64_t{m} * 2) * 0.125F) + 1;
}

int64_t BINARY_DATA_RECORDS(int32_t length) {
  return static_cast<int64_t>(std::floor(static_cast<float>(int64_t{length} - 1) * 0.03125F)) + 1;
}

int64_t MODEL_PLASTIC_HARDENING_RECORDS(const MODEL& model) {
  int64_t records = 0;
  for (const PLASTIC_HARDENING_MODEL& m : model.PLASTIC_HARDENING_MODELS)
    records += PLASTIC_HARDENING_RECORDS(POINT_COUNT(m));
  return records;
}

int64_t MODEL_BINARY_DATA_RECORDS(const MODEL& model) {
  int64_t records = 0;
  for (const BINARY_ITEM& item : model.BINARY_ITEMS) records += 1 + BINARY_DATA_RECORDS(COUNT_OF(item.BYTES.size()));
  return records;
}

void COUNT_MODEL(const MODEL& m, header::HEADER_VARIABLES& run) {
  const auto count = [](int32_t& field, std::size_t size) {
    if (field == 0) field = COUNT_OF(size);
  };
  count(run.NUM_ELEMENTS, m.ELEMENTS.size());
  count(run.NUM_NONLINEAR_E_TABLES, m.NONLINEAR_E_TABLES.size());
  count(run.NUM_NODES, m.NODES.size());
  count(run.NUM_AUX_ELEMENTS, m.AUX_ELEMENTS.size());
  count(run.NUM_AUX_NODES, m.AUX_NODES.size());
  count(run.NUM_SEABED_POINTS, m.SEABED.POINTS.size());
  count(run.NUM_WAVE_HARMONICS, m.WAVE_HARMONICS.size());
  count(run.NUM_DSP_WAVE_HARMONICS, m.DSP_WAVE_HARMONICS.size());
  count(run.NUM_ELEMENT_SETS, m.ELEMENT_SETS.size());
  count(run.NUM_NODE_SETS, m.NODE_SETS.size());
  count(run.NUM_LABELS, m.LABELS.size());
  count(run.NUM_POINT_MASSES, m.POINT_MASSES.size());
  count(run.NUM_POINT_LOADS, m.POINT_LOADS.size());
  count(run.NUM_BOUNDARY_CONDITIONS, m.BOUNDARY_CONDITIONS.size());
  count(run.NUM_CURRENT_POINTS, m.CURRENT_PROFILE.size());
  count(run.NUM_PIPE_IN_PIPE, m.PIPE_IN_PIPE.size());
  std::size_t pip_rows = 0;
  for (const PIP_CONNECTION& connection : m.PIPE_IN_PIPE) pip_rows = std::max(pip_rows, connection.size());
  count(run.PIP_NODES_PER_PAIR, pip_rows);
  count(run.NUM_GUIDE_SURFACES, m.GUIDE_SURFACES.size());
  count(run.NUM_PANELS, m.PANELS.size());
  count(run.NUM_ZERO_GAP_GUIDES, m.ZERO_GAP_GUIDES.size());
  count(run.NUM_INSTALLATION_CRITERIA, m.INSTALLATION.CRITERIA.size());
  count(run.NUM_FLOATING_BODIES, m.FLOATING_BODIES.size());
  count(run.NUM_VESSELS, m.VESSELS.size());
  count(run.NUM_TARGET_SPECTRUM_INTERVALS, m.TARGET_SPECTRUM.empty() ? 0 : m.TARGET_SPECTRUM.size() - 1);
  count(run.NUM_PLASTIC_HARDENING_MODELS, m.PLASTIC_HARDENING_MODELS.size());
  count(run.NUM_DAMPER_ELEMENTS, m.DAMPER_ELEMENTS.size());
  count(run.NUM_BINARY_ITEMS, m.BINARY_ITEMS.size());
}

std::map<int32_t, std::vector<RECORD>> MODEL_BLOCKS(const MODEL& m, const header::HEADER_VARIABLES& run,
                                                    const FORMAT_LAYOUT& layout) {
  std::map<int32_t, std::vector<RECORD>> blocks;
  blocks[16] = ELEMENT_BLOCK(m.ELEMENTS);
  blocks[17] = ONE_RECORD_A_ROW(m.ELEMENTS, [](const ELEMENT& e) {
    return RECORD::INTS({e.MATERIAL_1, e.MATERIAL_2}).REAL(3, e.MATERIAL_3).INT(4, e.MATERIAL_4);
  });
  blocks[18] = ONE_RECORD_A_ROW(m.NONLINEAR_E_TABLES, [](const NONLINEAR_E_ROW& row) {
    return RECORD::INTS({row.CURVE, row.POINTS}).REAL(3, row.VALUE_1).REAL(4, row.VALUE_2);
  });
  blocks[19] = ONE_RECORD_A_ROW(m.NODES, [](const NODE& n) {
    return RECORD::INTS({n.FILE_NUMBER})
        .REAL(2, n.X)
        .REAL(3, n.Y)
        .REAL(4, n.Z)
        .INT(5, n.USER_NUMBER)
        .INT(6, n.BOUNDARY_SLOT);
  });
  blocks[20] = AUX_ELEMENT_BLOCK(m.AUX_ELEMENTS);
  blocks[21] = ONE_RECORD_A_ROW(
      m.AUX_NODES, [](const AUX_NODE& n) { return RECORD::INTS({n.NUMBER}).REAL(2, n.X).REAL(3, n.Y).REAL(4, n.Z); });
  blocks[22] = SEABED_BLOCK(m.SEABED);
  const auto harmonic = [](const WAVE_HARMONIC& h) { return RECORD::REALS({h[0], h[1], h[2], h[3], h[4]}); };
  blocks[23] = ONE_RECORD_A_ROW(m.WAVE_HARMONICS, harmonic);
  blocks[24] = ONE_RECORD_A_ROW(m.DSP_WAVE_HARMONICS, harmonic);
  blocks[25] =
      PACKED_LIST(m.CONTACT_DIAMETERS, [](RECORD& record, int word, float value) { record.REAL(word, value); });
  blocks[26] = SET_BLOCK(m.ELEMENT_SETS);
  blocks[27] = SET_BLOCK(m.NODE_SETS);
  blocks[28] = LABEL_BLOCK(m.LABELS);
  blocks[29] = PACKED_INTS(m.POINT_MASSES);
  blocks[30] = ONE_RECORD_A_ROW(m.POINT_LOADS, [](const POINT_LOAD& load) {
    return RECORD::INTS({load.W1, load.W2}).REAL(3, load.W3);
  });
  blocks[31] = PACKED_INTS(m.BOUNDARY_CONDITIONS);
  blocks[32] = ONE_RECORD_A_ROW(m.CURRENT_PROFILE, [](const CURRENT_ROW& row) {
    return RECORD::REALS({row[0], row[1], row[2]});
  });
  blocks[33] = PIPE_IN_PIPE_BLOCK(m.PIPE_IN_PIPE, run.PIP_NODES_PER_PAIR);
  blocks[34] = GUIDE_SURFACE_BLOCK(m.GUIDE_SURFACES, run.NUM_GUIDE_SURFACES, layout.GUIDE_SURFACE_HEAD_RECORDS);
  blocks[35] = ONE_RECORD_A_ROW(m.PANELS, [](const PANEL& p) {
    return RECORD::INTS({p[0], p[1], p[2], p[3], p[4], p[5], p[6]});
  });
  blocks[36] = ONE_RECORD_A_ROW(m.ZERO_GAP_GUIDES, [](const ZERO_GAP_GUIDE& g) {
    RECORD record = RECORD::INTS({g.ID});
    for (int w = 2; w <= 8; ++w) record.REAL(w, g.VALUES[static_cast<std::size_t>(w - 2)]);
    return record;
  });
  blocks[37] = INSTALLATION_BLOCK(m.INSTALLATION);
  blocks[38] = FLOATING_BODY_BLOCK(m.FLOATING_BODIES);
  blocks[39] = VESSEL_BLOCK(m.VESSELS);
  const std::array<float, 6>& s = m.STINGER;
  blocks[40] = {RECORD::REALS({s[0], s[1], s[2], s[3], s[4], s[5]})};
  BLOCK spectrum;
  PUT_PAIRS(spectrum, m.TARGET_SPECTRUM);
  blocks[41] = spectrum.TAKE();
  PLASTIC_HARDENING_BLOCKS(m.PLASTIC_HARDENING_MODELS, blocks);
  blocks[51] = PACKED_INTS(m.DAMPER_ELEMENTS);
  blocks[52] = BINARY_ITEM_BLOCK(m.BINARY_ITEMS);

  // A block with nothing to say is left to the zeros of the file, and one
  // that the format does not keep is left out.
  std::erase_if(blocks, [&layout](const auto& block) {
    return block.second.empty() || !HOLDS_ROWS(layout, block.first);
  });
  return blocks;
}

}  // namespace tmrdar::builder
