#include <orvane/orvane.h>

#include <algorithm>
#include <functional>
#include <iostream>
#include <limits>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "hostile.h"
#include "hostile_texts.h"

namespace bench {
namespace {

using Make = std::function<Run(const Numbers&)>;
using NamedOrder = std::pair<std::string, Order>;

// Variants that differ in their numbers alone. They are compared with the first one; from the third
// on, with the one at `twin`.
Operation varied(const std::string& name, std::size_t itemSize, const Make& make,
                 const std::vector<NamedOrder>& orders, std::size_t twin = 0) {
  Operation operation = {name, itemSize, {}};
  for (std::size_t i = 0; i < orders.size(); ++i) {
    const auto& [variant, order] = orders[i];
    operation.variants.push_back({variant, i == 0 ? "" : orders[i > 1 ? twin : 0].first,
                                  [=, order = order](auto count) { return make(order(count)); }});
  }
  return operation;
}

std::string padded(std::uint64_t value, std::size_t digits) {
  const std::string number = std::to_string(value);
  return std::string(digits - std::min(digits, number.size()), '0') + number;
}

using Piece = std::function<std::string(std::size_t rank, std::size_t count)>;

// A text of pieces, between two others, that an object reads.
template <typename Object>
Make reading(void (Object::*method)(const char*), const Piece& piece,
             const std::string& before = "", const std::string& after = "") {
  return [=](const Numbers& ranks) -> Run {
    std::string text = before;
    for (const std::size_t rank : ranks) text += piece(rank, ranks.size());
    return [method, text = text + after] {
      auto object = std::make_shared<Object>();
      (object.get()->*method)(text.c_str());
      return object;
    };
  };
}

Make mappingSection(const Piece& piece) {
  return reading<OrvaneAppMapping>(&OrvaneAppMapping::setSection, piece);
}

Make portList(const Piece& piece, const std::string& before = "") {
  return reading<OrvanePortMapping>(&OrvanePortMapping::setPorts, piece, before);
}

// A group with a padded key.
Piece groupWith(const std::string& key) {
  return [key](auto value, auto) { return key + "=" + padded(value, 10) + "\n;\n"; };
}

OrvaneAppMapping applications(const Numbers& upids) {
  OrvaneAppMapping mapping;
  for (const unsigned int upid : upids) {
    OrvaneApplication application;
    application.setUpid(upid);
    application.setAction(kOrvaneActionAdd);
    mapping.push_back(application);
  }
  return mapping;
}

// A catalogue, a collection and a list of UPIDs with the same keys in the same order.
template <typename Operate>
Make withCatalogue(Operate operate) {
  return [operate](const Numbers& keys) -> Run {
    const auto catalogue = std::make_shared<OrvaneAppInfoArray>();
    for (const unsigned int key : keys) {
      OrvaneAppInfo entry;
      entry.setUPID(key);
      catalogue->add(entry);
    }
    return [operate, catalogue, keys, mapping = applications(keys)] {
      operate(*catalogue, keys, mapping);
      return nullptr;
    };
  };
}

// The same order, whose numbers are kept: making some of them takes seconds.
Order kept(const Order& order) {
  return [order, known = std::make_shared<std::map<std::size_t, Numbers>>()](std::size_t count) {
    Numbers& numbers = (*known)[count];
    if (numbers.empty()) numbers = order(count);
    return numbers;
  };
}

void addKeyed(std::vector<Operation>& operations) {
  const auto ascendingKeys = [](auto count) {
    Numbers keys = randomKeys(count);
    std::ranges::sort(keys);
    return keys;
  };
  const auto powersOfTwo = [](auto count) {
    return keysAgainstModulus(count, std::bit_floor((std::uint64_t{1} << 32) / count));
  };
  const std::vector<NamedOrder> keys = {
      {"ascending keys", ascendingKeys},
      {"keys in random order", randomKeys},
      {"keys made against a multiplicative hash",
       kept([](auto count) { return searchedKeys(count, multiplicativeHash); })},
      {"keys made against a power of two", powersOfTwo},
      {"keys made against the prime of a grown standard table",
       [](auto count) { return keysAgainstStandardTable(count, true); }},
      {"keys made against the prime of a reserved standard table",
       [](auto count) { return keysAgainstStandardTable(count, false); }},
      {"keys made against splitmix64 without salt",
       kept([](auto count) { return searchedKeys(count, splitMix); })},
      {"keys made against murmur3's finaliser without salt", keysAgainstMurmur}};
  const std::pair<const char*, Make> ways[] = {
      {"mapping section, UPIDs", mappingSection(groupWith("UPID"))},
      {"mapping section, GroupIDs", mappingSection(groupWith("GroupID"))},
      {"getUpdatedSection",
       [](const Numbers& upids) -> Run {
         return
             [older = applications(upids), newer = applications({upids.rbegin(), upids.rend()})] {
               older.getUpdatedSection(newer, true);
               return nullptr;
             };
       }},
      {"OrvaneComparison",
       [](const Numbers& upids) -> Run {
         return
             [older = applications(upids), newer = applications({upids.rbegin(), upids.rend()})] {
               return std::make_shared<OrvaneComparison>(older, newer);
             };
       }},
      {"getCommonPortList",
       withCatalogue([](const auto& catalogue, const auto& upids, const auto&) {
         Numbers common;
         catalogue.getCommonPortList(upids, common);
       })},
      {"getSection(upids)", withCatalogue([](const auto& catalogue, const auto& upids,
                                             const auto&) { catalogue.getSection(upids, true); })},
      {"getMergedAppMappingSection",
       withCatalogue([](const auto& catalogue, const auto& upids, const auto& mapping) {
         catalogue.getMergedAppMappingSection(mapping, upids, true);
       })}};
  for (const auto& [name, make] : ways) operations.push_back(varied(name, 17, make, keys, 1));
}

// An operation on applications that `describe` gives names, categories and types.
template <typename Describe>
Run updatingNew(std::size_t count, Describe describe) {
  OrvaneAppMapping mapping;
  for (std::size_t i = 0; i < count; ++i) describe(i, mapping.emplace_back());
  return [older = mapping, newer = mapping]() mutable {
    older.updateNew(newer);
    return nullptr;
  };
}

void describe(const std::string& name, int category, int type, OrvaneApplication& application) {
  application.setName(name.c_str());
  application.setAppCategory(static_cast<tagApMCategory>(category));
  application.setType(static_cast<tagSelectorType>(type));
}

Operation updateNew() {
  const auto spread = [](auto i) { return static_cast<int>(splitMix(i) >> 36); };
  const auto differ = [=](auto count) {
    return updatingNew(count, [=](auto i, auto& a) { describe("n", spread(i), -spread(i), a); });
  };
  const auto sameSums = [](auto count) {
    return updatingNew(count, [](auto i, auto& a) {
      const auto category = static_cast<int>(i);
      describe("n", category, -31 * category, a);
    });
  };
  const auto names = [=](auto count) {
    return updatingNew(count,
                       [](auto i, auto& a) { describe(padded(splitMix(i) >> 16, 16), 0, 1, a); });
  };
  const auto hostileNames = [](auto count) {
    return updatingNew(
        count, [names = collidingNames(count)](auto i, auto& a) { describe(names[i], 0, 1, a); });
  };
  return {"updateNew",
          17,
          {{"different categories and types", "", differ},
           {"categories and types of one sum", "different categories and types", sameSums},
           {"different names", "", names},
           {"names of one standard hash", "different names", hostileNames}}};
}

void addOrdered(std::vector<Operation>& operations) {
  const std::vector<NamedOrder> orders = {{"ascending order", ascending},
                                          {"descending order", backwards(ascending)},
                                          {"from outside in", outsideIn},
                                          {"from inside out", backwards(outsideIn)},
                                          {"random order", inRandomOrder}};
  // Ranges of so many ports, with gaps between them.
  const auto ranges = [](std::size_t length, std::size_t gap) {
    return [=](auto rank, auto) {
      const std::size_t start = rank * (length + gap) + 1;
      return std::to_string(start) + "-" + std::to_string(start + length - 1) + ",";
    };
  };
  std::string ports;
  for (int port = 1; port <= 65535; ++port) ports += std::to_string(port) + ",";
  operations.push_back(varied("port list, ranges", 14, portList(ranges(2, 1)), orders));
  operations.push_back(
      varied("port list, all ports, then ranges", 14, portList(ranges(16, 0), ports), orders));
  // Each port comes twice: alone, and as a range.
  const auto twice = [ranges](std::size_t rank, std::size_t count) {
    const std::size_t half = std::min<std::size_t>(count / 2, 65535);
    return rank < half ? std::to_string(rank + 1) + "," : ranges(1, 0)(rank - half, count);
  };
  const auto rangesFirst = [](std::size_t count) {
    Numbers numbers = ascending(count);
    const auto half = static_cast<std::ptrdiff_t>(std::min<std::size_t>(count / 2, 65535));
    std::rotate(numbers.begin(), numbers.begin() + half, numbers.end());
    return numbers;
  };
  operations.push_back(varied("port list, ports and ranges of one port", 10, portList(twice),
                              {{"the ranges first", rangesFirst},
                               {"the ports first", ascending},
                               {"the other way round", backwards(ascending)},
                               {"random order", inRandomOrder}}));
  const auto around = [](auto rank, auto) {
    return std::to_string(1000000 - rank) + "-" + std::to_string(1000000 + rank) + ",";
  };
  operations.push_back(varied("port list, nested ranges", 15, portList(around),
                              {{"each in the one before", backwards(ascending)},
                               {"each around the one before", ascending},
                               {"random order", inRandomOrder}}));

  // Groups that ascend by application and address.
  const auto groups = [](std::size_t perApplication) {
    return [=](auto rank, auto count) {
      const std::size_t length = perApplication == 0 ? count / 2 : perApplication;
      return "UPID=" + padded(rank / length, 6) + "\nIPv4=" + padded(rank + 1, 7) + "\n;\n";
    };
  };
  constexpr std::size_t kSize = 27;
  constexpr std::size_t kOne = ~std::size_t{0};
  operations.push_back(
      varied("application section, addresses", kSize,
             reading<OrvaneApplication>(&OrvaneApplication::setSection, groups(kOne)), orders));
  operations.push_back(varied("mapping section, addresses of one application", kSize,
                              mappingSection(groups(kOne)), orders));
  for (const std::size_t length : {std::size_t{0}, std::size_t{16}}) {
    const Order turns = [=](auto count) {
      return inTurns(count, length == 0 ? 2 : count / length);
    };
    std::vector<NamedOrder> more = orders;
    more.emplace_back("in turns, ascending", turns);
    more.emplace_back("in turns, descending", backwards(turns));
    operations.push_back(
        varied(length == 0 ? "mapping section, two applications" : "mapping section, many", kSize,
               mappingSection(groups(length)), more));
  }
  const auto tree = [](const Numbers& upids) -> Run {
    OrvaneUpidArray nodes;
    for (const unsigned int upid : upids) nodes.emplace_back().setUpid(upid);
    std::string buffer(36 + upids.size() * sizeof(UPID_TREE_NODE_S), '\0');
    for (std::size_t i = 0; i < 4; ++i) buffer[i] = static_cast<char>(upids.size() >> 8 * i);
    nodes.getBufferChecked(std::span(buffer).subspan(36));
    return [buffer] {
      auto read = std::make_shared<OrvaneUpidTree>();
      read->setBufferChecked(buffer);
      return read;
    };
  };
  std::vector<NamedOrder> upids = orders;
  upids.emplace_back("one UPID", [](auto count) { return Numbers(count, 7); });
  operations.push_back(varied("tree buffer", sizeof(UPID_TREE_NODE_S), tree, upids));
}

// Lines of one section, with a number and a hundred letters in key or value.
Operation sectionStore() {
  const auto lines = [](const Piece& line) {
    return [line](auto count) {
      return reading<OrvaneIni>(&OrvaneIni::setSection, line, "", ";\n")(inRandomOrder(count));
    };
  };
  const std::string letters(100, 'x');
  const auto mixed = [letters](auto rank) {
    std::string key = letters;
    for (std::size_t i = 0; i < 32; ++i) {
      if ((splitMix(rank) >> i & 1) != 0) key[3 * i] = 'X';
    }
    return key;
  };
  return {"section store, keys of one section",
          112,
          {{"short", "",
            lines([=](auto rank, auto) { return padded(rank, 10) + "=" + letters + "\n"; })},
           {"long, and differ at their ends", "short",
            lines([=](auto rank, auto) { return letters + padded(rank, 10) + "=\n"; })},
           {"long, and in mixed letter case", "short",
            lines([=](auto rank, auto) { return mixed(rank) + padded(rank, 10) + "=\n"; })},
           {"short and all one", "",
            lines([=](auto, auto) { return padded(1, 10) + "=" + letters + "\n"; })},
           {"long and all one but for letter case", "short and all one",
            lines([=](auto rank, auto) { return mixed(rank) + padded(1, 10) + "=\n"; })}}};
}

}  // namespace
}  // namespace bench

std::vector<bench::Operation> bench::operations() {
  std::vector<Operation> operations;
  addKeyed(operations);
  operations.push_back(updateNew());
  addOrdered(operations);
  operations.push_back(sectionStore());
  return operations;
}

void bench::measureNameless(bool large) {
  std::cout << "\n| groups without any key | number, million | ns a group |\n|---|---|---|\n";
  for (std::string group : {";\n", "A=\n;\n"}) {
    for (const double millions : {0.5, 2.0, 8.0}) {
      if (millions > 2 && !large) continue;
      const auto count = static_cast<std::size_t>(millions * 1e6);
      const Run run = mappingSection([&](auto, auto) { return group; })(Numbers(count));
      double took = std::numeric_limits<double>::infinity();
      for (int round = 0; round < 3 && (round == 0 || took < 1); ++round) {
        const auto start = Clock::now();
        const auto made = run();
        took = std::min(took, since(start));
      }
      std::cout << "| " << (group.size() > 2 ? "an unknown key" : "nothing") << " | " << millions
                << " | " << took * 1e9 / static_cast<double>(count) << " |\n"
                << std::flush;
    }
  }
}
