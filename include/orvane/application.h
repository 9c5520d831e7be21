#ifndef ORVANE_APPLICATION_H_
#define ORVANE_APPLICATION_H_

#include <concepts>
#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "orvane/export.h"
#include "orvane/findings.h"
#include "orvane/port_mapping.h"
#include "orvane/sorted_vector.h"

namespace orvane {
struct ApplicationAccess;
}

/// The UPID of an application that has none assigned yet: a new application.
inline constexpr unsigned int kOrvaneNoUpid = 0xFFFFFFFF;

/// The selector type of an application; any 32-bit value is carried.
enum tagSelectorType : int {
  kOrvaneSelectorTypeDefault = 1,
};

/// What a section text says is to be done with an application or item.
enum tagActionType : int {
  kOrvaneActionNone = 0,     ///< default; the updated section of a mapping leaves out what is gone
                             ///< or new with it
  kOrvaneActionAdd = 1,      ///< a new application
  kOrvaneActionDelete = 2,   ///< withdraw the last item and with it the application
  kOrvaneActionRemove = 3,   ///< withdraw an item, or an old state
  kOrvaneActionUpdate = 4,   ///< a new state
  kOrvaneActionInitial = 5,  ///< announced by an initial section
};

/// The category of an application. Reading an item sets it from the item's selector info.
enum tagApMCategory : int {
  kOrvaneCategory0 = 0,
  kOrvaneCategory1 = 1,
};

/// The items of an application: ascending by address, one per address.
using OrvaneItems = sorted_vector<OrvanePortMapping, true, std::less<OrvanePortMapping>>;

/// The plain record of an application.
struct ORVANE_EXPORT tagApplication {
  tagApplication() = default;

  /// Copies every field. Assignment is done or, when memory runs out, not done.
  tagApplication(const tagApplication&) = default;
  tagApplication(tagApplication&&) noexcept = default;
  tagApplication& operator=(const tagApplication& other) {
    if (this != &other) *this = tagApplication(other);
    return *this;
  }
  tagApplication& operator=(tagApplication&&) noexcept = default;
  ~tagApplication() = default;

  unsigned int upid = kOrvaneNoUpid;                  ///< protocol identifier
  OrvaneItems items;                                  ///< what it uses on which addresses
  tagSelectorType type = kOrvaneSelectorTypeDefault;  ///< chosen by the caller
  char name[32] = {};                                 ///< NUL-terminated, at most 31 characters
  tagActionType action = kOrvaneActionNone;           ///< what a device is to do
  tagApMCategory appCategory = kOrvaneCategory0;      ///< as the items' selector info says
};

/// A network application: a UPID, a selector type, a name, an action code, a category, and the
/// items that say which ports it uses on which IPv4 addresses.
///
/// A section text holds one group of key=value lines per item, each line ended by "\n": PortRange,
/// IPv4 (a decimal number, nothing for no address), Action, SelectorType, UPID, ApplName,
/// UniqueBlockNumber, SelectorTypeInfo, and, when groups are closed, GroupID (the identifier) and
/// the terminator line ";". The application's own fields are repeated in every group.
///
/// An operation that returns a text returns one of its own, one per operation for the whole
/// process. It is never null and holds until that operation runs again for any application, also
/// within another operation. Where it writes a port list it replaces the texts of
/// OrvanePortMapping::getPortsAsString(), sortPorts() and OrvanePortRange::getRange() too. Its
/// append twin adds the same text to the end of a caller's string instead and touches nothing else.
///
/// Several threads may make applications at once, and use one while none changes it, except for the
/// operations that return a text, whose calls must be serialised.
///
/// When memory runs out, std::bad_alloc leaves the operation, and nothing has changed, neither the
/// application nor what a twin appends to; only texts that operations return may be empty.
class ORVANE_EXPORT OrvaneApplication : public tagApplication {
 public:
  /// The keys of a section text, in the order given above, without GroupID. They are for reading:
  /// changing them changes neither what is written nor what is recognised.
  static char* key_names[8];

  /// No UPID, selector type 1, no name, action 0, category 0, no items, list index -1 and a fresh
  /// identifier: getUniqueID() + 2000.
  OrvaneApplication();

  /// Copies every field, the identifier and the items' own fields included.
  OrvaneApplication(const OrvaneApplication&) = default;
  OrvaneApplication(OrvaneApplication&&) noexcept = default;
  OrvaneApplication& operator=(const OrvaneApplication&) = default;
  OrvaneApplication& operator=(OrvaneApplication&&) noexcept = default;

  virtual ~OrvaneApplication();

  /// @name Fields
  /// Give the field of their name. References and pointers point into the application and hold as
  /// long as it lives.
  /// @{
  unsigned int getUpid() const { return upid; }
  tagSelectorType getType() const { return type; }
  char* getName() { return name; }
  const char* getName() const { return name; }
  tagActionType getAction() const { return action; }
  tagApMCategory getAppCategory() const { return appCategory; }
  OrvaneItems& getItems() { return items; }
  const OrvaneItems& getItems() const { return items; }
  int getListIndex() const { return listIndex; }
  int getID() const { return id; }

  /// Set the field of their name. (A plain 0 is a number, not a null text.)
  void setUpid(unsigned int value) { upid = value; }
  template <std::integral Number>
  void setUpid(Number value) {
    upid = static_cast<unsigned int>(value);
  }
  void setType(tagSelectorType value) { type = value; }
  template <std::integral Number>
  void setType(Number value) {
    type = static_cast<tagSelectorType>(value);
  }
  void setAction(tagActionType value) { action = value; }
  template <std::integral Number>
  void setAction(Number value) {
    action = static_cast<tagActionType>(value);
  }
  void setAppCategory(tagApMCategory value) { appCategory = value; }
  template <std::integral Number>
  void setAppCategory(Number value) {
    appCategory = static_cast<tagApMCategory>(value);
  }
  void setListIndex(int index) { listIndex = index; }
  void setID(int value) { id = value; }

  /// Numbers are read from texts, NUL-terminated or views, as decimals: leading white space, a
  /// sign, digits modulo 2^32, the rest ignored; 0 when there are no digits. A null text changes
  /// nothing.
  void setUpid(const char* text);
  void setUpid(std::string_view text);
  void setUpid(std::nullptr_t) = delete;
  void setType(const char* text);
  void setType(std::string_view text);
  void setType(std::nullptr_t) = delete;
  void setAction(const char* text);
  void setAction(std::string_view text);
  void setAction(std::nullptr_t) = delete;
  void setAppCategory(const char* text);
  void setAppCategory(std::string_view text);
  void setAppCategory(std::nullptr_t) = delete;

  /// Takes the first 31 characters of a text, NUL-terminated or a view; a null one changes nothing.
  void setName(const char* text);
  void setName(std::string_view text);
  void setName(std::nullptr_t) = delete;

  /// key_names, as bytes.
  static unsigned char** getKeyNames();

  /// A fresh number: the time in seconds + 1024 * the low 15 bits of rand(), modulo 2^32. The first
  /// call in the process seeds the generator with srand(). Uniqueness is not checked. Several
  /// threads may call it at once.
  static unsigned int getUniqueID();
  /// @}

  /// @name Records and items
  /// Item pointers hold until the items next change.
  /// @{

  /// Reads an application record: eight NUL-terminated texts back to back (port list, address,
  /// action, selector type, UPID, name, block number, selector info). The application's fields are
  /// set (an empty text gives 0 or the empty name; the category is 1 when the selector info is 2 or
  /// more, else 0), and the item is added as addItem() does. A null record, or one whose first byte
  /// is 0, changes nothing.
  /// REQUIRES: `record` holds eight NULs; it is read up to the eighth.
  void setValues(const unsigned char* record);

  /// setValues() that stays inside `record`: false, and nothing changes, when the eighth NUL is
  /// missing there. Bytes after it are ignored.
  bool setValuesChecked(std::span<const unsigned char> record);

  /// setValuesChecked() that adds what it finds to `findings`: what is wrong with the record as a
  /// whole, with its values, and what of its item is ignored since there is one with its address.
  /// Findings about records have no line.
  bool setValuesReported(std::span<const unsigned char> record, OrvaneFindings& findings);

  /// Adds the ports and then the ranges of `item` to the item with its address (plain insertion,
  /// see OrvanePortMapping::addPorts() and addRanges(); its other fields stay), or inserts a copy.
  /// Returns the item held.
  OrvanePortMapping* addItem(const OrvanePortMapping& item);

  /// Removes the item with the address of `item`, if there is one.
  void deleteItem(const OrvanePortMapping& item);

  /// Adds the single ports, not the ranges, of `item` to the item with its address, or inserts a
  /// copy. Returns the item held.
  OrvanePortMapping* updateItem(const OrvanePortMapping& item);

  /// The last item with that item id; getItems().end() when there is none.
  OrvanePortMapping* findItemId(int itemId);
  const OrvanePortMapping* findItemId(int itemId) const;

  /// addItem() of every item of `other`; nothing else changes.
  void update(const OrvaneApplication& other);

  /// The number of items that have an address.
  int getSocketCount() const;
  /// @}

  /// @name Comparison
  /// @{

  /// Compares the UPIDs, nothing else.
  bool operator<(const OrvaneApplication& other) const { return upid < other.upid; }

  /// Compares the UPIDs, nothing else.
  bool operator==(const OrvaneApplication& other) const { return upid == other.upid; }

  /// True when this name sorts before that of `other` (as bytes); otherwise, also for a name that
  /// sorts after it, the items decide: the first pair of items that the mapping ordering (see
  /// OrvanePortMappingLess) tells apart, or, when there is none, which list ends first. So two
  /// applications can each be less than the other.
  bool lexItemsLess(const OrvaneApplication& other) const;
  /// @}

  /// @name Section texts
  /// Each operation that returns one with its append twin.
  /// @{

  /// The section text: one group per item, in order; "" without items.
  char* getSection(bool closeGroups) const;
  void appendSection(std::string& to, bool closeGroups) const;

  /// Merges the groups of a section text, NUL-terminated or a view, into the application; a null
  /// text changes nothing. For each group, the keys that it holds set the application's fields and
  /// those of a default item, which is then added as addItem() does; a SelectorTypeInfo line also
  /// sets the category, to 1 for 2 or more, else to 0.
  ///
  /// Lines end at "\n" or the end of the text and are not trimmed. A line is split at its first
  /// "="; keys ignore the case of ASCII letters, the first of a key in a group wins, unknown ones
  /// are ignored. Any other line that is not empty closes the group. Pairs after the last such line
  /// are dropped, so a text without closed groups changes nothing.
  void setSection(const char* text);
  void setSection(std::string_view text);

  /// setSection(text) that adds to `findings` what is dropped, ignored, cut, merged, replaced or
  /// read as something else than it seems to be, by line.
  void setSectionReported(std::string_view text, OrvaneFindings& findings);

  /// One group per item with action 5, never closed.
  char* getInitialSection() const;
  void appendInitialSection(std::string& to) const;

  /// One group, for the first item, with action 1; "" without items.
  char* getAddNewSection(bool closeGroups) const;
  void appendAddNewSection(std::string& to, bool closeGroups) const;

  /// One group per item, with action 2 for the last and 3 for the others.
  char* getDeleteSection(bool closeGroups) const;
  void appendDeleteSection(std::string& to, bool closeGroups) const;

  /// The changes from this application to `newer`. Items are compared in the mapping ordering (see
  /// OrvanePortMappingLess). For an item of this one that differs and has single ports: when the
  /// newer one with its address differs too and has single ports, one group per port that is gone
  /// (action 3, closed by the terminator line alone) and one per port that is new (action 4);
  /// otherwise one group with its port list (action 3, closed by the terminator line alone). Ranges
  /// are not compared one by one, port 0 is never written, and items that only `newer` has write
  /// nothing. All groups carry the fields of this application.
  char* getUpdatedSection(const OrvaneApplication& newer, bool closeGroups) const;
  void appendUpdatedSection(std::string& to, const OrvaneApplication& newer,
                            bool closeGroups) const;
  /// @}

 private:
  friend struct orvane::ApplicationAccess;

  explicit OrvaneApplication(int identifier) : id(identifier) {}  // which draws none

  int listIndex = -1;
  int id;
};

#endif  // ORVANE_APPLICATION_H_
