// Running the command in a directory of its own.

#ifndef ORVANE_TESTS_CLI_COMMAND_TEST_H_
#define ORVANE_TESTS_CLI_COMMAND_TEST_H_

#include <gtest/gtest.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace orvane::cli {

struct Result {
  int status;
  std::string out;
  std::string err;
};

class CommandTest : public testing::Test {
 protected:
  CommandTest() {
    std::string pattern = testing::TempDir() + "/orvane.XXXXXX";
    directory_ = ::mkdtemp(pattern.data());
  }
  ~CommandTest() override { std::filesystem::remove_all(directory_); }

  std::filesystem::path path(const std::string& name) const { return directory_ / name; }

  void write(const std::string& name, const std::string& text) const {
    std::ofstream(path(name), std::ios::binary) << text;
  }

  std::string read(const std::string& name) const {
    std::ostringstream text;
    text << std::ifstream(path(name), std::ios::binary).rdbuf();
    return text.str();
  }

  // Runs commands of the shell.
  Result shell(const std::string& commands, const std::string& input = {}) const {
    write("in", input);
    const std::string command =
        "cd '" + directory_.string() + "' && { " + commands + "; } < in > out 2> err";
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), read("out"),
            read("err")};
  }

  // Runs "orvane ARGUMENTS"; the arguments may hold redirections and further commands.
  Result run(const std::string& arguments, const std::string& input = {}) const {
    return shell(ORVANE_COMMAND " " + arguments, input);
  }

  // What "orvane ARGUMENTS" shows on a terminal of so many columns.
  std::string runOnTerminal(const std::string& arguments, unsigned short columns = 80) const {
    const winsize size{24, columns, 0, 0};
    int terminal = -1;
    const pid_t child = ::forkpty(&terminal, nullptr, nullptr, &size);
    if (child == 0) {
      const std::string command =
          "stty -opost; cd '" + directory_.string() + "'; " ORVANE_COMMAND " " + arguments;
      ::execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
      ::_exit(127);
    }
    std::string shown;
    char block[4096];
    for (ssize_t count = 0; (count = ::read(terminal, block, sizeof block)) > 0;) {
      shown.append(block, static_cast<std::size_t>(count));
    }
    ::close(terminal);
    ::waitpid(child, nullptr, 0);
    return shown;
  }

 private:
  std::filesystem::path directory_;
};

// A closed group with these lines, which are joined by "/".
inline std::string group(std::string lines) {
  for (char& c : lines) {
    if (c == '/') c = '\n';
  }
  return lines + "\n;\n";
}

}  // namespace orvane::cli

#endif  // ORVANE_TESTS_CLI_COMMAND_TEST_H_
