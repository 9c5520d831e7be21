// Sockets as values.

#ifndef ORVANE_COUNTER_SOCKET_OF_H_
#define ORVANE_COUNTER_SOCKET_OF_H_

#include "orvane/port_counter.h"

namespace orvane {

// A socket with a port number, or with a range and the port number 0.
template <typename Port>
OrvaneSock socketOf(unsigned int address, const Port& port) {
  OrvaneSock socket;
  socket.address = address;
  socket.port = port;
  return socket;
}

}  // namespace orvane

#endif  // ORVANE_COUNTER_SOCKET_OF_H_
