// Short ways to make the objects under test, and to show everything that they hold.

#ifndef ORVANE_TESTS_SAMPLE_H_
#define ORVANE_TESTS_SAMPLE_H_

#include <algorithm>
#include <array>
#include <initializer_list>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "orvane/app_mapping.h"

inline OrvanePortMapping makeItem(unsigned int address, const char* portList = "", int itemId = 0) {
  OrvanePortMapping item;
  item.setPorts(portList);
  item.setIp(address);
  item.setID(itemId);
  return item;
}

inline OrvaneApplication makeApplication(unsigned int upid, const char* name = "",
                                         std::initializer_list<OrvanePortMapping> items = {}) {
  OrvaneApplication application;
  application.setUpid(upid);
  application.setName(name);
  application.setID(4);
  for (const OrvanePortMapping& item : items) application.addItem(item);
  return application;
}

// A flat record of the texts between the "|".
inline std::vector<unsigned char> makeRecord(std::string texts) {
  std::replace(texts.begin(), texts.end(), '|', '\0');
  texts.push_back('\0');
  return {texts.begin(), texts.end()};
}

// The ports and the ranges, in the order of their sets: "80,443|1000-2000".
inline std::string showSets(const OrvanePortMapping& item) {
  std::string text = OrvanePortMapping::PortArrayToString(item.getPorts()) + "|";
  for (const OrvanePortRange& range : item.getRanges()) {
    text += (text.back() != '|' ? "," : "") + std::string(range.getRange());
  }
  return text;
}

template <typename... Values>
std::string joined(const Values&... values) {
  std::ostringstream out;
  ((out << ' ' << values), ...);
  return out.str() + "\n";
}

// Sets, address, a reserved word, block number, selector info, list index, item id.
inline std::string show(const OrvanePortMapping& item) {
  return showSets(item) + joined(item.getIpAddress(), item.getIp().reserved[4],
                                 item.getUniqueBlockNumber(), item.getSelectorInfo(),
                                 item.getListIndex(), item.getID());
}

// Name, UPID, type, action, category, list index, identifier (0: drawn), then the items.
inline std::string show(const OrvaneApplication& a) {
  std::string text =
      a.getName() + joined(a.getUpid(), a.getType(), a.getAction(), a.getAppCategory(),
                           a.getListIndex(), a.getID() < 1'000'000'000 ? a.getID() : 0);
  for (const OrvanePortMapping& item : a.getItems()) text += "  " + show(item);
  return text;
}

inline std::string show(const OrvaneAppMapping& mapping) {
  std::string text;
  for (const OrvaneApplication& application : mapping) text += show(application);
  return text;
}

// Random objects from a small world, in which most things collide; the same in every run.
class Random {
 public:
  explicit Random(unsigned int seed) : engine_(seed) {}

  unsigned int below(std::size_t limit) { return static_cast<unsigned int>(engine_() % limit); }

  // A token of a port list text.
  std::string token(unsigned int spread) {
    static constexpr std::array kOdd = {
        " 7", "9 - 3", "0-8",         "8-0",          "x",
        "-4", "65536", "65538-70000", "4294967290-5", "3-2147483653"};
    if (below(8) == 0) return kOdd[below(kOdd.size())];
    const std::string start = std::to_string(1 + below(spread));
    return below(3) == 0 ? start : start + "-" + std::to_string(1 + below(spread));
  }

  // A port or a range, anywhere; most are short and meet nothing.
  std::string narrowToken() {
    const unsigned int start = 1 + below(below(4) == 0 ? 65536 : 300000);
    const unsigned int width = below(1000) == 0 ? 30000 : 20;
    return std::to_string(start) +
           (below(3) == 0 ? "" : "-" + std::to_string(start + below(width)));
  }

  // A group of a section text. It has a GroupID, as no drawn identifier is the same twice.
  std::string group() {
    static constexpr std::array kKeys = {"UPID", "ApplName", "Action",       "ACTION", "",
                                         "IPv4", "ipv4",     "SelectorType", "other"};
    std::string text = "GroupID=" + std::to_string(below(5)) + "\n\n";
    for (unsigned int count = below(8); count > 0; --count) {
      const char* const above2To31 = below(4) == 0 ? "300000000" : "";
      text += std::string(kKeys[below(kKeys.size())]) + "=" + above2To31 +
              std::to_string(below(5)) + "\n";
    }
    if (below(2) == 0) text += "UniqueBlockNumber=7\nSelectorTypeInfo=2\n";
    if (below(4) != 0) text += "PortRange=" + token(5) + "," + token(5) + "," + token(5) + "\n";
    return text + (below(2) == 0 ? ";" : "end\r");
  }

  OrvaneApplication application() {
    OrvaneApplication application;
    application.setID(0);
    for (unsigned int count = below(5); count > 0; --count) {
      application.setSection(group().c_str());
    }
    return application;
  }

  OrvaneAppMapping mapping() {
    OrvaneAppMapping mapping;
    for (unsigned int count = below(7); count > 0; --count) mapping.addEx(application());
    return mapping;
  }

 private:
  std::mt19937 engine_;
};

#endif  // ORVANE_TESTS_SAMPLE_H_
