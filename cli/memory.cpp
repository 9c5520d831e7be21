#include "cli/memory.h"

#include <sys/uio.h>
#include <unistd.h>

#include <array>
#include <new>
#include <string_view>
#include <utility>

#include "cli/command.h"
#include "cli/files/input.h"
#include "cli/files/replacement.h"
#include "cli/terminal/progress.h"

namespace orvane::cli {
namespace {

std::string rememberedName = "orvane";

iovec part(std::string_view text) { return {const_cast<char*>(text.data()), text.size()}; }

// Ends the process, so that nothing that is under way has to go on without memory, or can take what
// is missing for the end of its input. Takes none itself.
[[noreturn]] void endWithoutMemory() {
  removeUnfinished();
  endProgress();
  const std::string& input = lastInputName();
  const std::array message = {part(rememberedName), part(": "), part(input),
                              part(input.empty() ? "" : ": "), part("not enough memory\n")};
  [[maybe_unused]] const ssize_t ignored =
      ::writev(STDERR_FILENO, message.data(), static_cast<int>(message.size()));
  ::_exit(kUnusable);
}

// Before anything else, since what lives as long as the process takes memory before main().
[[gnu::constructor(101)]] void watchMemory() { std::set_new_handler(endWithoutMemory); }

}  // namespace

const std::string& calledName() { return rememberedName; }

void rememberName(std::string called) { rememberedName = std::move(called); }

}  // namespace orvane::cli
