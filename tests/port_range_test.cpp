#include "orvane/port_range.h"

#include <gtest/gtest.h>

#include <iterator>
#include <tuple>

namespace {

OrvanePort makePort(unsigned int number, unsigned int start, unsigned int end) {
  OrvanePort port;
  port = OrvanePortRange(start, end);
  port = number;
  return port;
}

TEST(PortRange, ReadsTexts) {
  const struct {
    const char* text;
    unsigned int start, end;
    bool isRange;
    unsigned int port;
  } cases[] = {{"1000-2000", 1000, 2000, true, 0},
               {"2000-1000", 1000, 2000, true, 0},
               {"10-20-5", 10, 20, true, 0},
               {"--10--20--", 10, 20, true, 0},
               {" 8 - 9x", 8, 9, true, 0},
               {"80-80", 80, 80, true, 0},
               {"7-80000", 7, 80000, true, 0},
               {"4294967295-1", 4294967295, 1, true, 0},
               {"443", 443, 443, false, 443},
               {"\t\n\v\f\r +443x", 443, 443, false, 443},
               {"1", 1, 1, false, 1},
               {"65535", 65535, 65535, false, 65535},
               {"65536", 65536, 65536, false, 0},
               {"4294967297", 1, 1, false, 1},
               {"0-90", 0, 90, false, 0},
               {"90-0", 0, 90, false, 90},
               {"-80", 80, 80, false, 0},
               {"80-", 80, 80, false, 80},
               {"a-b", 0, 0, false, 0},
               {"+ 5", 0, 0, false, 0}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    OrvanePort port = makePort(80, 10, 20);
    static_cast<OrvanePortRange&>(port).setRange(c.text);  // reads as the port that it is
    EXPECT_EQ(port.getPort(), c.port != 0 ? c.port : 80);
    EXPECT_EQ(OrvanePort(c.text).getPort(), c.port);
    EXPECT_EQ(OrvanePortRange(port), OrvanePortRange(c.start, c.end));
    EXPECT_EQ(OrvanePortRange(c.text), OrvanePortRange(c.start, c.end));
    EXPECT_EQ(OrvanePortRange::isRange(c.text), c.isRange);
  }
  OrvanePortRange kept(10, 20);
  for (const char* text : {"", "--"}) kept.setRange(text);
  EXPECT_EQ(kept, OrvanePortRange(10, 20));
}

TEST(PortRange, WritesTextsAndCountsPorts) {
  const std::tuple<OrvanePort, const char*, unsigned short> cases[] = {
      {makePort(0, 1000, 2000), "1000-2000", 1001},
      {makePort(0, 0, 65535), "0-65535", 0},
      {makePort(0, 20, 10), "20-10", 65527},
      {makePort(70000, 1, 9), "70000", 1}};
  for (const auto& [port, text, count] : cases) {
    const OrvanePortRange& range = port;
    EXPECT_STREQ(range.getText(), text);
    EXPECT_EQ(range.getNumPortsUsed(), count) << text;
  }
  EXPECT_STREQ(makePort(80, 1, 9).getRange(), "1-9");
}

TEST(PortRange, OverlapsWhereItSharesAPort) {
  for (unsigned int bounds = 0; bounds < 6 * 6 * 6 * 6; ++bounds) {
    const OrvanePortRange a(bounds % 6, bounds / 6 % 6);
    const OrvanePortRange b(bounds / 36 % 6, bounds / 216);
    if (a.getStart() > a.getEnd() || b.getStart() > b.getEnd()) continue;
    bool shared = false;
    for (unsigned int port = 0; port < 6; ++port) shared |= a.isInRange(port) && b.overlap(port);
    OrvanePortRange hull = a;
    hull.mergeRange(b);
    EXPECT_EQ(a.overlap(b), shared) << bounds;
    EXPECT_EQ(OrvanePortRangeNotOverlaped()(a, b), !shared);
    EXPECT_TRUE(hull.isInRange(b.getStart()) && hull.isInRange(a.getEnd()));
    EXPECT_EQ(a.isValid(), a.getNumPortsUsed() > 1);
  }
  // Bounds out of order.
  EXPECT_TRUE(OrvanePortRange(3, 5).overlap(OrvanePortRange(9, 5)));
  EXPECT_FALSE(OrvanePortRange(9, 5).overlap(OrvanePortRange(3, 5)));
}

TEST(PortRange, OrdersSinglePortsBeforeRangesAndRangesByTheirEnd) {
  const OrvanePort ascending[] = {makePort(1, 9, 9), makePort(65535, 1, 1), makePort(70000, 0, 0),
                                  makePort(0, 9, 5), makePort(0, 0, 70000)};
  for (std::size_t i = 0; i < std::size(ascending); ++i) {
    for (std::size_t j = 0; j < std::size(ascending); ++j) {
      EXPECT_EQ(ascending[i] < ascending[j], i < j) << i << " and " << j;
      EXPECT_EQ(ascending[i] == ascending[j], i == j) << i << " and " << j;
    }
  }
  EXPECT_FALSE(makePort(0, 1, 9) < makePort(0, 5, 9) || makePort(0, 5, 9) < makePort(0, 1, 9));
  EXPECT_FALSE(makePort(0, 1, 9) == makePort(0, 5, 9));
  EXPECT_EQ(makePort(80, 1, 9), makePort(80, 2, 3));
}

}  // namespace
