// JSON that is held as a whole before it is written.

#ifndef ORVANE_CLI_TERMINAL_JSON_H_
#define ORVANE_CLI_TERMINAL_JSON_H_

#include <nlohmann/json.hpp>
#include <string>

#include "cli/terminal/text.h"

namespace orvane::cli {

using Json = nlohmann::ordered_json;

// Names may hold any bytes; those that are no UTF-8 are replaced.
inline std::string toText(const Json& json) {
  return escapeInJson(json.dump(2, ' ', false, Json::error_handler_t::replace)) + "\n";
}

}  // namespace orvane::cli

#endif  // ORVANE_CLI_TERMINAL_JSON_H_
