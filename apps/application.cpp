#include "orvane/application.h"

#include <algorithm>
#include <cstdlib>
#include <ctime>
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

}  // namespace

OrvaneApplication::OrvaneApplication() : id(orvane::freshIdentifier()) {}

OrvaneApplication::~OrvaneApplication() = default;

unsigned int OrvaneApplication::getUniqueID() {
  const auto now = static_cast<unsigned int>(std::time(nullptr));
  [[maybe_unused]] static const bool seeded = (std::srand(now), true);
  return now + (static_cast<unsigned int>(std::rand()) & 0x7FFF) * 1024;
}

void OrvaneApplication::setUpid(const char* text) {
  if (text != nullptr) upid = orvane::readNumber(text);
}

void OrvaneApplication::setType(const char* text) {
  if (text != nullptr) type = orvane::readType(text);
}

void OrvaneApplication::setAction(const char* text) {
  if (text != nullptr) action = orvane::readAction(text);
}

void OrvaneApplication::setAppCategory(const char* text) {
  if (text != nullptr) appCategory = static_cast<tagApMCategory>(orvane::readSigned(text));
}

void OrvaneApplication::setName(const char* text) {
  if (text != nullptr) orvane::setName(text, *this);
}

void OrvaneApplication::setValues(const unsigned char* record) {
  setValuesChecked(orvane::ApplicationRecord::trusted(record));
}

bool OrvaneApplication::setValuesChecked(std::span<const unsigned char> record) {
  const orvane::HeldText held(orvane::bytesOf(record), this, 1);
  const auto fields = orvane::ApplicationRecord::split(held.view());
  if (!fields) return false;
  if (fields->isIgnored()) return true;
  orvane::LateItems late;
  orvane::readApplication(*fields, *this, late);
  orvane::addLate(std::move(late), items);
  return true;
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
