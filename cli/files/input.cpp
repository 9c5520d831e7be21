#include "cli/files/input.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <system_error>

#include "cli/files/failure.h"
#include "cli/files/file.h"
#include "cli/terminal/progress.h"
#include "cli/terminal/text.h"

namespace orvane::cli {
namespace {

std::string readAll(const File& file, const std::string& name) {
  std::string text;
  std::array<char, 1U << 16U> block;
  for (;;) {
    const ssize_t count = ::read(file.descriptor(), block.data(), block.size());
    if (count == 0) return text;
    if (count > 0) {
      text.append(block.data(), static_cast<std::size_t>(count));
      addProgress(static_cast<std::size_t>(count));
    } else if (errno != EINTR) {
      failAsErrno("cannot read " + name);
    }
  }
}

}  // namespace

std::string inputName(const std::string& path) {
  return path == "-" ? "standard input" : escape(path);
}

Input readBytes(const std::string& path) {
  const bool standard = path == "-";
  Input input{inputName(path), {}};
  const File file(standard ? ::dup(STDIN_FILENO) : ::open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (!file.isOpen()) failAsErrno("cannot read " + input.name);
  startProgress(input.name);
  input.text = readAll(file, input.name);
  return input;
}

Input readInput(const std::string& path) {
  Input input = readBytes(path);
  if (const std::size_t nul = input.text.find('\0'); nul != std::string::npos) {
    throw Failure(input.name + ": the byte at offset " + std::to_string(nul) +
                  " is NUL: this is no text");
  }
  return input;
}

std::string lineLabel(const Input& input, std::size_t line) {
  return input.name + ":" + std::to_string(line) + ": ";
}

}  // namespace orvane::cli
