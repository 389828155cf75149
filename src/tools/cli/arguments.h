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
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct Option {
  std::string_view name;  // with its leading "--"
  bool takes_value;
};

// The options every command knows besides its own.
inline constexpr Option help_option{"--help", false};
inline constexpr Option csv_option{"--csv", false};

class Arguments {
 public:
  // Parses the words after the command. "--name value" and "--name=value"
  // both give a value; "-h" is "--help"; after "--" every word is
  // positional. A word that starts with '-' and then no digit is an option.
  // Throws UsageError for an unknown option, a missing value, a value given
  // to a switch, or an option given twice.
  Arguments(std::span<const std::string_view> words, std::span<const Option> options);

  bool has(std::string_view option) const;
  std::optional<std::string> value(std::string_view option) const;
  const std::vector<std::string>& positional() const { return positional_; }

 private:
  std::vector<std::string> positional_;
  std::map<std::string, std::string, std::less<>> given_;
};

// A whole number of 32 bits, in decimal, with an optional sign. Throws
// UsageError naming `what` otherwise.
int32_t whole_number(std::string_view text, std::string_view what);

}  // namespace tmrdar::cli
