// Writing the section texts of catalogue entries, and port numbers.

#ifndef ORVANE_CATALOGUE_APP_INFO_WRITER_H_
#define ORVANE_CATALOGUE_APP_INFO_WRITER_H_

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <string_view>
#include <tuple>

#include "catalogue/app_info_fields.h"
#include "orvane/app_info.h"
#include "ports/port_list.h"
#include "ports/range_list.h"
#include "ports/text_out.h"

namespace orvane {

// A key of a section text, with what stands before and after it. A short one is written by a copy
// of kRoom bytes, which takes no call (a call for each key takes half as much again of writing a
// catalogue).
class KeyText {
 public:
  static constexpr std::size_t kRoom = 16;

  KeyText() = default;
  KeyText(std::string_view before, std::string_view key)
      : before_(before), key_(key), size_(before.size() + key.size() + 1) {
    if (size_ <= kRoom) std::ignore = writePieces(Pen(head_.data()));
  }

  std::size_t size() const { return size_; }

  // REQUIRES: room for it and kRoom more.
  Pen write(Pen pen) const {
    if (size_ > kRoom) return writePieces(pen);
    std::memcpy(pen.place(), head_.data(), kRoom);
    return Pen(pen.place() + size_);
  }

 private:
  Pen writePieces(Pen pen) const {
    pen.put(before_);
    pen.put(key_);
    pen.put('=');
    return pen;
  }

  std::string_view before_;
  std::string_view key_;
  std::size_t size_ = 0;
  std::array<char, kRoom> head_{};
};

// Writes section texts of entries, with the keys that are in force when it is made.
class AppInfoWriter {
 public:
  AppInfoWriter(TextOut& out, bool terminate);

  void append(const OrvaneAppInfo& entry) {
    append(entry, entry.getPortSet(), entry.getReserved1());
  }

  // The same with other ports and another first reserved number than the entry's.
  void append(const OrvaneAppInfo& entry, const PortSet& ports, unsigned int reserved1);

 private:
  TextOut& out_;
  bool terminate_;
  std::array<KeyText, kAppInfoFields> keys_;
  std::size_t fieldsRoom_;
};

// The texts of the elements, joined by ",", by a pen of `out`, and the room for them.
Pen writePorts(TextOut& out, Pen pen, const PortSet& ports);

inline std::size_t portsRoom(const PortSet& ports) { return ports.size() * kRangeRoom; }

// The numbers that an element stands for, none above 65535; none at all when start > end.
inline Bounds numbersOf(const OrvanePort& port) {
  if (port.getPort() != 0) return {port.getPort(), port.getPort()};
  return {port.getStart(), std::min(port.getEnd(), kMaxPort)};
}

// Appends the numbers to a list, a "," after each; and takes back the last one.
void writeNumbers(TextOut& out, Bounds numbers);
void endNumbers(TextOut& out, std::size_t begin);

}  // namespace orvane

#endif  // ORVANE_CATALOGUE_APP_INFO_WRITER_H_
