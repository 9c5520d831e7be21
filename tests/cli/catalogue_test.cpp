#include "command_test.h"

namespace orvane::cli {
namespace {

class CatalogueTest : public CommandTest {
 protected:
  CatalogueTest() {
    write("cat", group("Version=1/PortType=2/UPID=7/PortRange=80,1000-1002/FQN=Web") +
                     group("UPID=9/PortRange=53/FQN=\x1b") + group("UPID=7/FQN=Later"));
    write("apps", group("UPID=9/ApplName=Names/PortRange=853") + group("UPID=5/PortRange=1"));
  }
};

TEST_F(CatalogueTest, Writes) {
  const std::string web = group(
      "Version=1/PortType=2/UPID=7/PortRange=80,1000-1002/Reserved1=0/Reserved2=0/"
      "Reserved3=0/FQN=Web");
  const std::string head = "UPID  VERSION  PORT TYPE  COUNT  NAME   PORTS\n";
  const struct {
    const char* arguments;
    std::string out;
  } cases[] = {
      {"cat", head + "7     1        2          4      Web    80,1000-1002\n"
                     "9     0        1          1      \\x1b   53\n"
                     "7     0        1          0      Later  (no ports)\n"
                     "Ports of type 1: 1\nPorts of type 2: 4\n"},
      {"--section --upid 7 cat", web},
      {"--section --upid 9,7 --upid 7 cat",
       group("Version=0/PortType=1/UPID=9/PortRange=53/Reserved1=0/Reserved2=0/Reserved3=0/"
             "FQN=\x1b") +
           web + web},
      {"--with apps --upid 7,9 cat",
       web + group("Version=0/PortType=1/UPID=9/PortRange=53,853/Reserved1=1/Reserved2=0/"
                   "Reserved3=0/FQN=\x1b")},
      {"--add apps --upid 5 /dev/null",
       group("Version=0/PortType=1/UPID=5/PortRange=1/Reserved1=2/Reserved2=0/Reserved3=0/FQN=")},
      {"--known 9,1,7,9 cat", "9,7,9\n"},
      {"--unknown 9,1,7,4294967295 cat", "1,4294967295\n"},
      {"--unknown 9 cat", ""},
      {"--json --expand --upid 7 cat",
       "[\n  {\n    \"upid\": 7,\n    \"version\": 1,\n    \"portType\": 2,\n"
       "    \"ports\": \"80,1000,1001,1002\",\n    \"count\": 4,\n    \"reserved\": [\n"
       "      0,\n      0,\n      0\n    ],\n    \"name\": \"Web\"\n  }\n]\n"},
  };
  for (const auto& [arguments, out] : cases) {
    SCOPED_TRACE(arguments);
    const Result result = run("catalogue " + std::string(arguments));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, out);
    EXPECT_EQ(result.err, "");
  }
}

TEST_F(CatalogueTest, ReportsWhatItLeavesOut) {
  write("new", group("GroupID=1/ApplName=a/PortRange=1") + group("GroupID=2/ApplName=b/Action=1"));
  write("last", group("UPID=4294967295/PortRange=2"));
  EXPECT_EQ(run("catalogue --with apps cat").err,
            "cat: entry 'Later' is left out: UPID 7 has an earlier entry\n");
  EXPECT_EQ(run("catalogue --with new last").out, run("catalogue --section last").out);
  const Result added = run("catalogue --add - last < new");
  EXPECT_EQ(added.out, run("catalogue --section last").out);
  EXPECT_EQ(added.err,
            "standard input: application 'a' is left out: it has no UPID\n"
            "standard input: application 'b' is left out: it has no UPID\n");
  EXPECT_EQ(run("catalogue --add - --upid 7 last < new").err,
            "orvane catalogue: standard input has no application with UPID 7\n");
}

TEST_F(CatalogueTest, CountsAreNotCut) {
  const std::string text = group("PortRange=1-40000,30000-60000") +
                           group("PortRange=1-65535,0-65536") + group("PortRange=7-7,7");
  for (const std::string count : {" 70001 ", " 131072 ", " 2 ", "type 1: 201075\n"}) {
    EXPECT_NE(run("catalogue -", text).out.find(count), std::string::npos) << count;
  }
}

TEST_F(CatalogueTest, FindingsAreThoseOfTheCatalogue) {
  const std::string text =
      group("Version=1x/FQN=" + std::string(128, 'n') +
            "/fqn=b/PortRange=80,70000,abc,9-3,5-9,80,3-9,70000/UPID=1/IPv4=2") +
      group("UPID=1/Reserved1=0");
  const std::string cut = std::string(80, 'n') + "...";
  const std::string findings =
      "1: Version '1x' is no plain number: read as 1\n"
      "2: FQN '" +
      cut + "' is cut to 127 characters: '" + cut +
      "'\n"
      "3: FQN is ignored: the group has it at line 2\n"
      "4: port '70000' is outside 1 to 65535: it is read as range 70000-70000\n"
      "4: 'abc' is no port or range: it is read as range 0-0\n"
      "4: note: '9-3' is read as 3-9\n"
      "4: range 5-9 is dropped: 3-9 ends at its last port\n"
      "4: port '70000' is outside 1 to 65535: it is read as range 70000-70000\n"
      "6: unknown key 'IPv4' is ignored\n"
      "8: note: UPID 1 has an entry at line 5, which look-ups take\n";
  std::string labelled;
  std::istringstream lines(findings);
  for (std::string line; std::getline(lines, line);) labelled += "standard input:" + line + "\n";
  const Result lint = run("lint -", text);
  EXPECT_EQ(lint.status, 1);
  EXPECT_EQ(lint.out, labelled);
  const Result shown = run("catalogue -", text);
  EXPECT_EQ(shown.status, 0);
  EXPECT_NE(shown.err.find("standard input:1: Version"), std::string::npos);
  EXPECT_EQ(shown.err.find("note:"), std::string::npos);
}

TEST_F(CatalogueTest, ServicesComeBackByteForByte) {
  const std::string name(130, 's');
  write("services",
        "www 80/tcp\nwww 80/udp 443/tcp\ndns 53/udp\nwww 8080/tcp\n" + name + " 9/tcp\n");
  const Result import = run("import services --as catalogue --first-upid 3 services");
  EXPECT_EQ(import.out.substr(0, import.out.find(';')),
            "Version=0\nPortType=1\nUPID=3\nPortRange=80,8080\nReserved1=0\nReserved2=0\n"
            "Reserved3=0\nFQN=www\n");
  const std::string cut = name.substr(0, 80) + "...'";
  EXPECT_NE(import.err.find(cut + " is cut to '" + cut), std::string::npos);
  const std::string host = run("import services --as catalogue").out;
  EXPECT_NE(host, "");
  EXPECT_EQ(run("catalogue --section -", host).out, host);
  EXPECT_EQ(run("lint -", host).out, "");
}

}  // namespace
}  // namespace orvane::cli
