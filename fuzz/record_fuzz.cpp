// Records through the twins that stay inside them: refused or read whole, never half, and then as
// the trusting operations read them.

#include <orvane/orvane.h>

#include <memory>
#include <span>

#include "fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::span<const unsigned char> record(data, size);
  OrvanePortMapping item;
  if (item.setValuesChecked(record)) {
    OrvanePortMapping trusting;
    trusting.setValues(data);
    fuzz::require(std::string(trusting.getMappingAsString()) ==
                  std::string(item.getMappingAsString()));
  } else {
    fuzz::require(item.getPorts().empty() && item.getID() == -1);
  }
  OrvaneApplication application;
  const bool read = application.setValuesChecked(record);
  fuzz::require(read || application.getItems().empty());
  OrvaneAppMapping mapping;
  fuzz::require(mapping.addChecked(record) == read);
  fuzz::require(mapping.size() == application.getItems().size());
  if (read) {
    OrvaneApplication trusting(application);  // of the same identifier
    trusting.setValues(data);
    OrvaneAppMapping trustingMapping;
    trustingMapping.add(data);
    fuzz::require(std::string(trusting.getSection(true)) ==
                  std::string(application.getSection(true)));
    fuzz::require(trustingMapping.size() == mapping.size());
  }

  const std::string text = mapping.getSection(true);
  const auto room = std::make_unique<char[]>(text.size() + 1);
  fuzz::require(!mapping.getSectionChecked({room.get(), text.size()}));
  fuzz::require(mapping.getSectionChecked({room.get(), text.size() + 1}) == text.size());

  OrvaneAppInfo entry;
  const std::string before = entry.getSection(true);
  const bool readEntry = entry.setValuesChecked(record);
  fuzz::require(readEntry || entry.getSection(true) == before);
  OrvaneAppInfoArray catalogue;
  fuzz::require(catalogue.addChecked(record) == readEntry);
  const std::string written = entry.getSection(true);
  fuzz::require(catalogue.size() == 0 || catalogue.getSection(true) == written);
  if (readEntry) {
    entry = OrvaneAppInfo();
    entry.setValues(data);
    catalogue.add(data);
    fuzz::require(entry.getSection(true) == written && catalogue.size() % 2 == 0);
  }
  return 0;
}
