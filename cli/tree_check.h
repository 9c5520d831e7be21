// The structure of a tree, as its links draw it, and what is wrong with them.

#ifndef ORVANE_CLI_TREE_CHECK_H_
#define ORVANE_CLI_TREE_CHECK_H_

#include <cstddef>
#include <string>
#include <vector>

#include "cli/tree_file.h"

namespace orvane::cli {

// A node as it is drawn, each once, parents before their children.
struct DrawnNode {
  const OrvaneUpidNode* node;
  const OrvaneUpidNode* parent;  // null for a root
  std::size_t depth;
};

struct TreeCheck {
  std::vector<DrawnNode> drawn;
  std::vector<std::string> findings;
};

// Follows the links from the roots, the nodes whose parent is 0 or themselves. Children are what
// OrvaneUpidTree::getChildrenBuffer() gives; a node that only closes a chain is none. What no root
// reaches, links that lead nowhere or back, and counts that do not fit are findings.
TreeCheck checkTree(const TreeFile& file);

}  // namespace orvane::cli

#endif  // ORVANE_CLI_TREE_CHECK_H_
