// Text out: what is written goes to the end of a caller's string, and is published afterwards where
// the operation returns a text of its own.

#ifndef ORVANE_PORTS_TEXT_OUT_H_
#define ORVANE_PORTS_TEXT_OUT_H_

#include <array>
#include <cassert>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "ports/results.h"

namespace orvane {

// The most characters that a number of 32 bits takes: "-2147483648".
inline constexpr std::size_t kNumberRoom = 11;

// "00", "01" and so on up to "99".
constexpr auto digitPairs() {
  std::array<std::array<char, 2>, 100> pairs{};
  for (std::size_t i = 0; i < pairs.size(); ++i) {
    pairs[i] = {static_cast<char>('0' + i / 10), static_cast<char>('0' + i % 10)};
  }
  return pairs;
}

inline constexpr auto kDigitPairs = digitPairs();

// Writes into room that was made for it. It is handed on by value: a local one stays in a register,
// while anything that text is written through memory to has to be looked up again for every piece.
class [[nodiscard]] Pen {
 public:
  explicit Pen(char* next) : next_(next) {}

  // Where it writes next.
  char* place() const { return next_; }

  void put(char c) { *next_++ = c; }

  void put(std::string_view piece) { next_ += piece.copy(next_, piece.size()); }

  // A number in plain decimal, two digits at a time. (Against std::to_chars(), which finds out
  // first how many digits there are, it saves a tenth of writing short port lists and two fifths
  // of long ones.)
  template <std::integral Number>
  void putNumber(Number number) {
    static_assert(sizeof number <= sizeof(std::uint32_t));
    auto rest = static_cast<std::uint32_t>(number);
    if constexpr (std::signed_integral<Number>) {
      if (number < 0) {
        put('-');
        rest = -rest;
      }
    }
    if (rest < 10'000) return putUpToFour(rest);
    if (rest < 100'000'000) {
      putUpToFour(rest / 10'000);
    } else {
      putUpToFour(rest / 100'000'000);
      putFour(rest / 10'000 % 10'000);
    }
    putFour(rest % 10'000);
  }

  // Ends a list that began at `begin` and has a separator after each item: takes back the last one.
  void endList(const char* begin) {
    if (next_ != begin) --next_;
  }

 private:
  void putTwo(std::uint32_t number) {
    std::memcpy(next_, kDigitPairs[number].data(), 2);
    next_ += 2;
  }
  void putUpToTwo(std::uint32_t number) {
    if (number < 10) return put(static_cast<char>('0' + number));
    putTwo(number);
  }
  void putFour(std::uint32_t number) {
    putTwo(number / 100);
    putTwo(number % 100);
  }
  void putUpToFour(std::uint32_t number) {
    if (number < 100) return putUpToTwo(number);
    putUpToTwo(number / 100);
    putTwo(number % 100);
  }

  char* next_;
};

// Writes to the end of what is kept of a string, and remembers which part of that is what an
// operation would return that is described as being run. What is written stays once it is finished;
// else the string is in the end what is kept of it. (What is not kept serves as room, which saves
// up to a sixth of writing: a string clears what it grows by.)
class TextOut {
 public:
  TextOut(std::string& to, std::size_t kept) : to_(to), kept_(kept), size_(kept) {}
  TextOut(const TextOut&) = delete;
  TextOut& operator=(const TextOut&) = delete;
  ~TextOut() { to_.resize(kept_); }

  std::size_t size() const { return size_; }

  // A pen at the end, for at most `most` characters; they count once it is put down.
  Pen pen(std::size_t most) {
    if (to_.size() - size_ < most) to_.resize(size_ + most);
    return Pen(to_.data() + size_);
  }
  void putDown(Pen pen) {
    size_ = static_cast<std::size_t>(pen.place() - to_.data());
    assert(size_ <= to_.size());
  }

  // The part from `begin` to the end, that between two places, or that between two places of the
  // pen at hand, is what this operation would return; the last part noted counts.
  void note(Result result, std::size_t begin) { note(result, begin, size_); }
  void note(Result result, std::size_t begin, std::size_t end) {
    const auto i = static_cast<std::size_t>(result);
    parts_[i] = {begin, end - begin};
    noted_ |= 1U << i;
  }
  void note(Result result, const char* begin, const char* end) {
    note(result, static_cast<std::size_t>(begin - to_.data()),
         static_cast<std::size_t>(end - to_.data()));
  }

  void finish() { kept_ = size_; }

  // Gives each operation noted its part.
  // REQUIRES: it is finished.
  void publish() const;

 private:
  static constexpr auto kTraced = static_cast<std::size_t>(Result::kTraced);

  struct Part {
    std::size_t begin;
    std::size_t size;
  };

  std::string& to_;
  std::size_t kept_;
  std::size_t size_;
  std::uint32_t noted_ = 0;  // which parts there are: a bit for each
  std::array<Part, kTraced> parts_;
};

// The dotted decimal form of an address, and the room for it.
inline constexpr std::size_t kAddressRoom = sizeof "255.255.255.255";

inline Pen writeAddress(Pen pen, std::uint32_t address) {
  for (const int shift : {24, 16, 8}) {
    pen.putNumber(address >> shift & 0xFF);
    pen.put('.');
  }
  pen.putNumber(address & 0xFF);
  return pen;
}

// Appends what write(TextOut&, arguments...) writes.
template <typename Write, typename... Arguments>
void append(std::string& to, Write write, const Arguments&... arguments) {
  TextOut out(to, to.size());
  write(out, arguments...);
  out.finish();
}

// The same into the string of an operation, whose text it becomes, and all that this replaces.
template <typename Write, typename... Arguments>
std::string& publish(Result result, Write write, const Arguments&... arguments) {
  std::string& text = resultText(result);
  TextOut out(text, 0);
  write(out, arguments...);
  out.finish();
  out.publish();
  return text;
}

template <typename Write, typename... Arguments>
char* publishText(Result result, Write write, const Arguments&... arguments) {
  return publish(result, write, arguments...).data();
}

}  // namespace orvane

#endif  // ORVANE_PORTS_TEXT_OUT_H_
