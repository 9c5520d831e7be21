// What the readers of buffers tell of their records.

#ifndef ORVANE_UPID_NODE_REPORT_H_
#define ORVANE_UPID_NODE_REPORT_H_

#include <cstddef>
#include <span>
#include <string>
#include <utility>

#include "orvane/findings.h"
#include "upid/node_buffer.h"

namespace orvane {

// Adds a finding whose message is only made when there is room for it.
template <typename Message>
void report(OrvaneFindings& findings, OrvaneFinding finding, Message message) {
  if (!findings.count(finding.kind, finding.severity)) return;
  finding.message = message();
  findings.push_back(std::move(finding));
}

// Reports on the records of `buffer`, which begin `headerSize` bytes after its start.
class NodeReport {
 public:
  NodeReport(std::span<const char> buffer, std::size_t headerSize, OrvaneFindings& findings)
      : buffer_(buffer), headerSize_(headerSize), findings_(findings) {}

  void cutShort(std::size_t line, const std::string& what) {
    findings_.add({line, kOrvaneFindingError, "cut-short", "", what});
  }

  // The last record is not whole.
  void recordCutShort() {
    const std::size_t count = (buffer_.size() - headerSize_) / kNodeSize;
    const std::size_t offset = headerSize_ + count * kNodeSize;
    cutShort(count + 1, "the record at offset " + std::to_string(offset) + " is cut short");
  }

 protected:
  std::size_t offsetOf(const char* record) const {
    return static_cast<std::size_t>(record - buffer_.data());
  }

  // Reports a record; `what` makes the words that follow its place.
  template <typename What>
  void add(const char* record, tagFindingSeverity severity, const char* kind, What what) {
    const std::size_t line = (offsetOf(record) - headerSize_) / kNodeSize + 1;
    report(findings_, {line, severity, kind, std::to_string(readWord(record)), ""},
           [&] { return "record at offset " + std::to_string(offsetOf(record)) + ": " + what(); });
  }

  OrvaneFindings& findings() { return findings_; }

 private:
  std::span<const char> buffer_;
  std::size_t headerSize_;
  OrvaneFindings& findings_;
};

}  // namespace orvane

#endif  // ORVANE_UPID_NODE_REPORT_H_
