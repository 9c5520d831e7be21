#include "orvane/port_range.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <tuple>

namespace {

OrvanePort makePort(unsigned int number, unsigned int start, unsigned int end) {
  OrvanePort port;
  port = OrvanePortRange(start, end);
  port = number;
  return port;
}

TEST(PortRange, ReadsTexts) {
  const std::tuple<const char*, unsigned int, unsigned int, bool, unsigned int> cases[] = {
      {"2000-1000", 1000, 2000, true, 0},
      {"--10--20--5", 10, 20, true, 0},
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
  for (const auto& [text, start, end, isRange, number] : cases) {
    SCOPED_TRACE(text);
    OrvanePort port = makePort(80, 10, 20);
    static_cast<OrvanePortRange&>(port).setRange(text);  // reads as the port that it is
    EXPECT_EQ(port.getPort(), number != 0 ? number : 80);
    EXPECT_EQ(OrvanePort(text).getPort(), number);
    EXPECT_EQ(OrvanePortRange(port), OrvanePortRange(start, end));
    EXPECT_EQ(OrvanePortRange(text), OrvanePortRange(start, end));
    EXPECT_EQ(OrvanePortRange::isRange(text), isRange);
  }
  OrvanePortRange kept(10, 20);
  for (const char* none : {"", "--"}) kept.setRange(none);
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
    EXPECT_EQ(OrvanePortRangeNotOverlaped()(a, b), !shared) << bounds;
    EXPECT_TRUE(hull.isInRange(b.getStart()) && hull.isInRange(a.getEnd()));
    EXPECT_EQ(a.isValid(), a.getNumPortsUsed() > 1);
  }
  // Bounds out of order.
  EXPECT_TRUE(OrvanePortRange(3, 5).overlap(OrvanePortRange(9, 5)));
  EXPECT_FALSE(OrvanePortRange(9, 5).overlap(OrvanePortRange(3, 5)));
}

TEST(PortRange, OrdersSinglePortsBeforeRangesAndRangesByTheirEnd) {
  const OrvanePort ascending[] = {makePort(1, 9, 9), makePort(70000, 0, 0), makePort(0, 9, 5),
                                  makePort(0, 0, 70000)};
  for (const OrvanePort& a : ascending) {
    for (const OrvanePort& b : ascending) {
      EXPECT_EQ(a < b, &a < &b) << a.getPort() << " and " << b.getPort();
      OrvanePort copy = a;
      copy = b;
      EXPECT_EQ(a == copy, &a == &b) << a.getPort() << " and " << b.getPort();
    }
  }
  EXPECT_FALSE(makePort(0, 1, 9) < makePort(0, 5, 9) || makePort(0, 1, 9) == makePort(0, 5, 9));
  EXPECT_EQ(makePort(80, 1, 9), makePort(80, 2, 3));
}

// The first and the last number of each length, and some between.
TEST(PortRange, WritesNumbersOfEveryLength) {
  for (std::uint64_t power = 1; power <= 10'000'000'000; power *= 10) {
    for (const std::uint64_t number : {power - 1, power, power / 7 * 3, power / 81 * 10 + 1}) {
      const auto end = static_cast<unsigned int>(std::min<std::uint64_t>(number, 4294967295));
      const std::string digits = std::to_string(end);
      EXPECT_EQ(OrvanePortRange(end, end).getRange(), digits + "-" + digits);
    }
  }
}

}  // namespace
