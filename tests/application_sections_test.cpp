#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "orvane/application.h"
#include "plain_collection.h"
#include "sample.h"

namespace {

// "IPv4:Action" of each group, then "#" when it has a GroupID and ";" when it is closed.
std::string outlineOf(const std::string& text) {
  std::string outline;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("IPv4=")) outline += " " + line.substr(5) + ":";
    if (line.starts_with("Action=")) outline += line.substr(7);
    if (line.starts_with("GroupID=")) outline += "#";
    if (line == ";") outline += line;
  }
  return outline;
}

TEST(ApplicationSections, AreWritten) {
  OrvaneApplication application;
  const std::string section =
      "PortRange=1-2,80,443\nIPv4=3232235786\nAction=5\nSelectorType=-2147483648\nUPID=7000\n"
      "ApplName=Web = x\nUniqueBlockNumber=12\nSelectorTypeInfo=-3\nGroupID=-5\n;\n";
  application.setSection(section.c_str());
  EXPECT_EQ(application.getSection(true), section);
  EXPECT_EQ(application.getSection(false), section.substr(0, section.find("GroupID")));

  const OrvaneApplication older = makeApplication(1, "", {makeItem(9, "1"), makeItem(0, "2")});
  const OrvaneApplication newer = makeApplication(2, "", {makeItem(9, "3"), makeItem(5, "8")});
  const OrvaneApplication empty = makeApplication(1);
  EXPECT_EQ(outlineOf(older.getSection(true)), " :0#; 9:0#;");
  EXPECT_EQ(outlineOf(older.getInitialSection()), " :5 9:5");
  EXPECT_EQ(outlineOf(older.getAddNewSection(false)), " :1");
  EXPECT_EQ(outlineOf(older.getAddNewSection(true)), " :1#;");
  EXPECT_EQ(outlineOf(older.getDeleteSection(false)), " :3 9:2");
  EXPECT_EQ(outlineOf(older.getDeleteSection(true)), " :3#; 9:2#;");
  EXPECT_EQ(outlineOf(older.getUpdatedSection(newer, false)), " :3 9:3 9:4");
  EXPECT_EQ(outlineOf(older.getUpdatedSection(newer, true)), " :3; 9:3; 9:4#;");
  for (const char* text : {empty.getSection(true), empty.getInitialSection(),
                           empty.getAddNewSection(true), empty.getDeleteSection(true)}) {
    EXPECT_STREQ(text, "");
  }
}

TEST(ApplicationSections, AreRead) {
  const std::string item = "  | 0 0 4294967295 0 -1 -1\n";
  const std::pair<const char*, std::string> cases[] = {
      {"PortRange=80\nIPv4=1\nUPID=5", "Old 9 1 2 1 -1 4\n"},
      {"upid=5\nUPID=6\n;\n", "Old 5 1 2 1 -1 4\n" + item},
      {";", "Old 9 1 2 1 -1 4\n" + item},
      {"PortRange=80\nIPv4=1\nAction=4\n;\n\nPortRange=443\nIPv4=2\nAction=3\nend",
       "Old 9 1 3 1 -1 4\n  80| 1 0 4294967295 0 -1 -1\n  443| 2 0 4294967295 0 -1 -1\n"},
      {"ApplName=Web\r\n\r\nApplName=Mail\r\n", "Web\r 9 1 2 1 -1 4\n" + item},
      {"GroupID=-3\nSelectorType=8\nUniqueBlockNumber=-1\n Action=7\nApplName=a=b\n=\n;\n",
       "a=b 9 8 2 1 -1 -3\n" + item},
      {"GROUPID=7\nGroupID=8\nSELECTORTYPEINFO=2\nIpV4=0.0.0.3\nactioN=-1\nPORTRANGE=1-2\n;\n"
       "IPv4=3\nPortRange=5,2-2\nUPID=\nSelectorTypeInfo=-9\nApplName=\n;\nUPID=1\n",
       " 0 1 -1 0 -1 7\n  5|1-2 3 0 4294967295 2 -1 -1\n"}};
  for (const auto& [text, shown] : cases) {
    OrvaneApplication application = makeApplication(9, "Old");
    application.setAction("2");
    application.setAppCategory("1");
    application.setSection(text);
    EXPECT_EQ(show(application), shown) << text;
  }
  OrvaneApplication own;
  own.setName("ApplName=A\n;\nUPID=5\n;\n");
  own.setSection(own.getName());  // which changes with the first group
  EXPECT_EQ(own.getUpid(), 5);
}

// The updated section, worded step by step.
std::string plainUpdatedSection(const OrvaneApplication& older, const OrvaneApplication& newer,
                                bool close) {
  std::string text;
  const auto writeGroup = [&](OrvanePortMapping item, unsigned short port, int action) {
    if (port != 0) {
      item.setRanges({});
      item.replacePorts({port});
    }
    OrvaneApplication single(older);
    single.getItems() = {item};
    single.setAction(static_cast<tagActionType>(action));
    text += single.getSection(false);
    if (close && action == 4) text += "GroupID=" + std::to_string(older.getID()) + "\n";
    if (close) text += ";\n";
  };
  const OrvanePortMappingLess less;
  const auto gone = plain::missingFrom<OrvanePortMapping>(newer.getItems(), older.getItems(), less);
  const auto added =
      plain::missingFrom<OrvanePortMapping>(older.getItems(), newer.getItems(), less);
  for (const OrvanePortMapping& item : gone) {
    if (item.getPorts().empty()) continue;
    const auto partner = std::find_if(added.begin(), added.end(),
                                      [&](const auto& other) { return item.equalNotNull(other); });
    if (partner == added.end()) {
      writeGroup(item, 0, 3);
      continue;
    }
    for (const unsigned short port : item.getPorts()) {
      if (port != 0 && !partner->getPorts().contains(port)) writeGroup(item, port, 3);
    }
    for (const unsigned short port : partner->getPorts()) {
      if (port != 0 && !item.getPorts().contains(port)) writeGroup(item, port, 4);
    }
  }
  return text;
}

TEST(ApplicationSections, DescribeUpdates) {
  Random random(5);
  int written = 0;
  for (int round = 0; round < 3000; ++round) {
    OrvaneApplication older = random.application();
    OrvaneApplication newer = random.below(2) == 0 ? random.application() : older;
    newer.update(random.application());
    for (OrvanePortMapping& item : older.getItems()) {
      if (random.below(3) == 0) item.addPorts({static_cast<unsigned short>(random.below(2))});
    }
    const bool close = random.below(2) == 0;
    const std::string text = older.getUpdatedSection(newer, close);
    ASSERT_EQ(text, plainUpdatedSection(older, newer, close)) << show(older) << show(newer);
    written += text.empty() ? 0 : 1;
  }
  EXPECT_GT(written, 1000);
}

}  // namespace
