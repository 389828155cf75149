// The open of a job whose files are the fuzzer's bytes: a motion file, a
// force file or both, then GetDatabaseInfo, GetAnalysisDetails and a spread
// of node, element, distance and stress-strain queries.
//
// Input: byte 0 picks the files (0 motion, 1 force, 2 both); byte 1 % 32 is
// the count of bytes at the end that choose the queries; with both files,
// bytes 2 and 3 (little-endian) give the motion file's length, cut to what
// is left; the rest are the files.
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "fuzz_support.h"
#include "tmrdar/tmrdar.h"

using namespace tmrdar::fuzzing;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 4) return 0;
  const int files = data[0] % 3;
  const std::size_t choices = data[1] % 32;
  const std::size_t motion_length = data[2] | (std::size_t{data[3]} << 8);
  std::span<const uint8_t> rest(data + 4, size - 4);
  if (choices > rest.size()) return 0;
  const std::span<const uint8_t> choice = rest.last(choices);
  rest = rest.first(rest.size() - choices);
  std::span<const uint8_t> motion, force;
  if (files == 0) {
    motion = rest;
  } else if (files == 1) {
    force = rest;
  } else {
    motion = rest.first(std::min(motion_length, rest.size()));
    force = rest.subspan(motion.size());
  }

  const std::string stem = scratch_directory() + "job";
  const std::string motion_path = stem + ".dbm", force_path = stem + ".dbf";
  remove_file(motion_path);
  remove_file(force_path);
  if (files != 1) write_file(motion_path, std::as_bytes(motion));
  if (files != 0) write_file(force_path, std::as_bytes(force));

  const Opened opened = open_job(stem);
  ask_model_queries(opened, choice);
  XIT();

  if (files != 1) check_unchanged(motion_path, std::as_bytes(motion));
  if (files != 0) check_unchanged(force_path, std::as_bytes(force));
  return 0;
}
