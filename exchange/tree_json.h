// Trees as JSON: an object with the array "nodes", the header of a tree buffer, and findings.

#ifndef ORVANE_EXCHANGE_TREE_JSON_H_
#define ORVANE_EXCHANGE_TREE_JSON_H_

#include <string>
#include <string_view>
#include <vector>

#include "exchange/tree_file.h"

namespace orvane::exchange {

// Findings stand in it as texts, which readTreeJson() passes over.
std::string jsonOf(const TreeFile& file, const std::vector<std::string>& findings);

// Reads such a text. Links that it leaves out are derived from the parents and the order; so is the
// header, which there is none of when `nodesOnly` is set. Throws FormError when it is malformed.
TreeFile readTreeJson(std::string_view text, bool nodesOnly);

}  // namespace orvane::exchange

#endif  // ORVANE_EXCHANGE_TREE_JSON_H_
