// What the library does for the command: the same operations on texts that are in memory.

#ifndef ORVANE_BENCH_WHOLE_WORK_H_
#define ORVANE_BENCH_WHOLE_WORK_H_

#include <orvane/orvane.h>

#include <string>
#include <utility>
#include <vector>

namespace whole {

class Work {
 public:
  // One step after the other; what they made is destroyed with the object.
  using Steps = std::vector<void (Work::*)()>;

  explicit Work(std::vector<std::string> texts)
      : texts_(std::move(texts)), mappings_(texts_.size()) {}

  void read() {
    for (std::size_t i = 0; i < texts_.size(); ++i) mappings_[i].setSection(texts_[i]);
  }

  void readReported() {
    OrvaneFindings findings;
    for (std::size_t i = 0; i < texts_.size(); ++i) {
      mappings_[i].setSectionReported(texts_[i], findings);
    }
  }

  void getSection() { mappings_[0].getSection(true); }
  void getUpdatedSection() { mappings_[0].getUpdatedSection(mappings_[1], true); }

  void appendSections() {
    for (const OrvaneApplication& application : mappings_[0]) {
      application.appendSection(next(), true);
    }
  }

  void appendItems() {
    for (const OrvaneApplication& application : mappings_[0]) {
      for (const OrvanePortMapping& item : application.getItems()) item.appendMapping(next());
    }
  }

  void appendCollisions() {
    const OrvaneCollisions collisions(mappings_[0]);
    for (const OrvaneCollision& collision : collisions) collision.appendPorts(next());
  }

  void appendChanges() {
    OrvaneComparison(mappings_[0], mappings_[1]).appendChangeSections(text_, true);
  }

  void findFacts() {
    const OrvaneComparison differences(mappings_[0], mappings_[1]);
    for (const OrvaneDifference& difference : differences) {
      difference.forEachFact([&](const OrvaneFact& fact) { next() += fact.getName(); });
    }
  }

 private:
  // Where the next element goes: a large piece of text that is written and then forgotten.
  std::string& next() {
    if (text_.size() >= 1 << 20) text_.clear();
    return text_;
  }

  std::vector<std::string> texts_;
  std::vector<OrvaneAppMapping> mappings_;
  std::string text_;
};

}  // namespace whole

#endif  // ORVANE_BENCH_WHOLE_WORK_H_
