// The run control blocks 2 to 15 read back field for field.
#include <string>
#include <tuple>
#include <vector>

#include "header_test.h"

namespace tmrdar::header {
namespace {

using builder::JOB;
using HV = HEADER_VARIABLES;

// Every integer and real that blocks 2 to 15 carry.
const std::vector<int32_t HV::*> INTEGERS{
    &HV::TAIL_PAIR_COUNT_A, &HV::TAIL_PAIR_COUNT_B, &HV::NUM_BINARY_ITEMS, &HV::HDR_2_8, &HV::RESULT_START_RECORD,
    &HV::HDR_3_4, &HV::HDR_3_7, &HV::NUM_PANELS, &HV::PIP_NODES_PER_PAIR, &HV::NUM_NONLINEAR_E_TABLES,
    &HV::NUM_GUIDE_SURFACES, &HV::NUM_ZERO_GAP_GUIDES, &HV::NUM_PIP_CONNECTIONS, &HV::NUM_PIPE_IN_PIPE,
    &HV::NUM_CLASH_PAIRS, &HV::NUM_ELEMENTS, &HV::NUM_NODES, &HV::NODES_PER_ELEMENT, &HV::COORDS_PER_NODE,
    &HV::DOFS_PER_NODE, &HV::NUM_BOUNDARY_CONDITIONS, &HV::NUM_ELEMENT_SETS, &HV::NUM_NODE_SETS, &HV::NUM_TIME_STEPS,
    &HV::ANALYSIS_DETAIL_1, &HV::HDR_8_2, &HV::NUM_SEABED_POINTS, &HV::NUM_WAVE_HARMONICS, &HV::NUM_VESSELS,
    &HV::HDR_8_8, &HV::NUM_AUX_NODES, &HV::NUM_AUX_ELEMENTS, &HV::NUM_POINT_MASSES, &HV::NUM_POINT_LOADS,
    &HV::NUM_CURRENT_POINTS, &HV::NUM_FLOATING_BODIES, &HV::NUM_INSTALLATION_CRITERIA, &HV::NUM_LABELS,
    &HV::NUM_DAMPER_ELEMENTS, &HV::HDR_13_1, &HV::NUM_DSP_WAVE_HARMONICS, &HV::HDR_13_3, &HV::HDR_13_4, &HV::HDR_13_6,
    &HV::AUX_ELEMENT_RESULT_SETS, &HV::NUM_TARGET_SPECTRUM_INTERVALS, &HV::HDR_14_3, &HV::HDR_14_4, &HV::HDR_14_7};
const std::vector<float HV::*> REALS{&HV::START_TIME, &HV::HDR_4_2, &HV::HDR_4_3, &HV::HDR_4_4, &HV::HDR_4_5,
                                     &HV::HDR_4_6, &HV::ANALYSIS_DETAIL_3, &HV::EXTERNAL_FLUID_DEFAULT_A,
                                     &HV::EXTERNAL_FLUID_DEFAULT_B, &HV::HDR_8_6};
const std::vector<int64_t HV::*> WIDENED{&HV::MOTION_STEP_RECORDS, &HV::FORCE_STEP_RECORDS,
                                         &HV::MOTION_START_OFFSET, &HV::FORCE_START_OFFSET};

class RunControl : public HEADER_TEST {};
class RunControlOfEachFormat : public FORMAT_TEST {};

// Each format reads the run control blocks it has; what it has no place for
// reads as the default the builder says it wrote.
TEST_P(RunControlOfEachFormat, EveryFieldLandsInItsVariable) {
  JOB job(format);
  int32_t next = 1;
  for (const auto field : INTEGERS) job.RUN.*field = next++;
  for (const auto field : WIDENED) job.RUN.*field = next++;
  float real = 0.5F;
  for (const auto field : REALS) job.RUN.*field = real += 1.25F;
  for (std::size_t f = 0; f < 17; ++f) job.RUN.OUTPUT_FLAGS[f] = static_cast<int32_t>(f % 3);  // 2 is kept as it is
  job.RUN.ANALYSIS_TITLE.ASSIGN(std::string(28, 'a') + std::string(28, 'b') + std::string(23, 'c') + "d");
  job.SEABED_CODE = 5;
  job.SEABED_ANGLE = 30.0F;

  // The first step's time before the start of the file: every block is read
  // and the time list fails, keeping the start time of block 4.
  job.RUN.MOTION_START_OFFSET = -1000;
  EXPECT_TRUE(OPEN(job));
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), "Error: Database Postprocessing: Unable to read record from database.");
  const HV written = job.WRITTEN_RUN();
  for (std::size_t f = 0; f < INTEGERS.size(); ++f) EXPECT_EQ(db.*INTEGERS[f], written.*INTEGERS[f]) << "integer " << f;
  for (std::size_t f = 0; f < WIDENED.size(); ++f) EXPECT_EQ(db.*WIDENED[f], written.*WIDENED[f]) << "widened " << f;
  for (std::size_t f = 0; f < REALS.size(); ++f) EXPECT_EQ(db.*REALS[f], written.*REALS[f]) << "real " << f;
  EXPECT_EQ(db.END_TIME, job.RUN.HDR_4_2) << "word 2 of block 4 is the end time too";
  EXPECT_EQ(db.OUTPUT_FLAGS, written.OUTPUT_FLAGS);
  EXPECT_EQ(db.ANALYSIS_TITLE, job.RUN.ANALYSIS_TITLE);
  EXPECT_EQ(db.SEABED_GEOMETRY, 4) << "code 5 is a file profile";
  EXPECT_EQ(db.SEABED_PROFILE.DIRECTION_DEG(), IS(V861) || IS(V841) ? 30.0F : 0.0F);
  // What each format lacks, against what the description asked for.
  EXPECT_EQ(db.NUM_DAMPER_ELEMENTS == job.RUN.NUM_DAMPER_ELEMENTS, IS(V861)) << "block 12";
  EXPECT_EQ(db.HDR_2_8 == job.RUN.HDR_2_8, !IS(V815) && !IS(V811)) << "block 2";
  EXPECT_EQ(db.HDR_13_1 == job.RUN.HDR_13_1, !IS(V811)) << "block 13";
  EXPECT_EQ(db.HDR_14_7 == job.RUN.HDR_14_7, !IS(V841)) << "word 7 of block 14";
}

TMRDAR_FOR_EVERY_FORMAT(RunControlOfEachFormat);

// Block 7 behind the end of the file reads nothing: its first word keeps what
// block 6 left in the buffer, the element count.
TEST_F(RunControl, ABlockPastTheEndOfTheFileReadsStaleWords) {
  JOB job;
  job.RUN.NUM_ELEMENTS = 6;
  EXPECT_FALSE(OPEN(job, {7}, 100'000));
  EXPECT_EQ(db.NUM_TIME_STEPS, 6);
}

}  // namespace
}  // namespace tmrdar::header
