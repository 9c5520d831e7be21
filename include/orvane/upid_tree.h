#ifndef ORVANE_UPID_TREE_H_
#define ORVANE_UPID_TREE_H_

#include <cstddef>
#include <map>
#include <optional>
#include <span>
#include <vector>

#include "orvane/export.h"
#include "orvane/findings.h"
#include "orvane/upid_node.h"

/// A node where the links of a tree lead to it.
struct OrvaneUpidPlace {
  const OrvaneUpidNode* node;    ///< in the tree
  const OrvaneUpidNode* parent;  ///< that of which it is a child; null for a root
  std::size_t depth;             ///< how many parents are above it
};

/// The protocol identifier tree: nodes by UPID, ascending, one per UPID; walk and size it as the
/// map that it is. The links between the nodes come with them; nothing builds them, and only
/// addFindings() checks them.
///
/// A tree buffer is a header of nine words followed by records of 72 bytes (see UPID_TREE_NODE_S);
/// a node buffer is records alone. All words are little-endian, no alignment is needed.
///
/// What the map brings along leaves the header as it is: clear() and swap() deal with the nodes
/// alone.
///
/// When memory runs out, every operation leaves the tree as it was, though a list of findings may
/// hold some of them; looking up and writing all nodes take none. Any number of threads may call
/// what is `const`, getBuffer() and getChildrenBuffer() excepted, as long as none changes the tree
/// at the same time. Looking up in a tree that is not `const` counts as a change.
class ORVANE_EXPORT OrvaneUpidTree : public std::map<unsigned int, OrvaneUpidNode> {
 public:
  /// No nodes, and a header of zeros.
  OrvaneUpidTree() = default;

  /// Copies every node and the header. Assigning a tree to itself leaves its nodes where they are.
  OrvaneUpidTree(const OrvaneUpidTree&) = default;
  OrvaneUpidTree(OrvaneUpidTree&&) noexcept = default;
  OrvaneUpidTree& operator=(const OrvaneUpidTree& other);
  OrvaneUpidTree& operator=(OrvaneUpidTree&&) noexcept = default;

  virtual ~OrvaneUpidTree();

  /// @name Nodes
  /// References hold until the node is removed with the tree, or the tree is assigned to. A node
  /// keeps its place when its UPID is changed through one.
  /// @{

  /// Stores a copy of `node` under its UPID, unless that is taken: then the tree stays as it was.
  void add(const OrvaneUpidNode& node);

  /// The node with that UPID. When there is none, a cleared node that is none of the tree's nodes:
  /// what is written to it, its reserved word aside, is lost at the next such look-up.
  OrvaneUpidNode& get(unsigned int upid);
  const OrvaneUpidNode& get(unsigned int upid) const;

  /// The same as get(): unlike the operator of a map it never inserts.
  OrvaneUpidNode& operator[](unsigned int upid) { return get(upid); }
  const OrvaneUpidNode& operator[](unsigned int upid) const { return get(upid); }

  /// The UPIDs of TCP and UDP, from the header.
  unsigned int getTCPUpid() const { return header[kTcpUpid]; }
  unsigned int getUDPUpid() const { return header[kUdpUpid]; }
  /// @}

  /// @name Buffers
  /// @{

  /// Reads a tree buffer: replaces the header and adds each node as add() does, so that the nodes
  /// held stay and the first of several with one UPID wins. A null buffer changes nothing. The
  /// length is not consulted.
  /// REQUIRES: `buffer` holds the header and as many records as its first word says.
  void setBuffer(const char* buffer, int length);

  /// setBuffer() that stays inside `buffer`: false, and nothing changes, when the header or a
  /// record that it counts is cut short. Bytes after the last record are ignored.
  bool setBufferChecked(std::span<const char> buffer);

  /// setBufferChecked() that adds to `findings`, by the number of the record and with its UPID as
  /// the key, errors and notes of these kinds:
  ///   - "cut-short", an error: why the result is false.
  ///   - "duplicate-upid", an error: a record that is not taken, because an earlier one or a node
  ///     that was there has its UPID.
  ///   - "name", a note: the name is one with which OrvaneUpidArray::setBuffer() takes no node.
  ///   - "rest", a note without record and key: bytes after the last record.
  bool setBufferReported(std::span<const char> buffer, OrvaneFindings& findings);

  /// Adds each node of a node buffer, such as getBuffer() writes, as setBufferChecked() does; the
  /// header stays. False, and nothing changes, when the last record is cut short.
  bool addNodesChecked(std::span<const char> buffer);

  /// addNodesChecked() that reports as setBufferReported() does.
  bool addNodesReported(std::span<const char> buffer, OrvaneFindings& findings);

  /// Writes every node as a node buffer, ascending by UPID, and sets `length` to the bytes that
  /// this takes, 72 per node. A null buffer only gets the length told. Leaves the last node
  /// written, if any, in the record that OrvaneUpidNode::get() returns, and like that is not for
  /// several threads at once. REQUIRES: room for 72 bytes per node.
  void getBuffer(char* buffer, int& length) const;

  /// getBuffer() that stays inside `buffer` and leaves nothing in the record of
  /// OrvaneUpidNode::get(): the bytes written, or nothing, and nothing is written, when the room is
  /// too small.
  std::optional<std::size_t> getBufferChecked(std::span<char> buffer) const;

  /// Writes the children of the node with that UPID as a node buffer: its first child, that one's
  /// sibling and so on. A node that the tree lacks, and one whose first child is 0, has none.
  ///
  /// When the parent counts its children, that is the most that is written, the one whose sibling
  /// is 0 included. When its count is 0, the chain ends in a closing node, the one whose sibling is
  /// 0, which is not written. The chain also ends at a sibling that the tree lacks, and after as
  /// many records as the tree has nodes. A null buffer is ignored. Leaves the last node written, if
  /// any, in the record that OrvaneUpidNode::get() returns, and like that is not for several
  /// threads at once. REQUIRES: room for 72 bytes per child, or, for a chain that is not known to
  /// be sound, per node of the tree.
  void getChildrenBuffer(unsigned int upid, char* buffer) const;

  /// getChildrenBuffer() that stays inside `buffer` and leaves nothing in the record of
  /// OrvaneUpidNode::get(): the bytes written, or nothing, and nothing is written, when the room is
  /// too small.
  std::optional<std::size_t> getChildrenBufferChecked(unsigned int upid,
                                                      std::span<char> buffer) const;
  /// @}

  /// @name Structure
  /// Roots are the nodes whose parent is 0 or themselves. The children of a node are those that
  /// getChildrenBuffer() writes, each where it is met first; a node that only closes a chain is
  /// none. Links that lead back, and chains as long as the tree, do no harm.
  /// @{

  /// The nodes that the roots reach, each once and after its parent: the roots ascending by UPID,
  /// each followed by what is below it, children in the order of their chain. The pointers hold as
  /// long as references to the nodes.
  [[nodiscard]] std::vector<OrvaneUpidPlace> outline() const;

  /// Adds to `findings` what is wrong with the links, in the order of outline() and then of the
  /// UPIDs. All are errors, and the key is the UPID of the node that has them:
  ///   - "broken-link": its first child or its sibling is missing.
  ///   - "cycle": its first child or its sibling is linked already.
  ///   - "parent": it is a child of another node than the parent that it names.
  ///   - "count": it counts its children, and another number of them is linked.
  ///   - "missing-parent": the parent that it names is missing.
  ///   - "unreachable": no root reaches it.
  /// A chain that breaks off or leads back is not counted.
  void addFindings(OrvaneFindings& findings) const;

  /// All of them, as a list of their own.
  OrvaneFindings findings() const {
    OrvaneFindings found;
    addFindings(found);
    return found;
  }
  /// @}

  /// The header of the last tree buffer read: the number of nodes in it, the UPID of TCP, the UPID
  /// of UDP, and six words that are carried along, never interpreted.
  unsigned int header[9] = {};

 private:
  enum HeaderWord : int { kTcpUpid = 1, kUdpUpid = 2 };

  OrvaneUpidNode placeholder;  // what a look-up of a UPID that the tree lacks gives
};

#endif  // ORVANE_UPID_TREE_H_
