// Operations of the catalogue, by what others wrote.

#include <absl/container/flat_hash_set.h>
#include <fmt/compile.h>

#include <algorithm>
#include <string>
#include <unordered_set>

#include "catalogue_data.h"
#include "plain_catalogue.h"

namespace {

std::vector<plain::Entry> entries(std::int64_t size) {
  return plain::entriesOf(data::catalogue(size));
}

void addWriting() {
  bench::add(data::kWritten, "fmt", data::kSizes, [](std::int64_t size) {
    return [list = entries(size), text = fmt::memory_buffer()]() mutable {
      text.clear();
      const auto out = std::back_inserter(text);
      for (const plain::Entry& entry : list) {
        fmt::format_to(out, "Version={}\nPortType={}\nUPID={}\nPortRange=", entry.version,
                       entry.portType, entry.upid);
        for (const plain::Port& port : entry.ports) {
          if (&port != entry.ports.data()) text.push_back(',');
          if (port.number != 0) {
            fmt::format_to(out, "{}", port.number);
          } else {
            fmt::format_to(out, "{}-{}", port.start, port.end);
          }
        }
        fmt::format_to(out, "\nReserved1={}\nReserved2={}\nReserved3={}\nFQN={}\n;\n",
                       entry.reserved[0], entry.reserved[1], entry.reserved[2], entry.fqn);
      }
      return text.size();
    };
  });
}

// One search per UPID, with what the library is to write them.
void addSelectingFew() {
  for (const data::Few& few : data::kFew) {
    bench::add(few.name, "std::find_if", data::kSizes, [=](std::int64_t size) {
      const data::Upids known = data::Shuffled(size).known;
      return [catalogue = data::catalogue(known, data::portList), text = std::string(),
              upids = few.upids(known)]() mutable {
        text.clear();
        for (const unsigned int upid : upids) {
          const auto* const entry =
              std::find_if(catalogue.begin(), catalogue.end(),
                           [=](const OrvaneAppInfo& next) { return next.getUPID() == upid; });
          if (entry != catalogue.end()) entry->appendSection(text, true);
        }
        return text.size();
      };
    });
  }
}

template <typename Set>
data::Upids sift(const OrvaneAppInfoArray& catalogue, const data::Upids& upids, bool wanted) {
  Set known;
  known.reserve(static_cast<std::size_t>(catalogue.end() - catalogue.begin()));
  for (const OrvaneAppInfo& entry : catalogue) known.insert(entry.getUPID());
  data::Upids result;
  for (const unsigned int upid : upids) {
    if (known.contains(upid) == wanted) result.push_back(upid);
  }
  return result;
}

template <typename Set>
void addSifting(const std::string& way) {
  const auto add = [&](const std::string& operation, auto catalogueOf, auto upidsOf, bool wanted) {
    bench::add(operation, way, data::kSizes, [=](std::int64_t size) {
      return [=, catalogue = catalogueOf(size), upids = upidsOf(size)] {
        return sift<Set>(catalogue, upids, wanted);
      };
    });
  };
  const auto inOrder = [](std::int64_t size) { return data::catalogue(size); };
  add(data::kUnknown, inOrder, data::upids, false);
  add(data::kKnown, inOrder, data::upids, true);
  const auto shuffled = [](std::int64_t size) {
    return data::catalogue(data::Shuffled(size).known, data::portList);
  };
  const auto asked = [](std::int64_t size) { return data::Shuffled(size).asked; };
  add(data::kUnknownShuffled, shuffled, asked, false);
  add(data::kKnownShuffled, shuffled, asked, true);
}

template <typename Make>
void addExpanding(const std::string& operation, const bench::Sizes& sizes, Make make) {
  bench::add(operation, "fmt", sizes, [=](std::int64_t size) {
    return [list = plain::entriesOf(make(size)), text = fmt::memory_buffer()]() mutable {
      text.clear();
      for (const plain::Entry& entry : list) {
        for (const plain::Port& port : entry.ports) {
          const unsigned int last = port.number != 0 ? port.number : port.end;
          for (unsigned int i = port.number != 0 ? port.number : port.start; i <= last; ++i) {
            fmt::format_to(std::back_inserter(text), FMT_COMPILE("{},"), i);
          }
        }
      }
      return text.size();
    };
  });
}

}  // namespace

void bench::addPeers() {
  addWriting();
  addSelectingFew();
  addSifting<std::unordered_set<unsigned int>>("std::unordered_set");
  addSifting<absl::flat_hash_set<unsigned int>>("absl::flat_hash_set");
  addExpanding(data::kExpanded, data::kSizes,
               [](std::int64_t size) { return data::catalogue(size); });
  for (const data::Expanded& kind : data::kExpandedRanges) {
    addExpanding(kind.name, kind.sizes,
                 [=](std::int64_t size) { return data::catalogue(size, kind); });
  }
}
