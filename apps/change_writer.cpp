#include "apps/change_writer.h"

#include <algorithm>
#include <vector>

#include "apps/group_writer.h"
#include "apps/ordering.h"
#include "ports/differences.h"
#include "ports/first_by_key.h"

namespace orvane {
namespace {

// An application on the newer side's difference list.
struct Newer {
  const OrvaneApplication* application;
  bool paired;
};

template <typename Element>
unsigned int listedUpid(const Element& element) {
  return objectOf(element).upid;
}

class ChangeWriter {
 public:
  ChangeWriter(TextOut& out, bool closeGroups) : out_(out), closeGroups_(closeGroups) {}

  // Lists in any order.
  template <typename List>
  void writeUnordered(const List& older, const List& newer) {
    const auto changed = differences<OrvaneApplication>(older, newer, compareApplications);
    std::vector<Newer> newerList;
    FirstByKey<Newer*> firstByUpid;
    newerList.reserve(changed.newer.size());
    firstByUpid.reserve(changed.newer.size());
    for (const OrvaneApplication* application : changed.newer) {
      newerList.push_back({application, false});
      firstByUpid.tryEmplace(application->upid, &newerList.back());
    }
    for (const OrvaneApplication* application : changed.older) {
      Newer* const* const partner = firstByUpid.find(application->upid);
      const bool written = write(*application, partner ? (*partner)->application : nullptr);
      if (partner != nullptr && written) (*partner)->paired = true;
    }
    for (const auto& [application, paired] : newerList) {
      if (!paired) keep(*application);
    }
  }

  // Lists whose UPIDs ascend: each UPID is a pair of lists by itself. Where it has at most one
  // application on either side, any difference puts both on their lists, so nobody asks which one
  // is less, and each is written while it is at hand.
  template <typename List>
  void writeOrdered(const List& older, const List& newer) {
    auto a = older.begin();
    auto b = newer.begin();
    while (a != older.end() || b != newer.end()) {
      const unsigned int upid = b == newer.end()   ? listedUpid(*a)
                                : a == older.end() ? listedUpid(*b)
                                                   : std::min(listedUpid(*a), listedUpid(*b));
      const auto isOther = [upid](const auto& element) { return listedUpid(element) != upid; };
      const List before(a, std::find_if(a, older.end(), isOther));
      const List after(b, std::find_if(b, newer.end(), isOther));
      a = before.end();
      b = after.end();
      if (before.size() > 1 || after.size() > 1) {
        writeUnordered(before, after);
      } else {
        writePair(before.empty() ? nullptr : &objectOf(before.front()),
                  after.empty() ? nullptr : &objectOf(after.front()));
      }
    }
  }

  // What only the newer side has.
  void finish() {
    for (const OrvaneApplication* application : added_) {
      const bool updates = application->appCategory == kOrvaneCategory1;
      writeSection(out_, *application, updates ? kOrvaneActionUpdate : kOrvaneActionAdd,
                   closeGroups_);
    }
  }

 private:
  // An application on the older side's difference list and its partner, if any. False when its
  // action lets nothing be written.
  bool write(const OrvaneApplication& older, const OrvaneApplication* partner) {
    if (older.action == kOrvaneActionNone) return false;
    if (partner != nullptr) {
      writeSection(out_, older, kOrvaneActionRemove, closeGroups_);
      writeSection(out_, *partner, kOrvaneActionUpdate, closeGroups_);
    } else {
      writeDeleteSection(out_, older, closeGroups_);
    }
    return true;
  }

  // One on the newer side's that was not written as a partner.
  void keep(const OrvaneApplication& newer) {
    if (newer.action == kOrvaneActionAdd) added_.push_back(&newer);
  }

  void writePair(const OrvaneApplication* older, const OrvaneApplication* newer) {
    if (older != nullptr && newer != nullptr && equivalent(*older, *newer)) return;
    const bool written = older != nullptr && write(*older, newer);
    if (newer != nullptr && !written) keep(*newer);
  }

  TextOut& out_;
  bool closeGroups_;
  std::vector<const OrvaneApplication*> added_;
};

template <typename List>
void writeLists(TextOut& out, const List& older, const List& newer, bool closeGroups) {
  ChangeWriter writer(out, closeGroups);
  const auto ascends = [](const List& list) {
    return std::ranges::is_sorted(list, {}, listedUpid<typename List::value_type>);
  };
  if (ascends(older) && ascends(newer)) {
    writer.writeOrdered(older, newer);
  } else {
    writer.writeUnordered(older, newer);
  }
  writer.finish();
}

}  // namespace

void writeChanges(TextOut& out, std::span<const OrvaneApplication> older,
                  std::span<const OrvaneApplication> newer, bool closeGroups) {
  writeLists(out, older, newer, closeGroups);
}

void writeChanges(TextOut& out, std::span<const OrvaneApplication* const> older,
                  std::span<const OrvaneApplication* const> newer, bool closeGroups) {
  writeLists(out, older, newer, closeGroups);
}

}  // namespace orvane
