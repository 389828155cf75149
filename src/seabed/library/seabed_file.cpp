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

constexpr std::string_view first_line = "TMRDAR SEABED 1";
// Counts are 32-bit and a triangle table holds three numbers a triangle.
constexpr std::size_t max_rows = static_cast<std::size_t>(std::numeric_limits<int32_t>::max() / 3);

enum class Form { profile, surface };

struct Parsed {
  Form kind = Form::profile;
  bool cubic = false;
  // Row by row as read: profile (distance, height), surface (x, y, height).
  std::vector<double> rows;
  std::vector<int32_t> triangles;  // three node numbers a triangle
  int32_t node_count = 0;
  int32_t triangle_count = 0;
};

struct Failure {
  int32_t status = status_ok;
  int32_t line = 0;
  std::string text;
};

Failure fail(int32_t status, int32_t line, std::string text) {
  return Failure{status, line, std::move(text)};
}

bool is_blank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\f' || c == '\v'; }

// The blank-separated words of a line, up to a '#'.
std::vector<std::string_view> split_words(std::string_view line) {
  if (const auto hash = line.find('#'); hash != std::string_view::npos) line = line.substr(0, hash);
  std::vector<std::string_view> words;
  std::size_t i = 0;
  while (i < line.size()) {
    while (i < line.size() && is_blank(line[i])) ++i;
    const std::size_t start = i;
    while (i < line.size() && !is_blank(line[i])) ++i;
    if (i > start) words.push_back(line.substr(start, i - start));
  }
  return words;
}

bool same_word(std::string_view word, std::string_view keyword) {
  return word.size() == keyword.size() &&
         std::equal(word.begin(), word.end(), keyword.begin(), [](char a, char b) {
           return std::tolower(static_cast<unsigned char>(a)) == b;
         });
}

// A finite real that a 32-bit real can hold.
bool read_real(std::string_view word, double& value) {
  if (word.size() > 1 && word[0] == '+' && word[1] != '-') word.remove_prefix(1);
  const char* end = word.data() + word.size();
  const auto [ptr, ec] = std::from_chars(word.data(), end, value, std::chars_format::general);
  if (ec != std::errc() || ptr != end || !std::isfinite(value)) return false;
  return std::fabs(value) <= static_cast<double>(std::numeric_limits<float>::max());
}

bool read_integer(std::string_view word, int64_t& value) {
  if (word.size() > 1 && word[0] == '+' && word[1] != '-') word.remove_prefix(1);
  const char* end = word.data() + word.size();
  const auto [ptr, ec] = std::from_chars(word.data(), end, value);
  return ec == std::errc() && ptr == end;
}

// The lines of the text, without their line ends.
class Lines {
 public:
  explicit Lines(std::string_view text) : text_(text) {}
  bool next(std::string_view& line) {
    if (position_ > text_.size()) return false;
    const auto end = text_.find('\n', position_);
    const std::size_t stop = end == std::string_view::npos ? text_.size() : end;
    line = text_.substr(position_, stop - position_);
    position_ = stop + 1;
    ++number_;
    return true;
  }
  int32_t number() const { return number_; }

 private:
  std::string_view text_;
  std::size_t position_ = 0;
  int32_t number_ = 0;
};

// The whole file; false when it does not open or a read fails (as it does
// for a directory).
bool read_whole_file(std::string_view path, std::string& text) {
  std::FILE* stream = std::fopen(std::string(path).c_str(), "rb");
  if (stream == nullptr) return false;
  char chunk[65536];
  std::size_t got = 0;
  while ((got = std::fread(chunk, 1, sizeof chunk, stream)) > 0) text.append(chunk, got);
  const bool failed = std::ferror(stream) != 0;
  std::fclose(stream);
  return !failed;
}

bool is_first_line(std::string_view line) {
  while (!line.empty() && is_blank(line.back())) line.remove_suffix(1);
  return line == first_line;
}

// Whether the triangle of these plan corners has an area, judged on the
// 32-bit coordinates that the node table keeps.
bool has_area(const Parsed& p, const int32_t (&corner)[3]) {
  double x[3] = {};
  double y[3] = {};
  for (int k = 0; k < 3; ++k) {
    const std::size_t row = 3 * static_cast<std::size_t>(corner[k] - 1);
    x[k] = static_cast<float>(p.rows[row]);
    y[k] = static_cast<float>(p.rows[row + 1]);
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

Failure parse_profile_line(const std::vector<std::string_view>& words, int32_t line, Parsed& p) {
  if (words.size() != 2) return fail(status_syntax, line, "a profile node is a distance and a height");
  double distance = 0.0;
  double height = 0.0;
  if (!read_real(words[0], distance) || !read_real(words[1], height)) {
    return fail(status_syntax, line, "not a finite number within the range of a 32-bit real");
  }
  if (p.node_count > 0 && static_cast<float>(distance) < static_cast<float>(p.rows[p.rows.size() - 2])) {
    return fail(status_bad_data, line, "profile distances must not decrease");
  }
  if (static_cast<std::size_t>(p.node_count) >= max_rows) return fail(status_bad_data, line, "too many nodes");
  p.rows.push_back(distance);
  p.rows.push_back(height);
  ++p.node_count;
  return {};
}

Failure parse_node_line(const std::vector<std::string_view>& words, int32_t line, Parsed& p) {
  if (words.size() != 4) return fail(status_syntax, line, "a surface node is its number, x, y and a height");
  int64_t number = 0;
  if (!read_integer(words[0], number)) return fail(status_syntax, line, "a node number is an integer");
  if (number != int64_t{p.node_count} + 1) {
    return fail(status_bad_data, line, "nodes are numbered 1, 2, 3, ... in the order of the file");
  }
  double values[3] = {};
  for (int k = 0; k < 3; ++k) {
    if (!read_real(words[static_cast<std::size_t>(k) + 1], values[k])) {
      return fail(status_syntax, line, "not a finite number within the range of a 32-bit real");
    }
  }
  if (static_cast<std::size_t>(p.node_count) >= max_rows) return fail(status_bad_data, line, "too many nodes");
  p.rows.insert(p.rows.end(), values, values + 3);
  ++p.node_count;
  return {};
}

Failure parse_triangle_line(const std::vector<std::string_view>& words, int32_t line, Parsed& p) {
  if (words.size() != 3) return fail(status_syntax, line, "a triangle is three node numbers");
  int32_t corner[3] = {};
  for (int k = 0; k < 3; ++k) {
    int64_t number = 0;
    if (!read_integer(words[static_cast<std::size_t>(k)], number)) {
      return fail(status_syntax, line, "a node number is an integer");
    }
    if (number < 1 || number > p.node_count) return fail(status_bad_data, line, "no node of that number");
    corner[k] = static_cast<int32_t>(number);
  }
  if (corner[0] == corner[1] || corner[1] == corner[2] || corner[2] == corner[0]) {
    return fail(status_bad_data, line, "a triangle names a node twice");
  }
  if (!has_area(p, corner)) return fail(status_bad_data, line, "a triangle has no area in plan");
  if (static_cast<std::size_t>(p.triangle_count) >= max_rows) {
    return fail(status_bad_data, line, "too many triangles");
  }
  p.triangles.insert(p.triangles.end(), corner, corner + 3);
  ++p.triangle_count;
  return {};
}

Failure parse(std::string_view path, Parsed& p) {
  std::string text;
  if (!read_whole_file(path, text)) return fail(status_cannot_read, 0, "the file cannot be read");
  Lines lines(text);
  std::string_view line;
  if (!lines.next(line) || !is_first_line(line)) {
    return fail(status_not_seabed, 1, "the first line is not \"TMRDAR SEABED 1\"");
  }
  enum class Stage { form, profile, before_nodes, nodes, triangles } stage = Stage::form;
  while (lines.next(line)) {
    const int32_t number = lines.number();
    const auto words = split_words(line);
    if (words.empty()) continue;
    Failure failure;
    switch (stage) {
      case Stage::form: {
        if (words.size() != 2) return fail(status_syntax, number, "expected \"profile\" or \"surface\" and an interpolation");
        if (same_word(words[0], "profile")) {
          p.kind = Form::profile;
          stage = Stage::profile;
        } else if (same_word(words[0], "surface")) {
          p.kind = Form::surface;
          stage = Stage::before_nodes;
        } else {
          return fail(status_syntax, number, "expected \"profile\" or \"surface\"");
        }
        if (same_word(words[1], "cubic")) {
          p.cubic = true;
        } else if (!same_word(words[1], "linear")) {
          return fail(status_syntax, number, "the interpolation is \"linear\" or \"cubic\"");
        }
        break;
      }
      case Stage::profile:
        failure = parse_profile_line(words, number, p);
        break;
      case Stage::before_nodes:
        if (words.size() != 1 || !same_word(words[0], "nodes")) {
          return fail(status_syntax, number, "expected \"nodes\"");
        }
        stage = Stage::nodes;
        break;
      case Stage::nodes:
        if (words.size() == 1 && same_word(words[0], "triangles")) {
          stage = Stage::triangles;
        } else {
          failure = parse_node_line(words, number, p);
        }
        break;
      case Stage::triangles:
        failure = parse_triangle_line(words, number, p);
        break;
    }
    if (failure.status != status_ok) return failure;
  }
  const int32_t end = lines.number();
  switch (stage) {
    case Stage::form:
      return fail(status_bad_data, end, "the file describes no seabed");
    case Stage::profile:
      if (p.node_count < 2) return fail(status_bad_data, end, "a profile needs at least two nodes");
      break;
    case Stage::before_nodes:
    case Stage::nodes:
      return fail(status_bad_data, end, "a surface needs its \"triangles\"");
    case Stage::triangles:
      if (p.triangle_count < 1) return fail(status_bad_data, end, "a surface needs at least one triangle");
      break;
  }
  return {};
}

Failure parse_guarded(std::string_view path, Parsed& p) {
  try {
    return parse(path, p);
  } catch (const std::bad_alloc&) {
    return fail(status_no_memory, 0, "out of memory");
  } catch (const std::length_error&) {
    return fail(status_no_memory, 0, "out of memory");
  }
}

int32_t report_failure(const Failure& failure, LoadReport* report) {
  if (report != nullptr) {
    report->line = failure.line;
    report->text = failure.text;
  }
  return failure.status;
}

}  // namespace

int32_t open_seabed_file(std::string_view path) {
  Parsed parsed;
  return parse_guarded(path, parsed).status;
}

int32_t load_seabed_2d(std::string_view path, int32_t& interpolation, int32_t& node_count,
                       std::vector<float>& nodes, std::vector<double>& second_derivatives,
                       LoadReport* report) {
  Parsed p;
  Failure failure = parse_guarded(path, p);
  if (failure.status == status_ok && p.kind != Form::profile) {
    failure = fail(status_wrong_form, 0, "the file holds a surface, not a profile");
  }
  if (failure.status != status_ok) return report_failure(failure, report);
  try {
    const auto n = static_cast<std::size_t>(p.node_count);
    std::vector<float> table(2 * n);
    for (std::size_t i = 0; i < n; ++i) {
      table[i] = static_cast<float>(p.rows[2 * i + 1]);
      table[n + i] = static_cast<float>(p.rows[2 * i]);
    }
    std::vector<double> derivatives;
    fit_spline_2d(table, p.node_count, derivatives);
    interpolation = p.cubic ? profile_cubic : profile_linear;
    node_count = p.node_count;
    nodes = std::move(table);
    second_derivatives = std::move(derivatives);
  } catch (const std::bad_alloc&) {
    return report_failure(fail(status_no_memory, 0, "out of memory"), report);
  }
  return report_failure({}, report);
}

int32_t load_seabed_3d(std::string_view path, int32_t& interpolation, int32_t& node_count,
                       int32_t& triangle_count, int32_t& cell_count, std::vector<float>& nodes,
                       std::vector<int32_t>& triangles, TriangleGrid& grid,
                       std::vector<double>& gradients, LoadReport* report) {
  Parsed p;
  Failure failure = parse_guarded(path, p);
  if (failure.status == status_ok && p.kind != Form::surface) {
    failure = fail(status_wrong_form, 0, "the file holds a profile, not a surface");
  }
  if (failure.status != status_ok) return report_failure(failure, report);
  try {
    const auto n = static_cast<std::size_t>(p.node_count);
    std::vector<float> table(3 * n);
    for (std::size_t i = 0; i < n; ++i) {
      table[i] = static_cast<float>(p.rows[3 * i + 2]);
      table[n + i] = static_cast<float>(p.rows[3 * i]);
      table[2 * n + i] = static_cast<float>(p.rows[3 * i + 1]);
    }
    TriangleGrid new_grid;
    build_triangle_grid(table, p.node_count, p.triangles, p.triangle_count, new_grid);
    std::vector<double> new_gradients;
    estimate_gradients(table, p.node_count, p.triangles, p.triangle_count, new_gradients);
    interpolation = p.cubic ? surface_cubic : surface_linear;
    node_count = p.node_count;
    triangle_count = p.triangle_count;
    cell_count = new_grid.nx * new_grid.ny;
    nodes = std::move(table);
    triangles = std::move(p.triangles);
    grid = std::move(new_grid);
    gradients = std::move(new_gradients);
  } catch (const std::bad_alloc&) {
    return report_failure(fail(status_no_memory, 0, "out of memory"), report);
  }
  return report_failure({}, report);
}

void free_seabed_2d(std::vector<float>& nodes, std::vector<double>& second_derivatives) {
  std::vector<float>().swap(nodes);
  std::vector<double>().swap(second_derivatives);
}

void free_seabed_3d(std::vector<float>& nodes, std::vector<int32_t>& triangles, TriangleGrid& grid,
                    std::vector<double>& gradients) {
  std::vector<float>().swap(nodes);
  std::vector<int32_t>().swap(triangles);
  grid = TriangleGrid{};
  std::vector<double>().swap(gradients);
}

}  // namespace tmrdar::seabed
