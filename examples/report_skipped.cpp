// Reads a port list as somebody typed it, and tells what is not taken as it stands.

#include <orvane/orvane.h>

#include <iostream>

int main() {
  OrvanePortMapping item;
  OrvaneFindings findings;
  item.setPortsReported("80,8x,0-9,1500,1000-2000", findings);

  std::cout << item.getPortsAsString() << "\n";
  for (const OrvaneFinding& finding : findings) {
    std::cout << finding.kind << ": " << finding.message << "\n";
  }
}
