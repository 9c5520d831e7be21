// Single range, port and address texts: what they say agrees in every reader, and their own texts
// read the same again.

#include <orvane/orvane.h>

#include "fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = fuzz::textOf(data, size);
  OrvanePortRange range(3, 4);
  range.setRange(text.c_str());
  const std::string written = range.getRange();
  OrvanePortRange again;
  again.setRange(written.c_str());
  if (range.getStart() != 0 && range.getEnd() != 0) fuzz::require(again.getRange() == written);

  const OrvanePort port(text.c_str());
  fuzz::require(port.getPort() <= 65535);
  OrvanePort same;
  same = port;
  fuzz::require(!(port < same) && !(same < port));
  fuzz::require(std::string(same.getText()) == std::string(port.getText()));
  fuzz::require(port.getNumPortsUsed() == same.getNumPortsUsed());

  OrvanePortMapping item;
  item.setIp(text.c_str());
  OrvanePortMapping dotted;
  dotted.setIp(std::string(item.getIpAsString()).c_str());
  fuzz::require(dotted.getIpAddress() == item.getIpAddress());
  item.setUniqueBlockNumber(text.c_str());
  fuzz::require(text.find('.') != std::string::npos || text.empty() ||
                item.getUniqueBlockNumber() == item.getIpAddress());
  return 0;
}
