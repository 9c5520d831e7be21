#include "apps/group_writer.h"

#include "apps/application_fields.h"

namespace orvane {
namespace {

void appendKey(std::string& out, ApplicationField key) {
  out.append(kApplicationKeys[key]).push_back('=');
}

template <typename Number>
void appendNumberLine(std::string& out, ApplicationField key, Number number) {
  appendKey(out, key);
  appendNumber(out, number);
  out.push_back('\n');
}

}  // namespace

void GroupWriter::appendItem(const OrvaneApplication& application, const OrvanePortMapping& item,
                             tagActionType action) {
  appendKey(out_, kPortRange);
  wroteList_ = true;
  listBegin_ = out_.size();
  appendPortList(out_, item);
  listLength_ = out_.size() - listBegin_;
  if (const OrvanePortRange* range = lastRangeOf(item)) lastRange_ = range;
  out_.push_back('\n');
  appendFields(application, item, action);
}

void GroupWriter::appendPort(const OrvaneApplication& application, const OrvanePortMapping& item,
                             unsigned short port, tagActionType action) {
  appendNumberLine(out_, kPortRange, port);
  appendFields(application, item, action);
}

void GroupWriter::close(const OrvaneApplication& application) {
  if (!closeGroups_) return;
  appendNumberLine(out_, kGroupId, application.getID());
  terminate();
}

void GroupWriter::terminate() {
  if (closeGroups_) out_.append(";\n");
}

void GroupWriter::publish() const {
  if (!wroteList_) return;
  const std::string_view text = out_;
  publishPortList(text.substr(listBegin_, listLength_), lastRange_);
}

void GroupWriter::appendFields(const OrvaneApplication& application, const OrvanePortMapping& item,
                               tagActionType action) {
  appendKey(out_, kIPv4);
  if (item.ip.address != 0) appendNumber(out_, item.ip.address);
  out_.push_back('\n');
  appendNumberLine(out_, kAction, static_cast<int>(action));
  appendNumberLine(out_, kSelectorType, static_cast<int>(application.type));
  appendNumberLine(out_, kUpid, application.upid);
  appendKey(out_, kApplName);
  out_.append(nameOf(application)).push_back('\n');
  appendNumberLine(out_, kUniqueBlockNumber, item.uniqueBlockNumber);
  appendNumberLine(out_, kSelectorTypeInfo, static_cast<int>(item.selectorInfo));
}

}  // namespace orvane
