#include "orvane/app_info_array.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>

#include "catalogue/app_info_fields.h"
#include "catalogue/app_info_writer.h"
#include "catalogue/first_by_upid.h"
#include "catalogue/upid_set.h"

namespace {

// Takes those UPIDs that the catalogue has an entry for, or those that it has none for.
void sift(std::span<const OrvaneAppInfo> entries, std::span<const unsigned int> upids, bool known,
          std::vector<unsigned int>& result) {
  std::vector<unsigned int> taken(upids.size());  // `result` may be the list of UPIDs itself
  std::size_t count = 0;  // what is not taken is overwritten, which needs no branch
  const auto take = [&](std::size_t i, bool isKnown) {
    taken[count] = upids[i];
    if (isKnown == known) ++count;
  };
  const auto takeFound = [&](std::size_t i, const OrvaneAppInfo* entry) {
    take(i, entry != nullptr);
  };

  // UPIDs that are few beside the entries are put in a table, else the entries are.
  if (upids.size() <= orvane::kFew || upids.size() < entries.size() / 2) {
    const auto found = orvane::firstByUpid(upids, entries);
    for (std::size_t i = 0; i < upids.size(); ++i) takeFound(i, found[i]);
  } else if (!orvane::takeAscending(upids, entries, takeFound)) {
    count = 0;
    orvane::UpidSet all(entries.size());
    for (const OrvaneAppInfo& entry : entries) all.add(entry.getUPID());
    for (std::size_t i = 0; i < upids.size(); ++i) take(i, all.contains(upids[i]));
  }
  taken.resize(count);
  result.swap(taken);
}

template <typename Watcher>
bool addRecord(std::span<const unsigned char> record, std::vector<OrvaneAppInfo>& entries,
               Watcher& watcher) {
  const auto fields = orvane::AppInfoRecord::split(record, watcher);
  if (!fields) return false;
  if (fields->isIgnored()) return true;
  OrvaneAppInfo entry;
  orvane::readFields(*fields, entry, watcher);
  entries.push_back(std::move(entry));
  return true;
}

}  // namespace

OrvaneAppInfoArray::~OrvaneAppInfoArray() = default;

void OrvaneAppInfoArray::add(const OrvaneAppInfo& entry) { entries.push_back(entry); }

void OrvaneAppInfoArray::add(const unsigned char* record) {
  addChecked(orvane::AppInfoRecord::trusted(record));
}

bool OrvaneAppInfoArray::addChecked(std::span<const unsigned char> record) {
  orvane::UnwatchedEntries unwatched;
  return addRecord(record, entries, unwatched);
}

bool OrvaneAppInfoArray::addReported(std::span<const unsigned char> record,
                                     OrvaneFindings& findings) {
  orvane::EntryReporter reporter(findings);
  return addRecord(record, entries, reporter);
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
  std::vector<unsigned short> listed;
  for (const OrvaneAppInfo& entry : entries) {
    for (const OrvanePort& port : entry.getPortSet()) {
      const auto [first, last] = orvane::numbersOf(port);
      if (first > last) continue;
      const std::size_t before = listed.size();
      listed.resize(before + (last - first + 1));
      std::iota(listed.data() + before, listed.data() + listed.size(),
                static_cast<unsigned short>(first));
    }
  }
  ports.swap(listed);
}

void OrvaneAppInfoArray::getUnknownPortList(const std::vector<unsigned int>& upids,
                                            std::vector<unsigned int>& result) const {
  sift(entries, upids, false, result);
}

void OrvaneAppInfoArray::getCommonPortList(const std::vector<unsigned int>& upids,
                                           std::vector<unsigned int>& result) const {
  sift(entries, upids, true, result);
}
