// The section store: every section, written and read again, is one section with the same text.

#include <orvane/orvane.h>

#include <stdexcept>

#include "fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const OrvaneIni ini(fuzz::textOf(data, size).c_str());
  for (int index = 0;; ++index) {
    std::string text;
    try {
      text = ini.getSection(index, true);
    } catch (const std::out_of_range&) {
      return 0;
    }
    fuzz::require(OrvaneIni(text.c_str()).getSection(0, true) == text);
  }
}
