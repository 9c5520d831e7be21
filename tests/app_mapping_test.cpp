#include "orvane/app_mapping.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <string>

#include "orvane/comparison.h"
#include "plain_collection.h"
#include "sample.h"

namespace {

// Applications with these UPIDs (-1: none), with identifiers from 100 on.
OrvaneAppMapping makeMapping(std::initializer_list<int> upids) {
  OrvaneAppMapping mapping;
  for (const int upid : upids) {
    OrvaneApplication application = makeApplication(static_cast<unsigned int>(upid));
    application.setID(100 + static_cast<int>(mapping.size()));
    mapping.addEx(application);
  }
  return mapping;
}

// UPID, identifier and number of items of each application: "7/100:2".
std::string keysOf(const OrvaneAppMapping& mapping) {
  std::ostringstream out;
  for (const OrvaneApplication& application : mapping) {
    out << ' ' << static_cast<int>(application.getUpid()) << '/' << application.getID() << ':'
        << application.getItems().size();
  }
  return out.str();
}

TEST(AppMapping, AddsByKey) {
  OrvaneAppMapping mapping = makeMapping({7});
  OrvaneApplication fresh = makeApplication(kOrvaneNoUpid, "New", {makeItem(3)});
  for (const int id : {4, 100, 4}) {  // 100 is the identifier of an application that has a UPID
    fresh.setID(id);
    mapping.add(fresh);
  }
  mapping.update(makeApplication(7, "Mail", {makeItem(1, "25")}));
  const OrvaneApplication* const appended = mapping.addEx(mapping[0]);
  EXPECT_EQ(appended, &mapping.back());
  mapping.add(mapping[1]);
  EXPECT_EQ(keysOf(mapping), " 7/100:2 -1/4:1 7/100:2");
  EXPECT_STREQ(mapping[0].getName(), "");
}

TEST(AppMapping, FindsCountsAndSorts) {
  OrvaneAppMapping mapping = makeMapping({-1, 7, 8, 7});
  mapping[2].setAppCategory("1");
  mapping[3].setType("2");
  for (OrvaneApplication& application : mapping) {
    application.setName("Web");
    application.update(makeApplication(1, "", {makeItem(1), makeItem(2)}));
  }
  const auto type1 = kOrvaneSelectorTypeDefault;
  const auto type2 = static_cast<tagSelectorType>(2);
  const OrvaneAppMapping& constant = mapping;
  auto first = mapping.begin();
  EXPECT_TRUE(mapping.find(7) == &mapping[1] && constant.find(kOrvaneNoUpid) == constant.data());
  EXPECT_TRUE(mapping.find(9) == mapping.end());
  EXPECT_EQ(constant.findId(103), &constant[3]);
  EXPECT_TRUE(constant.end() == constant.findId(7));
  EXPECT_EQ(mapping.find("Web", kOrvaneCategory0, type1), mapping.data());
  EXPECT_EQ(mapping.find("Web", kOrvaneCategory1, type1), &mapping[2]);
  EXPECT_EQ(mapping.find("Web", kOrvaneCategory0, type2), &mapping[3]);
  for (const char* name : {"web", "Web ", "We", ""}) {
    EXPECT_TRUE(constant.find(name, kOrvaneCategory0, type1) == mapping.end()) << name;
  }
  EXPECT_EQ(mapping.getCount(type1) * 10 + mapping.getCount(type2), 62);
  for (const char* name : {"web", "\xC3", "Mail", ""}) (first++)->setName(name);
  mapping.sortByName();
  EXPECT_EQ(keysOf(mapping), " 7/103:2 8/102:2 -1/100:2 7/101:2");
}

TEST(AppMapping, RemovesAndMarksDeleted) {
  OrvaneAppMapping mapping = makeMapping({7, -1, 8, 7, -1});
  mapping.setDeleted(&mapping[1]);
  mapping.setDeleted(mapping.data());
  EXPECT_EQ(keysOf(mapping), " 7/100:0 8/102:0 7/103:0 -1/104:0");
  EXPECT_EQ(mapping[0].getAction(), kOrvaneActionDelete);
  mapping.remove(&mapping[1]);
  mapping.remove(makeApplication(7));
  EXPECT_EQ(keysOf(mapping), " 7/103:0 -1/104:0");
  mapping.remove(mapping[1]);  // by its identifier
  mapping.remove(makeApplication(kOrvaneNoUpid));
  mapping.remove(mapping.find(5));
  mapping.removeNew(mapping);
  mapping.setDeleted(mapping.find(5));
  EXPECT_EQ(keysOf(mapping), " 7/103:0");
}

TEST(AppMapping, ReadsRecords) {
  OrvaneAppMapping mapping = makeMapping({7, 8, 9});
  for (const char* record : {"443|2|1|2|7|Mail|4|3", "443|2|1|2||Mail|4|3", "|2|1|2|8|Mail|4|3",
                             "444|2|1|2|7|Mail|5|3"}) {
    mapping.add(makeRecord(record).data());
  }
  EXPECT_EQ(show(mapping),
            " 8 1 0 0 -1 101\n 9 1 0 0 -1 102\nMail 0 2 1 0 -1 0\n  443| 2 0 4 3 -1 -1\n"
            " 7 1 0 0 -1 100\n  443,444| 2 0 4 3 -1 -1\n");
}

// As many as sorting does not treat one by one.
TEST(AppMapping, KeepsTheOrderOfWhatIsAlike) {
  OrvaneAppMapping mapping;
  OrvanePortMapping item;
  std::string ranges;
  std::string section;
  for (int i = 0; i < 40; ++i) {
    mapping.addEx(makeApplication(7, "A"))->setID(i);
    item.getRanges().emplace(9, 100 + i);
    ranges += ",9-" + std::to_string(100 + i);
    section += "IPv4=1\nUniqueBlockNumber=" + std::to_string(i) + "\n;\n";
  }
  mapping.addEx(makeApplication(1))->setID(-1);
  for (const bool byName : {true, false, true}) {
    byName ? mapping.sortByName() : mapping.sortByUpid();
    for (int i = 0; i < 41; ++i) EXPECT_EQ(mapping[static_cast<std::size_t>(i)].getID(), i - 1);
    std::rotate(mapping.begin(), mapping.begin() + 1, mapping.end());
  }
  item.getRanges().emplace(5, 200);
  EXPECT_EQ(item.getPortsAsString(), "5-200" + ranges);
  EXPECT_EQ(OrvanePortMapping::sortPorts((ranges + ",5-200").c_str()), "5-200" + ranges);
  OrvaneApplication read;
  read.setSection((section + "IPv4=0\n;\n").c_str());
  EXPECT_EQ(read.getItems().back().getUniqueBlockNumber(), 0U);
}

// Callers write into the field, and may leave anything behind the NUL.
TEST(AppMapping, EndsNamesAtTheirNul) {
  for (const std::string name : {"Web", ""}) {
    OrvaneAppMapping one;
    one.addEx(makeApplication(7, name.c_str(), {makeItem(1, "80")}))->setAction(kOrvaneActionAdd);
    const OrvaneAppMapping other = one;
    one[0].getName()[name.size() + 1] = 'x';
    EXPECT_STREQ(one.getUpdatedSection(other, true), "");
    EXPECT_TRUE(OrvaneComparison(one, other).empty());
    EXPECT_TRUE(!one[0].lexItemsLess(other[0]) && !other[0].lexItemsLess(one[0]));
    EXPECT_EQ(one.find(name.c_str(), kOrvaneCategory0, kOrvaneSelectorTypeDefault), one.data());
    const std::string section = one.getSection(true);
    EXPECT_EQ(other.getSection(true), section);
  }
}

TEST(AppMapping, TakesNewApplicationsOverAndPassesUpidsOn) {
  Random random(6);
  for (int round = 0; round < 3000; ++round) {
    OrvaneAppMapping mapping = random.mapping();
    OrvaneAppMapping other = random.mapping();
    OrvaneAppMapping plain(mapping);
    OrvaneAppMapping plainOther(other);
    const std::string before = show(mapping) + "and\n" + show(other);
    mapping.removeNew(mapping);  // nothing is new to itself
    if (random.below(2) == 0) {
      mapping.updateNew(other);
      plain::updateNew(plain, plainOther);
    } else {
      mapping.removeNew(other);
      plain::removeNew(plain, plainOther);
    }
    ASSERT_EQ(show(other), show(plainOther)) << before;
    ASSERT_EQ(show(mapping), show(plain)) << before;
  }
}

}  // namespace
