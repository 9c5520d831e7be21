#include "orvane/port_mapping.h"

#include <string_view>

#include "ports/port_list.h"
#include "ports/range_list.h"
#include "ports/record.h"
#include "ports/text_in.h"

namespace {

using MappingRecord = orvane::Record<4>;

}  // namespace

OrvanePortMapping::~OrvanePortMapping() = default;

OrvanePortMapping& OrvanePortMapping::operator=(const OrvanePortMapping& other) {
  if (this == &other) return *this;
  tagPortMapping copy(other);
  ports.swap(copy.ports);
  ranges.swap(copy.ranges);
  ip.address = other.ip.address;
  uniqueBlockNumber = other.uniqueBlockNumber;
  selectorInfo = other.selectorInfo;
  return *this;
}

void OrvanePortMapping::setPorts(const char* text) {
  if (text != nullptr) setPorts(std::string_view(text));
}

void OrvanePortMapping::setPorts(std::string_view text) {
  tagPortMapping read;
  orvane::readPortList(text, read);
  ports.swap(read.ports);
  ranges.swap(read.ranges);
}

void OrvanePortMapping::setNewPorts(const char* text) {
  if (text != nullptr) {
    setPorts(text);
  } else {
    ports.clear();
  }
}

void OrvanePortMapping::setIp(const char* text) {
  if (text != nullptr) setIp(std::string_view(text));
}

void OrvanePortMapping::setIp(std::string_view text) {
  ip.address = orvane::readAddress(text).value_or(ip.address);
}

void OrvanePortMapping::setUniqueBlockNumber(const char* text) {
  if (text != nullptr) setUniqueBlockNumber(std::string_view(text));
}

void OrvanePortMapping::setUniqueBlockNumber(std::string_view text) {
  uniqueBlockNumber = orvane::readNumber(text);
}

void OrvanePortMapping::setSelectorInfo(const char* text) {
  if (text != nullptr) setSelectorInfo(std::string_view(text));
}

void OrvanePortMapping::setSelectorInfo(std::string_view text) {
  selectorInfo = static_cast<tagSelectorInfo>(orvane::readSigned(text));
}

void OrvanePortMapping::setValues(const unsigned char* record) {
  try {
    setValuesChecked(MappingRecord::trusted(record));
  } catch (...) {  // promised to the caller: nothing is thrown
  }
}

bool OrvanePortMapping::setValuesChecked(std::span<const unsigned char> record) {
  const auto fields = MappingRecord::split(record);
  if (!fields) return false;
  if (fields->isIgnored()) return true;
  setPorts((*fields)[0]);
  setIp((*fields)[1]);
  setUniqueBlockNumber((*fields)[2]);
  setSelectorInfo((*fields)[3]);
  return true;
}

std::set<OrvanePortRange>::iterator OrvanePortMapping::addRange(const OrvanePortRange& range) {
  orvane::Bounds covered;
  const auto position = orvane::addRange(ranges, range, covered);
  orvane::erasePorts(ports, covered);
  return position;
}
