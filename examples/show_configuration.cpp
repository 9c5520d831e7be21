// Reads a mapping section text and lists what it describes.

#include <orvane/orvane.h>

#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  std::ifstream file(argv[1]);
  const std::string text(std::istreambuf_iterator<char>(file), {});
  OrvaneAppMapping configuration;
  configuration.setSection(text.c_str());

  for (const OrvaneApplication& application : configuration) {
    std::cout << application.getUpid() << " " << application.getName() << "\n";
    for (const OrvanePortMapping& item : application.getItems()) {
      std::cout << "  " << item.getMappingAsString() << "\n";
    }
  }
}
