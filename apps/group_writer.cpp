#include "apps/group_writer.h"

#include <string_view>

#include "apps/application_fields.h"
#include "ports/port_list.h"

namespace orvane {
namespace {

// Room for all lines of a group but for the port list: keys, numbers, a name, and the terminator.
constexpr std::size_t fieldsRoom() {
  std::size_t room = sizeof tagApplication::name + sizeof ";\n";
  for (const std::string_view key : kApplicationKeys) {
    room += key.size() + sizeof "=\n" + kNumberRoom;
  }
  return room;
}

constexpr std::size_t kFieldsRoom = fieldsRoom();

Pen writeKey(Pen pen, ApplicationField key) {
  pen.put(kApplicationKeys[key]);
  pen.put('=');
  return pen;
}

template <typename Number>
Pen writeNumberLine(Pen pen, ApplicationField key, Number number) {
  pen = writeKey(pen, key);
  pen.putNumber(number);
  pen.put('\n');
  return pen;
}

Pen writeFields(Pen pen, const OrvaneApplication& application, const OrvanePortMapping& item,
                tagActionType action) {
  pen = writeKey(pen, kIPv4);
  if (item.ip.address != 0) pen.putNumber(item.ip.address);
  pen.put('\n');
  pen = writeNumberLine(pen, kAction, static_cast<int>(action));
  pen = writeNumberLine(pen, kSelectorType, static_cast<int>(application.type));
  pen = writeNumberLine(pen, kUpid, application.upid);
  pen = writeKey(pen, kApplName);
  pen.put(nameOf(application));
  pen.put('\n');
  pen = writeNumberLine(pen, kUniqueBlockNumber, item.uniqueBlockNumber);
  return writeNumberLine(pen, kSelectorTypeInfo, static_cast<int>(item.selectorInfo));
}

}  // namespace

void GroupWriter::appendItem(const OrvaneApplication& application, const OrvanePortMapping& item,
                             tagActionType action) {
  Pen pen = writeKey(out_.pen(kFieldsRoom + portListRoom(item)), kPortRange);
  pen = writePortList(out_, pen, item);
  pen.put('\n');
  out_.putDown(writeFields(pen, application, item, action));
}

void GroupWriter::appendPort(const OrvaneApplication& application, const OrvanePortMapping& item,
                             unsigned short port, tagActionType action) {
  const Pen pen = writeNumberLine(out_.pen(kFieldsRoom), kPortRange, port);
  out_.putDown(writeFields(pen, application, item, action));
}

void GroupWriter::close(const OrvaneApplication& application) {
  if (!closeGroups_) return;
  out_.putDown(writeNumberLine(out_.pen(kFieldsRoom), kGroupId, application.getID()));
  terminate();
}

void GroupWriter::terminate() {
  if (!closeGroups_) return;
  Pen pen = out_.pen(sizeof ";\n");
  pen.put(std::string_view(";\n"));
  out_.putDown(pen);
}

void writeSection(TextOut& out, const OrvaneApplication& application, tagActionType action,
                  bool closeGroups) {
  const std::size_t begin = out.size();
  GroupWriter writer(out, closeGroups);
  for (const OrvanePortMapping& item : application.items) {
    writer.appendItem(application, item, action);
    writer.close(application);
  }
  out.note(Result::kSection, begin);
}

void writeInitialSection(TextOut& out, const OrvaneApplication& application) {
  const std::size_t begin = out.size();
  GroupWriter writer(out, false);
  for (const OrvanePortMapping& item : application.items) {
    writer.appendItem(application, item, kOrvaneActionInitial);
  }
  out.note(Result::kInitialSection, begin);
}

void writeAddNewSection(TextOut& out, const OrvaneApplication& application, bool closeGroups) {
  const std::size_t begin = out.size();
  if (!application.items.empty()) {
    GroupWriter writer(out, closeGroups);
    writer.appendItem(application, application.items.front(), kOrvaneActionAdd);
    writer.close(application);
  }
  out.note(Result::kAddNewSection, begin);
}

void writeDeleteSection(TextOut& out, const OrvaneApplication& application, bool closeGroups) {
  const std::size_t begin = out.size();
  GroupWriter writer(out, closeGroups);
  for (const OrvanePortMapping& item : application.items) {
    const bool last = item == application.items.back();
    writer.appendItem(application, item, last ? kOrvaneActionDelete : kOrvaneActionRemove);
    writer.close(application);
  }
  out.note(Result::kDeleteSection, begin);
}

}  // namespace orvane
