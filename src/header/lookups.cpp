// Finding a node, an element or a label of the model by the number or name
// that the user knows.
#include <limits>
#include <new>
#include <string>

#include "header/format_reader.h"

namespace tmrdar::header {
namespace {

// A name as labels are compared: trailing blanks gone, A to Z in lower case.
std::string label_key(std::string_view name) {
  std::string key(chars::trim(name));
  for (char& c : key) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return key;
}

}  // namespace

bool FormatReader::build_label_index() {
  std::unordered_map<std::string, int32_t>& index = tables.label_index;
  index.clear();
  const int64_t rows = tables.label_names.extent();
  try {
    for (int64_t l = 1; l <= rows; ++l) index.emplace(label_key(tables.label_names(l).view()), static_cast<int32_t>(l));
  } catch (const std::bad_alloc&) {
    index.clear();
    return false;
  }
  return true;
}

void FormatReader::check_label(std::string_view label, int32_t& node, int32_t& element, int32_t& kind,
                                       bool& not_found) const {
  node = 0;
  element = 0;
  kind = 0;
  not_found = true;
  const auto found = tables.label_index.find(label_key(label));
  if (found == tables.label_index.end() || !tables.label_targets.contains(found->second, 2)) return;
  not_found = false;
  kind = tables.label_targets(found->second, 2);
  (kind == 1 ? node : element) = tables.label_targets(found->second, 1);
}

int32_t FormatReader::post_node_coding(int32_t number) const {
  return tables.node_user_number_index.find(number);
}

int32_t FormatReader::post_aux_node_coding(int32_t number) const {
  return tables.aux_node_number_index.find(number);
}

int32_t FormatReader::post_aux_elem_coding(int32_t number) const {
  return tables.aux_element_number_index.find(number);
}

int32_t FormatReader::post_elem_coding(int32_t number) const {
  if (number < 0) {
    // The lowest number has no positive counterpart, and no table holds one.
    if (number == std::numeric_limits<int32_t>::min()) return 0;
    return -post_aux_elem_coding(-number);
  }
  if (number == 0) return 0;
  // A number that its own row holds is that row at once.
  if (number <= num_elements && tables.element_numbers.contains(number, 2) &&
      tables.element_numbers(number, 2) == number) {
    return number;
  }
  return tables.element_user_number_index.find(number);
}

}  // namespace tmrdar::header
