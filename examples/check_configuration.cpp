// Tells which applications of a mapping section text collide with ports that are in use: the
// second argument lists those taken on every address, the third those of 10.0.0.1 alone.

#include <orvane/orvane.h>

#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

int main(int argc, char** argv) {
  if (argc != 4) return 2;
  std::ifstream file(argv[1]);
  const std::string text(std::istreambuf_iterator<char>(file), {});
  OrvaneAppMapping configuration;
  configuration.setSection(text.c_str());

  OrvanePortMapping host;
  host.setIp("10.0.0.1");
  OrvanePortCounter used;
  used.add(argv[2]);
  OrvanePortCounter usedByHost;
  usedByHost.addSocket(host.getIpAddress(), argv[3]);

  int status = 0;
  for (const OrvaneApplication& application : configuration) {
    for (const OrvanePortMapping& item : application.getItems()) {
      // An item without address is on every address.
      const bool isOnHost = item.getIpAddress() == 0 || item == host;
      const bool collides = used.checkPorts(item.getPorts()) != 0 ||
                            used.checkRanges(item.getRanges()) ||
                            (isOnHost && usedByHost.checkSocket(host.getIpAddress(), item, false));
      if (!collides) continue;
      std::cout << application.getName() << " collides: " << item.getMappingAsString() << "\n";
      status = 1;
    }
  }
  return status;
}
