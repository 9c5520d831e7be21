// JSON as every command writes it.

#ifndef ORVANE_CLI_TERMINAL_JSON_H_
#define ORVANE_CLI_TERMINAL_JSON_H_

#include <nlohmann/json.hpp>
#include <string>

#include "cli/terminal/text.h"
#include "orvane/application.h"

namespace orvane::cli {

using Json = nlohmann::ordered_json;

// Names may hold any bytes; those that are no UTF-8 are replaced.
inline std::string toText(const Json& json) {
  return escapeInJson(json.dump(2, ' ', false, Json::error_handler_t::replace)) + "\n";
}

// Null for a new application.
inline Json upidOf(const OrvaneApplication& application) {
  return application.getUpid() == kOrvaneNoUpid ? Json() : Json(application.getUpid());
}

// Null for an item without address.
inline Json addressOf(const OrvanePortMapping& item) {
  return item.getIpAddress() == 0 ? Json() : Json(item.getIpAsString());
}

}  // namespace orvane::cli

#endif  // ORVANE_CLI_TERMINAL_JSON_H_
