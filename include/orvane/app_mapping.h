#ifndef ORVANE_APP_MAPPING_H_
#define ORVANE_APP_MAPPING_H_

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "orvane/application.h"
#include "orvane/export.h"
#include "orvane/findings.h"

/// The collection of all applications of a configuration, in the order in which they came; walk,
/// index and size it as the vector that it is.
///
/// The key of an application is its UPID, or, for a new application (kOrvaneNoUpid), its
/// identifier, which is looked up among all applications, those with a UPID included. Nothing keeps
/// keys unique; every look-up takes the first match in order.
///
/// Operations that return OrvaneApplication* return the end position when nothing matches; compare
/// it with end(). Pointers hold until the collection next changes.
///
/// A mapping section text is the section texts of the applications one after the other (see
/// OrvaneApplication). An operation that returns one returns a text of its own, one per operation
/// for the whole process. It is never null and holds until that operation runs again. It runs the
/// operation of the same name for each application, so it replaces that one's text, and those that
/// it replaces, too. Its append twin adds the same text to the end of a caller's string instead and
/// touches nothing else.
///
/// Several threads may use collections of their own at once, and one while none changes it, except
/// for the operations that return a text, whose calls must be serialised with each other, that of
/// getSection(buffer) included.
///
/// When memory runs out, std::bad_alloc leaves the operation, and nothing has changed: neither the
/// collections, nor what a twin appends to; only texts that operations return may be empty.
class ORVANE_EXPORT OrvaneAppMapping : public std::vector<OrvaneApplication> {
 public:
  OrvaneAppMapping() = default;

  /// Copies every application, identifiers included.
  OrvaneAppMapping(const OrvaneAppMapping&) = default;
  OrvaneAppMapping(OrvaneAppMapping&&) noexcept = default;
  OrvaneAppMapping& operator=(const OrvaneAppMapping& other) {
    if (this != &other) *this = OrvaneAppMapping(other);
    return *this;
  }
  OrvaneAppMapping& operator=(OrvaneAppMapping&&) noexcept = default;

  virtual ~OrvaneAppMapping();

  /// @name Adding and removing
  /// @{

  /// Merges the items of `application` into the application with its key (see
  /// OrvaneApplication::update(); the other fields of that one stay), or appends a copy.
  void add(const OrvaneApplication& application);

  /// The same as add().
  void update(const OrvaneApplication& application) { add(application); }

  /// Appends a copy whatever its key; returns the copy.
  OrvaneApplication* addEx(const OrvaneApplication& application);

  /// Reads an application record (see OrvaneApplication::setValues()). If the collection holds its
  /// UPID, the item is added to that application, whose fields stay and which moves to the end;
  /// otherwise an application with the record's fields and category 0 is appended. A null record,
  /// or one whose first byte is 0, changes nothing. REQUIRES: `record` holds eight NULs; it is read
  /// up to the eighth.
  void add(const unsigned char* record);

  /// add(record) that stays inside `record`: false, and nothing changes, when the eighth NUL is
  /// missing there. Bytes after it are ignored.
  bool addChecked(std::span<const unsigned char> record);

  /// addChecked() that adds what it finds to `findings` (see
  /// OrvaneApplication::setValuesReported()), among it the fields that are ignored since the
  /// application is there.
  bool addReported(std::span<const unsigned char> record, OrvaneFindings& findings);

  /// Removes the application if it is new; otherwise gives it action 2. Null and the end position
  /// change nothing.
  /// REQUIRES: `application` points into this collection otherwise.
  void setDeleted(OrvaneApplication* application);

  /// Removes the application that `application` points to. Null and the end position change
  /// nothing. REQUIRES: `application` points into this collection otherwise.
  void remove(const OrvaneApplication* application);

  /// Removes the application with the key of `application`, if there is one.
  void remove(const OrvaneApplication& application);

  /// Moves every new application of `other` that has two or more items into this collection, as
  /// add() does, in order. A collection given to itself changes nothing.
  void removeNew(OrvaneAppMapping& other);

  /// For each application A of this collection, in order: the first application of `other` with A's
  /// name, category and selector type gets A's UPID and action 4, and loses its item with the
  /// address of A's first item.
  void updateNew(OrvaneAppMapping& other) const;

  /// Orders the applications by name, as bytes.
  void sortByName();

  /// Orders the applications by UPID, those with one UPID by name, as bytes, and those with one
  /// name too by their items: by address, then ports, then the ends of the ranges. Applications
  /// that nothing of this tells apart keep their order.
  void sortByUpid();
  /// @}

  /// @name Looking up
  /// @{

  /// By UPID.
  OrvaneApplication* find(unsigned int upid);
  const OrvaneApplication* find(unsigned int upid) const;

  /// By identifier.
  OrvaneApplication* findId(int id);
  const OrvaneApplication* findId(int id) const;

  /// By name (a NUL-terminated text, letter case counts), category and selector type. A null name
  /// finds nothing.
  OrvaneApplication* find(const char* name, tagApMCategory category, tagSelectorType type);
  const OrvaneApplication* find(const char* name, tagApMCategory category,
                                tagSelectorType type) const;

  /// The number of items of all applications of that selector type.
  int getCount(tagSelectorType type) const;
  /// @}

  /// @name Section texts
  /// Each operation that returns one with its append twin.
  /// @{

  /// The section texts of all applications.
  char* getSection(bool closeGroups) const;
  void appendSection(std::string& to, bool closeGroups) const;

  /// Copies the text of getSection(true) and its NUL into `buffer` and returns the number of
  /// characters without the NUL; a null buffer gives 0.
  /// REQUIRES: room for the whole text and its NUL.
  unsigned int getSection(char* buffer) const;

  /// getSection(buffer) that stays inside `buffer`: nothing, and nothing is written, when the room
  /// is too small for the text and its NUL. Replaces no text.
  [[nodiscard]] std::optional<std::size_t> getSectionChecked(std::span<char> buffer) const;

  /// The initial sections of all applications.
  char* getInitialSection() const;
  void appendInitialSection(std::string& to) const;

  /// The add-new sections of all applications.
  char* getAddNewSection(bool closeGroups) const;
  void appendAddNewSection(std::string& to, bool closeGroups) const;

  /// The changes from this collection, the old state, to `newer`. Applications are compared by UPID
  /// and, for equal UPIDs, by OrvaneApplication::lexItemsLess(), in one walk over both collections
  /// as they are stored: sortByUpid() both for the difference of two sets. (OrvaneComparison takes
  /// them in any order, and tells several new applications apart.)
  ///
  /// An old application that differs and has an action other than 0 writes its section with action
  /// 3 followed by that of the first differing newer application of the same UPID with action 4,
  /// or, when there is none, its delete section. Then each differing newer application with action
  /// 1 that was not paired writes its section, with action 4 if its category is 1. Neither
  /// collection changes.
  char* getUpdatedSection(const OrvaneAppMapping& newer, bool closeGroups) const;
  void appendUpdatedSection(std::string& to, const OrvaneAppMapping& newer, bool closeGroups) const;

  /// Replaces the applications by those of a mapping section text, NUL-terminated or a view; a null
  /// or empty text leaves none. Each closed group gives a default application with one item (see
  /// OrvaneApplication::setSection()), which is added as add() does: so the groups of one UPID, or
  /// of one GroupID without UPID, are united under the fields of the first. A group with neither
  /// gives an application of its own, with an identifier that none before it has, counted up from
  /// one that is drawn. Pairs after the last terminator line are dropped.
  void setSection(const char* text);
  void setSection(std::string_view text);

  /// setSection(text) that adds to `findings` what is dropped, ignored, cut, merged or read as
  /// something else than it seems to be, by line: a text without any is read whole. Where groups
  /// contradict each other, what the first of the application says holds.
  void setSectionReported(std::string_view text, OrvaneFindings& findings);
  /// @}
};

/// Compares what a look-up returned with a position of the collection:
/// `mapping.find(7) == mapping.end()`.
inline bool operator==(const OrvaneApplication* application,
                       std::vector<OrvaneApplication>::const_iterator position) {
  return application == std::to_address(position);
}

#endif  // ORVANE_APP_MAPPING_H_
