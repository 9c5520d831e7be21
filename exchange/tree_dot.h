// Trees as the dot language draws them.

#ifndef ORVANE_EXCHANGE_TREE_DOT_H_
#define ORVANE_EXCHANGE_TREE_DOT_H_

#include <span>
#include <string>

#include "orvane/upid_tree.h"

namespace orvane::exchange {

// A graph of those places, with an edge from each parent to its child.
std::string dotOf(std::span<const OrvaneUpidPlace> outline);

}  // namespace orvane::exchange

#endif  // ORVANE_EXCHANGE_TREE_DOT_H_
