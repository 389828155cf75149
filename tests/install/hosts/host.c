/* A C host of the installed library: opens the job named on the command line
 * and prints what it holds. The C++ and Fortran hosts print the same lines. */
#include <stdio.h>
#include <string.h>

#include <tmrdar/tmrdar.h>

static int check(const char* call, int32_t result) {
  if (result != 0) fprintf(stderr, "%s returned %d\n", call, (int)result);
  return result == 0;
}

int main(int argc, char** argv) {
  int32_t motion = 0, force = 0, motion_words[5], force_words[5], dims[14];
  const int32_t n = 14;
  int32_t detail_1 = 0, detail_2 = 0;
  float detail_3 = 0.0F;
  char title[64];
  int64_t title_length = (int64_t)sizeof title;
  const int32_t node = 1, main_kind = 0;
  float xyz[3];
  const int32_t time_type = 1, displacement_type = 5, subtype = 1, step = 1, count = 3;
  int32_t request_node = 0, request_element = 0, position = 0, steps = 0;
  float time = 0.0F, times[3];
  const char label[] = "Hang-off";

  if (argc != 2) {
    fprintf(stderr, "usage: c_host JOB\n");
    return 2;
  }
  if (!check("GetDatabaseInfo", GetDatabaseInfo(&motion, &force, motion_words, force_words, &n, dims, argv[1],
                                                (int64_t)strlen(argv[1]))))
    return 1;
  printf("codes %d %d\n", (int)motion, (int)force);
  printf("steps %d elements %d nodes %d\n", (int)dims[0], (int)dims[2], (int)dims[3]);
  steps = dims[0];

  if (!check("GetAnalysisDetails", GetAnalysisDetails(&detail_1, &detail_2, &detail_3, title, title_length)))
    return 1;
  while (title_length > 0 && title[title_length - 1] == ' ') --title_length;
  printf("title %.*s\n", (int)title_length, title);

  if (GetNodeProperties(&motion, &force, &node, &main_kind, xyz) != 1) return 1;
  printf("node 1 x %.3f z %.3f\n", (double)xyz[0], (double)xyz[2]);

  if (!check("GetRequestedSingleValue", GetRequestedSingleValue(&motion, &force, &time_type, &subtype, &request_node,
                                                                &request_element, &position, &steps, &step, &time,
                                                                " ", 1)))
    return 1;
  printf("time of step 1 %.3f\n", (double)time);
  if (!check("GetRequestedHistory", GetRequestedHistory(&motion, &force, &time_type, &subtype, &request_node,
                                                        &request_element, &position, &steps, &count, times, " ",
                                                        1)))
    return 1;
  printf("times %.3f %.3f %.3f\n", (double)times[0], (double)times[1], (double)times[2]);

  /* No node or element number: the label names the node, and its row's kind
   * lands in the position. */
  if (!check("GetRequestedSingleValue", GetRequestedSingleValue(&motion, &force, &displacement_type, &subtype,
                                                                &request_node, &request_element, &position, &steps,
                                                                &step, &time, label, (int64_t)strlen(label))))
    return 1;
  printf("label %s node %d position %d\n", label, (int)request_node, (int)position);
  return XIT();
}
