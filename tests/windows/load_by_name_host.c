/* A Windows host that knows the library only by its name: it loads tmrdar.dll
 * with LoadLibrary, finds the twelve exports with GetProcAddress, opens the
 * job named on the command line (the sample job) and calls every export,
 * then checks that the job's files stay open to other programs and that a
 * file another program holds shut is a status and no crash.
 * usage: load_by_name_host JOB */
#include <windows.h>

#include <math.h>
#include <stdint.h>
#include <stdio.h>
#include <string.h>

/* The exports as a host declares them without the library's header. */
typedef int32_t(__stdcall* DllMainFn)(void*, uint32_t, void*);
typedef int32_t(__stdcall* XitFn)(void);
typedef int32_t(__stdcall* DatabaseInfoFn)(int32_t*, int32_t*, int32_t*, int32_t*, const int32_t*, int32_t*,
                                           const char*, int64_t);
typedef int32_t(__stdcall* AnalysisDetailsFn)(int32_t*, int32_t*, float*, char*, int64_t);
typedef int32_t(__stdcall* NodePropertiesFn)(const int32_t*, const int32_t*, const int32_t*, const int32_t*, float*);
typedef int32_t(__stdcall* ElementPropertiesFn)(const int32_t*, const int32_t*, const int32_t*, const int32_t*,
                                                const int32_t*, int32_t*, float*);
typedef int32_t(__stdcall* DistanceFn)(const int32_t*, const int32_t*, const int32_t*, const int32_t*, float*);
typedef int32_t(__stdcall* RequestFn)(const int32_t*, const int32_t*, const int32_t*, const int32_t*, int32_t*,
                                      int32_t*, int32_t*, const int32_t*, const int32_t*, float*, const char*,
                                      int64_t);
typedef int32_t(__stdcall* RequestErrorFn)(const int32_t*, const int32_t*, int32_t*);
typedef int32_t(__stdcall* StressStrainFn)(const int32_t*, const int32_t*, const int32_t*, const int32_t*, float*);

static int failures = 0;

static void expect(int good, const char* what) {
  if (!good) {
    fprintf(stderr, "FAILED: %s\n", what);
    ++failures;
  }
}

static int close_to(float value, float expected) { return fabsf(value - expected) <= 1e-4F * fabsf(expected) + 1e-6F; }

/* GetProcAddress gives a generic function pointer; the cast through
 * void (*)(void) tells the compiler that the type is known. */
#define FIND(type, name) ((type)(void (*)(void))find(library, name))

static FARPROC find(HMODULE library, const char* name) {
  FARPROC address = GetProcAddress(library, name);
  expect(address != NULL, name);
  return address;
}

int main(int argc, char** argv) {
  if (argc != 2) {
    fprintf(stderr, "usage: load_by_name_host JOB\n");
    return 2;
  }
  const char* job = argv[1];
  HMODULE library = LoadLibraryA("tmrdar.dll");
  if (library == NULL) {
    fprintf(stderr, "FAILED: LoadLibrary(tmrdar.dll), error %lu\n", (unsigned long)GetLastError());
    return 1;
  }
  DllMainFn dll_main = FIND(DllMainFn, "DllMain");
  XitFn xit = FIND(XitFn, "XIT");
  DatabaseInfoFn info = FIND(DatabaseInfoFn, "GetDatabaseInfo");
  AnalysisDetailsFn details = FIND(AnalysisDetailsFn, "GetAnalysisDetails");
  NodePropertiesFn node_properties = FIND(NodePropertiesFn, "GetNodeProperties");
  ElementPropertiesFn element_properties = FIND(ElementPropertiesFn, "GetElementProperties");
  DistanceFn distance = FIND(DistanceFn, "GetDistanceAlongRiser");
  RequestFn single_value = FIND(RequestFn, "GetRequestedSingleValue");
  RequestFn history = FIND(RequestFn, "GetRequestedHistory");
  RequestErrorFn single_value_error = FIND(RequestErrorFn, "GetRequestedSingleValueError");
  RequestErrorFn history_error = FIND(RequestErrorFn, "GetRequestedHistoryError");
  StressStrainFn stress_strain = FIND(StressStrainFn, "GetProcessedDirectStressStrainData");
  if (failures > 0) return 1;

  expect(dll_main(NULL, 2, NULL) == 1, "DllMain answers 1 to a thread notification");

  int32_t motion = 0, force = 0, motion_words[5], force_words[5], dims[14];
  const int32_t n = 14;
  expect(info(&motion, &force, motion_words, force_words, &n, dims, job, (int64_t)strlen(job)) == 0,
         "GetDatabaseInfo opens the job");
  expect(motion == 13 && force == 13, "both files of version code 13");
  expect(dims[0] == 1000 && dims[2] == 300 && dims[3] == 301, "1000 steps, 300 elements, 301 nodes");

  int32_t detail_1 = 0, detail_2 = 0;
  float detail_3 = 0.0F;
  char title[64];
  expect(details(&detail_1, &detail_2, &detail_3, title, (int64_t)sizeof title) == 0, "GetAnalysisDetails");
  expect(strncmp(title, "Sample catenary riser in a regular wave", 39) == 0, "the title");

  const int32_t node = 301, element = 1, main_kind = 0, position = 3, length = 15;
  float xyz[3] = {0};
  expect(node_properties(&motion, &force, &node, &main_kind, xyz) == 301, "GetNodeProperties of node 301");
  expect(close_to(xyz[0], 172.67108F) && close_to(xyz[2], -200.0F), "node 301 at touchdown");
  int32_t integers[15];
  float reals[15];
  expect(element_properties(&motion, &force, &element, &main_kind, &length, integers, reals) == 0,
         "GetElementProperties of element 1");
  expect(integers[1] == 1 && integers[2] == 2, "element 1 from node 1 to node 2");
  float along = 0.0F;
  expect(distance(&motion, &force, &element, &position, &along) == 0 && close_to(along, 0.9073772F),
         "GetDistanceAlongRiser of the end of element 1");

  /* The heave of the hang-off, by its label, and the tension at the top. */
  const int32_t displacement = 5, element_force = 17, subtype = 1, steps = dims[0], count = 5, step = 500;
  int32_t request_node = 0, request_element = 0, request_position = 0;
  float heave[5] = {0}, tension = 0.0F;
  expect(history(&motion, &force, &displacement, &subtype, &request_node, &request_element, &request_position, &steps,
                 &count, heave, "HANG-OFF", 8) == 0,
         "GetRequestedHistory of the hang-off's heave");
  expect(request_node == 1, "the label names node 1");
  expect(close_to(heave[0], -9.101776F) && close_to(heave[1], -9.107097F) && close_to(heave[2], -9.115941F),
         "the heave of the first three steps");
  int32_t top = 1, first = 1, none = 0;
  expect(single_value(&motion, &force, &element_force, &subtype, &none, &top, &first, &steps, &step, &tension, " ",
                      1) == 0 && close_to(tension, 383.0F),
         "GetRequestedSingleValue of the tension at the top at step 500");
  printf("heave of the hang-off %.6f %.6f %.6f, tension at the top %.1f\n", (double)heave[0], (double)heave[1],
         (double)heave[2], (double)tension);

  /* A step beyond the job: a mask, decoded one flag an argument. */
  const int32_t beyond = 1001, flags_length = 12;
  int32_t flags[12];
  int32_t mask = single_value(&motion, &force, &element_force, &subtype, &none, &top, &first, &steps, &beyond,
                              &tension, " ", 1);
  expect(mask > 0, "a step beyond the job is refused");
  expect(single_value_error(&mask, &flags_length, flags) == 0 && flags[8] != 0, "argument 9 flagged");
  expect(history_error(&mask, &flags_length, flags) == 0 && flags[8] != 0, "the same through the history's decoder");
  const int32_t table = 7, capacity = 4;
  float pairs[8];
  expect(stress_strain(&motion, &force, &table, &capacity, pairs) == -7, "no stress-strain table 7");

  /* A copy of the job, whose files this host may hold and delete. */
  char source[MAX_PATH + 8], copy[MAX_PATH + 8], copy_motion[MAX_PATH + 16], copy_force[MAX_PATH + 16];
  snprintf(copy, sizeof copy, "%s-copy", job);
  snprintf(copy_motion, sizeof copy_motion, "%s.dbm", copy);
  snprintf(copy_force, sizeof copy_force, "%s.dbf", copy);
  snprintf(source, sizeof source, "%s.dbm", job);
  expect(CopyFileA(source, copy_motion, FALSE) != 0, "copy of the motion file");
  snprintf(source, sizeof source, "%s.dbf", job);
  expect(CopyFileA(source, copy_force, FALSE) != 0, "copy of the force file");

  /* A file that another program holds shut cannot be read: the motion code
   * -1, and the job opens from its force file. */
  HANDLE holder = CreateFileA(copy_motion, GENERIC_READ, 0, NULL, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, NULL);
  expect(holder != INVALID_HANDLE_VALUE, "the motion file held without sharing");
  expect(info(&motion, &force, motion_words, force_words, &n, dims, copy, (int64_t)strlen(copy)) == 0,
         "GetDatabaseInfo with the motion file held");
  expect(motion == -1 && force == 13, "motion code -1, force code 13");
  if (holder != INVALID_HANDLE_VALUE) CloseHandle(holder);

  /* The job's files stay open to others while the library reads them:
   * another program may write to one and delete the other. */
  expect(info(&motion, &force, motion_words, force_words, &n, dims, copy, (int64_t)strlen(copy)) == 0 &&
             motion == 13 && force == 13,
         "GetDatabaseInfo on the copy");
  HANDLE writer = CreateFileA(copy_motion, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                              NULL, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, NULL);
  expect(writer != INVALID_HANDLE_VALUE, "another program opens the motion file for writing while it is read");
  if (writer != INVALID_HANDLE_VALUE) CloseHandle(writer);
  expect(DeleteFileA(copy_force) != 0, "another program deletes the force file while it is read");
  expect(history(&motion, &force, &displacement, &subtype, &request_node, &request_element, &request_position, &steps,
                 &count, heave, "HANG-OFF", 8) == 0 && close_to(heave[2], -9.115941F),
         "the history read again after that");
  expect(xit() == 0, "XIT");

  /* Paths that name no job: a status each. */
  char long_path[400];
  memset(long_path, 'a', sizeof long_path - 1);
  long_path[sizeof long_path - 1] = '\0';
  expect(info(&motion, &force, motion_words, force_words, &n, dims, long_path, (int64_t)strlen(long_path)) == -3,
         "a path over 256 characters");
  const char* unc = "\\\\no-such-server\\share\\riser";
  expect(info(&motion, &force, motion_words, force_words, &n, dims, unc, (int64_t)strlen(unc)) == -3,
         "a UNC path to no server");
  expect(info(&motion, &force, motion_words, force_words, &n, dims, "Q:\\riser", 8) == -3, "a drive with no job");

  expect(xit() == 0, "XIT at the end");
  expect(FreeLibrary(library) != 0, "FreeLibrary");
  /* Unloading closed the files: the copy goes at once. */
  expect(DeleteFileA(copy_motion) != 0, "the copy deleted after unloading");
  if (failures > 0) return 1;
  printf("every export answered as expected\n");
  return 0;
}
