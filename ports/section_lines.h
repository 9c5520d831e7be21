// The line rules of every section text, and groups of known keys read by them.

#ifndef ORVANE_PORTS_SECTION_LINES_H_
#define ORVANE_PORTS_SECTION_LINES_H_

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

#include "ports/text_in.h"

namespace orvane {

enum class SectionLine { kPair, kTerminator, kEnd };

// Walks the lines of a section text in one pass, without copies. Lines end at "\n" or at the end of
// the text and are not trimmed; empty ones are passed over.
class SectionLines {
 public:
  explicit SectionLines(std::string_view text) : rest_(text) {}

  // Advances to the next line.
  SectionLine next();

  // Advances to the next line if that is a pair with this very key, which has no "=" or "\n" in it
  // and is not empty. Taking lines apart without knowing what comes takes a quarter more of reading
  // a collection.
  bool nextIs(std::string_view key) {
    std::string_view line = rest_;
    if (line.starts_with('\n')) line.remove_prefix(1);
    const bool isKey = line.size() > key.size() && line[key.size()] == '=' && line.starts_with(key);
    if (!isKey) return false;
    line.remove_prefix(key.size() + 1);
    key_ = key;
    value_ = line.substr(0, line.find('\n'));
    rest_ = line.substr(value_.size());
    return true;
  }

  // How much of the text is yet to be read.
  std::size_t left() const { return rest_.size(); }

  // Whether the current line is the last and no line feed ends it.
  bool isCutOff() const { return rest_.empty(); }

  // The current line, if it is a terminator.
  std::string_view terminator() const { return value_; }

  // The parts of the current pair, split at its first "=".
  std::string_view key() const { return key_; }
  std::string_view value() const { return value_; }

 private:
  std::string_view rest_;
  std::string_view key_;
  std::string_view value_;
};

// ASCII letters without their case.
constexpr unsigned char foldCase(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte >= 'A' && byte <= 'Z' ? static_cast<unsigned char>(byte + ('a' - 'A')) : byte;
}

inline bool equalIgnoringCase(std::string_view a, std::string_view b) {
  return a == b || std::ranges::equal(a, b, {}, foldCase, foldCase);
}

// The values of the known keys of one group. The first of a key wins; other keys are passed over.
// Names that are the same each take the value.
template <std::size_t kKeys>
class SectionGroup {
 public:
  explicit SectionGroup(const std::array<std::string_view, kKeys>& names) : names_(names) {
    for (auto name = names.begin(); name != names.end(); ++name) {
      const auto same = [name](std::string_view other) { return equalIgnoringCase(*name, other); };
      if (name->empty() || name->find_first_of("=\n") != std::string_view::npos ||
          std::any_of(names.begin(), name, same)) {
        simpleNames_ = false;
      }
    }
  }

  // Reads the next closed group of `lines`; false when there is none.
  template <typename Watcher>
  bool read(SectionLines& lines, Watcher& watcher) {
    values_.fill({});
    for (;;) {
      // Keys mostly come in one order, so the next one is tried first.
      if (simpleNames_ && lines.nextIs(names_[expected_])) {
        watcher.pair(lines.value());
        take(expected_, lines.value(), watcher);
        continue;
      }
      switch (lines.next()) {
        case SectionLine::kPair:
          watcher.pair(lines.value());
          take(lines.key(), lines.value(), watcher);
          break;
        case SectionLine::kTerminator:
          watcher.closed(lines.terminator(), lines.isCutOff(), isEmpty());
          return true;
        case SectionLine::kEnd:
          watcher.end();
          return false;
      }
    }
  }

  bool holds(std::size_t key) const { return values_[key].data() != nullptr; }

  // REQUIRES: holds(key).
  std::string_view operator[](std::size_t key) const { return values_[key]; }

  // Takes the values that another group holds in the place of its own.
  void overlay(const SectionGroup& other) {
    for (std::size_t key = 0; key < kKeys; ++key) {
      if (other.holds(key)) values_[key] = other[key];
    }
  }

 private:
  bool isEmpty() const {
    return std::ranges::all_of(values_, [](auto value) { return value.data() == nullptr; });
  }

  template <typename Watcher>
  void take(std::string_view name, std::string_view value, Watcher& watcher) {
    bool isKnown = false;
    for (std::size_t key = 0; key < kKeys; ++key) {
      if (!equalIgnoringCase(name, names_[key])) continue;
      take(key, value, watcher);
      isKnown = true;
    }
    if (!isKnown) watcher.unknownKey(name, value);
  }

  template <typename Watcher>
  void take(std::size_t key, std::string_view value, Watcher& watcher) {
    if (!holds(key)) {
      values_[key] = value;
    } else {
      watcher.repeatedKey(names_[key], value, values_[key]);
    }
    expected_ = key + 1 < kKeys ? key + 1 : 0;
  }

  const std::array<std::string_view, kKeys>& names_;
  std::array<std::string_view, kKeys> values_;
  bool simpleNames_ = true;  // they all differ, and each can be a key
  std::size_t expected_ = 0;
};

}  // namespace orvane

#endif  // ORVANE_PORTS_SECTION_LINES_H_
