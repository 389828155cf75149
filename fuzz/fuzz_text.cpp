// The readers of text that comes from files or from a user: the seabed file
// format (through both loaders and the seabed profile, with heights, normals
// and lengths asked on what loaded), the free-form number reader and the
// line scanners.
//
// Input: byte 0 picks the reader; the rest is the text. For the line
// scanners the text's first line is the key.
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/text/free_form_read.h"
#include "core/text/line_scanning.h"
#include "fuzz_support.h"
#include "seabed/library/seabed.h"
#include "seabed/seabed_profile.h"

using namespace tmrdar;
using namespace tmrdar::fuzzing;

namespace {

void seabed_file(std::string_view text, bool surface) {
  const std::string path = scratch_directory() + "floor.seabed";
  write_file(path, std::as_bytes(std::span(text.data(), text.size())));
  seabed::open_seabed_file(path);
  seabed::LoadReport report;
  int32_t interpolation = 0, nodes = 0, triangles = 0, cells = 0;
  std::vector<float> table;
  std::vector<double> derivatives;
  seabed::load_seabed_2d(path, interpolation, nodes, table, derivatives, &report);
  std::vector<int32_t> corners;
  seabed::TriangleGrid grid;
  seabed::load_seabed_3d(path, interpolation, nodes, triangles, cells, table, corners, grid, derivatives, &report);

  seabed_profile::SeabedProfile floor;
  floor.set_geometry(surface ? seabed_profile::geometry_file_3d : seabed_profile::geometry_file_2d);
  floor.set_direction(30.0F);
  int32_t line = 0, status = 0;
  std::string why;
  floor.load_from_file(&line, path, &why, status);
  if (status == 0) {
    const std::array<double, 7> at{-1e30, -250.0, -1.0, 0.0, 0.5, 75.0, 1e30};
    for (std::size_t i = 0; i < at.size(); ++i) {
      const double x = at[i], y = at[(i * 3 + 1) % at.size()];
      double height = 0.0;
      seabed::NormalVector normal{};
      floor.height(x, y, height, &normal);
      floor.normal(x, y, normal);
    }
    floor.arc_length(-100.0, -50.0, 150.0, 80.0);
    floor.horizontal_distance_to_edge(10.0, 20.0, 0.7);
  }
  check_unchanged(path, std::as_bytes(std::span(text.data(), text.size())));
}

void free_form(std::string_view text) {
  int32_t integer = 0;
  float real = 0.0F;
  read_free_form_integer(text, integer);
  read_free_form_real(text, real);
}

void line_scanners(std::string_view text) {
  const std::size_t end = text.find('\n');
  const std::string_view key = end == std::string_view::npos ? std::string_view() : text.substr(0, end);
  const std::string_view line = end == std::string_view::npos ? text : text.substr(end + 1);
  std::array<int32_t, 12> numbers{};
  std::vector<TextEntry> texts(12);
  std::array<bool, 12> is_text{};
  find_numbers_and_text_in_line(key, line, numbers, 12, -1, texts, is_text);
  std::array<float, 12> reals{};
  find_reals_in_line(key, line, reals, 12, -1.0F);
  count_spaces(line);
  string_compare(key, line);
  hex_to_int(line);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 1) return 0;
  const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
  switch (data[0] % 4) {
    case 0: seabed_file(text, false); break;
    case 1: seabed_file(text, true); break;
    case 2: free_form(text); break;
    default: line_scanners(text); break;
  }
  return 0;
}
