#include "orvane/port_range.h"

#include <string>
#include <tuple>

#include "ports/port_list.h"
#include "ports/text.h"

OrvanePortRange::OrvanePortRange(const char* text) { OrvanePortRange::copy(text); }

OrvanePortRange& OrvanePortRange::operator=(const OrvanePortRange& range) {
  copy(range);
  return *this;
}

void OrvanePortRange::setRange(const char* text) { copy(text); }

char* OrvanePortRange::getRange() const {
  static std::string text;
  orvane::TextBuilder out(text);
  out.putDown(orvane::writeRange(out.pen(orvane::kRangeRoom), *this));
  return out.finish().data();
}

char* OrvanePortRange::getText() const { return getRange(); }

unsigned short OrvanePortRange::getNumPortsUsed() const {
  return static_cast<unsigned short>(end - start + 1);
}

bool OrvanePortRange::isRange(const char* text) {
  return orvane::readRangeText(orvane::viewOf(text)).isRange();
}

void OrvanePortRange::copy(const char* text) {
  const orvane::RangeText range = orvane::readRangeText(orvane::viewOf(text));
  if (range.count > 0) std::tie(start, end) = range.bounds();
}

void OrvanePortRange::copy(const OrvanePortRange& range) {
  start = range.start;
  end = range.end;
}

OrvanePort::OrvanePort(const char* text) { OrvanePort::copy(text); }

OrvanePort& OrvanePort::operator=(const OrvanePort& other) {
  copy(other);
  return *this;
}

OrvanePort& OrvanePort::operator=(const OrvanePortRange& range) {
  OrvanePortRange::operator=(range);
  return *this;
}

OrvanePort& OrvanePort::operator=(unsigned int number) {
  port = number;
  return *this;
}

char* OrvanePort::getPortStr() const {
  static std::string text;
  text.assign(std::to_string(port));
  return text.data();
}

char* OrvanePort::getText() const { return port != 0 ? getPortStr() : getRange(); }

unsigned short OrvanePort::getNumPortsUsed() const {
  return port != 0 ? 1 : OrvanePortRange::getNumPortsUsed();
}

bool OrvanePort::operator<(const OrvanePort& other) const {
  if (port != 0 && other.port != 0) return port < other.port;
  if (port != 0 || other.port != 0) return port != 0;
  return OrvanePortRange::operator<(other);
}

bool OrvanePort::operator==(const OrvanePort& other) const {
  if (port != 0 || other.port != 0) return port == other.port;
  return OrvanePortRange::operator==(other);
}

void OrvanePort::copy(const char* text) {
  const std::string_view view = orvane::viewOf(text);
  orvane::setPort({orvane::readRangeText(view), orvane::readNumber(view)}, *this);
}

void OrvanePort::copy(const OrvanePort& other) {
  OrvanePortRange::copy(other);
  port = other.port;
}
