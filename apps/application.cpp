#include "orvane/application.h"

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <mutex>
#include <utility>

#include "apps/application_fields.h"
#include "apps/item_list.h"

namespace {

template <typename Items>
auto findLastItem(Items& items, int itemId) {
  for (auto item = items.end(); item != items.begin();) {
    if ((--item)->getID() == itemId) return item;
  }
  return items.end();
}

template <typename Watcher>
bool readRecord(std::span<const unsigned char> record, OrvaneApplication& application,
                Watcher& watcher) {
  const auto fields = orvane::ApplicationRecord::split(record, watcher);
  if (!fields) return false;
  if (fields->isIgnored()) return true;
  orvane::tellFields(*fields, watcher);
  orvane::readRecordItem(*fields, application.items, watcher);
  orvane::UnwatchedApplications unwatched;
  orvane::readFields(*fields, application, unwatched);
  return true;
}

unsigned int drawNumber(unsigned int seed) {
#ifndef __GLIBC__  // whose rand() has a lock of its own
  static std::mutex mutex;
  const std::lock_guard lock(mutex);
#endif
  [[maybe_unused]] static const bool seeded = (std::srand(seed), true);
  return static_cast<unsigned int>(std::rand());
}

}  // namespace

OrvaneApplication::OrvaneApplication() : id(orvane::freshIdentifier()) {}

OrvaneApplication::~OrvaneApplication() = default;

unsigned int OrvaneApplication::getUniqueID() {
  const auto now = static_cast<unsigned int>(std::time(nullptr));
  return now + (drawNumber(now) & 0x7FFF) * 1024;
}

void OrvaneApplication::setUpid(const char* text) {
  if (text != nullptr) setUpid(std::string_view(text));
}

void OrvaneApplication::setUpid(std::string_view text) { upid = orvane::readNumber(text); }

void OrvaneApplication::setType(const char* text) {
  if (text != nullptr) setType(std::string_view(text));
}

void OrvaneApplication::setType(std::string_view text) { type = orvane::readType(text); }

void OrvaneApplication::setAction(const char* text) {
  if (text != nullptr) setAction(std::string_view(text));
}

void OrvaneApplication::setAction(std::string_view text) { action = orvane::readAction(text); }

void OrvaneApplication::setAppCategory(const char* text) {
  if (text != nullptr) setAppCategory(std::string_view(text));
}

void OrvaneApplication::setAppCategory(std::string_view text) {
  appCategory = static_cast<tagApMCategory>(orvane::readSigned(text));
}

void OrvaneApplication::setName(const char* text) {
  if (text != nullptr) setName(std::string_view(text));
}

void OrvaneApplication::setName(std::string_view text) { orvane::setName(text, *this); }

void OrvaneApplication::setValues(const unsigned char* record) {
  setValuesChecked(orvane::ApplicationRecord::trusted(record));
}

bool OrvaneApplication::setValuesChecked(std::span<const unsigned char> record) {
  orvane::UnwatchedApplications unwatched;
  return readRecord(record, *this, unwatched);
}

bool OrvaneApplication::setValuesReported(std::span<const unsigned char> record,
                                          OrvaneFindings& findings) {
  orvane::ApplicationReporter reporter(findings);
  return readRecord(record, *this, reporter);
}

OrvanePortMapping* OrvaneApplication::addItem(const OrvanePortMapping& item) {
  return orvane::addItem(item, items);
}

void OrvaneApplication::deleteItem(const OrvanePortMapping& item) {
  const auto found = items.find(item);
  if (found != items.end()) items.erase(found);
}

OrvanePortMapping* OrvaneApplication::updateItem(const OrvanePortMapping& item) {
  const auto place = items.lower_bound(item);
  if (place == items.end() || !(*place == item)) return items.insert(place, item);
  place->addPorts(item.ports);
  return place;
}

OrvanePortMapping* OrvaneApplication::findItemId(int itemId) { return findLastItem(items, itemId); }

const OrvanePortMapping* OrvaneApplication::findItemId(int itemId) const {
  return findLastItem(items, itemId);
}

void OrvaneApplication::update(const OrvaneApplication& other) {
  orvane::addItems(other.items, items);
}

int OrvaneApplication::getSocketCount() const {
  return static_cast<int>(std::ranges::count_if(
      items, [](const OrvanePortMapping& item) { return item.getIpAddress() != 0; }));
}
