#include "orvane/app_info.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace std::string_literals;

// A section text of these values, in the order of the fields, "|" between them.
std::string sectionOf(const std::string& values) {
  std::istringstream rest(values);
  std::string text;
  for (const char* key :
       {"Version", "PortType", "UPID", "PortRange", "Reserved1", "Reserved2", "Reserved3", "FQN"}) {
    std::string value;
    std::getline(rest, value, '|');
    text += key + "="s + value + "\n";
  }
  return text;
}

const char kOld[] = "9|8|7|6,60-61|5|4|3|old";

OrvaneAppInfo makeOld() {
  OrvaneAppInfo entry;
  entry.setSection((sectionOf(kOld) + ";\n").c_str());
  return entry;
}

TEST(AppInfo, ReadsAndWritesPorts) {
  const struct {
    const char *text, *ports, *numbers;
    int count, used;
  } cases[] = {
      {"", "", "", 0, 0},
      {",80,,443,", "80,443", "80,443", 2, 2},
      {"7-9,80,3-4,80", "80,3-4,7-9", "80,3,4,7,8,9", 3, 6},
      {"5-8,6-8", "5-8", "5,6,7,8", 1, 4},
      {" 80 ,x", "80,0-0", "80,0", 2, 2},
      {"0-2,4-4,-", "0-0,0-2,4-4", "0,0,1,2,4", 3, 5},
      {"-80,65535,65536", "65535,80-80,65536-65536", "65535,80", 3, 3},
      {"65534-70000,3", "3,65534-70000", "3,65534,65535", 2, 4468},
      {"5-4294967290,7", "7,4294967290-5", "7", 2, 13},
      {"80-,70000-,7--9", "80,7-9,70000-70000", "80,7,8,9", 3, 5},
      {"1-2,2147483647-70000", "1-2,70000-2147483647", "1,2", 2, 61074},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    OrvaneAppInfo entry = makeOld();
    entry.setPorts(c.text);
    EXPECT_STREQ(entry.getPorts(), c.ports);
    EXPECT_STREQ(entry.getEnumPorts(), c.numbers);
    EXPECT_EQ(entry.getPortCount(), c.count);
    EXPECT_EQ(entry.getNumPortsUsed(), c.used);
  }
}

TEST(AppInfo, CutsNames) {
  OrvaneAppInfo entry;
  for (const std::size_t length : {200U, 128U, 127U, 0U}) {
    entry.setFQN(std::string(length, 'n').c_str());
    EXPECT_EQ(entry.getFQN(), std::string(std::min<std::size_t>(length, 127), 'n'));
  }
  entry.setFQN("www.example.net");
  entry.setFQN(entry.getFQN() + 4);  // overlapping
  EXPECT_STREQ(entry.getFQN(), "example.net");
  std::fill_n(entry.getFQN(), 128, 'x');  // a caller's, without a NUL
  EXPECT_EQ(entry.getSection(false), sectionOf("0|1|0||0|0|0|" + std::string(128, 'x')));
}

TEST(AppInfo, ReadsRecords) {
  const struct {
    std::string record;
    const char* values;
  } cases[] = {
      {"1\0002\000100\00080,1000-2000\0000\0000\0000\0mail\0"s, "1|2|100|80,1000-2000|0|0|0|mail"},
      {"4294967295\0-1\0-1\0\0 7x\0+8\0x\0\0"s, "4294967295|-1|4294967295||7|8|0|"},
      {"0\0\0\0\0\0\0\0\0"s, "0|0|0||0|0|0|"},
      {"\0002\0003\0004\0005\0006\0007\0new\0"s, kOld},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.values);
    OrvaneAppInfo entry = makeOld();
    entry.setValues(reinterpret_cast<const unsigned char*>(c.record.data()));
    EXPECT_EQ(entry.getSection(false), sectionOf(c.values));
    const bool ignored = c.record.front() == '\0';
    for (std::size_t size = 0; size <= c.record.size(); ++size) {
      const auto room = std::make_unique<unsigned char[]>(size);  // so that a reader's error shows
      std::copy_n(c.record.begin(), size, room.get());
      const bool whole = size == c.record.size() || (ignored && size > 0);
      OrvaneAppInfo checked = makeOld();
      EXPECT_EQ(checked.setValuesChecked({room.get(), size}), whole) << size;
      EXPECT_EQ(checked.getSection(false), sectionOf(whole ? c.values : kOld)) << size;
    }
  }
  OrvaneAppInfo entry = makeOld();
  const char* const noText = nullptr;
  entry.setValues(nullptr);
  entry.setPorts(noText);
  entry.setFQN(noText);
  EXPECT_EQ(entry.getSection(false), sectionOf(kOld));
}

TEST(AppInfo, ReadsSections) {
  const struct {
    const char *text, *values;
  } cases[] = {
      {nullptr, kOld},
      {"version=1\n;", "1|8|7|6,60-61|5|4|3|old"},
      {"Version=1\nVERSION=2\n;\nUPID=1\n", "1|8|7|6,60-61|5|4|3|old"},
      {"Version=1\nUPID=7\n;\nother=3\nVersion=2\nend\n", "2|8|7|6,60-61|5|4|3|old"},
      {"FQN=a=b\nReserved3=3\nReserved2=2\nReserved1=1\nPortRange=\nPortType=-2\n;\n",
       "9|-2|7||1|2|3|a=b"},
      {"PortType=\nUPID\nReserved1=1\n;\nFQN=\n;\n", "9|0|7|6,60-61|1|4|3|"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.values);
    OrvaneAppInfo entry = makeOld();
    entry.setSection(c.text);
    EXPECT_EQ(entry.getSection(false), sectionOf(c.values));
    EXPECT_EQ(entry.getSection(true), sectionOf(c.values) + ";\n");
  }
  EXPECT_EQ(OrvaneAppInfo().getSection(false), sectionOf("0|1|0||0|0|0|"));
}

TEST(AppInfo, LooksKeysUpAtEachCall) {
  auto& names = OrvaneAppInfo::appinfo_key_names;
  EXPECT_EQ(reinterpret_cast<char**>(OrvaneAppInfo::getKeyNames()), names);
  EXPECT_STREQ(reinterpret_cast<char**>(OrvaneApplication::getKeyNames())[0], "PortRange");
  const auto kept = std::to_array(names);
  char number[] = "Number";
  char sameNumber[] = "NUMBER";
  names[0] = number;
  names[2] = sameNumber;
  char longName[] = "ReservedForTheThirdTime";
  char lines[] = "a\nb";
  names[6] = longName;
  names[7] = nullptr;
  *names[1] = 'p';
  OrvaneAppInfo entry = makeOld();
  entry.setSection(
      "UPID=1\nPortType=3\nnumber=4\nNumber=5\nreservedForTheThirdTime=8\n=name\nFQN=none\n;\n");
  EXPECT_EQ(entry.getSection(false),
            "Number=4\nportType=3\nNUMBER=4\nPortRange=6,60-61\nReserved1=5\nReserved2=4\n"
            "ReservedForTheThirdTime=8\n=name\n"s);
  *names[1] = 'P';
  std::ranges::copy(kept, names);
  names[2] = sameNumber;  // two that differ in letter case alone
  names[0] = number;
  entry.setSection("Number=6\n;\n");
  EXPECT_TRUE(entry.getVersion() == 6 && entry.getUPID() == 6);
  std::ranges::copy(kept, names);
  names[0] = lines;  // which no key can be
  entry.setSection("a\nb=7\n;\n");
  EXPECT_EQ(entry.getVersion(), 6U);
  // Names and values as long as they may be.
  std::string longest(200, 'k');
  std::string expected;
  std::ranges::fill(names, longest.data());
  entry.setSection((longest + "=4294967295\n;\n").c_str());
  entry.setPorts("4294967295-1");
  entry.setFQN(std::string(127, 'n').c_str());
  for (const std::string& value :
       {"4294967295"s, "-1"s, "4294967295"s, "4294967295-1"s, "4294967295"s, "4294967295"s,
        "4294967295"s, std::string(127, 'n')}) {
    expected += longest + "=" + value + "\n";
  }
  std::string text;
  entry.appendSection(text, true);
  EXPECT_EQ(text, expected + ";\n");
  std::ranges::copy(kept, names);
}

TEST(AppInfo, TakesWhatAnApplicationDefines) {
  const struct {
    std::vector<unsigned int> addresses;  // of items with the same ports
    int type;
    const char* values;
  } cases[] = {
      {{}, 1, "0|1|4|6,60-61|0|0|0|Web"},
      {{0}, 1, "0|1|4|6,65535,0-0,9-8,60-61|0|0|0|Web"},
      {{1}, 3, "0|2|4|6,60-61|0|0|0|Web"},
      {{0, 1}, 0, "0|2|4|6,60-61|0|0|0|Web"},
  };
  OrvanePortMapping item;
  item.setPorts(std::set<unsigned short>{0, 6, 65535});
  item.setRanges({{2, 0}, {9, 8}, {50, 61}});
  for (const auto& c : cases) {
    SCOPED_TRACE(c.values);
    OrvaneApplication application;
    application.setUpid(4U);
    application.setName("Web");
    application.setType(static_cast<tagSelectorType>(c.type));
    for (const unsigned int address : c.addresses) {
      item.setIp(address);
      application.addItem(item);
    }
    OrvaneAppInfo entry;
    entry = {};  // can only mean a default entry
    entry = makeOld();
    entry.setFQN(std::string(40, 'x').c_str());
    entry = application;
    EXPECT_EQ(entry.getSection(false), sectionOf(c.values));
    std::fill_n(application.getName(), 32, 'n');  // a caller's, without a NUL
    entry = application;
    EXPECT_EQ(entry.getFQN(), std::string(32, 'n') + "xxxxxxxx");
  }
}

}  // namespace
