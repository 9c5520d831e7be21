// The line rules of every section text, and groups of known keys read by them.

#ifndef ORVANE_PORTS_SECTION_LINES_H_
#define ORVANE_PORTS_SECTION_LINES_H_

#include <array>
#include <bitset>
#include <cstddef>
#include <string_view>

namespace orvane {

enum class SectionLine { kPair, kTerminator, kEnd };

// Walks the lines of a section text in one pass, without copies. Lines end at "\n" or at the end of
// the text and are not trimmed; empty ones are passed over.
class SectionLines {
 public:
  explicit SectionLines(std::string_view text) : rest_(text) {}

  // Advances to the next line.
  SectionLine next();

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

bool equalIgnoringCase(std::string_view a, std::string_view b);

// The values of the known keys of one group. The first of a key wins; other keys are passed over.
template <std::size_t kKeys>
class SectionGroup {
 public:
  explicit SectionGroup(const std::array<std::string_view, kKeys>& names) : names_(names) {}

  // Reads the next closed group of `lines`; false when there is none.
  bool read(SectionLines& lines) {
    held_.reset();
    expected_ = 0;
    for (;;) {
      switch (lines.next()) {
        case SectionLine::kPair:
          take(lines.key(), lines.value());
          break;
        case SectionLine::kTerminator:
          return true;
        case SectionLine::kEnd:
          return false;
      }
    }
  }

  bool holds(std::size_t key) const { return held_[key]; }

  // REQUIRES: holds(key).
  std::string_view operator[](std::size_t key) const { return values_[key]; }

 private:
  // Writers keep the keys in order, so the search starts at the key after the last one found.
  void take(std::string_view key, std::string_view value) {
    for (std::size_t step = 0; step < kKeys; ++step) {
      const std::size_t candidate = (expected_ + step) % kKeys;
      if (!equalIgnoringCase(key, names_[candidate])) continue;
      if (!held_[candidate]) values_[candidate] = value;
      held_[candidate] = true;
      expected_ = candidate + 1;
      return;
    }
  }

  const std::array<std::string_view, kKeys>& names_;
  std::array<std::string_view, kKeys> values_;
  std::bitset<kKeys> held_;
  std::size_t expected_ = 0;
};

}  // namespace orvane

#endif  // ORVANE_PORTS_SECTION_LINES_H_
