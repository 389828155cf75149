// The shared library as a host loads it.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <set>
#include <string>

#include "builder/job.h"
#include "support/scratch_dir.h"
#include "tmrdar/tmrdar.h"

namespace {

TEST(SharedLibrary, ExportsExactlyTheTwelveEntryPoints) {
  const std::string command = std::string(TMRDAR_NM) + " -D --defined-only " + TMRDAR_SHARED_LIBRARY;
  std::FILE* pipe = ::popen(command.c_str(), "r");
  ASSERT_NE(pipe, nullptr);
  std::set<std::string> names;
  std::array<char, 512> line{};
  while (std::fgets(line.data(), line.size(), pipe) != nullptr) {
    std::string text(line.data());
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) text.pop_back();
    const std::size_t cut = text.rfind(' ');
    names.insert(text.substr(cut + 1));
  }
  EXPECT_EQ(::pclose(pipe), 0);
  const std::set<std::string> expected{
      "DllMain", "XIT", "GetDatabaseInfo", "GetAnalysisDetails", "GetNodeProperties", "GetElementProperties",
      "GetDistanceAlongRiser", "GetRequestedSingleValue", "GetRequestedHistory", "GetRequestedSingleValueError",
      "GetRequestedHistoryError", "GetProcessedDirectStressStrainData"};
  EXPECT_EQ(names, expected);
}

TEST(SharedLibrary, OpensAJobAfterLoadingAndClosesItOnUnload) {
  tmrdar::testing::ScratchDir dir;
  tmrdar::builder::Job job;
  job.force.present = false;
  job.write(dir.file("riser"));

  void* library = ::dlopen(TMRDAR_SHARED_LIBRARY, RTLD_NOW | RTLD_LOCAL);
  ASSERT_NE(library, nullptr) << ::dlerror();
  const auto info = reinterpret_cast<decltype(&GetDatabaseInfo)>(::dlsym(library, "GetDatabaseInfo"));
  const auto xit = reinterpret_cast<decltype(&XIT)>(::dlsym(library, "XIT"));
  ASSERT_NE(info, nullptr);
  ASSERT_NE(xit, nullptr);

  int32_t motion = 0;
  int32_t force = 0;
  std::array<int32_t, 5> motion_words{};
  std::array<int32_t, 5> force_words{};
  const int32_t n = 14;
  std::array<int32_t, 14> dims{};
  const std::string path = dir.file("riser.dbm");
  EXPECT_EQ(info(&motion, &force, motion_words.data(), force_words.data(), &n, dims.data(), path.data(),
                 static_cast<int64_t>(path.size())),
            0);
  EXPECT_EQ(std::pair(motion, force), std::pair(13, 0));
  EXPECT_EQ(xit(), 0);
  EXPECT_EQ(::dlclose(library), 0);
}

}  // namespace
