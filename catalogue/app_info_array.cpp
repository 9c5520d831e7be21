#include "orvane/app_info_array.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>

#include "catalogue/app_info_fields.h"
#include "catalogue/app_info_writer.h"
#include "catalogue/first_by_upid.h"

namespace {

using EntryByUpid = orvane::FirstByUpid<OrvaneAppInfo>;

}  // namespace

OrvaneAppInfoArray::~OrvaneAppInfoArray() = default;

void OrvaneAppInfoArray::add(const OrvaneAppInfo& entry) { entries.push_back(entry); }

void OrvaneAppInfoArray::add(const unsigned char* record) {
  addChecked(orvane::AppInfoRecord::trusted(record));
}

bool OrvaneAppInfoArray::addChecked(std::span<const unsigned char> record) {
  const auto fields = orvane::AppInfoRecord::split(record);
  if (fields && !fields->isIgnored()) orvane::readFields(*fields, entries.emplace_back());
  return fields.has_value();
}

OrvaneAppInfo* OrvaneAppInfoArray::find(unsigned int upid) {
  return const_cast<OrvaneAppInfo*>(std::as_const(*this).find(upid));
}

const OrvaneAppInfo* OrvaneAppInfoArray::find(unsigned int upid) const {
  return std::find_if(begin(), end(),
                      [=](const OrvaneAppInfo& entry) { return entry.getUPID() == upid; });
}

unsigned short OrvaneAppInfoArray::getNumPortsUsed() const {
  unsigned int sum = 0;
  for (const OrvaneAppInfo& entry : entries) sum += entry.getNumPortsUsed();
  return static_cast<unsigned short>(sum);
}

unsigned short OrvaneAppInfoArray::getNumPortType(tagAppInfoPortType type) const {
  unsigned int sum = 0;
  for (const OrvaneAppInfo& entry : entries) {
    if (entry.getPortType() == type) sum += entry.getNumPortsUsed();
  }
  return static_cast<unsigned short>(sum);
}

void OrvaneAppInfoArray::getPortList(std::vector<unsigned short>& ports) const {
  ports.clear();
  for (const OrvaneAppInfo& entry : entries) {
    for (const OrvanePort& port : orvane::AppInfoAccess::ports(entry)) {
      const auto [first, last] = orvane::numbersOf(port);
      if (first > last) continue;
      const std::size_t listed = ports.size();
      ports.resize(listed + (last - first + 1));
      std::iota(ports.data() + listed, ports.data() + ports.size(),
                static_cast<unsigned short>(first));
    }
  }
}

char* OrvaneAppInfoArray::getPorts() const {
  static std::string text;
  text.clear();
  for (const OrvaneAppInfo& entry : entries) {
    for (const OrvanePort& port : orvane::AppInfoAccess::ports(entry)) {
      orvane::appendNumbers(text, 0, orvane::numbersOf(port));
    }
  }
  return text.data();
}

void OrvaneAppInfoArray::getUnknownPortList(const std::vector<unsigned int>& upids,
                                            std::vector<unsigned int>& result) const {
  const EntryByUpid known(upids, entries);
  result.clear();
  std::ranges::copy_if(upids, std::back_inserter(result),
                       [&](unsigned int upid) { return known[upid] == nullptr; });
}

void OrvaneAppInfoArray::getCommonPortList(const std::vector<unsigned int>& upids,
                                           std::vector<unsigned int>& result) const {
  const EntryByUpid known(upids, entries);
  result.clear();
  std::ranges::copy_if(upids, std::back_inserter(result),
                       [&](unsigned int upid) { return known[upid] != nullptr; });
}
