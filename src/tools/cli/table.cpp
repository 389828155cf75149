#include "tools/cli/table.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <stdexcept>

namespace tmrdar::cli {

void Table::column(std::string name, Align align) {
  names_.push_back(std::move(name));
  aligns_.push_back(align);
}

void Table::row(std::vector<std::string> cells) {
  if (cells.size() != names_.size()) throw std::logic_error("a table row does not match its columns");
  rows_.push_back(std::move(cells));
}

void Table::print(std::FILE* out, bool csv, bool names_in_text) const {
  const auto line = [&](const std::vector<std::string>& cells, const std::vector<std::size_t>& widths) {
    std::string text;
    for (std::size_t c = 0; c < cells.size(); ++c) {
      std::string cell = cells[c];
      if (csv) {
        if (c > 0) text += ',';
        text += csv_field(cell);
        continue;
      }
      if (cell.empty()) cell.assign(1, '-');
      const std::string pad(widths[c] - std::min(widths[c], cell.size()), ' ');
      if (c > 0) text += "  ";
      text += aligns_[c] == Align::right ? pad + cell : (c + 1 < cells.size() ? cell + pad : cell);
    }
    text += '\n';
    std::fputs(text.c_str(), out);
  };
  std::vector<std::size_t> widths(names_.size(), 1);
  const bool show_names = csv || names_in_text;
  for (std::size_t c = 0; c < names_.size(); ++c) {
    if (show_names) widths[c] = std::max(widths[c], names_[c].size());
    for (const auto& row : rows_) widths[c] = std::max(widths[c], row[c].size());
  }
  if (show_names) line(names_, widths);
  for (const auto& row : rows_) line(row, widths);
}

std::string real(float value) {
  std::array<char, 64> buffer{};
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
  return std::string(buffer.data(), result.ptr);
}

std::string real(double value) {
  std::array<char, 64> buffer{};
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
  return std::string(buffer.data(), result.ptr);
}

std::string whole(int64_t value) { return std::to_string(value); }

std::string csv_field(std::string_view text) {
  const bool quote = text.find_first_of(",\"\r\n") != std::string_view::npos ||
                     (!text.empty() && (text.front() == ' ' || text.back() == ' '));
  if (!quote) return std::string(text);
  std::string field = "\"";
  for (const char c : text) field += c == '"' ? std::string("\"\"") : std::string(1, c);
  return field + "\"";
}

}  // namespace tmrdar::cli
