#include <gtest/gtest.h>
#include <orvane/collisions.h>

#include <limits>
#include <string>

#include "plain_counter.h"
#include "sample.h"

namespace {

constexpr unsigned int kHighest = std::numeric_limits<unsigned int>::max();

// "1@7 2@0: 80,443": the UPID and address of an item, those of the other one, and the ports.
std::string show(const OrvaneCollisions& collisions) {
  std::string text;
  for (const OrvaneCollision& collision : collisions) {
    text += std::to_string(collision.application->getUpid()) + "@" +
            std::to_string(collision.item->getIpAddress()) + " ";
    if (collision.otherApplication != nullptr) {
      text += std::to_string(collision.otherApplication->getUpid());
      EXPECT_EQ(collision.otherAddress, collision.otherItem->getIpAddress());
    }
    text += "@" + std::to_string(collision.otherAddress) + ": ";
    collision.appendPorts(text);
    text += "\n";
  }
  return text;
}

OrvaneAppMapping collection(std::initializer_list<OrvaneApplication> applications) {
  OrvaneAppMapping mapping;
  mapping.assign(applications);
  return mapping;
}

OrvaneAppMapping sample() {
  return collection({makeApplication(1, "Web", {makeItem(7, "80,443,8000-8010")}),
                     makeApplication(2, "Any", {makeItem(0, "22,8005"), makeItem(7, "22")}),
                     makeApplication(3, "Two", {makeItem(7, "443"), makeItem(8, "22,79-81")})});
}

TEST(Collisions, AreWithinACollectionOnceForEachPair) {
  const OrvaneAppMapping applications = sample();
  EXPECT_EQ(show(OrvaneCollisions(applications)),
            "1@7 2@0: 8005\n"
            "1@7 3@7: 443\n"
            "2@0 3@8: 22\n");
  const OrvaneAppMapping twice = collection(
      {makeApplication(1, "", {makeItem(7, "80")}), makeApplication(1, "", {makeItem(7, "80")})});
  EXPECT_EQ(show(OrvaneCollisions(twice)), "1@7 1@7: 80\n");
  const OrvaneAppMapping none;
  EXPECT_EQ(show(OrvaneCollisions(none)), "");
}

TEST(Collisions, AreWithAnotherCollection) {
  const OrvaneAppMapping applications = sample();
  const OrvaneAppMapping others = collection(
      {makeApplication(9, "", {makeItem(0, "1-23"), makeItem(8, "81-90"), makeItem(9, "1-9999")}),
       makeApplication(8, "", {makeItem(7, "8010-8020,8000,8002-8003,8005")}), makeApplication(7),
       makeApplication(6, "", {makeItem(0)})});
  EXPECT_EQ(show(OrvaneCollisions(applications, others)),
            "1@7 8@7: 8000,8002-8003,8005,8010\n"
            "2@0 9@0: 22\n"
            "2@0 9@9: 22,8005\n"
            "2@0 8@7: 8005\n"
            "2@7 9@0: 22\n"
            "3@8 9@0: 22\n"
            "3@8 9@8: 81\n");
  const OrvaneAppMapping same = collection({makeApplication(1, "", {makeItem(7, "80")})});
  EXPECT_EQ(show(OrvaneCollisions(same, same)), "1@7 1@7: 80\n");
  const OrvaneAppMapping none;
  EXPECT_EQ(show(OrvaneCollisions(same, none)), "");
}

OrvaneSock socketOf(unsigned int address, unsigned int number, const OrvanePortRange& range = {}) {
  OrvaneSock socket;
  socket.address = address;
  socket.port = range;
  socket.port = number;
  return socket;
}

TEST(Collisions, AreWithWhatIsInUse) {
  const OrvaneAppMapping applications = sample();
  plain::Walk used;
  EXPECT_EQ(show(OrvaneCollisions(applications, used)), "");
  used.add("80,22,8001-8002");
  used.addSocket(8, "79,22");
  used.addSocket(7, "8005,8004");
  used.addSocket(9, "8005");
  const std::string onEvery = "1@7 @0: 80,8001-8002\n";
  EXPECT_EQ(show(OrvaneCollisions(applications, used)),
            "1@7 @7: 8004-8005\n" + onEvery +
                "2@0 @7: 8005\n2@0 @8: 22\n2@0 @9: 8005\n2@0 @0: 22\n2@7 @0: 22\n"
                "3@8 @8: 22,79\n3@8 @0: 22,80\n");

  // The range that a socket carries counts only without a port number.
  used = {};
  used.sockets = {socketOf(7, 0, {8003, 8006}), socketOf(7, 0, {8020, 8009}),
                  socketOf(7, 443, {1, 9999}), socketOf(0, 0, {8, 80}), socketOf(0, 443)};
  used.ports = {81};
  EXPECT_EQ(show(OrvaneCollisions(applications, used)),
            "1@7 @7: 443,8003-8006\n1@7 @0: 80,443\n2@0 @7: 8005\n2@0 @0: 22\n2@7 @0: 22\n"
            "3@7 @7: 443\n3@7 @0: 443\n3@8 @0: 22,79-81\n");
}

TEST(Collisions, JoinPorts) {
  const struct {
    std::set<unsigned short> ports;
    std::set<OrvanePortRange> ranges;
    const char* inCommon;
  } cases[] = {
      {{80, 81, 82, 84}, {}, "80-82,84"},
      {{5, 9, 11}, {{6, 8}, {7, 9}, {13, 14}}, "5-9,11,13-14"},
      {{}, {{10, 20}, {1, 30}, {20, 25}}, "1-30"},
      {{}, {{30, 10}, {12, 12}}, "12"},
      {{0, 65535}, {{65536, 65536}, {70000, kHighest}}, "0,65535-65536,70000-4294967295"},
      {{0}, {{0, kHighest - 1}, {kHighest, kHighest}}, "0-4294967295"},
      {{}, {{5, kHighest - 1}, {0, kHighest}}, "0-4294967295"},
      {{}, {{2, 1}}, nullptr},
  };
  for (const auto& [ports, ranges, inCommon] : cases) {
    for (const unsigned int address : {0U, 1U, kHighest}) {
      OrvanePortMapping item = makeItem(address);
      item.setPorts(ports);
      item.setRanges(ranges);
      OrvanePortMapping all = makeItem(kHighest);
      all.setRanges({{0, 40}, {41, kHighest}});
      const OrvaneAppMapping one = collection({makeApplication(1, "", {item})});
      const OrvaneAppMapping other = collection({makeApplication(2, "", {all})});
      const OrvaneCollisions collisions(one, other);
      const bool isFound = address != 1 && inCommon != nullptr;
      ASSERT_EQ(collisions.size(), isFound ? 1U : 0U);
      std::string text = "before ";
      if (isFound) collisions[0].appendPorts(text);
      EXPECT_EQ(text, std::string("before ") + (isFound ? inCommon : ""));
    }
  }
}

// One by one, the pairs of the first application would take seconds.
TEST(Collisions, StepOverWhatOneApplicationHas) {
  constexpr unsigned int kItems = 50000;
  std::string odd;
  for (unsigned int port = 1; port < 65535; port += 2) odd += std::to_string(port) + ",";
  OrvaneAppMapping applications =
      collection({makeApplication(1, "", {makeItem(0, odd.c_str())}), makeApplication(2)});
  for (unsigned int i = 1; i <= kItems; ++i) applications[0].addItem(makeItem(i, "1-65535"));
  applications[1].addItem(makeItem(7, "2,65536"));
  EXPECT_EQ(show(OrvaneCollisions(applications)), "1@7 2@7: 2\n");
}

}  // namespace
