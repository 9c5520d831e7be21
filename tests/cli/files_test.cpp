#include <sys/stat.h>

#include <algorithm>

#include "command_test.h"

namespace orvane::cli {
namespace {

// Files, streams and usage, which all subcommands treat alike.
class FilesTest : public CommandTest {
 protected:
  FilesTest() {
    write("f", text_);
    write("g", text_);
  }

  mode_t mode(const std::string& name) const {
    struct stat status {};
    EXPECT_EQ(::stat(path(name).c_str(), &status), 0);
    return status.st_mode & 07777;
  }

  // What lies in the directory beside the files of every run.
  std::ptrdiff_t files() const {
    return std::distance(std::filesystem::directory_iterator(path("")), {});
  }

  const std::string text_ = group("UPID=1/GroupID=1/PortRange=80");
};

TEST_F(FilesTest, UnusableInputAndUsage) {
  write("nul", std::string("UPID=1\n\0;\n", 10));
  write("open", "UPID=1\n");
  struct Case {
    std::string arguments;
    std::string message;
  };
  const Case cases[] = {
      {"apps missing", "orvane apps: cannot read missing: No such file or directory\n"},
      {"lint .", "orvane lint: cannot read .: Is a directory\n"},
      {"apps nul", "orvane apps: nul: the byte at offset 7 is NUL: this is no text\n"},
      {"diff f open", "orvane diff: open: no group is closed by a terminator line such as \";\"\n"},
      {"diff - -", "orvane diff: only one of OLD and NEW can be standard input\n"},
      {"apps ''", "orvane apps: FILE: the argument is empty (see orvane apps --help)\n"},
      {"import services '' ",
       "orvane import services: FILE: the argument is empty (see orvane import services --help)\n"},
      {"diff f", "orvane diff: NEW is required (see orvane diff --help)\n"},
      {"diff --json f f", "orvane diff: --json requires --summary (see orvane diff --help)\n"},
      {"lint f --wild",
       "orvane lint: The following argument was not expected: --wild (see orvane lint --help)\n"},
      {"", "orvane: a subcommand is required (see orvane --help)\n"},
      {"import", "orvane import: a subcommand is required (see orvane import --help)\n"},
  };
  for (const Case& test : cases) {
    const Result result = run(test.arguments);
    EXPECT_EQ(result.status, 2) << test.arguments;
    EXPECT_EQ(result.out, "") << test.arguments;
    EXPECT_EQ(result.err, test.message);
  }
}

TEST_F(FilesTest, HelpAndVersion) {
  EXPECT_EQ(run("--version").out, "orvane 1.1.0\n");
  for (const std::string command : {"", "apps", "diff", "ports", "check", "used", "catalogue",
                                    "tree", "tree pack", "import", "import services", "lint"}) {
    const Result result = run(command + " --help");
    EXPECT_EQ(result.status, 0) << command;
    EXPECT_NE(result.out.find("Example: orvane " + command), std::string::npos) << command;
    EXPECT_LT(std::count(result.out.begin(), result.out.end(), '\n'), 24) << command;
    std::istringstream lines(result.out);
    for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 80U) << line;
  }
}

TEST_F(FilesTest, SuggestsWhatWasMeant) {
  const struct {
    std::string arguments;
    std::string nearest;
  } cases[] = {
      {"dif f g", "diff"},
      {"cat f", "catalogue"},
      {"lnit --json f", "lint"},
      {"--verson", "--version"},
      {"import servces", "services"},
      {"apps f --jsn", "--json"},
      {"apps f --colour=x", "--color"},
      {"diff f g --summry --jsn", "--summary"},
      {"tree pakc f --output o", "pack"},
  };
  for (const auto& test : cases) {
    const std::string suggestion = "; did you mean " + test.nearest + "? (see ";
    EXPECT_NE(run(test.arguments).err.find(suggestion), std::string::npos) << test.arguments;
  }
}

TEST_F(FilesTest, FailedOutputIsNoSuccess) {
  for (const std::string arguments : {"apps f > /dev/full", "apps f >&-", "--help > /dev/full",
                                      "apps f --output missing/x", "apps f --output ."}) {
    const Result result = run(arguments);
    EXPECT_EQ(result.status, 2) << arguments;
    EXPECT_NE(result.err.find("cannot write"), std::string::npos) << arguments;
  }
  // The reader has gone before the command writes.
  run("--version; { sleep 0.2; " ORVANE_COMMAND " apps f; echo $? > status; } | true");
  EXPECT_EQ(read("status"), "2\n");
}

TEST_F(FilesTest, OutputReplacesTheFileAndNothingElse) {
  run("--version; umask 027; " ORVANE_COMMAND " apps --json f --output new");
  EXPECT_EQ(read("new"), run("apps --json f").out);
  EXPECT_EQ(mode("new"), 0640);
  ::chmod(path("g").c_str(), 0604);
  std::filesystem::create_symlink("g", path("link"));
  const std::ptrdiff_t before = files();
  EXPECT_EQ(run("apps --json f --output link").out, "");
  EXPECT_EQ(read("g"), read("new"));
  EXPECT_EQ(mode("g"), 0604);
  EXPECT_EQ(files(), before);
}

TEST_F(FilesTest, OutputIsNeverAnInput) {
  std::filesystem::create_hard_link(path("f"), path("hard"));
  std::filesystem::create_symlink("f", path("link"));
  for (const std::string arguments :
       {"apps f --output f", "apps f --output link", "apps link --output hard",
        "diff g f --output f", "apps - --output in", "lint ./f --output f"}) {
    const Result result = run(arguments, text_);
    EXPECT_EQ(result.status, 2) << arguments;
    EXPECT_NE(result.err.find("it is the input"), std::string::npos) << result.err;
  }
  EXPECT_EQ(read("f"), text_);
  EXPECT_EQ(run("apps f --output /dev/null").status, 2);
}

}  // namespace
}  // namespace orvane::cli
