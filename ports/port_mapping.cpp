#include "orvane/port_mapping.h"

#include <string_view>
#include <utility>

#include "ports/port_list.h"
#include "ports/range_list.h"
#include "ports/record.h"
#include "ports/text_in.h"
#include "ports/watcher.h"

namespace {

using MappingRecord = orvane::Record<4>;

template <typename Watcher>
tagPortMapping readPorts(std::string_view text, Watcher& watcher) {
  tagPortMapping read;
  orvane::readPortList(text, read, watcher);
  return read;
}

void swapPorts(tagPortMapping read, OrvanePortMapping& mapping) {
  mapping.ports.swap(read.ports);
  mapping.ranges.swap(read.ranges);
}

// All is read and told before anything is set, since both may need memory.
template <typename Watcher>
bool readRecord(std::span<const unsigned char> record, OrvanePortMapping& mapping,
                Watcher& watcher) {
  const auto fields = MappingRecord::split(record, watcher);
  if (!fields) return false;
  if (fields->isIgnored()) return true;
  const auto [portList, address, blockNumber, selectorInfo] = fields->texts();
  tagPortMapping read = readPorts(portList, watcher);
  watcher.address("IPv4", address);
  watcher.number("UniqueBlockNumber", blockNumber);
  watcher.signedNumber("SelectorTypeInfo", selectorInfo);
  swapPorts(std::move(read), mapping);
  mapping.setIp(address);
  mapping.setUniqueBlockNumber(blockNumber);
  mapping.setSelectorInfo(selectorInfo);
  return true;
}

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
  orvane::Unwatched unwatched;
  swapPorts(readPorts(text, unwatched), *this);
}

void OrvanePortMapping::setPortsReported(std::string_view text, OrvaneFindings& findings) {
  orvane::Reporter reporter(text, findings);
  swapPorts(readPorts(text, reporter), *this);
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
  orvane::Unwatched unwatched;
  return readRecord(record, *this, unwatched);
}

bool OrvanePortMapping::setValuesReported(std::span<const unsigned char> record,
                                          OrvaneFindings& findings) {
  orvane::Reporter reporter(findings);
  return readRecord(record, *this, reporter);
}

std::set<OrvanePortRange>::iterator OrvanePortMapping::addRange(const OrvanePortRange& range) {
  orvane::Bounds covered;
  orvane::Unwatched unwatched;
  const auto position = orvane::addRange(ranges, range, covered, unwatched);
  orvane::erasePorts(ports, covered);
  return position;
}
