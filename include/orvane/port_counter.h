#ifndef ORVANE_PORT_COUNTER_H_
#define ORVANE_PORT_COUNTER_H_

#include <set>
#include <string>
#include <string_view>

#include "orvane/export.h"
#include "orvane/findings.h"
#include "orvane/port_mapping.h"
#include "orvane/port_range.h"

/// The plain record of a socket: an IPv4 address with one port.
struct ORVANE_EXPORT tagSock {
  /// The address; its most significant byte is the first part of the dotted form.
  unsigned int address = 0;
  /// A single port, or, while its port number is 0, a range.
  OrvanePort port;
};

/// A socket, ordered by address as a number, then as OrvanePort orders ports.
class ORVANE_EXPORT OrvaneSock : public tagSock {
 public:
  /// Address 0, port number 0, range 0 to 0.
  OrvaneSock() = default;

  /// Copies address and port.
  OrvaneSock(const OrvaneSock&) = default;
  OrvaneSock& operator=(const OrvaneSock&) = default;
  virtual ~OrvaneSock();

  /// By address, then by port.
  bool operator<(const OrvaneSock& other) const {
    return address != other.address ? address < other.address : port < other.port;
  }

  /// Whether addresses and ports are equal.
  bool operator==(const OrvaneSock& other) const {
    return address == other.address && port == other.port;
  }
};

/// The registry of what is in use: single ports and ranges, taken on every address, and sockets,
/// taken on one address each. It answers whether something new would collide with them.
///
/// A port mapping is free on an address when checkPorts() of its ports, collides() of its ranges
/// and collides() of the address and the mapping all say so: the first two ask what is taken on
/// every address, the last one for the sockets of that address alone.
///
/// It counts nothing: an entry is there or not. Two ranges with the same end are one entry; the
/// first one stays.
///
/// Texts in are port list texts (see OrvanePortMapping), NUL-terminated or views, read as a whole
/// before anything is taken from them: so the ranges of one text are merged with each other, not
/// with those registered before. Items that cannot be read are skipped; a null text changes
/// nothing.
///
/// Several threads may use one counter at once while nothing is registered or removed, except for
/// toString() and the checks that replace a text: calls of these must be serialised. Their twins,
/// appendText() and collides(), touch nothing.
///
/// When memory runs out, std::bad_alloc leaves the operation, and nothing has changed, neither the
/// counter nor what appendText() appends to; but addSocket() may have registered the first ports,
/// and texts that operations return may be empty.
class ORVANE_EXPORT OrvanePortCounter {
 public:
  /// Nothing in use.
  OrvanePortCounter() = default;

  /// Copies everything in use.
  OrvanePortCounter(const OrvanePortCounter&) = default;
  OrvanePortCounter(OrvanePortCounter&&) noexcept = default;
  OrvanePortCounter& operator=(const OrvanePortCounter& other) {
    if (this != &other) *this = OrvanePortCounter(other);
    return *this;
  }
  OrvanePortCounter& operator=(OrvanePortCounter&&) noexcept = default;
  virtual ~OrvanePortCounter();

  /// @name Registering
  /// @{

  /// Registers the single ports and the ranges of `text`, or those given.
  void add(const char* text);
  void add(std::string_view text);
  void add(const std::set<unsigned short>& more);
  void add(const std::set<OrvanePortRange>& more);

  /// add(text) that adds to `findings` which items are skipped, read as something else, merged or
  /// swallowed, and which ranges end where a registered one does. The lines are those of the text.
  void addReported(std::string_view text, OrvaneFindings& findings);

  /// Removes the single ports of `text`, and for each of its ranges the one with the same end,
  /// wherever that starts. What is not registered is ignored.
  void remove(const char* text);
  void remove(std::string_view text);

  /// remove(text) that adds to `findings` what there is to say of the list itself.
  void removeReported(std::string_view text, OrvaneFindings& findings);

  /// Registers a socket on `address` for each single port of `text`, whose ranges are ignored, or
  /// for each port given. Sockets are never removed one by one: assign a new counter to start over.
  void addSocket(unsigned int address, const char* text);
  void addSocket(unsigned int address, std::string_view text);
  void addSocket(unsigned int address, const std::set<unsigned short>& more);

  /// addSocket(address, text) that adds what it finds to `findings`, among it the ranges that it
  /// ignores.
  void addSocketReported(unsigned int address, std::string_view text, OrvaneFindings& findings);
  /// @}

  /// @name In use
  /// The entries. References hold as long as the counter.
  /// @{
  const std::set<OrvaneSock>& getSockets() const { return sockets; }
  const std::set<unsigned short>& getPorts() const { return ports; }
  const std::set<OrvanePortRange>& getRanges() const { return ranges; }
  /// @}

  /// All entries joined by ",": the sockets by address and port, each followed by a blank, the
  /// ports, the ranges by their ends: "10.0.0.1:80 ,10.0.0.1:443 ,53,1000-2000".
  ///
  /// The text belongs to the operation, one for the whole process, and holds until toString() runs
  /// again for any counter. Also replaces the text of OrvanePort::getPortStr() (when there are
  /// sockets) and of OrvanePortRange::getRange() (when there are ranges). The twin adds the same
  /// text to the end of a caller's string instead.
  std::string& toString() const;
  void appendText(std::string& to) const;

  /// @name Ports and ranges, on every address
  /// What lies beyond port numbers, and a range whose start is above its end, is compared as it is.
  /// @{

  /// Whether the single port is registered; ranges do not count.
  bool checkPort(unsigned short port) const { return ports.contains(port); }

  /// Whether a registered range contains `port`; single ports do not count.
  bool overlap(unsigned int port) const;

  /// The smallest port of the set that checkPort() or overlap() holds for; 0 when there is none.
  unsigned short checkPorts(const std::set<unsigned short>& portSet) const;

  /// Whether `range` contains the port of a socket of any address or overlaps the range that the
  /// socket carries, contains a single port, or overlaps a registered range. Sockets made by
  /// addSocket() carry the range 0 to 0: once there is one, every range from 0 collides.
  ///
  /// The range of a socket is compared with its bounds in the order that its text gives them, and
  /// the text of OrvanePortRange::getRange() is replaced by that of the last socket compared so.
  /// collides() replaces nothing.
  bool overlap(const OrvanePortRange& range) const;
  [[nodiscard]] bool collides(const OrvanePortRange& range) const noexcept;

  /// The same as overlap(range).
  bool checkRange(const OrvanePortRange& range) const { return overlap(range); }

  /// Whether checkRange() holds for one of the ranges; replaces the text of getRange() as checking
  /// them in order up to the first that collides does. collides() replaces nothing.
  bool checkRanges(const std::set<OrvanePortRange>& rangeSet) const;
  [[nodiscard]] bool collides(const std::set<OrvanePortRange>& rangeSet) const;
  /// @}

  /// @name Sockets of one address
  /// @{

  /// Whether the address has a socket with that port number. Port 0 stands for the range 0 to 0:
  /// it finds a socket without port number whose range ends at 0.
  bool checkSocket(unsigned int address, unsigned short port) const;

  /// Whether the address has a socket that stands for a range with the same end. Sockets made by
  /// addSocket() never do.
  bool checkSocket(unsigned int address, const OrvanePortRange& range) const;

  /// Whether a socket of the address carries a range that contains `port`; its port number does not
  /// count. For sockets made by addSocket() only port 0 collides.
  bool sockOverlap(unsigned int address, unsigned int port) const;

  /// Whether `range` contains the port of a socket of the address or overlaps the range that the
  /// socket carries. Compares, and replaces the text of getRange(), like overlap(range); collides()
  /// replaces nothing.
  bool sockOverlap(unsigned int address, const OrvanePortRange& range) const;
  [[nodiscard]] bool collides(unsigned int address, const OrvanePortRange& range) const noexcept;

  /// Whether checkSocket() or sockOverlap() holds for one of the ports or ranges of `mapping` on
  /// `address`; the address of the mapping itself does not count, and `flag` has no effect.
  /// Replaces the text of getRange() as checking the ranges in order does, unless a port collides;
  /// collides() replaces nothing.
  bool checkSocket(unsigned int address, const OrvanePortMapping& mapping, bool flag) const;
  [[nodiscard]] bool collides(unsigned int address, const OrvanePortMapping& mapping) const;
  /// @}

 protected:
  /// What is in use. A derived class may register what the operations above cannot, sockets that
  /// stand for a range among them; every check takes account of it.
  std::set<OrvaneSock> sockets;
  std::set<unsigned short> ports;
  std::set<OrvanePortRange> ranges;
};

#endif  // ORVANE_PORT_COUNTER_H_
