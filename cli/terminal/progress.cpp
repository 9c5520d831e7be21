#include "cli/terminal/progress.h"

#include <sys/time.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <string_view>

#include "cli/terminal/terminal.h"

namespace orvane::cli {
namespace {

constexpr std::string_view kEraseLine = "\r\033[K";
constexpr unsigned int kMebibyteShift = 20;

// What the signal handler uses. The name is changed only while no signal can come.
std::string shownName;
std::atomic<std::size_t> bytesRead = 0;
std::atomic<bool> isShown = false;
bool isRunning = false;

void write(std::string_view text) {
  // A terminal that is gone misses nothing but this line.
  [[maybe_unused]] const ssize_t ignored = ::write(STDERR_FILENO, text.data(), text.size());
}

void show(int /*signal*/) {
  const std::size_t mebibytes = bytesRead >> kMebibyteShift;
  if (mebibytes == 0) return;
  const int error = errno;
  std::array<char, 24> number{};
  const char* const end = std::to_chars(number.begin(), number.end(), mebibytes).ptr;
  write(kEraseLine);
  write("Reading ");
  write(shownName);
  write(", ");
  write({number.data(), end});
  write(" MiB so far");
  isShown = true;
  errno = error;
}

void setTimer(int seconds) {
  const itimerval timer{{seconds, 0}, {seconds, 0}};
  ::setitimer(ITIMER_REAL, &timer, nullptr);
}

}  // namespace

void startProgress(const std::string& name) {
  endProgress();
  const std::size_t rest = sizeof "Reading , 12345678 MiB so far";
  shownName = takesLine(STDERR_FILENO, name.size() + rest) ? name : "input";
  itimerval running{};
  ::getitimer(ITIMER_REAL, &running);  // an alarm that someone else set stays
  const bool isFree = running.it_value.tv_sec == 0 && running.it_value.tv_usec == 0;
  if (!isFree || !takesLine(STDERR_FILENO, shownName.size() + rest)) return;
  bytesRead = 0;
  isRunning = true;
  struct sigaction action {};
  action.sa_handler = show;
  action.sa_flags = SA_RESTART;
  ::sigaction(SIGALRM, &action, nullptr);
  setTimer(1);
}

void addProgress(std::size_t bytes) { bytesRead += bytes; }

void endProgress() {
  if (!isRunning) return;
  setTimer(0);
  std::signal(SIGALRM, SIG_DFL);
  isRunning = false;
  if (isShown) write(kEraseLine);
  isShown = false;
}

}  // namespace orvane::cli
