#include "apps/group_writer.h"

#include "apps/application_fields.h"

namespace orvane {
namespace {

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

// Room for the keys and numbers of a group, and for a name.
constexpr std::size_t kFieldsRoom = 128 + sizeof tagApplication::name + 8 * kNumberRoom;

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
  wroteList_ = true;
  out_.putDown(pen);
  listBegin_ = out_.size();
  pen = writePortList(pen, item);
  out_.putDown(pen);
  listEnd_ = out_.size();
  if (const OrvanePortRange* range = lastRangeOf(item)) lastRange_ = range;
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
  Pen pen = out_.pen(2);
  pen.put(";\n");
  out_.putDown(pen);
}

void GroupWriter::publish() {
  out_.finish();
  if (!wroteList_) return;
  publishPortList(out_.view(listBegin_, listEnd_), lastRange_);
}

}  // namespace orvane
