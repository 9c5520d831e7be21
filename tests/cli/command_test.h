// Running the command in a directory of its own.

#ifndef ORVANE_TESTS_CLI_COMMAND_TEST_H_
#define ORVANE_TESTS_CLI_COMMAND_TEST_H_

#include <gtest/gtest.h>
#include <sys/wait.h>

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

  // Runs "orvane ARGUMENTS"; the arguments may hold redirections and further commands.
  Result run(const std::string& arguments, const std::string& input = {}) const {
    write("in", input);
    const std::string command = "cd '" + directory_.string() + "' && { " ORVANE_COMMAND " " +
                                arguments + "; } < in > out 2> err";
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, read("out"), read("err")};
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
