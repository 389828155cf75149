// tmrdar: a look into a job's databases from the command line.
#include <array>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "tmrdar/tmrdar.h"

namespace {

constexpr const char* USAGE =
    "usage: tmrdar COMMAND [options]\n"
    "\n"
    "commands:\n"
    "  info JOB    the files, format version, model dimensions and analysis details of a job\n"
    "\n"
    "JOB is the path of the job with any extension or none: JOB.dbm and JOB.dbf are read.\n"
    "tmrdar COMMAND --help tells more about a command.\n";

constexpr const char* INFO_USAGE =
    "usage: tmrdar info JOB\n"
    "\n"
    "Opens the job and prints the version code of each file, the words of each\n"
    "file's first record, the model dimensions and the analysis details.\n";

constexpr std::array<const char*, 14> DIMENSION_NAMES{
    "time steps",           "pipe-in-pipe rows per pair", "elements",         "nodes",
    "auxiliary elements",   "auxiliary nodes",            "labels",           "boundary conditions",
    "guide surfaces",       "zero gap guides",            "pipe-in-pipe connections",
    "pipe-in-pipe results", "clash pairs",                "nonlinear E tables"};

const char* FORMAT_NAME(int32_t code) {
  switch (code) {
    case 13: return "V861";
    case 11: return "V841";
    case 10: return "V831";
    case 7: return "V821";
    case 4: return "V815";
    case 3: return "V811";
    default: return nullptr;
  }
}

std::string FILE_STATE(int32_t code) {
  if (code == 0) return "not found";
  if (code < 0) return "cannot be read";
  const char* name = FORMAT_NAME(code);
  return "version code " + std::to_string(code) + (name != nullptr ? std::string(" (") + name + ")" : " (unknown)");
}

int INFO(const std::string& job) {
  int32_t motion = 0;
  int32_t force = 0;
  std::array<int32_t, 5> motion_words{};
  std::array<int32_t, 5> force_words{};
  const int32_t n = 14;
  std::array<int32_t, 14> dims{};
  const int32_t result = GetDatabaseInfo(&motion, &force, motion_words.data(), force_words.data(), &n, dims.data(),
                                         job.data(), static_cast<int64_t>(job.size()));
  if (result == -1) {
    std::fprintf(stderr, "tmrdar: the job path is blank\n");
    return 1;
  }
  if (result != 0) {
    if (motion == 0 && force == 0) {
      std::fprintf(stderr, "tmrdar: no database files found for %s (looked for .dbm and .dbf)\n", job.c_str());
    } else {
      std::fprintf(stderr, "tmrdar: no readable database in %s: motion file %s, force file %s\n", job.c_str(),
                   FILE_STATE(motion).c_str(), FILE_STATE(force).c_str());
    }
    return 1;
  }

  const auto words = [](const std::array<int32_t, 5>& w) {
    std::string text;
    for (const int32_t v : w) text += " " + std::to_string(v);
    return text;
  };
  std::printf("%-28s %s\n", "job", job.c_str());
  std::printf("%-28s %s\n", "motion file (.dbm)", FILE_STATE(motion).c_str());
  if (motion > 0) std::printf("%-28s%s\n", "  first record words 4-8", words(motion_words).c_str());
  std::printf("%-28s %s\n", "force file (.dbf)", FILE_STATE(force).c_str());
  if (force > 0) std::printf("%-28s%s\n", "  first record words 4-8", words(force_words).c_str());
  for (std::size_t i = 0; i < dims.size(); ++i) std::printf("%-28s %d\n", DIMENSION_NAMES[i], dims[i]);

  int32_t detail_1 = 0;
  int32_t detail_2 = 0;
  float detail_3 = 0.0F;
  std::vector<char> title(1024, ' ');
  GetAnalysisDetails(&detail_1, &detail_2, &detail_3, title.data(), static_cast<int64_t>(title.size()));
  std::string text(title.begin(), title.end());
  text.erase(text.find_last_not_of(' ') + 1);
  std::printf("%-28s %d %d %g\n", "analysis details", detail_1, detail_2, static_cast<double>(detail_3));
  std::printf("%-28s %s\n", "title", text.c_str());
  XIT();
  return 0;
}

bool IS_HELP(std::string_view argument) { return argument == "--help" || argument == "-h"; }

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2 || IS_HELP(argv[1])) {
    std::fputs(USAGE, argc < 2 ? stderr : stdout);
    return argc < 2 ? 2 : 0;
  }
  const std::string_view command = argv[1];
  if (command == "info") {
    if (argc == 3 && IS_HELP(argv[2])) {
      std::fputs(INFO_USAGE, stdout);
      return 0;
    }
    if (argc != 3) {
      std::fprintf(stderr, "tmrdar: info takes one JOB (see tmrdar info --help)\n");
      return 2;
    }
    return INFO(argv[2]);
  }
  std::fprintf(stderr, "tmrdar: unknown command '%s' (see tmrdar --help)\n", argv[1]);
  return 2;
}
