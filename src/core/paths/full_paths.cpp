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

std::size_t BOUNDED(int32_t n, std::size_t size) {
  return n <= 0 ? 0 : std::min(static_cast<std::size_t>(n), size);
}

// The full path of a wide path; nothing for an empty path or when the system
// cannot tell the current directory.
std::optional<std::u16string> FULL_WIDE_PATH(std::u16string_view path) {
  if (path.empty()) return std::nullopt;
  const std::optional<std::string> full = platform::FULL_PATH(UTF16_TO_UTF8(path));
  if (!full) return std::nullopt;
  return UTF8_TO_UTF16(*full);
}

// Writes a wide text and its zero into the first `capacity` units, which are
// cleared already; false, writing nothing, when they cannot hold it.
bool PUT(std::u16string_view text, std::span<char16_t> out, std::size_t capacity) {
  if (text.size() + 1 > capacity) return false;
  std::copy(text.begin(), text.end(), out.begin());
  return true;
}

}  // namespace

void GETFULLLONGUNICODEPATHWW(std::u16string_view path, std::span<char16_t> full, int32_t n,
                              int32_t& length, bool& failed) {
  length = 0;
  const std::size_t capacity = BOUNDED(n, full.size());
  std::fill_n(full.begin(), capacity, u'\0');
  const std::optional<std::u16string> result = FULL_WIDE_PATH(UP_TO_ZERO(path));
  failed = !result || !PUT(*result, full, capacity);
  if (!failed) length = static_cast<int32_t>(result->size());
}

void GETFULLLONGUNICODEPATHAW(std::string_view path, std::span<char16_t> full, int32_t n,
                              int32_t& length, bool& failed) {
  std::vector<char16_t> wide(PATH_BUFFER_UNITS);
  int32_t wide_length = 0;
  MULTIBYTETOWIDE(path, wide, wide_length, failed);
  if (failed) {
    length = 0;
    std::fill_n(full.begin(), BOUNDED(n, full.size()), u'\0');
    return;
  }
  GETFULLLONGUNICODEPATHWW(std::u16string_view(wide.data(), wide.size()), full, n, length, failed);
}

void TMRFULLPATHAA(std::string_view path, std::span<char> full, int32_t capacity, bool& failed) {
  std::vector<char16_t> wide(PATH_BUFFER_UNITS);
  int32_t length = 0;
  GETFULLLONGUNICODEPATHAW(path, wide, capacity, length, failed);
  std::fill_n(full.begin(), std::min(full.size(), PATH_BUFFER_UNITS), '\0');
  if (failed) return;
  const std::string utf8 = UTF16_TO_UTF8(std::u16string_view(wide.data(), static_cast<std::size_t>(length)));
  const std::size_t bytes = BOUNDED(capacity, full.size());
  if (utf8.size() + 1 > bytes) {
    failed = true;
    return;
  }
  std::copy(utf8.begin(), utf8.end(), full.begin());
  full[utf8.size()] = '\0';
}

void TMRFULLPATHAW(std::string_view path, std::span<char16_t> full, int32_t& length, bool& failed) {
  GETFULLLONGUNICODEPATHAW(path, full, static_cast<int32_t>(PATH_BUFFER_UNITS), length, failed);
}

void TMRCHANGEDIRW(std::u16string_view path, bool& failed) {
  std::vector<char16_t> full(PATH_BUFFER_UNITS);
  int32_t length = 0;
  GETFULLLONGUNICODEPATHWW(path, full, static_cast<int32_t>(PATH_BUFFER_UNITS), length, failed);
  if (failed) return;
  failed = !platform::CHANGE_DIRECTORY(
      UTF16_TO_UTF8(std::u16string_view(full.data(), static_cast<std::size_t>(length))));
}

void TMRCHANGEDIRA(std::string_view path, bool& failed) {
  std::vector<char16_t> full(PATH_BUFFER_UNITS);
  int32_t length = 0;
  TMRFULLPATHAW(chars::TRIM(path), full, length, failed);
  if (failed) return;
  failed = !platform::CHANGE_DIRECTORY(
      UTF16_TO_UTF8(std::u16string_view(full.data(), static_cast<std::size_t>(length))));
}

void TMRGETCURRENTDIRW(std::span<char16_t> directory, int32_t& length, bool& failed) {
  length = 0;
  const std::size_t capacity = std::min(directory.size(), PATH_BUFFER_UNITS);
  std::fill_n(directory.begin(), capacity, u'\0');
  const std::optional<std::string> current = platform::CURRENT_DIRECTORY();
  const std::u16string wide = current ? UTF8_TO_UTF16(*current) : std::u16string{};
  failed = !current || !PUT(wide, directory, capacity);
  if (!failed) length = static_cast<int32_t>(wide.size());
}

}  // namespace tmrdar
