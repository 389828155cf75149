// The run control blocks 2 to 15 read back field for field.
#include <string>
#include <tuple>
#include <vector>

#include "header_test.h"

namespace tmrdar::header {
namespace {

using builder::Job;
using Hv = HeaderVariables;

// Every integer and real that blocks 2 to 15 carry.
const std::vector<int32_t Hv::*> integers{
    &Hv::tail_pair_count_a, &Hv::tail_pair_count_b, &Hv::num_binary_items, &Hv::hdr_2_8, &Hv::result_start_record,
    &Hv::hdr_3_4, &Hv::hdr_3_7, &Hv::num_panels, &Hv::pip_nodes_per_pair, &Hv::num_nonlinear_e_tables,
    &Hv::num_guide_surfaces, &Hv::num_zero_gap_guides, &Hv::num_pip_connections, &Hv::num_pipe_in_pipe,
    &Hv::num_clash_pairs, &Hv::num_elements, &Hv::num_nodes, &Hv::nodes_per_element, &Hv::coords_per_node,
    &Hv::dofs_per_node, &Hv::num_boundary_conditions, &Hv::num_element_sets, &Hv::num_node_sets, &Hv::num_time_steps,
    &Hv::analysis_detail_1, &Hv::hdr_8_2, &Hv::num_seabed_points, &Hv::num_wave_harmonics, &Hv::num_vessels,
    &Hv::hdr_8_8, &Hv::num_aux_nodes, &Hv::num_aux_elements, &Hv::num_point_masses, &Hv::num_point_loads,
    &Hv::num_current_points, &Hv::num_floating_bodies, &Hv::num_installation_criteria, &Hv::num_labels,
    &Hv::num_damper_elements, &Hv::hdr_13_1, &Hv::num_dsp_wave_harmonics, &Hv::hdr_13_3, &Hv::hdr_13_4, &Hv::hdr_13_6,
    &Hv::aux_element_result_sets, &Hv::num_target_spectrum_intervals, &Hv::hdr_14_3, &Hv::hdr_14_4, &Hv::hdr_14_7};
const std::vector<float Hv::*> reals{&Hv::start_time, &Hv::hdr_4_2, &Hv::hdr_4_3, &Hv::hdr_4_4, &Hv::hdr_4_5,
                                     &Hv::hdr_4_6, &Hv::analysis_detail_3, &Hv::external_fluid_default_a,
                                     &Hv::external_fluid_default_b, &Hv::hdr_8_6};
const std::vector<int64_t Hv::*> widened{&Hv::motion_step_records, &Hv::force_step_records,
                                         &Hv::motion_start_offset, &Hv::force_start_offset};

class RunControl : public HeaderTest {};
class RunControlOfEachFormat : public FormatTest {};

// Each format reads the run control blocks it has; what it has no place for
// reads as the default the builder says it wrote.
TEST_P(RunControlOfEachFormat, EveryFieldLandsInItsVariable) {
  Job job(format);
  int32_t next = 1;
  for (const auto field : integers) job.run.*field = next++;
  for (const auto field : widened) job.run.*field = next++;
  float real = 0.5F;
  for (const auto field : reals) job.run.*field = real += 1.25F;
  for (std::size_t f = 0; f < 17; ++f) job.run.output_flags[f] = static_cast<int32_t>(f % 3);  // 2 is kept as it is
  job.run.analysis_title.assign(std::string(28, 'a') + std::string(28, 'b') + std::string(23, 'c') + "d");
  job.seabed_code = 5;
  job.seabed_angle = 30.0F;

  // The first step's time before the start of the file: every block is read
  // and the time list fails, keeping the start time of block 4.
  job.run.motion_start_offset = -1000;
  EXPECT_TRUE(open(job));
  EXPECT_EQ(error_handling::last_message(), "Error: Database Postprocessing: Unable to read record from database.");
  const Hv written = job.written_run();
  for (std::size_t f = 0; f < integers.size(); ++f) EXPECT_EQ(db.*integers[f], written.*integers[f]) << "integer " << f;
  for (std::size_t f = 0; f < widened.size(); ++f) EXPECT_EQ(db.*widened[f], written.*widened[f]) << "widened " << f;
  for (std::size_t f = 0; f < reals.size(); ++f) EXPECT_EQ(db.*reals[f], written.*reals[f]) << "real " << f;
  EXPECT_EQ(db.end_time, job.run.hdr_4_2) << "word 2 of block 4 is the end time too";
  EXPECT_EQ(db.output_flags, written.output_flags);
  EXPECT_EQ(db.analysis_title, job.run.analysis_title);
  EXPECT_EQ(db.seabed_geometry, 4) << "code 5 is a file profile";
  EXPECT_EQ(db.seabed_profile.direction_deg(), is(v861) || is(v841) ? 30.0F : 0.0F);
  // What each format lacks, against what the description asked for.
  EXPECT_EQ(db.num_damper_elements == job.run.num_damper_elements, is(v861)) << "block 12";
  EXPECT_EQ(db.hdr_2_8 == job.run.hdr_2_8, !is(v815) && !is(v811)) << "block 2";
  EXPECT_EQ(db.hdr_13_1 == job.run.hdr_13_1, !is(v811)) << "block 13";
  EXPECT_EQ(db.hdr_14_7 == job.run.hdr_14_7, !is(v841)) << "word 7 of block 14";
}

TMRDAR_FOR_EVERY_FORMAT(RunControlOfEachFormat);

// Block 7 behind the end of the file reads nothing: its first word keeps what
// block 6 left in the buffer, the element count.
TEST_F(RunControl, ABlockPastTheEndOfTheFileReadsStaleWords) {
  Job job;
  job.run.num_elements = 6;
  EXPECT_FALSE(open(job, {7}, 100'000));
  EXPECT_EQ(db.num_time_steps, 6);
}

}  // namespace
}  // namespace tmrdar::header
