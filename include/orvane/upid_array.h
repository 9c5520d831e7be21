#ifndef ORVANE_UPID_ARRAY_H_
#define ORVANE_UPID_ARRAY_H_

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "orvane/export.h"
#include "orvane/findings.h"
#include "orvane/upid_node.h"

/// A list of protocol tree nodes in the order in which they came, duplicates included; walk, index
/// and size it as the vector that it is.
///
/// A node buffer is records of 72 bytes back to back (see UPID_TREE_NODE_S), with little-endian
/// words and without alignment: what OrvaneUpidTree::getBuffer() writes.
///
/// When memory runs out, what adds nodes or assigns leaves the array as it was; the other
/// operations take none. Any number of threads may call what is `const`, getBuffer() excepted, as
/// long as none changes the array at the same time.
class ORVANE_EXPORT OrvaneUpidArray : public std::vector<OrvaneUpidNode> {
 public:
  OrvaneUpidArray() = default;

  /// Copies every node, in order. Assigning an array to itself leaves its nodes where they are.
  OrvaneUpidArray(const OrvaneUpidArray&) = default;
  OrvaneUpidArray(OrvaneUpidArray&&) noexcept = default;
  OrvaneUpidArray& operator=(const OrvaneUpidArray& other);
  OrvaneUpidArray& operator=(OrvaneUpidArray&&) noexcept = default;

  virtual ~OrvaneUpidArray();

  /// Appends a copy of `node`, unchecked.
  void add(const OrvaneUpidNode& node) { push_back(node); }

  /// Appends the nodes of a node buffer of `length` bytes, except those whose name, up to its first
  /// NUL, has a byte of 0x80 or above. An incomplete record at the end is ignored; a null buffer
  /// and a negative length change nothing. REQUIRES: `buffer` holds `length` bytes, none of them in
  /// the nodes of this array.
  void setBuffer(const char* buffer, int length);

  /// setBuffer() of exactly `buffer`: false, and nothing changes, when its last record is
  /// incomplete.
  bool setBufferChecked(std::span<const char> buffer);

  /// setBufferChecked() that adds to `findings`, by the number of the record and with its UPID as
  /// the key, what it does not take: "name", a record that is left out because of its name, and
  /// "cut-short", the last record when the result is false; both are errors. When memory runs out,
  /// the array is as it was, and the list may hold some of it.
  bool setBufferReported(std::span<const char> buffer, OrvaneFindings& findings);

  /// Writes every node as a node buffer and returns the bytes that this takes, getBufferLength();
  /// into a null buffer nothing is written. Leaves the last node, if any, in the record that
  /// OrvaneUpidNode::get() returns, and like that is not for several threads at once. REQUIRES:
  /// room for 72 bytes per node.
  unsigned int getBuffer(char* buffer) const;

  /// getBuffer() that stays inside `buffer` and leaves nothing in the record of
  /// OrvaneUpidNode::get(): the bytes written, or nothing, and nothing is written, when the room is
  /// too small.
  std::optional<std::size_t> getBufferChecked(std::span<char> buffer) const;

  /// 72 bytes per node.
  int getBufferLength() const;

 private:
  static bool checkName(const char* name);
};

#endif  // ORVANE_UPID_ARRAY_H_
