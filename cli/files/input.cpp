#include "cli/files/input.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstddef>
#include <string_view>

#include "cli/files/failure.h"
#include "cli/files/file.h"
#include "cli/terminal/progress.h"
#include "cli/terminal/text.h"

namespace orvane::cli {
namespace {

std::string lastName;

// What a regular file holds; 0 when that cannot be told.
std::size_t sizeOf(const File& file) {
  struct stat status {};
  const bool isKnown = ::fstat(file.descriptor(), &status) == 0 && S_ISREG(status.st_mode);
  return isKnown ? static_cast<std::size_t>(status.st_size) : 0;
}

void rejectNul(std::string_view block, std::size_t offset, const std::string& name) {
  const std::size_t nul = block.find('\0');
  if (nul == std::string_view::npos) return;
  throw Failure(name + ": the byte at offset " + std::to_string(offset + nul) +
                " is NUL: this is no text");
}

// What is no text is noticed at the block that says so, before room is made for the rest. Blocks
// are small enough to be copied while the processor still holds them, and lie on the heap: where
// the stack cannot grow, the process would be ended without a word.
Input readAll(const std::string& path, bool isText) {
  const bool standard = path == "-";
  Input input{inputName(path), {}};
  lastName = input.name;
  const File file(standard ? ::dup(STDIN_FILENO) : ::open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (!file.isOpen()) failAsErrno("cannot read " + input.name);
  startProgress(input.name);
  std::string room(std::size_t{1} << 17U, '\0');
  for (;;) {
    const ssize_t count = readSome(file.descriptor(), room.data(), room.size());
    if (count == 0) return input;
    if (count < 0) failAsErrno("cannot read " + input.name);
    const std::string_view block(room.data(), static_cast<std::size_t>(count));
    if (isText) rejectNul(block, input.text.size(), input.name);
    if (input.text.empty()) input.text.reserve(sizeOf(file));
    input.text.append(block);
    addProgress(block.size());
  }
}

}  // namespace

std::string inputName(const std::string& path) {
  return path == "-" ? "standard input" : escape(path);
}

Input readBytes(const std::string& path) { return readAll(path, false); }

Input readInput(const std::string& path) { return readAll(path, true); }

const std::string& lastInputName() { return lastName; }

std::string lineLabel(const Input& input, std::size_t line) {
  return input.name + ":" + std::to_string(line) + ": ";
}

}  // namespace orvane::cli
