#ifndef ORVANE_PORT_RANGE_H_
#define ORVANE_PORT_RANGE_H_

#include <concepts>
#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

#include "orvane/export.h"

/// An inclusive range of port numbers; its text form is "start-end".
///
/// Nothing keeps start <= end, nor the bounds below 65536: constructors and setters store what they
/// are given. Only the reading of a text puts the two bounds in ascending order.
///
/// Ranges are ordered by their end alone, so an ordered set of ranges never holds two that end at
/// the same port.
///
/// How a range text is read: the text is cut at "-" into runs of other characters, each read as a
/// decimal number (leading white space, a sign, digits modulo 2^32, the rest ignored; 0 when there
/// are no digits). One number gives a range of one port; of more, the first two are the bounds, put
/// in order as signed 32-bit numbers. A text without any run leaves the range as it was.
///
/// Several threads may use one object at once while none changes it, except for the operations that
/// return a text: each has one text for the whole process, and calls of it must be serialised.
/// Their append twins have no such text. Where memory runs out, std::bad_alloc leaves the operation
/// and nothing has changed, neither the object nor what an append twin appends to; only texts that
/// operations return may be empty.
class ORVANE_EXPORT OrvanePortRange {
 public:
  /// The range 0 to 0.
  OrvanePortRange() = default;

  /// Stores both bounds unchanged.
  OrvanePortRange(unsigned int first, unsigned int last) : start(first), end(last) {}

  /// Reads a range text as described above, NUL-terminated or a view; a null text, or one without a
  /// number, gives 0 to 0.
  explicit OrvanePortRange(const char* text);
  explicit OrvanePortRange(std::string_view text);

  /// Copies both bounds.
  OrvanePortRange(const OrvanePortRange&) = default;
  virtual ~OrvanePortRange() = default;

  /// Takes both bounds of `range`.
  OrvanePortRange& operator=(const OrvanePortRange& range);

  /// The bounds, as they are stored: nothing orders or checks them.
  void setStart(unsigned int value) { start = value; }
  void setEnd(unsigned int value) { end = value; }
  unsigned int getStart() const { return start; }
  unsigned int getEnd() const { return end; }

  /// Whether start < end: a range of one port is not valid in this sense.
  bool isValid() const { return start < end; }

  /// Whether start <= port <= end.
  bool isInRange(unsigned int port) const { return start <= port && port <= end; }

  /// The same as isInRange().
  bool overlap(unsigned int port) const { return isInRange(port); }

  /// Whether the ranges share a port, for ranges whose bounds are in order: touching ranges (10-20
  /// and 20-30) overlap, adjacent ones (10-20 and 21-30) do not.
  bool overlap(const OrvanePortRange& range) const {
    return end < range.end ? end >= range.start : range.end >= start;
  }

  /// Widens this range to the hull of both; they need not overlap.
  void mergeRange(const OrvanePortRange& range) {
    if (range.start < start) start = range.start;
    if (range.end > end) end = range.end;
  }

  /// Compares the ends only.
  bool operator<(const OrvanePortRange& range) const { return end < range.end; }

  /// Compares both bounds.
  bool operator==(const OrvanePortRange& range) const {
    return start == range.start && end == range.end;
  }

  /// Reads a NUL-terminated text, or a view up to its first NUL, with the class's own reading: a
  /// range text here, a port text in an OrvanePort. A null text changes nothing.
  void setRange(const char* text);
  void setRange(std::string_view text) { setRange(std::string(text).c_str()); }
  void setRange(std::nullptr_t) = delete;

  /// The range text, "1000-2000" or "80-80". The result is never null; it belongs to the operation
  /// and holds until getRange() runs again for any range, also within another operation.
  char* getRange() const;

  /// Appends the text of getRange() to `to`.
  void appendRange(std::string& to) const;

  /// The text of the value: here the range text, with the lifetime of getRange().
  virtual char* getText() const;

  /// The number of ports, end - start + 1, cut to its low 16 bits.
  virtual unsigned short getNumPortsUsed() const;

  /// Whether a text, NUL-terminated or a view, is a range: at least two numbers joined by "-", the
  /// first two of them not 0. "80-90" and "80-80" are; "80", "0-90" and "-80" are not, nor is a
  /// null text.
  [[nodiscard]] static bool isRange(const char* text);
  [[nodiscard]] static bool isRange(std::string_view text);

 protected:
  /// What the constructor from a text and assignment do.
  virtual void copy(const char* text);
  virtual void copy(const OrvanePortRange& range);

 private:
  unsigned int start = 0;
  unsigned int end = 0;
};

/// A single port number, or, while that number is 0, the range that the object carries.
///
/// How a port text is read: the range is always set from the text, as OrvanePortRange reads it. If
/// the text is no range (isRange()) and its number lies in 1 to 65535, that is the port number;
/// otherwise the port number stays as it was.
class ORVANE_EXPORT OrvanePort : public OrvanePortRange {
 public:
  /// Port number 0, range 0 to 0.
  OrvanePort() = default;

  /// Reads a port text as described above, NUL-terminated or a view; a null text gives the
  /// defaults.
  explicit OrvanePort(const char* text);
  explicit OrvanePort(std::string_view text);

  /// Copies the range and the port number.
  OrvanePort(const OrvanePort&) = default;
  ~OrvanePort() override = default;

  /// Takes the range and the port number.
  OrvanePort& operator=(const OrvanePort& other);

  /// Takes the range; the port number stays.
  OrvanePort& operator=(const OrvanePortRange& range);

  /// Takes the port number, unchecked; the range stays.
  OrvanePort& operator=(unsigned int number);

  /// `port = {}` takes those of a default port. (Without this it would mean the number 0.)
  OrvanePort& operator=(std::initializer_list<std::nullptr_t> /*none*/) {
    return *this = OrvanePort();
  }

  /// Stores the port number unchecked.
  void setPort(unsigned int number) { port = number; }
  template <std::integral Number>
  void setPort(Number number) {
    port = static_cast<unsigned int>(number);
  }

  /// Reads a port text as setRange() does; a null text changes nothing.
  void setPort(const char* text) { setRange(text); }
  void setPort(std::string_view text) { setRange(text); }
  void setPort(std::nullptr_t) = delete;

  /// The port number; 0 when the object stands for its range.
  unsigned int getPort() const { return port; }

  /// The port number in decimal. The result is never null; it belongs to the operation and holds
  /// until getPortStr() runs again for any port.
  char* getPortStr() const;

  /// Appends the text of getPortStr() to `to`.
  void appendPortStr(std::string& to) const;

  /// getPortStr() for a single port, else getRange(); it has the lifetime of that text.
  char* getText() const override;

  /// Appends the text of getText() to `to`.
  void appendText(std::string& to) const;

  /// 1 for a single port, else the number of ports of the range, cut to 16 bits.
  unsigned short getNumPortsUsed() const override;

  /// Single ports by number, before all ranges; ranges by their end.
  bool operator<(const OrvanePort& other) const;

  /// Two single ports with the same number, or two ranges with the same bounds.
  bool operator==(const OrvanePort& other) const;

 private:
  void copy(const char* text) override;
  void copy(const OrvanePort& other);
  using OrvanePortRange::copy;

  unsigned int port = 0;
};

/// The test "these two ranges are disjoint".
class ORVANE_EXPORT OrvanePortRangeNotOverlaped {
 public:
  /// Whether that holds for `a` and `b`.
  bool operator()(const OrvanePortRange& a, const OrvanePortRange& b) const {
    return !a.overlap(b);
  }
};

#endif  // ORVANE_PORT_RANGE_H_
