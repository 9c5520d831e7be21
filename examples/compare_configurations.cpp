// Tells which applications of an older mapping section text differ from those of a newer one, and
// in what.

#include <orvane/orvane.h>

#include <cstdint>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <variant>

// The value of a fact: a number, a text, or nothing.
std::string textOf(const OrvaneFactValue& value) {
  if (const auto* number = std::get_if<std::int64_t>(&value)) return std::to_string(*number);
  if (const auto* text = std::get_if<std::string>(&value)) return *text;
  return "nothing";
}

OrvaneAppMapping read(const char* path) {
  std::ifstream file(path);
  const std::string text(std::istreambuf_iterator<char>(file), {});
  OrvaneAppMapping applications;
  applications.setSection(text);
  return applications;
}

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  const OrvaneAppMapping older = read(argv[1]);
  const OrvaneAppMapping newer = read(argv[2]);

  const OrvaneComparison differences(older, newer);
  for (const OrvaneDifference& difference : differences) {
    const std::string name = difference.getEither().getName();
    const char* change = difference.older == nullptr ? "added" : "changed";
    if (difference.newer == nullptr) change = "removed";
    std::cout << change << " " << name << "\n";
    for (const OrvaneFact& fact : difference.getFacts()) {
      std::string line = "  ";
      if (fact.item != nullptr && fact.item->getIpAddress() != 0) {
        fact.item->appendIp(line);
        line += ", ";
      }
      line += fact.getName();
      std::cout << line << ": " << textOf(fact.before) << " -> " << textOf(fact.after) << "\n";
    }
  }
  return differences.empty() ? 0 : 1;
}
