// Trees as CSV and JSON: refused with a message, or read so that what is written of them in both
// forms is read the same again.

#include "exchange/form_error.h"
#include "exchange/tree_csv.h"
#include "exchange/tree_json.h"
#include "fuzz.h"

namespace exchange = orvane::exchange;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = fuzz::textOf(data, size);
  for (const auto read : {exchange::readTreeCsv, exchange::readTreeJson}) {
    try {
      const exchange::TreeFile file = read(text, false);
      fuzz::require(file.header && file.header->front() == file.nodes.size());
      const std::string csv = exchange::csvOf(file);
      fuzz::require(exchange::csvOf(exchange::readTreeCsv(csv, false)) == csv);
      fuzz::require(exchange::csvOf(exchange::readTreeJson(exchange::jsonOf(file, {"a finding"}),
                                                           false)) == csv);
      OrvaneFindings findings;
      exchange::treeOf(file, findings);
      for (const OrvaneFinding& finding : findings) {
        fuzz::require(finding.line > 0 && finding.line <= file.nodes.size());
      }
    } catch (const exchange::FormError& error) {
      fuzz::require(error.what()[0] != '\0');
    }
  }
  return 0;
}
