#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>

#include "orvane/orvane.h"
#include "sample.h"
#include "shown_comparison.h"

namespace {

OrvaneApplication makeOne(unsigned int upid, const char* name, tagActionType action,
                          const char* ports = "80") {
  OrvaneApplication application = makeApplication(upid, name, {makeItem(0, ports)});
  application.setAction(action);
  return application;
}

OrvaneAppMapping collect(std::initializer_list<OrvaneApplication> applications) {
  OrvaneAppMapping mapping;
  mapping.assign(applications);
  return mapping;
}

TEST(Comparison, TellsFacts) {
  const OrvaneApplication web = makeApplication(7, "Web", {makeItem(5, "80,10-20")});
  const auto with = [&](auto change) {
    OrvaneApplication application = web;
    change(application, application.getItems()[0]);
    return application;
  };
  struct Case {
    OrvaneApplication newer;
    std::string facts;
    bool inSections;
  };
  const Case cases[] = {
      {with([](auto& a, auto& item) {
         a.setID(9);
         a.setListIndex(9);
         item.setID(9);
         item.getIp().reserved[0] = 9;
       }),
       "", false},
      {with([](auto& a, auto&) { a.setName("\xFF\n'"); }), "  name: Web -> \xFF\n'\n", true},
      {with([](auto& a, auto&) { a.setName(""); }), "  name: Web -> \n", true},
      {with([](auto& a, auto&) { a.setType(-1); }), "  type: 1 -> -1\n", false},
      {with([](auto& a, auto&) { a.setAppCategory(1); }), "  category: 0 -> 1\n", false},
      {with([](auto& a, auto&) { a.setAction(4); }), "  action: 0 -> 4\n", false},
      {with([](auto&, auto& item) { item.setUniqueBlockNumber(0); }),
       "  5 block number: 4294967295 -> 0\n", false},
      {with([](auto&, auto& item) { item.setSelectorInfo(-2); }), "  5 selector info: 0 -> -2\n",
       false},
      {with([](auto&, auto& item) { item.setPorts("80,11-20"); }), "  5 range: 10-20 -> 11-20\n",
       false},
      {with([](auto&, auto& item) { item.setPorts("81,10-21"); }),
       "  5 ports: 80,10-20 -> none\n  5 ports: none -> 81,10-21\n", true},
      {with([](auto&, auto& item) { item.setPorts("80,90,8-20"); }),
       "  5 ports: none -> 90\n  5 range: 10-20 -> 8-20\n", true},
      {with([](auto& a, auto&) { a.addItem(makeItem(4)); }), "  4 item: none -> \n", true},
      {with([](auto& a, auto& item) { a.deleteItem(item); }), "  5 item: 10-20,80 -> none\n", true},
      {with([](auto&, auto& item) {
         item.getPorts().insert(0);
         item.getRanges().emplace(0, 0);
       }),
       "", false},
      {with([](auto& a, auto& item) {
         item.setUniqueBlockNumber(1);
         item.setPorts("81");
         a.addItem(makeItem(6, "1"));
         a.setAction(1);
         a.setName("Mail");
       }),
       "  name: Web -> Mail\n  action: 0 -> 1\n  5 ports: 80,10-20 -> none\n"
       "  5 ports: none -> 81\n  5 block number: 4294967295 -> 1\n  6 item: none -> 1\n",
       true},
  };
  const OrvaneAppMapping older = collect({web});
  for (const Case& test : cases) {
    const OrvaneAppMapping newer = collect({test.newer});
    const OrvaneComparison comparison(older, newer);
    EXPECT_EQ(plain::show(comparison), test.facts.empty() ? "" : "changed 7\n" + test.facts);
    if (comparison.empty()) continue;
    EXPECT_EQ(comparison[0].inSections, test.inSections) << test.facts;
    EXPECT_EQ(comparison[0].older, older.data());
    EXPECT_EQ(comparison[0].newer, newer.data());
    for (const OrvaneFact& fact : comparison[0].getFacts()) {
      EXPECT_EQ(fact.item != nullptr, fact.fact >= kOrvaneFactItem);
      if (fact.item == nullptr) continue;
      const OrvanePortMapping* const held = newer[0].getItems().find(*fact.item);
      EXPECT_TRUE(held == newer[0].getItems().end() || held == fact.item) << test.facts;
    }
  }
}

TEST(Comparison, MatchesApplications) {
  constexpr auto kNone = kOrvaneActionNone;
  struct Case {
    OrvaneAppMapping older;
    OrvaneAppMapping newer;
    std::string shown;
  };
  const Case cases[] = {
      {collect({}), collect({}), ""},
      {collect({makeApplication(1)}), collect({}), "removed 1\n"},
      {collect({}), collect({makeApplication(0)}), "added 0\n"},
      {collect({makeOne(2, "A", kNone), makeOne(1, "B", kNone)}),
       collect({makeOne(1, "B", kNone), makeOne(2, "A", kNone)}), ""},
      // The n-th by name and items with the n-th.
      {collect({makeOne(1, "B", kNone), makeOne(1, "A", kNone)}),
       collect({makeOne(1, "A", kNone), makeOne(1, "C", kNone), makeOne(1, "D", kNone)}),
       "changed 1\n  name: B -> C\nadded 1\n  0 item: none -> 80\n"},
      {collect({makeOne(kOrvaneNoUpid, "B", kNone), makeOne(kOrvaneNoUpid, "C", kNone)}),
       collect({makeOne(kOrvaneNoUpid, "C", kNone), makeOne(kOrvaneNoUpid, "A", kNone)}),
       "added 4294967295\n  0 item: none -> 80\nremoved 4294967295\n  0 item: 80 -> none\n"},
      {collect({makeOne(kOrvaneNoUpid, "A", kNone, "2"), makeOne(kOrvaneNoUpid, "A", kNone, "1")}),
       collect({makeOne(kOrvaneNoUpid, "A", kNone, "1"), makeOne(kOrvaneNoUpid, "A", kNone, "2")}),
       ""},
  };
  for (const Case& test : cases) {
    EXPECT_EQ(plain::show(OrvaneComparison(test.older, test.newer)), test.shown);
  }
}

// What change sections write of a difference is what the action codes let them write.
TEST(Comparison, TellsWhichSidesAreWritten) {
  constexpr auto kNone = kOrvaneActionNone;
  constexpr auto kAdd = kOrvaneActionAdd;
  constexpr auto kUpdate = kOrvaneActionUpdate;
  struct Case {
    std::initializer_list<tagActionType> older;  // none: no such side
    std::initializer_list<tagActionType> newer;
    bool writesOlder;
    bool writesNewer;
  };
  const Case cases[] = {
      {{kAdd}, {kAdd}, true, true},       {{kUpdate}, {kNone}, true, true},
      {{kNone}, {kAdd}, false, true},     {{kNone}, {kNone}, false, false},
      {{kNone}, {kUpdate}, false, false}, {{kAdd}, {}, true, false},
      {{kNone}, {}, false, false},        {{}, {kAdd}, false, true},
      {{}, {kUpdate}, false, false},      {{}, {kNone}, false, false},
  };
  for (const unsigned int upid : {7U, kOrvaneNoUpid}) {
    for (const Case& test : cases) {
      OrvaneAppMapping older;
      OrvaneAppMapping newer;
      for (const auto action : test.older) older.push_back(makeOne(upid, "A", action, "1"));
      for (const auto action : test.newer) newer.push_back(makeOne(upid, "A", action, "2"));
      const OrvaneComparison comparison(older, newer);
      ASSERT_EQ(comparison.size(), 1U);
      EXPECT_EQ(comparison[0].isNew(), upid == kOrvaneNoUpid);
      EXPECT_EQ(comparison[0].writesOlder(), test.writesOlder);
      EXPECT_EQ(comparison[0].writesNewer(), test.writesNewer);
      std::string to;
      comparison.appendChangeSections(to, true);
      EXPECT_EQ(to.find("PortRange=1\n") != std::string::npos, test.writesOlder);
      EXPECT_EQ(to.find("PortRange=2\n") != std::string::npos, test.writesNewer);
    }
  }
}

TEST(Comparison, WritesTheUpdatedSectionWhatsoeverTheOrder) {
  constexpr auto kAdd = kOrvaneActionAdd;
  const OrvaneApplication same = makeOne(3, "Same", kAdd);
  const OrvaneApplication gone = makeOne(4, "Gone", kOrvaneActionUpdate);
  OrvaneAppMapping older = collect({gone, makeOne(1, "Web", kAdd, "1"), same});
  OrvaneAppMapping newer = collect({makeOne(5, "Come", kAdd), same, makeOne(1, "Web", kAdd, "2")});
  OrvaneComparison comparison(older, newer);
  std::string text;
  comparison.appendChangeSections(text, true);
  OrvaneAppMapping olderInOrder = older;
  OrvaneAppMapping newerInOrder = newer;
  olderInOrder.sortByUpid();
  newerInOrder.sortByUpid();
  EXPECT_EQ(text, olderInOrder.getUpdatedSection(newerInOrder, true));
  EXPECT_EQ(std::ranges::count(text, ';'), 4);

  // Those that were erased are left out.
  comparison.erase(comparison.begin(), comparison.begin() + 2);
  text.clear();
  comparison.appendChangeSections(text, false);
  EXPECT_EQ(text, newer.front().getSection(false));

  // Of new applications those that stay are not withdrawn when others come.
  const OrvaneApplication b = makeOne(kOrvaneNoUpid, "B", kAdd, "1");
  older = collect({b});
  newer = collect({b, makeOne(kOrvaneNoUpid, "A", kAdd, "2")});
  text.clear();
  OrvaneComparison(older, newer).appendChangeSections(text, true);
  EXPECT_EQ(text, newer.back().getSection(true));
}

// By UPID, then name, then items; what is alike stays in its order.
TEST(Comparison, SortsByUpid) {
  const OrvaneApplication inOrder[] = {makeOne(0, "Z", kOrvaneActionNone),
                                       makeOne(7, "", kOrvaneActionNone, "9"),
                                       makeOne(7, "A", kOrvaneActionNone, ""),
                                       makeOne(7, "A", kOrvaneActionNone, "1,2"),
                                       makeOne(7, "A", kOrvaneActionNone, "1,2,4-5"),
                                       makeOne(7, "A", kOrvaneActionNone, "1,3"),
                                       makeOne(7, "A", kOrvaneActionNone, "1,3"),
                                       makeOne(7, "a", kOrvaneActionNone, ""),
                                       makeOne(0x80000000, "A", kOrvaneActionNone),
                                       makeOne(kOrvaneNoUpid, "A", kOrvaneActionNone)};
  OrvaneAppMapping expected;
  expected.assign(std::begin(inOrder), std::end(inOrder));
  OrvaneAppMapping mapping;
  for (const std::size_t place : {9U, 5U, 3U, 8U, 0U, 2U, 7U, 6U, 4U, 1U}) {
    mapping.addEx(inOrder[place]);
  }
  mapping.sortByUpid();
  EXPECT_EQ(show(mapping), show(expected));
}

}  // namespace
