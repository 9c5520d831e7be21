#include "orvane/app_mapping.h"

#include <algorithm>
#include <functional>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "apps/application_fields.h"
#include "apps/application_index.h"

namespace {

template <typename Mapping, typename Test>
auto* findFirst(Mapping& mapping, Test test) {
  return std::to_address(std::ranges::find_if(mapping, test));
}

// Whether an application is identified by its identifier, having no UPID yet.
bool isNew(const OrvaneApplication& application) { return application.upid == kOrvaneNoUpid; }

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
    const std::size_t name = std::hash<std::string_view>()(description.name);
    return (name * 31 + static_cast<std::size_t>(description.category)) * 31 +
           static_cast<std::size_t>(description.type);
  }
};

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
  const orvane::HeldText held(orvane::bytesOf(record), data(), size());
  const auto fields = orvane::ApplicationRecord::split(held.view());
  if (!fields) return false;
  if (fields->isIgnored()) return true;
  OrvaneApplication* const known = find(orvane::readNumber((*fields)[orvane::kUpid]));
  if (known != end()) {
    std::rotate(begin() + (known - data()), begin() + (known - data()) + 1, end());
  } else {
    orvane::readOwnFields(*fields, emplace_back());
  }
  orvane::LateItems late;
  orvane::readItem(orvane::readItemFields(*fields), back().items, late);
  orvane::addLate(std::move(late), back().items);
  return true;
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
  orvane::ApplicationIndex index(*this);
  auto kept = other.begin();
  for (OrvaneApplication& application : other) {
    if (!isNew(application) || application.items.size() < 2) {
      if (&*kept != &application) *kept = std::move(application);
      ++kept;
    } else if (OrvaneApplication* held = index.findId(application.getID())) {
      held->update(application);
    } else {
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
  for (const OrvaneApplication& application : *this) {
    const auto found = first.find(describe(application));
    if (found == first.end()) continue;
    OrvaneApplication& updated = *found->second;
    updated.setAction(kOrvaneActionUpdate);
    updated.setUpid(application.upid);
    if (!application.items.empty()) updated.deleteItem(application.items.front());
  }
}

void OrvaneAppMapping::sortByName() {
  std::vector<std::pair<std::string_view, OrvaneApplication*>> order;
  order.reserve(size());
  for (OrvaneApplication& application : *this) {
    order.emplace_back(orvane::nameOf(application), &application);
  }
  std::ranges::sort(order);
  std::vector<OrvaneApplication> sorted;
  sorted.reserve(size());
  for (const auto& [name, application] : order) sorted.push_back(std::move(*application));
  swap(sorted);
}

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
