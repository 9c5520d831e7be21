#include "catalogue/app_info_fields.h"
#include "catalogue/app_info_writer.h"
#include "catalogue/first_by_upid.h"
#include "orvane/app_info_array.h"

namespace {

using EntryByUpid = orvane::FirstByUpid<OrvaneAppInfo>;
using ApplicationByUpid = orvane::FirstByUpid<OrvaneApplication>;

// Writes entries into an operation's own string.
template <typename Append>
char* writeEntries(std::string& text, bool terminate, Append append) {
  text.clear();
  orvane::AppInfoWriter writer(text, terminate);
  append(writer);
  writer.publish();
  return text.data();
}

// Writes an entry with the ports of its application added.
void appendMerged(orvane::AppInfoWriter& writer, const OrvaneAppInfo& entry,
                  const OrvaneApplication& application) {
  const orvane::PortSet& ports = orvane::AppInfoAccess::ports(entry);
  const OrvanePortMapping* const source = orvane::portSource(application);
  if (source == nullptr) {
    writer.append(entry, ports, kOrvaneReservedMerged);
  } else {
    orvane::PortSet merged = ports;
    orvane::addPorts(*source, merged);
    writer.append(entry, merged, kOrvaneReservedMerged);
  }
}

}  // namespace

void OrvaneAppInfoArray::setSection(const char* text) {
  const orvane::AppInfoKeys keys = orvane::currentKeys();
  orvane::SectionLines lines(orvane::viewOf(text));
  orvane::AppInfoGroup group(keys);
  while (group.read(lines)) orvane::readFields(group, entries.emplace_back());
}

char* OrvaneAppInfoArray::getSection(bool terminate) const {
  static std::string text;
  return writeEntries(text, terminate, [this](orvane::AppInfoWriter& writer) {
    for (const OrvaneAppInfo& entry : entries) writer.append(entry);
  });
}

char* OrvaneAppInfoArray::getSection(const std::vector<unsigned int>& upids, bool terminate) const {
  static std::string text;
  return writeEntries(text, terminate, [&](orvane::AppInfoWriter& writer) {
    const EntryByUpid known(upids, entries);
    for (const unsigned int upid : upids) {
      if (const OrvaneAppInfo* entry = known[upid]) writer.append(*entry);
    }
  });
}

char* OrvaneAppInfoArray::getAppMappingSection(const OrvaneAppMapping& mapping,
                                               const std::vector<unsigned int>& upids,
                                               bool terminate) {
  const ApplicationByUpid applications(upids, mapping);
  for (const unsigned int upid : upids) {
    if (const OrvaneApplication* application = applications[upid]) {
      OrvaneAppInfo& entry = entries.emplace_back();
      entry = *application;
      entry.setReserved1(kOrvaneReservedAdded);
    }
  }
  return getSection(terminate);
}

char* OrvaneAppInfoArray::getMergedAppMappingSection(const OrvaneAppMapping& mapping,
                                                     const std::vector<unsigned int>& upids,
                                                     bool terminate) const {
  static std::string text;
  return writeEntries(text, terminate, [&](orvane::AppInfoWriter& writer) {
    const EntryByUpid known(upids, entries);
    const ApplicationByUpid applications(upids, mapping);
    for (const unsigned int upid : upids) {
      const OrvaneAppInfo* const entry = known[upid];
      if (entry == nullptr) continue;
      if (const OrvaneApplication* application = applications[upid]) {
        appendMerged(writer, *entry, *application);
      } else {
        writer.append(*entry);
      }
    }
  });
}
