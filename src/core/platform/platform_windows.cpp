// The Windows side of the platform layer: every call goes to the wide (UTF-16)
// form of the system call, with paths turned from UTF-8 at this boundary.
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>
// After windows.h, which these need.
#include <io.h>
#include <shellapi.h>

#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <limits>
#include <string_view>
#include <vector>

#include "core/platform/platform.h"

namespace tmrdar::platform {
namespace {

// A path as the system takes it: UTF-16 with its zero.
std::wstring widen(std::string_view text) {
  if (text.empty()) return {};
  const int size = static_cast<int>(std::min<std::size_t>(text.size(), std::numeric_limits<int>::max()));
  const int units = ::MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0);
  if (units <= 0) return {};
  std::wstring wide(static_cast<std::size_t>(units), L'\0');
  ::MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), units);
  return wide;
}

std::string narrow(std::wstring_view wide) {
  if (wide.empty()) return {};
  const int size = static_cast<int>(std::min<std::size_t>(wide.size(), std::numeric_limits<int>::max()));
  const int bytes = ::WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, nullptr, 0, nullptr, nullptr);
  if (bytes <= 0) return {};
  std::string text(static_cast<std::size_t>(bytes), '\0');
  ::WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, text.data(), bytes, nullptr, nullptr);
  return text;
}

HANDLE handle_of(FileHandle descriptor) { return reinterpret_cast<HANDLE>(descriptor); }

DWORD attributes(const std::string& path) {
  if (path.empty()) return INVALID_FILE_ATTRIBUTES;
  return ::GetFileAttributesW(widen(path).c_str());
}

// A text the system writes into a buffer of a size it tells: asks again with
// the size it asked for until the text fits.
template <typename Call>
std::optional<std::wstring> system_text(Call call) {
  std::vector<wchar_t> buffer(MAX_PATH + 1);
  for (int attempt = 0; attempt < 4; ++attempt) {
    const DWORD got = call(static_cast<DWORD>(buffer.size()), buffer.data());
    if (got == 0) return std::nullopt;
    if (got < buffer.size()) return std::wstring(buffer.data(), got);
    buffer.resize(got + 1);
  }
  return std::nullopt;
}

HANDLE console_output() {
  HANDLE out = ::GetStdHandle(STD_OUTPUT_HANDLE);
  DWORD mode = 0;
  return out != INVALID_HANDLE_VALUE && out != nullptr && ::GetConsoleMode(out, &mode) != 0 ? out : nullptr;
}

}  // namespace

std::optional<std::string> current_directory() {
  const std::optional<std::wstring> directory =
      system_text([](DWORD size, wchar_t* buffer) { return ::GetCurrentDirectoryW(size, buffer); });
  if (!directory) return std::nullopt;
  return narrow(*directory);
}

bool path_exists(const std::string& path) { return attributes(path) != INVALID_FILE_ATTRIBUTES; }

bool is_directory(const std::string& path) {
  const DWORD found = attributes(path);
  return found != INVALID_FILE_ATTRIBUTES && (found & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

std::string temporary_directory() {
  const std::optional<std::wstring> directory =
      system_text([](DWORD size, wchar_t* buffer) { return ::GetTempPathW(size, buffer); });
  std::string text = directory ? narrow(*directory) : std::string(".");
  // The system ends it with a separator; a root keeps its own ("C:\").
  while (text.size() > 3 && path_separators.find(text.back()) != std::string_view::npos) text.pop_back();
  return text;
}

std::optional<std::string> create_temporary_file(std::string_view prefix) {
  // The system takes the first three characters of the prefix, makes the
  // file and gives its name, MAX_PATH characters at most.
  std::vector<wchar_t> name(MAX_PATH + 1);
  if (::GetTempFileNameW(widen(temporary_directory()).c_str(), widen(prefix).c_str(), 0, name.data()) == 0) {
    return std::nullopt;
  }
  return narrow(name.data());
}

bool delete_file(const std::string& path) { return ::DeleteFileW(widen(path).c_str()) != 0; }

bool change_directory(const std::string& path) { return ::SetCurrentDirectoryW(widen(path).c_str()) != 0; }

bool standard_output_is_terminal() { return console_output() != nullptr; }

void clear_console() {
  HANDLE out = console_output();
  if (out == nullptr) return;
  std::fflush(stdout);
  CONSOLE_SCREEN_BUFFER_INFO info{};
  if (::GetConsoleScreenBufferInfo(out, &info) == 0) return;
  const DWORD cells = static_cast<DWORD>(info.dwSize.X) * static_cast<DWORD>(info.dwSize.Y);
  const COORD home{0, 0};
  DWORD written = 0;
  ::FillConsoleOutputCharacterA(out, ' ', cells, home, &written);
  if (::GetConsoleScreenBufferInfo(out, &info) == 0) return;
  ::FillConsoleOutputAttribute(out, info.wAttributes, cells, home, &written);
  ::SetConsoleCursorPosition(out, home);
}

void set_console_cursor(int32_t row, int32_t column) {
  constexpr int32_t limit = 32767;  // the console's coordinates are 16-bit
  if (row < 0 || row > limit || column < 0 || column > limit) return;
  HANDLE out = console_output();
  if (out == nullptr) return;
  std::fflush(stdout);
  ::SetConsoleCursorPosition(out, COORD{static_cast<SHORT>(column), static_cast<SHORT>(row)});
}

std::vector<std::string> command_arguments() {
  int count = 0;
  wchar_t** words = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  if (words == nullptr) return {};
  std::vector<std::string> arguments;
  for (int i = 0; i < count; ++i) arguments.push_back(narrow(words[i]));
  ::LocalFree(words);
  return arguments;
}

std::optional<std::string> full_path(std::string_view path) {
  if (path.empty()) return current_directory();
  const std::wstring wide = widen(path);
  if (wide.empty()) return std::nullopt;
  const std::optional<std::wstring> full = system_text(
      [&wide](DWORD size, wchar_t* buffer) { return ::GetFullPathNameW(wide.c_str(), size, buffer, nullptr); });
  if (!full) return std::nullopt;
  return narrow(*full);
}

std::optional<WidePath> full_long_path(std::u16string_view path, std::size_t capacity) {
  // wchar_t and char16_t are both UTF-16 units here.
  const std::wstring input(path.begin(), path.end());
  const DWORD n = static_cast<DWORD>(std::min<std::size_t>(capacity, std::numeric_limits<DWORD>::max()));
  if (input.empty() || n == 0) return std::nullopt;
  std::vector<wchar_t> buffer(n);
  const DWORD got = ::GetFullPathNameW(input.c_str(), n, buffer.data(), nullptr);
  if (got == 0 || got >= n) return std::nullopt;
  const std::wstring full(buffer.data(), got);
  const std::size_t length = full.size();
  std::wstring prefixed;
  if (full.front() == L'\\') {
    if (full.size() >= 3 && full[1] == L'\\' && full[2] == L'?') {
      prefixed = full;  // already in the long form
    } else {
      if (n < length + 7) return std::nullopt;
      prefixed = L"\\\\?\\UNC\\" + full.substr(2);
    }
  } else {
    if (n < length + 5) return std::nullopt;
    prefixed = L"\\\\?\\" + full;
  }
  if (prefixed.compare(4, 3, L"UNC") == 0) {
    return WidePath{std::u16string(prefixed.begin(), prefixed.end()), static_cast<int32_t>(length)};
  }
  std::vector<wchar_t> long_form(n);
  const DWORD long_length = ::GetLongPathNameW(prefixed.c_str(), long_form.data(), n);
  if (long_length == 0 || long_length >= n) return std::nullopt;
  return WidePath{std::u16string(long_form.data(), long_form.data() + long_length), static_cast<int32_t>(long_length)};
}

FileHandle open_for_reading(const std::string& path) {
  const std::wstring wide = widen(path);
  if (wide.empty()) return no_file;
  // Read-only, and shared for everything: another program may read, write,
  // rename or delete the file while it is open here. A directory is refused.
  HANDLE handle = ::CreateFileW(wide.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return no_file;
  return reinterpret_cast<FileHandle>(handle);
}

bool close_descriptor(FileHandle descriptor) { return ::CloseHandle(handle_of(descriptor)) != 0; }

std::optional<FileFacts> descriptor_facts(FileHandle descriptor) {
  HANDLE handle = handle_of(descriptor);
  FileFacts facts;
  if (::GetFileType(handle) != FILE_TYPE_DISK) return facts;  // a pipe or a device
  BY_HANDLE_FILE_INFORMATION info{};
  if (::GetFileInformationByHandle(handle, &info) == 0) return std::nullopt;
  facts.directory = (info.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  facts.regular = !facts.directory;
  facts.size = static_cast<int64_t>((static_cast<uint64_t>(info.nFileSizeHigh) << 32) | info.nFileSizeLow);
  return facts;
}

std::optional<int64_t> file_size(FileHandle descriptor) {
  LARGE_INTEGER size{};
  if (::GetFileSizeEx(handle_of(descriptor), &size) == 0) return std::nullopt;
  return static_cast<int64_t>(size.QuadPart);
}

const std::byte* map_read_only(FileHandle descriptor, int64_t size) {
  if (size <= 0 || static_cast<uint64_t>(size) > SIZE_MAX) return nullptr;
  const auto whole = static_cast<uint64_t>(size);
  HANDLE mapping = ::CreateFileMappingW(handle_of(descriptor), nullptr, PAGE_READONLY, static_cast<DWORD>(whole >> 32),
                                        static_cast<DWORD>(whole & 0xFFFFFFFFU), nullptr);
  if (mapping == nullptr) return nullptr;
  void* view = ::MapViewOfFile(mapping, FILE_MAP_READ, 0, 0, static_cast<SIZE_T>(size));
  // The view holds the mapping for as long as it stays.
  ::CloseHandle(mapping);
  return static_cast<const std::byte*>(view);
}

void unmap(const std::byte* bytes, int64_t /*size*/) {
  if (bytes != nullptr) ::UnmapViewOfFile(bytes);
}

int64_t read_at_offset(FileHandle descriptor, std::byte* bytes, int64_t count, int64_t offset) {
  int64_t done = 0;
  while (done < count) {
    const auto at = static_cast<uint64_t>(offset + done);
    OVERLAPPED place{};
    place.Offset = static_cast<DWORD>(at & 0xFFFFFFFFU);
    place.OffsetHigh = static_cast<DWORD>(at >> 32);
    const DWORD wanted = static_cast<DWORD>(std::min<int64_t>(count - done, 1 << 30));
    DWORD got = 0;
    if (::ReadFile(handle_of(descriptor), bytes + done, wanted, &got, &place) == 0) {
      if (::GetLastError() == ERROR_HANDLE_EOF) break;
      return -1;
    }
    if (got == 0) break;
    done += got;
  }
  return done;
}

bool mapping_disabled() {
  const char* value = std::getenv("TMRDAR_NO_MMAP");
  return value != nullptr && std::string_view(value) == "1";
}

std::FILE* create_for_writing(const std::string& path) {
  if (is_directory(path)) return nullptr;
  const std::wstring wide = widen(path);
  return wide.empty() ? nullptr : ::_wfopen(wide.c_str(), L"wb");
}

std::optional<int64_t> stream_size(std::FILE* stream) {
  const int64_t size = ::_filelengthi64(::_fileno(stream));
  if (size < 0) return std::nullopt;
  return size;
}

bool seek_stream(std::FILE* stream, int64_t offset) { return ::_fseeki64(stream, offset, SEEK_SET) == 0; }

static_assert(sizeof(SRWLOCK) == sizeof(void*));

void StaticLock::lock() { ::AcquireSRWLockExclusive(reinterpret_cast<PSRWLOCK>(&state_)); }

void StaticLock::unlock() { ::ReleaseSRWLockExclusive(reinterpret_cast<PSRWLOCK>(&state_)); }

}  // namespace tmrdar::platform
