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
using Answer = std::tuple<int32_t, std::vector<int32_t>, std::vector<float>>;

class ElementProperties : public OpenJob {
 protected:
  // The answer in arrays of `size` slots (default: n) that held 99 before.
  Answer ask(int32_t number, int32_t kind, int32_t n, int32_t size = -1, int32_t m = own, int32_t f = own) {
    if (m == own) m = c;
    if (f == own) f = c;
    const auto slots = static_cast<std::size_t>(size < 0 ? n : size);
    Answer a{0, std::vector<int32_t>(slots, 99), std::vector<float>(slots, 99.0F)};
    std::get<0>(a) = GetElementProperties(&m, &f, &number, &kind, &n, std::get<1>(a).data(), std::get<2>(a).data());
    return a;
  }
};

template <typename T>
std::vector<T> marks(std::size_t n, std::vector<T> head = {}) {
  head.resize(n, T(-1));
  return head;
}

builder::Job model(const header::FormatVersion& format) {
  builder::Job job(format);
  job.run.external_fluid_default_a = 1025.0F;
  job.run.external_fluid_default_b = 0.5F;
  job.model.nodes = {{.file_number = 3, .user_number = 100}, {.file_number = 1, .user_number = 200},
                     {.file_number = 40, .user_number = 300}};
  // Numbered out of order: row 2 holds 3, so 2 is found by the scan in row 3.
  // Row 2's ends both read 2 once translated: the first is node row 2, the
  // second the file number 2, which no node has. Row 3's second end lies
  // beyond the node table.
  job.model.elements = {{.file_number = 1, .user_number = 1, .nodes = {3, 40}, .length = 5.0F, .a6 = 6.5F,
                         .a7 = 7.5F, .a8 = 8, .b1 = 1.25F, .b2 = 2.25F, .b3 = 3.25F, .b4 = 4.25F, .b5 = 55,
                         .b6 = 6.25F, .b7 = 7.25F, .b8 = 8.25F, .c1 = 9.5F, .material_1 = 11, .material_2 = -12,
                         .material_3 = 13.5F, .material_4 = 14},
                        {.file_number = 2, .user_number = 3, .nodes = {1, 2}, .length = -0.5F},
                        {.file_number = 3, .user_number = 2, .nodes = {40, 99}}};
  job.model.aux_nodes = {{.number = 11}, {.number = 12}, {.number = 13}};
  job.model.aux_elements = {{.number = 5, .nodes = {3, 1}, .w8 = 77}, {.number = 6, .nodes = {2, 4}, .w8 = 78}};
  return job;
}

TEST_P(ElementProperties, SlotsSizesMarksAndCodes) {
  ASSERT_TRUE(open(model(*GetParam())));
  const float tiny = std::bit_cast<float>(0x322BCC77U);  // 1.0e-8, for a negative length
  // A row whose only real value is its length: the default fluid, the rest 0.
  const auto bare = [](float length) { return std::vector<float>{length, 1025, 0.5F, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}; };
  const struct {
    int32_t number, kind, n, size, m, f;
    Answer answer;
    const char* why;
  } cases[] = {
      {1, 0, 17, -1, c, c,
       {0, marks<int32_t>(17, {1, 100, 300, 8, 55, -12, 14}),
        marks<float>(17, {5, 1025, 0.5F, 0, 1.25F, 2.25F, 3.25F, 4.25F, 13.5F, 6.5F, 7.5F, 6.25F, 7.25F, 8.25F, 9.5F})},
       "every slot, the rest marked"},
      {3, 0, 15, -1, c, c, {0, marks<int32_t>(15, {2, 200, -1, 0, 0, 0, 0}), bare(tiny)}, "an end left a file number"},
      {2, 0, 15, -1, c, c, {0, marks<int32_t>(15, {3, 300, -1, 0, 0, 0, 0}), bare(0)}, "an end past the nodes"},
      {1, 7, 20, -1, bad_m, bad_f, {-3, std::vector<int32_t>(20, 99), std::vector<float>(20, 99)}, "kind first"},
      {1, 0, 20, -1, bad_m, bad_f, {-2, marks<int32_t>(20), marks<float>(20)}, "marked, then the version"},
      {0, 0, 20, -1, c, c, {-1, marks<int32_t>(20), marks<float>(20)}, "no element 0"},
      {-7, 0, 20, -1, c, c, {-1, marks<int32_t>(20), marks<float>(20)}, "in no auxiliary row"},
      {1, 0, 0, 15, c, c, {15, std::vector<int32_t>(15, 99), std::vector<float>(15, 99)}, "no slots, none marked"},
      {1, 0, 3, 5, c, c, {15, {-1, -1, -1, 99, 99}, {-1, -1, -1, 99, 99}}, "n slots marked"},
      {5, 1, 6, -1, c, c, {0, marks<int32_t>(6, {1, 13, 11, 77}), marks<float>(6)}, "auxiliary"},
      {6, 1, 4, -1, c, c, {0, {2, 12, -1, 78}, marks<float>(4)}, "node row 4 of a table of 3"},
      {5, 1, 3, -1, c, c, {4, marks<int32_t>(3), marks<float>(3)}, "one auxiliary slot short"},
      {-5, 1, 4, -1, c, c, {-1, marks<int32_t>(4), marks<float>(4)}, "kind 1 takes the number as given"},
      {-6, 0, 4, -1, c, c, {0, {2, 12, -1, 78}, marks<float>(4)}, "kind 0, negative: that auxiliary element"},
      {-5, 0, 3, -1, c, c, {4, marks<int32_t>(3), marks<float>(3)}, "with the auxiliary size rule"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(ask(c.number, c.kind, c.n, c.size, c.m, c.f), c.answer) << c.number << " of kind " << c.kind << ": " << c.why;
  }
}

using Fluid = std::array<float, 3>;
constexpr Fluid defaults{1025.0F, 0.5F, 0.0F};
Fluid of(int32_t e) { return {10.0F * e + 1, 10.0F * e + 2, 10.0F * e + 3}; }

// Elements 1 to 6 with the B values of(e).
builder::Job paired(const header::FormatVersion& format) {
  builder::Job job(format);
  job.run.external_fluid_default_a = defaults[0];
  job.run.external_fluid_default_b = defaults[1];
  for (int32_t e = 1; e <= 6; ++e) {
    job.model.elements.push_back({.file_number = e, .user_number = e, .b1 = of(e)[0], .b2 = of(e)[1], .b3 = of(e)[2]});
  }
  return job;
}

// The search as a walk of the table's storage: pair by pair, num_elements
// words from column 2 of the pair on, never past the end of the table.
Fluid walk(const header::FormatReader& db, int32_t e) {
  const header::HeaderTables& t = db.tables;
  const std::span<const int32_t> words = t.pip_data.data();
  const int64_t p = t.pip_data.extent(1);
  for (int64_t k = 1; k <= db.num_pipe_in_pipe; ++k) {
    for (int64_t word = p + 2 * p * (k - 1); word < p + 2 * p * (k - 1) + db.num_elements; ++word) {
      if (word >= static_cast<int64_t>(words.size()) || words[static_cast<std::size_t>(word)] != e) continue;
      const int32_t outer = t.pip_data(1, 1, k);
      if (outer < 1 || outer > t.element_b1.extent()) return defaults;
      return {t.element_b1(outer), t.element_b2(outer), t.element_b3(outer)};
    }
  }
  return defaults;
}

TEST_P(ElementProperties, ThePairsFoundAtOpenAnswerAsTheWalkOfTheTable) {
  ASSERT_TRUE(open(paired(*GetParam())));
  header::FormatReader& db = reader();
  std::mt19937 random(20240611);
  const auto pick = [&](int32_t low, int32_t high) { return std::uniform_int_distribution<int32_t>(low, high)(random); };
  for (int trial = 0; trial < 400; ++trial) {
    const int32_t pairs = pick(0, 5);
    db.num_elements = pick(1, 14);  // the search's reach, whatever the tables hold
    db.num_pipe_in_pipe = pairs;
    ASSERT_TRUE(db.tables.pip_data.allocate({pick(1, 4), 2, pairs}));
    for (int32_t& word : db.tables.pip_data.storage()) word = pick(-1, 8);
    ASSERT_TRUE(header::build_model_query_tables(db));
    for (int32_t e = 1; e <= 6; ++e) {
      Fluid fluid{};
      get_external_fluid_prop(db, e, fluid[0], fluid[1], fluid[2]);
      ASSERT_EQ(fluid, walk(db, e)) << "trial " << trial << ", element row " << e;
    }
  }
}

TMRDAR_FOR_EVERY_FORMAT(ElementProperties);

}  // namespace
}  // namespace tmrdar::model_queries
