#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <set>
#include <thread>
#include <utility>

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

  struct stat statusOf(const std::string& name) const {
    struct stat status {};
    ::stat(path(name).c_str(), &status);
    return status;
  }

  // How many there are beside those of every run.
  std::ptrdiff_t files() const {
    return std::ranges::count_if(std::filesystem::directory_iterator(path("")),
                                 [](const auto& entry) {
                                   const std::string name = entry.path().filename();
                                   return name != "in" && name != "out" && name != "err";
                                 });
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
  shell("mkfifo p");
  for (const std::string form : {"", "--json", "--section"}) {
    const std::string whole = run("apps large " + form).out;
    EXPECT_GT(whole.size(), 1U << 20U);
    EXPECT_EQ(shell("cat large > p & " ORVANE_COMMAND " apps p --output o " + form).status, 0);
    EXPECT_TRUE(read("o") == whole) << form;
    // A slow reader of a pipe that is not to be waited for.
    int ends[2];
    ASSERT_TRUE(::pipe(ends) == 0 && ::dup2(ends[1], 9) == 9);
    ::close(ends[1]);
    ::fcntl(9, F_SETFL, O_NONBLOCK);
    std::string got;
    std::thread reader([&] {
      std::string block(60000, '\0');
      for (ssize_t count = 0; (count = ::read(ends[0], block.data(), block.size())) > 0;) {
        got.append(block, 0, static_cast<std::size_t>(count));
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
      }
    });
    EXPECT_EQ(run("apps - " + form + " < large >&9").status, 0);
    ::close(9);
    reader.join();
    ::close(ends[0]);
    EXPECT_TRUE(got == whole) << form;
  }
}

// The first MiB fits, or is taken by the reader, and the rest is not.
TEST_F(FilesTest, OutputThatFailsHalfwayIsNoSuccess) {
  write("large", largeText(20000));
  for (const std::string form : {"", "--json", "--section"}) {
    const std::string call = ORVANE_COMMAND " apps large " + form;
    const Result kept = shell("ulimit -f 2100; " + call + " --output g");
    EXPECT_EQ(kept.status, 2) << form;
    EXPECT_EQ(kept.err, "orvane apps: cannot write g: File too large\n");
    EXPECT_TRUE(read("g") == text_);  // not shown: it would be large
    EXPECT_EQ(shell("ulimit -f 2100; " + call).status, 2) << form;
    shell("{ " + call + "; echo $? > status; } | head -c 1000000 > v");
    EXPECT_EQ(read("status"), "2\n");
  }
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
    const std::string command = "orvane " + call.substr(0, call.find(' '));
    const std::string words = ": not enough memory\n";
    const std::set<std::string> soon = {"orvane" + words, command + words, command + ": f" + words};
    std::set<std::string> messages;  // but those
    for (int kilobytes = 7000; kilobytes <= 50000; kilobytes = kilobytes * 20 / 19) {
      SCOPED_TRACE(call + " in " + std::to_string(kilobytes));
      std::filesystem::remove(path("o"));
      const Result result =
          shell("ulimit -v " + std::to_string(kilobytes) + "; " ORVANE_COMMAND " " + call);
      if (result.status == 127) continue;  // the libraries cannot be loaded
      EXPECT_TRUE(result.status >= 0 && result.status <= 2) << result.status;
      EXPECT_EQ(files(), result.status == 2 ? 3 : 4);  // f, g, large and o
      const std::string message =
          result.err.substr(std::min(result.err.rfind("orvane"), result.err.size()));
      if (result.status == 2 && !soon.contains(message)) messages.insert(message);
    }
    EXPECT_EQ(messages, std::set{command + ": large" + words});
  }
  // What is known to be too large is not read.
  for (const std::string call : {"lint - < sparse", "tree sparse", "apps long"}) {
    shell("truncate -s 5G sparse; cp f long; truncate -s 5G long");
    const Result result = shell("ulimit -v 100000; timeout 5 " ORVANE_COMMAND " " + call);
    EXPECT_EQ(result.status, 2) << call;
    EXPECT_EQ(std::ranges::count(result.err, '\n'), 1) << result.err;
  }
}

TEST_F(FilesTest, OutputTakesThePlaceOfWhatItNames) {
  std::filesystem::create_directory(path("sub"));
  std::filesystem::create_symlink("target", path("dangling"));
  std::filesystem::create_symlink("../dangling", path("sub/link"));
  std::string chain = "target";
  for (int links = 0; links < 12; ++links) {
    std::filesystem::create_symlink(chain, path(chain + "'"));
    chain += "'";
  }
  const std::string longest(255, 'n');
  const struct {
    std::string output;
    std::string file;
    mode_t before;  // 0: there is none
    mode_t after;
  } cases[] = {
      {"sub/link", "target", 0, 0640},     {"sub/link", "target", 0604, 0604},
      {"dangling", "target", 06755, 0755}, {"\"" + chain + "\"", "target", 0604, 0604},
      {longest, longest, 0, 0640},         {longest, longest, 01200, 0200},
      {"./sub/../x", "x", 0, 0640},
  };
  for (const auto& [output, file, before, after] : cases) {
    if (before != 0) {
      ASSERT_EQ(::geteuid() == 0 ? ::chown(path(file).c_str(), 1234, 4321) : 0, 0);
      ::chmod(path(file).c_str(), before);
      write("f", text_ + text_);
    }
    const std::ptrdiff_t count = files();
    const struct stat replaced = statusOf(file);
    EXPECT_EQ(shell("umask 027; " ORVANE_COMMAND " apps f --output " + output).err, "");
    EXPECT_EQ(read(file), run("apps f").out) << output;
    EXPECT_EQ(files(), count + (before == 0 ? 1 : 0)) << output;
    EXPECT_EQ(statusOf(file).st_mode & 07777U, after) << output;
    EXPECT_TRUE(before == 0 || (statusOf(file).st_uid == replaced.st_uid &&
                                statusOf(file).st_gid == replaced.st_gid));
  }
  EXPECT_TRUE(std::filesystem::is_symlink(path("dangling")));
}

TEST_F(FilesTest, OutputToWhatIsOpenIsAppended) {
  std::filesystem::create_symlink("/dev/stdout", path("chain"));
  for (const std::string output :
       {"/dev/stdout >> o", "/dev/stderr 2>> o", "/proc/self/fd/3 3>> o",
        "/proc/thread-self/fd/1 >> o", "- >> o", "/dev/fd/1 | cat >> o", "chain >> o"}) {
    write("o", "old\n");
    EXPECT_EQ(run("apps f --output " + output).err, "");
    EXPECT_EQ(read("o"), "old\n" + run("apps f").out) << output;
  }
  EXPECT_FALSE(std::filesystem::exists(path("-")));
}

TEST_F(FilesTest, RefusedOutputStaysAsItIs) {
  std::filesystem::create_hard_link(path("g"), path("hard"));
  std::filesystem::create_symlink("f", path("link"));
  std::filesystem::create_symlink("missing/x", path("nowhere"));
  std::filesystem::create_symlink("loop", path("loop"));
  for (const std::string name : {"o", "foreign", "public"}) write(name, text_);
  ::chmod(path("o").c_str(), 0444);
  ::chmod(path("public").c_str(), 0666);
  ::chmod(path("").c_str(), 0777);
  ::mkfifo(path("fifo").c_str(), 0600);
  const std::ptrdiff_t before = files();
  const struct {
    std::string arguments;
    std::string reason;
  } cases[] = {
      {"apps f --output link", "it is the input"},
      {"diff g f --output ./f", "it is the input"},
      {"apps - --output in", "it is the input"},
      {"apps hard --output g", "it is the input"},
      {"apps f --output /dev/fd/3 3<> f", "it is the input"},
      {"apps - --output /dev/stdin <> f", "it is the input"},
      {"apps f --output /proc/$$/fd/1", "it is not open here"},
      {"apps f --output g", "it has other hard links"},
      {"apps f --output o", "it is read-only"},
      {"apps f --output .", "it is no regular file"},
      {"apps f --output fifo", "it is no regular file"},
      {"apps f --output /dev/null", "it is no regular file"},
      {"apps f --output missing/x", "No such file or directory"},
      {"apps f --output nowhere", "No such file or directory"},
      {"apps f --output f/x", "Not a directory"},
      {"apps f --output loop", "Too many levels of symbolic links"},
      {"apps f --output " + std::string(256, 'n'), "File name too long"},
      {"apps f --output /dev/fd/7", "Bad file descriptor"},
      {"apps f --output /dev/stdout > /dev/full", "No space left on device"},
      {"--help > /dev/full", "No space left on device"},
  };
  const auto refuse = [&](const std::string& call, const std::string& reason) {
    const Result result = shell(call, text_);
    EXPECT_EQ(result.status, 2) << call;
    EXPECT_TRUE(result.err.ends_with(": " + reason + "\n")) << call << ": " << result.err;
  };
  for (const auto& [arguments, reason] : cases) refuse(ORVANE_COMMAND " " + arguments, reason);
  // Another user may write a public file, but not give it to its owner.
  const std::string other = "setpriv --reuid 65534 --regid 65534 --clear-groups " ORVANE_COMMAND;
  if (::geteuid() == 0 && shell(other + " --version").status == 0) {
    refuse(other + " apps f --output foreign", "Permission denied");
    refuse(other + " apps f --output public", "Operation not permitted");
    ASSERT_EQ(::chown(path("public").c_str(), 65534, 0), 0);  // of a group of others
    refuse(other + " apps f --output public", "Operation not permitted");
    shell("mkdir -m 0300 unread && chown 65534 unread");
    EXPECT_EQ(shell(other + " apps f --output unread/x").err, "");
    std::filesystem::remove_all(path("unread"));
  }
  for (const std::string name : {"f", "g", "o", "foreign", "public"}) EXPECT_EQ(read(name), text_);
  EXPECT_EQ(files(), before);
}

// A file that is opened never becomes a standard stream.
TEST_F(FilesTest, ClosedStreamsTakeNothing) {
  write("t.csv", "upid,parentUpid,name\n1,7,lost\n");
  run("tree pack t.csv --output t");
  const struct {
    std::string arguments;
    unsigned int needs;  // streams, as bits
  } cases[] = {{"tree t --format csv --output o", 0},
               {"apps - --output o", 1},
               {"apps f", 2},
               {"apps f --output /dev/stderr", 4}};
  for (const auto& [arguments, needs] : cases) {
    const int status = run(arguments, text_).status;
    const std::string whole = read("o");
    for (unsigned int closed = 1; closed < 8; ++closed) {
      std::filesystem::remove(path("o"));
      const std::string streams[] = {" <&-", " >&-", " 2>&-"};
      std::string call = arguments;
      for (unsigned int i = 0; i < 3; ++i) call += (closed >> i & 1U) != 0 ? streams[i] : "";
      EXPECT_EQ(run(call, text_).status, (closed & needs) != 0 ? 2 : status) << call;
      EXPECT_EQ(read("o"), (closed & needs) != 0 ? "" : whole) << call;
    }
  }
}

}  // namespace
}  // namespace orvane::cli
