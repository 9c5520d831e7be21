#include <bit>

#include "command_test.h"

namespace orvane::cli {
namespace {

constexpr const char* kHeading = "  sl  local_address rem_address   st\n";

class CheckTest : public CommandTest {
 protected:
  CheckTest() {
    write("apps", web + group("UPID=2/ApplName=Any/PortRange=22,8005") +
                      group("UPID=3/ApplName=None/IPv4=3/PortRange="));
    write("web", web);
    write("empty", "");
    std::filesystem::create_directories(path("proc/net"));
    table("tcp",
          kHeading + std::string("   0: 0100000A:1F90 00000000:0000 0A\n"   // 10.0.0.1:8080
                                 "   1: 00000000:0016 00000000:0000 0A\n"   // *:22
                                 "   2: 0100000A:0050 0200000A:C000 01\n"   // connected
                                 "   3: 00000000:0000 00000000:0000 0A"));  // no port
    table("udp",
          kHeading + std::string("   0: 0200000A:FFFF 00000000:0000 07\n\n0: 0200000A:0051 0:0\n"
                                 "0: 0200000A:10000 0:0 07\n0: 0200000:0050 0:0 07\n"
                                 "0: 0200000G:0050 0:0 07\n0: 0200000A:+1 0:0 07\n"));
    const std::string mapped = "0000000000000000FFFF00000100000A";
    const std::string other = "000080FE00000000000000000100000A";
    const std::string any(32, '0');
    table("tcp6", kHeading + ("0: " + mapped + ":01BB " + any + ":0000 0A\n") +
                      ("1: " + other + ":0050 " + any + ":0000 0A\n"));
    table("udp6", kHeading + ("0: " + any + ":1F45 " + any + ":0000 07\n"));
  }

  // The kernel writes addresses as words of the machine. Those above are of a little-endian one.
  void table(const std::string& name, std::string text) const {
    const char* const words[][2] = {{"0100000A", "0A000001"},
                                    {"0200000A", "0A000002"},
                                    {"FFFF0000", "0000FFFF"},
                                    {"000080FE", "FE800000"}};
    for (const auto& [little, big] : words) {
      for (std::size_t at = 0; (at = text.find(little, at)) != std::string::npos; at += 8) {
        if (std::endian::native == std::endian::big) text.replace(at, 8, big);
      }
    }
    write("proc/net/" + name, text);
  }

  // "Web" on 10.0.0.1: 80, 443 and a range.
  const std::string web =
      group("UPID=1/ApplName=Web/IPv4=167772161/PortRange=80,443,8000-8010/GroupID=1");
};

TEST_F(CheckTest, NamesThePortsAndWithWhat) {
  struct Case {
    const char* arguments;
    int status;
    const char* out;
  };
  const Case cases[] = {
      {"--ports 81,442,444-7999,8011-65535 web", 0, ""},
      {"--ports 80,8009-9000 --ports 443 web", 1,
       "1 'Web', 10.0.0.1: 80,8009-8010: ports in use on every address\n"
       "1 'Web', 10.0.0.1: 443: ports in use on every address\n"},
      // Sockets of another address do not count.
      {"--socket 10.0.0.2:80,443 --ports 1-79 web", 0, ""},
      {"--socket 10.0.0.1:443,8004,8005 apps", 1,
       "1 'Web', 10.0.0.1: 443,8004-8005: a socket in use on 10.0.0.1\n"
       "2 'Any', every address: 8005: a socket in use on 10.0.0.1\n"},
      {"--against apps web", 1,
       "1 'Web', 10.0.0.1: 80,443,8000-8010: application 1 'Web' of apps on 10.0.0.1\n"
       "1 'Web', 10.0.0.1: 8005: application 2 'Any' of apps on every address\n"},
      {"--each apps", 1, "1 'Web', 10.0.0.1: 8005: application 2 'Any' on every address\n"},
      {"--each web", 0, ""},
      {"--ports 8009 --socket 10.0.0.1:443 --socket 10.0.0.1:81 --against - web < apps", 1,
       "1 'Web', 10.0.0.1: 8009: ports in use on every address\n"
       "1 'Web', 10.0.0.1: 443: a socket in use on 10.0.0.1\n"
       "1 'Web', 10.0.0.1: 80,443,8000-8010: application 1 'Web' of standard input on 10.0.0.1\n"
       "1 'Web', 10.0.0.1: 8005: application 2 'Any' of standard input on every address\n"},
      {"--against empty apps", 0, ""},
      {"--each --json apps", 1,
       "[\n  {\n    \"upid\": 1,\n    \"name\": \"Web\",\n    \"address\": \"10.0.0.1\",\n"
       "    \"ports\": \"8005\",\n    \"with\": \"application 2 'Any'\",\n"
       "    \"withAddress\": null\n  }\n]\n"},
  };
  for (const auto& [arguments, status, out] : cases) {
    SCOPED_TRACE(arguments);
    const Result result = run("check " + std::string(arguments));
    EXPECT_EQ(result.status, status);
    EXPECT_EQ(result.out, out);
    EXPECT_EQ(result.err, "");
  }
}

TEST_F(CheckTest, AsksThisHost) {
  const Result result = run("check --live --proc proc apps");
  EXPECT_EQ(result.status, 1);
  std::string reports;
  for (int line = 3; line <= 8; ++line) {
    reports += "proc/net/udp:" + std::to_string(line) + ": this line is no socket and is skipped\n";
  }
  EXPECT_EQ(result.err, reports);
  EXPECT_EQ(result.out,
            "1 'Web', 10.0.0.1: 8005: a bound udp socket on every address\n"
            "1 'Web', 10.0.0.1: 443: a listening tcp socket on 10.0.0.1\n"
            "2 'Any', every address: 8005: a bound udp socket on every address\n"
            "2 'Any', every address: 22: a listening tcp socket on every address\n");
  EXPECT_EQ(run("used --live --proc proc").out,
            "10.0.0.1:443 ,10.0.0.1:8080 ,10.0.0.2:65535 ,22,8005\n");

  std::filesystem::remove(path("proc/net/tcp6"));
  EXPECT_EQ(run("used --live --proc proc").out, "10.0.0.1:8080 ,10.0.0.2:65535 ,22,8005\n");
  std::filesystem::create_directory(path("proc/net/tcp6"));
  EXPECT_EQ(run("used --live --proc proc").err,
            "orvane used: cannot read proc/net/tcp6: Is a directory\n");
  std::filesystem::remove(path("proc/net/tcp6"));
  std::filesystem::remove(path("proc/net/tcp"));
  EXPECT_EQ(run("used --live --proc proc").status, 2);
  EXPECT_EQ(run("check --live web").err, "");  // the real one
}

TEST_F(CheckTest, UsedIsOneLineThatLosesNothing) {
  const std::pair<const char*, const char*> cases[] = {
      {"--ports 1000-2000,53 --socket 10.0.0.1:443,80-81",
       "10.0.0.1:80 ,10.0.0.1:81 ,10.0.0.1:443 ,53,1000-2000\n"},
      {"--ports 1500-2000 --ports 1000-2000", "1000-2000\n"},
      {"--socket 0.0.0.0:20-30 --ports 25-30", "20-30\n"},
      {"--ports 10-20,25-30,41-50 --ports 5-20", "5-20,25-30,41-50\n"},
      {"--ports 80-90,80,22-22", "22,80,80-90\n"},
      {"--ports 1000-2000 --ports 1500-1600", "1000-2000\n"},
      {"--ports 65534-65535 --ports 65536-65537", "65534-65537\n"},
      {"--ports 4294967290-4294967295 --ports 4294967292-4294967293", "4294967290-4294967295\n"},
      {"--socket 10.0.0.1:65534-65537", "10.0.0.1:65534 ,10.0.0.1:65535 \n"},
  };
  for (const auto& [list, out] : cases) EXPECT_EQ(run("used " + std::string(list)).out, out);
  const Result result = run("used --ports 80,x");
  EXPECT_EQ(result.out, "80\n");
  EXPECT_EQ(result.err, "orvane used: --ports: 'x' is skipped: it is no port or range\n");
}

TEST_F(CheckTest, RefusesWhatItCannotUse) {
  for (const std::string arguments :
       {"check web", "used", "check --ports x web", "check --ports '' web", "used --socket 80",
        "used --socket 10.0.0:80", "used --socket 10.0.0.1:", "used --proc proc",
        "used --live --proc proc --output proc/net/tcp6",
        "check --live --proc proc web --output proc/net/udp"}) {
    SCOPED_TRACE(arguments);
    const Result result = run(arguments);
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_NE(result.err, "");
  }
}

}  // namespace
}  // namespace orvane::cli
