// The orvane command: the table of its subcommands, each a file of that name.

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <clocale>
#include <csignal>
#include <exception>
#include <string>

#include "cli/command.h"
#include "cli/command_line.h"
#include "cli/files/output.h"
#include "cli/memory.h"

namespace orvane::cli {
namespace {

constexpr std::array kSubcommands = {
    Subcommand{"apps", "Show the applications of a mapping text as a table", describeApps},
    Subcommand{"diff",
               "Write the change sections that lead from an older mapping text to a newer one",
               describeDiff},
    Subcommand{"ports", "Read port lists and write them sorted and merged", describePorts},
    Subcommand{"check", "Tell which applications collide with what is in use", describeCheck},
    Subcommand{"used", "Write what is in use as one line", describeUsed},
    Subcommand{"catalogue", "Show an application catalogue, or combine it", describeCatalogue},
    Subcommand{"tree", "Draw and check a protocol tree", describeTree},
    Subcommand{"import", "Make a section text of what another program describes", describeImport},
    Subcommand{"lint", "Report what is skipped, cut or misread when a text is read", describeLint},
};

int run(int argc, char** argv) {
  try {
    return CommandLine(kSubcommands).run(argc, argv);
  } catch (const std::exception& failure) {
    writeError(calledName() + ": " + failure.what() + "\n");
    return kUnusable;
  }
}

// A standard stream that is closed would be the next file that is opened. It stays unusable: input
// is held by what cannot be read, output by what cannot be written.
bool isHeld(int stream) {
  const int flags = stream == STDIN_FILENO ? O_WRONLY : O_RDONLY;
  return ::fcntl(stream, F_GETFD) >= 0 || ::open("/dev/null", flags) == stream;
}

bool holdStandardStreams() {
  return isHeld(STDIN_FILENO) && isHeld(STDOUT_FILENO) && isHeld(STDERR_FILENO);
}

}  // namespace
}  // namespace orvane::cli

int main(int argc, char** argv) {
  if (!orvane::cli::holdStandardStreams()) {
    orvane::cli::writeError("orvane: a standard stream is closed, and there is no /dev/null\n");
    return orvane::cli::kUnusable;
  }
  std::setlocale(LC_CTYPE, "C.UTF-8");  // names are UTF-8, wherever the command runs
  // A reader that went away and a file that may not grow are reported, like a full disk.
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  return orvane::cli::run(argc, argv);
}
