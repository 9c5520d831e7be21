#include <cctype>
#include <sstream>
#include <tuple>
#include <vector>

#include "command_test.h"

namespace orvane::cli {
namespace {

using Words = std::vector<std::string>;

std::string replaced(std::string text, const std::string& old, const std::string& now) {
  for (std::size_t at = 0; (at = text.find(old, at)) != std::string::npos; at += now.size()) {
    text.replace(at, old.size(), now);
  }
  return text;
}

// What all subcommands do alike with what they are given.
class UsageTest : public CommandTest {
 protected:
  UsageTest() {
    write("F", group("UPID=1/GroupID=1/PortRange=80"));
    write("G", read("F"));
    write("new", group("GroupID=1/PortRange=80/ApplName=" + odd_));
    write("C", group("UPID=1/FQN=Web"));
    write("S", "ssh 22/tcp\nssh2 23/tcp\n");
    write("T.csv", "upid,name\n1," + odd_ + "\n");
    run("tree pack T.csv --output T");
  }

  // Of every kind that a terminal is kept from.
  const std::string odd_ = "\x1b\x7f\xC2\x9B\xE2\x80\x8F\xFF";
};

// Inputs are the words in capital letters.
TEST_F(UsageTest, EachInputIsReadAndNeverWritten) {
  for (const std::string call :
       {"apps F", "diff F G", "check F --against G", "catalogue C", "catalogue C --with G",
        "catalogue C --add G", "tree T", "tree pack T.csv", "import services S", "lint F"}) {
    std::istringstream words(call);
    std::string allPiped = call;
    int inputs = 0;
    for (std::string input; words >> input;) {
      if (std::isupper(input.front()) == 0) continue;
      SCOPED_TRACE(call + ": " + input);
      const std::string before = read(input);
      const bool isPacked = input == "T.csv";  // never standard input
      for (const std::string& way :
           {call, replaced(call, input, isPacked ? input : "- < " + input)}) {
        const Result result = run(way + " --output " + input);
        EXPECT_EQ(result.status, 2) << way;
        EXPECT_NE(result.err.find("it is the input"), std::string::npos) << way << result.err;
        EXPECT_EQ(read(input), before) << way;
      }
      const Result absent = run(replaced(call, input, "absent") + " --output o");
      EXPECT_EQ(absent.status, 2);
      EXPECT_TRUE(absent.err.ends_with("cannot read absent: No such file or directory\n"));
      allPiped = replaced(allPiped, input, "-");
      ++inputs;
    }
    EXPECT_EQ(run(allPiped).err.find(": only one ") == std::string::npos, inputs == 1) << call;
  }
}

TEST_F(UsageTest, TellsWhatCanBeGivenFromWhatCannot) {
  const std::tuple<std::string, Words, Words> cases[] = {
      {"apps F --json", {"--all"}, {"--section"}},
      {"catalogue C --json",
       {"--expand"},
       {"--section", "--with F", "--add F", "--known 1", "--unknown 1"}},
      {"catalogue C --expand",
       {"--json"},
       {"--section", "--with F", "--add F", "--known 1", "--unknown 1"}},
      {"catalogue C --upid 1", {"--section", "--with F"}, {"--known 1", "--unknown 1"}},
      {"catalogue C --known", {"0,4294967295"}, {"4294967296", "-1", "1,", ",1", "1,,2", "''"}},
      {"catalogue C --upid", {"1"}, {"2", "1,2", "x", "''"}},
      {"catalogue C --with F --upid", {"1"}, {"2"}},
      {"catalogue C --add F --upid", {"1"}, {"2"}},
      {"catalogue C --add new --upid", {}, {"1", "4294967295"}},
      {"diff F G --assume-action", {"1", "5"}, {"0", "6", "-1", "1x", "''"}},
      {"import services S --first-upid",
       {"1", "4294967293"},
       {"4294967294", "4294967295", "4294967296", "0", "-1", "1x", "''"}},
      {"ports --diff", {"80 80"}, {"80", "80 80 80"}},
      {"tree T --upid", {"1"}, {"2", "x", "''", "4294967297", "1 --children 1"}},
      {"tree T --children", {"1"}, {"2", "x", "''", "4294967297"}},
      {"tree T pack T.csv --output", {}, {"o"}},
      {"tree --upid 1 pack T.csv --output", {}, {"o"}},
  };
  for (const auto& [call, usable, unusable] : cases) {
    for (const std::string& word : usable) EXPECT_LT(run(call + " " + word).status, 2) << call;
    for (const std::string& word : unusable) {
      SCOPED_TRACE(call + " " + word);
      const Result result = run(call + " " + word);
      EXPECT_EQ(result.status, 2);
      EXPECT_TRUE(result.out.empty() && !result.err.empty()) << result.out;
      EXPECT_EQ(result.err.find("not expected"), std::string::npos) << result.err;
    }
  }
}

// The first and last character of each kind, then those before and after, which are shown.
TEST_F(UsageTest, EscapesAllThatATerminalObeys) {
  const std::string safe =
      " ~\xC2\xA0\xD8\x9B\xD8\x9D\xE2\x80\x8A\xE2\x80\x90\xE2\x80\xA7\xE2\x80\xAF\xE2\x81\x9F"
      "\xE2\x81\xB0\xEF\xBB\xBE\xEF\xBC\x80";
  write("odd", group("FQN=" + safe +
                     "\x01\x1f\x7f\xC2\x9F\xD8\x9C\xE2\x80\x8B\xE2\x80\x8F\xE2\x80\xA8"
                     "\xE2\x80\xAE\xE2\x80\xAC\xE2\x81\xA0\xE2\x81\xAF\xEF\xBB\xBF"));
  const std::string table = R"(\x01\x1f\x7f\xc2\x9f\xd8\x9c\xe2\x80\x8b\xe2\x80\x8f\xe2\x80\xa8)"
                            R"(\xe2\x80\xae\xe2\x80\xac\xe2\x81\xa0\xe2\x81\xaf\xef\xbb\xbf  )";
  const std::string json = R"(\u0001\u001f\u007f\u009f\u061c\u200b\u200f\u2028)"
                           R"(\u202e\u202c\u2060\u206f\ufeff")";
  EXPECT_NE(run("catalogue odd").out.find(safe + table), std::string::npos);
  EXPECT_NE(run("catalogue --json odd").out.find(safe + json), std::string::npos);
}

TEST_F(UsageTest, NothingThatIsShownSteersTheTerminal) {
  write(odd_, group("UPID=1/ApplName=" + odd_ + "/PortRange=80," + odd_ + "/" + odd_ + "=1"));
  write(odd_ + "cat", group("UPID=1/FQN=" + odd_) + group("UPID=1/FQN=" + odd_));
  write(odd_ + "svc", odd_ + "\nssh " + odd_ + "\n" + std::string(40, 'n') + odd_ + " 1/tcp\n");
  write(odd_ + ".csv", "upid," + odd_ + "\n");
  std::filesystem::create_directories(path("proc" + odd_ + "/net"));
  for (const char* table : {"tcp", "udp"}) write("proc" + odd_ + "/net/" + table, "\nno socket\n");
  std::istringstream calls(
      "@;apps --@ F;apps F --color @;apps F --output @/x;apps @/x;apps @;apps --json @;lint @;"
      "lint --json @;diff --summary @ F;diff --summary --json F @;check --against @ @;"
      "check --json --against @ @;check --ports @ F;check --ports 80,@ F;check --socket @ F;"
      "check --socket 1.2.3.4:@ F;check --socket 1.2.3.4:80,@ F;check --live --proc @ F;"
      "used --live --proc proc@;ports @;ports 80,@;catalogue @cat;catalogue --json @cat;"
      "catalogue --upid @ C;catalogue --known @ C;catalogue --add new C;"
      "catalogue --add @ --upid 9 C;catalogue --with F @cat > v;import services @svc > v;"
      "import services S --first-upid @;import services S --as @;tree T;tree --format json T;"
      "tree --format csv T;tree --format dot T;tree --upid @ T;tree --children @ T;tree @;"
      "tree pack @.csv --output o");
  for (std::string call; std::getline(calls, call, ';');) {
    const Result result = run(replaced(call, "@", "'" + odd_ + "'"));
    const std::string shown = result.out + result.err;
    EXPECT_NE(shown.find("1b"), std::string::npos) << call << shown;
    for (const char* raw : {"\x1b", "\x7f", "\xC2\x9B", "\xE2\x80\x8F", "\xFF"}) {
      EXPECT_EQ(shown.find(raw), std::string::npos) << call << shown;
    }
  }
}

}  // namespace
}  // namespace orvane::cli
