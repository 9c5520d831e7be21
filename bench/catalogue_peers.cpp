// Operations of the catalogue, by what others wrote.

#include <fmt/compile.h>

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

void addSifting(const std::string& operation, bool wanted) {
  bench::add(operation, "std::unordered_set", data::kSizes, [=](std::int64_t size) {
    return [=, list = entries(size), upids = data::upids(size)] {
      std::unordered_set<unsigned int> known;
      known.reserve(list.size());
      for (const plain::Entry& entry : list) known.insert(entry.upid);
      std::vector<unsigned int> result;
      for (const unsigned int upid : upids) {
        if (known.contains(upid) == wanted) result.push_back(upid);
      }
      return result;
    };
  });
}

void addExpanding() {
  bench::add(data::kExpanded, "fmt", data::kSizes, [](std::int64_t size) {
    return [list = entries(size), text = fmt::memory_buffer()]() mutable {
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
  addSifting(data::kUnknown, false);
  addSifting(data::kKnown, true);
  addExpanding();
}
