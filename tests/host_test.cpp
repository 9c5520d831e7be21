// The sockets of a host, from files like those of its proc file system.

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <system_error>
#include <utility>

#include "host/live_sockets.h"

namespace orvane::host {
namespace {

class HostTest : public testing::Test {
 protected:
  HostTest() {
    std::string pattern = testing::TempDir() + "/proc.XXXXXX";
    proc_ = ::mkdtemp(pattern.data());
    std::filesystem::create_directories(proc_ / "net");
  }
  ~HostTest() override { std::filesystem::remove_all(proc_); }

  // A file with these lines below the heading.
  void write(const std::string& name, const std::string& lines) const {
    std::ofstream(proc_ / "net" / name, std::ios::binary) << "sl local rem st\n" << lines;
  }

  // "protocol address ports" for each, then "name:line" of what is skipped.
  std::string shown() const {
    std::string text;
    const HostSockets host = readLiveSockets(proc_.string());
    for (const LiveSockets& sockets : host.sockets) {
      text += (sockets.protocol == kTcp ? "tcp " : "udp ") + std::to_string(sockets.address);
      for (const unsigned short port : sockets.ports) text += " " + std::to_string(port);
      text += "\n";
    }
    for (const SocketFile& file : host.files) {
      for (const OrvaneFinding& finding : file.findings) {
        text += std::filesystem::path(file.path).filename().string() + ":" +
                std::to_string(finding.line) + "\n";
      }
    }
    return text;
  }

  std::filesystem::path proc_;
};

TEST_F(HostTest, ReadsWhatListensOrIsBound) {
  const std::string any(32, '0');
  const std::string mapped = "0000000000000000FFFF00000100000A";
  write("tcp",
        "   0: 0100000A:1F90 00000000:0000 0A\n"
        "   1: 00000000:0016 00000000:0000 0A\n"
        "   2: 0100000A:0050 0200000A:C000 01\n"  // connected
        "   3: 00000000:0000 00000000:0000 0A");  // no port
  write("udp", "   0: 0200000A:0050 00000000:0000 07\n");
  EXPECT_EQ(shown(), "udp 167772162 80\ntcp 0 22\ntcp 167772161 8080\n");
  write("tcp6", "0: " + mapped + ":01BB " + any + ":0000 0A\n" +
                    "1: 000080FE00000000000000000100000A:0050 " + any + ":0000 0A\n");
  write("udp6", "0: " + any + ":1F45 " + any + ":0000 07\n");
  EXPECT_EQ(shown(), "udp 0 8005\nudp 167772162 80\ntcp 0 22\ntcp 167772161 443 8080\n");
}

TEST_F(HostTest, SkipsWhatIsNoSocket) {
  write("tcp", "");
  write("udp",
        "\n0: 0200000A:0050 00000000:0000\n0: 0200000A:10000 0:0 07\n0: 0200000:0050 0:0 07\n"
        "0: 0200000G:0050 0:0 07\n0: 0200000A:+1 0:0 07\n0: 0200000A:" +
            std::string(1, '\0') + "1 0:0 07\n0: 0200000A:0051 0:0 07");
  EXPECT_EQ(shown(), "udp 167772162 81\nudp:2\nudp:3\nudp:4\nudp:5\nudp:6\nudp:7\nudp:8\n");
}

TEST_F(HostTest, NeedsTheFilesOfIpv4) {
  write("tcp", "");
  std::filesystem::create_directory(proc_ / "net" / "udp6");
  for (const char* const name : {"udp", "udp6"}) {
    const std::string path = (proc_ / "net" / name).string();
    try {
      readLiveSockets(proc_.string());
      ADD_FAILURE() << path;
    } catch (const std::system_error& error) {
      EXPECT_EQ(std::string(error.what()).find("cannot read " + path + ": "), 0) << error.what();
    }
    write("udp", "");
  }
}

}  // namespace
}  // namespace orvane::host
