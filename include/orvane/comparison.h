#ifndef ORVANE_COMPARISON_H_
#define ORVANE_COMPARISON_H_

#include <cstdint>
#include <functional>
#include <string>
#include <variant>
#include <vector>

#include "orvane/app_mapping.h"
#include "orvane/export.h"

/// What is said of an application or of one of its items.
enum tagFact : int {
  kOrvaneFactName = 0,          ///< of the application: a text, bytes as they are
  kOrvaneFactType = 1,          ///< of the application: a number
  kOrvaneFactCategory = 2,      ///< of the application: a number
  kOrvaneFactAction = 3,        ///< of the application: a number
  kOrvaneFactItem = 4,          ///< an item that one side lacks: its port list text
  kOrvaneFactPorts = 5,         ///< ports and ranges that an item of one side lacks: their port
                                ///< list text (see OrvanePortMapping::getDiffAsString())
  kOrvaneFactRange = 6,         ///< a range with another start, but the same end: range texts
  kOrvaneFactBlockNumber = 7,   ///< of an item: a number
  kOrvaneFactSelectorInfo = 8,  ///< of an item: a number
};

/// A number, a text, or nothing where something was added or removed.
using OrvaneFactValue = std::variant<std::monostate, std::int64_t, std::string>;

/// One fact that differs.
struct ORVANE_EXPORT OrvaneFact {
  tagFact fact = kOrvaneFactName;  ///< of which kind it is
  /// The item that it is about: the newer one, or, where that is missing, the older one. Null for a
  /// fact of the application itself.
  const OrvanePortMapping* item = nullptr;
  /// What it was and what it is. Ports that are gone and ports that came are two facts.
  OrvaneFactValue before;
  OrvaneFactValue after;

  /// The word for `fact`: "name", "type", "category", "action", "item", "ports", "range", "block
  /// number" or "selector info". It is never destroyed. REQUIRES: `fact` is one of the above.
  const char* getName() const;

  /// Whether change sections look at facts of this kind: at names, items and ports.
  /// REQUIRES: `fact` is one of the above.
  bool isInSections() const;
};

/// One application that differs: added when it has no older side, removed when it has no newer one,
/// else changed.
struct ORVANE_EXPORT OrvaneDifference {
  const OrvaneApplication* older = nullptr;  ///< null when it was added
  const OrvaneApplication* newer = nullptr;  ///< null when it was removed
  /// Whether it was added or removed, or any of its facts is of a kind that change sections look
  /// at.
  bool inSections = false;

  /// The older side or, where there is none, the newer one. REQUIRES: there is one.
  const OrvaneApplication& getEither() const { return older != nullptr ? *older : *newer; }

  /// Whether the application has no UPID yet. REQUIRES: there is a side.
  bool isNew() const { return getEither().getUpid() == kOrvaneNoUpid; }

  /// Whether the action codes let change sections write the older and the newer side: the older one
  /// unless it has action 0, the newer one if the older is written or if it has action 1. (Of
  /// several applications with one UPID on one side they may write fewer.)
  bool writesOlder() const;
  bool writesNewer() const;

  /// Calls `take` with each fact, which holds until that returns: first those of the application,
  /// in the order of tagFact, then those of its items, by address: of an item that both sides have
  /// ports that are gone, ports that came, ranges by their ends, block number, selector info. One
  /// that was added or removed has a fact for each of its items. What `take` throws leaves the
  /// operation, and so does std::bad_alloc, after the facts that it had by then.
  void forEachFact(const std::function<void(const OrvaneFact&)>& take) const;

  /// All of these at once.
  std::vector<OrvaneFact> getFacts() const;
};

/// What differs between two collections, an older and a newer one; walk, index and size it as the
/// vector that it is. The applications that differ stand in the order of
/// OrvaneAppMapping::sortByUpid(), whichever order the collections are in.
///
/// An application is compared with that of the same UPID, a new one (kOrvaneNoUpid) with that of
/// the same name; where several have the same, the n-th in that order with the n-th. Their items
/// are compared by address. Identifiers, list indexes, item ids and reserved address words are not
/// compared, nor are port 0 and a range that ends at 0, which no port list text gives, where only
/// one side has them.
///
/// What it holds, and the facts of it, point into both collections and hold until one of these
/// changes or goes. Nothing is copied: it takes as much memory as there are applications that
/// differ, and the facts are made when they are asked for.
///
/// Several threads may compare the same collections at once while none changes them, and use one
/// comparison at once while none changes that. No operation replaces a text that another returns.
/// When memory runs out, std::bad_alloc leaves the operation, and nothing has changed, neither the
/// comparison nor what is appended to.
class ORVANE_EXPORT OrvaneComparison : public std::vector<OrvaneDifference> {
 public:
  /// No differences.
  OrvaneComparison() = default;

  /// The differences from `older` to `newer`, which must be there as long as the comparison: no
  /// temporary ones.
  OrvaneComparison(const OrvaneAppMapping& older, const OrvaneAppMapping& newer);
  OrvaneComparison(const OrvaneAppMapping&&, const OrvaneAppMapping&) = delete;
  OrvaneComparison(const OrvaneAppMapping&, const OrvaneAppMapping&&) = delete;

  /// Appends the change sections of the differences: the text of
  /// OrvaneAppMapping::getUpdatedSection() from the older sides with a UPID to the newer ones, then
  /// that of each new application by itself. So it is the updated section of both collections put
  /// in order by sortByUpid(), except that of several new applications each goes with its own
  /// partner and one that did not change is not written.
  ///
  /// Differences that were erased before are left out; those that were put in another order, or
  /// come from other comparisons, are written as if the collections held them so, the ones up to
  /// the next new application together.
  void appendChangeSections(std::string& to, bool closeGroups) const;
};

#endif  // ORVANE_COMPARISON_H_
