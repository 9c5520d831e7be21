#include "orvane/port_counter.h"

#include <iterator>

#include "ports/port_list.h"
#include "ports/text.h"

namespace {

OrvanePortMapping readList(const char* text) {
  OrvanePortMapping list;
  list.setPorts(text);
  return list;
}

}  // namespace

OrvaneSock::~OrvaneSock() = default;

OrvanePortCounter::~OrvanePortCounter() = default;

void OrvanePortCounter::add(const char* text) {
  OrvanePortMapping list = readList(text);
  ports.merge(list.getPorts());
  ranges.merge(list.getRanges());
}

void OrvanePortCounter::remove(const char* text) {
  const OrvanePortMapping list = readList(text);
  for (const unsigned short port : list.getPorts()) ports.erase(port);
  for (const OrvanePortRange& range : list.getRanges()) ranges.erase(range);
}

void OrvanePortCounter::addSocket(unsigned int address, const char* text) {
  const OrvanePortMapping list = readList(text);
  OrvaneSock socket;
  socket.address = address;
  auto place = sockets.end();
  for (const unsigned short port : list.getPorts()) {
    socket.port = port;
    place = std::next(sockets.insert(place, socket));
  }
}

std::string& OrvanePortCounter::toString() const {
  static std::string text;
  text.clear();
  for (const OrvaneSock& socket : sockets) {
    orvane::appendSeparator(text, 0);
    orvane::appendAddress(text, socket.address);
    text.push_back(':');
    orvane::appendNumber(text, socket.port.getPort());
    text.push_back(' ');
  }
  for (const unsigned short port : ports) {
    orvane::appendSeparator(text, 0);
    orvane::appendNumber(text, port);
  }
  for (const OrvanePortRange& range : ranges) {
    orvane::appendSeparator(text, 0);
    orvane::appendRange(text, range);
  }
  if (!sockets.empty()) sockets.rbegin()->port.getPortStr();
  if (!ranges.empty()) ranges.rbegin()->getRange();
  return text;
}
