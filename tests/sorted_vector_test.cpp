#include "orvane/sorted_vector.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

// Ordered by key; the tag goes with construction only, as assignment leaves it.
struct Tagged {
  Tagged(int number, std::string text) : key(number), tag(std::move(text)) {}
  Tagged(const Tagged&) = default;
  Tagged(Tagged&&) noexcept = default;
  ~Tagged() = default;
  Tagged& operator=(const Tagged& other) {
    key = other.key;
    return *this;
  }
  bool operator<(const Tagged& other) const { return key < other.key; }

  int key;
  std::string tag;
};

// Random insertions, with and without hints, removals and copies against a plain vector.
template <bool kUnique>
void compareWithPlainVector() {
  std::mt19937 random(3);
  sorted_vector<Tagged, kUnique> vector;
  std::vector<std::pair<int, std::string>> plain;
  for (unsigned int step = 0; step < 5000; ++step) {
    const Tagged value(static_cast<int>(random() % 12), std::string(step % 40, 'x'));
    const auto first = std::find_if(plain.begin(), plain.end(),
                                    [&](const auto& held) { return held.first >= value.key; });
    const bool isHeld = first != plain.end() && first->first == value.key;
    const auto rank = first - plain.begin();
    ASSERT_EQ(vector.lower_bound(value) - vector.begin(), rank);
    ASSERT_EQ(vector.find(value), isHeld ? vector.begin() + rank : vector.end());
    if (isHeld && random() % 3 != 0) {
      ASSERT_EQ(vector.erase(vector.begin() + rank) - vector.begin(), rank);
      plain.erase(first);
    } else {
      const auto* const hint = vector.begin() + random() % (vector.size() + 1);
      const auto* const placed =
          random() % 2 == 0 ? vector.insert(value) : vector.insert(hint, value);
      ASSERT_EQ(placed->key, value.key);
      if (!kUnique || !isHeld) {
        plain.emplace(plain.begin() + (placed - vector.begin()), value.key, value.tag);
      }
    }
    if (step % 100 == 0) vector = sorted_vector<Tagged, kUnique>(vector);
    auto& same = vector;
    if (step % 100 == 50) vector = same;
    if (step % 100 == 70) vector = std::move(same);
    ASSERT_TRUE(std::equal(vector.begin(), vector.end(), plain.begin(), plain.end(),
                           [](const Tagged& element, const auto& held) {
                             return element.key == held.first && element.tag == held.second;
                           }));
    ASSERT_TRUE(std::is_sorted(plain.begin(), plain.end(),
                               [](const auto& a, const auto& b) { return a.first < b.first; }));
  }
  vector.insert(vector.back());  // an element of its own
  EXPECT_EQ(vector.size(), plain.size() + (kUnique ? 0 : 1));
}

TEST(SortedVector, KeepsOrderAndMovesElementsWhole) {
  compareWithPlainVector<true>();
  compareWithPlainVector<false>();
}

// Random merges and removals of many at once against the same one by one.
TEST(SortedVector, MergesAndRemovesManyAsOneByOne) {
  std::mt19937 random(4);
  const auto values = [&] {
    sorted_vector<Tagged, true> vector;
    for (std::size_t count = random() % 9; count > 0; --count) {
      vector.insert(Tagged(static_cast<int>(random() % 12), std::to_string(random())));
    }
    return vector;
  };
  const auto show = [](const sorted_vector<Tagged, true>& vector) {
    std::string text;
    for (const Tagged& value : vector) text += std::to_string(value.key) + value.tag + " ";
    return text;
  };
  for (unsigned int round = 0; round < 3000; ++round) {
    sorted_vector<Tagged, true> into = values();
    sorted_vector<Tagged, true> from = values();
    sorted_vector<Tagged, true> expected = into;
    sorted_vector<Tagged, true> staying;
    for (const Tagged& value : from) {
      (into.find(value) == into.end() ? expected : staying).insert(value);
    }
    into.merge(from);
    ASSERT_EQ(show(into), show(expected));
    ASSERT_EQ(show(from), show(staying));
    into.erase_if([](const Tagged& value) { return value.key % 3 == 0; });
    for (int key = 0; key < 12; key += 3) {
      const auto* const found = expected.find(Tagged(key, ""));
      if (found != expected.end()) expected.erase(found);
    }
    ASSERT_EQ(show(into), show(expected));
  }
}

}  // namespace
