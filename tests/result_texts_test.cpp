#include <gtest/gtest.h>

#include <functional>
#include <iterator>
#include <string>
#include <vector>

#include "orvane/orvane.h"
#include "sample.h"

namespace {

// Everything that writes a text. What the whole of it writes last is what its parts write.
struct Sample {
  OrvanePortMapping item;
  OrvaneApplication application;
  OrvaneApplication other;
  OrvaneAppMapping collection, older, newer;
  OrvanePort port;
  OrvanePortRange range;
  OrvaneIni ini;

  Sample(unsigned int address, const char* ports, const char* name)
      : item(makeItem(address, ports)),
        application(makeApplication(7, name, {item})),
        other(makeApplication(5, name, {item})),
        port(std::to_string(*item.getPorts().begin()).c_str()),
        range(*item.getRanges().rbegin()),
        ini(application.getSection(true)) {
    application.setAction(kOrvaneActionUpdate);
    other.setAction(kOrvaneActionUpdate);
    collection.assign({other, application});
    older = collection;
    older.back().setName("older");
    newer.addEx(application);
  }
};
using S = const Sample&;

struct Operation {
  std::string name;
  std::function<const char*(S)> run;
  std::string replaces;  // besides its own text
};

// Those that replace others stand before these.
const Operation kOperations[] = {
    {"all", [](S s) { return s.collection.getSection(true); }, "section ports sorted range"},
    {"allI", [](S s) { return s.collection.getInitialSection(); }, "initial ports sorted range"},
    {"allN", [](S s) { return s.collection.getAddNewSection(true); }, "new ports sorted range"},
    {"allU", [](S s) { return s.older.getUpdatedSection(s.newer, true); },
     "section delete ports sorted range"},
    {"section", [](S s) { return s.application.getSection(true); }, "ports sorted range"},
    {"initial", [](S s) { return s.application.getInitialSection(); }, "ports sorted range"},
    {"new", [](S s) { return s.application.getAddNewSection(true); }, "ports sorted range"},
    {"delete", [](S s) { return s.other.getDeleteSection(true); }, "ports sorted range"},
    {"updated", [](S s) { return s.application.getUpdatedSection(makeApplication(1), true); },
     "ports sorted range"},
    {"ini", [](S s) { return s.ini.getSection(0, true); }, ""},
    {"mapping", [](S s) { return s.item.getMappingAsString().c_str(); },
     "address ports sorted range"},
    {"address", [](S s) { return s.item.getIpAsString().c_str(); }, ""},
    {"ports", [](S s) { return s.item.getPortsAsString().c_str(); }, "sorted range"},
    {"sorted", [](S s) { return OrvanePortMapping::sortPorts(s.item.getPortsAsString().c_str()); },
     "ports range"},
    {"array", [](S s) { return OrvanePortMapping::PortArrayToString(s.item.getPorts()).c_str(); },
     ""},
    {"parsed", [](S s) { return OrvanePortMapping::parse(kOrvaneParsePorts, s.port.getPortStr()); },
     "single"},
    {"difference", [](S s) { return OrvanePortMapping().getDiffAsString(s.item).c_str(); }, ""},
    {"single", [](S s) { return s.port.getText(); }, ""},
    {"range", [](S s) { return s.range.getText(); }, ""}};

TEST(ResultTexts, AreSharedByObjectsAndReplacedByTheirOperationsOnly) {
  // The second texts are no longer than the first, so that they stand at the same place. The range
  // that ends last is not the one that is written last.
  const Sample first(0xC0A8010A, "60000,10000-20000,30000-40000,15000-45000", "a name");
  const Sample second(0x01020304, "60,10-20,30-40,15-45", "");
  for (const Operation& operation : kOperations) {
    std::vector<const char*> texts;
    for (const Operation& other : kOperations) texts.push_back(other.run(first));
    std::vector<std::string> expected(texts.begin(), texts.end());
    const char* const own = operation.run(second);
    std::vector<std::string> current;
    for (std::size_t i = 0; i < texts.size(); ++i) {
      current.emplace_back(kOperations[i].name == operation.name ? own : texts[i]);
    }
    for (std::size_t i = 0; i < texts.size(); ++i) {
      const Operation& other = kOperations[i];
      const bool replaced =
          other.name == operation.name ||
          (" " + operation.replaces + " ").find(" " + other.name + " ") != std::string::npos;
      EXPECT_EQ(current[i], replaced ? other.run(second) : expected[i])
          << operation.name << " against " << other.name;
    }
  }
}

TEST(ResultTexts, StayWhereNothingOfTheirsIsWritten) {
  const char* const range = OrvanePortRange(1, 2).getRange();
  const std::string& address = makeItem(7).getIpAsString();
  EXPECT_EQ(makeItem(0, "443").getMappingAsString(), "443");
  EXPECT_EQ(address, "0.0.0.7");
  EXPECT_STREQ(range, "1-2");
  makeApplication(1, "", {makeItem(1, "5-6"), makeItem(2, "80")}).getSection(true);
  EXPECT_STREQ(range, "5-6");
  OrvaneAppMapping mapping;
  mapping.assign({makeApplication(1, "", {makeItem(1, "5")}), makeApplication(2)});
  const char* const added = mapping[0].getAddNewSection(true);
  const char* const whole = mapping.getSection(true);
  const std::string text = whole;
  mapping.getAddNewSection(true);
  EXPECT_STREQ(added, "");  // of the last application
  OrvaneAppMapping().getSection(true);
  std::string buffer(text.size() + 1, '#');
  mapping.getSection(buffer.data());
  EXPECT_EQ(whole, text);
  const std::string_view section = makeApplication(1, "", {makeItem(1, "7")}).getSection(true);
  OrvaneAppMapping().getUpdatedSection(OrvaneAppMapping(), true);
  EXPECT_TRUE(section.starts_with("PortRange=7\n"));
}

}  // namespace
