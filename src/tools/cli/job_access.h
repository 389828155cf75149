// Opening a job for a command, and the messages that the library composes
// along the way. The tool holds the library itself, so the message the
// library composed last is that of the exports the tool called.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "tmrdar/tmrdar.hpp"
#include "tools/cli/arguments.h"

namespace tmrdar::cli {

// Throws UsageError unless the positional arguments are those named, of
// which the first `required` must be given (the job first of all).
void check_positional(const Arguments& arguments, std::initializer_list<std::string_view> names,
                      std::size_t required);

// Opens the job named by the first positional argument. A message that the
// library composed while it read the header is shown on standard error as a
// warning (the header may not have been read whole), and then forgotten.
tmrdar::job open_job(const Arguments& arguments);

// The message that the library composed last and that has not been
// forgotten; empty when there is none.
std::string library_message();
void forget_library_message();

}  // namespace tmrdar::cli
