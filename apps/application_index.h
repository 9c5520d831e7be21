// Look-ups by key for operations on whole collections.

#ifndef ORVANE_APPS_APPLICATION_INDEX_H_
#define ORVANE_APPS_APPLICATION_INDEX_H_

#include <cstddef>

#include "orvane/app_mapping.h"
#include "ports/first_by_key.h"

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
  struct Positions {
    FirstByKey<std::size_t> first;
    std::size_t indexed = 0;  // how many applications it has taken in
  };

  template <typename KeyOf>
  OrvaneApplication* find(Positions& positions, std::uint32_t key, KeyOf keyOf);

  OrvaneAppMapping& applications_;
  // The first application with the highest UPID: collections mostly ascend, and then it answers.
  std::size_t highest_ = 0;
  std::size_t seen_ = 0;  // how many applications it was chosen from
  Positions byUpid_;
  Positions byId_;
};

}  // namespace orvane

#endif  // ORVANE_APPS_APPLICATION_INDEX_H_
