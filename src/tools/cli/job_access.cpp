#include "tools/cli/job_access.h"

#include <cstdio>

#include "frame/base/error_handling.h"

namespace tmrdar::cli {

void check_positional(const Arguments& arguments, std::initializer_list<std::string_view> names,
                      std::size_t required) {
  const auto& words = arguments.positional();
  if (words.size() < required) {
    throw UsageError("the " + std::string(names.begin()[words.size()]) + " is missing");
  }
  if (words.size() > names.size()) throw UsageError("unexpected argument '" + words[names.size()] + "'");
}

tmrdar::job open_job(const Arguments& arguments) {
  const auto& words = arguments.positional();
  forget_library_message();
  tmrdar::job job(words.front());
  if (const std::string message = library_message(); !message.empty()) {
    std::fprintf(stderr, "tmrdar: warning: the header of %s may be incomplete: %s\n", words.front().c_str(),
                 message.c_str());
  }
  forget_library_message();
  return job;
}

std::string library_message() { return std::string(error_handling::last_message()); }

void forget_library_message() { error_handling::error3(false, "", ""); }

}  // namespace tmrdar::cli
