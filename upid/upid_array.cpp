#include "orvane/upid_array.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "upid/node_buffer.h"

namespace {

// Eight bytes as one number, the first one lowest, whatever the machine's order.
std::uint64_t eightBytes(const char* bytes) {
  std::uint64_t number = 0;
  for (unsigned int i = 0; i < sizeof number; ++i) {
    number |= std::uint64_t{static_cast<unsigned char>(bytes[i])} << 8U * i;
  }
  return number;
}

}  // namespace

OrvaneUpidArray::~OrvaneUpidArray() = default;

void OrvaneUpidArray::setBuffer(const char* buffer, int length) {
  if (buffer == nullptr || length < 0) return;
  const std::size_t count = static_cast<std::size_t>(length) / orvane::kNodeSize;
  setBufferChecked({buffer, count * orvane::kNodeSize});
}

bool OrvaneUpidArray::setBufferChecked(std::span<const char> buffer) {
  if (buffer.size() % orvane::kNodeSize != 0) return false;
  const std::size_t needed = size() + buffer.size() / orvane::kNodeSize;
  // Twice the room, because many small buffers may follow each other. The nodes are copied there;
  // the old ones stay until the buffer, which may lie in them, is read.
  std::vector<OrvaneUpidNode> old;
  if (needed > capacity()) {
    old.reserve(std::max(needed, 2 * capacity()));
    old.assign(begin(), end());
    old.swap(*this);
  }
  for (; !buffer.empty(); buffer = buffer.subspan(orvane::kNodeSize)) {
    if (!checkName(buffer.data() + offsetof(UPID_TREE_NODE_S, name))) continue;
    const UPID_TREE_NODE_S record = orvane::readNode(buffer.data());
    emplace_back(&record);
  }
  return true;
}

unsigned int OrvaneUpidArray::getBuffer(char* buffer) const {
  const std::size_t room = size() * orvane::kNodeSize;
  if (buffer != nullptr) getBufferChecked({buffer, room});
  return static_cast<unsigned int>(room);
}

std::optional<std::size_t> OrvaneUpidArray::getBufferChecked(std::span<char> buffer) const {
  return orvane::writeNodes(*this, buffer);
}

int OrvaneUpidArray::getBufferLength() const {
  return static_cast<int>(size() * orvane::kNodeSize);
}

// A byte of 0x80 or above spoils a name; what follows the first NUL is not part of it.
bool OrvaneUpidArray::checkName(const char* name) {
  if (name == nullptr) return false;
  constexpr std::uint64_t kHighBits = 0x8080808080808080;
  constexpr std::uint64_t kLowBits = kHighBits >> 7U;
  for (std::size_t i = 0; i < sizeof UPID_TREE_NODE_S::name; i += sizeof(std::uint64_t)) {
    const std::uint64_t bytes = eightBytes(name + i);
    const std::uint64_t nuls = (bytes - kLowBits) & ~bytes & kHighBits;  // the lowest bit is right
    const std::uint64_t beforeNul = nuls == 0 ? ~std::uint64_t{0} : (nuls & -nuls) - 1;
    if ((bytes & kHighBits & beforeNul) != 0) return false;
    if (nuls != 0) return true;
  }
  return true;
}
