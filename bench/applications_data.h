// The operations on whole collections of applications that are measured, and their texts.

#ifndef ORVANE_BENCH_APPLICATIONS_DATA_H_
#define ORVANE_BENCH_APPLICATIONS_DATA_H_

#include <algorithm>
#include <numeric>
#include <string>
#include <vector>

#include "compare.h"
#include "workload.h"

namespace data {

inline const std::string kReadTogether = "mapping text read, groups together";
inline const std::string kReadScattered = "mapping text read, groups scattered";
inline const std::string kReadReported = "mapping text read, findings reported";
inline const std::string kUpdated5 = "updated section, 5 % changed";
inline const std::string kUpdatedAll = "updated section, all changed";
inline const std::string kWritten = "mapping text written";
inline const std::string kWrittenAnew = "mapping text written, to a new string";

inline const bench::Sizes kSizes = {1000, 4000, 20000, 100000};

inline std::string together(std::int64_t size) {
  return workload::applications(size).getSection(true);
}

inline std::vector<std::string> groupsOf(const std::string& text) {
  std::vector<std::string> groups;
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = text.find("\n;\n", begin) + 3;
    groups.push_back(text.substr(begin, end - begin));
    begin = end;
  }
  return groups;
}

// An older and a newer state, each read from a text of its own; every `step`-th application has
// changed, none for 0.
struct States {
  OrvaneAppMapping older;
  OrvaneAppMapping newer;
};

inline States states(std::int64_t size, std::size_t step) {
  const OrvaneAppMapping made = workload::applications(size);
  std::string texts[2];
  made.appendSection(texts[0], true);
  (step == 0 ? made : workload::changed(made, step)).appendSection(texts[1], true);
  States states;
  states.older.setSection(texts[0]);
  states.newer.setSection(texts[1]);
  return states;
}

// The same groups in random order, so that those of one application stand apart.
inline std::string scattered(std::int64_t size) {
  std::vector<std::string> groups = groupsOf(together(size));
  std::shuffle(groups.begin(), groups.end(), workload::Random(1));
  return std::accumulate(groups.begin(), groups.end(), std::string());
}

}  // namespace data

#endif  // ORVANE_BENCH_APPLICATIONS_DATA_H_
