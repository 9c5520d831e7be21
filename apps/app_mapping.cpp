#include "orvane/app_mapping.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "apps/application_fields.h"
#include "apps/item_list.h"
#include "apps/ordering.h"
#include "ports/first_by_key.h"
#include "ports/growth.h"
#include "ports/salt.h"

namespace {

template <typename Mapping, typename Test>
auto* findFirst(Mapping& mapping, Test test) {
  return std::to_address(std::ranges::find_if(mapping, test));
}

// Whether an application is identified by its identifier, having no UPID yet.
bool isNew(const OrvaneApplication& application) { return application.upid == kOrvaneNoUpid; }

// An identifier as a key of a table.
std::uint32_t keyOf(const OrvaneApplication& application) {
  return static_cast<std::uint32_t>(application.getID());
}

// The application with the key of `application`, or the end position.
OrvaneApplication* findKey(OrvaneAppMapping& mapping, const OrvaneApplication& application) {
  return isNew(application) ? mapping.findId(application.getID()) : mapping.find(application.upid);
}

// What updateNew() tells applications by.
struct Description {
  std::string_view name;
  tagApMCategory category;
  tagSelectorType type;

  bool operator==(const Description&) const = default;
};

Description describe(const OrvaneApplication& application) {
  return {orvane::nameOf(application), application.appCategory, application.type};
}

struct DescriptionHash {
  std::size_t operator()(const Description& description) const {
    std::uint64_t hash = orvane::hashSalt();
    const auto take = [&](std::uint64_t number) { hash = orvane::spread(hash ^ number); };
    for (std::string_view rest = description.name; !rest.empty();) {
      std::uint64_t bytes = 0;
      rest.remove_prefix(rest.copy(reinterpret_cast<char*>(&bytes), sizeof bytes));
      take(bytes);
    }
    take(std::uint64_t{static_cast<std::uint32_t>(description.category)} << 32U |
         static_cast<std::uint32_t>(description.type));
    return static_cast<std::size_t>(hash);
  }
};

// An item that removeNew() gives to another application.
struct TakenItem {
  OrvaneApplication* taker;
  unsigned int address;
  OrvanePortMapping* item;

  auto place() const { return std::pair(taker, address); }
};

// Calls give(items, more) for the items of each application that takes some in.
template <typename Give>
void forEachTaker(std::span<const TakenItem> taken, Give give) {
  while (!taken.empty()) {
    OrvaneApplication* const taker = taken.front().taker;
    const auto last =
        std::ranges::find_if(taken, [=](const TakenItem& next) { return next.taker != taker; });
    const auto count = static_cast<std::size_t>(last - taken.begin());
    give(taker->items, taken.first(count));
    taken = taken.subspan(count);
  }
}

// Puts applications in the order of a list of their keys and places.
template <typename Order>
void arrange(OrvaneAppMapping& mapping, const Order& order) {
  std::vector<OrvaneApplication> sorted;
  sorted.reserve(mapping.size());
  for (const auto& [key, application] : order) {
    sorted.push_back(std::move(mapping[static_cast<std::size_t>(application - mapping.data())]));
  }
  mapping.swap(sorted);
}

// Whether removeNew() moves an application.
bool isMoved(const OrvaneApplication& application) {
  return isNew(application) && application.items.size() > 1;
}

template <typename Watcher>
bool addRecord(std::span<const unsigned char> record, OrvaneAppMapping& applications,
               Watcher& watcher) {
  const auto fields = orvane::ApplicationRecord::split(record, watcher);
  if (!fields) return false;
  if (fields->isIgnored()) return true;
  const OrvaneApplication* const known =
      applications.find(orvane::readNumber((*fields)[orvane::kUpid]));
  if (known != applications.end()) {
    const auto place = applications.begin() + (known - applications.data());
    watcher.fieldsIgnored(*fields, *place);
    orvane::readRecordItem(*fields, place->items, watcher);
    std::rotate(place, place + 1, applications.end());
  } else {
    OrvaneApplication added;
    orvane::readOwnFields(*fields, added, watcher);
    orvane::readRecordItem(*fields, added.items, watcher);
    applications.push_back(std::move(added));
  }
  return true;
}

}  // namespace

OrvaneAppMapping::~OrvaneAppMapping() = default;

void OrvaneAppMapping::add(const OrvaneApplication& application) {
  OrvaneApplication* const held = findKey(*this, application);
  if (held == end()) {
    push_back(application);
  } else {
    held->update(application);
  }
}

OrvaneApplication* OrvaneAppMapping::addEx(const OrvaneApplication& application) {
  return &emplace_back(application);
}

void OrvaneAppMapping::add(const unsigned char* record) {
  addChecked(orvane::ApplicationRecord::trusted(record));
}

bool OrvaneAppMapping::addChecked(std::span<const unsigned char> record) {
  orvane::UnwatchedApplications unwatched;
  return addRecord(record, *this, unwatched);
}

bool OrvaneAppMapping::addReported(std::span<const unsigned char> record,
                                   OrvaneFindings& findings) {
  orvane::ApplicationReporter reporter(findings);
  return addRecord(record, *this, reporter);
}

void OrvaneAppMapping::setDeleted(OrvaneApplication* application) {
  if (application == nullptr || application == end()) return;
  if (isNew(*application)) {
    remove(application);
  } else {
    application->setAction(kOrvaneActionDelete);
  }
}

void OrvaneAppMapping::remove(const OrvaneApplication* application) {
  if (application != nullptr && application != end()) erase(begin() + (application - data()));
}

void OrvaneAppMapping::remove(const OrvaneApplication& application) {
  remove(findKey(*this, application));
}

void OrvaneAppMapping::removeNew(OrvaneAppMapping& other) {
  if (this == &other) return;
  const auto moved = static_cast<std::size_t>(std::ranges::count_if(other, isMoved));
  if (moved == 0) return;
  orvane::makeRoom(*this, moved);
  // The first application with an identifier, here or of those that are moved, takes in the items
  // of the others with it. All room is made before anything moves.
  orvane::FirstByKey<OrvaneApplication*> takers;
  takers.reserve(size());
  for (OrvaneApplication& application : *this) takers.tryEmplace(keyOf(application), &application);
  std::vector<TakenItem> taken;
  for (OrvaneApplication& application : other) {
    if (!isMoved(application)) continue;
    OrvaneApplication* const taker = takers.tryEmplace(keyOf(application), &application);
    if (taker == &application) continue;
    for (OrvanePortMapping& item : application.items) {
      taken.push_back({taker, item.getIpAddress(), &item});
    }
  }
  std::ranges::stable_sort(taken, {}, &TakenItem::place);
  std::vector<OrvaneItems> fresh;  // at addresses that their takers have no item at
  forEachTaker(taken, [&](OrvaneItems& items, std::span<const TakenItem> more) {
    const auto count = std::ranges::count_if(
        more, [&](const TakenItem& next) { return items.find(*next.item) == items.end(); });
    orvane::makeRoom(items, static_cast<std::size_t>(count));
    fresh.emplace_back().reserve(static_cast<std::size_t>(count));
  });

  auto list = fresh.begin();
  forEachTaker(taken, [&](OrvaneItems& items, std::span<const TakenItem> more) {
    for (const TakenItem& next : more) {
      const auto held = items.find(*next.item);
      if (held != items.end()) {
        orvane::mergeItem(*next.item, *held);
      } else {
        orvane::appendItem(std::move(*next.item), *list);
      }
    }
    items.merge(*list++);
  });
  auto kept = other.begin();
  for (OrvaneApplication& application : other) {
    if (!isMoved(application)) {
      if (&*kept != &application) *kept = std::move(application);
      ++kept;
    } else if (*takers.find(keyOf(application)) == &application) {
      push_back(std::move(application));
    }
  }
  other.erase(kept, other.end());
}

void OrvaneAppMapping::updateNew(OrvaneAppMapping& other) const {
  std::unordered_map<Description, OrvaneApplication*, DescriptionHash> first;
  first.reserve(other.size());
  for (OrvaneApplication& application : other) {
    first.try_emplace(describe(application), &application);
  }
  std::vector<std::pair<OrvaneApplication*, unsigned int>> removed;  // by address
  removed.reserve(size());

  for (const OrvaneApplication& application : *this) {
    const auto found = first.find(describe(application));
    if (found == first.end()) continue;
    found->second->setAction(kOrvaneActionUpdate);
    found->second->setUpid(application.upid);
    if (application.items.empty()) continue;
    removed.emplace_back(found->second, application.items.front().getIpAddress());
  }
  std::ranges::sort(removed);
  for (auto next = removed.begin(); next != removed.end();) {
    OrvaneApplication* const updated = next->first;
    updated->items.erase_if([&](const OrvanePortMapping& item) {
      const std::pair place(updated, item.getIpAddress());
      while (next != removed.end() && *next < place) ++next;
      return next != removed.end() && *next == place;
    });
    next = std::find_if(next, removed.end(),
                        [updated](const auto& pair) { return pair.first != updated; });
  }
}

void OrvaneAppMapping::sortByName() {
  std::vector<std::pair<std::string_view, const OrvaneApplication*>> order;
  order.reserve(size());
  for (const OrvaneApplication& application : *this) {
    order.emplace_back(orvane::nameOf(application), &application);
  }
  std::ranges::sort(order);
  arrange(*this, order);
}

void OrvaneAppMapping::sortByUpid() { arrange(*this, orvane::orderedIndex(*this)); }

OrvaneApplication* OrvaneAppMapping::find(unsigned int upid) {
  return findFirst(*this, [=](const OrvaneApplication& a) { return a.upid == upid; });
}

const OrvaneApplication* OrvaneAppMapping::find(unsigned int upid) const {
  return findFirst(*this, [=](const OrvaneApplication& a) { return a.upid == upid; });
}

OrvaneApplication* OrvaneAppMapping::findId(int id) {
  return findFirst(*this, [=](const OrvaneApplication& a) { return a.getID() == id; });
}

const OrvaneApplication* OrvaneAppMapping::findId(int id) const {
  return findFirst(*this, [=](const OrvaneApplication& a) { return a.getID() == id; });
}

OrvaneApplication* OrvaneAppMapping::find(const char* name, tagApMCategory category,
                                          tagSelectorType type) {
  return const_cast<OrvaneApplication*>(std::as_const(*this).find(name, category, type));
}

const OrvaneApplication* OrvaneAppMapping::find(const char* name, tagApMCategory category,
                                                tagSelectorType type) const {
  if (name == nullptr) return std::to_address(end());
  const Description sought = {name, category, type};
  return findFirst(*this, [&](const OrvaneApplication& a) { return describe(a) == sought; });
}

int OrvaneAppMapping::getCount(tagSelectorType type) const {
  std::size_t count = 0;
  for (const OrvaneApplication& application : *this) {
    if (application.type == type) count += application.items.size();
  }
  return static_cast<int>(count);
}
