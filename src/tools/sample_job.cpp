// Writes the sample job: the motion and force files of a small riser model.
#include <cstdio>
#include <exception>
#include <string>

#include "builder/job.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: tmrdar_sample_job STEM   (writes STEM.dbm and STEM.dbf)\n");
    return 2;
  }
  try {
    tmrdar::builder::JOB job;
    job.MOTION.FIRST.ANALYSIS_DETAIL_2 = 1;
    job.FORCE.FIRST.ANALYSIS_DETAIL_2 = 1;
    job.MOTION.FIRST.FILE_WORDS = {2026, 11, 21, 0, 0};
    job.FORCE.FIRST.FILE_WORDS = {2026, 11, 21, 0, 0};
    job.RUN.ANALYSIS_DETAIL_1 = 2;
    job.RUN.ANALYSIS_DETAIL_3 = 1025.0F;
    job.RUN.ANALYSIS_TITLE.ASSIGN("Sample catenary riser in a regular wave");
    job.WRITE(argv[1]);
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "tmrdar_sample_job: %s\n", failure.what());
    return 1;
  }
  return 0;
}
