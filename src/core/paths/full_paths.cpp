#include "core/paths/full_paths.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "core/chars/blank_padded.h"
#include "core/paths/wide_strings.h"
#include "core/platform/platform.h"

namespace tmrdar {
namespace {

std::size_t bounded(int32_t n, std::size_t size) {
  return n <= 0 ? 0 : std::min(static_cast<std::size_t>(n), size);
}

// Writes a wide text and its zero into the first `capacity` units, which are
// cleared already; false, writing nothing, when they cannot hold it.
bool put(std::u16string_view text, std::span<char16_t> out, std::size_t capacity) {
  if (text.size() + 1 > capacity) return false;
  std::copy(text.begin(), text.end(), out.begin());
  return true;
}

}  // namespace

void getfulllongunicodepathww(std::u16string_view path, std::span<char16_t> full, int32_t n,
                              int32_t& length, bool& failed) {
  length = 0;
  const std::size_t capacity = bounded(n, full.size());
  std::fill_n(full.begin(), capacity, u'\0');
  const std::optional<platform::WidePath> result = platform::full_long_path(up_to_zero(path), capacity);
  failed = !result || !put(result->text, full, capacity);
  if (!failed) length = result->length;
}

void getfulllongunicodepathaw(std::string_view path, std::span<char16_t> full, int32_t n,
                              int32_t& length, bool& failed) {
  std::vector<char16_t> wide(path_buffer_units);
  int32_t wide_length = 0;
  multibytetowide(path, wide, wide_length, failed);
  if (failed) {
    length = 0;
    std::fill_n(full.begin(), bounded(n, full.size()), u'\0');
    return;
  }
  getfulllongunicodepathww(std::u16string_view(wide.data(), wide.size()), full, n, length, failed);
}

void tmrfullpathaa(std::string_view path, std::span<char> full, int32_t capacity, bool& failed) {
  std::vector<char16_t> wide(path_buffer_units);
  int32_t length = 0;
  getfulllongunicodepathaw(path, wide, capacity, length, failed);
  std::fill_n(full.begin(), std::min(full.size(), path_buffer_units), '\0');
  if (failed) return;
  const std::string utf8 = utf16_to_utf8(up_to_zero(std::u16string_view(wide.data(), wide.size())));
  const std::size_t bytes = bounded(capacity, full.size());
  if (utf8.size() + 1 > bytes) {
    failed = true;
    return;
  }
  std::copy(utf8.begin(), utf8.end(), full.begin());
  full[utf8.size()] = '\0';
}

void tmrfullpathaw(std::string_view path, std::span<char16_t> full, int32_t& length, bool& failed) {
  getfulllongunicodepathaw(path, full, static_cast<int32_t>(path_buffer_units), length, failed);
}

void tmrchangedirw(std::u16string_view path, bool& failed) {
  std::vector<char16_t> full(path_buffer_units);
  int32_t length = 0;
  getfulllongunicodepathww(path, full, static_cast<int32_t>(path_buffer_units), length, failed);
  if (failed) return;
  failed = !platform::change_directory(utf16_to_utf8(up_to_zero(std::u16string_view(full.data(), full.size()))));
}

void tmrchangedira(std::string_view path, bool& failed) {
  std::vector<char16_t> full(path_buffer_units);
  int32_t length = 0;
  tmrfullpathaw(chars::trim(path), full, length, failed);
  if (failed) return;
  failed = !platform::change_directory(utf16_to_utf8(up_to_zero(std::u16string_view(full.data(), full.size()))));
}

void tmrgetcurrentdirw(std::span<char16_t> directory, int32_t& length, bool& failed) {
  length = 0;
  const std::size_t capacity = std::min(directory.size(), path_buffer_units);
  std::fill_n(directory.begin(), capacity, u'\0');
  const std::optional<std::string> current = platform::current_directory();
  const std::u16string wide = current ? utf8_to_utf16(*current) : std::u16string{};
  failed = !current || !put(wide, directory, capacity);
  if (!failed) length = static_cast<int32_t>(wide.size());
}

}  // namespace tmrdar
