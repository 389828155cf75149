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

using builder::JOB;
using builder::MODEL;

class ModelRoundTrip : public FORMAT_TEST {
 protected:
  void SetUp() override { ASSERT_FALSE(OPEN_WRITTEN(job)) << ERROR_HANDLING::LAST_MESSAGE(); }

  // A negative length reads as 1.0e-8, a length of 0 as it stands, and an
  // end that no node has keeps its number.
  const JOB job = [this] {
    JOB j = EVERY_BLOCK_JOB(format);
    j.MODEL.ELEMENTS[0].LENGTH = -0.5F;
    j.MODEL.ELEMENTS[1].LENGTH = 0.0F;
    j.MODEL.ELEMENTS[8].NODES[1] = 999;
    return j;
  }();
  const MODEL& m = job.MODEL;
  const HEADER_TABLES& t = db.TABLES;
};

template <typename T>
const T& AT(const std::vector<T>& rows, int64_t i) {
  return rows.at(static_cast<std::size_t>(i - 1));
}
// The rows of a model table in the reader's order: one column after the other.
template <typename ROWS>
std::vector<float> COLUMNS(const ROWS& rows) {
  std::vector<float> data;
  for (std::size_t c = 0; c < rows[0].size(); ++c) for (const auto& row : rows) data.push_back(row[c]);
  return data;
}

TEST_P(ModelRoundTrip, StructureBlocks) {
  for (int64_t i = 1; i <= 9; ++i) {
    const builder::ELEMENT& e = AT(m.ELEMENTS, i);
    EXPECT_EQ(std::tuple(t.ELEMENT_NUMBERS(i, 1), t.ELEMENT_NUMBERS(i, 2), t.ELEMENT_A8(i), t.ELEMENT_B5(i)),
              std::tuple(e.FILE_NUMBER, e.USER_NUMBER, e.A8, e.B5));
    EXPECT_EQ(t.ELEMENT_NODES(i, 1), (i - 1) % 5 + 1) << "the end nodes become node rows";
    EXPECT_EQ(t.ELEMENT_NODES(i, 2), i == 9 ? 999 : (i + 2) % 5 + 1);
    const std::vector<float> reals{t.ELEMENT_LENGTH(i), t.ELEMENT_A6(i), t.ELEMENT_A7(i), t.ELEMENT_B1(i),
                                   t.ELEMENT_B2(i), t.ELEMENT_B3(i), t.ELEMENT_B4(i), t.ELEMENT_B6(i), t.ELEMENT_B7(i),
                                   t.ELEMENT_B8(i), t.ELEMENT_C1(i), t.ELEMENT_SECTION_TABLE(i, 1),
                                   t.ELEMENT_SECTION_TABLE(i, 2), t.ELEMENT_SECTION_TABLE(i, 3),
                                   t.ELEMENT_SECTION_TABLE(i, 4)};
    const float length = i == 1 ? std::bit_cast<float>(0x322BCC77U) : e.LENGTH;
    EXPECT_EQ(reals, (std::vector<float>{length, e.A6, e.A7, e.B1, e.B2, e.B3, e.B4, e.B6, e.B7, e.B8, e.C1,
                                         float(e.MATERIAL_1), float(e.MATERIAL_2), e.MATERIAL_3, float(e.MATERIAL_4)}));
  }
  const auto& e_rows = m.NONLINEAR_E_TABLES;  // the table holds its columns one after the other
  EXPECT_EQ(t.NONLINEAR_E_TABLE.DATA(),
            (std::vector<float>{static_cast<float>(e_rows[0].CURVE), static_cast<float>(e_rows[1].CURVE),
                                static_cast<float>(e_rows[0].POINTS), static_cast<float>(e_rows[1].POINTS),
                                e_rows[0].VALUE_1, e_rows[1].VALUE_1, e_rows[0].VALUE_2, e_rows[1].VALUE_2}));
  for (int64_t j = 1; j <= 5; ++j) {
    const builder::NODE& n = AT(m.NODES, j);
    EXPECT_EQ(std::tuple(t.NODE_NUMBERS(j, 1), t.NODE_NUMBERS(j, 2), t.NODE_COORDINATES(1, j),
                         t.NODE_COORDINATES(2, j), t.NODE_COORDINATES(3, j)),
              std::tuple(n.FILE_NUMBER, n.USER_NUMBER, n.X, n.Y, n.Z));
  }
  // Node 1 has no slot; nodes 2 to 4 fill the room of three, node 5 is left out.
  EXPECT_EQ(t.CONDITION_NODES.DATA(), (std::vector<int32_t>{m.NODES[1].BOUNDARY_SLOT, m.NODES[2].BOUNDARY_SLOT,
                                                            m.NODES[3].BOUNDARY_SLOT}));
  const builder::AUX_ELEMENT& a = m.AUX_ELEMENTS[0];
  EXPECT_EQ(std::tuple(t.AUX_ELEMENT_NUMBERS(1), t.AUX_ELEMENT_R5(1), t.AUX_ELEMENT_R6(1), t.AUX_ELEMENT_R7(1),
                       t.AUX_ELEMENT_W8(1), t.AUX_ELEMENT_W9(1)),
            std::tuple(a.NUMBER, a.R5, a.R6, a.R7, a.W8, a.W9));
  EXPECT_EQ(t.AUX_ELEMENT_NODES.DATA(), (std::vector<int32_t>{a.NODES[0], a.NODES[1]}));
  const auto& aux = m.AUX_NODES;
  EXPECT_EQ(t.AUX_NODE_NUMBERS.DATA(), (std::vector<int32_t>{aux[0].NUMBER, aux[1].NUMBER}));
  EXPECT_EQ(t.AUX_NODE_COORDINATES.DATA(),
            (std::vector<float>{aux[0].X, aux[1].X, aux[0].Y, aux[1].Y, aux[0].Z, aux[1].Z}));
}

TEST_P(ModelRoundTrip, SeaBlocks) {
  ASSERT_EQ(db.SEABED_PROFILE.NUM_NODES(), 6);
  for (int32_t i = 1; i <= 6; ++i) {
    EXPECT_EQ(std::pair(db.SEABED_PROFILE.NODE(i, 2), db.SEABED_PROFILE.NODE(i, 1)),
              std::pair(AT(m.SEABED.POINTS, i).FIRST, AT(m.SEABED.POINTS, i).SECOND)) << i;
  }
  EXPECT_EQ(db.SEABED_PROFILE.SLOPE_DEG(), *m.SEABED.SLOPE);
  EXPECT_EQ(t.WAVE_HARMONICS.DATA(), COLUMNS(m.WAVE_HARMONICS));
  EXPECT_EQ(t.CURRENT_PROFILE.DATA(), COLUMNS(m.CURRENT_PROFILE));
  EXPECT_EQ(t.TARGET_SPECTRUM.DATA(), COLUMNS(m.TARGET_SPECTRUM));
  std::vector<float> dsp;  // a harmonic to a column
  for (const auto& row : m.DSP_WAVE_HARMONICS) dsp.insert(dsp.end(), row.begin(), row.end());
  EXPECT_EQ(t.DSP_WAVE_HARMONICS.DATA(), IS(V811) ? std::vector<float>{} : dsp) << "V811 has no count of them";
  EXPECT_EQ(t.CONTACT_DIAMETERS.DATA(), m.CONTACT_DIAMETERS);
}

TEST_P(ModelRoundTrip, SetsLabelsAndAttachments) {
  EXPECT_EQ(t.ELEMENT_SET_NAMES(1).VIEW(), std::string(255, 'e') + " ") << "the 256th character is not read";
  for (int64_t s = 1; s <= 3; ++s) {
    const builder::NAMED_SET& set = AT(m.ELEMENT_SETS, s);
    if (s > 1) {
      EXPECT_EQ(t.ELEMENT_SET_NAMES(s).TRIMMED(), set.NAME);
    }
    EXPECT_EQ(t.ELEMENT_SET_COUNTS(s), static_cast<int32_t>(set.MEMBERS.size()));
    EXPECT_EQ(AT(t.ELEMENT_SET_MEMBERS, s), set.MEMBERS);
  }
  EXPECT_EQ(std::tuple(t.NODE_SET_NAMES(1).TRIMMED(), t.NODE_SET_COUNTS(1), t.NODE_SET_MEMBERS[0]),
            std::tuple(m.NODE_SETS[0].NAME, 3, m.NODE_SETS[0].MEMBERS));
  for (int64_t l = 1; l <= 2; ++l) {
    const builder::LABEL& label = AT(m.LABELS, l);
    EXPECT_EQ(std::tuple(t.LABEL_NAMES(l).TRIMMED(), t.LABEL_TARGETS(l, 1), t.LABEL_TARGETS(l, 2)),
              std::tuple(label.NAME, label.NUMBER, label.KIND));
    const builder::POINT_LOAD& load = AT(m.POINT_LOADS, l);
    EXPECT_EQ(std::tuple(t.POINT_LOADS(1, l), t.POINT_LOADS(2, l), t.POINT_LOADS(3, l)),
              std::tuple(static_cast<float>(load.W1), static_cast<float>(load.W2), load.W3));
  }
  EXPECT_EQ(t.POINT_MASS_NODES.DATA(), m.POINT_MASSES);
  EXPECT_EQ(t.BOUNDARY_CONDITION_NODES.DATA(), m.BOUNDARY_CONDITIONS);
}

TEST_P(ModelRoundTrip, ContactAndInstallationBlocks) {
  std::vector<int32_t> pip, panels;
  for (const auto& pair : m.PIPE_IN_PIPE) {
    for (const std::size_t k : {0U, 1U}) for (const auto& ends : pair) pip.push_back(ends[k]);
  }
  for (const std::size_t c : {5U, 0U, 1U, 2U}) for (const auto& panel : m.PANELS) panels.push_back(panel[c]);
  EXPECT_EQ(t.PIP_DATA.DATA(), pip);
  EXPECT_EQ(t.PANEL_TABLE.DATA(), panels);
  for (int64_t g = 1; g <= 2; ++g) {
    const builder::GUIDE_SURFACE& s = AT(m.GUIDE_SURFACES, g);
    EXPECT_EQ(std::tuple(t.GUIDE_SURFACE_IDS(g), t.GUIDE_SURFACE_VALUES(g, 1), t.GUIDE_SURFACE_VALUES(g, 2),
                         bool{t.GUIDE_SURFACE_SWITCHES(g, 1)}, bool{t.GUIDE_SURFACE_SWITCHES(g, 2)},
                         bool{t.GUIDE_SURFACE_FLAGS(g)}, t.GUIDE_SURFACE_NAMES(g).TRIMMED()),
              std::tuple(s.ID, s.VALUES[0], s.VALUES[1], s.SWITCHES[0] == 1, s.SWITCHES[1] == 1, s.FLAG == 1, s.NAME))
        << "guide " << g;
  }
  EXPECT_EQ(t.GUIDE_SURFACE_FLAG_COUNT, 1);
  for (int64_t p = 1; p <= 2; ++p) {
    EXPECT_EQ(std::tuple(t.PANEL_VALUES(p), t.ZERO_GAP_GUIDE_IDS(p), t.ZERO_GAP_GUIDE_VALUES(p)),
              std::tuple(AT(m.PANELS, p)[3], AT(m.ZERO_GAP_GUIDES, p).ID, AT(m.ZERO_GAP_GUIDES, p).VALUES[0]));
    const builder::INSTALLATION_CRITERION& c = AT(m.INSTALLATION.CRITERIA, p);
    EXPECT_EQ(std::tuple(t.INSTALLATION_CRITERIA_IDS(p), t.INSTALLATION_CRITERIA_VALUE_1(p),
                         t.INSTALLATION_CRITERIA_VALUE_2(p), t.INSTALLATION_CRITERIA_NAMES(p).TRIMMED()),
              std::tuple(c.ID, c.VALUE_1, c.VALUE_2, c.NAME));
    const builder::FLOATING_BODY& body = AT(m.FLOATING_BODIES, p);
    EXPECT_EQ(std::tuple(t.FLOATING_BODY_IDS(p), t.FLOATING_BODY_NAMES(p).TRIMMED(), t.FLOATING_BODY_VALUES(p),
                         t.FLOATING_BODY_CODES(p)),
              std::tuple(body.ID, body.NAME, body.VALUE, body.CODE));
  }
  EXPECT_EQ(t.INSTALLATION_SETTINGS, m.INSTALLATION.SETTINGS);
  const auto& chunks = m.VESSELS[0].NAME_CHUNKS;
  EXPECT_EQ(t.VESSEL_NAMES(1).TRIMMED(), chunks[0] + chunks[2] + chunks[3] + chunks[7]) << "blank chunks vanish";
  EXPECT_EQ(t.STINGER_DATA.DATA(), std::vector<float>(m.STINGER.begin(), m.STINGER.end()));
}

TEST_P(ModelRoundTrip, MaterialAndItemBlocks) {
  EXPECT_EQ(t.TIME_LIST.DATA().back(), 0.1F) << "the one step is read behind the whole header";
  const builder::BINARY_ITEM& seabed = m.BINARY_ITEMS[1];
  const MOD_DATA_BLOCK::T_DATA_BLOCK& block = db.SEABED_PROFILE.DATA_BLOCK();
  if (IS(V861) || IS(V841)) {
    EXPECT_EQ(std::tuple(block.VIEW(), block.GET_TYPE(), block.GET_KEY()),
              std::tuple(seabed.BYTES, seabed.TYPE, seabed.ID)) << "behind an item of another type";
  } else {
    EXPECT_EQ(block.VIEW(), "") << "no binary items in this format";
  }
  if (!IS(V861)) {
    EXPECT_EQ(std::tuple(db.SHAPE_FUNCTION_FLAG, db.NUM_PLASTIC_HARDENING_MODELS, db.NUM_DAMPER_ELEMENTS,
                         db.OUTPUT_FLAGS[16], db.OUTPUT_FLAGS[17], db.OUTPUT_FLAGS[18]),
              std::tuple(0, 0, 0, 0, 0, 0)) << "only the newest format has blocks 12 and 48 to 51";
    EXPECT_EQ(t.DAMPER_ELEMENTS.SIZE() + t.PLASTIC_HARDENING_MODELS.SIZE(), 0U);
    return;
  }
  EXPECT_EQ(std::tuple(db.SHAPE_FUNCTION_FLAG, db.SHAPE_FUNCTION_ORDER, db.OUTPUT_FLAGS[17], db.OUTPUT_FLAGS[18]),
            std::tuple(2, job.RUN.SHAPE_FUNCTION_ORDER, 1, 1));
  ASSERT_EQ(db.NUM_PLASTIC_HARDENING_MODELS, 3);
  for (int64_t k = 1; k <= 3; ++k) {
    const builder::PLASTIC_HARDENING_MODEL& written = AT(m.PLASTIC_HARDENING_MODELS, k);
    const MOD_PLASTIC_HARDENING::T_PLASTIC_HARDENING& read = t.PLASTIC_HARDENING_MODELS(k);
    EXPECT_EQ(read.RULE, written.W2);
    ASSERT_EQ(read.NUM_PAIRS(), static_cast<int32_t>(written.POINTS.size()));
    EXPECT_EQ(read.NUM_POINTS, read.NUM_PAIRS());
    for (int32_t p = 1; p <= read.NUM_PAIRS(); ++p) {
      EXPECT_EQ(std::pair(read.DATA(1, p), read.DATA(2, p)),
                std::pair(double{AT(written.POINTS, p)[0]}, double{AT(written.POINTS, p)[1]}));
    }
  }
  EXPECT_EQ(t.DAMPER_ELEMENTS.DATA(), m.DAMPER_ELEMENTS);
}

TMRDAR_FOR_EVERY_FORMAT(ModelRoundTrip);

}  // namespace
}  // namespace tmrdar::header
