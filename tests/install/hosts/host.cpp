// A C++ host of the installed library, through its C++ interface: opens the
// job named on the command line and prints the same lines as the C host.
#include <cstdio>
#include <exception>
#include <vector>

#include <tmrdar/tmrdar.hpp>

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: cxx_host JOB\n");
    return 2;
  }
  try {
    tmrdar::job job(argv[1]);
    std::printf("codes %d %d\n", job.codes().motion, job.codes().force);
    const tmrdar::model_dimensions& dims = job.dimensions();
    std::printf("steps %d elements %d nodes %d\n", dims.num_time_steps, dims.num_elements, dims.num_nodes);
    std::printf("title %s\n", job.details().title.c_str());
    const tmrdar::node_properties node = job.node(1);
    std::printf("node 1 x %.3f z %.3f\n", static_cast<double>(node.coordinates[0]),
                static_cast<double>(node.coordinates[2]));

    tmrdar::request time;
    time.output_type = tmrdar::output_type::time;
    std::printf("time of step 1 %.3f\n", static_cast<double>(job.value(time, 1)));
    const std::vector<float> times = job.history(time, 3);
    std::printf("times %.3f %.3f %.3f\n", static_cast<double>(times.at(0)), static_cast<double>(times.at(1)),
                static_cast<double>(times.at(2)));

    // No node or element number: the label names the node, and its row's kind
    // lands in the position.
    tmrdar::request by_label;
    by_label.output_type = tmrdar::output_type::displacement;
    by_label.label = "Hang-off";
    tmrdar::request resolved;
    job.value(by_label, 1, &resolved);
    std::printf("label %s node %d position %d\n", by_label.label.c_str(), resolved.node, resolved.position);
    job.close();
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "cxx_host: %s\n", failure.what());
    return 1;
  }
  return 0;
}
