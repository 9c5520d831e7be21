// Operations of the catalogue, per entry.

#include <bit>
#include <memory>

#include "catalogue_data.h"
#include "plain_catalogue.h"

namespace {

// What the operations work on, for the library and by hand.
struct Input {
  explicit Input(std::int64_t size)
      : Input(data::catalogue(size), data::upids(size), data::mapping(size)) {}
  explicit Input(OrvaneAppInfoArray of, data::Upids asked = {}, OrvaneAppMapping beside = {})
      : catalogue(std::move(of)),
        mapping(std::move(beside)),
        upids(std::move(asked)),
        entries(plain::build(plain::entriesOf(catalogue))) {}

  OrvaneAppInfoArray catalogue;
  OrvaneAppMapping mapping;
  data::Upids upids;
  std::vector<plain::HeldEntry> entries;
};

// Adds one way of an operation on what `make` makes of a size.
template <typename Make, typename Operation>
void add(const std::string& operation, const std::string& way, const bench::Sizes& sizes, Make make,
         Operation operate) {
  bench::add(operation, way, sizes, [=](std::int64_t size) {
    return
        [=, input = std::make_shared<const Input>(make(size)), sheet = plain::Sheet()]() mutable {
          sheet.clear();
          return operate(*input, sheet);
        };
  });
}

template <typename Operation>
void add(const std::string& operation, const std::string& way, Operation operate) {
  add(
      operation, way, data::kSizes, [](std::int64_t size) { return Input(size); }, operate);
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

char* selected(const Input& input, plain::Sheet& /*sheet*/) {
  return input.catalogue.getSection(input.upids, true);
}

void addSelecting() {
  add(data::kSelected, bench::kLibrary, selected);
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

// Four UPIDs, in one walk over the entries as far as needed.
std::size_t selectFour(const Input& input, plain::Sheet& sheet) {
  const std::array<unsigned int, 4> upids = {input.upids[0], input.upids[1], input.upids[2],
                                             input.upids[3]};
  std::array<const plain::HeldEntry*, 4> found = {};
  std::size_t left = found.size();
  for (auto entry = input.entries.begin(); left > 0 && entry != input.entries.end(); ++entry) {
    const unsigned int upid = entry->upid;
    if (upid != upids[0] && upid != upids[1] && upid != upids[2] && upid != upids[3]) continue;
    for (std::size_t i = 0; i < found.size(); ++i) {
      if (upids[i] != upid || found[i] != nullptr) continue;
      found[i] = &*entry;
      --left;
    }
  }
  for (const plain::HeldEntry* entry : found) {
    if (entry != nullptr) plain::append(sheet, *entry, entry->ports, entry->reserved[0]);
  }
  return sheet.length();
}

void addSelectingFew() {
  for (const data::Few& few : data::kFew) {
    const auto make = [=](std::int64_t size) {
      const data::Upids known = data::Shuffled(size).known;
      return Input(data::catalogue(known, data::portList), few.upids(known));
    };
    add(few.name, bench::kLibrary, data::kSizes, make, selected);
    add(few.name, bench::kFloor, data::kSizes, make, selectFour);
  }
}

data::Upids unknown(const Input& input, plain::Sheet& /*sheet*/) {
  data::Upids result;
  input.catalogue.getUnknownPortList(input.upids, result);
  return result;
}

data::Upids known(const Input& input, plain::Sheet& /*sheet*/) {
  data::Upids result;
  input.catalogue.getCommonPortList(input.upids, result);
  return result;
}

// Of ascending UPIDs.
template <bool kWanted>
data::Upids sift(const Input& input, plain::Sheet& /*sheet*/) {
  data::Upids result;
  result.reserve(input.upids.size());
  forEachUpid(input, [&](unsigned int upid, bool isKnown, std::size_t) {
    if (isKnown == kWanted) result.push_back(upid);
  });
  return result;
}

// Of UPIDs in any order, in one walk over the entries: by a hash table of the UPIDs, at most half
// full.
std::size_t selectTenth(const Input& input, plain::Sheet& sheet) {
  struct Slot {
    unsigned int upid;
    unsigned int number;  // of the UPID, counted from 1; 0: none
  };
  std::vector<Slot> table(std::bit_ceil(2 * input.upids.size()));
  const int shift = 64 - std::countr_zero(table.size());
  const auto slotOf = [&](unsigned int upid) -> Slot& {
    std::size_t i = upid * 0x9E3779B97F4A7C15 >> shift;
    while (table[i].number != 0 && table[i].upid != upid) i = (i + 1) % table.size();
    return table[i];
  };
  unsigned int count = 0;
  for (const unsigned int upid : input.upids) slotOf(upid) = {upid, ++count};
  std::vector<const plain::HeldEntry*> found(count + 1);
  for (const plain::HeldEntry& entry : input.entries) {
    const unsigned int number = slotOf(entry.upid).number;
    if (number != 0 && found[number] == nullptr) found[number] = &entry;
  }
  for (const plain::HeldEntry* entry : found) {
    if (entry != nullptr) plain::append(sheet, *entry, entry->ports, entry->reserved[0]);
  }
  return sheet.length();
}

// Of UPIDs in any order: by a hash table of those of the entries alone, at most half full.
template <bool kWanted>
data::Upids siftShuffled(const Input& input, plain::Sheet& /*sheet*/) {
  data::Upids table(std::bit_ceil(2 * input.entries.size()));
  const int shift = 64 - std::countr_zero(table.size());
  bool hasZero = false;  // which means a free place in the table
  const auto placeOf = [&](unsigned int upid) {
    std::size_t place = upid * 0x9E3779B97F4A7C15 >> shift;
    while (table[place] != upid && table[place] != 0) place = (place + 1) % table.size();
    return place;
  };
  for (const plain::HeldEntry& entry : input.entries) {
    table[placeOf(entry.upid)] = entry.upid;
    hasZero = hasZero || entry.upid == 0;
  }
  data::Upids result;
  result.reserve(input.upids.size());
  for (const unsigned int upid : input.upids) {
    const bool isKnown = upid == 0 ? hasZero : table[placeOf(upid)] == upid;
    if (isKnown == kWanted) result.push_back(upid);
  }
  return result;
}

void addShuffled() {
  const auto shuffled = [](std::int64_t size) {
    const data::Shuffled upids(size);
    return Input(data::catalogue(upids.known, data::portList), upids.asked);
  };
  const auto tenth = [](std::int64_t size) {
    const data::Shuffled upids(size);
    return Input(data::catalogue(upids.known, data::portList),
                 {upids.asked.begin(), upids.asked.begin() + size / 10});
  };
  add(data::kTenthSelected, bench::kLibrary, data::kSizes, tenth, selected);
  add(data::kTenthSelected, bench::kFloor, data::kSizes, tenth, selectTenth);
  add(data::kUnknownShuffled, bench::kLibrary, data::kSizes, shuffled, unknown);
  add(data::kUnknownShuffled, bench::kFloor, data::kSizes, shuffled, siftShuffled<false>);
  add(data::kKnownShuffled, bench::kLibrary, data::kSizes, shuffled, known);
  add(data::kKnownShuffled, bench::kFloor, data::kSizes, shuffled, siftShuffled<true>);
}

void addSifting() {
  add(data::kUnknown, bench::kLibrary, unknown);
  add(data::kUnknown, bench::kFloor, sift<false>);
  add(data::kKnown, bench::kLibrary, known);
  add(data::kKnown, bench::kFloor, sift<true>);
}

char* expanded(const Input& input, plain::Sheet& /*sheet*/) { return input.catalogue.getPorts(); }

std::size_t expand(const Input& input, plain::Sheet& sheet) {
  for (const plain::HeldEntry& entry : input.entries) {
    for (const OrvanePort& port : entry.ports) {
      const bool isRange = port.getPort() == 0;
      const unsigned int first = isRange ? port.getStart() : port.getPort();
      const unsigned int last = isRange ? port.getEnd() : port.getPort();
      plain::Pen pen = sheet.pen(8 + 6 * std::size_t{last - first + 1});
      plain::appendPorts(pen, first, last);
      sheet.end(pen);
    }
  }
  return sheet.length();
}

void addExpanding() {
  add(data::kExpanded, bench::kLibrary, expanded);
  add(data::kExpanded, bench::kFloor, expand);
  for (const data::Expanded& kind : data::kExpandedRanges) {
    const auto make = [=](std::int64_t size) { return Input(data::catalogue(size, kind)); };
    add(kind.name, bench::kLibrary, kind.sizes, make, expanded);
    add(kind.name, bench::kFloor, kind.sizes, make, expand);
  }
}

}  // namespace

void bench::addAll() {
  addReading();
  addWriting();
  addSelecting();
  addSelectingFew();
  addSifting();
  addShuffled();
  addExpanding();
}
