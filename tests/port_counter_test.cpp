#include <gtest/gtest.h>
#include <orvane/port_counter.h>

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <random>
#include <string>

#include "plain_counter.h"

namespace {

using plain::kAddress;
using plain::Walk;
using std::ranges::any_of;

// The result of a check and the text of getRange() that it leaves behind.
std::string outcome(const std::function<int()>& check) {
  const char* const text = OrvanePortRange(~0U, ~0U).getRange();  // the longest: it stays in place
  const std::string result = std::to_string(check());
  return result + ", " + text;
}

// Dense or sparse content: unordered starts, nested, inverted and endless ranges, starts of 0.
class Generator {
 public:
  explicit Generator(unsigned int seed) : random_(seed), limit_(pick(2) != 0 ? 60000 : 60) {}

  unsigned int pick(std::size_t count) { return static_cast<unsigned int>(random_() % count); }

  unsigned int bound() {
    constexpr std::array<unsigned int, 5> kExtremes = {0, 65535, 70000, 0x80000000, 0xFFFFFFFF};
    return pick(40) == 0 ? kExtremes[pick(kExtremes.size())] : 1 + pick(limit_);
  }

  // Few, or many beside those.
  unsigned int count() { return pick(8) == 0 ? pick(80) : pick(8); }

  OrvanePortRange range() {
    const unsigned int start = bound();
    const unsigned int other = pick(12) == 0 ? bound() : start + pick(limit_ / 20);
    return pick(8) == 0 ? OrvanePortRange(other, start) : OrvanePortRange(start, other);
  }

  void fill(std::set<unsigned short>& ports, std::set<OrvanePortRange>& ranges) {
    for (auto n = count(); n > 0; --n) ports.insert(static_cast<unsigned short>(bound()));
    for (auto n = count(); n > 0; --n) ranges.insert(range());
  }

  void fill(std::set<OrvaneSock>& sockets) {
    const bool carryRanges = pick(2) != 0;
    for (auto n = pick(200) == 0 ? 600 : count(); n > 0; --n) {
      OrvaneSock socket;
      socket.address = kAddress - 1 + pick(3);
      if (carryRanges && pick(3) != 0) socket.port = range();
      if (!carryRanges || pick(2) != 0) socket.port = bound();
      sockets.insert(socket);
    }
  }

 private:
  std::mt19937 random_;
  unsigned int limit_;
};

TEST(PortCounter, AnswersLikeTheWalkOverEverything) {
  constexpr int kCases = 20000;
  std::map<std::string, int> hits;
  for (unsigned int seed = 0; seed < kCases && !HasFailure(); ++seed) {
    Generator generator(seed);
    Walk walk;
    generator.fill(walk.ports, walk.ranges);
    generator.fill(walk.sockets);
    OrvanePortMapping wanted;
    generator.fill(wanted.ports, wanted.ranges);
    const auto port = static_cast<unsigned short>(generator.bound());
    const OrvanePortRange range = generator.range();
    const auto inRange = [&](const OrvanePortRange& r) { return walk.range(r); };
    const auto same = [&](const char* name, const auto& check, const auto& plain) {
      const std::string expected = outcome(plain);
      EXPECT_EQ(outcome(check), expected) << name << ", seed " << seed;
      if (expected[0] != '0') ++hits[name];
    };
#define SAME(check, plain) \
  same(                    \
      #check, [&] { return walk.check; }, [&] { return plain; })
    SAME(overlap(port), walk.port(port));
    SAME(overlap(range), walk.range(range));
    SAME(checkPorts(wanted.ports), walk.firstPort(wanted.ports));
    SAME(checkRanges(wanted.ranges), any_of(wanted.ranges, inRange));
    SAME(checkSocket(kAddress, port), walk.socket(port));
    SAME(checkSocket(kAddress, range), walk.socket(range));
    SAME(sockOverlap(kAddress, port), walk.onAddress(port));
    SAME(sockOverlap(kAddress, range), walk.onAddress(range));
    SAME(checkSocket(kAddress, wanted, true), walk.mapping(wanted));
#undef SAME
  }
  EXPECT_EQ(hits.size(), 9U);
  for (const auto& [check, count] : hits) {  // both answers came up often
    EXPECT_TRUE(count > kCases / 500 && count < kCases * 9 / 10) << check << ": " << count;
  }
}

TEST(PortCounter, KeepsPortsAndSocketsApart) {
  OrvanePortCounter counter;
  counter.add("80,1000-2000");
  counter.addSocket(kAddress, "443,3000-4000");
  EXPECT_TRUE(counter.checkPort(80) && !counter.checkPort(1500) && !counter.overlap(80));
  EXPECT_EQ(counter.checkPorts({22, 443, 1500, 1600}), 1500);
  EXPECT_TRUE(counter.checkRange({400, 500}) && counter.checkRange({0, 10}));
  EXPECT_FALSE(counter.checkRange({81, 442}) || counter.checkSocket(kAddress, 80));
  counter.add("70000-70010");
  EXPECT_TRUE(counter.checkRanges({{1, 2}, {3, 4}, {5, 6}, {70010, 70011}}));
  EXPECT_FALSE(counter.collides({{1, 2}, {3, 4}, {5, 6}, {70011, 0xFFFFFFFF}}));
  for (const char* text : {"443", "400-500", "80,1000-2000,444-500"}) {
    OrvanePortMapping mapping;
    mapping.setPorts(text);
    EXPECT_EQ(counter.checkSocket(kAddress, mapping, false), text[0] == '4') << text;
    EXPECT_FALSE(counter.checkSocket(kAddress + 1, mapping, true)) << text;
  }
}

TEST(PortCounter, RegistersRemovesAndWrites) {
  const struct {
    void (*change)(OrvanePortCounter&);
    const char* text;
  } kSteps[] = {
      {[](auto& c) { c.add(nullptr); }, ""},
      {[](auto& c) { c.add("53,53,1000-2000,1500-2500"); }, "53,1000-2500"},
      {[](auto& c) { c.add("2400-2500,x,65536,2450-2600,2400"); }, "53,2400,1000-2500,2400-2600"},
      {[](auto& c) { c.remove("7-2500,2400,99,1-2"), c.remove(nullptr); }, "53,2400-2600"},
      {[](auto& c) { c.addSocket(0x0A00000A, "8080,21,7-9"), c.addSocket(0xFFFFFFFF, "1-2"); },
       "10.0.0.10:21 ,10.0.0.10:8080 ,53,2400-2600"},
      {[](auto& c) { c.addSocket(0x0A00000A, "21,5"), c.addSocket(2, "80"), c.remove("5-2600"); },
       "0.0.0.2:80 ,10.0.0.10:5 ,10.0.0.10:21 ,10.0.0.10:8080 ,53"},
      {[](auto& c) { c = {}, c.add("21-22,30-31"), c.addSocket(1, "8,9"); },
       "0.0.0.1:8 ,0.0.0.1:9 ,21-22,30-31"},
  };
  OrvanePortCounter counter;
  for (const auto& step : kSteps) {
    step.change(counter);
    EXPECT_EQ(counter.toString(), step.text);
  }
  OrvanePortCounter longest;
  longest.addSocket(0xFFFFFFFF, "65535");
  std::string text;
  longest.appendText(text);
  EXPECT_EQ(text, "255.255.255.255:65535 ");
  longest.addSocket(0, "10-20,5-30,7");  // its only range goes and comes
  EXPECT_EQ(longest.toString(), "0.0.0.0:7 ,255.255.255.255:65535 ");
  const char* const portText = OrvanePort("60000").getPortStr();
  EXPECT_EQ(outcome([&] { return counter.toString().front(); }), "48, 30-31");
  EXPECT_STREQ(portText, "9");
}

}  // namespace
