// Requests on a job that the builder wrote whole, in one of the six formats,
// whose header or frames then took the fuzzer's bytes at places the fuzzer
// chose: single values and histories of every output type over items,
// positions and steps that the fuzzer chose too.
#include <fuzzer/FuzzedDataProvider.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "builder/job.h"
#include "fuzz_support.h"
#include "tmrdar/tmrdar.h"

using namespace tmrdar;
using namespace tmrdar::fuzzing;

namespace {

// The two files of the small job of each format, made once.
struct Images {
  std::vector<std::byte> motion;
  std::vector<std::byte> force;
  std::size_t motion_header = 0;  // bytes ahead of the motion file's frames
  std::size_t force_header = 0;
};

const std::array<Images, 6>& images() {
  static const std::array<Images, 6> made = [] {
    std::array<Images, 6> all;
    for (std::size_t k = 0; k < all.size(); ++k) {
      const builder::Job job = small_job(*header::format_versions[k]);
      const header::HeaderVariables run = job.written_run();
      all[k].motion = job.image(builder::FileKind::motion).bytes();
      all[k].force = job.image(builder::FileKind::force).bytes();
      const auto frames_at = [&](std::size_t file_size, int64_t frame_records) {
        const int64_t frames = frame_records * run.num_time_steps * 32;
        return static_cast<std::size_t>(std::max<int64_t>(0, static_cast<int64_t>(file_size) - frames));
      };
      all[k].motion_header = frames_at(all[k].motion.size(), job.motion_frame_records());
      all[k].force_header = frames_at(all[k].force.size(), job.force_frame_records());
    }
    return all;
  }();
  return made;
}

// Puts the fuzzer's bytes at its places, in the header or in the frames,
// and may cut the file short or leave it out.
bool damage(FuzzedDataProvider& in, std::vector<std::byte>& file, std::size_t header) {
  const int changes = in.ConsumeIntegralInRange(0, 4);
  for (int c = 0; c < changes && !file.empty(); ++c) {
    const bool in_header = in.ConsumeBool() || header >= file.size();
    const std::size_t at = in_header && header > 0 ? in.ConsumeIntegralInRange<std::size_t>(0, header - 1)
                                                   : in.ConsumeIntegralInRange<std::size_t>(header, file.size() - 1);
    const std::vector<uint8_t> bytes = in.ConsumeBytes<uint8_t>(in.ConsumeIntegralInRange(1, 8));
    for (std::size_t i = 0; i < bytes.size() && at + i < file.size(); ++i) file[at + i] = std::byte{bytes[i]};
  }
  switch (in.ConsumeIntegralInRange(0, 7)) {
    case 0: file.resize(in.ConsumeIntegralInRange<std::size_t>(0, file.size())); break;
    case 1: return false;
    default: break;
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzedDataProvider in(data, size);
  const Images& image = images()[in.ConsumeIntegralInRange<std::size_t>(0, 5)];
  std::vector<std::byte> motion = image.motion, force = image.force;
  const bool has_motion = damage(in, motion, image.motion_header);
  const bool has_force = damage(in, force, image.force_header);

  const std::string stem = scratch_directory() + "job";
  const std::string motion_path = stem + ".dbm", force_path = stem + ".dbf";
  remove_file(motion_path);
  remove_file(force_path);
  if (has_motion) write_file(motion_path, motion);
  if (has_force) write_file(force_path, force);

  const Opened opened = open_job(stem);
  int32_t m = opened.motion, f = opened.force;
  int32_t steps = opened.dimensions[0];
  std::array<float, 64> values{};
  for (int r = 0; r < 24 && in.remaining_bytes() > 0; ++r) {
    int32_t type = in.ConsumeIntegralInRange(0, 19);
    int32_t subtype = in.ConsumeIntegralInRange(0, 15);
    int32_t node = in.ConsumeIntegralInRange(-12, 40);
    int32_t element = in.ConsumeIntegralInRange(-8, 210);
    int32_t position = in.ConsumeIntegralInRange(-1, 4);
    int32_t step = in.ConsumeIntegralInRange(-1, 5);
    if (in.ConsumeIntegralInRange(0, 15) == 0) steps = in.ConsumeIntegral<int32_t>();
    const std::string label = in.ConsumeBool() ? (in.ConsumeBool() ? "top" : "SAG ") : "";
    if (in.ConsumeBool()) {
      float value = 0.0F;
      GetRequestedSingleValue(&m, &f, &type, &subtype, &node, &element, &position, &steps, &step, &value,
                              label.data(), static_cast<int64_t>(label.size()));
    } else {
      int32_t count = in.ConsumeIntegralInRange<int32_t>(-1, static_cast<int32_t>(values.size()));
      GetRequestedHistory(&m, &f, &type, &subtype, &node, &element, &position, &steps, &count, values.data(),
                          label.data(), static_cast<int64_t>(label.size()));
    }
  }
  ask_model_queries(opened, {});
  XIT();

  if (has_motion) check_unchanged(motion_path, motion);
  if (has_force) check_unchanged(force_path, force);
  return 0;
}
