#include "exchange/tree_dot.h"

#include "exchange/tree_text.h"

namespace orvane::exchange {

std::string dotOf(std::span<const OrvaneUpidPlace> outline) {
  std::string text = "digraph protocols {\n  rankdir=LR;\n  node [shape=box];\n";
  for (const OrvaneUpidPlace& place : outline) {
    std::string label;
    for (const char c : writtenName(*place.node)) {
      if (c == '"' || c == '\\') label.push_back('\\');
      label.push_back(c);
    }
    const std::string upid = std::to_string(place.node->upid);
    text += "  " + upid + " [label=\"" + label + "\\n" + upid + "\"];\n";
    if (place.parent != nullptr) {
      text += "  " + std::to_string(place.parent->upid) + " -> " + upid + ";\n";
    }
  }
  return text + "}\n";
}

}  // namespace orvane::exchange
