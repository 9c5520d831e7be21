#include "orvane/port_counter.h"

#include <cstdint>

#include "ports/port_list.h"
#include "ports/text.h"

OrvaneSock::~OrvaneSock() = default;

OrvanePortCounter::~OrvanePortCounter() = default;

// Each element is inserted after the one before it, which is found in constant time.
void OrvanePortCounter::add(const char* text) {
  const orvane::PortListContent list(orvane::viewOf(text));
  auto port = ports.begin();
  list.ports.forEach([&](std::uint16_t number) { port = ports.insert(port, number); });
  auto place = ranges.begin();
  list.ranges.forEach([&](std::uint32_t start, std::uint32_t end) {
    place = ranges.emplace_hint(place, start, end);
  });
}

void OrvanePortCounter::remove(const char* text) {
  const orvane::PortListContent list(orvane::viewOf(text));
  list.ports.forEach([&](std::uint16_t number) { ports.erase(number); });
  list.ranges.forEach(
      [&](std::uint32_t start, std::uint32_t end) { ranges.erase(OrvanePortRange(start, end)); });
}

void OrvanePortCounter::addSocket(unsigned int address, const char* text) {
  const orvane::PortListContent list(orvane::viewOf(text));
  OrvaneSock socket;
  socket.address = address;
  auto place = sockets.end();
  list.ports.forEach([&](std::uint16_t number) {
    socket.port = number;
    place = sockets.insert(place, socket);
  });
}

std::string& OrvanePortCounter::toString() const {
  static std::string text;
  constexpr std::size_t kSocketRoom = orvane::kAddressRoom + orvane::kNumberRoom + 3;
  orvane::TextBuilder out(text);
  orvane::Pen pen = out.pen(sockets.size() * kSocketRoom + ports.size() * orvane::kPortRoom +
                            ranges.size() * orvane::kRangeRoom);
  const char* const begin = pen.place();
  for (const OrvaneSock& socket : sockets) {
    pen = orvane::writeAddress(pen, socket.address);
    pen.put(':');
    pen.putNumber(socket.port.getPort());
    pen.put(" ,");
  }
  for (const unsigned short port : ports) pen = orvane::writePort(pen, port);
  for (const OrvanePortRange& range : ranges) {
    pen = orvane::writeRange(pen, range);
    pen.put(',');
  }
  pen.endList(begin);
  out.putDown(pen);
  // The texts of the elements are left as writing them one by one would leave them.
  if (!sockets.empty()) sockets.rbegin()->port.getPortStr();
  if (!ranges.empty()) ranges.rbegin()->getRange();
  return out.finish();
}
