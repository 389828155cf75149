#include "core/text/line_scanning.h"

#include <algorithm>
#include <string>
#include <vector>

#include "core/text/free_form_read.h"
#include "frame/base/error_handling.h"

namespace tmrdar {
namespace {

constexpr char tab = '\t';

constexpr bool is_blank_or_tab(char c) { return c == ' ' || c == tab; }

constexpr char lower(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; }

void report(std::string_view text) {
  error_handling::error3(true, error_handling::input_data_processing, text);
}

// The count of entries to fill: n, but never below 0 nor beyond an array.
std::size_t bounded_count(int32_t n, std::size_t capacity) {
  return n <= 0 ? 0 : std::min(static_cast<std::size_t>(n), capacity);
}

// The index in the line where the entries start: behind key + "=", or at the
// start for a blank key; npos when the line lacks the key.
std::size_t start_of_entries(std::string_view key, std::string_view line) {
  if (chars::is_blank(key)) return 0;
  std::string marker(key);
  marker.push_back('=');
  const std::size_t at = line.find(marker);
  return at == std::string_view::npos ? at : at + marker.size();
}

// Takes up to `count` entries from the line, starting at `start`. Entries that
// the line does not hold stay empty. With `braces`, "{" and "}" enclose an
// entry whose blanks, tabs and commas are its own.
std::vector<std::string> take_entries(std::string_view line, std::size_t start, std::size_t count,
                                      bool braces) {
  const std::size_t end = chars::len_trim(line);
  std::vector<std::string> entries(count);
  std::size_t pos = start;
  std::size_t taken = 0;
  while (pos < end && taken < count) {
    while (pos < end && is_blank_or_tab(line[pos])) ++pos;
    if (pos >= end) break;
    std::string& entry = entries[taken++];
    // A comma here closes an empty entry; it is passed over below.
    if (line[pos] != ',') {
      bool in_braces = false;
      while (pos < end) {
        const char c = line[pos];
        if (in_braces) {
          ++pos;
          if (c == '}') {
            in_braces = false;
            break;  // the closing brace ends the entry
          }
          entry.push_back(c);
          continue;
        }
        if (c == ',' || is_blank_or_tab(c)) break;
        ++pos;
        if (braces && c == '{') {
          in_braces = true;
        } else if (braces && c == '}') {
          report("Missing opening brace '{' for node label.");
        } else {
          entry.push_back(c);
        }
      }
      if (in_braces) report("Missing closing brace '}' for node label.");
    }
    while (pos < end && is_blank_or_tab(line[pos])) ++pos;
    if (pos < end && line[pos] == ',') ++pos;
  }
  return entries;
}

// The entry without leading and trailing blanks.
std::string_view adjusted(std::string_view entry) {
  const std::size_t first = entry.find_first_not_of(' ');
  return first == std::string_view::npos ? std::string_view{} : chars::trim(entry.substr(first));
}

bool looks_numeric(std::string_view entry) {
  return entry.find_first_not_of("+-.Ee0123456789") == std::string_view::npos;
}

}  // namespace

void find_numbers_and_text_in_line(std::string_view key, std::string_view line,
                                   std::span<int32_t> numbers, int32_t n, int32_t default_value,
                                   std::span<TextEntry> texts, std::span<bool> is_text) {
  const std::size_t count = bounded_count(n, std::min({numbers.size(), texts.size(), is_text.size()}));
  for (std::size_t i = 0; i < count; ++i) {
    numbers[i] = default_value;
    texts[i].blank();
    is_text[i] = false;
  }
  // Only the key's first character marks the start of the entries.
  const std::size_t start = start_of_entries(key.substr(0, 1), line);
  if (start == std::string_view::npos) return;

  const std::vector<std::string> entries = take_entries(line, start, count, true);
  for (std::size_t i = 0; i < count; ++i) {
    const std::string_view entry = adjusted(entries[i]);
    if (entry.empty()) continue;
    if (!looks_numeric(entry)) {
      texts[i].assign(entry);
      is_text[i] = true;
      continue;
    }
    if (read_free_form_integer(entry, numbers[i]) == FreeFormRead::out_of_range) {
      report("Number is too large for the program.");
    }
  }
}

void find_reals_in_line(std::string_view key, std::string_view line, std::span<float> reals,
                        int32_t n, float default_value) {
  const std::size_t count = bounded_count(n, reals.size());
  std::fill_n(reals.begin(), count, default_value);
  const std::size_t start = start_of_entries(key, line);
  if (start == std::string_view::npos) return;

  const std::vector<std::string> entries = take_entries(line, start, count, false);
  for (std::size_t i = 0; i < count; ++i) {
    const std::string_view entry = adjusted(entries[i]);
    if (entry.empty()) continue;
    if (read_free_form_real(entry, reals[i]) == FreeFormRead::out_of_range && entry[0] >= '1' &&
        entry[0] <= '8') {
      report("Number is too large for the program.");
      return;
    }
  }
}

int32_t count_spaces(std::string_view string) {
  const std::string_view trimmed = chars::trim(string);
  return static_cast<int32_t>(std::count(trimmed.begin(), trimmed.end(), ' '));
}

bool string_compare(std::string_view a, std::string_view b) {
  const std::string_view ta = chars::trim(a);
  const std::string_view tb = chars::trim(b);
  return ta.size() == tb.size() &&
         std::equal(ta.begin(), ta.end(), tb.begin(), [](char x, char y) { return lower(x) == lower(y); });
}

int32_t hex_to_int(std::string_view string) {
  const std::string_view digits = adjusted(string);
  uint32_t value = 0;
  uint32_t weight = 1;  // 16 to the power of the place; 0 from the ninth place on
  for (std::size_t i = digits.size(); i-- > 0;) {
    const char c = digits[i];
    uint32_t digit = 0;
    if (c >= '0' && c <= '9') {
      digit = static_cast<uint32_t>(c - '0');
    } else if (lower(c) >= 'a' && lower(c) <= 'f') {
      digit = static_cast<uint32_t>(lower(c) - 'a' + 10);
    } else {
      std::string warning = "Ignoring invalid hexadecimal character ";
      warning.push_back(c);
      warning.push_back('.');
      error_handling::warn1(true, error_handling::input_data_processing, warning);
    }
    value += digit * weight;
    weight *= 16;
  }
  return static_cast<int32_t>(value);
}

}  // namespace tmrdar
