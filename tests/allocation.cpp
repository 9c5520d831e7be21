#include "allocation.h"

#include <cstdlib>
#include <iostream>

namespace allocation {

std::size_t operationCount = 0;
std::size_t failureCount = 0;

namespace {

std::size_t left = 0;  // how many allocations there are until one fails; 0: none will
bool failed = false;
bool failsOnwards = false;

void* allocate(std::size_t size) {
  if (left > 0 && --left == 0) {
    failed = true;
    left = failsOnwards ? 1 : 0;
    return nullptr;
  }
  return std::malloc(size);
}

// Says how much was tried, after all tests.
class Report : public testing::Environment {
 public:
  void TearDown() override {
    std::cout << operationCount << " operations, " << failureCount << " failed allocations, "
              << (testing::UnitTest::GetInstance()->Failed() ? "not " : "")
              << "all guarantees held\n";
  }
};
[[maybe_unused]] const auto* const report = testing::AddGlobalTestEnvironment(new Report);

}  // namespace

void failAt(std::size_t n, bool onwards) {
  failed = false;
  failsOnwards = onwards;
  left = n;
}

bool stopFailing() {
  left = 0;
  return failed;
}

std::string faultIn(const Picture& shown, const Picture& before, const Picture& after) {
  for (const auto& part : before) {
    if (!shown.contains(part.first)) return part.first + " is missing";
  }
  for (const auto& part : shown) {
    const auto isIn = [&](const Picture& picture) {
      const auto found = picture.find(part.first);
      return found != picture.end() && found->second == part.second;
    };
    if (!isIn(before) && !isIn(after)) {
      return part.first + " is " + testing::PrintToString(part.second).substr(0, 100);
    }
  }
  return "";
}

}  // namespace allocation

// Those of arrays use these or, under sanitizers, are a matter of their own.
void* operator new(std::size_t size) {
  void* const block = allocation::allocate(size);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return allocation::allocate(size);
}
void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t /*size*/) noexcept { std::free(block); }
