// Look-ups by key for operations on whole collections.

#ifndef ORVANE_APPS_APPLICATION_INDEX_H_
#define ORVANE_APPS_APPLICATION_INDEX_H_

#include <cstddef>
#include <unordered_map>

#include "orvane/app_mapping.h"

namespace orvane {

// Gives what OrvaneAppMapping::find() and findId() give, without walking the collection each time.
// Applications may be appended meanwhile; otherwise the collection must not change.
class ApplicationIndex {
 public:
  explicit ApplicationIndex(OrvaneAppMapping& applications) : applications_(applications) {}

  // The first application with that UPID or identifier; null when there is none.
  OrvaneApplication* find(unsigned int upid);
  OrvaneApplication* findId(int id);

 private:
  template <typename Key>
  struct FirstByKey {
    std::unordered_map<Key, std::size_t> positions;
    std::size_t indexed = 0;  // how many applications it has taken in
  };

  template <typename Key, typename KeyOf>
  OrvaneApplication* find(FirstByKey<Key>& first, Key key, KeyOf keyOf);

  OrvaneAppMapping& applications_;
  FirstByKey<unsigned int> byUpid_;
  FirstByKey<int> byId_;
};

}  // namespace orvane

#endif  // ORVANE_APPS_APPLICATION_INDEX_H_
