// The element force lookup where neither the requests nor the builder's
// frame readers reach: parameters of no section, sections that a flag
// leaves out ahead of others, and the sections it counts short.
#include <string>
#include <vector>

#include "results/letter_lookup.h"
#include "results/written_job.h"

namespace tmrdar::results {
namespace {

using K = builder::SectionKind;
constexpr float untouched = -7777.0F;

class ForceLookup : public WrittenJob {
 protected:
  // A force file of two steps of 5 elements with these flags.
  void open_with(std::initializer_list<int> flags) {
    job.motion.present = false;
    job.run.num_time_steps = 2;
    job.run.num_elements = 5;
    job.run.output_flags = {};
    for (const int f : flags) job.run.output_flags[static_cast<std::size_t>(f - 1)] = 1;
    open();
  }
  float read(int32_t element, int32_t location, int32_t parameter) {
    error_handling::error3(false, "", "");
    value = untouched;
    error = true;
    readf(db, 2, element, location, parameter, value, error);
    return value;
  }

  float value = 0.0F;
  bool error = false;
};

TEST_F(ForceLookup, ParametersOfNoSectionAndOfAnAbsentOne) {
  open_with({5, 7, 8, 13});
  EXPECT_EQ(read(1, 1, 10), untouched);
  EXPECT_TRUE(error);
  EXPECT_EQ(error_handling::last_message(),
            "Error: Database Postprocessing: The requested force data is not included in the database. Use the "
            "*DATABASE CONTENT keyword to manage the contents of the database.");
  for (const int32_t p : {0, 1, 8, 16, 26, 42}) {
    EXPECT_EQ(read(1, 1, p), untouched) << p;
    EXPECT_FALSE(error) << p;
  }
}

// The temperatures and pressures are counted from the element sections, as
// if the guide and clashing reactions between them were not there: with a
// guide and two clash pairs (one record each) they are read 16 words short.
TEST_F(ForceLookup, SectionsBehindTheContactReactionsAreReadShortOfThem) {
  job.run.num_boundary_conditions = 2;
  job.run.num_guide_surfaces = 1;
  job.run.num_clash_pairs = 2;
  open_with({4, 5, 15, 16});
  EXPECT_EQ(read(2, 1, 29), at(K::temperature, 2, 2, 1, -16));
  EXPECT_EQ(read(2, 1, 30), at(K::pressure, 2, 1, 4, -16)) << "three words an element, as the temperatures";
}

// Without flag 18 the sub-sections of flag 19 and the word of flag 17 move
// up; flag 18's parameters are then not included.
TEST_F(ForceLookup, TheLastFlagsWithoutTheSubSectionsOfFlag18) {
  open_with({17, 19});
  EXPECT_EQ(read(2, 1, 41), at(K::element_41, 2, 2, 1));
  EXPECT_EQ(read(4, 3, 36), at(K::element_36, 2, 4, 1)) << "one word an element, whatever the location";
  EXPECT_EQ(read(2, 1, 38), untouched);
  EXPECT_TRUE(error);
}

TEST(FindStress, AStraightLineBetweenTheEntriesAround) {
  EXPECT_EQ(find_stress(std::vector<float>{0, 1, 2, 4, 0, 10, 30, 50}, 1.5F), 20.0F);
}

}  // namespace
}  // namespace tmrdar::results
