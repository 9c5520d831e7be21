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
  configuration.setSection(text);

  OrvanePortMapping host;
  host.setIp("10.0.0.1");
  OrvanePortCounter used;
  used.add(argv[2]);
  used.addSocket(host.getIpAddress(), argv[3]);

  const OrvaneCollisions collisions(configuration, used);
  for (const OrvaneCollision& collision : collisions) {
    std::string line = collision.application->getName();
    line += collision.otherAddress == 0 ? " collides everywhere, " : " collides on 10.0.0.1, ";
    collision.item->appendMapping(line);
    line += ": ";
    collision.appendPorts(line);
    std::cout << line << "\n";
  }
  return collisions.empty() ? 0 : 1;
}
