// What the command leaves behind when calls to the system fail, are cut short, or meet a signal:
// each run is repeated while its first, second, third … call goes wrong, until none does.

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "command_test.h"

namespace orvane::cli {
namespace {

using Files = std::map<std::string, std::string>;

// A run, and what it leaves in the directory.
struct Outcome {
  int status;
  std::string out, err;
  Files files;
  std::string calls;  // one per line, and "!" after each that went wrong

  bool operator==(const Outcome& other) const {
    return std::tie(status, out, err, files) ==
           std::tie(other.status, other.out, other.err, other.files);
  }
  bool met() const { return calls.find('!') != std::string::npos; }
};

enum Expected : int { kEither, kOneEnds, kEnds, kGoesOn };

struct Fault {
  std::string call;
  Expected expected;
  std::vector<int> errors;  // 0: cut short
};

class FaultsTest : public CommandTest {
 protected:
  FaultsTest() {
    const std::string text = group("UPID=1/GroupID=1/PortRange=80,90-95/IPv4=5") +
                             group("UPID=2/GroupID=2/ApplName=b/PortRange=91/IPv4=5");
    write("f", text);
    write("g", text + group("UPID=3/GroupID=3/Action=1/PortRange=7"));
    write("c", group("UPID=1/Version=1/PortRange=80/FQN=x"));
    write("bad", "UPID=x\n;\n");
    write("services", "http 80/tcp\n");
    write("t.csv", "upid,parentUpid,name\n1,0,a\n2,1,b\n");
    run("tree pack t.csv --output t.tree");
    std::filesystem::create_directories(path("proc/net"));
    write("proc/net/tcp", "heading\n 0: 0100007F:0050 00000000:0000 0A\n");
    for (const char* const name : {"proc/net/udp", "proc/net/tcp6"}) write(name, "heading\n");
    for (int upid = 1; upid <= 6000; ++upid) {
      large_ += group("UPID=" + std::to_string(upid) + "/GroupID=1/PortRange=80,100,50000-60000");
    }
    write("large", large_);
    old_ = files();
  }

  // Owners, permissions and contents, without what every run makes.
  Files files() const {
    Files files;
    for (const auto& entry : std::filesystem::directory_iterator(path(""))) {
      const std::string name = entry.path().filename();
      struct stat status {};
      ::lstat(entry.path().c_str(), &status);
      files[name] = std::to_string(status.st_uid) + ":" + std::to_string(status.st_gid) + " mode " +
                    std::to_string(status.st_mode) + " " + (name == "large" ? "" : read(name));
    }
    for (const char* const name : {"in", "out", "err", "log"}) files.erase(name);
    return files;
  }

  // Runs "orvane ARGUMENTS" with such a fault, over files as they were, after commands of the
  // shell.
  Outcome runWith(const std::string& fault, const std::string& arguments,
                  const std::string& before = "") {
    for (const auto& [name, contents] : files()) {
      if (!old_.contains(name)) std::filesystem::remove(path(name));
    }
    std::filesystem::remove(path("link"));
    std::filesystem::create_symlink("kept", path("link"));
    write("kept", "old\n");
    ::chmod(path("kept").c_str(), 0604);
    if (::geteuid() == 0 && ::chown(path("kept").c_str(), 1234, 4321) != 0) std::abort();
    old_ = files();
    const std::string settings = "ORVANE_FAULT='" + fault + "' LD_PRELOAD=" ORVANE_IO_FAULTS;
    const auto [status, out, err] = shell(
        before + "ulimit -c 0; " + settings + " exec " ORVANE_COMMAND " " + arguments + " 9> log",
        group("UPID=5/GroupID=5/PortRange=5"));
    return {status, out, err, files(), read("log")};
  }

  // What is wrong with a run that met failures; "" when nothing is.
  std::string faultOf(const Outcome& outcome, const Outcome& clean, Expected expected) const {
    const std::string& err = outcome.err;
    if (outcome == clean) return expected == kEnds ? "it goes on" : "";
    if (expected == kGoesOn) return "it does not go on: " + err;
    if (outcome.status != 2) return "it ends with " + std::to_string(outcome.status);
    if (!err.starts_with("orvane") || err.find('\n') + 1 != err.size()) return "it says " + err;
    const bool isCleared = outcome.calls.find("unlink\n!") == std::string::npos;
    const bool isWhole = outcome.files == old_ || outcome.files == clean.files;
    return isWhole || !isCleared ? "" : "it leaves " + testing::PrintToString(outcome.files);
  }

  // What goes wrong first while each such call fails in turn, alone and with those that follow.
  std::string firstFault(const std::string& arguments, const Fault& fault, const Outcome& clean) {
    for (const int error : fault.errors) {
      // What asks for another try is answered in the end.
      const std::string most = error == EINTR || error == EAGAIN ? " 3" : " 9999";
      const int step = fault.call == "malloc" ? 97 : 1;  // they are many
      for (const std::string& count : {std::string(" 1"), most}) {
        bool isEnded = clean.status == 2;
        for (int n = 1;; n += step) {
          const std::string how = fault.call + " " + std::to_string(n) + count +
                                  (error == 0 ? " short " : " fail ") + std::to_string(error);
          const Outcome outcome = runWith(how, arguments);
          if (!outcome.met()) break;
          const std::string wrong = faultOf(outcome, clean, fault.expected);
          if (!wrong.empty()) return how + ": " + wrong;
          isEnded = isEnded || outcome != clean;
          ++counts_[fault.call][outcome == clean ? 1 : 0];
        }
        if (fault.expected == kOneEnds && !isEnded) return fault.call + " never ends it";
      }
    }
    return "";
  }

  static void TearDownTestSuite() {
    std::cout << "| call | ended the command | went on |\n|---|---|---|\n";
    for (const auto& [call, count] : counts_) {
      std::cout << "| " << call << " | " << count[0] << " | " << count[1] << " |\n";
    }
  }

  inline static std::map<std::string, std::array<int, 2>> counts_;
  std::string large_;
  Files old_;  // before a run
};

TEST_F(FaultsTest, FailedCallsAreToldOrDoNoHarm) {
  const Fault faults[] = {
      {"any", kEither, {EIO}},
      {"open", kEither, {EACCES, EMFILE}},
      {"mkostemp", kEnds, {ENOSPC, EACCES}},
      {"read", kEnds, {EIO, ENOMEM}},
      {"read", kGoesOn, {EINTR, 0}},
      {"write", kEnds, {EIO, ENOSPC, EDQUOT}},
      {"write", kGoesOn, {EINTR, EAGAIN, 0}},
      {"fsync", kEnds, {EIO, ENOSPC, EDQUOT}},
      {"fsync", kGoesOn, {EINTR, EINVAL, ENOTSUP, EROFS}},
      {"rename", kEnds, {EACCES, EIO, ENOSPC}},
      {"close", kOneEnds, {EIO, ENOSPC}},
      {"close", kGoesOn, {EINTR}},
      {"fchmod", kEnds, {EPERM}},
      {"fchown", kEnds, {EPERM}},
      {"stat", kEither, {EACCES, EIO}},
      {"fstat", kEither, {EIO}},
      {"readlink", kEnds, {EACCES, ENOMEM}},
      {"statfs", kEnds, {EIO}},
      {"faccessat", kEnds, {EIO}},
      {"dup", kEnds, {EMFILE}},
      {"malloc", kOneEnds, {ENOMEM}},
  };
  for (const std::string arguments : {
           "apps f",
           "apps --json f --output link",
           "apps - --output new",
           "apps f --output f",
           "diff f g --output kept",
           "diff --summary - g",
           "ports 80 443 --output /dev/fd/3 3>>kept",
           "check --each f --against g --output new",
           "check --live --proc proc f",
           "used --live --proc proc --output link",
           "catalogue c --output kept",
           "catalogue --add f c",
           "tree t.tree --format csv --output link",
           "tree pack t.csv --output kept",
           "import services services --output new",
           "lint bad --output link",
           "apps --json large --output link",
       }) {
    const Outcome clean = runWith("none 1 1 fail 0", arguments);
    for (const Fault& fault : faults) {
      const bool isOfPieces = fault.call == "read" || fault.call == "write";
      if (arguments.find("large") != std::string::npos && !isOfPieces) continue;
      EXPECT_EQ(firstFault(arguments, fault, clean), "") << arguments;
    }
  }
  for (const Fault& fault : faults) {
    EXPECT_GT(counts_[fault.call][fault.expected == kGoesOn ? 1 : 0], 0) << fault.call;
  }
}

// Before and after every call, and before and after every piece of a large file.
TEST_F(FaultsTest, SignalsLeaveTheOldOrTheNewFile) {
  for (const std::string call : {"any", "write"}) {
    const std::string arguments =
        "apps --json " + std::string(call == "any" ? "f" : "large") + " --output link";
    const Outcome clean = runWith("none 1 1 fail 0", arguments);
    for (const int signal :
         {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGXCPU, SIGUSR1, SIGKILL, SIGPIPE, SIGXFSZ}) {
      const bool isIgnored = signal == SIGPIPE || signal == SIGXFSZ;
      for (int n = 2;; ++n) {
        const std::string when = n % 2 == 0 ? " 1 before " : " 1 after ";
        const std::string how = call + " " + std::to_string(n / 2) + when + std::to_string(signal);
        const Outcome outcome = runWith(how, arguments);
        if (!outcome.met()) break;
        SCOPED_TRACE(arguments + ", " + how);
        ++counts_["a signal"][isIgnored ? 1 : 0];
        EXPECT_EQ(outcome.status, isIgnored ? 0 : 128 + signal);
        EXPECT_TRUE(outcome.files == clean.files || !isIgnored);
        Files left = outcome.files;
        std::erase_if(left, [&](const auto& file) { return old_.contains(file.first); });
        if (left.empty()) {
          EXPECT_TRUE(outcome.files == clean.files || outcome.files == old_);
        } else {  // no later run takes it for its own
          EXPECT_EQ(signal, SIGKILL);
          run(arguments);
          left.insert(clean.files.begin(), clean.files.end());
          EXPECT_EQ(files(), left);
        }
        if (isIgnored || signal == SIGKILL || call == "write") continue;
        EXPECT_TRUE(runWith(how, arguments, "trap '' " + std::to_string(signal) + "; ") == clean);
      }
    }
  }
}

// The contents are stored before their name is, and that before the command succeeds.
TEST_F(FaultsTest, SyncsTheFileAndThenItsDirectory) {
  const std::string calls = runWith("none 1 1 fail 0", "apps f --output kept").calls;
  std::size_t place = 0;
  for (const std::string call : {"fchmod", "write", "fsync", "close", "rename", "fsync"}) {
    place = calls.find(call + "\n", place);
    ASSERT_NE(place, std::string::npos) << call << " in " << calls;
  }
}

TEST_F(FaultsTest, ReadsWhatIsThereWhenAFileChangesMeanwhile) {
  for (const std::size_t size : {200000U, 5U}) {  // its first 128 KiB have been read
    write("large", large_);
    const Outcome shrunk = runWith("read 2 1 resize " + std::to_string(size), "apps large");
    write("read", large_.substr(0, std::max<std::size_t>(size, 1U << 17U)));
    EXPECT_TRUE(shrunk.met() && shrunk.status == 0 && shrunk.out == run("apps read").out) << size;
  }
  write("large", large_);
  EXPECT_EQ(runWith("read 2 1 resize 10000000", "apps large").err,
            "orvane apps: large: the byte at offset " + std::to_string(large_.size()) +
                " is NUL: this is no text\n");
}

}  // namespace
}  // namespace orvane::cli
