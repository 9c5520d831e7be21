#ifndef ORVANE_PORT_MAPPING_H_
#define ORVANE_PORT_MAPPING_H_

#include <concepts>
#include <cstddef>
#include <set>
#include <span>
#include <string>
#include <string_view>

#include "orvane/export.h"
#include "orvane/findings.h"
#include "orvane/port_range.h"

/// What OrvanePortMapping::parse() extracts from a port list text.
enum tagParseType : int {
  kOrvaneParsePorts = 0,   ///< the single ports
  kOrvaneParseRanges = 1,  ///< the ranges
};

/// The selector info of an item, chosen by the caller. The library carries any 32-bit value; an
/// application whose item is read with kOrvaneSelectorInfoCategory1 or more gets category 1.
enum tagSelectorInfo : int {
  kOrvaneSelectorInfoNone = 0,
  kOrvaneSelectorInfoCategory1 = 2,
};

/// An address record of six 32-bit words.
struct ORVANE_EXPORT ADDRESS_S {
  /// The IPv4 address; its most significant byte is the first part of the dotted form
  /// (192.168.1.10 is 0xC0A8010A). 0 means no address.
  unsigned int address = 0;
  /// Carried along, never interpreted.
  unsigned int reserved[5] = {};
};

/// The plain record of a port mapping.
struct ORVANE_EXPORT tagPortMapping {
  tagPortMapping() = default;

  /// Copies every field. Assignment is done or, when memory runs out, not done.
  tagPortMapping(const tagPortMapping&) = default;
  tagPortMapping(tagPortMapping&&) = default;
  tagPortMapping& operator=(const tagPortMapping& other) {
    if (this != &other) *this = tagPortMapping(other);
    return *this;
  }
  tagPortMapping& operator=(tagPortMapping&&) = default;
  ~tagPortMapping() = default;

  std::set<unsigned short> ports;    ///< single ports, ascending
  std::set<OrvanePortRange> ranges;  ///< ranges, ascending by end, no two with the same end
  ADDRESS_S ip;                      ///< where they are used
  unsigned int uniqueBlockNumber = 0xFFFFFFFF;             ///< chosen by the caller
  tagSelectorInfo selectorInfo = kOrvaneSelectorInfoNone;  ///< chosen by the caller
};

/// One item of an application: the single ports and ranges that it uses on one IPv4 address.
///
/// A port list text is what the items of the list, joined by ",", say: a single port ("443") or a
/// range ("1000-2000", see OrvanePortRange::isRange()). White space around numbers is allowed.
///
/// An operation that returns a text returns one of its own, one per operation for the whole
/// process. It is never null and holds until that operation runs again for any mapping, also within
/// another operation. Its append twin adds the same text to the end of a caller's string instead,
/// which must not be where the text that is read lies, and touches nothing else.
///
/// Several threads may use one mapping at once while none changes it, except for the operations
/// that return a text, whose calls must be serialised.
///
/// When memory runs out, std::bad_alloc leaves the operation, and nothing has changed, neither the
/// mapping nor what a twin appends to; only texts that operations return may be empty.
///
/// Assignment leaves some fields alone, so std::swap() exchanges the others only, by deep copies,
/// and std::sort() and whatever else moves elements by assignment separates items from their list
/// index and id: sort pointers or indexes instead. Containers that move by construction keep items
/// whole.
class ORVANE_EXPORT OrvanePortMapping : public tagPortMapping {
 public:
  /// No ports, no ranges, no address, block number 0xFFFFFFFF, selector info 0, list index and item
  /// id -1.
  OrvanePortMapping() = default;

  /// Copies every field.
  OrvanePortMapping(const OrvanePortMapping&) = default;
  OrvanePortMapping(OrvanePortMapping&&) noexcept = default;

  virtual ~OrvanePortMapping();

  /// Copies the ports, the ranges, the address (word 0 only), the block number and the selector
  /// info. The reserved address words, the list index and the item id of this mapping stay.
  OrvanePortMapping& operator=(const OrvanePortMapping& other);

  /// @name Fields
  /// Give the field of their name. References point into the mapping and hold as long as it lives.
  /// @{
  std::set<unsigned short>& getPorts() { return ports; }
  const std::set<unsigned short>& getPorts() const { return ports; }
  std::set<OrvanePortRange>& getRanges() { return ranges; }
  const std::set<OrvanePortRange>& getRanges() const { return ranges; }
  ADDRESS_S& getIp() { return ip; }
  const ADDRESS_S& getIp() const { return ip; }
  unsigned int getIpAddress() const { return ip.address; }
  unsigned int getUniqueBlockNumber() const { return uniqueBlockNumber; }
  tagSelectorInfo getSelectorInfo() const { return selectorInfo; }
  int getListIndex() const { return listIndex; }
  int getID() const { return id; }

  /// Copies the set as it is: nothing is merged or removed.
  void setPorts(const std::set<unsigned short>& set) { ports = std::set<unsigned short>(set); }
  void setRanges(const std::set<OrvanePortRange>& set) { ranges = std::set<OrvanePortRange>(set); }

  /// Copies all six words.
  void setIp(const ADDRESS_S& address) { ip = address; }

  /// Sets word 0 only.
  void setIp(unsigned int address) { ip.address = address; }
  template <std::integral Number>
  void setIp(Number address) {
    ip.address = static_cast<unsigned int>(address);
  }

  /// Set the field of their name. (A plain 0 is a number, not a null text.)
  void setUniqueBlockNumber(unsigned int number) { uniqueBlockNumber = number; }
  template <std::integral Number>
  void setUniqueBlockNumber(Number number) {
    uniqueBlockNumber = static_cast<unsigned int>(number);
  }
  void setSelectorInfo(tagSelectorInfo info) { selectorInfo = info; }
  template <std::integral Number>
  void setSelectorInfo(Number info) {
    selectorInfo = static_cast<tagSelectorInfo>(info);
  }
  void setListIndex(int index) { listIndex = index; }
  void setID(int value) { id = value; }
  /// @}

  /// @name Text and records in
  /// Texts are NUL-terminated, or views of exactly what is to be read; a null text changes nothing
  /// except where said, while an empty view is an empty text. Numbers are read as decimals: leading
  /// white space, a sign, digits modulo 2^32, the rest ignored; 0 when there are no digits. Nothing
  /// is reported.
  /// @{

  /// Replaces ports and ranges by those of a port list text, read in its order: a range is added as
  /// addRange() does, a single port from 1 to 65535 is added, any other item is skipped. So a range
  /// swallows the single ports before it, while one after it stays beside it.
  void setPorts(const char* text);
  void setPorts(std::string_view text);
  void setPorts(std::nullptr_t) = delete;

  /// The same for a string, up to its first NUL; an empty one empties both sets.
  void setPorts(const std::string& text) { setPorts(text.c_str()); }

  /// setPorts(text) that adds to `findings` which items are skipped, read as something else,
  /// merged or swallowed. The lines are those of the text.
  void setPortsReported(std::string_view text, OrvaneFindings& findings);

  /// Empties the ports, then setPorts(text). So a null text empties the ports and keeps the ranges.
  void setNewPorts(const char* text);
  void setNewPorts(std::string_view text) { setPorts(text); }

  /// Sets the address from a decimal number ("3232235786") or from four parts joined by ".", each
  /// cut to its low 8 bits, an empty one being 0. A dotted text of other than four parts is
  /// ignored.
  void setIp(const char* text);
  void setIp(std::string_view text);
  void setIp(std::nullptr_t) = delete;

  /// Set the field of their name to a number.
  void setUniqueBlockNumber(const char* text);
  void setUniqueBlockNumber(std::string_view text);
  void setUniqueBlockNumber(std::nullptr_t) = delete;
  void setSelectorInfo(const char* text);
  void setSelectorInfo(std::string_view text);
  void setSelectorInfo(std::nullptr_t) = delete;

  /// Reads a mapping record: four NUL-terminated texts back to back (port list, address, block
  /// number, selector info), each applied by the setter above. A null record, or one whose first
  /// byte is 0, changes nothing. The list index, the item id and the reserved words stay. Never
  /// throws: when memory runs out, nothing changes.
  /// REQUIRES: `record` holds four NULs; it is read up to the fourth.
  void setValues(const unsigned char* record);

  /// setValues() that stays inside `record`: false, and nothing changes, when the fourth NUL is
  /// missing there. Bytes after it are ignored.
  bool setValuesChecked(std::span<const unsigned char> record);

  /// setValuesChecked() that adds what it finds to `findings`, among it that the record is cut
  /// short or ignored, and what follows it. Findings about records have no line. May throw
  /// std::bad_alloc.
  bool setValuesReported(std::span<const unsigned char> record, OrvaneFindings& findings);

  /// Adds one range with merging: a binary search over the ranges, which probes the middle first,
  /// looks for one that overlaps `range`. If one is found, it is widened to cover both, and takes
  /// the place that its end gives it; a range that has this end already becomes one with it.
  /// Otherwise `range` is inserted, unless a range with its end is there. Single ports inside the
  /// widened or inserted range are removed. Other ranges that overlap stay as they are, and the
  /// search can miss one that lies before a disjoint middle element.
  ///
  /// The result is the position of the widened range, or the end position of the ranges.
  std::set<OrvanePortRange>::iterator addRange(const OrvanePortRange& range);
  /// @}

  /// @name Text out
  /// Each operation with its append twin.
  /// @{

  /// The port list text: ports and ranges in the order of sortPorts(). Replaces the text of
  /// sortPorts() too and, when there are ranges, that of OrvanePortRange::getRange().
  std::string& getPortsAsString() const;
  void appendPorts(std::string& to) const;

  /// The items of a port list text, unchanged, sorted by their leading number as signed 32-bit
  /// numbers; items with the same number keep their order. A null text gives "".
  static char* sortPorts(const char* text);
  static void appendSortedPorts(std::string& to, std::string_view text);

  /// The ports in decimal, ascending, joined by ",".
  static std::string& PortArrayToString(const std::set<unsigned short>& set);
  static void appendPortArray(std::string& to, const std::set<unsigned short>& set);

  /// The single ports of at least 1 (no upper limit, as numbers) or the ranges (unchanged) of a
  /// port list text, in its order, joined by ",". A null text and any other type give "".
  static char* parse(tagParseType type, const char* text);
  static void appendParsed(std::string& to, tagParseType type, std::string_view text);

  /// The address in dotted decimal form, "192.168.1.10".
  std::string& getIpAsString() const;
  void appendIp(std::string& to) const;

  /// The address and ":", when there is an address, then the port list text:
  /// "192.168.1.10:80,443,1000-2000". Replaces the texts of getIpAsString() (when there is an
  /// address) and getPortsAsString() too.
  std::string& getMappingAsString() const;
  void appendMapping(std::string& to) const;

  /// The ports and ranges of `other` that this mapping lacks, the ports first: "8080,3000-4000". A
  /// range counts as present when this mapping has one with the same end. Port 0 and a range that
  /// ends at 0 are never written.
  std::string& getDiffAsString(const OrvanePortMapping& other) const;
  void appendDiff(std::string& to, const OrvanePortMapping& other) const;
  /// @}

  /// @name Sets
  /// Positions are those of getPorts() and getRanges(); they hold until the element is removed.
  /// @{

  /// The first port inside `range`; the end position when there is none.
  std::set<unsigned short>::const_iterator overlap(const OrvanePortRange& range) const;

  /// The first range, in order, that overlaps `range`; the end position when there is none.
  std::set<OrvanePortRange>::const_iterator findOverlapped(const OrvanePortRange& range) const;

  /// Inserts the ports that are not there.
  void addPorts(const std::set<unsigned short>& set);

  /// Plain insertion: no merging, single ports stay, a range whose end is there is not inserted.
  void addRanges(const std::set<OrvanePortRange>& set);

  /// Replaces the ports; the ranges stay.
  void replacePorts(const std::set<unsigned short>& set);

  /// The same as assignment.
  void assign(const OrvanePortMapping& other) { *this = other; }
  /// @}

  /// @name Comparison
  /// @{

  /// Whether the addresses and the ports are equal; nothing else is compared.
  bool equal(const OrvanePortMapping& other) const;

  /// Whether the addresses are equal and both have single ports, whichever these are.
  bool equalNotNull(const OrvanePortMapping& other) const;

  /// Whether the ports come before those of `other`, compared as ascending sequences.
  bool lexPortsLess(const OrvanePortMapping& other) const;

  /// Whether the ranges come before those of `other`, compared as sequences by their ends.
  bool lexRangesLess(const OrvanePortMapping& other) const;

  /// Compares the addresses, nothing else.
  bool operator<(const OrvanePortMapping& other) const { return ip.address < other.ip.address; }

  /// Compares the addresses, nothing else.
  bool operator==(const OrvanePortMapping& other) const { return ip.address == other.ip.address; }
  /// @}

 private:
  int listIndex = -1;
  int id = -1;
};

/// The mapping ordering: by address; at the same address, "the ports or the ranges come first". Two
/// mappings can each be less than the other: one by its ports, the other by its ranges.
class ORVANE_EXPORT OrvanePortMappingLess {
 public:
  /// Whether `a` comes before `b`.
  bool operator()(const OrvanePortMapping& a, const OrvanePortMapping& b) const;
};

/// OrvanePortMapping::equal() as a function object.
class ORVANE_EXPORT OrvanePortMappingEqual {
 public:
  /// Whether that holds for `a` and `b`.
  bool operator()(const OrvanePortMapping& a, const OrvanePortMapping& b) const {
    return a.equal(b);
  }
};

/// Ports, ascending.
class ORVANE_EXPORT OrvanePortArrayLess {
 public:
  /// Whether `a` comes before `b`.
  bool operator()(unsigned short a, unsigned short b) const { return a < b; }
};

/// Ranges by their ends.
class ORVANE_EXPORT OrvaneRangeSetLess {
 public:
  /// Whether `a` comes before `b`.
  bool operator()(const OrvanePortRange& a, const OrvanePortRange& b) const { return a < b; }
};

/// The ordering of sortPorts(): texts by their leading number, as signed 32-bit numbers.
class ORVANE_EXPORT SortStringNumeric {
 public:
  /// Whether `a` comes before `b`.
  bool operator()(const std::string& a, const std::string& b) const;
};

#endif  // ORVANE_PORT_MAPPING_H_
