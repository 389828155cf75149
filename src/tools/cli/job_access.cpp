#include "tools/cli/job_access.h"

#include <cstdio>

#include "frame/base/error_handling.h"

namespace tmrdar::cli {

void CHECK_POSITIONAL(const ARGUMENTS& arguments, std::initializer_list<std::string_view> names,
                      std::size_t required) {
  const auto& words = arguments.POSITIONAL();
  if (words.size() < required) {
    throw USAGE_ERROR("the " + std::string(names.begin()[words.size()]) + " is missing");
  }
  if (words.size() > names.size()) throw USAGE_ERROR("unexpected argument '" + words[names.size()] + "'");
}

tmrdar::JOB OPEN_JOB(const ARGUMENTS& arguments) {
  const auto& words = arguments.POSITIONAL();
  FORGET_LIBRARY_MESSAGE();
  tmrdar::JOB job(words.front());
  if (const std::string message = LIBRARY_MESSAGE(); !message.empty()) {
    std::fprintf(stderr, "tmrdar: warning: the header of %s may be incomplete: %s\n", words.front().c_str(),
                 message.c_str());
  }
  FORGET_LIBRARY_MESSAGE();
  return job;
}

std::string LIBRARY_MESSAGE() { return std::string(ERROR_HANDLING::LAST_MESSAGE()); }

void FORGET_LIBRARY_MESSAGE() { ERROR_HANDLING::ERROR3(false, "", ""); }

}  // namespace tmrdar::cli
