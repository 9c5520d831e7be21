#include "apps/change_writer.h"

#include <vector>

#include "apps/group_writer.h"
#include "ports/first_by_key.h"

namespace orvane {
namespace {

// An application on the newer side's difference list.
struct Newer {
  const OrvaneApplication* application;
  bool paired;
};

}  // namespace

void writeChanges(TextOut& out, const Differences<OrvaneApplication>& changed, bool closeGroups) {
  std::vector<Newer> newerList;
  FirstByKey<Newer*> firstByUpid;
  newerList.reserve(changed.newer.size());
  firstByUpid.reserve(changed.newer.size());
  for (const OrvaneApplication* application : changed.newer) {
    newerList.push_back({application, false});
    firstByUpid.tryEmplace(application->upid, &newerList.back());
  }

  for (const OrvaneApplication* application : changed.older) {
    if (application->action == kOrvaneActionNone) continue;
    if (Newer* const* const partner = firstByUpid.find(application->upid)) {
      writeSection(out, *application, kOrvaneActionRemove, closeGroups);
      writeSection(out, *(*partner)->application, kOrvaneActionUpdate, closeGroups);
      (*partner)->paired = true;
    } else {
      writeDeleteSection(out, *application, closeGroups);
    }
  }
  for (const auto& [application, paired] : newerList) {
    if (paired || application->action != kOrvaneActionAdd) continue;
    const bool updates = application->appCategory == kOrvaneCategory1;
    writeSection(out, *application, updates ? kOrvaneActionUpdate : kOrvaneActionAdd, closeGroups);
  }
}

}  // namespace orvane
