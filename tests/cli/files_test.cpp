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

// Ended while it writes: the name of the file beside the output is not known, but it is gone.
TEST_F(FilesTest, LeaveNothingUnfinishedWhenASignalEndsTheCommand) {
  std::string text;
  for (int upid = 0; upid < 50000; ++upid) text += group("UPID=" + std::to_string(upid));
  write("large", text);
  write("kept", "old");
  const std::ptrdiff_t before = files();
  run("apps --json large --output kept & "
      "while kill -0 $! && ! ls .orvane-*; do :; done; kill -TERM $!; wait");
  EXPECT_EQ(files(), before + 3);  // what a run reads and writes
}

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
      {"lint - < /dev/zero",  // which never ends
       "orvane lint: standard input: the byte at offset 0 is NUL: this is no text\n"},
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

// A text of so many applications; of 20,000 its table, JSON and sections are several pieces of
// output.
std::string largeText(int count) {
  std::string text;
  for (int upid = 1; upid <= count; ++upid) {
    text += group("UPID=" + std::to_string(upid) + "/GroupID=1/ApplName=A long name/PortRange=80," +
                  std::to_string(100 + upid) + ",50000-60000/IPv4=" + std::to_string(upid));
  }
  return text;
}

TEST_F(FilesTest, LargeOutputComesWhole) {
  write("large", largeText(20000));
  for (const std::string form : {"", "--json", "--section"}) {
    const Result result = run("apps large " + form);
    EXPECT_EQ(result.status, 0);
    EXPECT_GT(result.out.size(), 1U << 20U);
    EXPECT_EQ(run("apps large --output o " + form).status, 0);
    EXPECT_TRUE(read("o") == result.out) << form;
    EXPECT_TRUE(run("apps - " + form + " < large").out == result.out) << form;
    EXPECT_EQ(run("--version; cat large | " ORVANE_COMMAND " apps - --output o " + form).status, 0);
    EXPECT_TRUE(read("o") == result.out) << form;
  }
}

TEST_F(FilesTest, OutputThatFailsHalfwayLeavesTheOldFile) {
  write("large", largeText(20000));
  write("old", text_);
  run("--version");
  const std::ptrdiff_t before = files();
  for (const std::string form : {"", "--json", "--section"}) {
    // The first MiB fits, the rest does not.
    const std::string limited = "--version > v; ulimit -f 2100; " ORVANE_COMMAND " apps large ";
    const Result kept = run(limited + form + " --output old");
    EXPECT_EQ(kept.status, 2) << form;
    EXPECT_EQ(kept.err, "orvane apps: cannot write old: File too large\n");
    EXPECT_TRUE(read("old") == text_);  // not shown: it would be large
    EXPECT_EQ(run(limited + form).status, 2) << form;
    // The reader takes the first piece, and goes.
    run("--version > v; { " ORVANE_COMMAND " apps large " + form +
        "; echo $? > status; } | head -c 1000000 > v");
    EXPECT_EQ(read("status"), "2\n");
  }
  EXPECT_EQ(files(), before + 2);  // v and status
}

TEST_F(FilesTest, MemoryThatRunsOutIsTold) {
#ifdef ORVANE_SANITIZED
  GTEST_SKIP() << "A sanitizer needs more room than any limit gives";
#endif
  write("large", largeText(5000));
  const std::string arguments[] = {
      "apps large --output o",         "apps --json large --output o",
      "diff f large --output o",       "catalogue --add large f --output o",
      "check --each large --output o", "lint large --output o"};
  for (const std::string& call : arguments) {
    const std::string command = call.substr(0, call.find(' '));
    int failures = 0;
    for (int kilobytes = 9000; kilobytes <= 50000; kilobytes = kilobytes * 5 / 4) {
      SCOPED_TRACE(call + " in " + std::to_string(kilobytes));
      std::filesystem::remove(path("o"));
      const Result result = run("--version > v; ulimit -v " + std::to_string(kilobytes) +
                                "; " ORVANE_COMMAND " " + call);
      EXPECT_EQ(files(), result.status == 2 ? 7 : 8);  // f, g, in, large, out, err, v and o
      if (result.status != 2) continue;
      ++failures;
      EXPECT_TRUE(result.err.ends_with("orvane " + command + ": large: not enough memory\n"))
          << result.err;
    }
    EXPECT_GT(failures, 0) << call;
  }
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
