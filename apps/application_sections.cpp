// The section texts of an application.

#include <algorithm>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "apps/application_fields.h"
#include "apps/application_watcher.h"
#include "apps/group_writer.h"
#include "apps/item_list.h"
#include "apps/ordering.h"
#include "orvane/application.h"
#include "ports/differences.h"
#include "ports/item_order.h"
#include "ports/text_in.h"
#include "ports/text_out.h"

namespace {

using orvane::Result;
using orvane::TextOut;

// Static arrays, since callers are handed them as mutable texts.
char portRangeKey[] = "PortRange";
char ipv4Key[] = "IPv4";
char actionKey[] = "Action";
char selectorTypeKey[] = "SelectorType";
char upidKey[] = "UPID";
char applNameKey[] = "ApplName";
char uniqueBlockNumberKey[] = "UniqueBlockNumber";
char selectorTypeInfoKey[] = "SelectorTypeInfo";

// Tells of the items that are about to be merged with those held.
template <typename Watcher>
void tellMerges(const std::vector<orvane::ItemGroup<Watcher>>& groups, const OrvaneItems& read,
                const OrvaneItems& held, Watcher& watcher) {
  auto group = groups.begin();
  for (const OrvanePortMapping& item : read) {
    while (group->item.address != item.getIpAddress()) ++group;
    const auto same = held.find(item);
    if (same != held.end()) watcher.sameItem(group->places, item, *same);
  }
}

template <typename Watcher>
void readSection(std::string_view text, OrvaneApplication& application, Watcher& watcher) {
  orvane::SectionLines lines(text);
  orvane::ApplicationGroup group(orvane::kApplicationKeys);
  orvane::ApplicationGroup last = group;
  std::vector<orvane::ItemGroup<Watcher>> groups;
  while (group.read(lines, watcher)) {
    watcher.replaced(group, last);
    last.overlay(group);
    groups.push_back({0, orvane::readItemFields(group, watcher), watcher.placesOf(group)});
  }
  orvane::order(groups, 1);
  OrvaneItems read =
      orvane::readItems(std::span<const orvane::ItemGroup<Watcher>>(groups), watcher);
  orvane::tellFields(last, watcher);
  if constexpr (Watcher::kWatches) tellMerges(groups, read, application.items, watcher);
  orvane::addItems(std::move(read), application.items);
  orvane::UnwatchedApplications unwatched;
  orvane::readFields(last, application, unwatched);
}

// One group per port that `from` has and `other` has not. They carry the fields of `item`.
template <typename Close>
void writePortGroups(orvane::GroupWriter& writer, const OrvaneApplication& application,
                     const OrvanePortMapping& item, const std::set<unsigned short>& from,
                     const std::set<unsigned short>& other, tagActionType action, Close close) {
  orvane::forEachMissing(from, other, orvane::orderBy(OrvanePortArrayLess()),
                         [&](unsigned short port) {
                           if (port == 0) return;
                           writer.appendPort(application, item, port, action);
                           close();
                         });
}

void writeUpdatedSection(TextOut& out, const OrvaneApplication& older,
                         const OrvaneApplication& newer, bool closeGroups) {
  const auto changed =
      orvane::differences<OrvanePortMapping>(older.items, newer.items, orvane::compareItems);
  orvane::GroupWriter writer(out, closeGroups);
  for (const OrvanePortMapping* item : changed.older) {
    if (item->ports.empty()) continue;
    const auto partner = std::ranges::lower_bound(
        changed.newer, item->ip.address, {}, [](const auto* other) { return other->ip.address; });
    if (partner != changed.newer.end() && item->equalNotNull(**partner)) {
      const auto& newPorts = (*partner)->ports;
      writePortGroups(writer, older, *item, item->ports, newPorts, kOrvaneActionRemove,
                      [&] { writer.terminate(); });
      writePortGroups(writer, older, *item, newPorts, item->ports, kOrvaneActionUpdate,
                      [&] { writer.close(older); });
    } else {
      writer.appendItem(older, *item, kOrvaneActionRemove);
      writer.terminate();
    }
  }
}

}  // namespace

char* OrvaneApplication::key_names[8] = {portRangeKey,
                                         ipv4Key,
                                         actionKey,
                                         selectorTypeKey,
                                         upidKey,
                                         applNameKey,
                                         uniqueBlockNumberKey,
                                         selectorTypeInfoKey};

unsigned char** OrvaneApplication::getKeyNames() {
  return reinterpret_cast<unsigned char**>(key_names);
}

void OrvaneApplication::setSection(const char* text) { setSection(orvane::viewOf(text)); }

void OrvaneApplication::setSection(std::string_view text) {
  orvane::UnwatchedApplications unwatched;
  readSection(text, *this, unwatched);
}

void OrvaneApplication::setSectionReported(std::string_view text, OrvaneFindings& findings) {
  orvane::ApplicationReporter reporter(text, findings, "an item without address and ports");
  readSection(text, *this, reporter);
}

char* OrvaneApplication::getSection(bool closeGroups) const {
  return orvane::publishText(Result::kSection, orvane::writeSection, *this, action, closeGroups);
}

void OrvaneApplication::appendSection(std::string& to, bool closeGroups) const {
  orvane::append(to, orvane::writeSection, *this, action, closeGroups);
}

char* OrvaneApplication::getInitialSection() const {
  return orvane::publishText(Result::kInitialSection, orvane::writeInitialSection, *this);
}

void OrvaneApplication::appendInitialSection(std::string& to) const {
  orvane::append(to, orvane::writeInitialSection, *this);
}

char* OrvaneApplication::getAddNewSection(bool closeGroups) const {
  return orvane::publishText(Result::kAddNewSection, orvane::writeAddNewSection, *this,
                             closeGroups);
}

void OrvaneApplication::appendAddNewSection(std::string& to, bool closeGroups) const {
  orvane::append(to, orvane::writeAddNewSection, *this, closeGroups);
}

char* OrvaneApplication::getDeleteSection(bool closeGroups) const {
  return orvane::publishText(Result::kDeleteSection, orvane::writeDeleteSection, *this,
                             closeGroups);
}

void OrvaneApplication::appendDeleteSection(std::string& to, bool closeGroups) const {
  orvane::append(to, orvane::writeDeleteSection, *this, closeGroups);
}

char* OrvaneApplication::getUpdatedSection(const OrvaneApplication& newer, bool closeGroups) const {
  return orvane::publishText(Result::kUpdatedSection, writeUpdatedSection, *this, newer,
                             closeGroups);
}

void OrvaneApplication::appendUpdatedSection(std::string& to, const OrvaneApplication& newer,
                                             bool closeGroups) const {
  orvane::append(to, writeUpdatedSection, *this, newer, closeGroups);
}
