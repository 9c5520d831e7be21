#include <algorithm>

#include "apps/application_fields.h"
#include "apps/group_writer.h"
#include "apps/ordering.h"
#include "orvane/application.h"
#include "ports/item_order.h"

namespace {

// Static arrays, since callers are handed them as mutable texts.
char portRangeKey[] = "PortRange";
char ipv4Key[] = "IPv4";
char actionKey[] = "Action";
char selectorTypeKey[] = "SelectorType";
char upidKey[] = "UPID";
char applNameKey[] = "ApplName";
char uniqueBlockNumberKey[] = "UniqueBlockNumber";
char selectorTypeInfoKey[] = "SelectorTypeInfo";

// Writes a text into its operation's own string.
template <typename Append>
char* write(std::string& text, bool closeGroups, Append append) {
  orvane::GroupWriter writer(text, closeGroups);
  append(writer);
  writer.publish();
  return text.data();
}

// One group per port that `from` has and `other` has not. They carry the fields of `item`.
template <typename Close>
void appendPortGroups(orvane::GroupWriter& writer, const OrvaneApplication& application,
                      const OrvanePortMapping& item, const std::set<unsigned short>& from,
                      const std::set<unsigned short>& other, tagActionType action, Close close) {
  auto known = other.begin();
  for (const unsigned short port : from) {
    known = std::find_if(known, other.end(), [&](unsigned short p) { return p >= port; });
    if (port == 0 || (known != other.end() && *known == port)) continue;
    writer.appendPort(application, item, port, action);
    close();
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

namespace orvane {

std::string& sectionText() {
  static std::string text;
  return text;
}

std::string& initialSectionText() {
  static std::string text;
  return text;
}

std::string& addNewSectionText() {
  static std::string text;
  return text;
}

std::string& deleteSectionText() {
  static std::string text;
  return text;
}

void appendSection(GroupWriter& writer, const OrvaneApplication& application,
                   tagActionType action) {
  for (const OrvanePortMapping& item : application.items) {
    writer.appendItem(application, item, action);
    writer.close(application);
  }
}

void appendInitialSection(GroupWriter& writer, const OrvaneApplication& application) {
  for (const OrvanePortMapping& item : application.items) {
    writer.appendItem(application, item, kOrvaneActionInitial);
  }
}

void appendAddNewSection(GroupWriter& writer, const OrvaneApplication& application) {
  if (application.items.empty()) return;
  writer.appendItem(application, application.items.front(), kOrvaneActionAdd);
  writer.close(application);
}

void appendDeleteSection(GroupWriter& writer, const OrvaneApplication& application) {
  for (const OrvanePortMapping& item : application.items) {
    const bool last = item == application.items.back();
    writer.appendItem(application, item, last ? kOrvaneActionDelete : kOrvaneActionRemove);
    writer.close(application);
  }
}

}  // namespace orvane

char* OrvaneApplication::getSection(bool closeGroups) const {
  return write(orvane::sectionText(), closeGroups, [this](orvane::GroupWriter& writer) {
    orvane::appendSection(writer, *this, action);
  });
}

void OrvaneApplication::setSection(const char* text) {
  const orvane::HeldText held(orvane::viewOf(text), this, 1);
  orvane::SectionLines lines(held.view());
  orvane::ApplicationGroup group(orvane::kApplicationKeys);
  orvane::LateItems late;
  while (group.read(lines)) orvane::readApplication(group, *this, late);
  orvane::addLate(std::move(late), items);
}

char* OrvaneApplication::getInitialSection() const {
  return write(orvane::initialSectionText(), false, [this](orvane::GroupWriter& writer) {
    orvane::appendInitialSection(writer, *this);
  });
}

char* OrvaneApplication::getAddNewSection(bool closeGroups) const {
  return write(orvane::addNewSectionText(), closeGroups,
               [this](orvane::GroupWriter& writer) { orvane::appendAddNewSection(writer, *this); });
}

char* OrvaneApplication::getDeleteSection(bool closeGroups) const {
  return write(orvane::deleteSectionText(), closeGroups,
               [this](orvane::GroupWriter& writer) { orvane::appendDeleteSection(writer, *this); });
}

char* OrvaneApplication::getUpdatedSection(const OrvaneApplication& newer, bool closeGroups) const {
  static std::string text;
  return write(text, closeGroups, [&](orvane::GroupWriter& writer) {
    const auto changed = orvane::differences(items.begin(), items.end(), newer.items.begin(),
                                             newer.items.end(), orvane::compareItems);
    for (const OrvanePortMapping* item : changed.older) {
      if (item->ports.empty()) continue;
      const auto partner = std::ranges::lower_bound(
          changed.newer, item->ip.address, {}, [](const auto* other) { return other->ip.address; });
      if (partner != changed.newer.end() && item->equalNotNull(**partner)) {
        const auto& newPorts = (*partner)->ports;
        appendPortGroups(writer, *this, *item, item->ports, newPorts, kOrvaneActionRemove,
                         [&] { writer.terminate(); });
        appendPortGroups(writer, *this, *item, newPorts, item->ports, kOrvaneActionUpdate,
                         [&] { writer.close(*this); });
      } else {
        writer.appendItem(*this, *item, kOrvaneActionRemove);
        writer.terminate();
      }
    }
  });
}
