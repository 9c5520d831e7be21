// The texts that operations return: one string per operation, for the whole process.

#ifndef ORVANE_PORTS_RESULTS_H_
#define ORVANE_PORTS_RESULTS_H_

#include <array>
#include <cstddef>
#include <string>

namespace orvane {

// The operations that return a text of their own. Those up to kTraced are also run by others, which
// then replace their texts.
enum class Result : std::size_t {
  kRange,
  kPortStr,
  kPorts,
  kSortedPorts,
  kIp,
  kSection,
  kInitialSection,
  kAddNewSection,
  kDeleteSection,
  kEntryPorts,
  kEntrySection,
  kTraced,
  kPortArray = kTraced,
  kParsed,
  kMapping,
  kDiff,
  kUpdatedSection,
  kMappingSection,
  kMappingInitialSection,
  kMappingAddNewSection,
  kMappingUpdatedSection,
  kIniSection,
  kEntryEnumPorts,
  kCatalogueSection,
  kCatalogueSelection,
  kCatalogueMerged,
  kCataloguePorts,
  kCounter,
  kCount,
};

// The string of an operation. It is never destroyed, since destructors of a caller's globals may
// still read it.
inline std::string& resultText(Result result) {
  static auto& texts = *new std::array<std::string, static_cast<std::size_t>(Result::kCount)>();
  return texts[static_cast<std::size_t>(result)];
}

}  // namespace orvane

#endif  // ORVANE_PORTS_RESULTS_H_
