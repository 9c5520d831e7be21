#include "exchange/tree_file.h"

#include <span>

#include "exchange/form_error.h"
#include "exchange/text.h"

namespace orvane::exchange {
namespace {

constexpr std::size_t kHeaderSize = kHeaderWords * sizeof(unsigned int);

// Header words are little-endian, whatever this machine is.
unsigned int readWord(std::string_view bytes) {
  unsigned int word = 0;
  for (std::size_t i = sizeof word; i-- > 0;) {
    word = word << 8U | static_cast<unsigned char>(bytes[i]);
  }
  return word;
}

void appendWord(std::string& bytes, unsigned int word) {
  for (std::size_t i = 0; i < sizeof word; ++i) {
    bytes.push_back(static_cast<char>(word >> 8U * i & 0xFFU));
  }
}

[[noreturn]] void rejectLength(std::string_view bytes, const std::string& reason) {
  throw FormError(reason + " (the file has " + counted(bytes.size(), "byte") + ")");
}

}  // namespace

TreeFile readTreeBuffer(std::string_view bytes, bool nodesOnly) {
  TreeFile file;
  std::string_view rest = bytes;
  const std::size_t over = rest.size() % kNodeSize;
  if (!nodesOnly && over == kHeaderSize) {
    auto& header = file.header.emplace();
    for (unsigned int& word : header) {
      word = readWord(rest);
      rest.remove_prefix(sizeof word);
    }
    if (header[0] != rest.size() / kNodeSize) {
      rejectLength(bytes, "the header at offset 0 counts " + counted(header[0], "node") +
                              " instead of " + std::to_string(rest.size() / kNodeSize));
    }
  } else if (over != 0) {
    rejectLength(bytes, "the record at offset " + std::to_string(rest.size() - over) +
                            " is cut short: this is no " +
                            (nodesOnly ? "node buffer" : "tree buffer or node buffer"));
  }
  file.nodes.resize(rest.size() / kNodeSize);
  for (OrvaneUpidNode& node : file.nodes) {
    node.copyChecked(rest);
    rest.remove_prefix(kNodeSize);
  }
  return file;
}

std::string bufferOf(const TreeFile& file) {
  std::string bytes;
  if (file.header) {
    for (const unsigned int word : *file.header) appendWord(bytes, word);
  }
  const std::size_t begin = bytes.size();
  bytes.resize(begin + file.nodes.size() * kNodeSize);
  file.nodes.getBufferChecked(std::span(bytes).subspan(begin));
  return bytes;
}

OrvaneUpidTree treeOf(const TreeFile& file, OrvaneFindings& findings) {
  OrvaneUpidTree tree;
  const std::string bytes = bufferOf(file);
  if (file.header) {
    tree.setBufferReported(bytes, findings);
  } else {
    tree.addNodesReported(bytes, findings);
  }
  return tree;
}

}  // namespace orvane::exchange
