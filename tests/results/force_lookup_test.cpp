// The element force lookup where neither the requests nor the builder's
// frame readers reach: parameters of no section, sections that a flag
// leaves out ahead of others, and the sections it counts short.
#include <string>
#include <vector>

#include "results/letter_lookup.h"
#include "results/written_job.h"

namespace tmrdar::results {
namespace {

using K = builder::SECTION_KIND;
constexpr float UNTOUCHED = -7777.0F;

class ForceLookup : public WRITTEN_JOB {
 protected:
  // A force file of two steps of 5 elements with these flags.
  void OPEN_WITH(std::initializer_list<int> flags) {
    job.MOTION.PRESENT = false;
    job.RUN.NUM_TIME_STEPS = 2;
    job.RUN.NUM_ELEMENTS = 5;
    job.RUN.OUTPUT_FLAGS = {};
    for (const int f : flags) job.RUN.OUTPUT_FLAGS[static_cast<std::size_t>(f - 1)] = 1;
    OPEN();
  }
  float READ(int32_t element, int32_t location, int32_t parameter) {
    ERROR_HANDLING::ERROR3(false, "", "");
    value = UNTOUCHED;
    error = true;
    READF(db, 2, element, location, parameter, value, error);
    return value;
  }

  float value = 0.0F;
  bool error = false;
};

TEST_F(ForceLookup, ParametersOfNoSectionAndOfAnAbsentOne) {
  OPEN_WITH({5, 7, 8, 13});
  EXPECT_EQ(READ(1, 1, 10), UNTOUCHED);
  EXPECT_TRUE(error);
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(),
            "Error: Database Postprocessing: The requested force data is not included in the database. Use the "
            "*DATABASE CONTENT keyword to manage the contents of the database.");
  for (const int32_t p : {0, 1, 8, 16, 26, 42}) {
    EXPECT_EQ(READ(1, 1, p), UNTOUCHED) << p;
    EXPECT_FALSE(error) << p;
  }
}

// The temperatures and pressures are counted from the element sections, as
// if the guide and clashing reactions between them were not there: with a
// guide and two clash pairs (one record each) they are read 16 words short.
TEST_F(ForceLookup, SectionsBehindTheContactReactionsAreReadShortOfThem) {
  job.RUN.NUM_BOUNDARY_CONDITIONS = 2;
  job.RUN.NUM_GUIDE_SURFACES = 1;
  job.RUN.NUM_CLASH_PAIRS = 2;
  OPEN_WITH({4, 5, 15, 16});
  EXPECT_EQ(READ(2, 1, 29), AT(K::TEMPERATURE, 2, 2, 1, -16));
  EXPECT_EQ(READ(2, 1, 30), AT(K::PRESSURE, 2, 1, 4, -16)) << "three words an element, as the temperatures";
}

// Without flag 18 the sub-sections of flag 19 and the word of flag 17 move
// up; flag 18's parameters are then not included.
TEST_F(ForceLookup, TheLastFlagsWithoutTheSubSectionsOfFlag18) {
  OPEN_WITH({17, 19});
  EXPECT_EQ(READ(2, 1, 41), AT(K::ELEMENT_41, 2, 2, 1));
  EXPECT_EQ(READ(4, 3, 36), AT(K::ELEMENT_36, 2, 4, 1)) << "one word an element, whatever the location";
  EXPECT_EQ(READ(2, 1, 38), UNTOUCHED);
  EXPECT_TRUE(error);
}

TEST(FindStress, AStraightLineBetweenTheEntriesAround) {
  EXPECT_EQ(FIND_STRESS(std::vector<float>{0, 1, 2, 4, 0, 10, 30, 50}, 1.5F), 20.0F);
}

}  // namespace
}  // namespace tmrdar::results
