// What 1.1 adds beside the operations that return a text: twins that append, checks that replace no
// text, views, and plain numbers.

#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "orvane/orvane.h"
#include "sample.h"

namespace {

struct Objects {
  OrvanePortMapping item = makeItem(0x01020304, "80,443,1000-2000,3000-3010");
  OrvanePortMapping other = makeItem(0x01020304, "80,8080,1000-2000,5-6");
  OrvanePort single{"8080"};
  OrvanePort range{"7-9"};
  OrvaneApplication older = makeApplication(7, "Web", {item, makeItem(9, "22")});
  OrvaneApplication newer = makeApplication(7, "Web", {other, makeItem(3, "1-2")});
  OrvaneAppMapping olders, newers;
  OrvaneAppInfoArray catalogue;
  OrvaneAppInfo entry;
  OrvaneIni ini{"b=2\nA=1\n;\n"};
  OrvanePortCounter counter;
  std::vector<unsigned int> upids = {7, 5, 7};

  Objects() {
    older.setAction(kOrvaneActionAdd);
    olders.assign({makeApplication(3, "Gone", {item}), older});
    olders.front().setAction(kOrvaneActionAdd);
    newers.assign({newer, makeApplication(8, "New", {makeItem(0, "53,60-61")})});
    entry = newers.back();
    entry.setUPID(5);
    catalogue.add(entry);
    entry.setUPID(7);
    catalogue.add(entry);
    counter.add("80,1000-2000");
    counter.addSocket(0x0A000001, "443,8443");
  }
};

struct Twins {
  const char* name;
  std::function<std::string(Objects&)> returns;
  std::function<void(Objects&, std::string&)> appends;
};

// An operation and its twin, called on the same part of the objects with the same arguments.
#define TWINS(part, get, append)                                                                \
  {                                                                                             \
#get, [](Objects & o) { return std::string(o.part.get); }, []([[maybe_unused]] Objects & o, \
                                                                  std::string &                 \
                                                                      to) { o.part.append; }    \
  }

const Twins kTwins[] = {
    TWINS(range, getRange(), appendRange(to)),
    TWINS(range, getText(), appendText(to)),
    TWINS(single, getText(), appendText(to)),
    TWINS(single, getPortStr(), appendPortStr(to)),
    TWINS(item, getPortsAsString(), appendPorts(to)),
    TWINS(item, getIpAsString(), appendIp(to)),
    TWINS(item, getMappingAsString(), appendMapping(to)),
    TWINS(item, getDiffAsString(o.other), appendDiff(to, o.other)),
    TWINS(item, sortPorts("443, 80,1-2"), appendSortedPorts(to, "443, 80,1-2")),
    TWINS(item, parse(kOrvaneParseRanges, "80,1-2"),
          appendParsed(to, kOrvaneParseRanges, "80,1-2")),
    TWINS(item, PortArrayToString(o.other.getPorts()), appendPortArray(to, o.other.getPorts())),
    TWINS(older, getSection(true), appendSection(to, true)),
    TWINS(older, getInitialSection(), appendInitialSection(to)),
    TWINS(older, getAddNewSection(false), appendAddNewSection(to, false)),
    TWINS(older, getDeleteSection(true), appendDeleteSection(to, true)),
    TWINS(older, getUpdatedSection(o.newer, true), appendUpdatedSection(to, o.newer, true)),
    TWINS(olders, getSection(true), appendSection(to, true)),
    TWINS(olders, getInitialSection(), appendInitialSection(to)),
    TWINS(olders, getAddNewSection(true), appendAddNewSection(to, true)),
    TWINS(olders, getUpdatedSection(o.newers, true), appendUpdatedSection(to, o.newers, true)),
    TWINS(ini, getSection(0, true), appendSection(to, 0, true)),
    TWINS(entry, getPorts(), appendPorts(to)),
    TWINS(entry, getEnumPorts(), appendEnumPorts(to)),
    TWINS(entry, getSection(true), appendSection(to, true)),
    TWINS(catalogue, getSection(true), appendSection(to, true)),
    TWINS(catalogue, getSection(o.upids, true), appendSection(to, o.upids, true)),
    TWINS(catalogue, getMergedAppMappingSection(o.newers, o.upids, true),
          appendMergedAppMappingSection(to, o.newers, o.upids, true)),
    TWINS(catalogue, getPorts(), appendPorts(to)),
    TWINS(catalogue, getAppMappingSection(o.newers, o.upids, true),
          appendAppMappingSection(to, o.newers, o.upids, true)),
    TWINS(counter, toString(), appendText(to)),
};

// The current texts of the operations that others replace, read in place.
struct ReplacedTexts {
  Objects o;
  std::vector<const char*> texts = {o.older.getSection(true),
                                    o.older.getInitialSection(),
                                    o.older.getAddNewSection(true),
                                    o.older.getDeleteSection(true),
                                    o.entry.getSection(true),
                                    o.entry.getPorts(),
                                    o.item.getMappingAsString().c_str(),
                                    o.item.getIpAsString().c_str(),
                                    o.item.getPortsAsString().c_str(),
                                    o.range.getRange(),
                                    o.single.getPortStr()};

  std::vector<std::string> now() const { return {texts.begin(), texts.end()}; }
};

TEST(Twins, AppendTheSameTextAndReplaceNone) {
  for (const Twins& twins : kTwins) {
    const std::string expected = twins.returns(*std::make_unique<Objects>());
    ASSERT_FALSE(expected.empty()) << twins.name;
    const ReplacedTexts texts;
    const std::vector<std::string> before = texts.now();
    std::string to = "before ";
    Objects objects;
    twins.appends(objects, to);
    EXPECT_EQ(to, "before " + expected) << twins.name;
    EXPECT_EQ(texts.now(), before) << twins.name;
  }
  std::string kept = "kept";
  EXPECT_THROW(OrvaneIni().appendSection(kept, 0, true), std::out_of_range);
  EXPECT_EQ(kept, "kept");
}

TEST(Twins, CollideAsTheChecksDoAndReplaceNoText) {
  Random random(5);
  const char* const range = OrvanePortRange(1, 2).getRange();
  for (unsigned int round = 0; round < 2000; ++round) {
    OrvanePortCounter counter;
    OrvanePortMapping used = makeItem(0);
    for (unsigned int i = random.below(4); i > 0; --i) counter.add(random.token(60).c_str());
    for (unsigned int i = random.below(4); i > 0; --i) {
      counter.addSocket(random.below(2), random.token(60).c_str());
    }
    used.setPorts(random.token(60) + "," + random.token(60) + "," + random.token(60));
    const unsigned int address = random.below(2);
    const OrvanePortRange asked(random.below(70), random.below(70));
    OrvanePortRange(1, 2).getRange();
    const bool results[] = {counter.collides(asked), counter.collides(used.getRanges()),
                            counter.collides(address, asked), counter.collides(address, used)};
    EXPECT_STREQ(range, "1-2");
    EXPECT_EQ(results[0], counter.checkRange(asked));
    EXPECT_EQ(results[1], counter.checkRanges(used.getRanges()));
    EXPECT_EQ(results[2], counter.sockOverlap(address, asked));
    EXPECT_EQ(results[3], counter.checkSocket(address, used, true));
  }
}

TEST(Twins, TakeViewsUpToTheirEnd) {
  const std::string_view numbers = std::string_view("80,443-5001", 6);
  OrvanePortMapping item;
  item.setPorts(numbers);
  EXPECT_EQ(item.getPortsAsString(), "80,443");
  item.setIp(std::string_view("10.0.0.12", 8));
  EXPECT_EQ(item.getIpAddress(), 0x0A000001U);
  const std::string_view text("UPID=71\n;\nUPID=8\n;\n", 10);
  OrvaneAppMapping mapping;
  mapping.setSection(text);
  ASSERT_EQ(mapping.size(), 1U);
  EXPECT_EQ(mapping[0].getUpid(), 71U);
  OrvaneAppInfoArray catalogue;
  catalogue.setSection(text);
  EXPECT_EQ(catalogue.size(), 1U);
  EXPECT_TRUE(OrvanePortRange::isRange(std::string_view("1-22", 3)));
  EXPECT_FALSE(OrvanePortRange::isRange(std::string_view("1-22", 2)));
  OrvanePort port(std::string_view("8080", 3));
  EXPECT_EQ(port.getPort(), 808U);
  OrvanePortCounter counter;
  counter.add(numbers);
  counter.addSocket(1, std::string_view("53,54", 2));
  counter.add(std::set<OrvanePortRange>{{7, 9}});
  counter.remove(std::string_view("801", 2));
  EXPECT_EQ(counter.toString(), "0.0.0.1:53 ,443,7-9");
  EXPECT_EQ(counter.getSockets().size() + counter.getPorts().size() + counter.getRanges().size(),
            3U);
}

template <typename Object, typename Argument>
concept SetsType = requires(Object object, Argument argument) {
  object.setType(argument);
};

TEST(Twins, TakePlainNumbersAsNumbers) {
  OrvaneApplication application = makeApplication(7);
  application.setUpid(0);
  application.setType(3);
  application.setAction(0);
  application.setAppCategory(1);
  EXPECT_EQ(show(application), joined(0, 3, 0, 1, -1, 4));
  OrvanePortMapping item = makeItem(7);
  item.setIp(0);
  item.setSelectorInfo(0);
  item.setUniqueBlockNumber(0);
  EXPECT_EQ(item.getUniqueBlockNumber() + item.getIpAddress(), 0U);
  OrvanePort port("80");
  port = 0;
  EXPECT_EQ(port.getText(), std::string("80-80"));
  port.setPort(0);
  port = {};
  EXPECT_TRUE(port == OrvanePort());
  EXPECT_EQ(port.getEnd(), 0U);
  EXPECT_TRUE((SetsType<OrvaneApplication, const char*>));
  EXPECT_FALSE((SetsType<OrvaneApplication, std::nullptr_t>));
}

}  // namespace
