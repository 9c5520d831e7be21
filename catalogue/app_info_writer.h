// Writing the section texts of catalogue entries, and port numbers.

#ifndef ORVANE_CATALOGUE_APP_INFO_WRITER_H_
#define ORVANE_CATALOGUE_APP_INFO_WRITER_H_

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "catalogue/app_info_fields.h"
#include "orvane/app_info.h"
#include "ports/range_list.h"

namespace orvane {

// Writes the texts of elements as a list text. Their own result strings, which each element
// written replaces, are set once, at the end.
class PortWriter {
 public:
  // The room for the texts of the elements.
  static std::size_t room(const PortSet& ports) { return ports.size() * kRangeRoom; }

  // Writes the texts of the elements, joined by ",".
  Pen write(Pen pen, const PortSet& ports);

  // Sets those result strings.
  void publish() const;

 private:
  std::uint32_t lastSingle_ = 0;  // 0: none
  std::optional<Bounds> lastRange_;
};

// Writes section texts of entries to a text. The result strings of the entry's own operations,
// which each entry written replaces, are set once, at the end.
class AppInfoWriter {
 public:
  AppInfoWriter(std::string& text, bool terminate);
  AppInfoWriter(const AppInfoWriter&) = delete;
  AppInfoWriter& operator=(const AppInfoWriter&) = delete;

  void append(const OrvaneAppInfo& entry) {
    append(entry, AppInfoAccess::ports(entry), entry.getReserved1());
  }

  // The same with other ports and another first reserved number than the entry's.
  void append(const OrvaneAppInfo& entry, const PortSet& ports, unsigned int reserved1);

  // Finishes the text and sets those result strings; to be called last.
  void publish();

 private:
  // A part of the text.
  struct Extent {
    std::size_t begin = 0;
    std::size_t end = 0;
  };

  TextBuilder out_;
  bool terminate_;
  std::array<ShortText, kAppInfoFields> keys_;  // each with what stands before and after it
  std::size_t fieldsRoom_;
  bool wrote_ = false;
  Extent section_;
  Extent ports_;
  PortWriter portWriter_;
};

// The numbers that an element stands for, none above 65535; none at all when start > end.
inline Bounds numbersOf(const OrvanePort& port) {
  if (port.getPort() != 0) return {port.getPort(), port.getPort()};
  return {port.getStart(), std::min(port.getEnd(), kMaxPort)};
}

// Appends the numbers to a list, a "," after each; and takes back the last one.
void appendNumbers(TextBuilder& out, Bounds numbers);
void endNumbers(TextBuilder& out);

}  // namespace orvane

#endif  // ORVANE_CATALOGUE_APP_INFO_WRITER_H_
