#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <string_view>
#include <utility>
#include <iterator>
#include <vector>

#include "core/platform/platform.h"

namespace tmrdar::platform {

std::optional<std::string> current_directory() {
  std::vector<char> buffer(4096);
  for (;;) {
    if (::getcwd(buffer.data(), buffer.size()) != nullptr) return std::string(buffer.data());
    if (errno != ERANGE || buffer.size() > (1U << 20)) return std::nullopt;
    buffer.resize(buffer.size() * 2);
  }
}

bool path_exists(const std::string& path) {
  struct stat info {};
  return ::stat(path.c_str(), &info) == 0;
}

bool is_directory(const std::string& path) {
  struct stat info {};
  return ::stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

std::string temporary_directory() {
  const char* tmpdir = std::getenv("TMPDIR");
  std::string directory = (tmpdir != nullptr && *tmpdir != '\0') ? tmpdir : "/tmp";
  while (directory.size() > 1 && directory.back() == path_separator) directory.pop_back();
  return directory;
}

std::optional<std::string> create_temporary_file(std::string_view prefix) {
  std::string name = temporary_directory();
  name.push_back(path_separator);
  name.append(prefix).append("XXXXXX");
  const int descriptor = ::mkstemp(name.data());
  if (descriptor < 0) return std::nullopt;
  ::close(descriptor);
  return name;
}

bool delete_file(const std::string& path) { return std::remove(path.c_str()) == 0; }

bool change_directory(const std::string& path) { return ::chdir(path.c_str()) == 0; }

bool standard_output_is_terminal() { return ::isatty(STDOUT_FILENO) == 1; }

namespace {

// Writes a control sequence through the standard output stream, so that it
// keeps its place among what the program has written there before.
void write_to_terminal(const std::string& sequence) {
  std::fwrite(sequence.data(), 1, sequence.size(), stdout);
  std::fflush(stdout);
}

}  // namespace

void clear_console() {
  if (!standard_output_is_terminal()) return;
  write_to_terminal("\x1b[2J\x1b[H");  // erase the whole display, cursor home
}

void set_console_cursor(int32_t row, int32_t column) {
  constexpr int32_t limit = 32767;  // the console's coordinates are 16-bit
  if (row < 0 || row > limit || column < 0 || column > limit) return;
  if (!standard_output_is_terminal()) return;
  // The terminal counts rows and columns from 1.
  write_to_terminal("\x1b[" + std::to_string(row + 1) + ";" + std::to_string(column + 1) + "H");
}

std::vector<std::string> command_arguments() {
  // The kernel keeps the arguments as a sequence of zero-ended strings.
  std::ifstream in("/proc/self/cmdline", std::ios::binary);
  if (!in) return {};
  const std::string all{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  std::vector<std::string> arguments;
  std::size_t start = 0;
  while (start < all.size()) {
    std::size_t end = all.find('\0', start);
    if (end == std::string::npos) end = all.size();
    arguments.emplace_back(all, start, end - start);
    start = end + 1;
  }
  return arguments;
}

FileHandle open_for_reading(const std::string& path) {
  int descriptor = -1;
  do {
    descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  } while (descriptor < 0 && errno == EINTR);
  return descriptor < 0 ? no_file : descriptor;
}

bool close_descriptor(FileHandle descriptor) { return ::close(static_cast<int>(descriptor)) == 0; }

std::optional<FileFacts> descriptor_facts(FileHandle descriptor) {
  struct stat info {};
  if (::fstat(static_cast<int>(descriptor), &info) != 0) return std::nullopt;
  return FileFacts{.size = static_cast<int64_t>(info.st_size),
                    .regular = S_ISREG(info.st_mode),
                    .directory = S_ISDIR(info.st_mode)};
}

std::optional<int64_t> file_size(FileHandle descriptor) {
  struct stat info {};
  if (::fstat(static_cast<int>(descriptor), &info) != 0) return std::nullopt;
  return static_cast<int64_t>(info.st_size);
}

const std::byte* map_read_only(FileHandle descriptor, int64_t size) {
  if (size <= 0 || static_cast<uint64_t>(size) > SIZE_MAX) return nullptr;
  void* bytes =
      ::mmap(nullptr, static_cast<std::size_t>(size), PROT_READ, MAP_SHARED, static_cast<int>(descriptor), 0);
  return bytes == MAP_FAILED ? nullptr : static_cast<const std::byte*>(bytes);
}

void unmap(const std::byte* bytes, int64_t size) {
  if (bytes != nullptr) ::munmap(const_cast<std::byte*>(bytes), static_cast<std::size_t>(size));
}

int64_t read_at_offset(FileHandle descriptor, std::byte* bytes, int64_t count, int64_t offset) {
  int64_t done = 0;
  while (done < count) {
    const ssize_t got = ::pread(static_cast<int>(descriptor), bytes + done, static_cast<std::size_t>(count - done),
                                static_cast<off_t>(offset + done));
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return -1;
    if (got == 0) break;
    done += got;
  }
  return done;
}

std::optional<std::string> full_path(std::string_view path) {
  if (!path.empty() && path.front() == path_separator) return fold_path(path, "/");
  const std::optional<std::string> current = current_directory();
  if (!current) return std::nullopt;
  return fold_path(path, *current);
}

std::optional<WidePath> full_long_path(std::u16string_view path, std::size_t capacity) {
  if (path.empty()) return std::nullopt;
  const std::optional<std::string> full = full_path(utf16_to_utf8(path));
  if (!full) return std::nullopt;
  std::u16string wide = utf8_to_utf16(*full);
  if (wide.size() + 1 > capacity) return std::nullopt;
  const auto length = static_cast<int32_t>(wide.size());
  return WidePath{std::move(wide), length};
}

std::FILE* create_for_writing(const std::string& path) {
  std::FILE* stream = std::fopen(path.c_str(), "wb");
  if (stream == nullptr) return nullptr;
  struct stat info {};
  if (::fstat(::fileno(stream), &info) != 0 || S_ISDIR(info.st_mode)) {
    std::fclose(stream);
    return nullptr;
  }
  return stream;
}

std::optional<int64_t> stream_size(std::FILE* stream) {
  struct stat info {};
  if (::fstat(::fileno(stream), &info) != 0) return std::nullopt;
  return static_cast<int64_t>(info.st_size);
}

bool seek_stream(std::FILE* stream, int64_t offset) {
  return ::fseeko(stream, static_cast<off_t>(offset), SEEK_SET) == 0;
}

bool mapping_disabled() {
  const char* value = std::getenv("TMRDAR_NO_MMAP");
  return value != nullptr && std::string_view(value) == "1";
}

}  // namespace tmrdar::platform
