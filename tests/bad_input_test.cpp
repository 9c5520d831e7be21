#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "orvane/orvane.h"
#include "sample.h"

namespace {

TEST(BadInput, NumbersAreReadModulo2To32) {
  const std::pair<std::string, unsigned int> cases[] = {{"4294967296", 0},
                                                        {"99999999999999999999", 1661992959},
                                                        {"-99999999999999999999", 2632974337},
                                                        {"0x10", 0},
                                                        {"2147483648", 0x80000000},
                                                        {"1" + std::string(1 << 20, '0') + "7", 7},
                                                        {"+-1", 0},
                                                        {"-4294967295", 1},
                                                        {"\xA0", 0}};
  for (const auto& [digits, number] : cases) {
    const char* const text = digits.c_str();
    OrvanePortMapping item;
    OrvaneApplication application;
    item.setIp(text);
    item.setUniqueBlockNumber(text);
    item.setSelectorInfo(text);
    application.setSection(("UPID=" + digits + "\n;").c_str());
    application.setType(text);
    for (const unsigned int read :
         {item.getIpAddress(), item.getUniqueBlockNumber(), application.getUpid(),
          static_cast<unsigned int>(item.getSelectorInfo()),
          static_cast<unsigned int>(application.getType())}) {
      EXPECT_EQ(read, number) << digits.substr(0, 40);
    }
  }
}

TEST(BadInput, OddTextsAreReadWhole) {
  std::string ranges;
  for (unsigned int number = 3; number <= 150000; number += 3) {
    ranges += std::to_string(number) + "-" + std::to_string(number + 1) + ",";
  }
  const std::tuple<std::string, std::size_t, std::size_t> cases[] = {
      {std::string(1 << 20, 'x'), 0, 0},
      {std::string(1 << 20, '9'), 0, 0},
      {std::string(1 << 20, ','), 0, 0},
      {std::string(1 << 20, ' ') + "80", 1, 0},
      {std::string(10000, '-'), 0, 0},
      {"80" + std::string(10000, '-') + "90", 0, 1},
      {ranges, 0, 50000},
      {"\x01\x7F\x80\xFF\t\v\f\r", 0, 0}};
  for (const auto& [text, ports, rangeCount] : cases) {
    SCOPED_TRACE(text.substr(0, 40));
    const OrvanePortMapping item = makeItem(0, text.c_str());
    EXPECT_TRUE(item.getPorts().size() == ports && item.getRanges().size() == rangeCount);
    const std::string pair = std::string(text).append("=").append(text).append("\n");
    EXPECT_EQ(OrvaneIni((pair + text).c_str()).getSection(0, false), pair);
    OrvaneAppMapping mapping;
    mapping.setSection(
        ("ApplName=" + std::string(text).append("\nPortRange=").append(text) + "\n;").c_str());
    ASSERT_EQ(mapping.size(), 1U);
    EXPECT_EQ(mapping[0].getName(), text.substr(0, 31));
    EXPECT_EQ(showSets(mapping[0].getItems()[0]), showSets(item));
  }
}

TEST(BadInput, TextsEndAtTheirNulAndNullIsIgnored) {
  const char* const text = nullptr;
  OrvanePort port("80");
  port.setPort(text);
  EXPECT_EQ(port, OrvanePort("80"));
  EXPECT_EQ(OrvanePort(text), OrvanePort());
  EXPECT_EQ(OrvanePortRange(text), OrvanePortRange());
  EXPECT_FALSE(OrvanePortRange::isRange(text));
  EXPECT_STREQ(OrvanePortMapping::sortPorts(text), "");
  EXPECT_STREQ(OrvanePortMapping::parse(kOrvaneParsePorts, text), "");

  OrvaneAppMapping mapping;
  mapping.addEx(makeApplication(7, "Web", {makeItem(1, "80,5-6", 3)}));
  const std::string before = show(mapping);
  OrvaneApplication& application = mapping[0];
  OrvanePortMapping& item = application.getItems()[0];
  item.setPorts(text);
  item.setIp(text);
  item.setUniqueBlockNumber(text);
  item.setSelectorInfo(text);
  item.setValues(nullptr);
  application.setUpid(text);
  application.setType(text);
  application.setAction(text);
  application.setAppCategory(text);
  application.setName(text);
  application.setValues(nullptr);
  application.setSection(text);
  application.setSection("UPID=\0005\n;\n");  // ends before the group does
  mapping.add(nullptr);
  mapping.setDeleted(nullptr);
  mapping.remove(nullptr);
  EXPECT_TRUE(mapping.find(text, kOrvaneCategory0, kOrvaneSelectorTypeDefault) == mapping.end());
  EXPECT_EQ(mapping.getSection(static_cast<char*>(nullptr)), 0U);
  EXPECT_EQ(show(mapping), before);
  item.setNewPorts(text);
  EXPECT_EQ(showSets(item), "|5-6");
  item.setPorts(std::string("80\0,443", 7));
  EXPECT_EQ(showSets(item), "80|");
}

TEST(BadInput, CheckedOperationsRefuseWhatIsCutShort) {
  const auto record = makeRecord("80,443|3232235786|1|1|7|Web|12|3");
  const std::size_t itemLength = makeRecord("80,443|3232235786|1|1").size();
  const OrvanePortMapping item = makeItem(1, "5");
  OrvaneAppMapping mapping;
  mapping.addEx(makeApplication(7, "Old", {item}));
  const std::string before = show(mapping);
  for (std::size_t length = 0; length < record.size(); ++length) {
    // In memory of its own, so that a read beyond the end is seen.
    const std::vector<unsigned char> cut(record.data(), record.data() + length);
    EXPECT_FALSE(mapping[0].setValuesChecked(cut) || mapping.addChecked(cut)) << length;
    OrvanePortMapping read(item);
    EXPECT_EQ(read.setValuesChecked(cut), length >= itemLength) << length;
    EXPECT_EQ(show(read) == show(item), length < itemLength) << length;
  }
  // Only the first byte of a record without a port list counts.
  const std::vector<unsigned char> ignored = {0};
  EXPECT_TRUE(mapping[0].setValuesChecked(ignored) && mapping.addChecked(ignored));
  EXPECT_EQ(show(mapping), before);
  EXPECT_TRUE(mapping[0].setValuesChecked(record) && mapping.addChecked(record));

  const std::string text = mapping.getSection(true);
  for (std::size_t room = 0; room <= text.size() + 2; ++room) {
    std::vector<char> buffer(room, '#');
    const auto written = mapping.getSectionChecked(buffer);
    EXPECT_EQ(written.value_or(0), room > text.size() ? text.size() : 0) << room;
    const auto kept = std::count(buffer.begin(), buffer.end(), '#');
    EXPECT_EQ(static_cast<std::size_t>(kept), written ? room - text.size() - 1 : room) << room;
  }
}

}  // namespace
