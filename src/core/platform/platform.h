// The operating system as the library sees it.
//
// Paths are UTF-8 byte strings. Nothing here throws: a failure is an empty
// optional or false.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tmrdar::platform {

#if defined(_WIN32)
// The separator of path components that the system writes, and every
// character that it takes as one.
inline constexpr char path_separator = '\\';
inline constexpr std::string_view path_separators = "\\/";
// The longest full path of a job, in characters; a longer one is cut there.
inline constexpr std::size_t job_path_limit = 256;
#else
inline constexpr char path_separator = '/';
inline constexpr std::string_view path_separators = "/";
// No limit on the full path of a job.
inline constexpr std::size_t job_path_limit = 0;
#endif

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
// On Windows this is the system's full path call, which folds the same way,
// takes drive letters, both separators and UNC names, and writes
// backslashes.
std::optional<std::string> full_path(std::string_view path);

// A full path in wide characters and its length as the path routines tell
// it.
struct WidePath {
  std::u16string text;
  int32_t length = 0;
};

// The full, long form of a wide path within `capacity` units, its zero
// included; empty when it cannot be formed or does not fit. On POSIX the full
// path above, in wide characters. On Windows the form that gets past the
// system's short path limit: a drive path gets the prefix \\?\ (and needs
// 5 units more than its full path), a network path \\server\share the
// prefix \\?\UNC\ in place of its two backslashes (7 more), a path that
// starts with \\? stays as it is; then every path but a UNC one is passed
// through the system's long name call, which fails when the file does not
// exist. The length of a UNC result is that of the full path before the
// prefix.
std::optional<WidePath> full_long_path(std::u16string_view path, std::size_t capacity);

// Lossless conversions between UTF-8 and UTF-16. A byte sequence that is
// not UTF-8 becomes one U+FFFD for each maximal ill-formed part; an unpaired
// surrogate unit is written as U+FFFD.
std::u16string utf8_to_utf16(std::string_view utf8);
std::string utf16_to_utf8(std::u16string_view utf16);

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

// Files read by handle, for the mapped layer of the record files. Files are
// opened read-only, and on Windows shared for reading, writing and deleting,
// so that a host holding a job locks no other program out of its files.

// An open file: a descriptor on POSIX, a handle on Windows.
using FileHandle = std::intptr_t;
inline constexpr FileHandle no_file = -1;

// What the system tells of an open file.
struct FileFacts {
  int64_t size = 0;
  bool regular = false;
  bool directory = false;
};

// Opens a file for reading; no_file when it cannot be opened.
FileHandle open_for_reading(const std::string& path);
// Closes a file; false when closing failed.
bool close_descriptor(FileHandle descriptor);
// Size and kind of an open file; empty when the system does not tell.
std::optional<FileFacts> descriptor_facts(FileHandle descriptor);
// The size of an open regular file, asked cheaply (each export asks it of
// every open file); empty when the system does not tell.
std::optional<int64_t> file_size(FileHandle descriptor);
// Maps the first `size` bytes of an open file read-only and shared; nullptr
// when the system refuses (or size is not positive).
const std::byte* map_read_only(FileHandle descriptor, int64_t size);
void unmap(const std::byte* bytes, int64_t size);
// Reads up to `count` bytes from byte `offset` on, repeating short reads
// until the count is met or the file ends; the bytes read, or -1 when a read
// failed.
int64_t read_at_offset(FileHandle descriptor, std::byte* bytes, int64_t count, int64_t offset);
// True when the environment variable TMRDAR_NO_MMAP is "1": files are then
// read by descriptor and never mapped.
bool mapping_disabled();

// A lock for objects that must outlive every other static object: it is
// made at compile time and needs no destruction, so that it still works when
// the library unloads.
#if defined(_WIN32)
class StaticLock {
 public:
  constexpr StaticLock() = default;
  void lock();
  void unlock();

 private:
  void* state_ = nullptr;  // the system's slim lock, one pointer wide
};
#else
using StaticLock = std::mutex;
#endif

// Files written through a stream, by the builder of databases.

// Opens a file for writing, made anew or emptied; nullptr when that fails or
// the path names a directory.
std::FILE* create_for_writing(const std::string& path);
// The size of a stream's file; empty when the system does not tell.
std::optional<int64_t> stream_size(std::FILE* stream);
// Moves the stream to a byte from 0, with 64-bit positions; false on failure.
bool seek_stream(std::FILE* stream, int64_t offset);

}  // namespace tmrdar::platform
