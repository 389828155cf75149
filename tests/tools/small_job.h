// A small job whose every answer a test can tell in advance.
#pragma once

#include "builder/job.h"

namespace tmrdar::testing {

// Three steps; nodes 10, 30, 20 and 4000 (on no element) in rows 1 to 4;
// elements 7 and 5; auxiliary nodes 101, 102 and auxiliary element 3; two
// stress-strain curves, of which curve 9 claims more points than the table
// has rows; displacements, reactions and element section 1 in the frames.
inline builder::Job small_job() {
  builder::Job job;
  job.run.num_time_steps = 3;
  job.step_times = {0.5F, 1.0F, 2.5F};
  for (const std::size_t flag : {1, 4, 5}) job.run.output_flags[flag - 1] = 1;
  job.run.external_fluid_default_a = 1025.0F;
  job.run.external_fluid_default_b = 0.5F;
  job.model.nodes = {{.file_number = 1, .x = 1.0F, .y = 2.0F, .z = 3.0F, .user_number = 10},
                     {.file_number = 2, .x = 4.0F, .y = 5.0F, .z = 6.0F, .user_number = 30},
                     {.file_number = 3, .x = 7.0F, .y = 8.0F, .z = 9.0F, .user_number = 20},
                     {.file_number = 4, .x = -1.0F, .user_number = 4000}};
  job.model.elements = {{.file_number = 1, .user_number = 7, .nodes = {1, 2}, .length = 2.5F, .a6 = 6.5F, .a7 = 7.5F,
                         .a8 = 8, .b1 = 1.25F, .b2 = 2.25F, .b3 = 3.25F, .b4 = 4.25F, .b5 = 55, .b6 = 6.25F,
                         .b7 = 7.25F, .b8 = 8.25F, .c1 = 9.5F, .material_1 = 11, .material_2 = -12,
                         .material_3 = 13.5F, .material_4 = 14},
                        {.file_number = 2, .user_number = 5, .nodes = {2, 3}, .length = 1.5F}};
  job.model.aux_nodes = {{.number = 101, .x = 0.25F}, {.number = 102, .z = -0.75F}};
  job.model.aux_elements = {{.number = 3, .nodes = {2, 1}, .w8 = 77}};
  job.model.nonlinear_e_tables = {{.curve = 4, .points = 3},
                                  {.value_1 = 0.001F, .value_2 = 200.0F},
                                  {.value_1 = 0.002F, .value_2 = 350.0F},
                                  {.curve = 9, .points = 50}};
  job.model.labels = {{"Top", 10, 1}, {"Joint", 5, 3}};
  job.model.boundary_conditions = {1};                                   // node 10
  job.results.set(builder::SectionKind::displacement, 2, 3, 3, 1.25F);  // node 20, component 3
  job.results.set(builder::SectionKind::element_9, 3, 2, 3, -7.5F);     // element 5, its end
  return job;
}

}  // namespace tmrdar::testing
