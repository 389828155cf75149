#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <fstream>
#include <iterator>
#include <vector>

#include "core/platform/platform.h"

namespace tmrdar::platform {

std::optional<std::string> CURRENT_DIRECTORY() {
  std::vector<char> buffer(4096);
  for (;;) {
    if (::getcwd(buffer.data(), buffer.size()) != nullptr) return std::string(buffer.data());
    if (errno != ERANGE || buffer.size() > (1U << 20)) return std::nullopt;
    buffer.resize(buffer.size() * 2);
  }
}

bool PATH_EXISTS(const std::string& path) {
  struct stat info {};
  return ::stat(path.c_str(), &info) == 0;
}

bool IS_DIRECTORY(const std::string& path) {
  struct stat info {};
  return ::stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

std::string TEMPORARY_DIRECTORY() {
  const char* tmpdir = std::getenv("TMPDIR");
  std::string directory = (tmpdir != nullptr && *tmpdir != '\0') ? tmpdir : "/tmp";
  while (directory.size() > 1 && directory.back() == PATH_SEPARATOR) directory.pop_back();
  return directory;
}

std::optional<std::string> CREATE_TEMPORARY_FILE(std::string_view prefix) {
  std::string name = TEMPORARY_DIRECTORY();
  name.push_back(PATH_SEPARATOR);
  name.append(prefix).append("XXXXXX");
  const int descriptor = ::mkstemp(name.data());
  if (descriptor < 0) return std::nullopt;
  ::close(descriptor);
  return name;
}

bool DELETE_FILE(const std::string& path) { return std::remove(path.c_str()) == 0; }

bool CHANGE_DIRECTORY(const std::string& path) { return ::chdir(path.c_str()) == 0; }

bool STANDARD_OUTPUT_IS_TERMINAL() { return ::isatty(STDOUT_FILENO) == 1; }

namespace {

// Writes a control sequence through the standard output stream, so that it
// keeps its place among what the program has written there before.
void WRITE_TO_TERMINAL(const std::string& sequence) {
  std::fwrite(sequence.data(), 1, sequence.size(), stdout);
  std::fflush(stdout);
}

}  // namespace

void CLEAR_CONSOLE() {
  if (!STANDARD_OUTPUT_IS_TERMINAL()) return;
  WRITE_TO_TERMINAL("\x1b[2J\x1b[H");  // erase the whole display, cursor home
}

void SET_CONSOLE_CURSOR(int32_t row, int32_t column) {
  constexpr int32_t LIMIT = 32767;  // the console's coordinates are 16-bit
  if (row < 0 || row > LIMIT || column < 0 || column > LIMIT) return;
  if (!STANDARD_OUTPUT_IS_TERMINAL()) return;
  // The terminal counts rows and columns from 1.
  WRITE_TO_TERMINAL("\x1b[" + std::to_string(row + 1) + ";" + std::to_string(column + 1) + "H");
}

std::vector<std::string> COMMAND_ARGUMENTS() {
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

int OPEN_FOR_READING(const std::string& path) {
  int descriptor = -1;
  do {
    descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  } while (descriptor < 0 && errno == EINTR);
  return descriptor;
}

bool CLOSE_DESCRIPTOR(int descriptor) { return ::close(descriptor) == 0; }

std::optional<FILE_FACTS> DESCRIPTOR_FACTS(int descriptor) {
  struct stat info {};
  if (::fstat(descriptor, &info) != 0) return std::nullopt;
  return FILE_FACTS{.SIZE = static_cast<int64_t>(info.st_size),
                    .REGULAR = S_ISREG(info.st_mode),
                    .DIRECTORY = S_ISDIR(info.st_mode)};
}

const std::byte* MAP_READ_ONLY(int descriptor, int64_t size) {
  if (size <= 0 || static_cast<uint64_t>(size) > SIZE_MAX) return nullptr;
  void* bytes = ::mmap(nullptr, static_cast<std::size_t>(size), PROT_READ, MAP_SHARED, descriptor, 0);
  return bytes == MAP_FAILED ? nullptr : static_cast<const std::byte*>(bytes);
}

void UNMAP(const std::byte* bytes, int64_t size) {
  if (bytes != nullptr) ::munmap(const_cast<std::byte*>(bytes), static_cast<std::size_t>(size));
}

int64_t READ_AT_OFFSET(int descriptor, std::byte* bytes, int64_t count, int64_t offset) {
  int64_t done = 0;
  while (done < count) {
    const ssize_t got = ::pread(descriptor, bytes + done, static_cast<std::size_t>(count - done),
                                static_cast<off_t>(offset + done));
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return -1;
    if (got == 0) break;
    done += got;
  }
  return done;
}

bool MAPPING_DISABLED() {
  const char* value = std::getenv("TMRDAR_NO_MMAP");
  return value != nullptr && std::string_view(value) == "1";
}

}  // namespace tmrdar::platform
