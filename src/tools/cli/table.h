// Tables of the tool's output: aligned text for people, or comma-separated
// values for spreadsheets and scripts.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace tmrdar::cli {

class Table {
 public:
  enum class Align { left, right };

  void column(std::string name, Align align = Align::right);
  // One row, a cell a column; an empty cell shows as "-" in text.
  void row(std::vector<std::string> cells);

  // Text: columns two blanks apart, numbers right-aligned, names left-aligned,
  // no trailing blanks, the column names first unless `names_in_text` is
  // false. CSV: the column names, then the rows, fields quoted where needed.
  void print(std::FILE* out, bool csv, bool names_in_text = true) const;

 private:
  std::vector<std::string> names_;
  std::vector<Align> aligns_;
  std::vector<std::vector<std::string>> rows_;
};

// The shortest text that reads back as the same 32-bit real.
std::string real(float value);
// The same of a 64-bit real.
std::string real(double value);
std::string whole(int64_t value);
// A field of comma-separated values: quoted when it holds a comma, a quote,
// a line break or blanks at either end.
std::string csv_field(std::string_view text);

}  // namespace tmrdar::cli
