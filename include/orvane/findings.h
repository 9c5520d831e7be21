#ifndef ORVANE_FINDINGS_H_
#define ORVANE_FINDINGS_H_

#include <cstddef>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "orvane/export.h"

/// How grave a finding is.
enum tagFindingSeverity : int {
  kOrvaneFindingNote = 0,   ///< nothing is lost, but it means something else than it seems to
  kOrvaneFindingError = 1,  ///< skipped, cut, ignored, or read as something else
};

/// What a reader passed over, cut, merged or read as something else; or what is wrong with a tree.
struct OrvaneFinding {
  /// Where: the line of a text or the record of a buffer, counted from 1; 0 when it is in neither.
  std::size_t line = 0;
  tagFindingSeverity severity = kOrvaneFindingError;
  /// A word for programs, the same in all versions ("port", "unknown-key"); it is never destroyed.
  const char* kind = "";
  /// The key whose value it is about, as the library spells it, the UPID of the node in decimal, or
  /// "".
  std::string key;
  /// What happened, in words. Pieces of the text stand in it as they are, cut to 80 characters:
  /// they may hold control characters and bytes that are no UTF-8.
  std::string message;
};

/// The findings of one reading or of several, in the order of the lines of each; walk, index and
/// size it as the vector that it is. Every operation of an object that reads a section text, a port
/// list, a record or a buffer of several nodes has a twin with `Reported` in its name, which does
/// the same and adds what it finds to such a list. When memory runs out, such an operation leaves
/// its object as the one without the name does, and the list may hold what was found by then.
///
/// A list can be told how many findings of one kind and severity it keeps, so that its size does
/// not grow with what is wrong: those found after that many are counted. What the vector brings
/// along leaves the counts as they are: assign a new list to start over. Several threads may use
/// lists of their own at once, and one while none changes it.
class ORVANE_EXPORT OrvaneFindings : public std::vector<OrvaneFinding> {
 public:
  /// How many were found of one kind and severity, and how many of them are kept.
  struct Count {
    const char* kind;             ///< as in the findings
    tagFindingSeverity severity;  ///< as in the findings
    std::size_t found;            ///< all of them
    std::size_t kept;             ///< those in the list
  };

  /// None yet; all that are found are kept.
  OrvaneFindings() = default;

  /// None yet; at most that many of one kind and severity are kept.
  explicit OrvaneFindings(std::size_t most) : most_(most) {}

  /// Counts one, and tells whether it is to be kept.
  [[nodiscard]] bool count(const char* kind, tagFindingSeverity severity);

  /// Counts a finding, and keeps it if there is room for its kind. When memory runs out,
  /// std::bad_alloc leaves the operation.
  void add(OrvaneFinding finding);

  /// How many were found, by kind and severity in the order in which these came first. The
  /// reference holds as long as the list.
  const std::vector<Count>& getCounts() const { return counts_; }

  /// How many of that severity were found, those left out included.
  std::size_t getFound(tagFindingSeverity severity) const;

 private:
  std::size_t most_ = std::numeric_limits<std::size_t>::max();
  std::vector<Count> counts_;
};

#endif  // ORVANE_FINDINGS_H_
