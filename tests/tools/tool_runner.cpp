#include "tools/tool_runner.h"

#include <spawn.h>
#include <sys/wait.h>

#include <fcntl.h>
#include <unistd.h>
#include <fstream>
#include <sstream>

#include "support/scratch_dir.h"

namespace tmrdar::testing {

ToolRun run_tool(const std::vector<std::string>& arguments) {
  ScratchDir dir;
  const std::string out = dir.file("out");
  const std::string err = dir.file("err");
  std::vector<std::string> words{TMRDAR_TOOL};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> argv;
  for (std::string& word : words) argv.push_back(word.data());
  argv.push_back(nullptr);

  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 1, out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
  posix_spawn_file_actions_addopen(&actions, 2, err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
  ToolRun run;
  pid_t pid = 0;
  if (posix_spawn(&pid, TMRDAR_TOOL, &actions, nullptr, argv.data(), environ) == 0) {
    int status = 0;
    if (waitpid(pid, &status, 0) == pid && WIFEXITED(status)) run.status = WEXITSTATUS(status);
  }
  posix_spawn_file_actions_destroy(&actions);
  const auto read = [](const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
  };
  run.out = read(out);
  run.err = read(err);
  return run;
}

std::vector<std::string> lines_of(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

std::vector<std::string> fields_of(const std::string& line, char separator) {
  std::vector<std::string> fields;
  std::string field;
  for (const char c : line + separator) {
    if (c != separator) {
      field += c;
    } else if (separator != ' ' || !field.empty()) {
      fields.push_back(field);
      field.clear();
    }
  }
  return fields;
}

}  // namespace tmrdar::testing
