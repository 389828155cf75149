// The exports called from 8 threads at once. Every export holds the
// library's lock for its whole call, so each answer is the one that a single
// thread gets: a job opened in one thread answers the others; opens of the
// job of a format while other threads ask it, failed opens and the error
// decoders interleave with the requests and queries of every format.
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cstdint>
#include <string>
#include <thread>
#include <vector>

#include "header/format_version.h"
#include "support/host_session.h"
#include "support/open_through_exports.h"
#include "support/scratch_dir.h"
#include "tmrdar/tmrdar.h"

namespace tmrdar::frame {
namespace {

using testing::Answers;
using testing::Asked;

constexpr int num_threads = 8;

class Threads : public ::testing::Test {
 protected:
  void SetUp() override {
    XIT();
    for (std::size_t k = 0; k < header::format_versions.size(); ++k) {
      const builder::Job job = testing::small_job(*header::format_versions[k]);
      stems[k] = dir.file(std::string(header::format_versions[k]->name));
      job.write(stems[k]);
      steps[k] = job.written_run().num_time_steps;
      // One thread: open, ask, close.
      ASSERT_EQ(open(k), 0);
      alone[k] = ask(k);
      XIT();
    }
  }
  void TearDown() override { XIT(); }

  int32_t open(std::size_t k) {
    int32_t motion = 0, force = 0;
    return testing::open_through_exports(stems[k], motion, force);
  }
  Answers ask(std::size_t k) const {
    const int32_t code = header::format_versions[k]->database_version;
    return testing::ask_every_export(code, code, steps[k], Asked::each_type);
  }

  // Runs `body(thread)` in 8 threads at once and waits for them.
  template <typename Body>
  static void in_threads(Body body) {
    std::atomic<int> ready = 0;
    std::vector<std::thread> threads;
    for (int t = 0; t < num_threads; ++t) {
      threads.emplace_back([&, t] {
        ++ready;
        while (ready < num_threads) std::this_thread::yield();
        body(t);
      });
    }
    for (std::thread& thread : threads) thread.join();
  }

  testing::ScratchDir dir;
  std::array<std::string, 6> stems;
  std::array<int32_t, 6> steps{};
  std::array<Answers, 6> alone;
};

// V811 and V815 read through the frame's two units, which every open
// reconnects: their jobs are asked by all threads after one open each.
TEST_F(Threads, AJobOpenedInOneThreadAnswersTheOthers) {
  for (std::size_t k = 0; k < header::format_versions.size(); ++k) {
    SCOPED_TRACE(header::format_versions[k]->name);
    ASSERT_EQ(open(k), 0);
    std::atomic<int> differ = 0;
    in_threads([&](int) {
      for (int round = 0; round < 40; ++round) differ += ask(k) == alone[k] ? 0 : 1;
    });
    EXPECT_EQ(differ, 0);
    XIT();
  }
}

// The four formats read through files of their own readers stay open side
// by side. Threads 0 to 3 each open their format's job again and again and
// ask it; threads 4 to 7 ask all four meanwhile, make opens that fail and
// decode masks.
TEST_F(Threads, OpensRequestsAndQueriesInterleaved) {
  constexpr std::size_t own_files = 4;  // V861, V841, V831, V821
  for (std::size_t k = 0; k < own_files; ++k) ASSERT_EQ(open(k), 0);
  std::atomic<int> differ = 0;
  const std::string missing = dir.file("none");
  in_threads([&](int t) {
    for (int round = 0; round < 40; ++round) {
      if (t < 4) {
        const auto k = static_cast<std::size_t>(t);
        differ += open(k) == 0 ? 0 : 1;
        differ += ask(k) == alone[k] ? 0 : 1;
        continue;
      }
      const auto k = static_cast<std::size_t>(t + round) % own_files;
      differ += ask(k) == alone[k] ? 0 : 1;
      int32_t motion = 0, force = 0;
      differ += testing::open_through_exports(missing, motion, force) == -3 ? 0 : 1;
      int32_t mask = 4096 + 16, length = 16;
      std::array<int32_t, 16> flags{};
      differ += GetRequestedHistoryError(&mask, &length, flags.data()) == 0 && flags[4] == 1 && flags[12] == 1 ? 0 : 1;
    }
  });
  EXPECT_EQ(differ, 0);
}

}  // namespace
}  // namespace tmrdar::frame
