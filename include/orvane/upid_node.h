#ifndef ORVANE_UPID_NODE_H_
#define ORVANE_UPID_NODE_H_

#include <span>

#include "orvane/export.h"

/// The plain record of a protocol tree node: eleven fields in 72 bytes without padding.
///
/// In memory the words have the byte order of the machine. In buffers they are little-endian on
/// every machine, and a buffer need not be aligned; the operations that read and write buffers see
/// to both.
struct ORVANE_EXPORT UPID_TREE_NODE_S {
  unsigned int upid = 0;             ///< the key of the node in a tree
  unsigned int parentUpid = 0;       ///< UPID of the parent
  unsigned int firstChild = 0;       ///< UPID of the first child; 0 means none
  unsigned int numOfChildren = 0;    ///< number of children; 0 leaves it to the chain
  unsigned int sibling = 0;          ///< UPID of the next sibling; 0 ends the chain
  unsigned int PI = 0;               ///< carried along, never interpreted
  unsigned int SPI = 0;              ///< carried along, never interpreted
  unsigned int reserved = 0;         ///< ignored; 0 in every record that a node writes
  unsigned int flags = 0;            ///< bit 0: valid; the other bits are carried along
  char name[32] = {};                ///< NUL-terminated when it is shorter than the field
  unsigned int currentChildIdx = 0;  ///< carried along, never interpreted
};

static_assert(sizeof(UPID_TREE_NODE_S) == 72);

/// A node of the protocol identifier tree: one protocol, its links to other nodes by UPID, and its
/// name. Links and name are stored as they come; nothing checks them.
///
/// Nothing here takes memory from the heap, so nothing fails when it runs out. Any number of
/// threads may call what is `const`, get() excepted, as long as none changes the node at the same
/// time.
class ORVANE_EXPORT OrvaneUpidNode : public UPID_TREE_NODE_S {
 public:
  /// A cleared node: every word 0, the name 32 NULs.
  OrvaneUpidNode();

  /// Reads the record at the start of `buffer`; a null one gives a cleared node. The length is not
  /// consulted. REQUIRES: `buffer` holds 72 bytes.
  OrvaneUpidNode(const char* buffer, int length);

  /// A cleared node, then copy().
  explicit OrvaneUpidNode(const UPID_TREE_NODE_S* record) { copy(record); }

  /// Copies as copy() does: every field but the reserved word, and the validity from the flags.
  OrvaneUpidNode(const OrvaneUpidNode& other) : OrvaneUpidNode(&other) {}
  OrvaneUpidNode& operator=(const OrvaneUpidNode& other);

  virtual ~OrvaneUpidNode();

  /// @name Records
  /// @{

  /// Takes every field of `record` but the reserved word; this node's stays. A null record, and the
  /// node itself, change nothing.
  void copy(const UPID_TREE_NODE_S* record);

  /// copy() of the 72 bytes at the start of a buffer; false, and nothing changes, when there are
  /// fewer. Bytes after them are ignored.
  bool copyChecked(std::span<const char> buffer);

  /// The node as a record with a reserved word of 0.
  [[nodiscard]] UPID_TREE_NODE_S record() const;

  /// record() in one place for the whole process. The result is never null; it holds until get()
  /// runs again for any node, also within an operation that writes a buffer and says so. Not even
  /// for different nodes may several threads call it at once.
  UPID_TREE_NODE_S* get() const;
  /// @}

  /// @name Fields
  /// Give the field of their name. Pointers point into the node and hold as long as it lives.
  /// @{
  unsigned int getUpid() const { return upid; }
  unsigned int getParentUpid() const { return parentUpid; }
  unsigned int getFirstChild() const { return firstChild; }
  unsigned int getNumOfChildren() const { return numOfChildren; }
  unsigned int getSibling() const { return sibling; }
  unsigned int getPI() const { return PI; }
  unsigned int getSPI() const { return SPI; }
  unsigned int getFlags() const { return flags; }
  unsigned int getCurrentChildIdx() const { return currentChildIdx; }

  /// Set the field of their name.
  void setUpid(unsigned int value) { upid = value; }
  void setParentUpid(unsigned int value) { parentUpid = value; }
  void setFirstChild(unsigned int value) { firstChild = value; }
  void setNumOfChildren(unsigned int value) { numOfChildren = value; }
  void setSibling(unsigned int value) { sibling = value; }
  void setPI(unsigned int value) { PI = value; }
  void setSPI(unsigned int value) { SPI = value; }
  void setFlags(unsigned int value) { flags = value; }
  void setCurrentChildIdx(unsigned int value) { currentChildIdx = value; }

  /// The name field itself: 32 bytes, without a NUL when the name fills them.
  char* getName() { return name; }
  const char* getName() const { return name; }

  /// Takes a whole name field, whatever it holds; a null one changes nothing.
  /// REQUIRES: `field` holds 32 bytes, a shorter name being padded with NULs.
  void setName(const char* field);

  /// setName() of the first 32 bytes; false, and nothing changes, when there are fewer.
  bool setNameChecked(std::span<const char> field);

  /// Bit 0 of the flags.
  int getValid() const { return static_cast<int>(flags & 1U); }

  /// Sets bit 0 of the flags when `value` is not 0, and clears it otherwise.
  void setValid(int value);
  /// @}

  /// The argument of the last setValid(), until a copy sets it to bit 0 of the flags again.
  int valid = 0;
};

// Defaulted in the class, it would have `OrvaneUpidNode()` clear the node twice, which takes a
// fourth of the time to read an array.
inline OrvaneUpidNode::OrvaneUpidNode() = default;

#endif  // ORVANE_UPID_NODE_H_
