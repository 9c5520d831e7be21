// Catalogue entries as plain data, and their texts by hand.

#ifndef ORVANE_BENCH_PLAIN_CATALOGUE_H_
#define ORVANE_BENCH_PLAIN_CATALOGUE_H_

#include <set>
#include <string>
#include <vector>

#include "plain.h"

namespace plain {

struct Port {
  unsigned int number;  // 0: a range
  unsigned int start;
  unsigned int end;
};

struct Entry {
  unsigned int version;
  int portType;
  unsigned int upid;
  std::vector<Port> ports;
  unsigned int reserved[3];
  std::string fqn;
};

// What an entry of the library holds.
struct HeldEntry {
  unsigned int version = 0;
  int portType = 0;
  unsigned int upid = 0;
  std::set<OrvanePort> ports;
  unsigned int reserved[3] = {};
  char fqn[128] = {};
};

inline HeldEntry build(const Entry& entry) {
  HeldEntry held = {entry.version,
                    entry.portType,
                    entry.upid,
                    {},
                    {entry.reserved[0], entry.reserved[1], entry.reserved[2]},
                    {}};
  for (const Port& plainPort : entry.ports) {
    OrvanePort port;
    if (plainPort.number != 0) {
      port.setPort(plainPort.number);
    } else {
      port.setStart(plainPort.start);
      port.setEnd(plainPort.end);
    }
    held.ports.insert(held.ports.end(), port);
  }
  std::memcpy(held.fqn, entry.fqn.data(), entry.fqn.size());
  return held;
}

// Reads them back from the texts of the library's entries, which ends with the ranges.
inline std::vector<Entry> entriesOf(const OrvaneAppInfoArray& catalogue) {
  std::vector<Entry> entries;
  for (const OrvaneAppInfo& entry : catalogue) {
    Entry& made = entries.emplace_back(
        Entry{entry.getVersion(),
              static_cast<int>(entry.getPortType()),
              entry.getUPID(),
              {},
              {entry.getReserved1(), entry.getReserved2(), entry.getReserved3()},
              entry.getFQN()});
    for (const char* next = entry.getPorts(); *next != '\0'; next += *next == ',' ? 1 : 0) {
      char* end = nullptr;
      const auto first = static_cast<unsigned int>(std::strtoul(next, &end, 10));
      if (*end == '-') {
        made.ports.push_back(
            {0, first, static_cast<unsigned int>(std::strtoul(end + 1, &end, 10))});
      } else {
        made.ports.push_back({first, 0, 0});
      }
      next = end;
    }
  }
  return entries;
}

inline std::vector<HeldEntry> build(const std::vector<Entry>& entries) {
  std::vector<HeldEntry> held;
  held.reserve(entries.size());
  for (const Entry& entry : entries) held.push_back(build(entry));
  return held;
}

inline void appendPort(Pen& pen, const OrvanePort& port) {
  if (port.getPort() != 0) {
    pen.number(port.getPort());
  } else {
    pen.number(port.getStart());
    pen.character('-');
    pen.number(port.getEnd());
  }
}

// Ports in a row, a "," after each. Those above 100 that differ in the last two digits only are
// copies of one text; `pen` has room for 8 characters more.
inline void appendPorts(Pen& pen, unsigned int first, unsigned int last) {
  for (; first <= last && first < 100; ++first) {
    pen.number(first);
    pen.character(',');
  }
  while (first <= last) {
    char text[8] = {};
    Pen copied(text);
    copied.number(first);
    copied.character(',');
    const auto length = static_cast<std::size_t>(copied.next() - text);
    char* next = pen.next();
    const unsigned int end = std::min(last, first / 100 * 100 + 99);
    for (unsigned int two = first % 100; first <= end; ++first, ++two, next += length) {
      std::memcpy(next, text, sizeof text);
      std::memcpy(next + length - 3, kPairs.data() + std::size_t{2} * two, 2);
    }
    pen = Pen(next);
  }
}

// A text that keeps its size as room from one use to the next.
class Sheet {
 public:
  // A pen at the end of what is written, with room for an entry or for as many characters.
  Pen pen(std::size_t room = 2000) {
    if (text_.size() < length_ + room) text_.resize(2 * text_.size() + room);
    return Pen(text_.data() + length_);
  }
  void end(const Pen& pen) { length_ = static_cast<std::size_t>(pen.next() - text_.data()); }
  std::size_t length() const { return length_; }
  void clear() { length_ = 0; }

 private:
  std::string text_;
  std::size_t length_ = 0;
};

inline void append(Sheet& sheet, const HeldEntry& entry, const std::set<OrvanePort>& ports,
                   unsigned int reserved1) {
  Pen pen = sheet.pen();
  // In its place the lengths of the keys are known.
  const auto line = [&](std::string_view key, auto number) __attribute__((always_inline)) {
    pen.text(key);
    pen.number(number);
  };
  line("Version=", entry.version);
  line("\nPortType=", entry.portType);
  line("\nUPID=", entry.upid);
  pen.text("\nPortRange=");
  bool isFirst = true;
  for (const OrvanePort& port : ports) {
    if (!isFirst) pen.character(',');
    isFirst = false;
    appendPort(pen, port);
  }
  line("\nReserved1=", reserved1);
  line("\nReserved2=", entry.reserved[1]);
  line("\nReserved3=", entry.reserved[2]);
  pen.text("\nFQN=");
  pen.text(entry.fqn);
  pen.text("\n;\n");
  sheet.end(pen);
}

}  // namespace plain

#endif  // ORVANE_BENCH_PLAIN_CATALOGUE_H_
