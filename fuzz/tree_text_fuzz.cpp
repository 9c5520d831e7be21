// Trees as buffers, CSV and JSON: refused with a message, or read so that what is written of them
// in each form is read the same again; and as the dot language draws them.

#include <algorithm>

#include "exchange/form_error.h"
#include "exchange/tree_csv.h"
#include "exchange/tree_dot.h"
#include "exchange/tree_json.h"
#include "fuzz.h"

namespace exchange = orvane::exchange;

namespace {

// A line for each place and for each edge, and four around them.
void drawGraph(const OrvaneUpidTree& tree) {
  const auto outline = tree.outline();
  const std::string dot = exchange::dotOf(outline);
  const auto edges = std::ranges::count_if(
      outline, [](const OrvaneUpidPlace& place) { return place.parent != nullptr; });
  fuzz::require(std::ranges::count(dot, '\n') ==
                static_cast<std::ptrdiff_t>(outline.size()) + edges + 4);
  fuzz::require(
      std::ranges::all_of(dot, [](char c) { return c == '\n' || (c >= ' ' && c <= '~'); }));
}

void writeForms(const exchange::TreeFile& file) {
  const bool nodesOnly = !file.header;
  fuzz::require(nodesOnly || file.header->front() == file.nodes.size());
  const std::string bytes = exchange::bufferOf(file);
  const std::string csv = exchange::csvOf(file);
  const std::string json = exchange::jsonOf(file, {"a finding"});
  for (const auto& again :
       {exchange::readTreeBuffer(bytes, nodesOnly), exchange::readTreeCsv(csv, nodesOnly),
        exchange::readTreeJson(json, nodesOnly)}) {
    fuzz::require(exchange::bufferOf(again) == bytes && exchange::csvOf(again) == csv);
    fuzz::require(exchange::jsonOf(again, {"a finding"}) == json);
  }
  OrvaneFindings findings;
  drawGraph(exchange::treeOf(file, findings));
  for (const OrvaneFinding& finding : findings) {
    fuzz::require(finding.line > 0 && finding.line <= file.nodes.size());
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = fuzz::textOf(data, size);
  for (const auto read :
       {exchange::readTreeBuffer, exchange::readTreeCsv, exchange::readTreeJson}) {
    for (const bool nodesOnly : {false, true}) {
      exchange::TreeFile file;
      try {
        file = read(text, nodesOnly);
      } catch (const exchange::FormError& error) {
        fuzz::require(error.what()[0] != '\0');
        continue;
      }
      writeForms(file);
    }
  }
  return 0;
}
