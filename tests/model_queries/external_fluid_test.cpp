// The fluid outside an element: the first three B values of the element that
// the first pipe-in-pipe pair whose search finds it names in its first row.
#include <random>
#include <vector>

#include "model_queries/model_queries.h"
#include "model_queries/open_job.h"

namespace tmrdar::model_queries {
namespace {

using FLUID = std::array<float, 3>;
constexpr FLUID DEFAULTS{1025.0F, 0.5F, 0.0F};
FLUID OF(int32_t e) { return {10.0F * e + 1, 10.0F * e + 2, 10.0F * e + 3}; }

class ExternalFluid : public OpenJob {
 protected:
  // Elements 1 to n with the B values OF(e), and these connections.
  void OPEN_WITH(int32_t n, const std::vector<builder::PIP_CONNECTION>& pairs) {
    builder::JOB job;
    job.RUN.EXTERNAL_FLUID_DEFAULT_A = DEFAULTS[0];
    job.RUN.EXTERNAL_FLUID_DEFAULT_B = DEFAULTS[1];
    for (int32_t e = 1; e <= n; ++e) {
      job.MODEL.ELEMENTS.push_back({.FILE_NUMBER = e, .USER_NUMBER = e, .B1 = OF(e)[0], .B2 = OF(e)[1], .B3 = OF(e)[2]});
    }
    job.MODEL.PIPE_IN_PIPE = pairs;
    ASSERT_TRUE(OPEN(job));
  }
  // Real slots 2 to 4 of the element's answer.
  FLUID SLOTS(int32_t e) {
    int32_t kind = 0;
    int32_t n = 15;
    std::array<int32_t, 15> ints{};
    std::array<float, 15> reals{};
    EXPECT_EQ(GetElementProperties(&M, &F, &e, &kind, &n, ints.data(), reals.data()), 0);
    return {reals[1], reals[2], reals[3]};
  }
};

TEST_F(ExternalFluid, TheEnclosingElementStandsInTheFirstRowOfThePair) {
  OPEN_WITH(5, {{{1, 4}, {2, 5}}});
  EXPECT_EQ(SLOTS(4), OF(1));
  EXPECT_EQ(SLOTS(5), OF(1)) << "found in row 2, whose column 1 names element 2";
  EXPECT_EQ(SLOTS(1), DEFAULTS) << "words before the first pair's column 2 are not searched";
  EXPECT_EQ(SLOTS(3), DEFAULTS);
}

TEST_F(ExternalFluid, AFirstRowWithoutAnElementEndsTheSearchWithTheDefaults) {
  OPEN_WITH(3, {{{0, 3}}, {{2, 3}}});
  EXPECT_EQ(SLOTS(3), DEFAULTS) << "pair 2 is not tried";
  EXPECT_EQ(SLOTS(2), DEFAULTS) << "pair 1's search reaches pair 2's column 1";
}

TEST_F(ExternalFluid, ASearchReadsOnPastItsPairForAsManyWordsAsThereAreElements) {
  // Storage 1, 4 | 3, 5: pair 1's search compares 4, 3 and 5.
  OPEN_WITH(5, {{{1, 4}}, {{3, 5}}});
  EXPECT_EQ(SLOTS(3), OF(1));
  EXPECT_EQ(SLOTS(5), OF(1));
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

TEST_F(ExternalFluid, ThePairsFoundAtOpenAnswerAsTheWalkOfTheTable) {
  OPEN_WITH(6, {});
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

}  // namespace
}  // namespace tmrdar::model_queries
