// Tree and node buffers in files, and the texts that stand for them.

#ifndef ORVANE_CLI_TREE_FILE_H_
#define ORVANE_CLI_TREE_FILE_H_

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "cli/files/input.h"
#include "orvane/upid_array.h"

namespace orvane::cli {

constexpr std::size_t kNodeSize = sizeof(UPID_TREE_NODE_S);
constexpr std::size_t kHeaderWords = 9;
constexpr std::size_t kHeaderSize = kHeaderWords * sizeof(unsigned int);

// The nodes of a file in its order, and the words of its header when it is a tree buffer.
struct TreeFile {
  std::string name;
  std::optional<std::array<unsigned int, kHeaderWords>> header;
  OrvaneUpidArray nodes;

  // Where the record of a node begins; only of a buffer.
  std::size_t offsetOf(std::size_t node) const {
    return (header ? kHeaderSize : 0) + node * kNodeSize;
  }
};

// A field of a node as the texts call it.
struct NodeField {
  const char* name;
  unsigned int UPID_TREE_NODE_S::*value;
};

constexpr std::array<NodeField, 9> kNodeFields = {{
    {"upid", &UPID_TREE_NODE_S::upid},
    {"parentUpid", &UPID_TREE_NODE_S::parentUpid},
    {"firstChild", &UPID_TREE_NODE_S::firstChild},
    {"numOfChildren", &UPID_TREE_NODE_S::numOfChildren},
    {"sibling", &UPID_TREE_NODE_S::sibling},
    {"PI", &UPID_TREE_NODE_S::PI},
    {"SPI", &UPID_TREE_NODE_S::SPI},
    {"flags", &UPID_TREE_NODE_S::flags},
    {"currentChildIdx", &UPID_TREE_NODE_S::currentChildIdx},
}};

// Reads a buffer: a tree buffer, or, also when `nodesOnly` is set, a node buffer, told apart by
// their lengths. Throws Failure, with the offset, when the length does not fit.
TreeFile readTreeBuffer(const std::string& path, bool nodesOnly);

// The bytes of a tree buffer, or of a node buffer when there is no header.
std::string bufferOf(const TreeFile& file);

// The name of a node with everything but printable ASCII, and the backslash, as \xNN, and back.
// Reading gives nothing when the text is malformed or longer than the field.
std::string writtenName(const OrvaneUpidNode& node);
std::optional<std::string> readName(std::string_view written);

// The texts that parseTreeText() reads.
std::string csvOf(const TreeFile& file);

// Reads such a text, JSON or CSV by the ending of its name. Links that it leaves out are derived
// from the parents and the order; so is the header. Throws Failure, with the line where there is
// one, when it is malformed.
TreeFile parseTreeText(const Input& input, bool nodesOnly);

}  // namespace orvane::cli

#endif  // ORVANE_CLI_TREE_FILE_H_
