#include "orvane/port_counter.h"

#include <cstdint>

#include "counter/socket_of.h"
#include "ports/port_list.h"
#include "ports/text_in.h"
#include "ports/text_out.h"
#include "ports/watcher.h"

namespace {

using orvane::Pen;
using orvane::Result;
using orvane::TextOut;

using Ports = std::set<unsigned short>;
using Ranges = std::set<OrvanePortRange>;

template <typename Watcher>
void addList(std::string_view text, Ports& ports, Ranges& ranges, Watcher& watcher) {
  tagPortMapping more;
  orvane::readPortList(text, more, watcher);
  if constexpr (Watcher::kWatches) {
    for (const OrvanePortRange& range : more.ranges) {
      const auto held = ranges.find(range);
      if (held != ranges.end() && !(*held == range)) watcher.skipped(orvane::boundsOf(range));
    }
  }
  orvane::splice(more.ports, ports);
  orvane::splice(more.ranges, ranges);
}

template <typename Watcher>
void removeList(std::string_view text, Ports& ports, Ranges& ranges, Watcher& watcher) {
  tagPortMapping list;
  orvane::readPortList(text, list, watcher);
  for (const unsigned short port : list.ports) ports.erase(port);
  for (const OrvanePortRange& range : list.ranges) ranges.erase(range);
}

template <typename Watcher>
void addSockets(unsigned int address, std::string_view text, std::set<OrvaneSock>& sockets,
                Watcher& watcher) {
  orvane::FlatPortList list;
  watcher.portList(text);
  list.read(text, watcher);
  auto place = sockets.end();
  list.ports.forEach(
      [&](unsigned int port) { place = sockets.insert(place, orvane::socketOf(address, port)); });
  if constexpr (Watcher::kWatches) {
    list.ranges.forEach([&](std::uint32_t start, std::uint32_t end) {
      watcher.rangeIgnored({start, end});
    });
  }
}

void writeUsed(TextOut& out, const OrvanePortCounter& used) {
  constexpr std::size_t kSocketRoom = orvane::kAddressRoom + orvane::kNumberRoom + sizeof ": ,";
  Pen pen =
      out.pen(used.getSockets().size() * kSocketRoom + used.getPorts().size() * orvane::kPortRoom +
              used.getRanges().size() * orvane::kRangeRoom);
  const char* const begin = pen.place();
  for (const OrvaneSock& socket : used.getSockets()) {
    pen = orvane::writeAddress(pen, socket.address);
    pen.put(':');
    const char* const number = pen.place();
    pen.putNumber(socket.port.getPort());
    out.note(Result::kPortStr, number, pen.place());
    pen.put(std::string_view(" ,"));
  }
  for (const unsigned short port : used.getPorts()) pen = orvane::writePort(pen, port);
  for (const OrvanePortRange& range : used.getRanges()) {
    const char* const text = pen.place();
    pen = orvane::writeRange(pen, range);
    out.note(Result::kRange, text, pen.place());
    pen.put(',');
  }
  pen.endList(begin);
  out.putDown(pen);
}

}  // namespace

OrvaneSock::~OrvaneSock() = default;

OrvanePortCounter::~OrvanePortCounter() = default;

void OrvanePortCounter::add(const char* text) { add(orvane::viewOf(text)); }

void OrvanePortCounter::add(std::string_view text) {
  orvane::Unwatched unwatched;
  addList(text, ports, ranges, unwatched);
}

void OrvanePortCounter::addReported(std::string_view text, OrvaneFindings& findings) {
  orvane::Reporter reporter(text, findings);
  addList(text, ports, ranges, reporter);
}

void OrvanePortCounter::add(const std::set<unsigned short>& more) { orvane::addAll(more, ports); }

void OrvanePortCounter::add(const std::set<OrvanePortRange>& more) { orvane::addAll(more, ranges); }

void OrvanePortCounter::remove(const char* text) { remove(orvane::viewOf(text)); }

void OrvanePortCounter::remove(std::string_view text) {
  orvane::Unwatched unwatched;
  removeList(text, ports, ranges, unwatched);
}

void OrvanePortCounter::removeReported(std::string_view text, OrvaneFindings& findings) {
  orvane::Reporter reporter(text, findings);
  removeList(text, ports, ranges, reporter);
}

void OrvanePortCounter::addSocket(unsigned int address, const char* text) {
  addSocket(address, orvane::viewOf(text));
}

void OrvanePortCounter::addSocket(unsigned int address, std::string_view text) {
  orvane::Unwatched unwatched;
  addSockets(address, text, sockets, unwatched);
}

void OrvanePortCounter::addSocketReported(unsigned int address, std::string_view text,
                                          OrvaneFindings& findings) {
  orvane::Reporter reporter(text, findings);
  addSockets(address, text, sockets, reporter);
}

void OrvanePortCounter::addSocket(unsigned int address, const std::set<unsigned short>& more) {
  auto place = sockets.end();
  for (const unsigned int port : more) {
    place = sockets.insert(place, orvane::socketOf(address, port));
  }
}

std::string& OrvanePortCounter::toString() const {
  return orvane::publish(Result::kCounter, writeUsed, *this);
}

void OrvanePortCounter::appendText(std::string& to) const { orvane::append(to, writeUsed, *this); }
