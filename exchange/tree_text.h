// What the texts of trees have in common.

#ifndef ORVANE_EXCHANGE_TREE_TEXT_H_
#define ORVANE_EXCHANGE_TREE_TEXT_H_

#include <array>
#include <set>
#include <string>
#include <string_view>

#include "exchange/form_error.h"
#include "exchange/tree_file.h"

namespace orvane::exchange {

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

// Null for a field that texts do not have.
const NodeField* findField(std::string_view name);

// Which fields a text gives; those that it never gives may be derived.
using GivenFields = std::set<const NodeField*>;

// A place in a text: a line, or what is to stand before the message.
struct Place {
  std::size_t line = 0;
  std::string path;

  [[noreturn]] void fail(const std::string& message) const {
    throw FormError(path + message, line);
  }
};

// The name of a node with everything but printable ASCII, and the backslash, as \xNN.
std::string writtenName(const OrvaneUpidNode& node);

// Takes a name that is written so. Fails when it is malformed or longer than the field.
void setWrittenName(OrvaneUpidNode& node, std::string_view written, const Place& place);

// Links the children of each node in the order of the file, in those fields that the text does not
// give, and sees to the header.
void complete(TreeFile& file, const GivenFields& given, bool nodesOnly);

}  // namespace orvane::exchange

#endif  // ORVANE_EXCHANGE_TREE_TEXT_H_
