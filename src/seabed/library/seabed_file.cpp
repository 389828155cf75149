// Reading seabed files; the format is described in docs/seabed-file-format.md.
#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "seabed/library/seabed.h"

namespace tmrdar::seabed {
namespace {

constexpr std::string_view FIRST_LINE = "TMRDAR SEABED 1";
// Counts are 32-bit and a triangle table holds three numbers a triangle.
constexpr std::size_t MAX_ROWS = static_cast<std::size_t>(std::numeric_limits<int32_t>::max() / 3);

enum class FORM { PROFILE, SURFACE };

struct PARSED {
  FORM KIND = FORM::PROFILE;
  bool CUBIC = false;
  // Row by row as read: profile (distance, height), surface (x, y, height).
  std::vector<double> ROWS;
  std::vector<int32_t> TRIANGLES;  // three node numbers a triangle
  int32_t NODE_COUNT = 0;
  int32_t TRIANGLE_COUNT = 0;
};

struct FAILURE {
  int32_t STATUS = STATUS_OK;
  int32_t LINE = 0;
  std::string TEXT;
};

FAILURE FAIL(int32_t status, int32_t line, std::string text) {
  return FAILURE{status, line, std::move(text)};
}

bool IS_BLANK(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\f' || c == '\v'; }

// The blank-separated words of a line, up to a '#'.
std::vector<std::string_view> WORDS(std::string_view line) {
  if (const auto hash = line.find('#'); hash != std::string_view::npos) line = line.substr(0, hash);
  std::vector<std::string_view> words;
  std::size_t i = 0;
  while (i < line.size()) {
    while (i < line.size() && IS_BLANK(line[i])) ++i;
    const std::size_t start = i;
    while (i < line.size() && !IS_BLANK(line[i])) ++i;
    if (i > start) words.push_back(line.substr(start, i - start));
  }
  return words;
}

bool SAME_WORD(std::string_view word, std::string_view keyword) {
  return word.size() == keyword.size() &&
         std::equal(word.begin(), word.end(), keyword.begin(), [](char a, char b) {
           return std::tolower(static_cast<unsigned char>(a)) == b;
         });
}

// A finite real that a 32-bit real can hold.
bool READ_REAL(std::string_view word, double& value) {
  if (word.size() > 1 && word[0] == '+' && word[1] != '-') word.remove_prefix(1);
  const char* end = word.data() + word.size();
  const auto [ptr, ec] = std::from_chars(word.data(), end, value, std::chars_format::general);
  if (ec != std::errc() || ptr != end || !std::isfinite(value)) return false;
  return std::fabs(value) <= static_cast<double>(std::numeric_limits<float>::max());
}

bool READ_INTEGER(std::string_view word, int64_t& value) {
  if (word.size() > 1 && word[0] == '+' && word[1] != '-') word.remove_prefix(1);
  const char* end = word.data() + word.size();
  const auto [ptr, ec] = std::from_chars(word.data(), end, value);
  return ec == std::errc() && ptr == end;
}

// The lines of the text, without their line ends.
class LINES {
 public:
  explicit LINES(std::string_view text) : text_(text) {}
  bool NEXT(std::string_view& line) {
    if (position_ > text_.size()) return false;
    const auto end = text_.find('\n', position_);
    const std::size_t stop = end == std::string_view::npos ? text_.size() : end;
    line = text_.substr(position_, stop - position_);
    position_ = stop + 1;
    ++number_;
    return true;
  }
  int32_t NUMBER() const { return number_; }

 private:
  std::string_view text_;
  std::size_t position_ = 0;
  int32_t number_ = 0;
};

// The whole file; false when it does not open or a read fails (as it does
// for a directory).
bool READ_WHOLE_FILE(std::string_view path, std::string& text) {
  std::FILE* stream = std::fopen(std::string(path).c_str(), "rb");
  if (stream == nullptr) return false;
  char chunk[65536];
  std::size_t got = 0;
  while ((got = std::fread(chunk, 1, sizeof chunk, stream)) > 0) text.append(chunk, got);
  const bool failed = std::ferror(stream) != 0;
  std::fclose(stream);
  return !failed;
}

bool IS_FIRST_LINE(std::string_view line) {
  while (!line.empty() && IS_BLANK(line.back())) line.remove_suffix(1);
  return line == FIRST_LINE;
}

// Whether the triangle of these plan corners has an area, judged on the
// 32-bit coordinates that the node table keeps.
bool HAS_AREA(const PARSED& p, const int32_t (&corner)[3]) {
  double x[3] = {};
  double y[3] = {};
  for (int k = 0; k < 3; ++k) {
    const std::size_t row = 3 * static_cast<std::size_t>(corner[k] - 1);
    x[k] = static_cast<float>(p.ROWS[row]);
    y[k] = static_cast<float>(p.ROWS[row + 1]);
  }
  const double area2 = std::fabs((x[1] - x[0]) * (y[2] - y[0]) - (y[1] - y[0]) * (x[2] - x[0]));
  double longest = 0.0;
  for (int k = 0; k < 3; ++k) {
    const double dx = x[(k + 1) % 3] - x[k];
    const double dy = y[(k + 1) % 3] - y[k];
    longest = std::max(longest, dx * dx + dy * dy);
  }
  return area2 > 1e-12 * longest;
}

FAILURE PARSE_PROFILE_LINE(const std::vector<std::string_view>& words, int32_t line, PARSED& p) {
  if (words.size() != 2) return FAIL(STATUS_SYNTAX, line, "a profile node is a distance and a height");
  double distance = 0.0;
  double height = 0.0;
  if (!READ_REAL(words[0], distance) || !READ_REAL(words[1], height)) {
    return FAIL(STATUS_SYNTAX, line, "not a finite number within the range of a 32-bit real");
  }
  if (p.NODE_COUNT > 0 && static_cast<float>(distance) < static_cast<float>(p.ROWS[p.ROWS.size() - 2])) {
    return FAIL(STATUS_BAD_DATA, line, "profile distances must not decrease");
  }
  if (static_cast<std::size_t>(p.NODE_COUNT) >= MAX_ROWS) return FAIL(STATUS_BAD_DATA, line, "too many nodes");
  p.ROWS.push_back(distance);
  p.ROWS.push_back(height);
  ++p.NODE_COUNT;
  return {};
}

FAILURE PARSE_NODE_LINE(const std::vector<std::string_view>& words, int32_t line, PARSED& p) {
  if (words.size() != 4) return FAIL(STATUS_SYNTAX, line, "a surface node is its number, x, y and a height");
  int64_t number = 0;
  if (!READ_INTEGER(words[0], number)) return FAIL(STATUS_SYNTAX, line, "a node number is an integer");
  if (number != int64_t{p.NODE_COUNT} + 1) {
    return FAIL(STATUS_BAD_DATA, line, "nodes are numbered 1, 2, 3, ... in the order of the file");
  }
  double values[3] = {};
  for (int k = 0; k < 3; ++k) {
    if (!READ_REAL(words[static_cast<std::size_t>(k) + 1], values[k])) {
      return FAIL(STATUS_SYNTAX, line, "not a finite number within the range of a 32-bit real");
    }
  }
  if (static_cast<std::size_t>(p.NODE_COUNT) >= MAX_ROWS) return FAIL(STATUS_BAD_DATA, line, "too many nodes");
  p.ROWS.insert(p.ROWS.end(), values, values + 3);
  ++p.NODE_COUNT;
  return {};
}

FAILURE PARSE_TRIANGLE_LINE(const std::vector<std::string_view>& words, int32_t line, PARSED& p) {
  if (words.size() != 3) return FAIL(STATUS_SYNTAX, line, "a triangle is three node numbers");
  int32_t corner[3] = {};
  for (int k = 0; k < 3; ++k) {
    int64_t number = 0;
    if (!READ_INTEGER(words[static_cast<std::size_t>(k)], number)) {
      return FAIL(STATUS_SYNTAX, line, "a node number is an integer");
    }
    if (number < 1 || number > p.NODE_COUNT) return FAIL(STATUS_BAD_DATA, line, "no node of that number");
    corner[k] = static_cast<int32_t>(number);
  }
  if (corner[0] == corner[1] || corner[1] == corner[2] || corner[2] == corner[0]) {
    return FAIL(STATUS_BAD_DATA, line, "a triangle names a node twice");
  }
  if (!HAS_AREA(p, corner)) return FAIL(STATUS_BAD_DATA, line, "a triangle has no area in plan");
  if (static_cast<std::size_t>(p.TRIANGLE_COUNT) >= MAX_ROWS) {
    return FAIL(STATUS_BAD_DATA, line, "too many triangles");
  }
  p.TRIANGLES.insert(p.TRIANGLES.end(), corner, corner + 3);
  ++p.TRIANGLE_COUNT;
  return {};
}

FAILURE PARSE(std::string_view path, PARSED& p) {
  std::string text;
  if (!READ_WHOLE_FILE(path, text)) return FAIL(STATUS_CANNOT_READ, 0, "the file cannot be read");
  LINES lines(text);
  std::string_view line;
  if (!lines.NEXT(line) || !IS_FIRST_LINE(line)) {
    return FAIL(STATUS_NOT_SEABED, 1, "the first line is not \"TMRDAR SEABED 1\"");
  }
  enum class STAGE { FORM, PROFILE, BEFORE_NODES, NODES, TRIANGLES } stage = STAGE::FORM;
  while (lines.NEXT(line)) {
    const int32_t number = lines.NUMBER();
    const auto words = WORDS(line);
    if (words.empty()) continue;
    FAILURE failure;
    switch (stage) {
      case STAGE::FORM: {
        if (words.size() != 2) return FAIL(STATUS_SYNTAX, number, "expected \"profile\" or \"surface\" and an interpolation");
        if (SAME_WORD(words[0], "profile")) {
          p.KIND = FORM::PROFILE;
          stage = STAGE::PROFILE;
        } else if (SAME_WORD(words[0], "surface")) {
          p.KIND = FORM::SURFACE;
          stage = STAGE::BEFORE_NODES;
        } else {
          return FAIL(STATUS_SYNTAX, number, "expected \"profile\" or \"surface\"");
        }
        if (SAME_WORD(words[1], "cubic")) {
          p.CUBIC = true;
        } else if (!SAME_WORD(words[1], "linear")) {
          return FAIL(STATUS_SYNTAX, number, "the interpolation is \"linear\" or \"cubic\"");
        }
        break;
      }
      case STAGE::PROFILE:
        failure = PARSE_PROFILE_LINE(words, number, p);
        break;
      case STAGE::BEFORE_NODES:
        if (words.size() != 1 || !SAME_WORD(words[0], "nodes")) {
          return FAIL(STATUS_SYNTAX, number, "expected \"nodes\"");
        }
        stage = STAGE::NODES;
        break;
      case STAGE::NODES:
        if (words.size() == 1 && SAME_WORD(words[0], "triangles")) {
          stage = STAGE::TRIANGLES;
        } else {
          failure = PARSE_NODE_LINE(words, number, p);
        }
        break;
      case STAGE::TRIANGLES:
        failure = PARSE_TRIANGLE_LINE(words, number, p);
        break;
    }
    if (failure.STATUS != STATUS_OK) return failure;
  }
  const int32_t end = lines.NUMBER();
  switch (stage) {
    case STAGE::FORM:
      return FAIL(STATUS_BAD_DATA, end, "the file describes no seabed");
    case STAGE::PROFILE:
      if (p.NODE_COUNT < 2) return FAIL(STATUS_BAD_DATA, end, "a profile needs at least two nodes");
      break;
    case STAGE::BEFORE_NODES:
    case STAGE::NODES:
      return FAIL(STATUS_BAD_DATA, end, "a surface needs its \"triangles\"");
    case STAGE::TRIANGLES:
      if (p.TRIANGLE_COUNT < 1) return FAIL(STATUS_BAD_DATA, end, "a surface needs at least one triangle");
      break;
  }
  return {};
}

FAILURE PARSE_GUARDED(std::string_view path, PARSED& p) {
  try {
    return PARSE(path, p);
  } catch (const std::bad_alloc&) {
    return FAIL(STATUS_NO_MEMORY, 0, "out of memory");
  } catch (const std::length_error&) {
    return FAIL(STATUS_NO_MEMORY, 0, "out of memory");
  }
}

int32_t REPORT(const FAILURE& failure, LOAD_REPORT* report) {
  if (report != nullptr) {
    report->LINE = failure.LINE;
    report->TEXT = failure.TEXT;
  }
  return failure.STATUS;
}

}  // namespace

int32_t open_seabed_file(std::string_view path) {
  PARSED parsed;
  return PARSE_GUARDED(path, parsed).STATUS;
}

int32_t load_seabed_2d(std::string_view path, int32_t& interpolation, int32_t& node_count,
                       std::vector<float>& nodes, std::vector<double>& second_derivatives,
                       LOAD_REPORT* report) {
  PARSED p;
  FAILURE failure = PARSE_GUARDED(path, p);
  if (failure.STATUS == STATUS_OK && p.KIND != FORM::PROFILE) {
    failure = FAIL(STATUS_WRONG_FORM, 0, "the file holds a surface, not a profile");
  }
  if (failure.STATUS != STATUS_OK) return REPORT(failure, report);
  try {
    const auto n = static_cast<std::size_t>(p.NODE_COUNT);
    std::vector<float> table(2 * n);
    for (std::size_t i = 0; i < n; ++i) {
      table[i] = static_cast<float>(p.ROWS[2 * i + 1]);
      table[n + i] = static_cast<float>(p.ROWS[2 * i]);
    }
    std::vector<double> derivatives;
    fit_spline_2d(table, p.NODE_COUNT, derivatives);
    interpolation = p.CUBIC ? PROFILE_CUBIC : PROFILE_LINEAR;
    node_count = p.NODE_COUNT;
    nodes = std::move(table);
    second_derivatives = std::move(derivatives);
  } catch (const std::bad_alloc&) {
    return REPORT(FAIL(STATUS_NO_MEMORY, 0, "out of memory"), report);
  }
  return REPORT({}, report);
}

int32_t load_seabed_3d(std::string_view path, int32_t& interpolation, int32_t& node_count,
                       int32_t& triangle_count, int32_t& cell_count, std::vector<float>& nodes,
                       std::vector<int32_t>& triangles, TRIANGLE_GRID& grid,
                       std::vector<double>& gradients, LOAD_REPORT* report) {
  PARSED p;
  FAILURE failure = PARSE_GUARDED(path, p);
  if (failure.STATUS == STATUS_OK && p.KIND != FORM::SURFACE) {
    failure = FAIL(STATUS_WRONG_FORM, 0, "the file holds a profile, not a surface");
  }
  if (failure.STATUS != STATUS_OK) return REPORT(failure, report);
  try {
    const auto n = static_cast<std::size_t>(p.NODE_COUNT);
    std::vector<float> table(3 * n);
    for (std::size_t i = 0; i < n; ++i) {
      table[i] = static_cast<float>(p.ROWS[3 * i + 2]);
      table[n + i] = static_cast<float>(p.ROWS[3 * i]);
      table[2 * n + i] = static_cast<float>(p.ROWS[3 * i + 1]);
    }
    TRIANGLE_GRID new_grid;
    build_triangle_grid(table, p.NODE_COUNT, p.TRIANGLES, p.TRIANGLE_COUNT, new_grid);
    std::vector<double> new_gradients;
    estimate_gradients(table, p.NODE_COUNT, p.TRIANGLES, p.TRIANGLE_COUNT, new_gradients);
    interpolation = p.CUBIC ? SURFACE_CUBIC : SURFACE_LINEAR;
    node_count = p.NODE_COUNT;
    triangle_count = p.TRIANGLE_COUNT;
    cell_count = new_grid.NX * new_grid.NY;
    nodes = std::move(table);
    triangles = std::move(p.TRIANGLES);
    grid = std::move(new_grid);
    gradients = std::move(new_gradients);
  } catch (const std::bad_alloc&) {
    return REPORT(FAIL(STATUS_NO_MEMORY, 0, "out of memory"), report);
  }
  return REPORT({}, report);
}

void free_seabed_2d(std::vector<float>& nodes, std::vector<double>& second_derivatives) {
  std::vector<float>().swap(nodes);
  std::vector<double>().swap(second_derivatives);
}

void free_seabed_3d(std::vector<float>& nodes, std::vector<int32_t>& triangles, TRIANGLE_GRID& grid,
                    std::vector<double>& gradients) {
  std::vector<float>().swap(nodes);
  std::vector<int32_t>().swap(triangles);
  grid = TRIANGLE_GRID{};
  std::vector<double>().swap(gradients);
}

}  // namespace tmrdar::seabed
