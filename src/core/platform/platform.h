// The operating system as the library sees it.
//
// Paths are UTF-8 byte strings. Nothing here throws: a failure is an empty
// optional or false.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tmrdar::platform {

// The separator of path components.
inline constexpr char PATH_SEPARATOR = '/';

// The current working directory, absolute.
std::optional<std::string> CURRENT_DIRECTORY();

// True when something of that name exists (a file, a directory or other).
bool PATH_EXISTS(const std::string& path);

// True when the path names a directory.
bool IS_DIRECTORY(const std::string& path);

// The directory for temporary files: TMPDIR when set and not empty, else /tmp.
std::string TEMPORARY_DIRECTORY();

// Creates a new, empty file of a unique name that starts with the prefix in
// the temporary directory, and returns its full name.
std::optional<std::string> CREATE_TEMPORARY_FILE(std::string_view prefix);

// Deletes a file; false when it could not be deleted.
bool DELETE_FILE(const std::string& path);

// Makes the directory the current one; false when that failed.
bool CHANGE_DIRECTORY(const std::string& path);

// True when standard output is connected to a terminal.
bool STANDARD_OUTPUT_IS_TERMINAL();

// Clears the terminal on standard output, in the current colours, and puts
// the cursor at the top left. Does nothing when standard output is no terminal.
void CLEAR_CONSOLE();

// Moves the cursor of the terminal on standard output to a row and a column,
// both counted from 0 at the top left. Does nothing when standard output is no
// terminal, or for a place outside 0 to 32767.
void SET_CONSOLE_CURSOR(int32_t row, int32_t column);

// The arguments of the running process, the program itself first. Empty when
// the system does not tell them.
std::vector<std::string> COMMAND_ARGUMENTS();

// The full path of the input: made absolute against the current directory,
// with "." and ".." folded by text alone, without touching the file system,
// so symbolic links are left alone. A trailing separator of the input stays.
std::optional<std::string> FULL_PATH(std::string_view path);

// The folding rule of FULL_PATH against a given absolute directory.
std::string FOLD_PATH(std::string_view path, std::string_view current_directory);

// A full path taken apart by text alone.
struct PATH_PARTS {
  std::string DIRECTORY;  // up to and including the last separator; empty without one
  std::string NAME;
  std::string EXTENSION;  // from the last "." of the last component on, "." included
};

// Splits a path at its last separator, and the last component at its last
// ".". A name that comes out blank, as for ".job" or a path that ends with its
// separator, is taken by hand: counting places from 1, with 0 for a character
// that is not there, when the last "." of the whole path stands more than one
// place behind the last separator, the name is what stands between them and
// the extension the rest from the "." on; otherwise the name is everything
// behind the last separator and the extension stays. Nothing is cut or
// changed in case.
PATH_PARTS SPLIT_PATH(std::string_view full_path);

// Files read by descriptor, for the mapped layer of the record files.

// What the system tells of an open file.
struct FILE_FACTS {
  int64_t SIZE = 0;
  bool REGULAR = false;
  bool DIRECTORY = false;
};

// Opens a file for reading; -1 when it cannot be opened.
int OPEN_FOR_READING(const std::string& path);
// Closes a descriptor; false when closing failed.
bool CLOSE_DESCRIPTOR(int descriptor);
// Size and kind of an open file; empty when the system does not tell.
std::optional<FILE_FACTS> DESCRIPTOR_FACTS(int descriptor);
// Maps the first `size` bytes of an open file read-only and shared; nullptr
// when the system refuses (or size is not positive).
const std::byte* MAP_READ_ONLY(int descriptor, int64_t size);
void UNMAP(const std::byte* bytes, int64_t size);
// Reads up to `count` bytes from byte `offset` on, repeating short reads
// until the count is met or the file ends; the bytes read, or -1 when a read
// failed.
int64_t READ_AT_OFFSET(int descriptor, std::byte* bytes, int64_t count, int64_t offset);
// True when the environment variable TMRDAR_NO_MMAP is "1": files are then
// read by descriptor and never mapped.
bool MAPPING_DISABLED();

}  // namespace tmrdar::platform
