// Operations of the catalogue, per entry.

#include <memory>
#include <unordered_map>

#include "catalogue_data.h"
#include "plain_catalogue.h"

namespace {

// What the operations work on, for the library and by hand.
struct Input {
  explicit Input(std::int64_t size)
      : catalogue(data::catalogue(size)),
        mapping(data::mapping(size)),
        upids(data::upids(size)),
        entries(plain::build(plain::entriesOf(catalogue))) {}

  OrvaneAppInfoArray catalogue;
  OrvaneAppMapping mapping;
  std::vector<unsigned int> upids;
  std::vector<plain::HeldEntry> entries;
};

template <typename Operation>
void add(const std::string& operation, const std::string& way, Operation operate) {
  bench::add(operation, way, data::kSizes, [=](std::int64_t size) {
    return [=, input = std::make_shared<const Input>(size), sheet = plain::Sheet()]() mutable {
      sheet.clear();
      return operate(*input, sheet);
    };
  });
}

void addReading() {
  const auto textOf = [](std::int64_t size) -> std::string {
    return data::catalogue(size).getSection(true);
  };
  bench::add(data::kRead, bench::kLibrary, data::kSizes, [=](std::int64_t size) {
    return [text = textOf(size)] {
      OrvaneAppInfoArray catalogue;
      catalogue.setSection(text.c_str());
      return catalogue;
    };
  });
  bench::add(data::kRead, bench::kFloor, data::kSizes, [=](std::int64_t size) {
    return [text = textOf(size), parsed = plain::entriesOf(data::catalogue(size))] {
      benchmark::DoNotOptimize(plain::touch(text));
      return plain::build(parsed);
    };
  });
}

void addWriting() {
  add(data::kWritten, bench::kLibrary,
      [](const Input& input, plain::Sheet&) { return input.catalogue.getSection(true); });
  add(data::kWritten, bench::kFloor, [](const Input& input, plain::Sheet& sheet) {
    for (const plain::HeldEntry& entry : input.entries) {
      plain::append(sheet, entry, entry.ports, entry.reserved[0]);
    }
    return sheet.length();
  });
}

// Calls take(UPID, whether there is an entry with it, the entry's place) for each UPID, walking
// over both lists once: both are in order.
template <typename Take>
void forEachUpid(const Input& input, Take take) {
  std::size_t place = 0;
  for (const unsigned int upid : input.upids) {
    while (place < input.entries.size() && input.entries[place].upid < upid) ++place;
    take(upid, place < input.entries.size() && input.entries[place].upid == upid, place);
  }
}

void addSelecting() {
  add(data::kSelected, bench::kLibrary, [](const Input& input, plain::Sheet&) {
    return input.catalogue.getSection(input.upids, true);
  });
  add(data::kSelected, bench::kFloor, [](const Input& input, plain::Sheet& sheet) {
    forEachUpid(input, [&](unsigned int, bool known, std::size_t place) {
      if (!known) return;
      const plain::HeldEntry& entry = input.entries[place];
      plain::append(sheet, entry, entry.ports, entry.reserved[0]);
    });
    return sheet.length();
  });

  add(data::kMerged, bench::kLibrary, [](const Input& input, plain::Sheet&) {
    return input.catalogue.getMergedAppMappingSection(input.mapping, input.upids, true);
  });
  add(data::kMerged, bench::kFloor, [](const Input& input, plain::Sheet& sheet) {
    forEachUpid(input, [&](unsigned int, bool known, std::size_t place) {
      if (!known) return;
      const plain::HeldEntry& entry = input.entries[place];
      const OrvanePortMapping& item = input.mapping[place].getItems().front();
      std::set<OrvanePort> ports = entry.ports;
      OrvanePort port;
      for (const unsigned int number : item.getPorts()) {
        port.setPort(number);
        ports.insert(port);
      }
      port.setPort(0U);
      for (const OrvanePortRange& range : item.getRanges()) {
        port = range;
        ports.insert(port);
      }
      plain::append(sheet, entry, ports, 1);
    });
    return sheet.length();
  });
}

void addSifting() {
  using List = std::vector<unsigned int>;
  const auto byHand = [](const Input& input, bool wanted) {
    List result;
    result.reserve(input.upids.size());
    forEachUpid(input, [&](unsigned int upid, bool known, std::size_t) {
      if (known == wanted) result.push_back(upid);
    });
    return result;
  };
  add(data::kUnknown, bench::kLibrary, [](const Input& input, plain::Sheet&) {
    List result;
    input.catalogue.getUnknownPortList(input.upids, result);
    return result;
  });
  add(data::kUnknown, bench::kFloor,
      [=](const Input& input, plain::Sheet&) { return byHand(input, false); });
  add(data::kKnown, bench::kLibrary, [](const Input& input, plain::Sheet&) {
    List result;
    input.catalogue.getCommonPortList(input.upids, result);
    return result;
  });
  add(data::kKnown, bench::kFloor,
      [=](const Input& input, plain::Sheet&) { return byHand(input, true); });
}

void addExpanding() {
  add(data::kExpanded, bench::kLibrary,
      [](const Input& input, plain::Sheet&) { return input.catalogue.getPorts(); });
  add(data::kExpanded, bench::kFloor, [](const Input& input, plain::Sheet& sheet) {
    for (const plain::HeldEntry& entry : input.entries) {
      plain::Pen pen = sheet.pen();
      for (const OrvanePort& port : entry.ports) {
        const bool isRange = port.getPort() == 0;
        const unsigned int last = isRange ? port.getEnd() : port.getPort();
        for (unsigned int i = isRange ? port.getStart() : port.getPort(); i <= last; ++i) {
          pen.number(i);
          pen.character(',');
        }
      }
      sheet.end(pen);
    }
    return sheet.length();
  });
}

}  // namespace

void bench::addAll() {
  addReading();
  addWriting();
  addSelecting();
  addSifting();
  addExpanding();
}
