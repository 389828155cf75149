// Conversions between UTF-8 and UTF-16, by text alone, the same on every
// system.
#include <string>
#include <string_view>

#include "core/platform/platform.h"

namespace tmrdar::platform {
namespace {

constexpr char32_t replacement = 0xFFFD;

void append_utf16(std::u16string& out, char32_t c) {
  if (c < 0x10000) {
    out.push_back(static_cast<char16_t>(c));
  } else {
    c -= 0x10000;
    out.push_back(static_cast<char16_t>(0xD800 + (c >> 10)));
    out.push_back(static_cast<char16_t>(0xDC00 + (c & 0x3FF)));
  }
}

void append_utf8(std::string& out, char32_t c) {
  if (c < 0x80) {
    out.push_back(static_cast<char>(c));
  } else if (c < 0x800) {
    out.push_back(static_cast<char>(0xC0 | (c >> 6)));
    out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  } else if (c < 0x10000) {
    out.push_back(static_cast<char>(0xE0 | (c >> 12)));
    out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  } else {
    out.push_back(static_cast<char>(0xF0 | (c >> 18)));
    out.push_back(static_cast<char>(0x80 | ((c >> 12) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  }
}

}  // namespace

std::u16string utf8_to_utf16(std::string_view utf8) {
  std::u16string out;
  out.reserve(utf8.size());
  std::size_t i = 0;
  while (i < utf8.size()) {
    const auto lead = static_cast<unsigned char>(utf8[i]);
    if (lead < 0x80) {
      out.push_back(lead);
      ++i;
      continue;
    }
    // The count of continuation bytes, and the range of the first of them
    // that excludes overlong forms, surrogates and values beyond U+10FFFF.
    std::size_t more = 0;
    unsigned char low = 0x80;
    unsigned char high = 0xBF;
    char32_t c = 0;
    if (lead >= 0xC2 && lead <= 0xDF) {
      more = 1;
      c = lead & 0x1F;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
      more = 2;
      c = lead & 0x0F;
      if (lead == 0xE0) low = 0xA0;
      if (lead == 0xED) high = 0x9F;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
      more = 3;
      c = lead & 0x07;
      if (lead == 0xF0) low = 0x90;
      if (lead == 0xF4) high = 0x8F;
    } else {
      out.push_back(static_cast<char16_t>(replacement));
      ++i;
      continue;
    }
    std::size_t taken = 1;
    bool complete = true;
    for (std::size_t k = 0; k < more; ++k) {
      if (i + taken >= utf8.size()) {
        complete = false;
        break;
      }
      const auto next = static_cast<unsigned char>(utf8[i + taken]);
      if (next < low || next > high) {
        complete = false;
        break;
      }
      c = (c << 6) | (next & 0x3F);
      ++taken;
      low = 0x80;
      high = 0xBF;
    }
    append_utf16(out, complete ? c : replacement);
    i += taken;
  }
  return out;
}

std::string utf16_to_utf8(std::u16string_view utf16) {
  std::string out;
  out.reserve(utf16.size());
  for (std::size_t i = 0; i < utf16.size(); ++i) {
    const char16_t unit = utf16[i];
    char32_t c = unit;
    if (unit >= 0xD800 && unit <= 0xDBFF && i + 1 < utf16.size() && utf16[i + 1] >= 0xDC00 &&
        utf16[i + 1] <= 0xDFFF) {
      c = 0x10000 + ((char32_t{unit} - 0xD800) << 10) + (char32_t{utf16[i + 1]} - 0xDC00);
      ++i;
    } else if (unit >= 0xD800 && unit <= 0xDFFF) {
      c = replacement;
    }
    append_utf8(out, c);
  }
  return out;
}

}  // namespace tmrdar::platform
