// Finding a node, an element or a label of the model by the number or name
// that the user knows.
#include <limits>
#include <new>
#include <string>

#include "header/tide3_database_files.h"

namespace tmrdar::header {
namespace {

// A name as labels are compared: trailing blanks gone, A to Z in lower case.
std::string LABEL_KEY(std::string_view name) {
  std::string key(chars::TRIM(name));
  for (char& c : key) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return key;
}

}  // namespace

bool TIDE3_DATABASE_FILES::BUILD_LABEL_INDEX() {
  std::unordered_map<std::string, int32_t>& index = TABLES.LABEL_INDEX;
  index.clear();
  const int64_t rows = TABLES.LABEL_NAMES.EXTENT();
  try {
    for (int64_t l = 1; l <= rows; ++l) index.emplace(LABEL_KEY(TABLES.LABEL_NAMES(l).VIEW()), static_cast<int32_t>(l));
  } catch (const std::bad_alloc&) {
    index.clear();
    return false;
  }
  return true;
}

void TIDE3_DATABASE_FILES::CHECK_LABEL(std::string_view label, int32_t& node, int32_t& element, int32_t& kind,
                                       bool& not_found) const {
  node = 0;
  element = 0;
  kind = 0;
  not_found = true;
  const auto found = TABLES.LABEL_INDEX.find(LABEL_KEY(label));
  if (found == TABLES.LABEL_INDEX.end() || !TABLES.LABEL_TARGETS.CONTAINS(found->second, 2)) return;
  not_found = false;
  kind = TABLES.LABEL_TARGETS(found->second, 2);
  (kind == 1 ? node : element) = TABLES.LABEL_TARGETS(found->second, 1);
}

int32_t TIDE3_DATABASE_FILES::POST_NODE_CODING(int32_t number) const {
  return TABLES.NODE_USER_NUMBER_INDEX.FIND(number);
}

int32_t TIDE3_DATABASE_FILES::POST_AUX_NODE_CODING(int32_t number) const {
  return TABLES.AUX_NODE_NUMBER_INDEX.FIND(number);
}

int32_t TIDE3_DATABASE_FILES::POST_AUX_ELEM_CODING(int32_t number) const {
  return TABLES.AUX_ELEMENT_NUMBER_INDEX.FIND(number);
}

int32_t TIDE3_DATABASE_FILES::POST_ELEM_CODING(int32_t number) const {
  if (number < 0) {
    // The lowest number has no positive counterpart, and no table holds one.
    if (number == std::numeric_limits<int32_t>::min()) return 0;
    return -POST_AUX_ELEM_CODING(-number);
  }
  if (number == 0) return 0;
  // A number that its own row holds is that row at once.
  if (number <= NUM_ELEMENTS && TABLES.ELEMENT_NUMBERS.CONTAINS(number, 2) &&
      TABLES.ELEMENT_NUMBERS(number, 2) == number) {
    return number;
  }
  return TABLES.ELEMENT_USER_NUMBER_INDEX.FIND(number);
}

}  // namespace tmrdar::header
