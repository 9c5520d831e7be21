// The fields of an item as its readers apply them: from a record, a section group or a setter.

#ifndef ORVANE_PORTS_ITEM_FIELDS_H_
#define ORVANE_PORTS_ITEM_FIELDS_H_

#include <string_view>

#include "orvane/port_mapping.h"
#include "ports/text.h"

namespace orvane {

inline void readIp(std::string_view text, tagPortMapping& item) {
  if (const auto address = readAddress(text)) item.ip.address = *address;
}

inline void readBlockNumber(std::string_view text, tagPortMapping& item) {
  item.uniqueBlockNumber = readNumber(text);
}

inline void readSelectorInfo(std::string_view text, tagPortMapping& item) {
  item.selectorInfo = static_cast<tagSelectorInfo>(readSigned(text));
}

}  // namespace orvane

#endif  // ORVANE_PORTS_ITEM_FIELDS_H_
