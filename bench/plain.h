// The floor: plain data that is already parsed and in order, and the same containers and texts made
// of it by hand.

#ifndef ORVANE_BENCH_PLAIN_H_
#define ORVANE_BENCH_PLAIN_H_

#include <orvane/orvane.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace plain {

struct Range {
  unsigned int start;
  unsigned int end;

  bool operator==(const Range&) const = default;
};

struct Item {
  std::vector<unsigned short> ports;
  std::vector<Range> ranges;
  unsigned int address;
  unsigned int blockNumber;
  int selectorInfo;

  bool operator==(const Item&) const = default;
};

struct Application {
  unsigned int upid;
  int id;
  int type;
  int action;
  std::string name;
  std::vector<Item> items;

  bool operator==(const Application&) const = default;
};

inline Item itemOf(const OrvanePortMapping& item) {
  Item copy = {{item.getPorts().begin(), item.getPorts().end()},
               {},
               item.getIpAddress(),
               item.getUniqueBlockNumber(),
               item.getSelectorInfo()};
  for (const OrvanePortRange& range : item.getRanges()) {
    copy.ranges.push_back({range.getStart(), range.getEnd()});
  }
  return copy;
}

inline std::vector<Application> applicationsOf(const OrvaneAppMapping& mapping) {
  std::vector<Application> copies;
  for (const OrvaneApplication& application : mapping) {
    copies.push_back({application.getUpid(),
                      application.getID(),
                      application.getType(),
                      application.getAction(),
                      application.getName(),
                      {}});
    for (const OrvanePortMapping& item : application.getItems()) {
      copies.back().items.push_back(itemOf(item));
    }
  }
  return copies;
}

// Looks at every byte once.
inline std::int64_t touch(std::string_view text) { return std::ranges::count(text, '\n'); }

inline void fill(const Item& item, tagPortMapping& mapping) {
  for (const unsigned short port : item.ports) mapping.ports.insert(mapping.ports.end(), port);
  for (const auto& [start, end] : item.ranges) {
    mapping.ranges.emplace_hint(mapping.ranges.end(), start, end);
  }
  mapping.ip.address = item.address;
  mapping.uniqueBlockNumber = item.blockNumber;
  mapping.selectorInfo = static_cast<tagSelectorInfo>(item.selectorInfo);
}

inline std::vector<tagApplication> build(const std::vector<Application>& applications) {
  std::vector<tagApplication> built;
  built.reserve(applications.size());
  for (const Application& application : applications) {
    tagApplication& made = built.emplace_back();
    made.upid = application.upid;
    made.type = static_cast<tagSelectorType>(application.type);
    made.action = static_cast<tagActionType>(application.action);
    std::memcpy(made.name, application.name.data(), application.name.size());
    made.items.reserve(application.items.size());
    for (const Item& item : application.items) {
      fill(item, *made.items.insert(made.items.end(), {}));
    }
  }
  return built;
}

inline std::string_view nameOf(const OrvaneApplication& application) {
  return static_cast<const tagApplication&>(application).name;
}

// By the sizes in all items before any of them is walked: where data does not fit the caches, their
// items then come together.
inline bool equal(const OrvaneApplication& a, const OrvaneApplication& b) {
  const auto sameSizes = [](const OrvanePortMapping& x, const OrvanePortMapping& y) {
    return x.getIpAddress() == y.getIpAddress() && x.getPorts().size() == y.getPorts().size() &&
           x.getRanges().size() == y.getRanges().size();
  };
  const auto sameRange = [](const OrvanePortRange& x, const OrvanePortRange& y) {
    return x.getEnd() == y.getEnd();
  };
  const auto sameElements = [&](const OrvanePortMapping& x, const OrvanePortMapping& y) {
    return std::equal(x.getPorts().begin(), x.getPorts().end(), y.getPorts().begin()) &&
           std::equal(x.getRanges().begin(), x.getRanges().end(), y.getRanges().begin(), sameRange);
  };
  return a.getUpid() == b.getUpid() && nameOf(a) == nameOf(b) &&
         std::ranges::equal(a.getItems(), b.getItems(), sameSizes) &&
         std::ranges::equal(a.getItems(), b.getItems(), sameElements);
}

// Two digits of each number below a hundred.
inline constexpr auto kPairs = [] {
  std::array<char, 200> pairs{};
  for (std::size_t i = 0; i < 100; ++i) {
    pairs[2 * i] = static_cast<char>('0' + i / 10);
    pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
  }
  return pairs;
}();

// Writes to memory that is known to suffice.
class Pen {
 public:
  explicit Pen(char* next) : next_(next) {}

  void text(std::string_view text) {
    std::memcpy(next_, text.data(), text.size());
    next_ += text.size();
  }
  // Two digits at a time.
  void number(unsigned int number) {
    if (number < 10000) return upToFour(number);
    if (number >= 100000000) {
      upToFour(number / 100000000);
      four(number / 10000 % 10000);
    } else {
      upToFour(number / 10000);
    }
    four(number % 10000);
  }
  void number(int number) {
    if (number < 0) character('-');
    const auto bits = static_cast<unsigned int>(number);
    this->number(number < 0 ? -bits : bits);
  }
  void character(char c) { *next_++ = c; }
  char* next() const { return next_; }

 private:
  void two(unsigned int number) {
    std::memcpy(next_, kPairs.data() + std::size_t{2} * number, 2);
    next_ += 2;
  }
  void upToTwo(unsigned int number) {
    if (number < 10) {
      character(static_cast<char>('0' + number));
    } else {
      two(number);
    }
  }
  void four(unsigned int number) {
    two(number / 100);
    two(number % 100);
  }
  void upToFour(unsigned int number) {
    if (number < 100) return upToTwo(number);
    upToTwo(number / 100);
    two(number % 100);
  }

  char* next_;
};

inline Range boundsOf(const Range& range) { return range; }
inline Range boundsOf(const OrvanePortRange& range) { return {range.getStart(), range.getEnd()}; }

// Ports and ranges, both in order, merged.
template <typename Lists>
void writeList(Pen& pen, const Lists& item) {
  auto range = item.ranges.begin();
  char separator = 0;
  const auto separate = [&] {
    if (separator != 0) pen.character(separator);
    separator = ',';
  };
  const auto writeRange = [&] {
    const auto [start, end] = boundsOf(*range++);
    separate();
    pen.number(start);
    pen.character('-');
    pen.number(end);
  };
  for (const unsigned short port : item.ports) {
    while (range != item.ranges.end() && boundsOf(*range).start < port) writeRange();
    separate();
    pen.number(port);
  }
  while (range != item.ranges.end()) writeRange();
}

template <typename Lists>
std::size_t roomFor(const Lists& item) {
  return 300 + item.ports.size() * 6 + item.ranges.size() * 22;
}

// What a group says beside its port list.
struct Fields {
  unsigned int upid;
  int id;
  int type;
  int action;
  std::string_view name;
  unsigned int address;
  unsigned int blockNumber;
  int selectorInfo;
};

// `text` keeps its size as room from one use to the next; `length` is what is written of it.
template <typename Lists>
void appendGroup(std::string& text, std::size_t& length, const Lists& item, const Fields& fields) {
  if (text.size() < length + roomFor(item)) text.resize(2 * text.size() + roomFor(item));
  Pen pen(text.data() + length);
  pen.text("PortRange=");
  writeList(pen, item);
  pen.text("\nIPv4=");
  if (fields.address != 0) pen.number(fields.address);
  pen.text("\nAction=");
  pen.number(fields.action);
  pen.text("\nSelectorType=");
  pen.number(fields.type);
  pen.text("\nUPID=");
  pen.number(fields.upid);
  pen.text("\nApplName=");
  pen.text(fields.name);
  pen.text("\nUniqueBlockNumber=");
  pen.number(fields.blockNumber);
  pen.text("\nSelectorTypeInfo=");
  pen.number(fields.selectorInfo);
  pen.text("\nGroupID=");
  pen.number(fields.id);
  pen.text("\n;\n");
  length = static_cast<std::size_t>(pen.next() - text.data());
}

// The groups of an application.
inline void appendGroups(std::string& text, std::size_t& length,
                         const OrvaneApplication& application, int action) {
  for (const OrvanePortMapping& item : application.getItems()) {
    appendGroup(text, length, static_cast<const tagPortMapping&>(item),
                {application.getUpid(), application.getID(), application.getType(), action,
                 nameOf(application), item.getIpAddress(), item.getUniqueBlockNumber(),
                 item.getSelectorInfo()});
  }
}

inline void appendGroups(std::string& text, std::size_t& length, const Application& application,
                         int action) {
  for (const Item& item : application.items) {
    appendGroup(text, length, item,
                {application.upid, application.id, application.type, action, application.name,
                 item.address, item.blockNumber, item.selectorInfo});
  }
}

}  // namespace plain

#endif  // ORVANE_BENCH_PLAIN_H_
