#include "apps/application_index.h"

namespace orvane {

template <typename Key, typename KeyOf>
OrvaneApplication* ApplicationIndex::find(FirstByKey<Key>& first, Key key, KeyOf keyOf) {
  if (first.indexed == 0) first.positions.reserve(applications_.size());
  for (; first.indexed < applications_.size(); ++first.indexed) {
    first.positions.try_emplace(keyOf(applications_[first.indexed]), first.indexed);
  }
  const auto found = first.positions.find(key);
  return found != first.positions.end() ? &applications_[found->second] : nullptr;
}

OrvaneApplication* ApplicationIndex::find(unsigned int upid) {
  return find(byUpid_, upid, [](const OrvaneApplication& a) { return a.getUpid(); });
}

OrvaneApplication* ApplicationIndex::findId(int id) {
  return find(byId_, id, [](const OrvaneApplication& a) { return a.getID(); });
}

}  // namespace orvane
