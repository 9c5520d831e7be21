#ifndef ORVANE_APP_INFO_ARRAY_H_
#define ORVANE_APP_INFO_ARRAY_H_

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "orvane/app_info.h"
#include "orvane/app_mapping.h"
#include "orvane/export.h"
#include "orvane/findings.h"

/// What the mapping sections write as Reserved1 of the entries that they make or change.
inline constexpr unsigned int kOrvaneReservedMerged = 1;  ///< an entry merged with an application
inline constexpr unsigned int kOrvaneReservedAdded = 2;   ///< an entry made from an application

/// The application catalogue: entries in the order in which they were added.
///
/// Nothing keeps UPIDs unique; every look-up takes the first entry, and the first application of a
/// mapping, in order. A list of UPIDs is gone through in its order; a UPID that it holds twice is
/// treated twice.
///
/// A catalogue section text is the section texts of the entries one after the other (see
/// OrvaneAppInfo). An operation that returns a text returns one of its own, one per operation for
/// the whole process. It is never null and holds until that operation runs again for any catalogue.
/// Those that write sections run OrvaneAppInfo::getSection() for each entry, so they replace its
/// text, and those that it replaces, too. The append twin of each adds the same text to the end of
/// a caller's string instead and touches nothing else.
///
/// Several threads may use one catalogue at once while none changes it or the names of the keys,
/// except for the operations that return a text, whose calls must be serialised.
///
/// When memory runs out, std::bad_alloc leaves the operation, and nothing has changed: neither the
/// catalogue, nor what a twin appends to, nor a list to be replaced; only texts that operations
/// return may be empty.
class ORVANE_EXPORT OrvaneAppInfoArray {
 public:
  /// No entries.
  OrvaneAppInfoArray() = default;

  /// Copies every entry.
  OrvaneAppInfoArray(const OrvaneAppInfoArray&) = default;
  OrvaneAppInfoArray(OrvaneAppInfoArray&&) noexcept = default;
  OrvaneAppInfoArray& operator=(const OrvaneAppInfoArray& other) {
    if (this != &other) *this = OrvaneAppInfoArray(other);
    return *this;
  }
  OrvaneAppInfoArray& operator=(OrvaneAppInfoArray&&) noexcept = default;

  virtual ~OrvaneAppInfoArray();

  /// @name Entries
  /// Pointers hold until an entry is next added or the catalogue is assigned to.
  /// @{

  /// Appends a copy, whether or not there is an entry with its UPID.
  void add(const OrvaneAppInfo& entry);

  /// Appends a default entry that reads a record (see OrvaneAppInfo::setValues()). A null record,
  /// or one whose first byte is 0, appends nothing.
  /// REQUIRES: `record` holds eight NULs, unless its first byte is 0; it is read up to the eighth.
  void add(const unsigned char* record);

  /// add(record) that stays inside `record`: false, and nothing changes, when the eighth NUL is
  /// missing there, unless its first byte is 0 (then true, and nothing is appended). Bytes after
  /// the eighth NUL are ignored.
  bool addChecked(std::span<const unsigned char> record);

  /// addChecked() that adds what it finds to `findings` (see OrvaneAppInfo::setValuesReported()).
  bool addReported(std::span<const unsigned char> record, OrvaneFindings& findings);

  /// The first entry with that UPID; end() when there is none.
  OrvaneAppInfo* find(unsigned int upid);
  const OrvaneAppInfo* find(unsigned int upid) const;

  /// The entries lie in [begin(), end()); both are null for a catalogue that never held one.
  OrvaneAppInfo* begin() { return entries.data(); }
  OrvaneAppInfo* end() { return entries.data() + entries.size(); }
  const OrvaneAppInfo* begin() const { return entries.data(); }
  const OrvaneAppInfo* end() const { return entries.data() + entries.size(); }

  /// How many entries there are.
  std::size_t size() const { return entries.size(); }
  /// @}

  /// @name Section texts
  /// @{

  /// Appends, for each section of a section text, NUL-terminated or a view, a default entry with
  /// the fields that the section names (see OrvaneAppInfo::setSection()), also for one that names
  /// none. Pairs after the last terminator line are dropped. A null text appends nothing.
  void setSection(const char* text);
  void setSection(std::string_view text);

  /// setSection(text) that adds to `findings` what is dropped, ignored, cut or read as something
  /// else than it seems to be, by line, and which entries of the text look-ups do not take.
  void setSectionReported(std::string_view text, OrvaneFindings& findings);

  /// Whether a section text is that of a catalogue rather than of applications, by the keys that
  /// only one of them has, as they are named until a caller renames them; the first that decide it
  /// count.
  static bool isCatalogue(std::string_view text);

  /// The section texts of all entries.
  char* getSection(bool terminate) const;
  void appendSection(std::string& to, bool terminate) const;

  /// The section texts of the entries with these UPIDs; a UPID without an entry writes nothing.
  char* getSection(const std::vector<unsigned int>& upids, bool terminate) const;
  void appendSection(std::string& to, const std::vector<unsigned int>& upids, bool terminate) const;

  /// Appends, for each UPID that `mapping` has an application with, a default entry to which this
  /// application is assigned (see OrvaneAppInfo), with Reserved1 2. Returns getSection(terminate).
  char* getAppMappingSection(const OrvaneAppMapping& mapping,
                             const std::vector<unsigned int>& upids, bool terminate);
  void appendAppMappingSection(std::string& to, const OrvaneAppMapping& mapping,
                               const std::vector<unsigned int>& upids, bool terminate);

  /// The section texts of the entries with these UPIDs; one whose UPID `mapping` has an application
  /// with is written with Reserved1 1 and with the ports of that application added (see
  /// OrvaneAppInfo::addPorts()). The catalogue does not change.
  char* getMergedAppMappingSection(const OrvaneAppMapping& mapping,
                                   const std::vector<unsigned int>& upids, bool terminate) const;
  void appendMergedAppMappingSection(std::string& to, const OrvaneAppMapping& mapping,
                                     const std::vector<unsigned int>& upids, bool terminate) const;
  /// @}

  /// @name Ports and UPIDs
  /// @{

  /// The sum of OrvaneAppInfo::getNumPortsUsed() of all entries, cut to 16 bits.
  unsigned short getNumPortsUsed() const;

  /// The same, of the entries with that port type: a number of ports, not of entries.
  unsigned short getNumPortType(tagAppInfoPortType type) const;

  /// Replaces `ports` by the ports of all entries, in their order: single ports, and every number
  /// of a range up to 65535. A port that is covered several times is listed each time.
  void getPortList(std::vector<unsigned short>& ports) const;

  /// The numbers of getPortList(), joined by ",".
  char* getPorts() const;
  void appendPorts(std::string& to) const;

  /// Replaces `result` by those of `upids` that the catalogue has no entry for.
  void getUnknownPortList(const std::vector<unsigned int>& upids,
                          std::vector<unsigned int>& result) const;

  /// Replaces `result` by those of `upids` that the catalogue has an entry for.
  void getCommonPortList(const std::vector<unsigned int>& upids,
                         std::vector<unsigned int>& result) const;
  /// @}

 private:
  std::vector<OrvaneAppInfo> entries;
};

#endif  // ORVANE_APP_INFO_ARRAY_H_
