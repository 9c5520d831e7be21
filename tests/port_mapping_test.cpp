#include "orvane/port_mapping.h"

#include <gtest/gtest.h>

#include <array>
#include <iterator>
#include <tuple>
#include <utility>

#include "sample.h"

namespace {

TEST(PortMapping, ReadsAndWritesAddresses) {
  const std::tuple<const char*, unsigned int, const char*> cases[] = {
      {"3232235786", 0xC0A8010A, "192.168.1.10"},
      {"192.168.1.10", 0xC0A8010A, "192.168.1.10"},
      {"-1", 0xFFFFFFFF, "255.255.255.255"},
      {"", 0, "0.0.0.0"},
      {"257. 2.-1.+4x", 0x0102FF04, "1.2.255.4"},
      {".2..4", 0x00020004, "0.2.0.4"},
      {"1.2.3", 9, "0.0.0.9"},  // other than four parts: ignored
      {"1.2.3.4.", 9, "0.0.0.9"}};
  for (const auto& [text, address, dotted] : cases) {
    OrvanePortMapping mapping = makeItem(9, "443,1-2");
    mapping.setIp(text);
    EXPECT_EQ(mapping.getIpAddress(), address) << text;
    EXPECT_EQ(mapping.getIpAsString(), dotted);
    const std::string prefix = address == 0 ? "" : dotted + std::string(":");
    EXPECT_EQ(mapping.getMappingAsString(), prefix + "1-2,443");
  }
}

TEST(PortMapping, ReadsRecords) {
  for (const auto& [record, shown] :
       {std::pair("80,443|3232235786|7|1", "80,443| 3232235786 0 7 1 4 5\n"),
        std::pair("1-2|1.2.3|-1|-5", "|1-2 9 0 4294967295 -5 4 5\n"),
        std::pair("x|||", "| 0 0 0 0 4 5\n"), std::pair("|1|2|3", "80| 9 0 4294967295 0 4 5\n")}) {
    OrvanePortMapping mapping = makeItem(9, "80", 5);
    mapping.setListIndex(4);
    mapping.setValues(makeRecord(record).data());
    EXPECT_EQ(show(mapping), shown);
  }
}

TEST(PortMapping, CopiesAllAndAssignsAPart) {
  OrvanePortMapping source = makeItem(1, "80,1-2", 3);
  source.setIp(ADDRESS_S{1, {0, 0, 0, 0, 6}});
  source.setListIndex(4);
  source.setUniqueBlockNumber(" 7x");
  source.setSelectorInfo("-2");
  EXPECT_EQ(show(OrvanePortMapping(source)), "80|1-2 1 6 7 -2 4 3\n");
  OrvanePortMapping target;
  EXPECT_EQ(show(target), "| 0 0 4294967295 0 -1 -1\n");
  target = source;
  target.assign(target);
  EXPECT_EQ(show(target), "80|1-2 1 0 7 -2 -1 -1\n");
}

TEST(PortMapping, AddsSetsPlainlyAndRangesWithMerging) {
  OrvanePortMapping mapping = makeItem(0, "80,1500-2000");
  mapping.addRanges({{1000, 2000}, {70, 90}, {1, 9}});
  mapping.addPorts({1, 80, 65535});
  EXPECT_NE(mapping.overlap({65535, 70000}), mapping.getPorts().end());
  mapping.addPorts(mapping.getPorts());
  mapping.replacePorts(mapping.getPorts());
  mapping.setRanges(mapping.getRanges());
  EXPECT_EQ(showSets(mapping), "1,80,65535|1-9,70-90,1500-2000");
  EXPECT_EQ(mapping.findOverlapped({9, 80})->getEnd(), 9U);
  EXPECT_EQ(mapping.findOverlapped({91, 99}), mapping.getRanges().end());
  mapping.replacePorts({75});
  const auto widened = mapping.addRange(*std::next(mapping.getRanges().begin()));  // its own
  EXPECT_EQ(widened->getEnd(), 90U);
  EXPECT_EQ(showSets(mapping), "|1-9,70-90,1500-2000");
}

TEST(PortMapping, WritesDifferences) {
  const std::array<const char*, 4> cases[] = {
      {"80,443,1-9", "80,8080,1-9,30-40", "8080,30-40", "443"},
      {"1000-2000", "1500-2000,5000", "5000", ""},  // the ends are compared
      {"1,3,5,7", "2,3,4,7,9", "2,4,9", "1,5"},
      {"", "10-20,5,30-40,1", "1,5,10-20,30-40", ""}};
  for (const auto& [own, other, missing, surplus] : cases) {
    EXPECT_EQ(makeItem(1, own).getDiffAsString(makeItem(2, other)), missing);
    EXPECT_EQ(makeItem(1, other).getDiffAsString(makeItem(2, own)), surplus);
  }
  OrvanePortMapping zeros;
  zeros.addPorts({0});
  zeros.addRanges({{0, 0}, {0, 3}});
  EXPECT_EQ(OrvanePortMapping().getDiffAsString(zeros), "0-3");
}

TEST(PortMapping, Compares) {
  const struct {
    OrvanePortMapping a, b;
    bool portsLess, portsGreater, rangesLess, rangesGreater, equal, bothHavePorts;
  } cases[] = {
      {makeItem(1, "80"), makeItem(1, "80,443"), true, false, false, false, false, true},
      {makeItem(1, "80,1-3"), makeItem(1, "80,2-3"), false, false, false, false, true, true},
      {makeItem(1, "443,1-10"), makeItem(1, "80,8080,20-30"), false, true, true, false, false,
       true},
      {makeItem(1, "1-10"), makeItem(1), false, false, false, true, true, false},
      {makeItem(1, "80"), makeItem(~0U, "80"), false, false, false, false, false, false}};
  for (const auto& [a, b, portsLess, portsGreater, rangesLess, rangesGreater, equal, both] :
       cases) {
    SCOPED_TRACE(show(a) + show(b));
    const bool same = a.getIpAddress() == b.getIpAddress();
    EXPECT_TRUE(a.lexPortsLess(b) == portsLess && b.lexPortsLess(a) == portsGreater);
    EXPECT_TRUE(a.lexRangesLess(b) == rangesLess && b.lexRangesLess(a) == rangesGreater);
    EXPECT_EQ(OrvanePortMappingEqual()(a, b), equal);
    EXPECT_EQ(a.equalNotNull(b), both);
    EXPECT_TRUE((a == b) == same && (a < b) == !same && !(b < a));
    EXPECT_EQ(OrvanePortMappingLess()(a, b), !same || portsLess || rangesLess);
    EXPECT_EQ(OrvanePortMappingLess()(b, a), portsGreater || rangesGreater);
  }
}

}  // namespace
