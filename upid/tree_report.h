// What the readers of trees report.

#ifndef ORVANE_UPID_TREE_REPORT_H_
#define ORVANE_UPID_TREE_REPORT_H_

#include <cstddef>
#include <map>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "orvane/upid_node.h"
#include "upid/node_report.h"

namespace orvane {

using Nodes = std::map<unsigned int, OrvaneUpidNode>;

class TreeReport : public NodeReport {
 public:
  TreeReport(std::span<const char> buffer, std::size_t headerSize, OrvaneFindings& findings)
      : NodeReport(buffer, headerSize, findings), end_(buffer.data() + buffer.size()) {}

  void headerCutShort(std::size_t size);
  void miscounted(std::size_t counted, std::size_t found);

  // Records come in another order than that of the buffer; `isFirst` tells that none before had
  // its UPID.
  void read(const char* record, bool isFirst) {
    if (isFirst) firsts_.emplace_back(readWord(record), record);
  }

  // Reports on all that have been read, in the order of the buffer.
  void finish(const Nodes& held, std::span<const char> records);

 private:
  const char* firstOf(unsigned int upid) const;

  const char* end_;
  std::vector<std::pair<unsigned int, const char*>> firsts_;  // by UPID
};

}  // namespace orvane

#endif  // ORVANE_UPID_TREE_REPORT_H_
