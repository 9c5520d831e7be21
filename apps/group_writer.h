// Writing the groups of section texts.

#ifndef ORVANE_APPS_GROUP_WRITER_H_
#define ORVANE_APPS_GROUP_WRITER_H_

#include <cstddef>
#include <string>
#include <string_view>

#include "orvane/application.h"
#include "ports/text.h"

namespace orvane {

// Writes groups to a text. The result strings of the port list operations, which each port list
// written replaces, are set once, at the end.
class GroupWriter {
 public:
  GroupWriter(std::string& text, bool closeGroups) : out_(text), closeGroups_(closeGroups) {}
  GroupWriter(const GroupWriter&) = delete;
  GroupWriter& operator=(const GroupWriter&) = delete;

  // A group with the port list of the item, and one with a single port of it.
  void appendItem(const OrvaneApplication& application, const OrvanePortMapping& item,
                  tagActionType action);
  void appendPort(const OrvaneApplication& application, const OrvanePortMapping& item,
                  unsigned short port, tagActionType action);

  // When groups are closed: the GroupID and the terminator line, or the terminator line alone.
  void close(const OrvaneApplication& application);
  void terminate();

  std::size_t size() const { return out_.size(); }
  std::string_view view(std::size_t begin, std::size_t end) const { return out_.view(begin, end); }

  // Finishes the text and sets those result strings; to be called last.
  void publish();

 private:
  TextBuilder out_;
  bool closeGroups_;
  bool wroteList_ = false;
  std::size_t listBegin_ = 0;
  std::size_t listEnd_ = 0;
  const OrvanePortRange* lastRange_ = nullptr;
};

// The texts of one application, appended.
void appendSection(GroupWriter& writer, const OrvaneApplication& application, tagActionType action);
void appendInitialSection(GroupWriter& writer, const OrvaneApplication& application);
void appendAddNewSection(GroupWriter& writer, const OrvaneApplication& application);
void appendDeleteSection(GroupWriter& writer, const OrvaneApplication& application);

// The result strings of the operations of OrvaneApplication that those of the collection run.
std::string& sectionText();
std::string& initialSectionText();
std::string& addNewSectionText();
std::string& deleteSectionText();

}  // namespace orvane

#endif  // ORVANE_APPS_GROUP_WRITER_H_
