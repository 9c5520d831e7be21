// Tree and node buffers as files hold them.

#ifndef ORVANE_EXCHANGE_TREE_FILE_H_
#define ORVANE_EXCHANGE_TREE_FILE_H_

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "orvane/findings.h"
#include "orvane/upid_array.h"
#include "orvane/upid_tree.h"

namespace orvane::exchange {

constexpr std::size_t kNodeSize = sizeof(UPID_TREE_NODE_S);
constexpr std::size_t kHeaderWords = std::size(decltype(OrvaneUpidTree::header){});

// The nodes of a file in its order, whatever their UPIDs and names, and the words of its header
// when it is a tree buffer.
struct TreeFile {
  std::optional<std::array<unsigned int, kHeaderWords>> header;
  OrvaneUpidArray nodes;
};

// Reads a buffer: a tree buffer, or, also when `nodesOnly` is set, a node buffer, told apart by
// their lengths. Throws FormError, with the offset, when the length does not fit.
TreeFile readTreeBuffer(std::string_view bytes, bool nodesOnly);

// The bytes of a tree buffer, or of a node buffer when there is no header.
std::string bufferOf(const TreeFile& file);

// The tree that the buffer is read as, and what the library reports of that.
OrvaneUpidTree treeOf(const TreeFile& file, OrvaneFindings& findings);

}  // namespace orvane::exchange

#endif  // ORVANE_EXCHANGE_TREE_FILE_H_
