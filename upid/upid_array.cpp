#include "orvane/upid_array.h"

#include <algorithm>
#include <cstddef>

#include "upid/node_buffer.h"
#include "upid/node_report.h"

namespace {

struct UnwatchedArray {
  void recordCutShort() {}
  void leftOut(const char* /*record*/) {}
};

class ArrayReport : public orvane::NodeReport {
 public:
  using NodeReport::NodeReport;

  void leftOut(const char* record) {
    add(record, kOrvaneFindingError, "name",
        [] { return "the name is no 7-bit text: the node is left out"; });
  }
};

// All the room first, so that nothing has changed when memory runs out; at least twice what there
// was, because many small buffers may follow each other.
void makeRoom(OrvaneUpidArray& nodes, std::size_t added) {
  const std::size_t needed = nodes.size() + added;
  if (needed > nodes.capacity()) nodes.reserve(std::max(needed, 2 * nodes.capacity()));
}

template <typename Watch>
bool appendNodes(OrvaneUpidArray& nodes, std::span<const char> buffer, Watch watch) {
  if (buffer.size() % orvane::kNodeSize != 0) {
    watch.recordCutShort();
    return false;
  }
  makeRoom(nodes, buffer.size() / orvane::kNodeSize);
  for (; !buffer.empty(); buffer = buffer.subspan(orvane::kNodeSize)) {
    if (orvane::hasPlainName(buffer.data())) {
      orvane::copyRecord(orvane::readNode(buffer.data()), nodes.emplace_back());
    } else {
      watch.leftOut(buffer.data());
    }
  }
  return true;
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
  return appendNodes(*this, buffer, UnwatchedArray());
}

bool OrvaneUpidArray::setBufferReported(std::span<const char> buffer, OrvaneFindings& findings) {
  OrvaneUpidArray added;  // aside, since memory may run out for the findings
  if (!appendNodes(added, buffer, ArrayReport(buffer, 0, findings))) return false;
  makeRoom(*this, added.size());
  insert(end(), added.begin(), added.end());
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

bool OrvaneUpidArray::checkName(const char* name) {
  return name != nullptr && orvane::isPlainName(name);
}
