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
inline constexpr char path_separator = '/';

// The current working directory, absolute.
std::optional<std::string> current_directory();

// True when something of that name exists (a file, a directory or other).
bool path_exists(const std::string& path);

// True when the path names a directory.
bool is_directory(const std::string& path);

// The directory for temporary files: TMPDIR when set and not empty, else /tmp.
std::string temporary_directory();

// Creates a new, empty file of a unique name that starts with the prefix in
// the temporary directory, and returns its full name.
std::optional<std::string> create_temporary_file(std::string_view prefix);

// Deletes a file; false when it could not be deleted.
bool delete_file(const std::string& path);

// Makes the directory the current one; false when that failed.
bool change_directory(const std::string& path);

// True when standard output is connected to a terminal.
bool standard_output_is_terminal();

// Clears the terminal on standard output, in the current colours, and puts
// the cursor at the top left. Does nothing when standard output is no terminal.
void clear_console();

// Moves the cursor of the terminal on standard output to a row and a column,
// both counted from 0 at the top left. Does nothing when standard output is no
// terminal, or for a place outside 0 to 32767.
void set_console_cursor(int32_t row, int32_t column);

// The arguments of the running process, the program itself first. Empty when
// the system does not tell them.
std::vector<std::string> command_arguments();

// The full path of the input: made absolute against the current directory,
// with "." and ".." folded by text alone, without touching the file system,
// so symbolic links are left alone. A trailing separator of the input stays.
std::optional<std::string> full_path(std::string_view path);

// The folding rule of full_path against a given absolute directory.
std::string fold_path(std::string_view path, std::string_view current_directory);

// A full path taken apart by text alone.
struct PathParts {
  std::string directory;  // up to and including the last separator; empty without one
  std::string name;
  std::string extension;  // from the last "." of the last component on, "." included
};

// Splits a path at its last separator, and the last component at its last
// ".". A name that comes out blank, as for ".job" or a path that ends with its
// separator, is taken by hand: counting places from 1, with 0 for a character
// that is not there, when the last "." of the whole path stands more than one
// place behind the last separator, the name is what stands between them and
// the extension the rest from the "." on; otherwise the name is everything
// behind the last separator and the extension stays. Nothing is cut or
// changed in case.
PathParts split_path(std::string_view full_path);

// Files read by descriptor, for the mapped layer of the record files.

// What the system tells of an open file.
struct FileFacts {
  int64_t size = 0;
  bool regular = false;
  bool directory = false;
};

// Opens a file for reading; -1 when it cannot be opened.
int open_for_reading(const std::string& path);
// Closes a descriptor; false when closing failed.
bool close_descriptor(int descriptor);
// Size and kind of an open file; empty when the system does not tell.
std::optional<FileFacts> descriptor_facts(int descriptor);
// Maps the first `size` bytes of an open file read-only and shared; nullptr
// when the system refuses (or size is not positive).
const std::byte* map_read_only(int descriptor, int64_t size);
void unmap(const std::byte* bytes, int64_t size);
// Reads up to `count` bytes from byte `offset` on, repeating short reads
// until the count is met or the file ends; the bytes read, or -1 when a read
// failed.
int64_t read_at_offset(int descriptor, std::byte* bytes, int64_t count, int64_t offset);
// True when the environment variable TMRDAR_NO_MMAP is "1": files are then
// read by descriptor and never mapped.
bool mapping_disabled();

}  // namespace tmrdar::platform
