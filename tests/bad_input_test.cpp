#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "orvane/orvane.h"
#include "sample.h"

namespace {

TEST(BadInput, NumbersAreReadModulo2To32) {
  const struct {
    std::string text;
    unsigned int number;
  } cases[] = {{"4294967296", 0},
               {"-4294967295", 1},
               {"2147483648", 0x80000000},
               {"99999999999999999999", 1661992959},
               {"-99999999999999999999", 2632974337},
               {"1" + std::string(1 << 20, '0') + "7", 7},
               {"+-1", 0},
               {"0x10", 0},
               {"\xA0", 0}};
  for (const auto& c : cases) {
    OrvanePortMapping item;
    OrvaneApplication application;
    item.setIp(c.text.c_str());
    item.setUniqueBlockNumber(c.text.c_str());
    item.setSelectorInfo(c.text.c_str());
    application.setSection(("UPID=" + c.text + "\n;").c_str());
    application.setType(c.text.c_str());
    for (const unsigned int read :
         {item.getIpAddress(), item.getUniqueBlockNumber(), application.getUpid(),
          static_cast<unsigned int>(item.getSelectorInfo()),
          static_cast<unsigned int>(application.getType())}) {
      EXPECT_EQ(read, c.number) << c.text.substr(0, 40);
    }
  }
}

TEST(BadInput, OddTextsAreReadWhole) {
  std::string ranges;
  for (unsigned int number = 3; number <= 150000; number += 3) {
    ranges += std::to_string(number) + "-" + std::to_string(number + 1) + ",";
  }
  const struct {
    std::string text;
    std::size_t ports, ranges;
  } cases[] = {{std::string(1 << 20, 'x'), 0, 0},
               {std::string(1 << 20, '9'), 0, 0},
               {std::string(1 << 20, ','), 0, 0},
               {std::string(1 << 20, ' ') + "80", 1, 0},
               {std::string(10000, '-'), 0, 0},
               {"80" + std::string(10000, '-') + "90", 0, 1},
               {ranges, 0, 50000},
               {"\x01\x7F\x80\xFF\t\v\f\r", 0, 0}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text.substr(0, 40));
    const OrvanePortMapping item = makeItem(0, c.text.c_str());
    EXPECT_EQ(item.getPorts().size(), c.ports);
    EXPECT_EQ(item.getRanges().size(), c.ranges);
    const OrvaneIni ini((c.text + "=" + c.text + "\n" + c.text).c_str());
    EXPECT_EQ(ini.getSection(0, false), c.text + "=" + c.text + "\n");
    OrvaneAppMapping mapping;
    mapping.setSection(("ApplName=" + c.text + "\nPortRange=" + c.text + "\n" + c.text).c_str());
    ASSERT_EQ(mapping.size(), 1U);
    EXPECT_EQ(mapping[0].getName(), c.text.substr(0, 31));
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
  const auto itemRecord = makeRecord("80,443|3232235786|7|1");
  const auto record = makeRecord("80,443|3232235786|1|1|7|Web|12|3");
  OrvanePortMapping item = makeItem(1, "5");
  OrvaneApplication application = makeApplication(7, "Old", {item});
  OrvaneAppMapping mapping;
  mapping.addEx(application);
  const std::string before = show(item) + show(application) + show(mapping);
  // Each prefix has memory of its own, so that a read beyond its end is seen.
  for (std::vector<unsigned char> cut(record); !cut.empty();) {
    cut = {cut.begin(), cut.end() - 1};
    EXPECT_FALSE(application.setValuesChecked(cut)) << cut.size();
    EXPECT_FALSE(mapping.addChecked(cut)) << cut.size();
  }
  for (std::vector<unsigned char> cut(itemRecord); !cut.empty();) {
    cut = {cut.begin(), cut.end() - 1};
    EXPECT_FALSE(item.setValuesChecked(cut)) << cut.size();
  }
  // Only the first byte of a record without a port list counts, and none after the record.
  EXPECT_TRUE(application.setValuesChecked(std::vector<unsigned char>{0}));
  EXPECT_TRUE(mapping.addChecked(std::vector<unsigned char>{0, 'x'}));
  EXPECT_TRUE(item.setValuesChecked(std::vector<unsigned char>{0, 'x'}));
  EXPECT_EQ(show(item) + show(application) + show(mapping), before);
  EXPECT_TRUE(item.setValuesChecked(record));
  EXPECT_EQ(item.getSelectorInfo(), 1);

  const std::string text = mapping.getSection(true);
  for (std::size_t room = 0; room <= text.size() + 2; ++room) {
    std::vector<char> buffer(room, '#');
    const auto written = mapping.getSectionChecked(buffer);
    EXPECT_EQ(written.value_or(text.size() + 1), text.size() + (room <= text.size() ? 1 : 0));
    EXPECT_EQ(std::count(buffer.begin(), buffer.end(), '#'),
              written ? room - text.size() - 1 : room);
  }
}

}  // namespace
