#include "orvane/app_info.h"

#include <cstring>
#include <numeric>
#include <utility>

#include "catalogue/app_info_fields.h"
#include "ports/port_list.h"

namespace {

// Arrays, since callers are handed them as mutable texts.
char entryKeys[8][10] = {"Version",   "PortType",  "UPID",      "PortRange",
                         "Reserved1", "Reserved2", "Reserved3", "FQN"};

template <typename Watcher>
bool readRecord(std::span<const unsigned char> record, OrvaneAppInfo& entry, Watcher& watcher) {
  const auto fields = orvane::AppInfoRecord::split(record, watcher);
  if (!fields) return false;
  if (fields->isIgnored()) return true;
  if constexpr (Watcher::kWatches) {  // aside, since telling may need memory
    OrvaneAppInfo read(entry);
    orvane::readFields(*fields, read, watcher);
    entry = std::move(read);
  } else {
    orvane::readFields(*fields, entry, watcher);
  }
  return true;
}

template <typename Watcher>
void readSection(std::string_view text, OrvaneAppInfo& entry, Watcher& watcher) {
  const orvane::AppInfoKeys keys = orvane::currentKeys();
  orvane::SectionLines lines(text);
  OrvaneAppInfo read(entry);
  orvane::AppInfoGroup group(keys);
  orvane::AppInfoGroup last = group;
  while (group.read(lines, watcher)) {
    if constexpr (Watcher::kWatches) {
      watcher.replaced(group, last);
      last.overlay(group);
    }
    orvane::readFields(group, read, watcher);
  }
  entry = std::move(read);
}

}  // namespace

namespace orvane {

void addPorts(const OrvanePortMapping& item, PortSet& ports) {
  const auto add = [&](const auto& value) {
    OrvanePort port;
    port = value;
    ports.insert(ports.end(), port);
  };
  for (const unsigned int number : item.getPorts()) add(number);
  for (const OrvanePortRange& range : item.getRanges()) add(range);
}

}  // namespace orvane

char* OrvaneAppInfo::appinfo_key_names[8] = {entryKeys[0], entryKeys[1], entryKeys[2],
                                             entryKeys[3], entryKeys[4], entryKeys[5],
                                             entryKeys[6], entryKeys[7]};

unsigned char** OrvaneAppInfo::getKeyNames() {
  return reinterpret_cast<unsigned char**>(appinfo_key_names);
}

OrvaneAppInfo::~OrvaneAppInfo() = default;

void OrvaneAppInfo::assign(const OrvaneApplication& application) {
  addPorts(application);
  upid = application.getUpid();
  portType = application.getType() == kOrvaneSelectorTypeDefault ? kOrvanePortTypeDefault
                                                                 : kOrvanePortTypeOther;
  version = reserved1 = reserved2 = reserved3 = 0;
  std::memcpy(fqn, application.name, sizeof application.name);
}

void OrvaneAppInfo::setFQN(const char* name) {
  if (name != nullptr) setFQN(std::string_view(name));
}

void OrvaneAppInfo::setFQN(std::string_view name) { orvane::copyToField(name, fqn); }

void OrvaneAppInfo::setPorts(const char* text) {
  if (text != nullptr) setPorts(std::string_view(text));
}

void OrvaneAppInfo::setPorts(std::string_view text) {
  orvane::UnwatchedEntries unwatched;
  orvane::PortSet read = orvane::readElements(text, unwatched);
  ports.swap(read);
}

void OrvaneAppInfo::setPortsReported(std::string_view text, OrvaneFindings& findings) {
  orvane::EntryReporter reporter(text, findings);
  orvane::PortSet read = orvane::readElements(text, reporter);
  ports.swap(read);
}

void OrvaneAppInfo::addPorts(const OrvaneApplication& application) {
  const OrvanePortMapping* const source = orvane::portSource(application);
  if (source == nullptr) return;
  orvane::PortSet more;
  orvane::addPorts(*source, more);
  orvane::splice(more, ports);
}

unsigned short OrvaneAppInfo::getNumPortsUsed() const {
  return static_cast<unsigned short>(std::accumulate(
      ports.begin(), ports.end(), 0U,
      [](unsigned int sum, const OrvanePort& port) { return sum + port.getNumPortsUsed(); }));
}

void OrvaneAppInfo::setValues(const unsigned char* record) {
  setValuesChecked(orvane::AppInfoRecord::trusted(record));
}

bool OrvaneAppInfo::setValuesChecked(std::span<const unsigned char> record) {
  orvane::UnwatchedEntries unwatched;
  return readRecord(record, *this, unwatched);
}

bool OrvaneAppInfo::setValuesReported(std::span<const unsigned char> record,
                                      OrvaneFindings& findings) {
  orvane::EntryReporter reporter(findings);
  return readRecord(record, *this, reporter);
}

void OrvaneAppInfo::setSection(const char* text) { setSection(orvane::viewOf(text)); }

void OrvaneAppInfo::setSection(std::string_view text) {
  orvane::UnwatchedEntries unwatched;
  readSection(text, *this, unwatched);
}

void OrvaneAppInfo::setSectionReported(std::string_view text, OrvaneFindings& findings) {
  orvane::EntryReporter reporter(text, findings);
  readSection(text, *this, reporter);
}
