#include "upid/tree_report.h"

#include <algorithm>

namespace orvane {

void TreeReport::headerCutShort(std::size_t size) {
  cutShort(0, "the header is cut short: there are " + std::to_string(size) + " bytes");
}

void TreeReport::miscounted(std::size_t counted, std::size_t found) {
  cutShort(0, "the header at offset 0 counts " + std::to_string(counted) +
                  " nodes, but there are " + std::to_string(found));
}

const char* TreeReport::firstOf(unsigned int upid) const {
  return std::ranges::lower_bound(firsts_, upid, {}, &decltype(firsts_)::value_type::first)->second;
}

void TreeReport::finish(const Nodes& held, std::span<const char> records) {
  std::ranges::sort(firsts_);
  const char* const end = records.data() + records.size();
  for (const char* record = records.data(); record != end; record += kNodeSize) {
    const unsigned int upid = readWord(record);
    const char* const first = firstOf(upid);
    if (held.contains(upid)) {
      add(record, kOrvaneFindingError, "duplicate-upid",
          [] { return std::string("the UPID is that of a node which the tree keeps"); });
    } else if (first != record) {
      add(record, kOrvaneFindingError, "duplicate-upid", [&] {
        return "the UPID is that of the record at offset " + std::to_string(offsetOf(first)) +
               ", which a tree keeps";
      });
    }
    if (!hasPlainName(record)) {
      add(record, kOrvaneFindingNote, "name",
          [] { return "the name is no 7-bit text: a flat list leaves the node out"; });
    }
  }
  if (end == end_) return;
  report(findings(), {0, kOrvaneFindingNote, "rest", "", ""}, [&] {
    return "the " + std::to_string(end_ - end) + " bytes from offset " +
           std::to_string(offsetOf(end)) + " on are ignored";
  });
}

}  // namespace orvane
