#include <algorithm>
#include <cstring>
#include <numeric>
#include <utility>
#include <vector>

#include "apps/application_fields.h"
#include "apps/application_index.h"
#include "apps/group_writer.h"
#include "apps/ordering.h"
#include "orvane/app_mapping.h"
#include "ports/first_by_key.h"
#include "ports/growth.h"
#include "ports/item_order.h"

namespace {

// Remembers which part of a text was written last on behalf of an operation of the application, to
// leave that operation's result string as running it leaves it.
class LastRun {
 public:
  template <typename Append>
  void run(const orvane::GroupWriter& writer, Append append) {
    begin_ = writer.size();
    append();
    end_ = writer.size();
    ran_ = true;
  }

  void publish(const orvane::GroupWriter& writer, std::string& result) const {
    if (ran_) result.assign(writer.view(begin_, end_));
  }

 private:
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
  bool ran_ = false;
};

// Writes the texts of all applications into their operation's own string.
template <typename Append>
char* writeAll(const OrvaneAppMapping& mapping, bool closeGroups, std::string& text,
               std::string& applicationText, Append append) {
  orvane::GroupWriter writer(text, closeGroups);
  LastRun last;
  for (const OrvaneApplication& application : mapping) {
    last.run(writer, [&] { append(writer, application); });
  }
  last.publish(writer, applicationText);
  writer.publish();
  return text.data();
}

std::string& mappingSectionText() {
  static std::string text;
  return text;
}

// An application on the newer side's difference list.
struct Newer {
  const OrvaneApplication* application;
  bool paired;
};

struct ApplicationKey {
  unsigned int upid;
  int id;  // only of a new application

  bool isNew() const { return upid == kOrvaneNoUpid; }
};

// The key of the application that a group describes; one that names none gets an identifier that no
// other application has.
ApplicationKey keyOf(const orvane::ApplicationGroup& group, orvane::ApplicationIndex& index) {
  const unsigned int upid =
      group.holds(orvane::kUpid) ? orvane::readNumber(group[orvane::kUpid]) : kOrvaneNoUpid;
  if (upid != kOrvaneNoUpid) return {upid, 0};
  if (group.holds(orvane::kGroupId)) return {upid, orvane::readSigned(group[orvane::kGroupId])};
  auto id = static_cast<unsigned int>(orvane::freshIdentifier());
  while (index.findId(static_cast<int>(id)) != nullptr) ++id;
  return {upid, static_cast<int>(id)};
}

// An item of an application that was not the last one when its group came.
struct LaterItem {
  std::size_t place;  // of the application
  orvane::ItemFields fields;
};

// Adds the items to their applications, one application after the other: going back and forth
// between applications that do not fit the caches takes longer, and here it is known which part of
// the text comes next.
void readLater(const std::vector<LaterItem>& later, std::vector<OrvaneApplication>& applications) {
  std::vector<std::size_t> ends(applications.size() + 1);
  for (const LaterItem& item : later) ++ends[item.place + 1];
  std::partial_sum(ends.begin(), ends.end(), ends.begin());
  std::vector<LaterItem> ordered(later.size());
  for (const LaterItem& item : later) ordered[ends[item.place]++] = item;

  constexpr std::size_t kAhead = 4;
  for (std::size_t i = 0; i < ordered.size();) {
    const std::size_t place = ordered[i].place;
    OrvaneItems& items = applications[place].items;
    orvane::LateItems late;
    for (; i < ends[place]; ++i) {
      if (i + kAhead < ordered.size()) orvane::prefetch(ordered[i + kAhead].fields.portList);
      orvane::readItem(ordered[i].fields, items, late);
    }
    orvane::addLate(std::move(late), items);
  }
}

}  // namespace

char* OrvaneAppMapping::getSection(bool closeGroups) const {
  return writeAll(*this, closeGroups, mappingSectionText(), orvane::sectionText(),
                  [](orvane::GroupWriter& writer, const OrvaneApplication& application) {
                    orvane::appendSection(writer, application, application.action);
                  });
}

unsigned int OrvaneAppMapping::getSection(char* buffer) const {
  if (buffer == nullptr) return 0;
  getSection(true);
  const std::string& text = mappingSectionText();
  std::memcpy(buffer, text.c_str(), text.size() + 1);
  return static_cast<unsigned int>(text.size());
}

std::optional<std::size_t> OrvaneAppMapping::getSectionChecked(std::span<char> buffer) const {
  getSection(true);
  const std::string& text = mappingSectionText();
  if (buffer.size() <= text.size()) return std::nullopt;
  std::memcpy(buffer.data(), text.c_str(), text.size() + 1);
  return text.size();
}

char* OrvaneAppMapping::getInitialSection() const {
  static std::string text;
  return writeAll(*this, false, text, orvane::initialSectionText(), orvane::appendInitialSection);
}

char* OrvaneAppMapping::getAddNewSection(bool closeGroups) const {
  static std::string text;
  return writeAll(*this, closeGroups, text, orvane::addNewSectionText(),
                  orvane::appendAddNewSection);
}

char* OrvaneAppMapping::getUpdatedSection(const OrvaneAppMapping& newer, bool closeGroups) const {
  static std::string text;
  const auto changed =
      orvane::differences(data(), data() + size(), newer.data(), newer.data() + newer.size(),
                          orvane::compareApplications);
  std::vector<Newer> newerList;
  orvane::FirstByKey<Newer*> firstByUpid;
  newerList.reserve(changed.newer.size());
  firstByUpid.reserve(changed.newer.size());
  for (const OrvaneApplication* application : changed.newer) {
    newerList.push_back({application, false});
    firstByUpid.tryEmplace(application->upid, &newerList.back());
  }

  orvane::GroupWriter writer(text, closeGroups);
  LastRun section;
  LastRun deleteSection;
  const auto append = [&](const OrvaneApplication& application, tagActionType action) {
    section.run(writer, [&] { orvane::appendSection(writer, application, action); });
  };
  for (const OrvaneApplication* application : changed.older) {
    if (application->action == kOrvaneActionNone) continue;
    if (Newer* const* const partner = firstByUpid.find(application->upid)) {
      append(*application, kOrvaneActionRemove);
      append(*(*partner)->application, kOrvaneActionUpdate);
      (*partner)->paired = true;
    } else {
      deleteSection.run(writer, [&] { orvane::appendDeleteSection(writer, *application); });
    }
  }
  for (const auto& [application, paired] : newerList) {
    if (paired || application->action != kOrvaneActionAdd) continue;
    append(*application,
           application->appCategory == kOrvaneCategory1 ? kOrvaneActionUpdate : kOrvaneActionAdd);
  }
  section.publish(writer, orvane::sectionText());
  deleteSection.publish(writer, orvane::deleteSectionText());
  writer.publish();
  return text.data();
}

void OrvaneAppMapping::setSection(const char* text) {
  const orvane::HeldText held(orvane::viewOf(text), data(), size());
  clear();
  orvane::SectionLines lines(held.view());
  const orvane::TextGrowth growth(0, lines.left());
  orvane::ApplicationGroup group(orvane::kApplicationKeys);
  orvane::ApplicationIndex index(*this);
  orvane::LateItems late;  // of the last application
  std::vector<LaterItem> later;
  while (group.read(lines)) {
    const ApplicationKey key = keyOf(group, index);
    OrvaneApplication* application = key.isNew() ? index.findId(key.id) : index.find(key.upid);
    if (application == nullptr) {
      if (!empty()) orvane::addLate(std::exchange(late, {}), back().items);
      growth.makeRoom(*this, lines.left());
      application = &emplace_back();
      if (key.isNew()) application->setID(key.id);
      orvane::readApplication(group, *application, late);
    } else if (application == &back()) {
      orvane::readItem(orvane::readItemFields(group), application->items, late);
    } else {
      later.push_back(
          {static_cast<std::size_t>(application - data()), orvane::readItemFields(group)});
    }
  }
  if (!empty()) orvane::addLate(std::move(late), back().items);
  if (!later.empty()) readLater(later, *this);
}
