#include "catalogue/app_info_writer.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace orvane {
namespace {

template <typename Number>
Pen writeField(Pen pen, const KeyText& key, Number number) {
  pen = key.write(pen);
  pen.putNumber(number);
  return pen;
}

// Writes numbers from 100 to 65535 that differ in the last two digits only, a "," after each:
// copies of one text that these are put into, which takes a third of the time of writing each
// number. REQUIRES: room for kHundredRoom more.
constexpr std::size_t kHundredRoom = 8;

Pen writeHundred(Pen pen, std::uint32_t number, std::uint32_t last) {
  std::array<char, kHundredRoom> text{};
  Pen common(text.data());
  common.putNumber(number / 100);
  const auto size = static_cast<std::size_t>(common.place() - text.data());
  text[size + 2] = ',';
  char* place = pen.place();
  for (std::uint32_t i = number % 100; number <= last; ++number, ++i, place += size + 3) {
    std::memcpy(place, text.data(), text.size());
    std::memcpy(place + size, kDigitPairs[i].data(), 2);
  }
  return Pen(place);
}

}  // namespace

Pen writePorts(TextOut& out, Pen pen, const PortSet& ports) {
  const char* const begin = pen.place();
  for (const OrvanePort& port : ports) {
    const char* const text = pen.place();
    if (port.getPort() != 0) {
      pen.putNumber(port.getPort());
      out.note(Result::kPortStr, text, pen.place());
    } else {
      pen = writeRange(pen, port);
      out.note(Result::kRange, text, pen.place());
    }
    pen.put(',');
  }
  pen.endList(begin);
  out.note(Result::kEntryPorts, begin, pen.place());
  return pen;
}

AppInfoWriter::AppInfoWriter(TextOut& out, bool terminate)
    : out_(out), terminate_(terminate), fieldsRoom_(kFqnRoom + sizeof "\n;\n" + KeyText::kRoom) {
  const AppInfoKeys keys = currentKeys();
  for (std::size_t i = 0; i < kAppInfoFields; ++i) {
    keys_[i] = KeyText(i == 0 ? "" : "\n", keys[i]);
    fieldsRoom_ += keys_[i].size() + kNumberRoom;
  }
}

void AppInfoWriter::append(const OrvaneAppInfo& entry, const PortSet& ports,
                           unsigned int reserved1) {
  const std::size_t begin = out_.size();
  Pen pen = out_.pen(fieldsRoom_ + portsRoom(ports));
  pen = writeField(pen, keys_[kEntryVersion], entry.getVersion());
  pen = writeField(pen, keys_[kEntryPortType], static_cast<int>(entry.getPortType()));
  pen = writeField(pen, keys_[kEntryUpid], entry.getUPID());
  pen = keys_[kEntryPortRange].write(pen);
  pen = writePorts(out_, pen, ports);
  pen = writeField(pen, keys_[kEntryReserved1], reserved1);
  pen = writeField(pen, keys_[kEntryReserved2], entry.getReserved2());
  pen = writeField(pen, keys_[kEntryReserved3], entry.getReserved3());
  pen = keys_[kEntryFqn].write(pen);
  pen.put(fieldText(entry.getFQN(), kFqnRoom));
  pen.put(std::string_view(terminate_ ? "\n;\n" : "\n"));
  out_.putDown(pen);
  out_.note(Result::kEntrySection, begin);
}

void writeNumbers(TextOut& out, Bounds numbers) {
  auto [number, last] = numbers;
  if (number > last) return;
  if (number == last) {
    Pen pen = out.pen(kNumberRoom + 1);
    pen.putNumber(number);
    pen.put(',');
    return out.putDown(pen);
  }
  Pen pen = out.pen((std::size_t{last} - number + 1) * kPortRoom + kHundredRoom);
  for (; number <= last && number < 100; ++number) {
    pen.putNumber(number);
    pen.put(',');
  }
  while (number <= last) {
    const std::uint32_t end = std::min(last, number / 100 * 100 + 99);
    pen = writeHundred(pen, number, end);
    number = end + 1;
  }
  out.putDown(pen);
}

void endNumbers(TextOut& out, std::size_t begin) {
  if (out.size() == begin) return;
  Pen pen = out.pen(0);
  pen.endList(nullptr);
  out.putDown(pen);
}

}  // namespace orvane

namespace {

using orvane::Result;
using orvane::TextOut;

void writeElements(TextOut& out, const orvane::PortSet& ports) {
  out.putDown(orvane::writePorts(out, out.pen(orvane::portsRoom(ports)), ports));
}

void writeEnumPorts(TextOut& out, const orvane::PortSet& ports) {
  const std::size_t begin = out.size();
  for (const OrvanePort& port : ports) {
    const std::size_t text = out.size();
    orvane::writeNumbers(out, orvane::numbersOf(port));
    if (port.getPort() != 0) out.note(Result::kPortStr, text, out.size() - 1);
  }
  orvane::endNumbers(out, begin);
}

void writeEntry(TextOut& out, const OrvaneAppInfo& entry, bool terminate) {
  orvane::AppInfoWriter(out, terminate).append(entry);
}

}  // namespace

char* OrvaneAppInfo::getPorts() const {
  return orvane::publishText(Result::kEntryPorts, writeElements, ports);
}

void OrvaneAppInfo::appendPorts(std::string& to) const { orvane::append(to, writeElements, ports); }

char* OrvaneAppInfo::getEnumPorts() const {
  return orvane::publishText(Result::kEntryEnumPorts, writeEnumPorts, ports);
}

void OrvaneAppInfo::appendEnumPorts(std::string& to) const {
  orvane::append(to, writeEnumPorts, ports);
}

char* OrvaneAppInfo::getSection(bool terminate) const {
  return orvane::publishText(Result::kEntrySection, writeEntry, *this, terminate);
}

void OrvaneAppInfo::appendSection(std::string& to, bool terminate) const {
  orvane::append(to, writeEntry, *this, terminate);
}
