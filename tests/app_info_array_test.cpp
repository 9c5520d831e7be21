#include "orvane/app_info_array.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <span>
#include <string>
#include <vector>

#include "plain_catalogue.h"

namespace {

using namespace std::string_literals;

OrvaneAppInfo makeEntry(unsigned int upid, const char* ports, unsigned int version = 0) {
  OrvaneAppInfo entry;
  entry.setUPID(upid);
  entry.setPorts(ports);
  entry.setVersion(version);
  return entry;
}

OrvaneApplication makeEntryApplication(unsigned int upid, const char* ports,
                                       unsigned int address = 0) {
  OrvanePortMapping item;
  item.setPorts(ports);
  item.setIp(address);
  OrvaneApplication application;
  application.setUpid(upid);
  application.setName(ports);
  application.addItem(item);
  return application;
}

TEST(AppInfoArray, FindsTheFirstEntry) {
  OrvaneAppInfoArray catalogue;
  EXPECT_EQ(catalogue.find(0), nullptr);
  for (const unsigned int upid : {5U, 7U, 5U}) catalogue.add(makeEntry(upid, "80", upid));
  EXPECT_EQ(catalogue.find(5), catalogue.begin());
  EXPECT_EQ(catalogue.find(7), catalogue.begin() + 1);
  EXPECT_EQ(catalogue.find(6), catalogue.end());
  for (int count = 0; count < 20; ++count) catalogue.add(*catalogue.begin());  // its own
  EXPECT_EQ(catalogue.size(), 23U);
  EXPECT_EQ(catalogue.getNumPortsUsed(), 23);
  EXPECT_EQ(catalogue.begin()[22].getVersion(), 5U);
}

TEST(AppInfoArray, AppendsRecords) {
  const std::string record = "1\0002\0003\00080\0004\0005\0006\0name\0"s;
  const std::span<const unsigned char> bytes(reinterpret_cast<const unsigned char*>(record.data()),
                                             record.size());
  OrvaneAppInfoArray catalogue;
  catalogue.add(bytes.data());
  EXPECT_TRUE(catalogue.addChecked(bytes));
  for (std::size_t length = 0; length < bytes.size(); ++length) {
    const std::vector<unsigned char> cut(bytes.data(), bytes.data() + length);
    EXPECT_FALSE(catalogue.addChecked(cut));
  }
  catalogue.add(bytes.last(1).data());
  EXPECT_TRUE(catalogue.addChecked(bytes.last(1)));
  catalogue.add(nullptr);
  ASSERT_EQ(catalogue.size(), 2U);
  EXPECT_STREQ(catalogue.begin()[1].getFQN(), "name");
}

TEST(AppInfoArray, AppendsSections) {
  const struct {
    const char* text;
    std::vector<unsigned int> upids;
  } cases[] = {
      {nullptr, {9}},
      {"UPID=1\n", {9}},
      {";\n;\n", {9, 0, 0}},
      {"UPID=1\n;\nupid=2\nUPID=3\nend\nother=4\n;\nUPID=5", {9, 1, 2, 0}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text != nullptr ? c.text : "null");
    OrvaneAppInfoArray catalogue;
    catalogue.add(makeEntry(9, "80,90-99"));
    catalogue.setSection(c.text);
    std::vector<unsigned int> upids;
    for (const OrvaneAppInfo& entry : catalogue) upids.push_back(entry.getUPID());
    EXPECT_EQ(upids, c.upids);
    const std::string text = catalogue.getSection(true);
    OrvaneAppInfoArray again;
    again.setSection(text.c_str());
    EXPECT_EQ(again.getSection(true), text);
  }
  OrvaneAppInfoArray own;
  own.add(OrvaneAppInfo());
  own.begin()->setFQN("UPID=1\n;\nUPID=2\n;\n");
  own.setSection(own.begin()->getFQN());  // which moves as entries are added
  EXPECT_EQ(own.find(2), own.begin() + 2);
}

TEST(AppInfoArray, ListsAndCountsPorts) {
  OrvaneAppInfoArray catalogue;
  std::vector<unsigned short> list = {1, 2};
  for (const char* ports :
       {"80,1000-1002", "", "80,443,66000-67000", "4294967290-5", "65534-2147483647"}) {
    catalogue.add(makeEntry(1, ports));
  }
  catalogue.begin()[2].setPortType(kOrvanePortTypeOther);
  catalogue.getPortList(list);
  EXPECT_EQ(list, (std::vector<unsigned short>{80, 1000, 1001, 1002, 80, 443, 65534, 65535}));
  EXPECT_STREQ(catalogue.getPorts(), "80,1000,1001,1002,80,443,65534,65535");
  EXPECT_EQ(catalogue.getNumPortsUsed(), (4 + 1003 + 12 + (0x80000000 - 65534)) % 65536);
  EXPECT_EQ(catalogue.getNumPortType(kOrvanePortTypeOther), 1003);

  OrvaneAppInfoArray ranges;
  for (const char* const range : {"0-101", "98-100", "99-100", "100-101", "95-1205", "9899-10100",
                                  "65433-65535", "0-65535"}) {
    ranges.add(makeEntry(1, range));
  }
  ranges.getPortList(list);
  std::string numbers;
  for (const unsigned short number : list) {
    numbers += (numbers.empty() ? "" : ",") + std::to_string(number);
  }
  EXPECT_EQ(ranges.getPorts(), numbers);
}

// The views of a list of UPIDs against their wording, UPID by UPID.
TEST(AppInfoArray, TreatsUpidsOneByOne) {
  std::mt19937 random(11);
  const auto below = [&](unsigned int limit) {
    return static_cast<unsigned int>(random() % limit);
  };
  const char* const ports[] = {"", "80", "443,80", "0-2,5-9", "80,4-9,81", "7-2,3", "x"};
  const auto listed = [&](unsigned int limit, unsigned int step) {
    std::vector<unsigned int> list(below(limit));
    for (unsigned int& upid : list) upid = below(limit + 1) * step;
    if (below(2) == 0) std::ranges::sort(list);
    return list;
  };
  for (int round = 0; round < 600; ++round) {
    // Few and many UPIDs, alike in their last bits and above 2^31 as well.
    const unsigned int limit = below(2) == 0 ? 6 : 60;
    const unsigned int step = std::array{1U, 64U, 0x4000000U, 0x29999999U}[below(4)];
    OrvaneAppInfoArray catalogue;
    OrvaneAppMapping mapping;
    for (const unsigned int upid : listed(limit, step)) {
      catalogue.add(makeEntry(upid, ports[below(7)], below(100)));
      catalogue.begin()->setReserved1(below(3));
    }
    for (const unsigned int upid : listed(limit, step)) {
      mapping.addEx(makeEntryApplication(upid, ports[below(7)], below(4) / 3));
    }
    const std::vector<unsigned int> upids = listed(limit, step);

    const plain::UpidViews views = plain::viewsOf(catalogue, mapping, upids, false);
    std::vector<unsigned int> result = upids;
    catalogue.getCommonPortList(result, result);
    EXPECT_EQ(result, views.known);
    catalogue.getUnknownPortList(upids, result);
    EXPECT_EQ(result, views.unknown);
    EXPECT_EQ(catalogue.getSection(upids, false), views.sections);
    EXPECT_EQ(catalogue.getMergedAppMappingSection(mapping, upids, false), views.merged);
    EXPECT_EQ(catalogue.getAppMappingSection(mapping, upids, false), views.whole);
  }
}

TEST(AppInfoArray, ReplacesTheTextsThatItRuns) {
  OrvaneAppInfo wide = makeEntry(1, "10001,10002,20000-30000,40000-50000");
  wide.setFQN(std::string(127, 'n').c_str());
  const char* const ports = wide.getPorts();
  const char* const section = wide.getSection(true);
  const char* const range = OrvanePortRange(40000, 50000).getRange();
  const char* const port = OrvanePort("60000").getPortStr();

  OrvaneAppInfoArray catalogue;
  catalogue.add(makeEntry(1, "1,2-3"));
  catalogue.add(makeEntry(2, "4,5"));
  catalogue.add(makeEntry(3, ""));
  OrvaneAppMapping mapping;
  mapping.addEx(makeEntryApplication(2, "6-7,8"));
  const auto texts = [&] {
    return std::string(section, 27) + "|" + ports + "|" + range + "|" + port;
  };
  const char* const whole = catalogue.getSection(true);
  EXPECT_EQ(texts(), "Version=0\nPortType=1\nUPID=3||2-3|5");
  catalogue.getMergedAppMappingSection(mapping, {3, 2}, true);
  EXPECT_EQ(texts(), "Version=0\nPortType=1\nUPID=2|4,5,8,6-7|6-7|8");
  catalogue.getSection({2, 1}, true);
  EXPECT_EQ(texts(), "Version=0\nPortType=1\nUPID=1|1,2-3|2-3|1");
  catalogue.getSection({}, true);
  catalogue.getPorts();
  catalogue.getMergedAppMappingSection(mapping, {7}, true);
  makeEntry(2, "4,5,6-7").getEnumPorts();
  EXPECT_EQ(texts(), "Version=0\nPortType=1\nUPID=1|1,2-3|2-3|5");
  EXPECT_EQ(catalogue.getAppMappingSection(mapping, {}, true), whole);
}

}  // namespace
