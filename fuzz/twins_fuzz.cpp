// The ways to one answer: what an operation returns is what its twins append, write into a span and
// give by value, and a text reads the same NUL-terminated and as a view.

#include <orvane/orvane.h>

#include <algorithm>
#include <memory>
#include <span>
#include <vector>

#include "fuzz.h"

namespace {

// The twin appends what the operation returned, and leaves the operation's own text alone.
template <typename Append>
void agree(const std::string& returned, const char* inPlace, Append append) {
  std::string to = "before";
  append(to);
  fuzz::require(to == "before" + returned && inPlace == returned);
}

template <typename Append>
void agree(const char* returned, Append append) {
  agree(std::string(returned), returned, append);
}

template <typename Append>
void agree(const std::string& returned, Append append) {
  agree(std::string(returned), returned.c_str(), append);
}

template <typename Object>
Object read(std::string_view text) {
  Object object;
  object.setSection(text);
  return object;
}

void checkRange(const OrvanePort& port) {
  agree(port.getRange(), [&](auto& to) { port.appendRange(to); });
  agree(port.getPortStr(), [&](auto& to) { port.appendPortStr(to); });
  agree(port.getText(), [&](auto& to) { port.appendText(to); });
}

void checkItem(const OrvanePortMapping& item, const OrvanePortMapping& other) {
  agree(item.getPortsAsString(), [&](auto& to) { item.appendPorts(to); });
  agree(item.getIpAsString(), [&](auto& to) { item.appendIp(to); });
  agree(item.getMappingAsString(), [&](auto& to) { item.appendMapping(to); });
  agree(item.getDiffAsString(other), [&](auto& to) { item.appendDiff(to, other); });
  const auto& ports = item.getPorts();
  agree(OrvanePortMapping::PortArrayToString(ports),
        [&](auto& to) { OrvanePortMapping::appendPortArray(to, ports); });
}

void checkApplication(const OrvaneApplication& one, const OrvaneApplication& other, bool close) {
  agree(one.getSection(close), [&](auto& to) { one.appendSection(to, close); });
  agree(one.getInitialSection(), [&](auto& to) { one.appendInitialSection(to); });
  agree(one.getAddNewSection(close), [&](auto& to) { one.appendAddNewSection(to, close); });
  agree(one.getDeleteSection(close), [&](auto& to) { one.appendDeleteSection(to, close); });
  agree(one.getUpdatedSection(other, close),
        [&](auto& to) { one.appendUpdatedSection(to, other, close); });
  if (!one.getItems().empty() && !other.getItems().empty()) {
    checkItem(one.getItems().front(), other.getItems().back());
  }
}

void checkMapping(const OrvaneAppMapping& one, const OrvaneAppMapping& other, bool close) {
  agree(one.getSection(close), [&](auto& to) { one.appendSection(to, close); });
  agree(one.getInitialSection(), [&](auto& to) { one.appendInitialSection(to); });
  agree(one.getAddNewSection(close), [&](auto& to) { one.appendAddNewSection(to, close); });
  agree(one.getUpdatedSection(other, close),
        [&](auto& to) { one.appendUpdatedSection(to, other, close); });
  const std::string text = one.getSection(true);
  const auto room = std::make_unique<char[]>(text.size() + 1);
  fuzz::require(one.getSection(room.get()) == text.size() && room.get() == text);
  fuzz::require(one.getSectionChecked({room.get(), text.size() + 1}) == text.size());
  fuzz::require(room.get() == text && !one.getSectionChecked({room.get(), text.size()}));
  for (std::size_t i = 0; i < std::min(one.size(), other.size()); ++i) {
    checkApplication(one[i], other[i], close);
  }
}

void checkCatalogue(std::string_view text, const OrvaneAppMapping& mapping, bool close) {
  auto catalogue = read<OrvaneAppInfoArray>(text);
  const OrvaneIni ini(text);
  for (int i = 0; i < static_cast<int>(catalogue.size()); ++i) {  // it has as many sections
    agree(ini.getSection(i, close), [&](auto& to) { ini.appendSection(to, i, close); });
  }
  std::vector<unsigned int> upids = {0, 7};
  for (const OrvaneAppInfo& entry : catalogue) {
    upids.insert(upids.begin(), entry.getUPID());
    agree(entry.getSection(close), [&](auto& to) { entry.appendSection(to, close); });
    agree(entry.getPorts(), [&](auto& to) { entry.appendPorts(to); });
    agree(entry.getEnumPorts(), [&](auto& to) { entry.appendEnumPorts(to); });
    for (const OrvanePort& port : entry.getPortSet()) checkRange(port);
  }
  agree(catalogue.getSection(close), [&](auto& to) { catalogue.appendSection(to, close); });
  agree(catalogue.getSection(upids, close),
        [&](auto& to) { catalogue.appendSection(to, upids, close); });
  OrvaneAppInfoArray other(catalogue);  // applications are added to both
  agree(catalogue.getAppMappingSection(mapping, upids, close),
        [&](auto& to) { other.appendAppMappingSection(to, mapping, upids, close); });
  agree(catalogue.getMergedAppMappingSection(mapping, upids, close),
        [&](auto& to) { catalogue.appendMergedAppMappingSection(to, mapping, upids, close); });
  agree(catalogue.getPorts(), [&](auto& to) { catalogue.appendPorts(to); });
}

// A text that is followed by nothing, or by its NUL.
template <typename Read>
void readAlike(std::string_view text, Read read) {
  fuzz::require(read(text) == read(std::string(text).c_str()));
}

void checkReaders(std::string_view text) {
  readAlike(text, [](auto list) {
    OrvanePortMapping item;
    item.setPorts(list);
    item.setIp(list);
    item.setUniqueBlockNumber(list);
    item.setSelectorInfo(list);
    OrvanePortCounter counter;
    counter.add(list);
    counter.addSocket(7, list);
    counter.remove(OrvanePortRange(list).getRange());
    agree(counter.toString(), [&](auto& to) { counter.appendText(to); });
    return item.getMappingAsString() + counter.toString();
  });
  readAlike(text, [](auto list) {
    OrvaneApplication application;
    application.setUpid(list);
    application.setType(list);
    application.setAction(list);
    application.setAppCategory(list);
    application.setName(list);
    application.setID(0);
    OrvaneAppInfo entry;
    entry.setPorts(list);
    entry.setFQN(list);
    application.addItem({});
    return std::string(application.getSection(true)) + entry.getSection(true) +
           OrvanePort(list).getText();
  });
  readAlike(text, [](auto section) {
    OrvaneAppInfo entry;
    entry.setSection(section);
    return entry.getSection(true) + std::to_string(OrvanePortRange::isRange(section));
  });
  const std::string list(text);
  agree(OrvanePortMapping::sortPorts(list.c_str()),
        [&](auto& to) { OrvanePortMapping::appendSortedPorts(to, text); });
  for (const tagParseType type : {kOrvaneParsePorts, kOrvaneParseRanges}) {
    agree(OrvanePortMapping::parse(type, list.c_str()),
          [&](auto& to) { OrvanePortMapping::appendParsed(to, type, text); });
  }
  checkRange(OrvanePort(text));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view whole = fuzz::viewOf(data, size);
  checkReaders(whole);
  const std::string_view first = whole.substr(0, whole.find('\xFF'));
  const std::string_view second = whole.substr(std::min(first.size() + 1, whole.size()));
  const bool close = size % 2 == 0;
  const auto mapping = read<OrvaneAppMapping>(first);
  checkMapping(mapping, read<OrvaneAppMapping>(second), close);
  checkCatalogue(second.empty() ? first : second, mapping, close);
  return 0;
}
