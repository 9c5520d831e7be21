#include "orvane/application.h"

#include <gtest/gtest.h>

#include <ctime>
#include <set>
#include <string>
#include <tuple>
#include <utility>

#include "sample.h"

namespace {

TEST(Application, StartsWithDefaultsAndAFreshIdentifier) {
  const auto now = static_cast<unsigned int>(std::time(nullptr));
  const OrvaneApplication application;
  EXPECT_EQ(show(application), " 4294967295 1 0 0 -1 0\n");
  const unsigned int drawn = static_cast<unsigned int>(application.getID()) - 2000 - now;
  EXPECT_LE(drawn % 1024, 5U);  // seconds since
  EXPECT_LE(drawn / 1024, 0x7FFFU);
  std::set<unsigned int> numbers;
  for (int count = 0; count < 100; ++count) numbers.insert(OrvaneApplication::getUniqueID() / 1024);
  EXPECT_GT(numbers.size(), 50U);
}

TEST(Application, ReadsRecordsAndNames) {
  const std::string full(31, 'n');
  const std::pair<std::string, std::string> cases[] = {
      {"80,443|3232235786|1|1|7000|Web|12|3",
       "Web 7000 1 1 1 -1 4\n  7| 1 0 4294967295 0 -1 6\n  80,443| 3232235786 0 12 3 -1 -1\n"},
      {"8-9|0.0.0.1|-3|4294967295|-1|" + full + "|12|1",
       full + " 4294967295 -1 -3 0 -1 4\n  7|8-9 1 0 4294967295 0 -1 6\n"},
      {"x|1||||||-5", " 0 0 0 0 -1 4\n  7| 1 0 4294967295 0 -1 6\n"},
      {"9|1|0|0|0|" + full + "n||2", full + " 0 0 0 1 -1 4\n  7,9| 1 0 4294967295 0 -1 6\n"},
      {"|2|3|4|5|Web|6|7", "an older name 9 1 0 1 -1 4\n  7| 1 0 4294967295 0 -1 6\n"}};
  for (const auto& [record, shown] : cases) {
    OrvaneApplication application = makeApplication(9, "an older name", {makeItem(1, "7", 6)});
    application.setAppCategory("1");
    application.setValues(makeRecord(record).data());
    application.setName(application.getName());  // its own
    EXPECT_EQ(show(application), shown);
  }
}

TEST(Application, AddsUpdatesAndDeletesItems) {
  OrvaneApplication application = makeApplication(
      1, "", {makeItem(30, "3", 33), makeItem(10, "1,5-9", 11), makeItem(20, "2", 22)});
  application.getItems()[2].setListIndex(8);
  application.addItem(makeItem(15, "4", 15));
  application.deleteItem(makeItem(20));
  application.deleteItem(makeItem(21));
  application.addItem(makeItem(~0U, "", 11));
  // List index and item id follow their item.
  const std::string rest =
      "  4| 15 0 4294967295 0 -1 15\n  3| 30 0 4294967295 0 8 33\n"
      "  | 4294967295 0 4294967295 0 -1 11\n";
  EXPECT_EQ(show(application), " 1 1 0 0 -1 4\n  1|5-9 10 0 4294967295 0 -1 11\n" + rest);

  OrvanePortMapping more = makeItem(10, "1,2,6-9,20-30", 99);
  more.setUniqueBlockNumber(3);
  EXPECT_EQ(showSets(*application.updateItem(more)), "1,2|5-9");
  EXPECT_EQ(showSets(*application.addItem(more)), "1,2|5-9,20-30");
  const OrvanePortMapping* const inserted = application.updateItem(makeItem(0, "1-2", 7));
  EXPECT_EQ(inserted, application.getItems().begin());
  OrvaneApplication united = makeApplication(8, "Own", {makeItem(15, "9", 1)});
  united.update(application);
  united.update(united);
  EXPECT_EQ(show(united),
            "Own 8 1 0 0 -1 4\n  |1-2 0 0 4294967295 0 -1 7\n"
            "  1,2|5-9,20-30 10 0 4294967295 0 -1 11\n  4,9| 15 0 4294967295 0 -1 1\n" +
                rest.substr(rest.find('\n') + 1));

  const OrvaneApplication& constant = application;
  EXPECT_EQ(application.findItemId(11), application.getItems().begin() + 4);
  EXPECT_EQ(constant.findItemId(7), constant.getItems().begin());
  EXPECT_EQ(constant.findItemId(8), constant.getItems().end());
  EXPECT_EQ(application.getSocketCount(), 4);
}

TEST(Application, ComparesByUpidAndByNameAndItems) {
  const auto named = [](const char* name) { return makeApplication(1, name); };
  const auto holding = [](const char* first, unsigned int address = 2) {
    return makeApplication(1, "", {makeItem(1, first), makeItem(address, "7")});
  };
  const std::tuple<OrvaneApplication, OrvaneApplication, bool, bool> cases[] = {
      {named("A"), named("B"), true, false},
      {named("z"), named("\xC3"), true, false},
      {named("A"), named("A"), false, false},
      {named("B"), makeApplication(1, "A", {makeItem(1)}), true, true},
      {holding("80"), holding("443"), true, false},
      {holding("443,1-9"), holding("80,2-10"), true, true},
      {holding("8", 2), holding("8", 3), true, false}};
  for (const auto& [a, b, less, greater] : cases) {
    EXPECT_EQ(a.lexItemsLess(b), less) << show(a) << show(b);
    EXPECT_EQ(b.lexItemsLess(a), greater) << show(a) << show(b);
    EXPECT_TRUE(a == b && !(a < b) && a < makeApplication(kOrvaneNoUpid));
  }
}

}  // namespace
