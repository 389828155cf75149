// Full paths in wide strings, and the current directory.
//
// A full path is absolute, with "." and ".." folded by text alone, as the
// library resolves the path of a job. A capacity counts units of the output,
// and must hold the path and its zero; it never reaches beyond the output
// array given. On failure the output is left cleared.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace tmrdar {

// The full path of the wide path, up to its zero, into the first n units of
// `full`. The length is that of the path without its zero.
void getfulllongunicodepathww(std::u16string_view path, std::span<char16_t> full, int32_t n,
                              int32_t& length, bool& failed);

// The same for a UTF-8 path, first turned wide by multibytetowide, so that a
// character from U+8000 on ends the path there.
void getfulllongunicodepathaw(std::string_view path, std::span<char16_t> full, int32_t n,
                              int32_t& length, bool& failed);

// The full path of a UTF-8 path as UTF-8 with its zero, both the wide form
// and the bytes bounded by the capacity. The first 32767 bytes of the output
// are cleared.
void tmrfullpathaa(std::string_view path, std::span<char> full, int32_t capacity, bool& failed);

// getfulllongunicodepathaw with a capacity of 32767.
void tmrfullpathaw(std::string_view path, std::span<char16_t> full, int32_t& length, bool& failed);

// Makes the full path of the wide path the current directory.
void tmrchangedirw(std::u16string_view path, bool& failed);

// The same for a blank-padded UTF-8 string.
void tmrchangedira(std::string_view path, bool& failed);

// The current directory with its zero; the length is without the zero. The
// first 32767 units of the output are cleared.
void tmrgetcurrentdirw(std::span<char16_t> directory, int32_t& length, bool& failed);

}  // namespace tmrdar
