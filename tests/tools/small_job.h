// A small job whose every answer a test can tell in advance.
#pragma once

#include "builder/job.h"

namespace tmrdar::testing {

// Three steps; nodes 10, 30, 20 and 4000 (on no element) in rows 1 to 4;
// elements 7 and 5; auxiliary nodes 101, 102 and auxiliary element 3; two
// stress-strain curves, of which curve 9 claims more points than the table
// has rows; displacements, reactions and element section 1 in the frames.
inline builder::JOB SMALL_JOB() {
  builder::JOB job;
  job.RUN.NUM_TIME_STEPS = 3;
  job.STEP_TIMES = {0.5F, 1.0F, 2.5F};
  for (const std::size_t flag : {1, 4, 5}) job.RUN.OUTPUT_FLAGS[flag - 1] = 1;
  job.RUN.EXTERNAL_FLUID_DEFAULT_A = 1025.0F;
  job.RUN.EXTERNAL_FLUID_DEFAULT_B = 0.5F;
  job.MODEL.NODES = {{.FILE_NUMBER = 1, .X = 1.0F, .Y = 2.0F, .Z = 3.0F, .USER_NUMBER = 10},
                     {.FILE_NUMBER = 2, .X = 4.0F, .Y = 5.0F, .Z = 6.0F, .USER_NUMBER = 30},
                     {.FILE_NUMBER = 3, .X = 7.0F, .Y = 8.0F, .Z = 9.0F, .USER_NUMBER = 20},
                     {.FILE_NUMBER = 4, .X = -1.0F, .USER_NUMBER = 4000}};
  job.MODEL.ELEMENTS = {{.FILE_NUMBER = 1, .USER_NUMBER = 7, .NODES = {1, 2}, .LENGTH = 2.5F, .A6 = 6.5F, .A7 = 7.5F,
                         .A8 = 8, .B1 = 1.25F, .B2 = 2.25F, .B3 = 3.25F, .B4 = 4.25F, .B5 = 55, .B6 = 6.25F,
                         .B7 = 7.25F, .B8 = 8.25F, .C1 = 9.5F, .MATERIAL_1 = 11, .MATERIAL_2 = -12,
                         .MATERIAL_3 = 13.5F, .MATERIAL_4 = 14},
                        {.FILE_NUMBER = 2, .USER_NUMBER = 5, .NODES = {2, 3}, .LENGTH = 1.5F}};
  job.MODEL.AUX_NODES = {{.NUMBER = 101, .X = 0.25F}, {.NUMBER = 102, .Z = -0.75F}};
  job.MODEL.AUX_ELEMENTS = {{.NUMBER = 3, .NODES = {2, 1}, .W8 = 77}};
  job.MODEL.NONLINEAR_E_TABLES = {{.CURVE = 4, .POINTS = 3},
                                  {.VALUE_1 = 0.001F, .VALUE_2 = 200.0F},
                                  {.VALUE_1 = 0.002F, .VALUE_2 = 350.0F},
                                  {.CURVE = 9, .POINTS = 50}};
  job.MODEL.LABELS = {{"Top", 10, 1}, {"Joint", 5, 3}};
  job.MODEL.BOUNDARY_CONDITIONS = {1};                                   // node 10
  job.RESULTS.SET(builder::SECTION_KIND::DISPLACEMENT, 2, 3, 3, 1.25F);  // node 20, component 3
  job.RESULTS.SET(builder::SECTION_KIND::ELEMENT_9, 3, 2, 3, -7.5F);     // element 5, its end
  return job;
}

}  // namespace tmrdar::testing
