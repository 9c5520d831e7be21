// Trees as CSV: a line of columns, a line for each node, and above them the header of a tree
// buffer.

#ifndef ORVANE_EXCHANGE_TREE_CSV_H_
#define ORVANE_EXCHANGE_TREE_CSV_H_

#include <string>
#include <string_view>

#include "exchange/tree_file.h"

namespace orvane::exchange {

std::string csvOf(const TreeFile& file);

// Reads such a text. Links that it leaves out are derived from the parents and the order; so is the
// header, which there is none of when `nodesOnly` is set. Throws FormError when it is malformed.
TreeFile readTreeCsv(std::string_view text, bool nodesOnly);

}  // namespace orvane::exchange

#endif  // ORVANE_EXCHANGE_TREE_CSV_H_
