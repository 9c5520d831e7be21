// The line rules of every section text, and groups of known keys read by them.

#ifndef ORVANE_PORTS_SECTION_LINES_H_
#define ORVANE_PORTS_SECTION_LINES_H_

#include <algorithm>
#include <array>
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

inline bool equalIgnoringCase(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b, {}, foldCase, foldCase);
}

// The values of the known keys of one group. The first of a key wins; other keys are passed over.
// Names that are the same each take the value.
template <std::size_t kKeys>
class SectionGroup {
 public:
  explicit SectionGroup(const std::array<std::string_view, kKeys>& names) : names_(names) {}

  // Reads the next closed group of `lines`; false when there is none.
  bool read(SectionLines& lines) {
    values_.fill({});
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

  bool holds(std::size_t key) const { return values_[key].data() != nullptr; }

  // REQUIRES: holds(key).
  std::string_view operator[](std::size_t key) const { return values_[key]; }

 private:
  void take(std::string_view key, std::string_view value) {
    for (std::size_t candidate = 0; candidate < kKeys; ++candidate) {
      if (holds(candidate) || !equalIgnoringCase(key, names_[candidate])) continue;
      values_[candidate] = value;
    }
  }

  const std::array<std::string_view, kKeys>& names_;
  std::array<std::string_view, kKeys> values_;
};

}  // namespace orvane

#endif  // ORVANE_PORTS_SECTION_LINES_H_
