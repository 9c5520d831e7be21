// Operations on whole collections, per application.

#include <algorithm>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "applications_data.h"
#include "plain.h"

namespace {

// The floor for scattered groups makes the applications in the order of their first groups.
template <typename TextOf>
void addReading(const std::string& operation, TextOf textOf) {
  bench::add(operation, bench::kLibrary, data::kSizes, [=](std::int64_t size) {
    return [text = textOf(size)] {
      OrvaneAppMapping mapping;
      mapping.setSection(text.c_str());
      return mapping;
    };
  });
  bench::add(operation, bench::kFloor, data::kSizes, [=](std::int64_t size) {
    OrvaneAppMapping mapping;
    const std::string text = textOf(size);
    mapping.setSection(text.c_str());
    return [text, parsed = plain::applicationsOf(mapping)] {
      benchmark::DoNotOptimize(plain::touch(text));
      return plain::build(parsed);
    };
  });
}

// What telling costs where there is hardly anything to tell.
void addReportedReading() {
  const auto add = [](const std::string& way, auto read) {
    bench::add(data::kReadReported, way, data::kSizes, [=](std::int64_t size) {
      return [=, text = data::together(size)] {
        OrvaneAppMapping mapping;
        read(mapping, text);
        return mapping;
      };
    });
  };
  add(bench::kLibrary, [](OrvaneAppMapping& mapping, std::string_view text) {
    OrvaneFindings findings;
    mapping.setSectionReported(text, findings);
  });
  add("unreported",
      [](OrvaneAppMapping& mapping, std::string_view text) { mapping.setSection(text); });
}

// The floor keeps the room of its text, or begins anew.
void addWriting(const std::string& operation, bool anew) {
  bench::add(operation, bench::kLibrary, data::kSizes, [=](std::int64_t size) {
    return [=, mapping = workload::applications(size)] {
      std::string text;
      if (anew) {
        mapping.appendSection(text, true);
      } else {
        mapping.getSection(true);
      }
      return text;
    };
  });
  bench::add(operation, bench::kFloor, data::kSizes, [=](std::int64_t size) {
    return [=, mapping = workload::applications(size), kept = std::string()]() mutable {
      std::string fresh;
      std::string& text = anew ? fresh : kept;
      std::size_t length = 0;
      for (const OrvaneApplication& application : mapping) {
        plain::appendGroups(text, length, application, application.getAction());
      }
      return fresh;
    };
  });
}

// Both sides in order, walked once; what differs is written as the library writes it.
std::size_t updatedByHand(const OrvaneAppMapping& older, const OrvaneAppMapping& newer) {
  static std::string text;
  std::size_t length = 0;
  for (std::size_t i = 0; i < older.size(); ++i) {
    if (plain::equal(older[i], newer[i])) continue;
    plain::appendGroups(text, length, older[i], kOrvaneActionRemove);
    plain::appendGroups(text, length, newer[i], kOrvaneActionUpdate);
  }
  return length;
}

void addUpdating(const std::string& operation, std::size_t step) {
  const auto add = [&](const std::string& way, auto update) {
    bench::add(operation, way, data::kSizes, [=](std::int64_t size) {
      return [=, both = data::states(size, step)] { return update(both.older, both.newer); };
    });
  };
  add(bench::kLibrary,
      [](const auto& older, const auto& newer) { return older.getUpdatedSection(newer, true); });
  add(bench::kFloor,
      [](const auto& older, const auto& newer) { return updatedByHand(older, newer); });
}

// What differs as a list of pointers, both sides being in order and having the same UPIDs.
void addComparing(const std::string& operation, std::size_t step) {
  const auto add = [&](const std::string& way, auto compare) {
    bench::add(operation, way, data::kSizes, [=](std::int64_t size) {
      return [=, both = data::states(size, step)] { return compare(both.older, both.newer); };
    });
  };
  add(bench::kLibrary,
      [](const auto& older, const auto& newer) { return OrvaneComparison(older, newer); });
  add(bench::kFloor, [](const auto& older, const auto& newer) {
    std::vector<OrvaneDifference> differences;
    for (std::size_t i = 0; i < older.size(); ++i) {
      if (!plain::equal(older[i], newer[i])) differences.push_back({&older[i], &newer[i], true});
    }
    return differences;
  });
  add("getUpdatedSection",
      [](const auto& older, const auto& newer) { return older.getUpdatedSection(newer, true); });
  add("with change sections", [](const auto& older, const auto& newer) {
    static std::string text;
    text.clear();
    OrvaneComparison(older, newer).appendChangeSections(text, true);
    return text.data();
  });
}

// An operation that changes two collections, which restore() makes anew.
template <typename Collection, typename Operation>
class Change {
 public:
  Change(Collection held, Collection given, Operation operation)
      : held_(std::move(held)), given_(std::move(given)), operation_(operation) {}

  void restore() {
    target_ = held_;
    source_ = given_;
  }

  std::size_t operator()() {
    operation_(target_, source_);
    return target_.size() + source_.size();
  }

 private:
  Collection held_;
  Collection given_;
  Collection target_;
  Collection source_;
  Operation operation_;
};

template <typename Operation>
void addChange(const std::string& operation, const std::string& way, bool isNew, Operation change) {
  bench::add(operation, way, data::kSizes, [=](std::int64_t size) {
    const OrvaneAppMapping held = workload::applications(size);
    OrvaneAppMapping given = held;
    if (isNew) {
      for (OrvaneApplication& application : given) application.setUpid(kOrvaneNoUpid);
    }
    return Change(held, given, change);
  });
}

void addRemoveNew() {
  const std::string operation = "removeNew";
  addChange(operation, bench::kLibrary, true,
            [](auto& target, auto& source) { target.removeNew(source); });
  // Half of what is new has one item and stays; the rest finds its partner at its own place.
  addChange(operation, bench::kFloor, true, [](auto& target, auto& source) {
    auto kept = source.begin();
    for (std::size_t i = 0; i < source.size(); ++i) {
      if (source[i].getItems().size() < 2) {
        *kept++ = std::move(source[i]);
      } else {
        target[i].update(source[i]);
      }
    }
    source.erase(kept, source.end());
  });
  addChange(operation, "std::unordered_map", true, [](auto& target, auto& source) {
    std::unordered_map<int, std::size_t> byId;
    byId.reserve(target.size());
    for (std::size_t i = 0; i < target.size(); ++i) byId.emplace(target[i].getID(), i);
    auto kept = source.begin();
    for (OrvaneApplication& application : source) {
      if (application.getItems().size() < 2) {
        *kept++ = std::move(application);
      } else {
        target[byId.at(application.getID())].update(application);
      }
    }
    source.erase(kept, source.end());
  });
}

void addUpdateNew() {
  addChange("updateNew", bench::kLibrary, false,
            [](auto& known, auto& pending) { known.updateNew(pending); });
  addChange("updateNew", bench::kFloor, false, [](auto& known, auto& pending) {
    std::unordered_map<std::string_view, OrvaneApplication*> byName;
    byName.reserve(pending.size());
    for (OrvaneApplication& application : pending) {
      byName.try_emplace(plain::nameOf(application), &application);
    }
    for (const OrvaneApplication& application : known) {
      OrvaneApplication& updated = *byName.at(plain::nameOf(application));
      updated.setAction(kOrvaneActionUpdate);
      updated.setUpid(application.getUpid());
      auto& items = updated.getItems();
      if (!items.empty()) items.erase(items.begin());
    }
  });
}

void addSortByName() {
  addChange("sortByName", bench::kLibrary, false,
            [](auto& mapping, auto& /*unused*/) { mapping.sortByName(); });
  addChange("sortByName", bench::kFloor, false, [](auto& mapping, auto& /*unused*/) {
    std::vector<std::pair<std::string_view, OrvaneApplication*>> order;
    order.reserve(mapping.size());
    for (OrvaneApplication& application : mapping) {
      order.emplace_back(plain::nameOf(application), &application);
    }
    std::sort(order.begin(), order.end());
    OrvaneAppMapping sorted;
    sorted.reserve(mapping.size());
    for (const auto& [name, application] : order) sorted.push_back(std::move(*application));
    mapping.swap(sorted);
  });
}

}  // namespace

void bench::addAll() {
  addReading(data::kReadTogether, data::together);
  addReading(data::kReadScattered, data::scattered);
  addReportedReading();
  addWriting(data::kWritten, false);
  addWriting(data::kWrittenAnew, true);
  addUpdating(data::kUpdated5, 20);
  addUpdating(data::kUpdatedAll, 1);
  addComparing("comparison, nothing changed", 0);
  addComparing("comparison, 5 % changed", 20);
  addComparing("comparison, all changed", 1);
  addRemoveNew();
  addUpdateNew();
  addSortByName();
}
