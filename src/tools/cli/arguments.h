// The command line of one command: its positional arguments and its options.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tmrdar::cli {

// A mistake in the command line; the tool answers it with a one-line reason
// and exit status 2.
class USAGE_ERROR : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct OPTION {
  std::string_view NAME;  // with its leading "--"
  bool TAKES_VALUE;
};

// The options every command knows besides its own.
inline constexpr OPTION HELP_OPTION{"--help", false};
inline constexpr OPTION CSV_OPTION{"--csv", false};

class ARGUMENTS {
 public:
  // Parses the words after the command. "--name value" and "--name=value"
  // both give a value; "-h" is "--help"; after "--" every word is
  // positional. A word that starts with '-' and then no digit is an option.
  // Throws USAGE_ERROR for an unknown option, a missing value, a value given
  // to a switch, or an option given twice.
  ARGUMENTS(std::span<const std::string_view> words, std::span<const OPTION> options);

  bool HAS(std::string_view option) const;
  std::optional<std::string> VALUE(std::string_view option) const;
  const std::vector<std::string>& POSITIONAL() const { return positional_; }

 private:
  std::vector<std::string> positional_;
  std::map<std::string, std::string, std::less<>> given_;
};

// A whole number of 32 bits, in decimal, with an optional sign. Throws
// USAGE_ERROR naming `what` otherwise.
int32_t WHOLE_NUMBER(std::string_view text, std::string_view what);

}  // namespace tmrdar::cli
