// The texts that a mapping gives, and those that port list texts are turned into.

#include <algorithm>
#include <utility>
#include <vector>

#include "orvane/port_mapping.h"
#include "ports/differences.h"
#include "ports/port_list.h"
#include "ports/text_in.h"
#include "ports/text_out.h"

namespace {

using orvane::Pen;
using orvane::Result;
using orvane::TextOut;

void writePorts(TextOut& out, const tagPortMapping& mapping) {
  out.putDown(writePortList(out, out.pen(orvane::portListRoom(mapping)), mapping));
}

void writeIp(TextOut& out, unsigned int address) {
  const std::size_t begin = out.size();
  out.putDown(orvane::writeAddress(out.pen(orvane::kAddressRoom), address));
  out.note(Result::kIp, begin);
}

void writeMapping(TextOut& out, const tagPortMapping& mapping) {
  if (mapping.ip.address != 0) {
    writeIp(out, mapping.ip.address);
    Pen pen = out.pen(1);
    pen.put(':');
    out.putDown(pen);
  }
  writePorts(out, mapping);
}

void writePortArray(TextOut& out, const std::set<unsigned short>& ports) {
  Pen pen = out.pen(ports.size() * orvane::kPortRoom);
  const char* const begin = pen.place();
  for (const unsigned short port : ports) pen = orvane::writePort(pen, port);
  pen.endList(begin);
  out.putDown(pen);
}

// What `newer` has and `older` lacks. Zeros are never written.
void writeDifference(TextOut& out, const tagPortMapping& older, const tagPortMapping& newer) {
  Pen pen = out.pen(orvane::portListRoom(newer));
  const char* const begin = pen.place();
  orvane::forEachMissing(newer.ports, older.ports, orvane::orderBy(OrvanePortArrayLess()),
                         [&](unsigned short port) {
                           if (port != 0) pen = orvane::writePort(pen, port);
                         });
  orvane::forEachMissing(newer.ranges, older.ranges, orvane::orderBy(OrvaneRangeSetLess()),
                         [&](const OrvanePortRange& range) {
                           if (range.getEnd() == 0) return;
                           pen = orvane::writeRange(pen, range);
                           pen.put(',');
                         });
  pen.endList(begin);
  out.putDown(pen);
}

void writeSorted(TextOut& out, std::string_view text) {
  std::vector<std::pair<std::int32_t, std::string_view>> items;
  std::string_view rest = text;
  for (std::string_view token; orvane::nextToken(rest, ',', token);) {
    items.emplace_back(orvane::readSigned(token), token);
  }
  std::ranges::stable_sort(items, {}, [](const auto& item) { return item.first; });
  Pen pen = out.pen(text.size() + 1);
  const char* const begin = pen.place();
  for (const auto& [number, token] : items) {
    pen.put(token);
    pen.put(',');
  }
  pen.endList(begin);
  out.putDown(pen);
}

void writeParsed(TextOut& out, tagParseType type, std::string_view text) {
  Pen pen = out.pen(text.size() + 1);
  const char* const begin = pen.place();
  for (std::string_view token; orvane::nextToken(text, ',', token);) {
    const bool range = orvane::readRangeText(token).isRange();
    if (range && type == kOrvaneParseRanges) {
      pen.put(token);
      pen.put(',');
    } else if (!range && type == kOrvaneParsePorts && orvane::readSigned(token) >= 1) {
      pen.putNumber(orvane::readSigned(token));
      pen.put(',');
    }
  }
  pen.endList(begin);
  out.putDown(pen);
}

// Publishes what is made of a text, which may be the result of an earlier call.
template <typename... Arguments>
char* publishMade(Result result, Arguments... arguments) {
  std::string made;
  orvane::append(made, arguments...);
  std::string& text = orvane::resultText(result);
  text.swap(made);
  return text.data();
}

}  // namespace

std::string& OrvanePortMapping::getPortsAsString() const {
  return orvane::publish(Result::kPorts, writePorts, *this);
}

void OrvanePortMapping::appendPorts(std::string& to) const {
  orvane::append(to, writePorts, *this);
}

std::string& OrvanePortMapping::getIpAsString() const {
  return orvane::publish(Result::kIp, writeIp, ip.address);
}

void OrvanePortMapping::appendIp(std::string& to) const { orvane::append(to, writeIp, ip.address); }

std::string& OrvanePortMapping::getMappingAsString() const {
  return orvane::publish(Result::kMapping, writeMapping, *this);
}

void OrvanePortMapping::appendMapping(std::string& to) const {
  orvane::append(to, writeMapping, *this);
}

std::string& OrvanePortMapping::getDiffAsString(const OrvanePortMapping& other) const {
  return orvane::publish(Result::kDiff, writeDifference, *this, other);
}

void OrvanePortMapping::appendDiff(std::string& to, const OrvanePortMapping& other) const {
  orvane::append(to, writeDifference, *this, other);
}

std::string& OrvanePortMapping::PortArrayToString(const std::set<unsigned short>& set) {
  return orvane::publish(Result::kPortArray, writePortArray, set);
}

void OrvanePortMapping::appendPortArray(std::string& to, const std::set<unsigned short>& set) {
  orvane::append(to, writePortArray, set);
}

char* OrvanePortMapping::sortPorts(const char* text) {
  return publishMade(Result::kSortedPorts, writeSorted, orvane::viewOf(text));
}

void OrvanePortMapping::appendSortedPorts(std::string& to, std::string_view text) {
  orvane::append(to, writeSorted, text);
}

char* OrvanePortMapping::parse(tagParseType type, const char* text) {
  return publishMade(Result::kParsed, writeParsed, type, orvane::viewOf(text));
}

void OrvanePortMapping::appendParsed(std::string& to, tagParseType type, std::string_view text) {
  orvane::append(to, writeParsed, type, text);
}
