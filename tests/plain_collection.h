// Operations on collections, worded step by step: what the library's ways have to give as well.

#ifndef ORVANE_TESTS_PLAIN_COLLECTION_H_
#define ORVANE_TESTS_PLAIN_COLLECTION_H_

#include <algorithm>
#include <string>
#include <vector>

#include "orvane/app_mapping.h"

namespace plain {

// The standard difference of two lists, worded here since these are in any order: a standard
// library that checks wants them in one.
template <typename Element, typename List, typename Less>
std::vector<Element> missingFrom(const List& other, const List& list, Less less) {
  std::vector<Element> missing;
  auto b = other.begin();
  for (auto a = list.begin(); a != list.end();) {
    if (b == other.end() || less(*a, *b)) {
      missing.push_back(*a++);
    } else {
      if (!less(*b, *a)) ++a;
      ++b;
    }
  }
  return missing;
}

// The updated section, worded step by step.
inline std::string updatedSection(const OrvaneAppMapping& older, const OrvaneAppMapping& newer,
                                  bool close) {
  const auto less = [](const OrvaneApplication& a, const OrvaneApplication& b) {
    return a < b || (a == b && a.lexItemsLess(b));
  };
  auto added = missingFrom<OrvaneApplication>(older, newer, less);
  std::string text;
  const auto write = [&](OrvaneApplication& application, tagActionType action) {
    application.setAction(action);
    text += application.getSection(close);
  };
  for (OrvaneApplication& application : missingFrom<OrvaneApplication>(newer, older, less)) {
    if (application.getAction() == kOrvaneActionNone) continue;
    const auto partner = std::find(added.begin(), added.end(), application);
    if (partner != added.end()) {
      write(application, kOrvaneActionRemove);
      write(*partner, kOrvaneActionUpdate);
    } else {
      text += application.getDeleteSection(close);
    }
  }
  for (OrvaneApplication& application : added) {
    if (application.getAction() != kOrvaneActionAdd) continue;
    write(application, application.getAppCategory() == 1 ? kOrvaneActionUpdate : kOrvaneActionAdd);
  }
  return text;
}

inline void removeNew(OrvaneAppMapping& mapping, OrvaneAppMapping& other) {
  for (auto position = other.begin(); position != other.end();) {
    if (position->getUpid() == kOrvaneNoUpid && position->getItems().size() > 1) {
      mapping.add(*position);
      position = other.erase(position);
    } else {
      ++position;
    }
  }
}

inline void updateNew(const OrvaneAppMapping& mapping, OrvaneAppMapping& other) {
  for (const OrvaneApplication& application : mapping) {
    OrvaneApplication* const found =
        other.find(application.getName(), application.getAppCategory(), application.getType());
    if (found == other.end()) continue;
    found->setAction(kOrvaneActionUpdate);
    found->setUpid(application.getUpid());
    if (!application.getItems().empty()) found->deleteItem(application.getItems()[0]);
  }
}

}  // namespace plain

#endif  // ORVANE_TESTS_PLAIN_COLLECTION_H_
