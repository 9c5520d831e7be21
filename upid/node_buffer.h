// Node buffers: records back to back, with little-endian words, at any address.

#ifndef ORVANE_UPID_NODE_BUFFER_H_
#define ORVANE_UPID_NODE_BUFFER_H_

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstring>
#include <functional>
#include <optional>
#include <span>
#include <string_view>

#include "orvane/upid_node.h"

namespace orvane {

inline constexpr std::size_t kNodeSize = sizeof(UPID_TREE_NODE_S);

static_assert(offsetof(UPID_TREE_NODE_S, upid) == 0 &&
              offsetof(UPID_TREE_NODE_S, parentUpid) == 4 &&
              offsetof(UPID_TREE_NODE_S, firstChild) == 8 &&
              offsetof(UPID_TREE_NODE_S, numOfChildren) == 12 &&
              offsetof(UPID_TREE_NODE_S, sibling) == 16 && offsetof(UPID_TREE_NODE_S, PI) == 20 &&
              offsetof(UPID_TREE_NODE_S, SPI) == 24 && offsetof(UPID_TREE_NODE_S, reserved) == 28 &&
              offsetof(UPID_TREE_NODE_S, flags) == 32 && offsetof(UPID_TREE_NODE_S, name) == 36 &&
              offsetof(UPID_TREE_NODE_S, currentChildIdx) == 68);

inline constexpr unsigned int UPID_TREE_NODE_S::*kNodeWords[] = {
    &UPID_TREE_NODE_S::upid,       &UPID_TREE_NODE_S::parentUpid,
    &UPID_TREE_NODE_S::firstChild, &UPID_TREE_NODE_S::numOfChildren,
    &UPID_TREE_NODE_S::sibling,    &UPID_TREE_NODE_S::PI,
    &UPID_TREE_NODE_S::SPI,        &UPID_TREE_NODE_S::reserved,
    &UPID_TREE_NODE_S::flags,      &UPID_TREE_NODE_S::currentChildIdx};

// From the byte order of buffers to that of this machine, and back.
inline void convertWord(unsigned int& word) {
  if constexpr (std::endian::native == std::endian::big) {
    auto* const bytes = reinterpret_cast<unsigned char*>(&word);
    std::reverse(bytes, bytes + sizeof word);
  }
}

inline unsigned int readWord(const char* bytes) {
  unsigned int word = 0;
  std::memcpy(&word, bytes, sizeof word);
  convertWord(word);
  return word;
}

inline void convertWords(UPID_TREE_NODE_S& record) {
  for (auto word : kNodeWords) convertWord(record.*word);
}

inline UPID_TREE_NODE_S readNode(const char* bytes) {
  UPID_TREE_NODE_S record;
  std::memcpy(&record, bytes, kNodeSize);
  convertWords(record);
  return record;
}

// A byte of 0x80 or above spoils a name; what follows the first NUL is not part of it. Mostly no
// byte of the field is one, which all of them together show fastest.
inline bool isPlainName(const char* name) {
  const std::string_view field(name, sizeof UPID_TREE_NODE_S::name);
  const auto isPlain = [](unsigned char byte) { return byte < 0x80; };
  unsigned char bits = 0;
  for (const char byte : field) bits |= static_cast<unsigned char>(byte);
  return isPlain(bits) || std::ranges::all_of(field.substr(0, field.find('\0')), isPlain);
}

// The same of the name in a record of a buffer.
inline bool hasPlainName(const char* record) {
  return isPlainName(record + offsetof(UPID_TREE_NODE_S, name));
}

// Gives a node every field of a record but the reserved word, and the validity from the flags.
inline void copyRecord(const UPID_TREE_NODE_S& record, OrvaneUpidNode& node) {
  const unsigned int own = node.reserved;
  static_cast<UPID_TREE_NODE_S&>(node) = record;
  node.reserved = own;
  node.valid = node.getValid();
}

inline void writeNode(const UPID_TREE_NODE_S& node, char* bytes) {
  std::memcpy(bytes, static_cast<const void*>(&node), kNodeSize);
  std::memset(bytes + offsetof(UPID_TREE_NODE_S, reserved), 0, sizeof node.reserved);
  if constexpr (std::endian::native == std::endian::big) {
    const UPID_TREE_NODE_S record = readNode(bytes);
    std::memcpy(bytes, &record, kNodeSize);
  }
}

// Writes the nodes that `nodeOf` finds in the elements of `nodes`, and returns the bytes written,
// or nothing when the room is too small.
template <typename Nodes, typename NodeOf = std::identity>
std::optional<std::size_t> writeNodes(const Nodes& nodes, std::span<char> buffer,
                                      NodeOf nodeOf = {}) {
  const std::size_t length = nodes.size() * kNodeSize;
  if (buffer.size() < length) return std::nullopt;
  char* next = buffer.data();
  for (const auto& element : nodes) {
    writeNode(std::invoke(nodeOf, element), next);
    next += kNodeSize;
  }
  return length;
}

}  // namespace orvane

#endif  // ORVANE_UPID_NODE_BUFFER_H_
