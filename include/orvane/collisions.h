#ifndef ORVANE_COLLISIONS_H_
#define ORVANE_COLLISIONS_H_

#include <string>
#include <vector>

#include "orvane/app_mapping.h"
#include "orvane/export.h"
#include "orvane/port_counter.h"

/// What an item and another one, or a counter, both have on an address.
struct ORVANE_EXPORT OrvaneCollision {
  const OrvaneApplication* application = nullptr;       ///< whose item it is
  const OrvanePortMapping* item = nullptr;              ///< of that application
  const OrvaneApplication* otherApplication = nullptr;  ///< null for a counter
  const OrvanePortMapping* otherItem = nullptr;         ///< null for a counter
  /// Where the other one has the ports; 0 is every address.
  unsigned int otherAddress = 0;
  /// The ports in common, ascending, joined where they overlap or touch; there is at least one. A
  /// single port is a range from it to itself.
  std::vector<OrvanePortRange> ports;

  /// Appends the ports in common to `to`: "80,8000-8010". When memory runs out, std::bad_alloc
  /// leaves the operation, and `to` holds what it held.
  void appendPorts(std::string& to) const;
};

/// Who collides with whom, on which addresses and ports; walk, index and size it as the vector that
/// it is. It is in the order of the applications, for each of them in that of its items, and for
/// each item in that of the others.
///
/// An item and another one collide when they have ports in common on an address. Ports are single
/// ports and those of ranges alike; a range whose start is above its end has none. What has no
/// address (0) has its ports on every one. There is one collision for each pair of items that
/// collide, whatever they have in common.
///
/// The pointers point into the collections given: they hold as long as these live and do not
/// change. Making a list takes time and memory near linear in what is compared and what comes of
/// it. It touches no text of an operation, and several threads may do it at once with the same
/// collections and counters while none changes these. When memory runs out, std::bad_alloc leaves
/// the constructor.
class ORVANE_EXPORT OrvaneCollisions : public std::vector<OrvaneCollision> {
 public:
  /// None.
  OrvaneCollisions() = default;

  /// Within a collection: the items of each application with those of the applications after it. So
  /// each pair of items is there once, under the first of both; those of one application never
  /// collide.
  /// REQUIRES: the collection outlives it.
  explicit OrvaneCollisions(const OrvaneAppMapping& applications);
  explicit OrvaneCollisions(const OrvaneAppMapping&&) = delete;

  /// The items of a collection with those of another one. (A collection compared with itself so
  /// collides item by item.)
  /// REQUIRES: both outlive it.
  OrvaneCollisions(const OrvaneAppMapping& applications, const OrvaneAppMapping& others);
  OrvaneCollisions(const OrvaneAppMapping&&, const OrvaneAppMapping&) = delete;
  OrvaneCollisions(const OrvaneAppMapping&, const OrvaneAppMapping&&) = delete;

  /// The items of a collection with what is in use. The others are the sockets of each address,
  /// ascending, and then what is in use on every address: ports, ranges, and the sockets of address
  /// 0. A socket counts with its port number or, while that is 0, with the range that it carries.
  /// REQUIRES: the collection outlives it.
  OrvaneCollisions(const OrvaneAppMapping& applications, const OrvanePortCounter& used);
  OrvaneCollisions(const OrvaneAppMapping&&, const OrvanePortCounter&) = delete;
};

#endif  // ORVANE_COLLISIONS_H_
