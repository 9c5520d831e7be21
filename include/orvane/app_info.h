#ifndef ORVANE_APP_INFO_H_
#define ORVANE_APP_INFO_H_

#include <concepts>
#include <cstddef>
#include <set>
#include <span>
#include <string>
#include <string_view>

#include "orvane/application.h"
#include "orvane/export.h"
#include "orvane/findings.h"
#include "orvane/port_range.h"

namespace orvane {
struct EntryAccess;
}

/// The port type of a catalogue entry; any 32-bit value is carried.
enum tagAppInfoPortType : int {
  kOrvanePortTypeDefault = 1,  ///< default; of an application with the default selector type
  kOrvanePortTypeOther = 2,    ///< of an application with any other selector type
};

/// One entry of the application catalogue: what is known about the application with a UPID, namely
/// a version, a port type, its ports and ranges, three reserved numbers and a fully qualified name.
///
/// The ports are an ordered set of OrvanePort: all single ports, ascending, then all ranges,
/// ascending by their end. It takes no second range with the same end; the first one stays.
///
/// A section text is eight lines "key=value\n", in this order: Version, PortType, UPID, PortRange,
/// Reserved1, Reserved2, Reserved3, FQN; then, when it is terminated, ";\n". The port type is
/// written as a signed number, the others are unsigned.
///
/// An operation that returns a text returns one of its own, one per operation for the whole
/// process. It is never null and holds until that operation runs again for any entry, also within
/// another operation. Where one writes a single port it replaces the text of
/// OrvanePort::getPortStr() too, and where one writes a range as such that of
/// OrvanePortRange::getRange(). Its append twin adds the same text to the end of a caller's string
/// instead and touches nothing else.
///
/// Several threads may use one entry at once while none changes it or the names of the keys, except
/// for the operations that return a text, whose calls must be serialised.
///
/// When memory runs out, std::bad_alloc leaves the operation, and nothing has changed, neither the
/// entry nor what a twin appends to; only texts that operations return may be empty.
class ORVANE_EXPORT OrvaneAppInfo {
 public:
  /// The keys of a section text, in the order given above, looked up anew by each operation that
  /// reads or writes section texts. A caller may store other texts, which must live as long as they
  /// are used: of fields that share a key, each takes its value; null is the empty key.
  static char* appinfo_key_names[8];

  /// Version 0, port type 1, UPID 0, no ports, reserved numbers 0, an empty name.
  OrvaneAppInfo();

  /// Copies every field.
  OrvaneAppInfo(const OrvaneAppInfo&) = default;
  OrvaneAppInfo(OrvaneAppInfo&&) noexcept = default;
  OrvaneAppInfo& operator=(const OrvaneAppInfo& other) {
    if (this != &other) *this = OrvaneAppInfo(other);
    return *this;
  }
  OrvaneAppInfo& operator=(OrvaneAppInfo&&) noexcept = default;

  virtual ~OrvaneAppInfo();

  /// Takes what an application defines: the UPID, port type 1 if its selector type is 1 and 2
  /// otherwise, version and reserved numbers 0, and the 32 bytes of its name, while the bytes of
  /// FQN after them stay; then addPorts(), so the ports that the entry has stay as well.
  /// (A template, so that `entry = {}` can only mean a default entry.)
  template <std::derived_from<OrvaneApplication> Application>
  OrvaneAppInfo& operator=(const Application& application) {
    assign(application);
    return *this;
  }

  /// @name Fields
  /// Give the field of their name.
  /// @{
  unsigned int getVersion() const { return version; }
  tagAppInfoPortType getPortType() const { return portType; }
  unsigned int getUPID() const { return upid; }
  unsigned int getReserved1() const { return reserved1; }
  unsigned int getReserved2() const { return reserved2; }
  unsigned int getReserved3() const { return reserved3; }

  /// Set the field of their name.
  void setVersion(unsigned int value) { version = value; }
  void setPortType(tagAppInfoPortType value) { portType = value; }
  template <std::integral Number>
  void setPortType(Number value) {
    portType = static_cast<tagAppInfoPortType>(value);
  }
  void setUPID(unsigned int value) { upid = value; }
  void setReserved1(unsigned int value) { reserved1 = value; }
  void setReserved2(unsigned int value) { reserved2 = value; }
  void setReserved3(unsigned int value) { reserved3 = value; }

  /// The name: NUL-terminated, in the entry's own 128 bytes, which live as long as the entry.
  char* getFQN() { return fqn; }
  const char* getFQN() const { return fqn; }

  /// Takes the first 127 characters of a text, NUL-terminated or a view; a null one changes
  /// nothing.
  void setFQN(const char* name);
  void setFQN(std::string_view name);
  void setFQN(std::nullptr_t) = delete;
  /// @}

  /// @name Ports
  /// @{

  /// The elements themselves. The reference holds as long as the entry.
  const std::set<OrvanePort>& getPortSet() const { return ports; }

  /// Replaces the ports by those of a list, NUL-terminated or a view, joined by ",": each item,
  /// spaces included, as OrvanePort reads it, without a check. Empty items are passed over. A null
  /// text changes nothing.
  void setPorts(const char* text);
  void setPorts(std::string_view text);
  void setPorts(std::nullptr_t) = delete;

  /// setPorts(text) that adds to `findings` which items are read as something else, and which are
  /// dropped. The lines are those of the text.
  void setPortsReported(std::string_view text, OrvaneFindings& findings);

  /// Adds the ports and then the ranges of an application that has exactly one item, without an
  /// address; any other application adds nothing.
  void addPorts(const OrvaneApplication& application);

  /// The elements in their order, joined by ",": "80,443,1000-2000".
  char* getPorts() const;
  void appendPorts(std::string& to) const;

  /// The same with every number of a range written out, up to 65535: "80,1000,1001,1002".
  char* getEnumPorts() const;
  void appendEnumPorts(std::string& to) const;

  /// The number of elements, cut to 16 bits.
  unsigned short getPortCount() const { return static_cast<unsigned short>(ports.size()); }

  /// The sum of OrvanePort::getNumPortsUsed() of all elements, cut to 16 bits. Ports that several
  /// elements cover count each time.
  unsigned short getNumPortsUsed() const;
  /// @}

  /// @name Records and section texts
  /// Numbers are read as decimals: leading white space, a sign, digits modulo 2^32, the rest
  /// ignored; 0 when there are no digits. Ports are read by setPorts(), the name by setFQN().
  /// @{

  /// Reads an entry record: eight NUL-terminated texts back to back, in the order of the section
  /// text. All fields are set; an empty text gives 0, no ports or an empty name. A null record, or
  /// one whose first byte is 0, changes nothing.
  /// REQUIRES: `record` holds eight NULs, unless its first byte is 0; it is read up to the eighth.
  void setValues(const unsigned char* record);

  /// setValues() that stays inside `record`: false, and nothing changes, when the eighth NUL is
  /// missing there, unless its first byte is 0. Bytes after it are ignored.
  bool setValuesChecked(std::span<const unsigned char> record);

  /// setValuesChecked() that adds what it finds to `findings`, among it that the record is cut
  /// short or ignored, and what follows it. Findings about records have no line.
  bool setValuesReported(std::span<const unsigned char> record, OrvaneFindings& findings);

  /// Sets the fields that the sections of a section text, NUL-terminated or a view, name, section
  /// by section (see OrvaneIni for its lines); other fields stay, unknown keys are ignored, and so
  /// are pairs after the last terminator line. A null text changes nothing.
  void setSection(const char* text);
  void setSection(std::string_view text);

  /// setSection(text) that adds to `findings` what is dropped, ignored, cut, replaced or read as
  /// something else than it seems to be, by line.
  void setSectionReported(std::string_view text, OrvaneFindings& findings);

  /// The section text. Replaces the text of getPorts() too.
  char* getSection(bool terminate) const;
  void appendSection(std::string& to, bool terminate) const;

  /// appinfo_key_names, as bytes.
  static unsigned char** getKeyNames();
  /// @}

 private:
  friend struct orvane::EntryAccess;

  void assign(const OrvaneApplication& application);

  unsigned int version = 0;
  tagAppInfoPortType portType = kOrvanePortTypeDefault;
  unsigned int upid = 0;
  std::set<OrvanePort> ports;
  unsigned int reserved1 = 0;
  unsigned int reserved2 = 0;
  unsigned int reserved3 = 0;
  char fqn[128] = {};
};

// Defaulted in the class, it would have a new element of a vector cleared twice.
inline OrvaneAppInfo::OrvaneAppInfo() = default;

#endif  // ORVANE_APP_INFO_H_
