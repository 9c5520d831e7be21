// Text in and text out, shared by everything in the library that reads or writes a text.

#ifndef ORVANE_PORTS_TEXT_H_
#define ORVANE_PORTS_TEXT_H_

#include <array>
#include <bit>
#include <charconv>
#include <concepts>
#include <cstdint>
#include <cstring>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace orvane {

// Has the beginning of a text that lies elsewhere brought to the cache.
inline void prefetch(std::string_view text) {
  constexpr std::size_t kCacheLine = 64;
  __builtin_prefetch(text.data());
  if (text.size() > kCacheLine) __builtin_prefetch(text.data() + kCacheLine);
}

// Eight bytes as one number, the first one lowest, whatever the machine's order.
inline std::uint64_t eightBytes(const char* bytes) {
  std::uint64_t number = 0;
  for (unsigned int i = 0; i < sizeof number; ++i) {
    number |= std::uint64_t{static_cast<unsigned char>(bytes[i])} << 8U * i;
  }
  return number;
}

// The high bit of each byte, and those bits of which the lowest marks the first zero byte of eight.
inline constexpr std::uint64_t kHighBits = 0x8080808080808080;
inline constexpr std::uint64_t kLowBits = kHighBits >> 7U;

constexpr std::uint64_t zeroBytes(std::uint64_t bytes) {
  return (bytes - kLowBits) & ~bytes & kHighBits;
}

// The end of the line that begins at `line`; most are short.
inline const char* lineEnd(const char* line, const char* end) {
  const std::string_view rest(line, end);
  if (rest.size() >= sizeof(std::uint64_t)) {
    const std::uint64_t newlines = zeroBytes(eightBytes(line) ^ kLowBits * '\n');
    if (newlines != 0) return line + std::countr_zero(newlines) / 8;
  }
  const std::size_t newline = rest.find('\n');
  return newline != std::string_view::npos ? line + newline : end;
}

// A caller's text as a view, made once, at the door; a null text becomes the empty view.
inline std::string_view viewOf(const char* text) {
  return text != nullptr ? std::string_view(text) : std::string_view();
}

// The bytes of a record as a view.
inline std::string_view bytesOf(std::span<const unsigned char> record) {
  return {reinterpret_cast<const char*>(record.data()), record.size()};
}

// The text in a field of characters, up to its NUL; a caller may have filled the whole field.
template <std::size_t kSize>
std::string_view fieldText(const char (&field)[kSize]) {
  const void* const nul = std::memchr(field, 0, kSize);
  return {field, nul != nullptr ? static_cast<const char*>(nul) : field + kSize};
}

// A caller's text that holds while objects change or move, although it may lie in one of them.
class HeldText {
 public:
  template <typename Object>
  HeldText(std::string_view text, const Object* objects, std::size_t count) : view_(text) {
    const auto* const begin = reinterpret_cast<const char*>(objects);
    const char* const end = begin + count * sizeof(Object);
    if (std::less_equal<>()(begin, text.data()) && std::less<>()(text.data(), end)) {
      view_ = copy_.emplace(text);
    }
  }
  HeldText(const HeldText&) = delete;
  HeldText& operator=(const HeldText&) = delete;

  std::string_view view() const { return view_; }

 private:
  std::optional<std::string> copy_;
  std::string_view view_;
};

// Advances `rest` past the next token, a maximal run of other characters than `delimiter`, and
// stores it in `token`. False when there is none left.
inline bool nextToken(std::string_view& rest, char delimiter, std::string_view& token) {
  const char* const end = rest.data() + rest.size();
  const char* first = rest.data();
  while (first != end && *first == delimiter) ++first;
  const char* last = first;
  while (last != end && *last != delimiter) ++last;
  token = std::string_view(first, static_cast<std::size_t>(last - first));
  rest = std::string_view(last, static_cast<std::size_t>(end - last));
  return !token.empty();
}

// Advances `next` past digits; their number modulo 2^32.
inline std::uint32_t readDigits(const char*& next, const char* end) {
  std::uint32_t number = 0;
  for (; next != end; ++next) {
    const auto digit = static_cast<unsigned>(static_cast<unsigned char>(*next)) - '0';
    if (digit > 9) break;
    number = number * 10 + digit;
  }
  return number;
}

// Reads a number by the general rules.
std::uint32_t readAnyNumber(std::string_view text);

// The one number reader: leading white space, an optional sign, digits modulo 2^32 up to the first
// other character. No digits give 0.
inline std::uint32_t readNumber(std::string_view text) {
  const char* next = text.data();
  const std::uint32_t number = readDigits(next, next + text.size());
  return next != text.data() ? number : readAnyNumber(text);
}

// The same, for fields that are signed.
inline std::int32_t readSigned(std::string_view text) {
  return static_cast<std::int32_t>(readNumber(text));
}

// What a range text says: how many numbers stand between its "-" (2 for two or more), and the first
// two of them.
struct RangeText {
  int count = 0;
  std::uint32_t first = 0;
  std::uint32_t second = 0;

  bool isRange() const { return count == 2 && first != 0 && second != 0; }

  // The bounds, in ascending order as signed numbers; a single number gives both.
  // REQUIRES: count > 0.
  std::pair<std::uint32_t, std::uint32_t> bounds() const {
    if (count == 1) return {first, first};
    const bool swapped = static_cast<std::int32_t>(first) > static_cast<std::int32_t>(second);
    return swapped ? std::pair(second, first) : std::pair(first, second);
  }
};

RangeText readRangeText(std::string_view text);

// An address text: a decimal number or four parts joined by "."; nothing for a dotted text of other
// than four parts.
std::optional<std::uint32_t> readAddress(std::string_view text);

// The most characters that a number of 32 bits takes: "-2147483648".
inline constexpr std::size_t kNumberRoom = 11;

// A text that is written again and again: a short one by one copy of kRoom bytes, which takes no
// call.
class ShortText {
 public:
  static constexpr std::size_t kRoom = 16;

  ShortText() = default;
  explicit ShortText(std::string_view text) : text_(text) { text.copy(head_.data(), kRoom); }

  std::size_t size() const { return text_.size(); }

  // Writes it to where there is room for it and kRoom more; returns its end.
  char* write(char* to) const {
    if (size() <= kRoom) {
      std::memcpy(to, head_.data(), kRoom);
      return to + size();
    }
    return to + text_.copy(to, size());
  }

 private:
  std::string text_;
  std::array<char, kRoom> head_{};
};

// Writes to memory that suffices. It is handed on by value: a local one stays in a register, while
// anything that text is written through memory to has to be looked up again for every piece.
class Pen {
 public:
  explicit Pen(char* next) : next_(next) {}

  // Where it writes next.
  char* place() const { return next_; }

  void put(char c) { *next_++ = c; }

  void put(const ShortText& text) { next_ = text.write(next_); }

  void put(std::string_view piece) { next_ += piece.copy(next_, piece.size()); }

  // A number in plain decimal.
  template <std::integral Number>
  void putNumber(Number number) {
    next_ = std::to_chars(next_, next_ + kNumberRoom, number).ptr;
  }

  // Ends a list that began at `begin` and has a separator after each item: takes back the last one.
  void endList(const char* begin) {
    if (next_ != begin) --next_;
  }

 private:
  char* next_;
};

// Writes a text into a string, which holds it once the builder is finished; until then what it held
// before serves as room.
class TextBuilder {
 public:
  explicit TextBuilder(std::string& text) : text_(text) {}
  TextBuilder(const TextBuilder&) = delete;
  TextBuilder& operator=(const TextBuilder&) = delete;

  // The string with all that is written; to be called last.
  std::string& finish() {
    text_.resize(size_);
    return text_;
  }

  std::size_t size() const { return size_; }

  // What is written from `begin` to `end`; holds until more is written.
  std::string_view view(std::size_t begin, std::size_t end) const {
    return {text_.data() + begin, end - begin};
  }

  // A pen at the end, for at most `most` characters; they count once it is put down. (A number is
  // written as if it were the longest.)
  Pen pen(std::size_t most) {
    most += kNumberRoom;
    if (text_.size() - size_ < most) text_.resize(size_ + most);
    return Pen(text_.data() + size_);
  }
  void putDown(Pen pen) { size_ = static_cast<std::size_t>(pen.place() - text_.data()); }

 private:
  std::string& text_;
  std::size_t size_ = 0;
};

// The dotted decimal form of an address, and the room for it.
inline constexpr std::size_t kAddressRoom = 15;

inline Pen writeAddress(Pen pen, std::uint32_t address) {
  for (const int shift : {24, 16, 8}) {
    pen.putNumber(address >> shift & 0xFF);
    pen.put('.');
  }
  pen.putNumber(address & 0xFF);
  return pen;
}

}  // namespace orvane

#endif  // ORVANE_PORTS_TEXT_H_
