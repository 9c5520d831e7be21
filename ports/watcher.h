// What readers tell while they read: to nobody, or to a list of findings.

#ifndef ORVANE_PORTS_WATCHER_H_
#define ORVANE_PORTS_WATCHER_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "orvane/findings.h"
#include "ports/port_bits.h"
#include "ports/text_in.h"

namespace orvane {

// Nobody watches. A reader that is given this compiles to what it would be without. All views are
// parts of the text that is read, but for keys, which are names of the library.
struct Unwatched {
  static constexpr bool kWatches = false;

  // The value of a pair; of a key that is not known; of one that the group has, with the value that
  // was taken, where that is known.
  static void pair(std::string_view /*value*/) {}
  static void unknownKey(std::string_view /*key*/, std::string_view /*value*/) {}
  static void repeatedKey(std::string_view /*key*/, std::string_view /*value*/,
                          std::string_view /*taken*/ = {}) {}

  // A line that closes a group, and the end of the text.
  static void closed(std::string_view /*line*/, bool /*isLast*/, bool /*isEmpty*/) {}
  static void end() {}

  // Values, which are about to be read.
  static void number(std::string_view /*key*/, std::string_view /*text*/) {}
  static void signedNumber(std::string_view /*key*/, std::string_view /*text*/) {}
  static void address(std::string_view /*key*/, std::string_view /*text*/) {}
  static void name(std::string_view /*key*/, std::string_view /*text*/, std::size_t /*room*/) {}

  // A port list, which is about to be read, and its items: those that are digits, or digits joined
  // by "-", and others.
  static void portList(std::string_view /*text*/) {}
  static void item(std::string_view /*token*/, const PortListItem& /*item*/) {}
  static void otherItem(std::string_view /*token*/, const PortListItem& /*item*/) {}

  // What happens to a range, and which ports it is about to swallow.
  static void merged(Bounds /*range*/, Bounds /*widened*/) {}
  static void skipped(Bounds /*range*/) {}
  template <typename Ports>
  static void swallows(const Ports& /*ports*/, Bounds /*range*/) {}

  // A record that lacks a NUL, one that is ignored as a whole, and how much follows a whole one.
  static void recordCut() {}
  static void recordIgnored() {}
  static void recordEnded(std::size_t /*left*/) {}
};

// A value in a message: cut to 80 characters, in quotes.
std::string quoted(std::string_view text);

// A range in a message.
std::string textOf(Bounds range);

// A number as it is written: whether it fits in 32 bits, whether nothing but white space follows
// it, and whether it is one at all, and both of that.
bool fits(const NumberText& number);
bool endsThere(const NumberText& number);
bool isClean(const NumberText& number);

// Adds what is passed over, cut, merged or read as something else to a list of findings.
class Reporter {
 public:
  static constexpr bool kWatches = true;

  // What it is told are parts of `text`. An empty group, if that is a finding, is read as
  // `emptyGroup`.
  Reporter(std::string_view text, OrvaneFindings& findings, const char* emptyGroup = nullptr)
      : text_(text), findings_(findings), first_(findings.size()), emptyGroup_(emptyGroup) {}

  // Of a record, whose texts have no lines.
  explicit Reporter(OrvaneFindings& findings) : Reporter({}, findings) {}

  Reporter(const Reporter&) = delete;
  Reporter& operator=(const Reporter&) = delete;

  // Puts the findings in order, with their lines.
  ~Reporter();

  void pair(std::string_view value) {
    if (groupStart_ == nullptr) groupStart_ = value.data();
    if (value.ends_with('\r')) carriageReturn(value);
  }
  void unknownKey(std::string_view key, std::string_view value);
  void repeatedKey(std::string_view key, std::string_view value, std::string_view taken = {});
  void closed(std::string_view line, bool isLast, bool isEmpty);
  void end();

  // A value that takes the place of that of an earlier group.
  void replaced(std::string_view key, std::string_view value, std::string_view before);

  void number(std::string_view key, std::string_view text) {
    if (!isShortNumber(text)) checkNumber(key, text, false);
  }
  void signedNumber(std::string_view key, std::string_view text) {
    if (!isShortNumber(text)) checkNumber(key, text, true);
  }
  void address(std::string_view key, std::string_view text);
  void name(std::string_view key, std::string_view text, std::size_t room);

  void portList(std::string_view text) { list_ = text.data(); }
  void item(std::string_view token, const PortListItem& item) {
    if (!isSound(token, item)) otherItem(token, item);
  }
  void otherItem(std::string_view token, const PortListItem& item);
  void merged(Bounds range, Bounds widened);
  void skipped(Bounds range);
  void rangeIgnored(Bounds range);  // since only single ports are taken
  void swallows(const PortBits& ports, Bounds range);
  void swallows(const std::set<unsigned short>& ports, Bounds range);

  void recordCut();
  void recordIgnored();
  void recordEnded(std::size_t left);

  // Adds a finding about the text at `place`, unless there are enough of its kind: then false.
  // message() is called for those that are added.
  template <typename Message>
  bool error(const char* kind, std::string_view key, const char* place, Message message) {
    return report(kOrvaneFindingError, kind, key, place, message);
  }
  template <typename Message>
  bool note(const char* kind, std::string_view key, const char* place, Message message) {
    return report(kOrvaneFindingNote, kind, key, place, message);
  }

  // Puts the line of `place` into the message of the last finding, before its last characters.
  void mentionLine(const char* place, std::size_t before = 0);

  // Where the port list at hand begins.
  const char* list() const { return list_; }

 protected:
  // Whether nothing is to be said of a plain item: all its numbers fit.
  static bool isSound(std::string_view token, const PortListItem& item) {
    if (item.range.count == 1) return token.size() <= kCertainlyFits && item.isPort();
    return token.size() <= kCertainlyFits + 2 && item.range.isRange() &&
           item.range.first <= item.range.second && item.range.second <= kMaxPort;
  }

  void checkRange(std::string_view token, const PortListItem& item);

 private:
  struct Mention {
    std::size_t offset;
    std::size_t finding;
    std::size_t before;
  };

  static constexpr std::size_t kCertainlyFits = 9;  // digits, in 32 bits

  static bool isShortNumber(std::string_view text) {
    return !text.empty() && text.size() <= kCertainlyFits &&
           std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
  }

  template <typename Message>
  bool report(tagFindingSeverity severity, const char* kind, std::string_view key,
              const char* place, Message message) {
    if (!findings_.count(kind, severity)) return false;
    findings_.push_back({offsetOf(place), severity, kind, std::string(key), message()});
    return true;
  }

  std::size_t offsetOf(const char* place) const {
    return text_.data() == nullptr ? 0 : static_cast<std::size_t>(place - text_.data());
  }

  void carriageReturn(std::string_view lineEnd);
  void checkNumber(std::string_view key, std::string_view text, bool isSigned);
  void reportSwallowed(const std::string& ports, Bounds range);

  std::string_view text_;
  OrvaneFindings& findings_;
  std::size_t first_;  // finding of this text
  const char* emptyGroup_;
  std::vector<Mention> mentions_;
  const char* list_ = nullptr;
  const char* groupStart_ = nullptr;
  const char* firstCarriageReturn_ = nullptr;
  std::size_t carriageReturns_ = 0;
};

}  // namespace orvane

#endif  // ORVANE_PORTS_WATCHER_H_
