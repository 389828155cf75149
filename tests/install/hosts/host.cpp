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
    tmrdar::JOB job(argv[1]);
    std::printf("codes %d %d\n", job.CODES().MOTION, job.CODES().FORCE);
    const tmrdar::MODEL_DIMENSIONS& dims = job.DIMENSIONS();
    std::printf("steps %d elements %d nodes %d\n", dims.NUM_TIME_STEPS, dims.NUM_ELEMENTS, dims.NUM_NODES);
    std::printf("title %s\n", job.DETAILS().TITLE.c_str());
    const tmrdar::NODE_PROPERTIES node = job.NODE(1);
    std::printf("node 1 x %.3f z %.3f\n", static_cast<double>(node.COORDINATES[0]),
                static_cast<double>(node.COORDINATES[2]));

    tmrdar::REQUEST time;
    time.OUTPUT_TYPE = tmrdar::OUTPUT_TYPE::TIME;
    std::printf("time of step 1 %.3f\n", static_cast<double>(job.VALUE(time, 1)));
    const std::vector<float> times = job.HISTORY(time, 3);
    std::printf("times %.3f %.3f %.3f\n", static_cast<double>(times.at(0)), static_cast<double>(times.at(1)),
                static_cast<double>(times.at(2)));

    // No node or element number: the label names the node, and its row's kind
    // lands in the position.
    tmrdar::REQUEST by_label;
    by_label.OUTPUT_TYPE = tmrdar::OUTPUT_TYPE::DISPLACEMENT;
    by_label.LABEL = "Hang-off";
    tmrdar::REQUEST resolved;
    job.VALUE(by_label, 1, &resolved);
    std::printf("label %s node %d position %d\n", by_label.LABEL.c_str(), resolved.NODE, resolved.POSITION);
    job.CLOSE();
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "cxx_host: %s\n", failure.what());
    return 1;
  }
  return 0;
}
