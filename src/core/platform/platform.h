// The operating system as the library sees it.
//
// Paths are UTF-8 byte strings. Nothing here throws: a failure is an empty
// optional or false.
#pragma once

#include <optional>
#include <string>
#include <string_view>

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

// The full path of the input: made absolute against the current directory,
// with "." and ".." folded by text alone, without touching the file system,
// so symbolic links are left alone. A trailing separator of the input stays.
std::optional<std::string> FULL_PATH(std::string_view path);

// The folding rule of FULL_PATH against a given absolute directory.
std::string FOLD_PATH(std::string_view path, std::string_view current_directory);

}  // namespace tmrdar::platform
