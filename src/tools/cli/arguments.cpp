#include "tools/cli/arguments.h"

#include <algorithm>
#include <cctype>
#include <charconv>

namespace tmrdar::cli {
namespace {

bool is_option(std::string_view word) {
  return word.size() >= 2 && word[0] == '-' && std::isdigit(static_cast<unsigned char>(word[1])) == 0;
}

}  // namespace

Arguments::Arguments(std::span<const std::string_view> words, std::span<const Option> options) {
  bool options_end = false;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string_view word = words[i];
    if (options_end || !is_option(word)) {
      positional_.emplace_back(word);
      continue;
    }
    if (word == "--") {
      options_end = true;
      continue;
    }
    std::string_view name = word == "-h" ? help_option.name : word;
    std::optional<std::string> value;
    if (const std::size_t equals = name.find('='); equals != std::string_view::npos && name.starts_with("--")) {
      value = std::string(name.substr(equals + 1));
      name = name.substr(0, equals);
    }
    const auto known = std::find_if(options.begin(), options.end(), [&](const Option& o) { return o.name == name; });
    if (known == options.end()) throw UsageError("unknown option '" + std::string(word) + "'");
    if (known->takes_value && !value) {
      if (i + 1 == words.size()) throw UsageError("option " + std::string(name) + " needs a value");
      value = std::string(words[++i]);
    }
    if (!known->takes_value && value) throw UsageError("option " + std::string(name) + " takes no value");
    if (given_.contains(name)) throw UsageError("option " + std::string(name) + " is given twice");
    given_.emplace(std::string(name), value.value_or(""));
  }
}

bool Arguments::has(std::string_view option) const { return given_.contains(option); }

std::optional<std::string> Arguments::value(std::string_view option) const {
  const auto found = given_.find(option);
  if (found == given_.end()) return std::nullopt;
  return found->second;
}

int32_t whole_number(std::string_view text, std::string_view what) {
  int32_t value = 0;
  const std::string_view digits = text.starts_with('+') ? text.substr(1) : text;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (digits.empty() || error != std::errc() || end != digits.data() + digits.size()) {
    throw UsageError(std::string(what) + " must be a whole number, not '" + std::string(text) + "'");
  }
  return value;
}

}  // namespace tmrdar::cli
