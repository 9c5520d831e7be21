#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "orvane/port_mapping.h"
#include "sample.h"

namespace {

TEST(PortList, ReadsAndWrites) {
  const std::array<const char*, 3> cases[] = {
      {"8080,20-21,443", "443,8080|20-21", "20-21,443,8080"},
      {"1000-2000,1500,1000", "1000,1500|1000-2000", "1000,1000-2000,1500"},
      {"999,1000,2000,2001,1000-2000", "999,2001|1000-2000", "999,1000-2000,2001"},
      {"10-20,20-30", "|10-30", "10-30"},
      {"10-20,21-30", "|10-20,21-30", "10-20,21-30"},
      {"10-20,30-40,15-45", "|30-40,10-45", "10-45,30-40"},
      {"10-20,30-40,15-40", "|10-40", "10-40"},
      {"1-2,5-6,10-11,20-21,30-31,5-5", "|1-2,5-5,5-6,10-11,20-21,30-31",
       "1-2,5-5,5-6,10-11,20-21,30-31"},
      {"0,65536,abc,,80,-5,4294967297,80", "1,80|", "1,80"},
      {"100-0,0-100, 8 , 90 - 95 ", "8,100|90-95", "8,90-95,100"},
      {"65535,65534-70000,70001", "|65534-70000", "65534-70000"},
      {"80,65540-70000", "80|65540-70000", "80,65540-70000"},
      {"80,4294967295-5", "80|4294967295-5", "4294967295-5,80"},
      {",,", "|", ""},
      {"", "|", ""}};
  for (const auto& [text, sets, written] : cases) {
    OrvanePortMapping mapping = makeItem(0, "1,2-3");
    mapping.setPorts(std::string(text));
    EXPECT_EQ(showSets(mapping), sets);
    EXPECT_EQ(mapping.getPortsAsString(), written) << text;
  }
}

TEST(PortList, SortsAndParses) {
  const std::array<const char*, 4> cases[] = {
      {"443, 80,1000-2000", " 80,443,1000-2000", "443,80", "1000-2000"},
      {"10,9,1500,1000-2000", "9,10,1000-2000,1500", "10,9,1500", "1000-2000"},
      {"80-90,80,x,-1", "-1,x,80-90,80", "80", "80-90"},
      {"70000,80,80,2147483648", "2147483648,80,80,70000", "70000,80,80", ""},
      {"9-0,0-9,5-", "0-9,5-,9-0", "9,5", ""},
      {"3-4 ,,1 - 2", "1 - 2,3-4 ", "", "3-4 ,1 - 2"},
      {"", "", "", ""}};
  for (const auto& [text, sorted, ports, ranges] : cases) {
    SCOPED_TRACE(text);
    EXPECT_STREQ(OrvanePortMapping::sortPorts(OrvanePortMapping::sortPorts(text)), sorted);
    char* const parsed = OrvanePortMapping::parse(kOrvaneParsePorts, text);
    EXPECT_STREQ(parsed, ports);
    EXPECT_STREQ(OrvanePortMapping::parse(kOrvaneParsePorts, parsed), ports);  // its own result
    EXPECT_STREQ(OrvanePortMapping::parse(kOrvaneParseRanges, text), ranges);
    EXPECT_STREQ(OrvanePortMapping::parse(static_cast<tagParseType>(2), text), "");
  }
  EXPECT_TRUE(SortStringNumeric()("9", "10") && SortStringNumeric()("-1", ""));
  EXPECT_FALSE(SortStringNumeric()("80", "80-90") || SortStringNumeric()("80-90", "80"));
}

// The rules of merging, as they are worded, on a plain vector.
struct PlainList {
  OrvanePortMapping ports;
  std::vector<OrvanePortRange> ranges;

  // Returns whether a range was widened. The search goes as std::lower_bound() does, which may ask
  // for an order that "disjoint" is not.
  bool add(OrvanePortRange range) {
    auto found = ranges.begin();
    for (std::ptrdiff_t count = std::ssize(ranges); count > 0;) {
      const std::ptrdiff_t half = count / 2;
      const bool isBehind = OrvanePortRangeNotOverlaped()(found[half], range);
      if (isBehind) found += half + 1;
      count = isBehind ? count - half - 1 : half;
    }
    const bool widened = found != ranges.end();
    if (widened) {
      range.mergeRange(*found);
      ranges.erase(found);
    }
    const auto place = std::lower_bound(ranges.begin(), ranges.end(), range);
    if (place == ranges.end() || range < *place) {
      ranges.insert(place, range);
    } else if (widened) {
      place->mergeRange(range);
      range = *place;
    }
    std::erase_if(ports.getPorts(), [&](unsigned short port) { return range.isInRange(port); });
    return widened;
  }
};

// A token of a long list. The first ones ascend and fill a block of ranges and one more, which the
// next token widens. When the block is to be emptied, each of the next ones then covers all ranges:
// the first one is widened and goes to the end.
std::string longListToken(Random& random, unsigned int place, bool emptied) {
  constexpr unsigned int kBlock = 512;
  const unsigned int start = 300000 + 10 * place;
  if (place <= kBlock) return std::to_string(start) + "-" + std::to_string(start + 1);
  if (place == kBlock + 1) return std::to_string(start - 9) + "-" + std::to_string(start - 5);
  if (emptied && place < 3 * kBlock) return "1-" + std::to_string(1000000 + place);
  return random.narrowToken();
}

TEST(PortList, ReadsAListLikeItsTokensOneByOne) {
  Random random(1);
  for (int round = 0; round < 8000; ++round) {
    const bool many = round % 2000 == 0;
    const unsigned int spread = 4U << random.below(8);
    std::string text;
    PlainList plain;
    OrvanePortMapping oneByOne;
    const unsigned int count = many ? 8000 : random.below(2 + spread / 2);
    for (unsigned int place = 0; place < count; ++place) {
      const std::string token =
          many ? longListToken(random, place, round == 0) : random.token(spread);
      text += "," + token;
      if (OrvanePortRange::isRange(token.c_str())) {
        const OrvanePortRange range(token.c_str());
        auto& ports = oneByOne.getPorts();
        ASSERT_EQ(oneByOne.overlap(range),
                  std::find_if(ports.begin(), ports.end(),
                               [&](unsigned short port) { return range.isInRange(port); }));
        const auto position = oneByOne.addRange(range);
        ASSERT_EQ(position != oneByOne.getRanges().end(), plain.add(range)) << text;
      } else if (const unsigned int port = OrvanePort(token.c_str()).getPort()) {
        plain.ports.addPorts({static_cast<unsigned short>(port)});
        oneByOne.addPorts({static_cast<unsigned short>(port)});
      }
    }
    plain.ports.setRanges({plain.ranges.begin(), plain.ranges.end()});
    std::string sets = showSets(plain.ports);
    OrvanePortMapping atOnce = makeItem(0, text.c_str());
    ASSERT_EQ(showSets(atOnce), sets) << text;
    ASSERT_EQ(showSets(oneByOne), sets) << text;

    std::replace(sets.begin(), sets.end(), '|', ',');
    const std::string sorted = OrvanePortMapping::sortPorts(sets.c_str());
    ASSERT_EQ(atOnce.getPortsAsString(), sorted) << text;
  }
}

TEST(PortList, WritesDisjointItemsAsTheyWereWrittenBefore) {
  Random random(2);
  for (int round = 0; round < 500; ++round) {
    std::string shuffled;
    std::string canonical;
    for (unsigned int next = 1 + random.below(9); next < 100; next += 1 + random.below(9)) {
      std::string token = std::to_string(next);
      if (random.below(2) == 0) token += "-" + std::to_string(next += random.below(3));
      canonical += (canonical.empty() ? "" : ",") + token;
      shuffled.insert(random.below(2) == 0 ? 0 : shuffled.size(), token + ",");
    }
    ASSERT_EQ(makeItem(0, shuffled.c_str()).getPortsAsString(), canonical) << shuffled;
    ASSERT_EQ(makeItem(0, canonical.c_str()).getPortsAsString(), canonical);
  }
}

}  // namespace
