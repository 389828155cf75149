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
class Block {
 public:
  Record& at(int64_t r) {
    if (r < 0) throw std::out_of_range("records of a block count from 0");
    if (static_cast<std::size_t>(r) >= records_.size()) records_.resize(static_cast<std::size_t>(r) + 1);
    return records_[static_cast<std::size_t>(r)];
  }

  // Text of up to `records` * 32 characters from record r on, 32 characters
  // a record, padded with blanks to the whole field.
  void text(int64_t r, std::string_view text, int64_t records, const char* what) {
    const auto width = static_cast<std::size_t>(records) * name_chunk_bytes;
    if (text.size() > width) {
      throw std::invalid_argument(std::string(what) + " has more than " + std::to_string(width) + " characters");
    }
    std::string field(text);
    field.resize(width, ' ');
    for (int64_t k = 0; k < records; ++k) {
      at(r + k).chars(0,
                      std::string_view(field).substr(static_cast<std::size_t>(k) * name_chunk_bytes, name_chunk_bytes));
    }
  }
  // A name field: 8 records.
  void name(int64_t r, std::string_view name, const char* what) { text(r, name, 8, what); }

  bool empty() const { return records_.empty(); }
  std::vector<Record> take() { return std::move(records_); }

 private:
  std::vector<Record> records_;
};

// Value i (from 1) of a list packed 8 to a record: its record (from 0), by
// the 64-bit rule of the layout, and its word (from 1).
int64_t list_record(int64_t i) { return static_cast<int64_t>(static_cast<double>(i - 1) * 0.125); }
int list_word(int64_t i) { return static_cast<int>(i - 8 * list_record(i)); }
// Pair i (from 1) of a list packed 4 pairs to a record: its record, and the
// word of its first value; the second stands in the word behind.
int64_t pair_record(int64_t i) { return static_cast<int64_t>(static_cast<double>(i - 1) * 0.25); }
int pair_word(int64_t i) { return static_cast<int>(2 * (i - 4 * pair_record(i)) - 1); }

int32_t count_of(std::size_t size) {
  if (size > static_cast<std::size_t>(std::numeric_limits<int32_t>::max())) {
    throw std::invalid_argument("a model list is longer than a count of the header can say");
  }
  return static_cast<int32_t>(size);
}

int32_t point_count(const PlasticHardeningModel& model) {
  return model.w3 != 0 ? model.w3 : count_of(model.points.size());
}

template <typename Row, typename Write>
std::vector<Record> one_record_a_row(const std::vector<Row>& rows, Write write) {
  std::vector<Record> records;
  records.reserve(rows.size());
  for (const Row& row : rows) records.push_back(write(row));
  return records;
}

template <typename T, typename Put>
std::vector<Record> packed_list(const std::vector<T>& values, Put put) {
  Block block;
  for (std::size_t k = 0; k < values.size(); ++k) {
    const auto i = static_cast<int64_t>(k) + 1;
    put(block.at(list_record(i)), list_word(i), values[k]);
  }
  return block.take();
}

std::vector<Record> packed_ints(const std::vector<int32_t>& values) {
  return packed_list(values, [](Record& record, int word, int32_t value) { record.integer(word, value); });
}

template <typename Pair>
void put_pairs(Block& block, const std::vector<Pair>& pairs) {
  for (std::size_t k = 0; k < pairs.size(); ++k) {
    const auto i = static_cast<int64_t>(k) + 1;
    const int word = pair_word(i);
    Record& record = block.at(pair_record(i));
    if constexpr (std::is_same_v<Pair, SeabedPoint>) {
      record.real(word, pairs[k].first).real(word + 1, pairs[k].second);
    } else {
      record.real(word, pairs[k][0]).real(word + 1, pairs[k][1]);
    }
  }
}

std::vector<Record> element_block(const std::vector<Element>& elements) {
  std::vector<Record> records;
  records.reserve(3 * elements.size());
  for (const Element& e : elements) {
    records.push_back(Record::ints({e.file_number, e.user_number, e.nodes[0], e.nodes[1]})
                          .real(5, e.length)
                          .real(6, e.a6)
                          .real(7, e.a7)
                          .integer(8, e.a8));
    records.push_back(Record::reals({e.b1, e.b2, e.b3, e.b4}).integer(5, e.b5).real(6, e.b6).real(7, e.b7).real(8, e.b8));
    records.push_back(Record::reals({e.c1}));
  }
  return records;
}

std::vector<Record> aux_element_block(const std::vector<AuxElement>& elements) {
  std::vector<Record> records;
  records.reserve(2 * elements.size());
  for (const AuxElement& e : elements) {
    records.push_back(
        Record::ints({e.w1, e.number, e.nodes[0], e.nodes[1]}).real(5, e.r5).real(6, e.r6).real(7, e.r7).integer(8, e.w8));
    records.push_back(Record::ints({e.w9, e.w10}));
  }
  return records;
}

// The points, four pairs a record, and the slope in word 5 of the record of
// the last point, which must not hold a third point.
std::vector<Record> seabed_block(const SeabedData& seabed) {
  Block block;
  put_pairs(block, seabed.points);
  if (seabed.slope.has_value()) {
    const auto n = static_cast<int64_t>(seabed.points.size());
    const int64_t last = n == 0 ? 0 : pair_record(n);
    if (n > 0 && n - 4 * last >= 3) {
      throw std::invalid_argument("the seabed slope has no free word behind the last point");
    }
    block.at(last).real(5, *seabed.slope);
  }
  return block.take();
}

// Sets back to back: a name field, the count, then one record a member.
std::vector<Record> set_block(const std::vector<NamedSet>& sets) {
  Block block;
  int64_t r = 0;
  for (const NamedSet& set : sets) {
    block.name(r, set.name, "a set name");
    block.at(r + 8).integer(1, count_of(set.members.size()));
    for (std::size_t m = 0; m < set.members.size(); ++m) {
      block.at(r + 9 + static_cast<int64_t>(m)).integer(1, set.members[m]);
    }
    r += 9 + static_cast<int64_t>(set.members.size());
  }
  return block.take();
}

std::vector<Record> label_block(const std::vector<Label>& labels) {
  Block block;
  for (std::size_t l = 0; l < labels.size(); ++l) {
    const auto r = 9 * static_cast<int64_t>(l);
    block.name(r, labels[l].name, "a label name");
    block.at(r + 8).integer(1, labels[l].number).integer(2, labels[l].kind);
  }
  return block.take();
}

// Each connection takes `rows` records, one a row.
std::vector<Record> pipe_in_pipe_block(const std::vector<PipConnection>& connections, int32_t rows) {
  Block block;
  for (std::size_t c = 0; c < connections.size(); ++c) {
    if (connections[c].size() > static_cast<std::size_t>(std::max(rows, 0))) {
      throw std::invalid_argument("a pipe-in-pipe connection has more rows than each connection takes");
    }
    for (std::size_t j = 0; j < connections[c].size(); ++j) {
      block.at(static_cast<int64_t>(c) * rows + static_cast<int64_t>(j))
          .integer(1, connections[c][j][0])
          .integer(2, connections[c][j][1]);
    }
  }
  return block.take();
}

// The heads of all `count` surfaces, `heads` records each of which the first
// is written, then their names.
std::vector<Record> guide_surface_block(const std::vector<GuideSurface>& surfaces, int32_t count, int32_t heads) {
  Block block;
  const int64_t names = int64_t{heads} * count;
  for (std::size_t g = 0; g < surfaces.size(); ++g) {
    const GuideSurface& s = surfaces[g];
    block.at(heads * static_cast<int64_t>(g)) = Record::ints({s.id})
                                                .real(2, s.values[0])
                                                .real(3, s.values[1])
                                                .integer(4, s.switches[0])
                                                .integer(5, s.switches[1])
                                                .integer(6, s.flag)
                                                .real(7, s.w7_w8[0])
                                                .real(8, s.w7_w8[1]);
    block.name(names + 8 * static_cast<int64_t>(g), s.name, "a guide surface name");
  }
  return block.take();
}

std::vector<Record> installation_block(const InstallationData& installation) {
  Block block;
  if (installation.criteria.empty() && installation.settings == std::array<int32_t, 5>{}) return block.take();
  Record& settings = block.at(0);
  for (int w = 1; w <= 5; ++w) settings.integer(w, installation.settings[static_cast<std::size_t>(w - 1)]);
  for (std::size_t c = 0; c < installation.criteria.size(); ++c) {
    const InstallationCriterion& criterion = installation.criteria[c];
    const int64_t r = 1 + 9 * static_cast<int64_t>(c);
    block.at(r) = Record::ints({criterion.id}).real(2, criterion.value_1).real(3, criterion.value_2);
    block.name(r + 1, criterion.name, "an installation criterion name");
  }
  return block.take();
}

std::vector<Record> floating_body_block(const std::vector<FloatingBody>& bodies) {
  Block block;
  for (std::size_t b = 0; b < bodies.size(); ++b) {
    const auto r = 4 * static_cast<int64_t>(b);
    block.at(r).integer(1, bodies[b].id);
    block.text(r + 1, bodies[b].name, 1, "a floating body name");
    block.at(r + 2).real8(1, bodies[b].value);
    block.at(r + 3).integer(1, bodies[b].code);
  }
  return block.take();
}

std::vector<Record> vessel_block(const std::vector<Vessel>& vessels) {
  Block block;
  for (std::size_t v = 0; v < vessels.size(); ++v) {
    const auto r = 9 * static_cast<int64_t>(v);
    for (std::size_t k = 0; k < vessel_name_chunks; ++k) {
      block.text(r + static_cast<int64_t>(k), vessels[v].name_chunks[k], 1, "a chunk of a vessel name");
    }
    block.at(r + 8);  // the record that ends a vessel
  }
  return block.take();
}

// Block 49 (the heads) and block 50 (the points, each model from a new record).
void plastic_hardening_blocks(const std::vector<PlasticHardeningModel>& models,
                              std::map<int32_t, std::vector<Record>>& blocks) {
  Block points;
  int64_t r = 0;
  for (const PlasticHardeningModel& model : models) {
    const int32_t w3 = point_count(model);
    blocks[49].push_back(Record::ints({model.w1, model.w2, w3}));
    const int64_t records = plastic_hardening_records(w3);
    if (static_cast<int64_t>(model.points.size()) > 4 * records) {
      throw std::invalid_argument("a plastic hardening model has more points than its records hold");
    }
    Block own;
    put_pairs(own, model.points);
    std::vector<Record> written = own.take();
    for (std::size_t k = 0; k < written.size(); ++k) points.at(r + static_cast<int64_t>(k)) = written[k];
    r += records;
    if (r > 0) points.at(r - 1);  // the model's records stand whole, empty ones too
  }
  if (!points.empty()) blocks[50] = points.take();
}

// Items back to back: a head record, then the bytes 32 a record.
std::vector<Record> binary_item_block(const std::vector<BinaryItem>& items) {
  Block block;
  int64_t r = 0;
  for (const BinaryItem& item : items) {
    const int32_t length = count_of(item.bytes.size());
    block.at(r) = Record::ints({item.type, item.id, length});
    const int64_t records = binary_data_records(length);
    const std::string_view bytes(item.bytes);
    for (int64_t k = 0; k < records; ++k) {
      const auto first = static_cast<std::size_t>(k) * record_bytes;
      block.at(r + 1 + k).chars(0, first < bytes.size() ? bytes.substr(first, record_bytes) : std::string_view());
    }
    r += 1 + records;
  }
  return block.take();
}

}  // namespace

int64_t plastic_hardening_records(int32_t w3) {
  const int32_t m = std::max(1, w3);
  return static_cast<int64_t>(static_cast<float>(int64_t{m} * 2) * 0.125F) + 1;
}

int64_t binary_data_records(int32_t length) {
  return static_cast<int64_t>(std::floor(static_cast<float>(int64_t{length} - 1) * 0.03125F)) + 1;
}

int64_t model_plastic_hardening_records(const Model& model) {
  int64_t records = 0;
  for (const PlasticHardeningModel& m : model.plastic_hardening_models)
    records += plastic_hardening_records(point_count(m));
  return records;
}

int64_t model_binary_data_records(const Model& model) {
  int64_t records = 0;
  for (const BinaryItem& item : model.binary_items) records += 1 + binary_data_records(count_of(item.bytes.size()));
  return records;
}

void count_model(const Model& m, header::HeaderVariables& run) {
  const auto count = [](int32_t& field, std::size_t size) {
    if (field == 0) field = count_of(size);
  };
  count(run.num_elements, m.elements.size());
  count(run.num_nonlinear_e_tables, m.nonlinear_e_tables.size());
  count(run.num_nodes, m.nodes.size());
  count(run.num_aux_elements, m.aux_elements.size());
  count(run.num_aux_nodes, m.aux_nodes.size());
  count(run.num_seabed_points, m.seabed.points.size());
  count(run.num_wave_harmonics, m.wave_harmonics.size());
  count(run.num_dsp_wave_harmonics, m.dsp_wave_harmonics.size());
  count(run.num_element_sets, m.element_sets.size());
  count(run.num_node_sets, m.node_sets.size());
  count(run.num_labels, m.labels.size());
  count(run.num_point_masses, m.point_masses.size());
  count(run.num_point_loads, m.point_loads.size());
  count(run.num_boundary_conditions, m.boundary_conditions.size());
  count(run.num_current_points, m.current_profile.size());
  count(run.num_pipe_in_pipe, m.pipe_in_pipe.size());
  std::size_t pip_rows = 0;
  for (const PipConnection& connection : m.pipe_in_pipe) pip_rows = std::max(pip_rows, connection.size());
  count(run.pip_nodes_per_pair, pip_rows);
  count(run.num_guide_surfaces, m.guide_surfaces.size());
  count(run.num_panels, m.panels.size());
  count(run.num_zero_gap_guides, m.zero_gap_guides.size());
  count(run.num_installation_criteria, m.installation.criteria.size());
  count(run.num_floating_bodies, m.floating_bodies.size());
  count(run.num_vessels, m.vessels.size());
  count(run.num_target_spectrum_intervals, m.target_spectrum.empty() ? 0 : m.target_spectrum.size() - 1);
  count(run.num_plastic_hardening_models, m.plastic_hardening_models.size());
  count(run.num_damper_elements, m.damper_elements.size());
  count(run.num_binary_items, m.binary_items.size());
}

std::map<int32_t, std::vector<Record>> model_blocks(const Model& m, const header::HeaderVariables& run,
                                                    const FormatLayout& layout) {
  std::map<int32_t, std::vector<Record>> blocks;
  blocks[16] = element_block(m.elements);
  blocks[17] = one_record_a_row(m.elements, [](const Element& e) {
    return Record::ints({e.material_1, e.material_2}).real(3, e.material_3).integer(4, e.material_4);
  });
  blocks[18] = one_record_a_row(m.nonlinear_e_tables, [](const NonlinearERow& row) {
    return Record::ints({row.curve, row.points}).real(3, row.value_1).real(4, row.value_2);
  });
  blocks[19] = one_record_a_row(m.nodes, [](const Node& n) {
    return Record::ints({n.file_number})
        .real(2, n.x)
        .real(3, n.y)
        .real(4, n.z)
        .integer(5, n.user_number)
        .integer(6, n.boundary_slot);
  });
  blocks[20] = aux_element_block(m.aux_elements);
  blocks[21] = one_record_a_row(
      m.aux_nodes, [](const AuxNode& n) { return Record::ints({n.number}).real(2, n.x).real(3, n.y).real(4, n.z); });
  blocks[22] = seabed_block(m.seabed);
  const auto harmonic = [](const WaveHarmonic& h) { return Record::reals({h[0], h[1], h[2], h[3], h[4]}); };
  blocks[23] = one_record_a_row(m.wave_harmonics, harmonic);
  blocks[24] = one_record_a_row(m.dsp_wave_harmonics, harmonic);
  blocks[25] =
      packed_list(m.contact_diameters, [](Record& record, int word, float value) { record.real(word, value); });
  blocks[26] = set_block(m.element_sets);
  blocks[27] = set_block(m.node_sets);
  blocks[28] = label_block(m.labels);
  blocks[29] = packed_ints(m.point_masses);
  blocks[30] = one_record_a_row(m.point_loads, [](const PointLoad& load) {
    return Record::ints({load.w1, load.w2}).real(3, load.w3);
  });
  blocks[31] = packed_ints(m.boundary_conditions);
  blocks[32] = one_record_a_row(m.current_profile, [](const CurrentRow& row) {
    return Record::reals({row[0], row[1], row[2]});
  });
  blocks[33] = pipe_in_pipe_block(m.pipe_in_pipe, run.pip_nodes_per_pair);
  blocks[34] = guide_surface_block(m.guide_surfaces, run.num_guide_surfaces, layout.guide_surface_head_records);
  blocks[35] = one_record_a_row(m.panels, [](const Panel& p) {
    return Record::ints({p[0], p[1], p[2], p[3], p[4], p[5], p[6]});
  });
  blocks[36] = one_record_a_row(m.zero_gap_guides, [](const ZeroGapGuide& g) {
    Record record = Record::ints({g.id});
    for (int w = 2; w <= 8; ++w) record.real(w, g.values[static_cast<std::size_t>(w - 2)]);
    return record;
  });
  blocks[37] = installation_block(m.installation);
  blocks[38] = floating_body_block(m.floating_bodies);
  blocks[39] = vessel_block(m.vessels);
  const std::array<float, 6>& s = m.stinger;
  blocks[40] = {Record::reals({s[0], s[1], s[2], s[3], s[4], s[5]})};
  Block spectrum;
  put_pairs(spectrum, m.target_spectrum);
  blocks[41] = spectrum.take();
  plastic_hardening_blocks(m.plastic_hardening_models, blocks);
  blocks[51] = packed_ints(m.damper_elements);
  blocks[52] = binary_item_block(m.binary_items);

  // A block with nothing to say is left to the zeros of the file, and one
  // that the format does not keep is left out.
  std::erase_if(blocks, [&layout](const auto& block) {
    return block.second.empty() || !holds_rows(layout, block.first);
  });
  return blocks;
}

}  // namespace tmrdar::builder
