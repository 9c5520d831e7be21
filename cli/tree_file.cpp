#include "cli/tree_file.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <span>

#include "cli/files/failure.h"
#include "cli/files/input.h"
#include "cli/files/output.h"
#include "cli/terminal/text.h"

namespace orvane::cli {
namespace {

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

[[noreturn]] void rejectLength(const Input& input, const std::string& reason) {
  throw Failure(input.name + ": " + reason + " (the file has " + std::to_string(input.text.size()) +
                " bytes)");
}

}  // namespace

TreeFile readTreeBuffer(const std::string& path, bool nodesOnly) {
  const Input input = readBytes(path);
  TreeFile file{input.name, std::nullopt, {}};
  std::string_view rest = input.text;
  const std::size_t over = rest.size() % kNodeSize;
  if (!nodesOnly && over == kHeaderSize) {
    auto& header = file.header.emplace();
    for (unsigned int& word : header) {
      word = readWord(rest);
      rest.remove_prefix(sizeof word);
    }
    if (header[0] != rest.size() / kNodeSize) {
      rejectLength(input, "the header at offset 0 counts " + std::to_string(header[0]) +
                              " nodes, but there are " + std::to_string(rest.size() / kNodeSize));
    }
  } else if (over != 0) {
    rejectLength(input, "the record at offset " + std::to_string(rest.size() - over) +
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

std::string writtenName(const OrvaneUpidNode& node) {
  std::string_view name(node.name, sizeof node.name);
  name = name.substr(0, name.find_last_not_of('\0') + 1);
  std::string text;
  for (const char c : name) {
    if (c >= ' ' && c <= '~' && c != '\\') {
      text.push_back(c);
    } else {
      const auto byte = static_cast<unsigned char>(c);
      text += {'\\', 'x', kHexDigits[byte >> 4U], kHexDigits[byte & 0xFU]};
    }
  }
  return text;
}

std::optional<std::string> readName(std::string_view written) {
  std::string name;
  while (!written.empty()) {
    if (written.front() != '\\') {
      name.push_back(written.front());
      written.remove_prefix(1);
      continue;
    }
    unsigned int byte = 0;
    const std::string_view digits = written.substr(0, 4);
    if (digits.size() < 4 || digits[1] != 'x' ||
        std::from_chars(digits.data() + 2, digits.data() + 4, byte, 16).ptr != digits.data() + 4) {
      return std::nullopt;
    }
    name.push_back(static_cast<char>(byte));
    written.remove_prefix(4);
  }
  if (name.size() > sizeof UPID_TREE_NODE_S::name) return std::nullopt;
  return name;
}

std::string csvOf(const TreeFile& file) {
  std::string text;
  if (file.header) {
    text += "#header";
    for (std::size_t i = 1; i < kHeaderWords; ++i) text += "," + std::to_string((*file.header)[i]);
    text += "\n";
  }
  for (const NodeField& field : kNodeFields) text += std::string(field.name) + ",";
  text += "name\n";
  for (const OrvaneUpidNode& node : file.nodes) {
    for (const NodeField& field : kNodeFields) text += std::to_string(node.*field.value) + ",";
    text.push_back('"');
    for (const char c : writtenName(node)) {
      if (c == '"') text.push_back('"');
      text.push_back(c);
    }
    text += "\"\n";
  }
  return text;
}

}  // namespace orvane::cli
