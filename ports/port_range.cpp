#include "orvane/port_range.h"

#include "ports/port_list.h"
#include "ports/text_in.h"
#include "ports/text_out.h"

namespace {

void writeText(orvane::TextOut& out, const OrvanePortRange& range) {
  out.putDown(orvane::writeRange(out.pen(orvane::kRangeRoom), range));
}

void writePortStr(orvane::TextOut& out, const OrvanePort& port) {
  orvane::Pen pen = out.pen(orvane::kNumberRoom);
  pen.putNumber(port.getPort());
  out.putDown(pen);
}

}  // namespace

OrvanePortRange::OrvanePortRange(const char* text) : OrvanePortRange(orvane::viewOf(text)) {}

OrvanePortRange::OrvanePortRange(std::string_view text) { orvane::setBounds(text, *this); }

OrvanePortRange& OrvanePortRange::operator=(const OrvanePortRange& range) {
  copy(range);
  return *this;
}

void OrvanePortRange::setRange(const char* text) { copy(text); }

char* OrvanePortRange::getRange() const {
  return orvane::publishText(orvane::Result::kRange, writeText, *this);
}

void OrvanePortRange::appendRange(std::string& to) const { orvane::append(to, writeText, *this); }

char* OrvanePortRange::getText() const { return getRange(); }

unsigned short OrvanePortRange::getNumPortsUsed() const {
  return static_cast<unsigned short>(end - start + 1);
}

bool OrvanePortRange::isRange(const char* text) { return isRange(orvane::viewOf(text)); }

bool OrvanePortRange::isRange(std::string_view text) {
  return orvane::readRangeText(text).isRange();
}

void OrvanePortRange::copy(const char* text) { orvane::setBounds(orvane::viewOf(text), *this); }

void OrvanePortRange::copy(const OrvanePortRange& range) {
  start = range.start;
  end = range.end;
}

OrvanePort::OrvanePort(const char* text) : OrvanePort(orvane::viewOf(text)) {}

OrvanePort::OrvanePort(std::string_view text) { orvane::setPort(text, *this); }

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
  return orvane::publishText(orvane::Result::kPortStr, writePortStr, *this);
}

void OrvanePort::appendPortStr(std::string& to) const { orvane::append(to, writePortStr, *this); }

char* OrvanePort::getText() const { return port != 0 ? getPortStr() : getRange(); }

void OrvanePort::appendText(std::string& to) const {
  return port != 0 ? appendPortStr(to) : appendRange(to);
}

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

void OrvanePort::copy(const char* text) { orvane::setPort(orvane::viewOf(text), *this); }

void OrvanePort::copy(const OrvanePort& other) {
  OrvanePortRange::copy(other);
  port = other.port;
}
