#ifndef ORVANE_INI_H_
#define ORVANE_INI_H_

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "orvane/export.h"
#include "orvane/findings.h"

/// Orders keys without regard to the case of ASCII letters: 'A' to 'Z' are folded to 'a' to 'z',
/// the bytes are then compared as unsigned values, and a prefix sorts first.
class ORVANE_EXPORT IniKeyLess {
 public:
  using is_transparent = void;  ///< keys are looked up as views

  /// Whether `a` comes before `b`.
  bool operator()(std::string_view a, std::string_view b) const;
};

/// One section: its keys, unique but for letter case, with their values.
using IniSection = std::map<std::string, std::string, IniKeyLess>;

/// An ordered list of sections read from a section text.
///
/// A section text is lines of the form key=value, each ended by "\n" or the end of the text and not
/// trimmed. A line is split at its first "="; key and value may be empty. The first of a key in a
/// section wins and keeps its letter case. Any other line that is not empty is a terminator line,
/// which closes the section, also an empty one. Pairs after the last terminator line are dropped.
///
/// Several threads may use one object at once while none changes it, except for getSection(), whose
/// calls must be serialised. When memory runs out, std::bad_alloc leaves the operation, and nothing
/// has changed, neither the object nor what appendSection() appends to.
class ORVANE_EXPORT OrvaneIni {
 public:
  /// No sections.
  OrvaneIni() = default;

  /// The sections of `text`, as setSection() reads them.
  explicit OrvaneIni(const char* text);
  explicit OrvaneIni(std::string_view text);

  /// Copies every section.
  OrvaneIni(const OrvaneIni&) = default;
  OrvaneIni(OrvaneIni&&) noexcept = default;
  OrvaneIni& operator=(const OrvaneIni& other) {
    if (this != &other) *this = OrvaneIni(other);
    return *this;
  }
  OrvaneIni& operator=(OrvaneIni&&) noexcept = default;

  virtual ~OrvaneIni();

  /// Replaces all sections by those of a section text, NUL-terminated or a view; a null or empty
  /// one leaves none.
  void setSection(const char* text);
  void setSection(std::string_view text);

  /// setSection(text) that adds to `findings` what is dropped, ignored or means something else than
  /// it seems to, by line.
  void setSectionReported(std::string_view text, OrvaneFindings& findings);

  /// The text of a section, counted from 0: its pairs ordered by IniKeyLess, each as a line
  /// "key=value", then the line ";" when `terminate` is true. A negative or too large index throws
  /// std::out_of_range with the message "invalid vector<T> subscript", which is how a caller that
  /// counts up meets the end.
  ///
  /// The text is never null. It belongs to the operation, one for the whole process, and holds
  /// until getSection() runs again for any OrvaneIni. The twin adds the same text to the end of a
  /// caller's string instead.
  char* getSection(int index, bool terminate) const;
  void appendSection(std::string& to, int index, bool terminate) const;

 private:
  std::vector<IniSection> sections;
};

#endif  // ORVANE_INI_H_
