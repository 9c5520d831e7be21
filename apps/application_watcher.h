// What readers of applications tell while they read, beside what every reader does.

#ifndef ORVANE_APPS_APPLICATION_WATCHER_H_
#define ORVANE_APPS_APPLICATION_WATCHER_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "apps/application_fields.h"
#include "orvane/application.h"
#include "ports/watcher.h"

namespace orvane {

struct UnwatchedApplications : Unwatched {
  // What is kept of a group until its item is read.
  struct ItemPlaces {};
  static ItemPlaces placesOf(const ApplicationGroup& /*group*/) { return {}; }

  // A group that makes an application, and one that adds to an application.
  static void made(const ApplicationGroup& /*group*/) {}
  static void joined(const ApplicationGroup& /*group*/, std::size_t /*place*/,
                     const OrvaneApplication& /*held*/) {}

  // The values that a group gives in the place of those of the groups before it.
  static void replaced(const ApplicationGroup& /*group*/, const ApplicationGroup& /*before*/) {}

  // A record whose own fields are not taken, since the application is there.
  static void fieldsIgnored(const ApplicationRecord& /*record*/,
                            const OrvaneApplication& /*held*/) {}

  // An item of an address that the application did not have, and one that is about to be merged
  // with that of its address.
  static void newItem(const ItemFields& /*item*/, const ItemPlaces& /*places*/) {}
  static void sameItem(const ItemPlaces& /*places*/, const OrvanePortMapping& /*item*/,
                       const OrvanePortMapping& /*held*/) {}
};

class ApplicationReporter : public Reporter {
 public:
  // Where the values of a group are; null where it has none.
  struct ItemPlaces {
    const char* portList = nullptr;
    const char* blockNumber = nullptr;
    const char* selectorInfo = nullptr;
    bool leavesCategory = false;
  };

  using Reporter::Reporter;

  template <typename Fields>
  ItemPlaces placesOf(const Fields& fields) const {
    const auto place = [&](ApplicationField field) {
      return fields.holds(field) ? fields[field].data() : nullptr;
    };
    return {place(kPortRange), place(kUniqueBlockNumber), place(kSelectorTypeInfo),
            leavesCategory_};
  }

  void made(const ApplicationGroup& group);
  void joined(const ApplicationGroup& group, std::size_t place, const OrvaneApplication& held);
  void replaced(const ApplicationGroup& group, const ApplicationGroup& before);
  void fieldsIgnored(const ApplicationRecord& record, const OrvaneApplication& held);
  void newItem(const ItemFields& item, const ItemPlaces& places);
  void sameItem(const ItemPlaces& places, const OrvanePortMapping& item,
                const OrvanePortMapping& held);

 private:
  template <typename Fields>
  void compareFields(const Fields& fields, const OrvaneApplication& read,
                     const OrvaneApplication& held);
  template <typename Fields>
  void ignored(const Fields& fields, ApplicationField field, const std::string& value,
               const std::string& first);

  std::vector<bool> hasId_;  // of each application: whether its first group gives its identifier
  bool leavesCategory_ = false;
};

}  // namespace orvane

#endif  // ORVANE_APPS_APPLICATION_WATCHER_H_
