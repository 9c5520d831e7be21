// Writing the groups of section texts.

#ifndef ORVANE_APPS_GROUP_WRITER_H_
#define ORVANE_APPS_GROUP_WRITER_H_

#include "orvane/application.h"
#include "ports/text_out.h"

namespace orvane {

// Writes groups, which it closes or not.
class GroupWriter {
 public:
  GroupWriter(TextOut& out, bool closeGroups) : out_(out), closeGroups_(closeGroups) {}

  // A group with the port list of the item, and one with a single port of it.
  void appendItem(const OrvaneApplication& application, const OrvanePortMapping& item,
                  tagActionType action);
  void appendPort(const OrvaneApplication& application, const OrvanePortMapping& item,
                  unsigned short port, tagActionType action);

  // When groups are closed: the GroupID and the terminator line, or the terminator line alone.
  void close(const OrvaneApplication& application);
  void terminate();

 private:
  TextOut& out_;
  bool closeGroups_;
};

// The texts of one application.
void writeSection(TextOut& out, const OrvaneApplication& application, tagActionType action,
                  bool closeGroups);
void writeInitialSection(TextOut& out, const OrvaneApplication& application);
void writeAddNewSection(TextOut& out, const OrvaneApplication& application, bool closeGroups);
void writeDeleteSection(TextOut& out, const OrvaneApplication& application, bool closeGroups);

}  // namespace orvane

#endif  // ORVANE_APPS_GROUP_WRITER_H_
