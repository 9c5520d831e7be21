#include "orvane/app_info.h"

#include <cstring>
#include <numeric>

#include "catalogue/app_info_fields.h"

namespace {

// Arrays, since callers are handed them as mutable texts.
char entryKeys[8][10] = {"Version",   "PortType",  "UPID",      "PortRange",
                         "Reserved1", "Reserved2", "Reserved3", "FQN"};

}  // namespace

char* OrvaneAppInfo::appinfo_key_names[8] = {entryKeys[0], entryKeys[1], entryKeys[2],
                                             entryKeys[3], entryKeys[4], entryKeys[5],
                                             entryKeys[6], entryKeys[7]};

unsigned char** OrvaneAppInfo::getKeyNames() {
  return reinterpret_cast<unsigned char**>(appinfo_key_names);
}

OrvaneAppInfo::~OrvaneAppInfo() = default;

void OrvaneAppInfo::assign(const OrvaneApplication& application) {
  upid = application.getUpid();
  portType = application.getType() == kOrvaneSelectorTypeDefault ? kOrvanePortTypeDefault
                                                                 : kOrvanePortTypeOther;
  version = reserved1 = reserved2 = reserved3 = 0;
  std::memcpy(fqn, application.name, sizeof application.name);
  addPorts(application);
}

void OrvaneAppInfo::setFQN(const char* name) {
  if (name != nullptr) orvane::readFqn(name, *this);
}

void OrvaneAppInfo::setPorts(const char* text) {
  if (text != nullptr) orvane::readPorts(text, *this);
}

void OrvaneAppInfo::addPorts(const OrvaneApplication& application) {
  const OrvanePortMapping* const source = orvane::portSource(application);
  if (source != nullptr) orvane::addPorts(*source, ports);
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
  const orvane::HeldText held(orvane::bytesOf(record), this, 1);
  const auto fields = orvane::AppInfoRecord::split(held.view());
  if (fields && !fields->isIgnored()) orvane::readFields(*fields, *this);
  return fields.has_value();
}

void OrvaneAppInfo::setSection(const char* text) {
  const orvane::AppInfoKeys keys = orvane::currentKeys();
  const orvane::HeldText held(orvane::viewOf(text), this, 1);
  orvane::SectionLines lines(held.view());
  orvane::AppInfoGroup group(keys);
  while (group.read(lines)) orvane::readFields(group, *this);
}
