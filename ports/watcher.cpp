#include "ports/watcher.h"

#include <algorithm>
#include <utility>

#include "ports/range_list.h"

namespace orvane {
namespace {

constexpr std::size_t kShown = 80;  // characters of a value

// Counts lines up to places that come in ascending order.
class LineCounter {
 public:
  explicit LineCounter(std::string_view text) : rest_(text) {}

  // The line of an offset; 0 when there is no text.
  std::size_t lineOf(std::size_t offset) {
    if (rest_.data() == nullptr) return 0;
    const std::string_view passed = rest_.substr(0, offset - offset_);
    line_ += static_cast<std::size_t>(std::ranges::count(passed, '\n'));
    rest_.remove_prefix(passed.size());
    offset_ = offset;
    return line_;
  }

 private:
  std::string_view rest_;
  std::size_t offset_ = 0;
  std::size_t line_ = 1;
};

// A text cut to what is shown of a value, between two characters of UTF-8.
std::string shown(std::string_view text) {
  if (text.size() <= kShown) return std::string(text);
  std::size_t end = kShown;
  while (end > kShown - 4 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) --end;
  return std::string(text.substr(0, end)) + "...";
}

}  // namespace

std::string quoted(std::string_view text) { return "'" + shown(text) + "'"; }

std::string textOf(Bounds range) {
  return std::to_string(range.start) + "-" + std::to_string(range.end);
}

Reporter::~Reporter() {
  std::ranges::sort(mentions_, {}, &Mention::offset);
  LineCounter mentioned(text_);
  for (const Mention& mention : mentions_) {
    std::string& message = findings_[mention.finding].message;
    message.insert(message.size() - mention.before,
                   std::to_string(mentioned.lineOf(mention.offset)));
  }
  const auto first = findings_.begin() + static_cast<std::ptrdiff_t>(first_);
  std::stable_sort(first, findings_.end(),
                   [](const auto& a, const auto& b) { return a.line < b.line; });
  LineCounter lines(text_);
  std::for_each(first, findings_.end(),
                [&](OrvaneFinding& finding) { finding.line = lines.lineOf(finding.line); });
}

void Reporter::mentionLine(const char* place, std::size_t before) {
  std::string& message = findings_.back().message;
  message.reserve(message.size() + sizeof "18446744073709551615");  // nothing can fail later on
  mentions_.push_back({offsetOf(place), findings_.size() - 1, before});
}

void Reporter::carriageReturn(std::string_view lineEnd) {
  if (carriageReturns_++ == 0) firstCarriageReturn_ = lineEnd.data() + lineEnd.size() - 1;
}

void Reporter::unknownKey(std::string_view key, std::string_view value) {
  error("unknown-key", "", value.data(),
        [=] { return "unknown key " + quoted(key) + " is ignored"; });
}

void Reporter::repeatedKey(std::string_view key, std::string_view value, std::string_view taken) {
  const bool isKnown = taken.data() != nullptr;
  const bool isAdded = error("repeated-key", key, value.data(), [=] {
    return std::string(key) + " is ignored: the group has it " + (isKnown ? "at line " : "already");
  });
  if (isAdded && isKnown) mentionLine(taken.data());
}

void Reporter::replaced(std::string_view key, std::string_view value, std::string_view before) {
  if (value == before) return;
  const bool isAdded = note("replaced", key, value.data(), [=] {
    return std::string(key) + " " + quoted(value) + " takes the place of that at line ";
  });
  if (isAdded) mentionLine(before.data());
}

void Reporter::closed(std::string_view line, bool isLast, bool isEmpty) {
  groupStart_ = nullptr;
  if (line.ends_with('\r')) carriageReturn(line);
  if (isLast && line != ";") {
    error("cut-off", "", line.data(), [=] {
      return quoted(line) +
             " has no \"=\" and so closes the group, but no line feed follows: the text may have "
             "been cut off";
    });
  } else if (line != ";" && line != ";\r") {
    note("terminator", "", line.data(),
         [=] { return quoted(line) + " has no \"=\" and so closes the group"; });
  }
  if (!isEmpty || emptyGroup_ == nullptr) return;
  error("empty-group", "", line.data(), [=, this] {
    return std::string("the group closed here has no known key: it is read as ") + emptyGroup_;
  });
}

void Reporter::end() {
  if (groupStart_ != nullptr) {
    error("dropped", "", groupStart_, [] {
      return std::string("no terminator line follows: the text from here on is dropped");
    });
  }
  if (carriageReturns_ == 0) return;
  error("carriage-return", "", firstCarriageReturn_, [this] {
    return "carriage return at the end of " + std::to_string(carriageReturns_) +
           (carriageReturns_ == 1 ? " line" : " lines, this one first") +
           ": it counts as part of the line";
  });
}

void Reporter::merged(Bounds range, Bounds widened) {
  note("merged", "PortRange", list_, [=] {
    return "range " + textOf(range) + " is merged with an earlier one into " + textOf(widened);
  });
}

void Reporter::skipped(Bounds range) {
  error("range", "PortRange", list_, [=] {
    return "range " + textOf(range) + " is skipped: another range ends at its last port";
  });
}

void Reporter::rangeIgnored(Bounds range) {
  error("range", "PortRange", list_,
        [=] { return "range " + textOf(range) + " is ignored: a socket has a single port"; });
}

void Reporter::swallows(const PortBits& ports, Bounds range) {
  std::string text;
  ports.forEachInside(range, [&](std::uint16_t port) {
    if (text.size() <= kShown) text += std::to_string(port) + ",";
  });
  reportSwallowed(text, range);
}

void Reporter::swallows(const std::set<unsigned short>& ports, Bounds range) {
  std::string text;
  auto port = firstInside(ports, range);
  for (; port != ports.end() && *port <= range.end && text.size() <= kShown; ++port) {
    text += std::to_string(*port) + ",";
  }
  reportSwallowed(text, range);
}

void Reporter::reportSwallowed(const std::string& ports, Bounds range) {
  if (ports.empty()) return;
  note("swallowed", "PortRange", list_, [&] {
    return "single ports before range " + textOf(range) + " are swallowed by it: " +
           (ports.size() > kShown ? shown(ports) : ports.substr(0, ports.size() - 1));
  });
}

void Reporter::recordCut() {
  error("record", "", nullptr,
        [] { return std::string("the record is cut short: nothing of it is read"); });
}

void Reporter::recordIgnored() {
  error("record", "", nullptr, [] {
    return std::string("the record is ignored as a whole, since its first text is empty");
  });
}

void Reporter::recordEnded(std::size_t left) {
  if (left == 0) return;
  note("record", "", nullptr, [=] {
    return std::to_string(left) + (left == 1 ? " byte" : " bytes") + " after the record " +
           (left == 1 ? "is" : "are") + " ignored";
  });
}

}  // namespace orvane
