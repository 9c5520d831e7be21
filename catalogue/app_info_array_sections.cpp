#include "catalogue/app_info_fields.h"
#include "catalogue/app_info_writer.h"
#include "catalogue/first_by_upid.h"
#include "orvane/app_info_array.h"
#include "ports/growth.h"

namespace {

// Writes entries into an operation's own string.
template <typename Append>
char* writeEntries(std::string& text, bool terminate, Append append) {
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
  const orvane::HeldText held(orvane::viewOf(text), entries.data(), entries.size());
  const orvane::AppInfoKeys keys = orvane::currentKeys();
  orvane::SectionLines lines(held.view());
  const orvane::TextGrowth growth(entries.size(), lines.left());
  orvane::AppInfoGroup group(keys);
  while (group.read(lines)) {
    growth.makeRoom(entries, lines.left());
    orvane::readFields(group, entries.emplace_back());
  }
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
    for (const OrvaneAppInfo* entry : orvane::firstByUpid<OrvaneAppInfo>(upids, entries)) {
      if (entry != nullptr) writer.append(*entry);
    }
  });
}

char* OrvaneAppInfoArray::getAppMappingSection(const OrvaneAppMapping& mapping,
                                               const std::vector<unsigned int>& upids,
                                               bool terminate) {
  for (const OrvaneApplication* application :
       orvane::firstByUpid<OrvaneApplication>(upids, mapping)) {
    if (application == nullptr) continue;
    OrvaneAppInfo& entry = entries.emplace_back();
    entry = *application;
    entry.setReserved1(kOrvaneReservedAdded);
  }
  return getSection(terminate);
}

char* OrvaneAppInfoArray::getMergedAppMappingSection(const OrvaneAppMapping& mapping,
                                                     const std::vector<unsigned int>& upids,
                                                     bool terminate) const {
  static std::string text;
  return writeEntries(text, terminate, [&](orvane::AppInfoWriter& writer) {
    const auto known = orvane::firstByUpid<OrvaneAppInfo>(upids, entries);
    const auto applications = orvane::firstByUpid<OrvaneApplication>(upids, mapping);
    for (std::size_t i = 0; i < upids.size(); ++i) {
      if (known[i] == nullptr) continue;
      if (applications[i] != nullptr) {
        appendMerged(writer, *known[i], *applications[i]);
      } else {
        writer.append(*known[i]);
      }
    }
  });
}
