// The reported twins: they leave what plain reading leaves, their findings come in the order of the
// lines, and a text without any is read whole.

#include <orvane/orvane.h>

#include <algorithm>
#include <span>

#include "fuzz.h"

namespace {

// Identifiers that are drawn differ from reading to reading.
std::string shown(OrvaneAppMapping mapping, bool keepsIds) {
  for (OrvaneApplication& application : mapping) {
    if (!keepsIds) application.setID(0);
  }
  std::string text;
  mapping.appendSection(text, true);
  return text;
}

template <typename Catalogue>
std::string shown(const Catalogue& catalogue) {
  std::string text;
  catalogue.appendSection(text, true);
  return text;
}

// Reads a text, also a bounded list of findings of it, which is a part of the whole one.
template <typename Read>
OrvaneFindings findingsOf(std::string_view text, Read read) {
  OrvaneFindings findings;
  read(findings);
  OrvaneFindings few(2);
  read(few);
  fuzz::require(few.size() <= findings.size());
  for (const tagFindingSeverity severity : {kOrvaneFindingNote, kOrvaneFindingError}) {
    fuzz::require(few.getFound(severity) == findings.getFound(severity));
  }
  const auto lines = static_cast<std::size_t>(std::ranges::count(text, '\n')) + 1;
  fuzz::require(std::ranges::is_sorted(findings, {}, &OrvaneFinding::line));
  for (const OrvaneFinding& finding : findings) {
    fuzz::require(finding.line >= 1 && finding.line <= lines);
    fuzz::require(!finding.message.empty() && finding.message.size() < 400);
  }
  return findings;
}

void checkApplications(std::string_view text) {
  OrvaneAppMapping plain;
  plain.setSection(text);
  OrvaneAppMapping reported;
  const auto read = [&](OrvaneFindings& found) { reported.setSectionReported(text, found); };
  const OrvaneFindings findings = findingsOf(text, read);
  fuzz::require(shown(plain, false) == shown(reported, false));
  if (findings.empty()) {
    OrvaneAppMapping again;
    again.setSection(shown(plain, true));
    fuzz::require(shown(again, true) == shown(plain, true) && again.size() == plain.size());
  }
  plain.assign(1, OrvaneApplication());
  reported.assign(1, OrvaneApplication());
  plain.front().setSection(text);
  OrvaneFindings few(1);
  reported.front().setSectionReported(text, few);
  fuzz::require(shown(plain, false) == shown(reported, false));
}

void checkCatalogue(std::string_view text) {
  OrvaneAppInfoArray plain;
  plain.setSection(text);
  findingsOf(text, [&](OrvaneFindings& found) {
    OrvaneAppInfoArray reported;
    reported.setSectionReported(text, found);
    fuzz::require(shown(plain) == shown(reported));
  });
  OrvaneAppInfoArray::isCatalogue(text);
  OrvaneFindings few(1);
  OrvaneAppInfo entry;
  entry.setSection(text);
  OrvaneAppInfo reportedEntry;
  reportedEntry.setSectionReported(text, few);
  fuzz::require(shown(entry) == shown(reportedEntry));
  const OrvaneIni ini(text);
  findingsOf(text, [&](OrvaneFindings& found) {
    OrvaneIni reported;
    reported.setSectionReported(text, found);
    for (int i = 0; i < plain.end() - plain.begin(); ++i) {  // as many sections as entries
      std::string one;
      std::string other;
      ini.appendSection(one, i, true);
      reported.appendSection(other, i, true);
      fuzz::require(one == other);
    }
  });
}

void checkList(std::string_view text) {
  OrvanePortMapping plain;
  plain.setPorts(text);
  OrvanePortCounter counter;
  counter.add(text);
  counter.addSocket(7, text);
  counter.remove(text.substr(text.size() / 2));
  OrvaneAppInfo entry;
  entry.setPorts(text);
  findingsOf(text, [&](OrvaneFindings& found) {
    OrvanePortMapping reported;
    reported.setPortsReported(text, found);
    fuzz::require(plain.getPorts() == reported.getPorts());
    fuzz::require(plain.getRanges() == reported.getRanges());
  });
  OrvaneFindings few(1);
  OrvanePortCounter otherCounter;
  otherCounter.addReported(text, few);
  otherCounter.addSocketReported(7, text, few);
  otherCounter.removeReported(text.substr(text.size() / 2), few);
  fuzz::require(std::string(counter.toString()) == std::string(otherCounter.toString()));
  OrvaneAppInfo otherEntry;
  otherEntry.setPortsReported(text, few);
  fuzz::require(entry.getPortSet() == otherEntry.getPortSet());
}

void checkRecord(std::span<const unsigned char> record) {
  OrvaneFindings few(2);
  OrvaneApplication plain;
  OrvaneApplication reported(plain);
  fuzz::require(plain.setValuesChecked(record) == reported.setValuesReported(record, few));
  OrvaneAppMapping mapping;
  OrvaneAppMapping other;
  fuzz::require(mapping.addChecked(record) == other.addReported(record, few));
  fuzz::require(mapping.addChecked(record) == other.addReported(record, few));
  mapping.push_back(plain);
  other.push_back(reported);
  fuzz::require(shown(mapping, false) == shown(other, false));
  OrvanePortMapping item;
  OrvanePortMapping otherItem;
  fuzz::require(item.setValuesChecked(record) == otherItem.setValuesReported(record, few));
  fuzz::require(std::string(item.getMappingAsString()) ==
                std::string(otherItem.getMappingAsString()));
  OrvaneAppInfo entry;
  OrvaneAppInfo otherEntry;
  fuzz::require(entry.setValuesChecked(record) == otherEntry.setValuesReported(record, few));
  fuzz::require(shown(entry) == shown(otherEntry));
  OrvaneAppInfoArray catalogue;
  OrvaneAppInfoArray otherCatalogue;
  fuzz::require(catalogue.addChecked(record) == otherCatalogue.addReported(record, few));
  fuzz::require(shown(catalogue) == shown(otherCatalogue));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text = fuzz::viewOf(data, size);
  checkApplications(text);
  checkCatalogue(text);
  checkList(text);
  checkRecord({data, size});
  return 0;
}
