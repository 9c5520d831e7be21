// Reading the section text of a collection.

#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

#include "apps/application_fields.h"
#include "apps/item_list.h"
#include "orvane/app_mapping.h"
#include "ports/first_by_key.h"
#include "ports/section_lines.h"
#include "ports/text_in.h"

namespace orvane {

// The way to an application whose identifier is known.
struct ApplicationAccess {
  static OrvaneApplication make(int identifier) { return OrvaneApplication(identifier); }
};

namespace {

// The applications of a text that is being read, without their items.
class ApplicationReader {
 public:
  explicit ApplicationReader(std::vector<OrvaneApplication>& applications)
      : applications_(applications) {}

  // The place of the application that a group belongs to. The first group of one makes it.
  std::size_t placeOf(const ApplicationGroup& group) {
    const unsigned int upid = group.holds(kUpid) ? readNumber(group[kUpid]) : kOrvaneNoUpid;
    if (upid != kOrvaneNoUpid) {
      const std::size_t place = byUpid_.tryEmplace(upid, applications_.size());
      return place < applications_.size() ? place : make(group);
    }
    indexIdentifiers();
    if (!group.holds(kGroupId)) return make(group, unusedIdentifier());
    const int id = readSigned(group[kGroupId]);
    const std::size_t place =
        byId_.tryEmplace(static_cast<std::uint32_t>(id), applications_.size());
    return place < applications_.size() ? place : make(group, id);
  }

 private:
  std::size_t make(const ApplicationGroup& group, int id) {
    OrvaneApplication& application = applications_.emplace_back(ApplicationAccess::make(id));
    readFields(group, application);
    return applications_.size() - 1;
  }

  std::size_t make(const ApplicationGroup& group) {
    return make(group, group.holds(kGroupId) ? 0 : OrvaneApplication().getID());
  }

  // Takes in the identifiers of the applications that were made since it last ran. An identifier is
  // looked up among all, those of applications with a UPID included.
  void indexIdentifiers() {
    for (; indexed_ < applications_.size(); ++indexed_) {
      byId_.tryEmplace(static_cast<std::uint32_t>(applications_[indexed_].getID()), indexed_);
    }
  }

  // An identifier that no application has. They are counted up, so that none is tried twice.
  int unusedIdentifier() {
    if (unused_ == 0) unused_ = static_cast<std::uint32_t>(OrvaneApplication().getID());
    while (byId_.find(unused_) != nullptr) ++unused_;
    return static_cast<int>(unused_++);
  }

  std::vector<OrvaneApplication>& applications_;
  FirstByKey<std::size_t> byUpid_;
  FirstByKey<std::size_t> byId_;
  std::size_t indexed_ = 0;
  std::uint32_t unused_ = 0;  // 0: none was needed yet
};

}  // namespace
}  // namespace orvane

void OrvaneAppMapping::setSection(const char* text) { setSection(orvane::viewOf(text)); }

void OrvaneAppMapping::setSection(std::string_view text) {
  constexpr std::ptrdiff_t kAhead = 4;
  OrvaneAppMapping read;
  orvane::ApplicationReader applications(read);
  std::vector<orvane::ItemGroup> groups;
  orvane::SectionLines lines(text);
  for (orvane::ApplicationGroup group(orvane::kApplicationKeys); group.read(lines);) {
    groups.push_back({applications.placeOf(group), orvane::readItemFields(group)});
  }
  orvane::order(groups, read.size());
  for (auto first = groups.begin(); first != groups.end();) {
    const auto last = std::find_if(first, groups.end(), [first](const orvane::ItemGroup& group) {
      return group.application != first->application;
    });
    // Without this, scattered groups that do not fit the caches take a quarter more.
    for (auto next = last; next != groups.end() && next != last + kAhead; ++next) {
      __builtin_prefetch(next->item.portList.data());
    }
    read[first->application].items = orvane::readItems({first, last});
    first = last;
  }
  swap(read);
}
