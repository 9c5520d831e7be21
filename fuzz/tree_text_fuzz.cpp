// Trees as CSV and JSON: refused with a message, or read so that the CSV written of them is read
// the same again.

#include "cli/files/failure.h"
#include "cli/tree_file.h"
#include "fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = fuzz::untilNulOf(data, size);
  for (const char* const name : {"tree.csv", "tree.json"}) {
    try {
      const auto file = orvane::cli::parseTreeText({name, text}, false);
      fuzz::require(file.header && file.header->front() == file.nodes.size());
      const std::string csv = orvane::cli::csvOf(file);
      const auto again = orvane::cli::parseTreeText({"again.csv", csv}, false);
      fuzz::require(orvane::cli::csvOf(again) == csv);
    } catch (const orvane::cli::Failure& failure) {
      fuzz::require(std::string(failure.what()).starts_with(name));
    }
  }
  return 0;
}
