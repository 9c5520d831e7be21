#include "orvane/upid_array.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "upid/node_buffer.h"

namespace {

// A byte of 0x80 or above spoils a name; what follows the first NUL is not part of it. Mostly no
// byte of the field is one, which all of them together show fastest.
bool isName(const char* name) {
  const std::string_view field(name, sizeof UPID_TREE_NODE_S::name);
  const auto isPlain = [](unsigned char byte) { return byte < 0x80; };
  unsigned char bits = 0;
  for (const char byte : field) bits |= static_cast<unsigned char>(byte);
  return isPlain(bits) || std::ranges::all_of(field.substr(0, field.find('\0')), isPlain);
}

}  // namespace

OrvaneUpidArray::~OrvaneUpidArray() = default;

OrvaneUpidArray& OrvaneUpidArray::operator=(const OrvaneUpidArray& other) {
  if (this != &other) *this = OrvaneUpidArray(other);
  return *this;
}

void OrvaneUpidArray::setBuffer(const char* buffer, int length) {
  if (buffer == nullptr || length < 0) return;
  const std::size_t count = static_cast<std::size_t>(length) / orvane::kNodeSize;
  setBufferChecked({buffer, count * orvane::kNodeSize});
}

bool OrvaneUpidArray::setBufferChecked(std::span<const char> buffer) {
  if (buffer.size() % orvane::kNodeSize != 0) return false;
  // All the room first, so that nothing has changed when memory runs out; at least twice what there
  // was, because many small buffers may follow each other.
  const std::size_t needed = size() + buffer.size() / orvane::kNodeSize;
  if (needed > capacity()) reserve(std::max(needed, 2 * capacity()));
  for (; !buffer.empty(); buffer = buffer.subspan(orvane::kNodeSize)) {
    if (!isName(buffer.data() + offsetof(UPID_TREE_NODE_S, name))) continue;
    orvane::copyRecord(orvane::readNode(buffer.data()), emplace_back());
  }
  return true;
}

unsigned int OrvaneUpidArray::getBuffer(char* buffer) const {
  const std::size_t room = size() * orvane::kNodeSize;
  if (buffer != nullptr && room > 0) {
    getBufferChecked({buffer, room});
    back().get();
  }
  return static_cast<unsigned int>(room);
}

std::optional<std::size_t> OrvaneUpidArray::getBufferChecked(std::span<char> buffer) const {
  return orvane::writeNodes(*this, buffer);
}

int OrvaneUpidArray::getBufferLength() const {
  return static_cast<int>(size() * orvane::kNodeSize);
}

bool OrvaneUpidArray::checkName(const char* name) { return name != nullptr && isName(name); }
