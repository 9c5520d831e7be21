#include "orvane/port_mapping.h"

#include <string_view>

#include "ports/port_list.h"
#include "ports/range_list.h"
#include "ports/record.h"
#include "ports/text.h"

namespace {

using MappingRecord = orvane::Record<4>;

void readIp(std::string_view text, tagPortMapping& item) {
  if (const auto address = orvane::readAddress(text)) item.ip.address = *address;
}

void readBlockNumber(std::string_view text, tagPortMapping& item) {
  item.uniqueBlockNumber = orvane::readNumber(text);
}

void readSelectorInfo(std::string_view text, tagPortMapping& item) {
  item.selectorInfo = static_cast<tagSelectorInfo>(orvane::readSigned(text));
}

}  // namespace

OrvanePortMapping::~OrvanePortMapping() = default;

OrvanePortMapping& OrvanePortMapping::operator=(const OrvanePortMapping& other) {
  if (this == &other) return *this;
  ports = other.ports;
  ranges = other.ranges;
  ip.address = other.ip.address;
  uniqueBlockNumber = other.uniqueBlockNumber;
  selectorInfo = other.selectorInfo;
  return *this;
}

void OrvanePortMapping::setPorts(const char* text) {
  if (text != nullptr) orvane::readPortList(text, *this);
}

void OrvanePortMapping::setNewPorts(const char* text) {
  ports.clear();
  setPorts(text);
}

void OrvanePortMapping::setIp(const char* text) {
  if (text != nullptr) readIp(text, *this);
}

void OrvanePortMapping::setUniqueBlockNumber(const char* text) {
  if (text != nullptr) readBlockNumber(text, *this);
}

void OrvanePortMapping::setSelectorInfo(const char* text) {
  if (text != nullptr) readSelectorInfo(text, *this);
}

void OrvanePortMapping::setValues(const unsigned char* record) {
  try {
    setValuesChecked(MappingRecord::trusted(record));
  } catch (...) {  // promised to the caller: what was set stays set, nothing is thrown
  }
}

bool OrvanePortMapping::setValuesChecked(std::span<const unsigned char> record) {
  const auto fields = MappingRecord::split(record);
  if (!fields) return false;
  if (fields->isIgnored()) return true;
  orvane::readPortList((*fields)[0], *this);
  readIp((*fields)[1], *this);
  readBlockNumber((*fields)[2], *this);
  readSelectorInfo((*fields)[3], *this);
  return true;
}

std::set<OrvanePortRange>::iterator OrvanePortMapping::addRange(const OrvanePortRange& range) {
  orvane::Bounds covered;
  const auto position = orvane::addRange(ranges, range, covered);
  orvane::erasePorts(ports, covered);
  return position;
}

std::string& OrvanePortMapping::getIpAsString() const {
  static std::string text;
  orvane::TextBuilder out(text);
  out.putDown(orvane::writeAddress(out.pen(orvane::kAddressRoom), ip.address));
  return out.finish();
}

std::string& OrvanePortMapping::getMappingAsString() const {
  static std::string text;
  text.clear();
  if (ip.address != 0) text.append(getIpAsString()).push_back(':');
  text.append(getPortsAsString());
  return text;
}
