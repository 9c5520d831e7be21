// The texts of a catalogue.

#include <algorithm>
#include <span>
#include <utility>

#include "apps/application_fields.h"
#include "catalogue/app_info_fields.h"
#include "catalogue/app_info_writer.h"
#include "catalogue/first_by_upid.h"
#include "orvane/app_info_array.h"
#include "ports/growth.h"

namespace {

using orvane::AppInfoWriter;
using orvane::Result;
using orvane::TextOut;

using Entries = std::vector<OrvaneAppInfo>;
using Upids = std::vector<unsigned int>;

template <typename Watcher>
void readEntries(std::string_view text, Entries& entries, Watcher& watcher) {
  const orvane::AppInfoKeys keys = orvane::currentKeys();
  orvane::SectionLines lines(text);
  Entries read;
  for (orvane::AppInfoGroup group(keys); group.read(lines, watcher);) {
    orvane::makeRoomForText(read, text.size() - lines.left(), lines.left());
    watcher.entry(group);
    orvane::readFields(group, read.emplace_back(), watcher);
  }
  orvane::appendAll(read, entries);
}

void writeEntries(TextOut& out, const Entries& entries, bool terminate) {
  AppInfoWriter writer(out, terminate);
  for (const OrvaneAppInfo& entry : entries) writer.append(entry);
}

void writeSelection(TextOut& out, const Entries& entries, const Upids& upids, bool terminate) {
  AppInfoWriter writer(out, terminate);
  for (const OrvaneAppInfo* entry : orvane::firstByUpid<OrvaneAppInfo>(upids, entries)) {
    if (entry != nullptr) writer.append(*entry);
  }
}

// An entry with the ports of its application added.
void writeMergedEntry(AppInfoWriter& writer, const OrvaneAppInfo& entry,
                      const OrvaneApplication& application) {
  const OrvanePortMapping* const source = orvane::portSource(application);
  if (source == nullptr) {
    writer.append(entry, entry.getPortSet(), kOrvaneReservedMerged);
    return;
  }
  orvane::PortSet merged = entry.getPortSet();
  orvane::addPorts(*source, merged);
  writer.append(entry, merged, kOrvaneReservedMerged);
}

void writeMerged(TextOut& out, const Entries& entries, const OrvaneAppMapping& mapping,
                 const Upids& upids, bool terminate) {
  AppInfoWriter writer(out, terminate);
  const auto known = orvane::firstByUpid<OrvaneAppInfo>(upids, entries);
  const auto applications = orvane::firstByUpid<OrvaneApplication>(upids, mapping);
  for (std::size_t i = 0; i < upids.size(); ++i) {
    if (known[i] == nullptr) continue;
    if (applications[i] != nullptr) {
      writeMergedEntry(writer, *known[i], *applications[i]);
    } else {
      writer.append(*known[i]);
    }
  }
}

// The entries that are made from the applications with these UPIDs.
Entries entriesOf(const OrvaneAppMapping& mapping, const Upids& upids) {
  Entries made;
  for (const OrvaneApplication* application :
       orvane::firstByUpid<OrvaneApplication>(upids, mapping)) {
    if (application == nullptr) continue;
    OrvaneAppInfo& entry = made.emplace_back();
    entry = *application;
    entry.setReserved1(kOrvaneReservedAdded);
  }
  return made;
}

void writeAll(TextOut& out, const Entries& entries, const Entries& made, bool terminate) {
  writeEntries(out, entries, terminate);
  writeEntries(out, made, terminate);
}

void writeNumbers(TextOut& out, const Entries& entries) {
  const std::size_t begin = out.size();
  for (const OrvaneAppInfo& entry : entries) {
    for (const OrvanePort& port : entry.getPortSet()) {
      orvane::writeNumbers(out, orvane::numbersOf(port));
    }
  }
  orvane::endNumbers(out, begin);
}

}  // namespace

void OrvaneAppInfoArray::setSection(const char* text) { setSection(orvane::viewOf(text)); }

void OrvaneAppInfoArray::setSection(std::string_view text) {
  orvane::UnwatchedEntries unwatched;
  readEntries(text, entries, unwatched);
}

void OrvaneAppInfoArray::setSectionReported(std::string_view text, OrvaneFindings& findings) {
  orvane::EntryReporter reporter(text, findings, "an entry without UPID and ports");
  readEntries(text, entries, reporter);
}

bool OrvaneAppInfoArray::isCatalogue(std::string_view text) {
  constexpr int kEnough = 16;
  int balance = 0;  // keys of both kinds cancel out
  orvane::SectionLines lines(text);
  for (auto line = lines.next(); line != orvane::SectionLine::kEnd; line = lines.next()) {
    if (line != orvane::SectionLine::kPair) continue;
    const auto isKey = [&](std::string_view name) {
      return orvane::equalIgnoringCase(name, lines.key());
    };
    balance += std::ranges::any_of(orvane::kEntryKeys, isKey) ? 1 : 0;
    balance -= std::ranges::any_of(orvane::kApplicationKeys, isKey) ? 1 : 0;
    if (balance == kEnough || balance == -kEnough) break;
  }
  return balance > 0;
}

char* OrvaneAppInfoArray::getSection(bool terminate) const {
  return orvane::publishText(Result::kCatalogueSection, writeEntries, entries, terminate);
}

void OrvaneAppInfoArray::appendSection(std::string& to, bool terminate) const {
  orvane::append(to, writeEntries, entries, terminate);
}

char* OrvaneAppInfoArray::getSection(const std::vector<unsigned int>& upids, bool terminate) const {
  return orvane::publishText(Result::kCatalogueSelection, writeSelection, entries, upids,
                             terminate);
}

void OrvaneAppInfoArray::appendSection(std::string& to, const std::vector<unsigned int>& upids,
                                       bool terminate) const {
  orvane::append(to, writeSelection, entries, upids, terminate);
}

// Below, entries are appended once their text is written, when nothing can fail any more.

char* OrvaneAppInfoArray::getAppMappingSection(const OrvaneAppMapping& mapping,
                                               const std::vector<unsigned int>& upids,
                                               bool terminate) {
  Entries made = entriesOf(mapping, upids);
  orvane::makeRoom(entries, made.size());
  char* const text =
      orvane::publishText(Result::kCatalogueSection, writeAll, entries, made, terminate);
  orvane::appendAll(made, entries);
  return text;
}

void OrvaneAppInfoArray::appendAppMappingSection(std::string& to, const OrvaneAppMapping& mapping,
                                                 const std::vector<unsigned int>& upids,
                                                 bool terminate) {
  Entries made = entriesOf(mapping, upids);
  orvane::makeRoom(entries, made.size());
  orvane::append(to, writeAll, entries, made, terminate);
  orvane::appendAll(made, entries);
}

char* OrvaneAppInfoArray::getMergedAppMappingSection(const OrvaneAppMapping& mapping,
                                                     const std::vector<unsigned int>& upids,
                                                     bool terminate) const {
  return orvane::publishText(Result::kCatalogueMerged, writeMerged, entries, mapping, upids,
                             terminate);
}

void OrvaneAppInfoArray::appendMergedAppMappingSection(std::string& to,
                                                       const OrvaneAppMapping& mapping,
                                                       const std::vector<unsigned int>& upids,
                                                       bool terminate) const {
  orvane::append(to, writeMerged, entries, mapping, upids, terminate);
}

char* OrvaneAppInfoArray::getPorts() const {
  return orvane::publishText(Result::kCataloguePorts, writeNumbers, entries);
}

void OrvaneAppInfoArray::appendPorts(std::string& to) const {
  orvane::append(to, writeNumbers, entries);
}
