#include "apps/application_index.h"

namespace orvane {

template <typename KeyOf>
OrvaneApplication* ApplicationIndex::find(Positions& positions, std::uint32_t key, KeyOf keyOf) {
  if (positions.indexed == 0) positions.first.reserve(applications_.size());
  for (; positions.indexed < applications_.size(); ++positions.indexed) {
    positions.first.tryEmplace(keyOf(applications_[positions.indexed]), positions.indexed);
  }
  const std::size_t* const found = positions.first.find(key);
  return found != nullptr ? &applications_[*found] : nullptr;
}

OrvaneApplication* ApplicationIndex::find(unsigned int upid) {
  for (; seen_ < applications_.size(); ++seen_) {
    if (seen_ > 0 && applications_[seen_].upid <= applications_[highest_].upid) continue;
    highest_ = seen_;
  }
  if (seen_ == 0 || upid > applications_[highest_].upid) return nullptr;
  if (upid == applications_[highest_].upid) return &applications_[highest_];
  return find(byUpid_, upid, [](const OrvaneApplication& a) { return a.getUpid(); });
}

OrvaneApplication* ApplicationIndex::findId(int id) {
  return find(byId_, static_cast<std::uint32_t>(id),
              [](const OrvaneApplication& a) { return static_cast<std::uint32_t>(a.getID()); });
}

}  // namespace orvane
