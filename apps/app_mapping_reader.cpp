// Reading the section text of a collection.

#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

#include "apps/application_fields.h"
#include "apps/application_watcher.h"
#include "apps/item_list.h"
#include "orvane/app_mapping.h"
#include "ports/first_by_key.h"
#include "ports/section_lines.h"
#include "ports/text_in.h"

namespace orvane {

namespace {

// The applications of a text that is being read, without their items.
template <typename Watcher>
class ApplicationReader {
 public:
  ApplicationReader(std::vector<OrvaneApplication>& applications, Watcher& watcher)
      : applications_(applications), watcher_(watcher) {}

  // The place of the application that a group belongs to. The first group of one makes it.
  std::size_t placeOf(const ApplicationGroup& group) {
    const std::size_t made = applications_.size();
    const std::size_t place = findOrMake(group);
    if (place < made) {
      watcher_.joined(group, place, applications_[place]);
    } else {
      watcher_.made(group);
    }
    return place;
  }

 private:
  struct Index {
    FirstByKey<std::size_t> first;
    std::size_t indexed = 0;  // how many applications it has taken in
  };

  std::size_t findOrMake(const ApplicationGroup& group) {
    const unsigned int upid = group.holds(kUpid) ? readNumber(group[kUpid]) : kOrvaneNoUpid;
    if (upid != kOrvaneNoUpid) {
      const std::size_t place = placeOf(upid);
      return place < applications_.size() ? place : make(group);
    }
    indexAll(byId_, &keyOfId);
    if (!group.holds(kGroupId)) return make(group, unusedIdentifier());
    const int id = readSigned(group[kGroupId]);
    const std::size_t place =
        byId_.first.tryEmplace(static_cast<std::uint32_t>(id), applications_.size());
    return place < applications_.size() ? place : make(group, id);
  }

  static std::uint32_t keyOfUpid(const OrvaneApplication& application) { return application.upid; }
  static std::uint32_t keyOfId(const OrvaneApplication& application) {
    return static_cast<std::uint32_t>(application.getID());
  }

  // Takes in the applications that were made since it last ran.
  void indexAll(Index& index, std::uint32_t (*keyOf)(const OrvaneApplication&)) {
    for (; index.indexed < applications_.size(); ++index.indexed) {
      index.first.tryEmplace(keyOf(applications_[index.indexed]), index.indexed);
    }
  }

  // The place of the application with that UPID, or where it is to be made. While UPIDs ascend, as
  // they mostly do, there is no table to fill, which halves the time of small groups.
  std::size_t placeOf(unsigned int upid) {
    if (upid == highest_) return highestPlace_;
    if (upid > highest_) {
      highest_ = upid;
      return highestPlace_ = applications_.size();
    }
    indexAll(byUpid_, &keyOfUpid);
    return byUpid_.first.tryEmplace(upid, applications_.size());
  }

  std::size_t make(const ApplicationGroup& group, int id) {
    readFields(group, applications_.emplace_back(ApplicationAccess::make(id)), watcher_);
    return applications_.size() - 1;
  }

  std::size_t make(const ApplicationGroup& group) {
    return make(group, group.holds(kGroupId) ? 0 : freshIdentifier());
  }

  // An identifier that no application has: it is looked up among all, those of applications with a
  // UPID included. They are counted up, so that none is tried twice.
  int unusedIdentifier() {
    if (unused_ == 0) unused_ = static_cast<std::uint32_t>(freshIdentifier());
    while (byId_.first.find(unused_) != nullptr) ++unused_;
    return static_cast<int>(unused_++);
  }

  std::vector<OrvaneApplication>& applications_;
  Watcher& watcher_;
  std::int64_t highest_ = -1;  // UPID
  std::size_t highestPlace_ = 0;
  Index byUpid_;
  Index byId_;
  std::uint32_t unused_ = 0;  // 0: none was needed yet
};

// The applications of a text.
template <typename Watcher>
OrvaneAppMapping readApplications(std::string_view text, Watcher& watcher) {
  constexpr std::ptrdiff_t kAhead = 4;
  OrvaneAppMapping read;
  ApplicationReader applications(read, watcher);
  std::vector<ItemGroup<Watcher>> groups;
  SectionLines lines(text);
  for (ApplicationGroup group(kApplicationKeys); group.read(lines, watcher);) {
    const std::size_t place = applications.placeOf(group);
    groups.push_back({place, readItemFields(group, watcher), watcher.placesOf(group)});
  }
  order(groups, read.size());
  for (auto first = groups.begin(); first != groups.end();) {
    const auto last = std::find_if(first, groups.end(), [first](const auto& group) {
      return group.application != first->application;
    });
    // Without this, scattered groups that do not fit the caches take a quarter more.
    for (auto next = last; next != groups.end() && next - last < kAhead; ++next) {
      __builtin_prefetch(next->item.portList.data());
    }
    read[first->application].items =
        readItems(std::span<const ItemGroup<Watcher>>(first, last), watcher);
    first = last;
  }
  return read;
}

}  // namespace
}  // namespace orvane

void OrvaneAppMapping::setSection(const char* text) { setSection(orvane::viewOf(text)); }

void OrvaneAppMapping::setSection(std::string_view text) {
  orvane::UnwatchedApplications unwatched;
  OrvaneAppMapping read = orvane::readApplications(text, unwatched);
  swap(read);
}

void OrvaneAppMapping::setSectionReported(std::string_view text, OrvaneFindings& findings) {
  orvane::ApplicationReporter reporter(text, findings, "a nameless application without ports");
  OrvaneAppMapping read = orvane::readApplications(text, reporter);
  swap(read);
}
