#include "orvane/upid_node.h"

#include <cstring>

#include "upid/node_buffer.h"

OrvaneUpidNode::OrvaneUpidNode(const char* buffer, int /*length*/) {
  if (buffer != nullptr) copyChecked({buffer, orvane::kNodeSize});
}

OrvaneUpidNode::~OrvaneUpidNode() = default;

OrvaneUpidNode& OrvaneUpidNode::operator=(const OrvaneUpidNode& other) {
  copy(&other);
  return *this;
}

void OrvaneUpidNode::copy(const UPID_TREE_NODE_S* record) {
  if (record != nullptr && record != this) orvane::copyRecord(*record, *this);
}

bool OrvaneUpidNode::copyChecked(std::span<const char> buffer) {
  if (buffer.size() < orvane::kNodeSize) return false;
  orvane::copyRecord(orvane::readNode(buffer.data()), *this);
  return true;
}

UPID_TREE_NODE_S OrvaneUpidNode::record() const {
  UPID_TREE_NODE_S result = *this;
  result.reserved = 0;
  return result;
}

UPID_TREE_NODE_S* OrvaneUpidNode::get() const {
  static constinit UPID_TREE_NODE_S published;
  published = record();
  return &published;
}

void OrvaneUpidNode::setName(const char* field) {
  if (field != nullptr) setNameChecked({field, sizeof name});
}

bool OrvaneUpidNode::setNameChecked(std::span<const char> field) {
  if (field.size() < sizeof name) return false;
  std::memmove(name, field.data(), sizeof name);  // it may lie in this very field
  return true;
}

void OrvaneUpidNode::setValid(int value) {
  valid = value;
  flags = value != 0 ? flags | 1U : flags & ~1U;
}
