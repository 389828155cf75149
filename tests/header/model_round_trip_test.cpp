// The every-block model written in each format's layout and read back field
// for field by that format's reader; what a format has no block for reads as
// empty.
#include <bit>
#include <string>
#include <tuple>
#include <vector>

#include "every_block_job.h"
#include "header_test.h"

namespace tmrdar::header {
namespace {

using builder::Job;
using builder::Model;

class ModelRoundTrip : public FormatTest {
 protected:
  void SetUp() override { ASSERT_FALSE(open_written(job)) << error_handling::last_message(); }

  // A negative length reads as 1.0e-8, a length of 0 as it stands, and an
  // end that no node has keeps its number.
  const Job job = [this] {
    Job j = every_block_job(format);
    j.model.elements[0].length = -0.5F;
    j.model.elements[1].length = 0.0F;
    j.model.elements[8].nodes[1] = 999;
    return j;
  }();
  const Model& m = job.model;
  const HeaderTables& t = db.tables;
};

template <typename T>
const T& at(const std::vector<T>& rows, int64_t i) {
  return rows.at(static_cast<std::size_t>(i - 1));
}
// The rows of a model table in the reader's order: one column after the other.
template <typename Rows>
std::vector<float> columns(const Rows& rows) {
  std::vector<float> data;
  for (std::size_t c = 0; c < rows[0].size(); ++c) for (const auto& row : rows) data.push_back(row[c]);
  return data;
}

TEST_P(ModelRoundTrip, StructureBlocks) {
  for (int64_t i = 1; i <= 9; ++i) {
    const builder::Element& e = at(m.elements, i);
    EXPECT_EQ(std::tuple(t.element_numbers(i, 1), t.element_numbers(i, 2), t.element_a8(i), t.element_b5(i)),
              std::tuple(e.file_number, e.user_number, e.a8, e.b5));
    EXPECT_EQ(t.element_nodes(i, 1), (i - 1) % 5 + 1) << "the end nodes become node rows";
    EXPECT_EQ(t.element_nodes(i, 2), i == 9 ? 999 : (i + 2) % 5 + 1);
    const std::vector<float> reals{t.element_length(i), t.element_a6(i), t.element_a7(i), t.element_b1(i),
                                   t.element_b2(i), t.element_b3(i), t.element_b4(i), t.element_b6(i), t.element_b7(i),
                                   t.element_b8(i), t.element_c1(i), t.element_section_table(i, 1),
                                   t.element_section_table(i, 2), t.element_section_table(i, 3),
                                   t.element_section_table(i, 4)};
    const float length = i == 1 ? std::bit_cast<float>(0x322BCC77U) : e.length;
    EXPECT_EQ(reals, (std::vector<float>{length, e.a6, e.a7, e.b1, e.b2, e.b3, e.b4, e.b6, e.b7, e.b8, e.c1,
                                         float(e.material_1), float(e.material_2), e.material_3, float(e.material_4)}));
  }
  const auto& e_rows = m.nonlinear_e_tables;  // the table holds its columns one after the other
  EXPECT_EQ(as_vector(t.nonlinear_e_table.data()),
            (std::vector<float>{static_cast<float>(e_rows[0].curve), static_cast<float>(e_rows[1].curve),
                                static_cast<float>(e_rows[0].points), static_cast<float>(e_rows[1].points),
                                e_rows[0].value_1, e_rows[1].value_1, e_rows[0].value_2, e_rows[1].value_2}));
  for (int64_t j = 1; j <= 5; ++j) {
    const builder::Node& n = at(m.nodes, j);
    EXPECT_EQ(std::tuple(t.node_numbers(j, 1), t.node_numbers(j, 2), t.node_coordinates(1, j),
                         t.node_coordinates(2, j), t.node_coordinates(3, j)),
              std::tuple(n.file_number, n.user_number, n.x, n.y, n.z));
  }
  // Node 1 has no slot; nodes 2 to 4 fill the room of three, node 5 is left out.
  EXPECT_EQ(as_vector(t.condition_nodes.data()), (std::vector<int32_t>{m.nodes[1].boundary_slot, m.nodes[2].boundary_slot,
                                                            m.nodes[3].boundary_slot}));
  const builder::AuxElement& a = m.aux_elements[0];
  EXPECT_EQ(std::tuple(t.aux_element_numbers(1), t.aux_element_r5(1), t.aux_element_r6(1), t.aux_element_r7(1),
                       t.aux_element_w8(1), t.aux_element_w9(1)),
            std::tuple(a.number, a.r5, a.r6, a.r7, a.w8, a.w9));
  EXPECT_EQ(as_vector(t.aux_element_nodes.data()), (std::vector<int32_t>{a.nodes[0], a.nodes[1]}));
  const auto& aux = m.aux_nodes;
  EXPECT_EQ(as_vector(t.aux_node_numbers.data()), (std::vector<int32_t>{aux[0].number, aux[1].number}));
  EXPECT_EQ(as_vector(t.aux_node_coordinates.data()),
            (std::vector<float>{aux[0].x, aux[1].x, aux[0].y, aux[1].y, aux[0].z, aux[1].z}));
}

TEST_P(ModelRoundTrip, SeaBlocks) {
  ASSERT_EQ(db.seabed_profile.num_nodes(), 6);
  for (int32_t i = 1; i <= 6; ++i) {
    EXPECT_EQ(std::pair(db.seabed_profile.node(i, 2), db.seabed_profile.node(i, 1)),
              std::pair(at(m.seabed.points, i).first, at(m.seabed.points, i).second)) << i;
  }
  EXPECT_EQ(db.seabed_profile.slope_deg(), *m.seabed.slope);
  EXPECT_EQ(as_vector(t.wave_harmonics.data()), columns(m.wave_harmonics));
  EXPECT_EQ(as_vector(t.current_profile.data()), columns(m.current_profile));
  EXPECT_EQ(as_vector(t.target_spectrum.data()), columns(m.target_spectrum));
  std::vector<float> dsp;  // a harmonic to a column
  for (const auto& row : m.dsp_wave_harmonics) dsp.insert(dsp.end(), row.begin(), row.end());
  EXPECT_EQ(as_vector(t.dsp_wave_harmonics.data()), is(v811) ? std::vector<float>{} : dsp) << "V811 has no count of them";
  EXPECT_EQ(as_vector(t.contact_diameters.data()), m.contact_diameters);
}

TEST_P(ModelRoundTrip, SetsLabelsAndAttachments) {
  EXPECT_EQ(t.element_set_names(1).view(), std::string(255, 'e') + " ") << "the 256th character is not read";
  for (int64_t s = 1; s <= 3; ++s) {
    const builder::NamedSet& set = at(m.element_sets, s);
    if (s > 1) {
      EXPECT_EQ(t.element_set_names(s).trimmed(), set.name);
    }
    EXPECT_EQ(t.element_set_counts(s), static_cast<int32_t>(set.members.size()));
    EXPECT_EQ(at(t.element_set_members, s), set.members);
  }
  EXPECT_EQ(std::tuple(t.node_set_names(1).trimmed(), t.node_set_counts(1), t.node_set_members[0]),
            std::tuple(m.node_sets[0].name, 3, m.node_sets[0].members));
  for (int64_t l = 1; l <= 2; ++l) {
    const builder::Label& label = at(m.labels, l);
    EXPECT_EQ(std::tuple(t.label_names(l).trimmed(), t.label_targets(l, 1), t.label_targets(l, 2)),
              std::tuple(label.name, label.number, label.kind));
    const builder::PointLoad& load = at(m.point_loads, l);
    EXPECT_EQ(std::tuple(t.point_loads(1, l), t.point_loads(2, l), t.point_loads(3, l)),
              std::tuple(static_cast<float>(load.w1), static_cast<float>(load.w2), load.w3));
  }
  EXPECT_EQ(as_vector(t.point_mass_nodes.data()), m.point_masses);
  EXPECT_EQ(as_vector(t.boundary_condition_nodes.data()), m.boundary_conditions);
}

TEST_P(ModelRoundTrip, ContactAndInstallationBlocks) {
  std::vector<int32_t> pip, panels;
  for (const auto& pair : m.pipe_in_pipe) {
    for (const std::size_t k : {0U, 1U}) for (const auto& ends : pair) pip.push_back(ends[k]);
  }
  for (const std::size_t c : {5U, 0U, 1U, 2U}) for (const auto& panel : m.panels) panels.push_back(panel[c]);
  EXPECT_EQ(as_vector(t.pip_data.data()), pip);
  EXPECT_EQ(as_vector(t.panel_table.data()), panels);
  for (int64_t g = 1; g <= 2; ++g) {
    const builder::GuideSurface& s = at(m.guide_surfaces, g);
    EXPECT_EQ(std::tuple(t.guide_surface_ids(g), t.guide_surface_values(g, 1), t.guide_surface_values(g, 2),
                         bool{t.guide_surface_switches(g, 1)}, bool{t.guide_surface_switches(g, 2)},
                         bool{t.guide_surface_flags(g)}, t.guide_surface_names(g).trimmed()),
              std::tuple(s.id, s.values[0], s.values[1], s.switches[0] == 1, s.switches[1] == 1, s.flag == 1, s.name))
        << "guide " << g;
  }
  EXPECT_EQ(t.guide_surface_flag_count, 1);
  for (int64_t p = 1; p <= 2; ++p) {
    EXPECT_EQ(std::tuple(t.panel_values(p), t.zero_gap_guide_ids(p), t.zero_gap_guide_values(p)),
              std::tuple(at(m.panels, p)[3], at(m.zero_gap_guides, p).id, at(m.zero_gap_guides, p).values[0]));
    const builder::InstallationCriterion& c = at(m.installation.criteria, p);
    EXPECT_EQ(std::tuple(t.installation_criteria_ids(p), t.installation_criteria_value_1(p),
                         t.installation_criteria_value_2(p), t.installation_criteria_names(p).trimmed()),
              std::tuple(c.id, c.value_1, c.value_2, c.name));
    const builder::FloatingBody& body = at(m.floating_bodies, p);
    EXPECT_EQ(std::tuple(t.floating_body_ids(p), t.floating_body_names(p).trimmed(), t.floating_body_values(p),
                         t.floating_body_codes(p)),
              std::tuple(body.id, body.name, body.value, body.code));
  }
  EXPECT_EQ(t.installation_settings, m.installation.settings);
  const auto& chunks = m.vessels[0].name_chunks;
  EXPECT_EQ(t.vessel_names(1).trimmed(), chunks[0] + chunks[2] + chunks[3] + chunks[7]) << "blank chunks vanish";
  EXPECT_EQ(as_vector(t.stinger_data.data()), std::vector<float>(m.stinger.begin(), m.stinger.end()));
}

TEST_P(ModelRoundTrip, MaterialAndItemBlocks) {
  EXPECT_EQ(as_vector(t.time_list.data()).back(), 0.1F) << "the one step is read behind the whole header";
  const builder::BinaryItem& seabed = m.binary_items[1];
  const data_blocks::DataBlock& block = db.seabed_profile.data_block();
  if (is(v861) || is(v841)) {
    EXPECT_EQ(std::tuple(block.view(), block.get_type(), block.get_key()),
              std::tuple(seabed.bytes, seabed.type, seabed.id)) << "behind an item of another type";
  } else {
    EXPECT_EQ(block.view(), "") << "no binary items in this format";
  }
  if (!is(v861)) {
    EXPECT_EQ(std::tuple(db.shape_function_flag, db.num_plastic_hardening_models, db.num_damper_elements,
                         db.output_flags[16], db.output_flags[17], db.output_flags[18]),
              std::tuple(0, 0, 0, 0, 0, 0)) << "only the newest format has blocks 12 and 48 to 51";
    EXPECT_EQ(t.damper_elements.size() + t.plastic_hardening_models.size(), 0U);
    return;
  }
  EXPECT_EQ(std::tuple(db.shape_function_flag, db.shape_function_order, db.output_flags[17], db.output_flags[18]),
            std::tuple(2, job.run.shape_function_order, 1, 1));
  ASSERT_EQ(db.num_plastic_hardening_models, 3);
  for (int64_t k = 1; k <= 3; ++k) {
    const builder::PlasticHardeningModel& written = at(m.plastic_hardening_models, k);
    const plastic_hardening::PlasticHardening& read = t.plastic_hardening_models(k);
    EXPECT_EQ(read.rule, written.w2);
    ASSERT_EQ(read.num_pairs(), static_cast<int32_t>(written.points.size()));
    EXPECT_EQ(read.num_points, read.num_pairs());
    for (int32_t p = 1; p <= read.num_pairs(); ++p) {
      EXPECT_EQ(std::pair(read.data(1, p), read.data(2, p)),
                std::pair(double{at(written.points, p)[0]}, double{at(written.points, p)[1]}));
    }
  }
  EXPECT_EQ(as_vector(t.damper_elements.data()), m.damper_elements);
}

TMRDAR_FOR_EVERY_FORMAT(ModelRoundTrip);

}  // namespace
}  // namespace tmrdar::header
