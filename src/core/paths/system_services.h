// Temporary files and the console of a helper program.
#pragma once

#include <cstdint>
#include <span>

namespace tmrdar {

// The longest temporary file name that is handed out.
inline constexpr std::size_t temporary_name_width = 260;

// Creates a new, empty file of a unique name starting with "td3" in the
// temporary directory, and writes its full name into the blank-padded string,
// cut at its width. The file stays for the caller to delete. Fails, with a
// blank string and no file left, when no file could be made or its name is
// longer than 260 characters.
void get_temporary_file(std::span<char> name, bool& failed);

// Clears the console and puts the cursor at the top left.
void set_mode();

// Moves the console cursor to the row and column, both from 0.
void setcur(int32_t row, int32_t column);

}  // namespace tmrdar
