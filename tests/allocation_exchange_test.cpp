// Other programs' forms, and the sockets of this host, while memory runs out.

#include <filesystem>
#include <fstream>

#include "allocation.h"
#include "exchange/services.h"
#include "exchange/tree_csv.h"
#include "exchange/tree_dot.h"
#include "exchange/tree_json.h"
#include "host/live_sockets.h"

namespace allocation {
namespace {

namespace exchange = orvane::exchange;

// What was made of something, in its own form or as a tree buffer.
struct MadeWorld {
  std::string made;
  std::size_t count = 0;
  OrvaneFindings findings;

  Picture picture() const { return {{"made", made + std::to_string(count)}}; }
};

TEST(Allocation, Forms) {
  using World = MadeWorld;
  static const std::string services = repeated(9, [](auto i) {
    const std::string name = "a-name-that-no-string-holds-within-" + std::to_string(i % 6);
    return name + " " + std::to_string(80 + i) + "/tcp another-name\nmalformed\n";
  });
  static const std::string csv =
      "#header,9,2,3,4,5,6,7,8\n# comment\nupid,parentUpid,firstChild,sibling,name\n"
      "1,0,2,0,Root\n2,1,0,3,\"quoted, \"\"name\"\"\"\n3,1,0,2,\\x80name of thirty-two "
      "by\\xFFtes\n";
  static const exchange::TreeFile file = exchange::readTreeCsv(csv, false);
  static const std::string json = exchange::jsonOf(file, {"a finding of this tree"});
  static const std::string buffer = exchange::bufferOf(file);
  static OrvaneFindings found;
  static const auto read = exchange::readServices(services, found);
  static const OrvaneUpidTree tree = exchange::treeOf(file, found);
  check<World>(
      {STRONG(w.count = exchange::readServices(services, w.findings).size()),
       STRONG(w.count = exchange::applicationsOf(read, 9, w.findings).size()),
       STRONG(w.count = exchange::catalogueOf(read, 9, w.findings).begin()->getUPID()),
       STRONG(w.made = exchange::csvOf(file)), STRONG(w.made = exchange::jsonOf(file, {csv})),
       STRONG(w.made = exchange::dotOf(tree.outline())), STRONG(w.made = exchange::bufferOf(file)),
       STRONG(w.made = exchange::bufferOf(exchange::readTreeCsv(csv, false))),
       STRONG(w.made = exchange::bufferOf(exchange::readTreeJson(json, false))),
       STRONG(w.made = exchange::bufferOf(exchange::readTreeBuffer(buffer, false))),
       STRONG(w.count = exchange::treeOf(file, w.findings).size())});
}

TEST(Allocation, Host) {
  using World = MadeWorld;
  namespace fs = std::filesystem;
  static const std::string proc = testing::TempDir() + "/allocation_proc";
  fs::create_directories(proc + "/net");
  for (const char* const name : {"tcp", "udp", "tcp6"}) {
    std::ofstream table(proc + "/net/" + name);
    table << "heading\nmalformed\n";
    for (int port = 1; port < 20; ++port) {
      table << port % 3 << ": 0100007F:100" << port % 9 << " 0 0A\n";
    }
  }
  check<World>({STRONG(w.count = orvane::host::readLiveSockets(proc).sockets.size())});
  fs::remove_all(proc);
}

}  // namespace
}  // namespace allocation
