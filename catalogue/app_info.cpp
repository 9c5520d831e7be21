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
  orvane::PortSet read;
  for (orvane::PortListItem item; orvane::nextItem(text, item);) {
    OrvanePort port;
    orvane::setPort(item, port);
    read.insert(read.end(), port);
  }
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
  const auto fields = orvane::AppInfoRecord::split(record);
  if (fields && !fields->isIgnored()) orvane::readFields(*fields, *this);
  return fields.has_value();
}

void OrvaneAppInfo::setSection(const char* text) { setSection(orvane::viewOf(text)); }

void OrvaneAppInfo::setSection(std::string_view text) {
  const orvane::AppInfoKeys keys = orvane::currentKeys();
  orvane::SectionLines lines(text);
  OrvaneAppInfo read(*this);
  for (orvane::AppInfoGroup group(keys); group.read(lines);) orvane::readFields(group, read);
  *this = std::move(read);
}
