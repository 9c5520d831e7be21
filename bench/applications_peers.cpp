// Operations on whole collections, by what others wrote.

#define SI_NO_CONVERSION  // it is built for plain characters
#include <SimpleIni.h>
#include <fmt/compile.h>
#include <ini.h>
#include <rapidjson/document.h>

#include <memory>
#include <unordered_map>

#include "applications_data.h"
#include "plain.h"

namespace {

std::string jsonOf(const std::vector<plain::Application>& applications) {
  std::string json = "[";
  for (const plain::Application& application : applications) {
    json += fmt::format(R"({}{{"upid":{},"id":{},"type":{},"action":{},"name":"{}","items":[)",
                        json.size() == 1 ? "" : ",", application.upid, application.id,
                        application.type, application.action, application.name);
    for (const plain::Item& item : application.items) {
      json += fmt::format(R"({}{{"address":{},"block":{},"info":{},"ports":[{}],"ranges":[)",
                          &item == application.items.data() ? "" : ",", item.address,
                          item.blockNumber, item.selectorInfo, fmt::join(item.ports, ","));
      for (const plain::Range& range : item.ranges) {
        json += fmt::format("{}[{},{}]", &range == item.ranges.data() ? "" : ",", range.start,
                            range.end);
      }
      json += "]}";
    }
    json += "]}";
  }
  return json + "]";
}

// The facts of a text: an application for each, or, when its groups are scattered, for each group.
std::vector<plain::Application> factsOf(const std::string& text, bool scattered) {
  OrvaneAppMapping mapping;
  if (!scattered) mapping.setSection(text.c_str());
  for (const std::string& group : scattered ? data::groupsOf(text) : std::vector<std::string>()) {
    OrvaneApplication application;
    application.setSection(group.c_str());
    mapping.push_back(application);
  }
  return plain::applicationsOf(mapping);
}

// The same containers as the library's, filled from a parsed document, without any check: the facts
// are of the right types. Those of one UPID are united when they are scattered.
std::vector<tagApplication> applicationsOf(const rapidjson::Document& document, bool scattered) {
  std::vector<tagApplication> applications;
  std::unordered_map<unsigned int, std::size_t> places;
  applications.reserve(document.Size());
  if (scattered) places.reserve(document.Size());
  for (const auto& fact : document.GetArray()) {
    std::size_t place = applications.size();
    if (scattered) place = places.try_emplace(fact["upid"].GetUint(), place).first->second;
    if (place == applications.size()) applications.emplace_back();
    tagApplication& application = applications[place];
    application.upid = fact["upid"].GetUint();
    application.type = static_cast<tagSelectorType>(fact["type"].GetInt());
    application.action = static_cast<tagActionType>(fact["action"].GetInt());
    const auto& name = fact["name"];
    std::memcpy(application.name, name.GetString(), name.GetStringLength());
    const auto& items = fact["items"].GetArray();
    if (!scattered) application.items.reserve(items.Size());
    for (const auto& itemFact : items) {
      OrvanePortMapping fresh;
      fresh.ip.address = itemFact["address"].GetUint();
      OrvanePortMapping& item =
          *application.items.insert(application.items.end(), std::move(fresh));
      item.uniqueBlockNumber = itemFact["block"].GetUint();
      item.selectorInfo = static_cast<tagSelectorInfo>(itemFact["info"].GetInt());
      for (const auto& port : itemFact["ports"].GetArray()) {
        item.ports.insert(item.ports.end(), static_cast<unsigned short>(port.GetUint()));
      }
      for (const auto& range : itemFact["ranges"].GetArray()) {
        item.ranges.emplace_hint(item.ranges.end(), range[0].GetUint(), range[1].GetUint());
      }
    }
  }
  return applications;
}

int countPair(void* count, const char* /*section*/, const char* /*name*/, const char* /*value*/) {
  ++*static_cast<int*>(count);
  return 1;
}

// RapidJSON is given what it needs to end with the same facts in the same containers; inih only
// counts the pairs, which no reader can avoid; SimpleIni keeps them as texts.
template <typename TextOf>
void addReading(const std::string& operation, bool scattered, TextOf textOf) {
  bench::add(operation, "RapidJSON", data::kSizes, [=](std::int64_t size) {
    return [=, json = jsonOf(factsOf(textOf(size), scattered))] {
      rapidjson::Document document;
      document.Parse(json.data(), json.size());
      return applicationsOf(document, scattered);
    };
  });
  bench::add(operation, "inih", data::kSizes, [textOf](std::int64_t size) {
    return [text = textOf(size)] {
      int count = 0;
      ini_parse_string(text.c_str(), countPair, &count);
      return count;
    };
  });
  bench::add(operation, "SimpleIni", data::kSizes, [textOf](std::int64_t size) {
    return [text = textOf(size)] {
      auto pairs = std::make_unique<CSimpleIniA>(false, true);
      pairs->LoadData(text.data(), text.size());
      return pairs;
    };
  });
}

// The library's own containers; the formats are compiled in, and there is room for each item.
char* write(char* out, const OrvaneApplication& application, const OrvanePortMapping& item) {
  auto range = item.getRanges().begin();
  const auto writeRange = [&] {
    out = fmt::format_to(out, FMT_COMPILE("{}-{},"), range->getStart(), range->getEnd());
    ++range;
  };
  out = fmt::format_to(out, FMT_COMPILE("PortRange="));
  for (const unsigned short port : item.getPorts()) {
    while (range != item.getRanges().end() && range->getStart() < port) writeRange();
    out = fmt::format_to(out, FMT_COMPILE("{},"), port);
  }
  while (range != item.getRanges().end()) writeRange();
  return fmt::format_to(out - 1,
                        FMT_COMPILE("\nIPv4={}\nAction={}\nSelectorType={}\nUPID={}\nApplName={}\n"
                                    "UniqueBlockNumber={}\nSelectorTypeInfo={}\nGroupID={}\n;\n"),
                        item.getIpAddress(), static_cast<int>(application.getAction()),
                        static_cast<int>(application.getType()), application.getUpid(),
                        plain::nameOf(application), item.getUniqueBlockNumber(),
                        static_cast<int>(item.getSelectorInfo()), application.getID());
}

void addWriting(const std::string& operation, bool anew) {
  bench::add(operation, "fmt", data::kSizes, [=](std::int64_t size) {
    return [=, mapping = workload::applications(size), kept = std::string()]() mutable {
      std::string fresh;
      std::string& text = anew ? fresh : kept;
      std::size_t length = 0;
      for (const OrvaneApplication& application : mapping) {
        for (const OrvanePortMapping& item : application.getItems()) {
          const std::size_t room = plain::roomFor(item);
          if (text.size() < length + room) text.resize(2 * text.size() + room);
          char* const end = write(text.data() + length, application, item);
          length = static_cast<std::size_t>(end - text.data());
        }
      }
      return fresh;
    };
  });
}

// Facts in plain structs, for which == is enough to find what differs, written with the floor's
// pen.
void addUpdating(const std::string& operation, std::size_t step) {
  bench::add(operation, "plain structs", data::kSizes, [=](std::int64_t size) {
    const data::States both = data::states(size, step);
    return [older = plain::applicationsOf(both.older), newer = plain::applicationsOf(both.newer),
            text = std::string()]() mutable {
      std::size_t length = 0;
      for (std::size_t i = 0; i < older.size(); ++i) {
        if (older[i] == newer[i]) continue;
        plain::appendGroups(text, length, older[i], kOrvaneActionRemove);
        plain::appendGroups(text, length, newer[i], kOrvaneActionUpdate);
      }
      return length;
    };
  });
}

}  // namespace

void bench::addPeers() {
  addReading(data::kReadTogether, false, data::together);
  addReading(data::kReadScattered, true, data::scattered);
  addWriting(data::kWritten, false);
  addWriting(data::kWrittenAnew, true);
  addUpdating(data::kUpdated5, 20);
  addUpdating(data::kUpdatedAll, 1);
}
