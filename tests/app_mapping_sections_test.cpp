#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <string>
#include <vector>

#include "orvane/app_mapping.h"
#include "plain_collection.h"
#include "sample.h"

namespace {

TEST(AppMappingSections, AreThoseOfTheApplications) {
  Random random(7);
  for (int round = 0; round < 200; ++round) {
    const OrvaneAppMapping mapping = random.mapping();
    const bool close = random.below(2) == 0;
    std::string sections;
    std::string closed;
    std::string initial;
    std::string addNew;
    for (const OrvaneApplication& application : mapping) {
      sections += application.getSection(close);
      closed += application.getSection(true);
      initial += application.getInitialSection();
      addNew += application.getAddNewSection(close);
    }
    ASSERT_EQ(mapping.getSection(close), sections);
    ASSERT_EQ(mapping.getInitialSection(), initial);
    ASSERT_EQ(mapping.getAddNewSection(close), addNew);
    std::vector<char> buffer(closed.size() + 2, '#');
    ASSERT_EQ(mapping.getSection(buffer.data()), closed.size());
    ASSERT_EQ(std::string(buffer.begin(), buffer.end()), closed + '\0' + '#');
  }
}

TEST(AppMappingSections, AreRead) {
  for (const auto& [text, shown] :
       {std::pair("UPID=9\nPortRange=80", ""), std::pair<const char*, const char*>(nullptr, ""),
        std::pair(";", " 4294967295 1 0 0 -1 0\n  | 0 0 4294967295 0 -1 -1\n"),
        std::pair("upid=9\nApplName=Web\nAction=1\nIPv4=1\n;\n"
                  "UPID=9\nApplName=Mail\nAction=3\nGroupID=3\nSelectorTypeInfo=2\nIPv4=2\n;\n",
                  "Web 9 1 1 0 -1 0\n  | 1 0 4294967295 0 -1 -1\n"
                  "  | 2 0 4294967295 2 -1 -1\n")}) {
    OrvaneAppMapping mapping;
    mapping.addEx(makeApplication(9, "Old", {makeItem(1, "7")}));
    mapping.setSection(text);
    EXPECT_EQ(show(mapping), shown);
  }
  OrvaneAppMapping mapping;
  mapping.addEx(makeApplication(9, "UPID=1\n;\nUPID=2\n;\nUPID=3\n;\n"));
  mapping.setSection(mapping.front().getName());  // which goes with its application
  EXPECT_EQ(mapping.size(), 3);
  std::string text;
  while (text.size() < 80000) text += ";\n";
  mapping.setSection(text.c_str());
  EXPECT_EQ(mapping.size(), 40000);  // more than the identifiers that one second has
  text.clear();
  for (int id = 0; id < 40; ++id) {  // tables of any fill, and one application without a key
    text += "GroupID=" + std::to_string(id) + "\n;\n";
    mapping.setSection((text + ";\n" + text).c_str());
    ASSERT_EQ(mapping.size(), static_cast<std::size_t>(id) + 2);
  }
  // An identifier that is drawn is none of those before it, whichever it is.
  const std::time_t lowest = std::time(nullptr) + 2000;
  for (std::time_t drawn = 0; drawn < 0x8000; ++drawn) {
    for (int second = 0; second < 3; ++second) {
      text += "GroupID=" + std::to_string(lowest + drawn * 1024 + second) + "\n;\n";
    }
  }
  mapping.setSection((text + ";\n").c_str());
  EXPECT_EQ(mapping.findId(mapping.back().getID()), &mapping.back());
}

TEST(AppMappingSections, AreReadLikeTheirGroupsOneByOne) {
  Random random(8);
  for (int round = 0; round < 2000; ++round) {
    std::string text;
    OrvaneAppMapping groupByGroup;
    const bool many = round % 200 == 0;  // items of two applications
    for (unsigned int groups = many ? 400 : random.below(8); groups > 0; --groups) {
      std::string group = random.group();
      if (many) {
        group.insert(0, "UPID=" + std::to_string(random.below(2)) +
                            "\nIPv4=" + std::to_string(random.below(500)) + "\n");
      }
      OrvaneApplication application;
      application.setSection(group.c_str());
      groupByGroup.add(application);
      text += group + (groups > 1 ? "\n" : random.below(2) == 0 ? "" : "\n\nUPID=1\n");
    }
    OrvaneAppMapping atOnce = random.mapping();
    atOnce.setSection(text.c_str());
    ASSERT_EQ(show(atOnce), show(groupByGroup)) << text;
    if (!many) continue;
    for (const OrvanePortMapping& item : atOnce[1].getItems()) groupByGroup[0].addItem(item);
    atOnce[0].update(atOnce[1]);
    ASSERT_EQ(show(atOnce), show(groupByGroup)) << text;
  }
}

TEST(AppMappingSections, DescribeUpdates) {
  Random random(9);
  int written = 0;
  for (int round = 0; round < 3000; ++round) {
    OrvaneAppMapping older = random.mapping();
    OrvaneAppMapping newer = random.below(2) == 0 ? random.mapping() : older;
    for (unsigned int count = random.below(3); count > 0; --count) {
      newer.addEx(random.application());
      older.add(random.application());
    }
    if (random.below(3) != 0) {  // as one does who wants the difference of two sets
      std::stable_sort(older.begin(), older.end());
      std::stable_sort(newer.begin(), newer.end());
    }
    const std::string before = show(older) + "to\n" + show(newer);
    const bool close = random.below(2) == 0;
    const std::string text = older.getUpdatedSection(newer, close);
    ASSERT_EQ(text, plain::updatedSection(older, newer, close)) << before;
    ASSERT_EQ(show(older) + "to\n" + show(newer), before);
    written += text.empty() ? 0 : 1;
  }
  EXPECT_GT(written, 1000);
}

}  // namespace
