// What an element is made of: the slots of main and auxiliary elements, the
// size rules, the marks of unset slots, the order of the argument tests, and
// the fluid outside an element, found through the pipe-in-pipe pairs.
#include <bit>
#include <random>
#include <tuple>
#include <vector>

#include "model_queries/model_queries.h"
#include "model_queries/open_job.h"

namespace tmrdar::model_queries {
namespace {

// One call's result and arrays.
using ANSWER = std::tuple<int32_t, std::vector<int32_t>, std::vector<float>>;

class ElementProperties : public OpenJob {
 protected:
  // The answer in arrays of `size` slots (default: n) that held 99 before.
  ANSWER ASK(int32_t number, int32_t kind, int32_t n, int32_t size = -1, int32_t m = OWN, int32_t f = OWN) {
    if (m == OWN) m = C;
    if (f == OWN) f = C;
    const auto slots = static_cast<std::size_t>(size < 0 ? n : size);
    ANSWER a{0, std::vector<int32_t>(slots, 99), std::vector<float>(slots, 99.0F)};
    std::get<0>(a) = GetElementProperties(&m, &f, &number, &kind, &n, std::get<1>(a).data(), std::get<2>(a).data());
    return a;
  }
};

template <typename T>
std::vector<T> MARKS(std::size_t n, std::vector<T> head = {}) {
  head.resize(n, T(-1));
  return head;
}

builder::JOB MODEL(const header::FORMAT_VERSION& format) {
  builder::JOB job(format);
  job.RUN.EXTERNAL_FLUID_DEFAULT_A = 1025.0F;
  job.RUN.EXTERNAL_FLUID_DEFAULT_B = 0.5F;
  job.MODEL.NODES = {{.FILE_NUMBER = 3, .USER_NUMBER = 100}, {.FILE_NUMBER = 1, .USER_NUMBER = 200},
                     {.FILE_NUMBER = 40, .USER_NUMBER = 300}};
  // Numbered out of order: row 2 holds 3, so 2 is found by the scan in row 3.
  // Row 2's ends both read 2 once translated: the first is node row 2, the
  // second the file number 2, which no node has. Row 3's second end lies
  // beyond the node table.
  job.MODEL.ELEMENTS = {{.FILE_NUMBER = 1, .USER_NUMBER = 1, .NODES = {3, 40}, .LENGTH = 5.0F, .A6 = 6.5F,
                         .A7 = 7.5F, .A8 = 8, .B1 = 1.25F, .B2 = 2.25F, .B3 = 3.25F, .B4 = 4.25F, .B5 = 55,
                         .B6 = 6.25F, .B7 = 7.25F, .B8 = 8.25F, .C1 = 9.5F, .MATERIAL_1 = 11, .MATERIAL_2 = -12,
                         .MATERIAL_3 = 13.5F, .MATERIAL_4 = 14},
                        {.FILE_NUMBER = 2, .USER_NUMBER = 3, .NODES = {1, 2}, .LENGTH = -0.5F},
                        {.FILE_NUMBER = 3, .USER_NUMBER = 2, .NODES = {40, 99}}};
  job.MODEL.AUX_NODES = {{.NUMBER = 11}, {.NUMBER = 12}, {.NUMBER = 13}};
  job.MODEL.AUX_ELEMENTS = {{.NUMBER = 5, .NODES = {3, 1}, .W8 = 77}, {.NUMBER = 6, .NODES = {2, 4}, .W8 = 78}};
  return job;
}

TEST_P(ElementProperties, SlotsSizesMarksAndCodes) {
  ASSERT_TRUE(OPEN(MODEL(*GetParam())));
  const float tiny = std::bit_cast<float>(0x322BCC77U);  // 1.0e-8, for a negative length
  // A row whose only real value is its length: the default fluid, the rest 0.
  const auto bare = [](float length) { return std::vector<float>{length, 1025, 0.5F, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}; };
  const struct {
    int32_t number, kind, n, size, m, f;
    ANSWER answer;
    const char* why;
  } cases[] = {
      {1, 0, 17, -1, C, C,
       {0, MARKS<int32_t>(17, {1, 100, 300, 8, 55, -12, 14}),
        MARKS<float>(17, {5, 1025, 0.5F, 0, 1.25F, 2.25F, 3.25F, 4.25F, 13.5F, 6.5F, 7.5F, 6.25F, 7.25F, 8.25F, 9.5F})},
       "every slot, the rest marked"},
      {3, 0, 15, -1, C, C, {0, MARKS<int32_t>(15, {2, 200, -1, 0, 0, 0, 0}), bare(tiny)}, "an end left a file number"},
      {2, 0, 15, -1, C, C, {0, MARKS<int32_t>(15, {3, 300, -1, 0, 0, 0, 0}), bare(0)}, "an end past the nodes"},
      {1, 7, 20, -1, BAD_M, BAD_F, {-3, std::vector<int32_t>(20, 99), std::vector<float>(20, 99)}, "kind first"},
      {1, 0, 20, -1, BAD_M, BAD_F, {-2, MARKS<int32_t>(20), MARKS<float>(20)}, "marked, then the version"},
      {0, 0, 20, -1, C, C, {-1, MARKS<int32_t>(20), MARKS<float>(20)}, "no element 0"},
      {-7, 0, 20, -1, C, C, {-1, MARKS<int32_t>(20), MARKS<float>(20)}, "in no auxiliary row"},
      {1, 0, 0, 15, C, C, {15, std::vector<int32_t>(15, 99), std::vector<float>(15, 99)}, "no slots, none marked"},
      {1, 0, 3, 5, C, C, {15, {-1, -1, -1, 99, 99}, {-1, -1, -1, 99, 99}}, "n slots marked"},
      {5, 1, 6, -1, C, C, {0, MARKS<int32_t>(6, {1, 13, 11, 77}), MARKS<float>(6)}, "auxiliary"},
      {6, 1, 4, -1, C, C, {0, {2, 12, -1, 78}, MARKS<float>(4)}, "node row 4 of a table of 3"},
      {5, 1, 3, -1, C, C, {4, MARKS<int32_t>(3), MARKS<float>(3)}, "one auxiliary slot short"},
      {-5, 1, 4, -1, C, C, {-1, MARKS<int32_t>(4), MARKS<float>(4)}, "kind 1 takes the number as given"},
      {-6, 0, 4, -1, C, C, {0, {2, 12, -1, 78}, MARKS<float>(4)}, "kind 0, negative: that auxiliary element"},
      {-5, 0, 3, -1, C, C, {4, MARKS<int32_t>(3), MARKS<float>(3)}, "with the auxiliary size rule"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(ASK(c.number, c.kind, c.n, c.size, c.m, c.f), c.answer) << c.number << " of kind " << c.kind << ": " << c.why;
  }
}

using FLUID = std::array<float, 3>;
constexpr FLUID DEFAULTS{1025.0F, 0.5F, 0.0F};
FLUID OF(int32_t e) { return {10.0F * e + 1, 10.0F * e + 2, 10.0F * e + 3}; }

// Elements 1 to 6 with the B values OF(e).
builder::JOB PAIRED(const header::FORMAT_VERSION& format) {
  builder::JOB job(format);
  job.RUN.EXTERNAL_FLUID_DEFAULT_A = DEFAULTS[0];
  job.RUN.EXTERNAL_FLUID_DEFAULT_B = DEFAULTS[1];
  for (int32_t e = 1; e <= 6; ++e) {
    job.MODEL.ELEMENTS.push_back({.FILE_NUMBER = e, .USER_NUMBER = e, .B1 = OF(e)[0], .B2 = OF(e)[1], .B3 = OF(e)[2]});
  }
  return job;
}

// The search as a walk of the table's storage: pair by pair, NUM_ELEMENTS
// words from column 2 of the pair on, never past the end of the table.
FLUID WALK(const header::TIDE3_DATABASE_FILES& db, int32_t e) {
  const header::HEADER_TABLES& t = db.TABLES;
  const std::vector<int32_t>& words = t.PIP_DATA.DATA();
  const int64_t p = t.PIP_DATA.EXTENT(1);
  for (int64_t k = 1; k <= db.NUM_PIPE_IN_PIPE; ++k) {
    for (int64_t word = p + 2 * p * (k - 1); word < p + 2 * p * (k - 1) + db.NUM_ELEMENTS; ++word) {
      if (word >= static_cast<int64_t>(words.size()) || words[static_cast<std::size_t>(word)] != e) continue;
      const int32_t outer = t.PIP_DATA(1, 1, k);
      if (outer < 1 || outer > t.ELEMENT_B1.EXTENT()) return DEFAULTS;
      return {t.ELEMENT_B1(outer), t.ELEMENT_B2(outer), t.ELEMENT_B3(outer)};
    }
  }
  return DEFAULTS;
}

TEST_P(ElementProperties, ThePairsFoundAtOpenAnswerAsTheWalkOfTheTable) {
  ASSERT_TRUE(OPEN(PAIRED(*GetParam())));
  header::TIDE3_DATABASE_FILES& db = DB();
  std::mt19937 random(20240611);
  const auto pick = [&](int32_t low, int32_t high) { return std::uniform_int_distribution<int32_t>(low, high)(random); };
  for (int trial = 0; trial < 400; ++trial) {
    const int32_t pairs = pick(0, 5);
    db.NUM_ELEMENTS = pick(1, 14);  // the search's reach, whatever the tables hold
    db.NUM_PIPE_IN_PIPE = pairs;
    ASSERT_TRUE(db.TABLES.PIP_DATA.ALLOCATE({pick(1, 4), 2, pairs}));
    for (int32_t& word : db.TABLES.PIP_DATA.STORAGE()) word = pick(-1, 8);
    ASSERT_TRUE(header::BUILD_MODEL_QUERY_TABLES(db));
    for (int32_t e = 1; e <= 6; ++e) {
      FLUID fluid{};
      GET_EXTERNAL_FLUID_PROP(db, e, fluid[0], fluid[1], fluid[2]);
      ASSERT_EQ(fluid, WALK(db, e)) << "trial " << trial << ", element row " << e;
    }
  }
}

TMRDAR_FOR_EVERY_FORMAT(ElementProperties);

}  // namespace
}  // namespace tmrdar::model_queries
