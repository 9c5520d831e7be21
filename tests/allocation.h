// What operations leave behind when memory runs out: each runs again and again, while its first,
// second, third … allocation fails, until none does.

#ifndef ORVANE_TESTS_ALLOCATION_H_
#define ORVANE_TESTS_ALLOCATION_H_

#include <gtest/gtest.h>
#include <orvane/findings.h>

#include <deque>
#include <functional>
#include <map>
#include <new>
#include <optional>
#include <string>
#include <vector>

namespace allocation {

inline constexpr unsigned int kHost = 0x0A000001;

// Lets the n-th allocation from here fail and, with `onwards`, every one after it too.
void failAt(std::size_t n, bool onwards);

// Whether one failed since then; from here none does.
bool stopFailing();

extern std::size_t operationCount;
extern std::size_t failureCount;

// Everything that objects hold, by name. What is added whole stands under a name of its own.
using Picture = std::map<std::string, std::string>;

// Objects of one class that Draw(name, object, picture) shows, and where operations leave their
// results without allocating.
template <typename T, auto Draw>
struct Samples {
  using Class = T;

  T none, few, many, other;
  std::optional<T> made;
  const char* text = "";
  std::string to = std::string(2000, '#');
  std::size_t number = 0;
  std::vector<unsigned int> upids = {5, 9, 7, 6, 5};
  std::vector<unsigned short> ports = {1};
  OrvaneFindings found;

  Picture picture() const {
    Picture picture = {{"text", text}, {"to", to}, {"number", std::to_string(number)}};
    picture["lists"] = testing::PrintToString(upids) + testing::PrintToString(ports);
    for (const auto& [name, object] : {std::pair("none ", &none), std::pair("few ", &few),
                                       std::pair("many ", &many), std::pair("other ", &other)}) {
      Draw(name, *object, picture);
    }
    if (made) Draw("made ", *made, picture);
    return picture;
  }
};

enum Guarantee : int {
  kStrong,  // done or not done
  kBasic,   // what was there is there, and each part is as it was or as it is meant to be
  kSilent,  // done or not done, and nothing is thrown
};

// A world is a copyable set of objects with `Picture picture() const`.
template <typename World>
struct Operation {
  std::string name;
  std::function<void(World&)> run;
  Guarantee guarantee;
};
template <typename World>
using Operations = std::vector<Operation<World>>;

// An operation on the world `w`, named by what it runs.
#define OPERATION(guarantee, ...)                                                           \
  {                                                                                         \
#__VA_ARGS__, [=](World & w) { static_cast<void>(__VA_ARGS__); }, allocation::guarantee \
  }
#define STRONG(...) OPERATION(kStrong, __VA_ARGS__)
#define BASIC(...) OPERATION(kBasic, __VA_ARGS__)
#define SILENT(...) OPERATION(kSilent, __VA_ARGS__)

// As many pieces, joined.
template <typename Piece>
std::string repeated(unsigned int count, Piece piece) {
  std::string text;
  for (unsigned int i = 0; i < count; ++i) text += piece(i);
  return text;
}

// The first part that is missing, or that is neither as in one picture nor as in the other; "" when
// there is none.
std::string faultIn(const Picture& shown, const Picture& before, const Picture& after);

template <typename World>
struct Attempt {
  World world;
  bool threw = false;
  Picture left;
};

// What is wrong with an attempt that met a failed allocation; "" when nothing is.
template <typename World>
std::string faultOf(Attempt<World>& attempt, const Operation<World>& operation,
                    const Picture& before, const Picture& expected) {
  auto& [world, threw, left] = attempt;
  if (!threw && left == expected) return "";  // it found another way
  if (threw == (operation.guarantee == kSilent)) return threw ? "it throws" : "it throws nothing";
  std::string fault = faultIn(left, before, operation.guarantee == kBasic ? expected : before);
  if (!fault.empty()) return fault;
  fault = faultIn(World(world).picture(), left, left);
  if (!fault.empty()) return "in a copy " + fault;
  operation.run(world);
  fault = faultIn(world.picture(), expected, expected);
  return fault.empty() ? "" : "when done once more " + fault;
}

// What breaks the guarantee of an operation first; "" when nothing does.
template <typename World>
std::string faultOf(const Operation<World>& operation, bool onwards) {
  // The texts of the process grow during the attempts, which may fail as well: so the operation
  // does not run whole before the last of them, which shows what it gives.
  std::deque<Attempt<World>> attempts;
  for (bool failed = true; failed;) {
    Attempt<World>& attempt = attempts.emplace_back();
    failAt(attempts.size(), onwards);
    try {
      operation.run(attempt.world);
    } catch (const std::bad_alloc&) {
      attempt.threw = true;
    }
    failed = stopFailing();
    attempt.left = attempt.world.picture();
  }
  const Picture expected = attempts.back().left;
  const Picture before = World().picture();
  attempts.pop_back();
  failureCount += attempts.size();
  for (std::size_t n = 0; n < attempts.size(); ++n) {
    const std::string fault = faultOf(attempts[n], operation, before, expected);
    if (fault.empty()) continue;
    return "allocation " + std::to_string(n + 1) +
           (onwards ? " and all later ones fail: " : " fails: ") + fault;
  }
  return "";
}

// Checks each operation while one allocation fails, and while all later ones fail too. `kind` says
// what they work on.
template <typename World>
void check(const Operations<World>& operations, const std::string& kind = "") {
  operationCount += operations.size();
  for (const Operation<World>& operation : operations) {
    std::string fault = faultOf(operation, false);
    if (fault.empty()) fault = faultOf(operation, true);
    EXPECT_TRUE(fault.empty()) << operation.name << kind << ": " << fault;
  }
}

// Checks copying and assigning the samples, or what they derive from.
template <typename World, typename Class = typename World::Class>
void checkCopies(const std::string& kind = "") {
  check<World>(
      {STRONG(w.made.emplace(w.many)), STRONG(static_cast<Class&>(w.none) = w.few),
       STRONG(static_cast<Class&>(w.few) = w.many), STRONG(static_cast<Class&>(w.many) = w.few),
       STRONG(static_cast<Class&>(w.many) = w.many)},
      kind);
}

}  // namespace allocation

#endif  // ORVANE_TESTS_ALLOCATION_H_
