// A C++ host of the installed library, through its C interface: opens the job
// named on the command line and prints the same lines as the C host.
#include <array>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

#include <tmrdar/tmrdar.h>

namespace {

bool check(const char* call, int32_t result) {
  if (result != 0) std::fprintf(stderr, "%s returned %d\n", call, result);
  return result == 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: cxx_host JOB\n");
    return 2;
  }
  const std::string job = argv[1];
  int32_t motion = 0;
  int32_t force = 0;
  std::array<int32_t, 5> motion_words{};
  std::array<int32_t, 5> force_words{};
  std::array<int32_t, 14> dims{};
  const auto n = static_cast<int32_t>(dims.size());
  if (!check("GetDatabaseInfo", GetDatabaseInfo(&motion, &force, motion_words.data(), force_words.data(), &n,
                                                dims.data(), job.data(), static_cast<int64_t>(job.size())))) {
    return 1;
  }
  std::printf("codes %d %d\n", motion, force);
  std::printf("steps %d elements %d nodes %d\n", dims[0], dims[2], dims[3]);

  int32_t detail_1 = 0;
  int32_t detail_2 = 0;
  float detail_3 = 0.0F;
  std::string title(64, '\0');
  if (!check("GetAnalysisDetails", GetAnalysisDetails(&detail_1, &detail_2, &detail_3, title.data(),
                                                      static_cast<int64_t>(title.size())))) {
    return 1;
  }
  title.erase(title.find_last_not_of(' ') + 1);
  std::printf("title %s\n", title.c_str());

  const int32_t node = 1;
  const int32_t main_kind = 0;
  std::array<float, 3> xyz{};
  if (GetNodeProperties(&motion, &force, &node, &main_kind, xyz.data()) != 1) return 1;
  std::printf("node 1 x %.3f z %.3f\n", static_cast<double>(xyz[0]), static_cast<double>(xyz[2]));

  const int32_t time_type = 1;
  const int32_t subtype = 1;
  const int32_t steps = dims[0];
  const int32_t step = 1;
  int32_t request_node = 0;
  int32_t request_element = 0;
  int32_t position = 0;
  float time = 0.0F;
  if (!check("GetRequestedSingleValue", GetRequestedSingleValue(&motion, &force, &time_type, &subtype, &request_node,
                                                                &request_element, &position, &steps, &step, &time,
                                                                " ", 1))) {
    return 1;
  }
  std::printf("time of step 1 %.3f\n", static_cast<double>(time));
  std::array<float, 3> times{};
  const auto count = static_cast<int32_t>(times.size());
  if (!check("GetRequestedHistory", GetRequestedHistory(&motion, &force, &time_type, &subtype, &request_node,
                                                        &request_element, &position, &steps, &count, times.data(),
                                                        " ", 1))) {
    return 1;
  }
  std::printf("times %.3f %.3f %.3f\n", static_cast<double>(times[0]), static_cast<double>(times[1]),
              static_cast<double>(times[2]));

  // No node or element number: the label names the node, and its row's kind
  // lands in the position.
  const int32_t displacement_type = 5;
  constexpr std::string_view label = "Hang-off";
  if (!check("GetRequestedSingleValue",
             GetRequestedSingleValue(&motion, &force, &displacement_type, &subtype, &request_node, &request_element,
                                     &position, &steps, &step, &time, label.data(),
                                     static_cast<int64_t>(label.size())))) {
    return 1;
  }
  std::printf("label %s node %d position %d\n", label.data(), request_node, position);
  return XIT();
}
