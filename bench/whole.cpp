// The command, from start to end, against bare programs that do nothing but the work itself (they
// read whole files, call the library and write what it gives) and against the operations of the
// library alone that it calls, on texts that are in memory. Writes a table of times and of the most
// memory held, the least of runs in turns, and how they grow.
//   whole ORVANE [ROUNDS [APPLICATIONS...]]

#include <fcntl.h>
#include <orvane/orvane.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

#include "growth.h"
#include "whole_work.h"
#include "workload.h"

namespace {

using Arguments = std::vector<std::string>;

// One to three items of one to six ports and a range each. A third of the applications has its
// addresses from others. Every fortieth list of ports, of one application in twenty, begins with
// `change`.
std::string mappingText(std::int64_t applications, const std::string& change) {
  workload::Random random(1);
  std::int64_t lists = 0;
  const auto below = [&](unsigned int limit) {
    return static_cast<unsigned int>(random() % limit);
  };
  std::string text;
  for (std::int64_t i = 1; i <= applications; ++i) {
    const std::string number = std::to_string(i);
    const std::int64_t host = i % (applications * 2 / 3 + 1);
    const std::int64_t items = 1 + below(3);
    for (std::int64_t item = 0; item < items; ++item) {
      text += "PortRange=";
      if (lists++ % 40 == 0) text += change;
      unsigned int port = 0;
      const unsigned int ports = 1 + below(6);
      for (unsigned int k = 0; k < ports; ++k) {
        port += 1 + below(4000);
        text += std::to_string(port) + ",";
      }
      text += std::to_string(port + 10) + "-" + std::to_string(port + 500) + "\nIPv4=10." +
              std::to_string(item * 64 + host / 65536) + "." + std::to_string(host / 256 % 256) +
              "." + std::to_string(host % 256) + "\nAction=1\nSelectorType=1\nUPID=" + number +
              "\nApplName=application-" + number +
              "\nUniqueBlockNumber=1\nSelectorTypeInfo=0\nGroupID=" + number + "\n;\n";
    }
  }
  return text;
}

std::string readFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string text(std::filesystem::file_size(path), '\0');
  file.read(text.data(), static_cast<std::streamsize>(text.size()));
  return text;
}

OrvaneAppMapping readMapping(const std::string& path) {
  OrvaneAppMapping mapping;
  mapping.setSection(readFile(path));
  return mapping;
}

int runBare(const Arguments& files) {
  const OrvaneAppMapping older = readMapping(files.at(0));
  const char* const text = files.size() == 1
                               ? older.getSection(true)
                               : older.getUpdatedSection(readMapping(files.at(1)), true);
  std::fputs(text, stdout);
  return 0;
}

struct Run {
  double seconds;
  double mebibytes;
};

Run run(const Arguments& arguments) {
  std::vector<char*> words;
  for (const std::string& word : arguments) words.push_back(const_cast<char*>(word.c_str()));
  words.push_back(nullptr);
  const auto start = std::chrono::steady_clock::now();
  const pid_t child = ::fork();
  if (child == 0) {
    ::dup2(::open("/dev/null", O_WRONLY), STDOUT_FILENO);
    ::execv(words[0], words.data());
    ::_exit(127);
  }
  int status = 0;
  rusage usage{};
  ::wait4(child, &status, 0, &usage);
  if (!WIFEXITED(status) || WEXITSTATUS(status) > 1) {
    std::cerr << "whole: " << arguments[0] << " " << arguments[1] << " failed\n";
    std::exit(2);
  }
  const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
  return {took.count(), static_cast<double>(usage.ru_maxrss) / 1024};
}

// The seconds that the steps take in a process of their own.
double runLibrary(const whole::Work::Steps& steps, const Arguments& files) {
  int ends[2];
  if (::pipe(ends) != 0) std::abort();
  const pid_t child = ::fork();
  if (child == 0) {
    std::vector<std::string> texts;
    for (const std::string& file : files) texts.push_back(readFile(file));
    whole::Work work(std::move(texts));
    const auto start = std::chrono::steady_clock::now();
    for (const auto step : steps) (work.*step)();
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    const double seconds = took.count();
    ::_exit(::write(ends[1], &seconds, sizeof seconds) == sizeof seconds ? 0 : 1);
  }
  ::close(ends[1]);
  double seconds = 0;
  if (::read(ends[0], &seconds, sizeof seconds) != sizeof seconds) std::abort();
  ::close(ends[0]);
  ::waitpid(child, nullptr, 0);
  return seconds;
}

void keepLeast(bench::BySize& values, std::int64_t size, double value) {
  const auto [kept, isFirst] = values.try_emplace(size, value);
  if (!isFirst) kept->second = std::min(kept->second, value);
}

struct Way {
  const char* name;
  Arguments words;           // of the program, before the files
  std::size_t files;         // how many it reads; the first way with as many is the bare program
  whole::Work::Steps steps;  // what the library does for it
  bench::BySize seconds = {};
  bench::BySize secondsInLibrary = {};
  bench::BySize mebibytes = {};
};

void measure(std::vector<Way>& ways, int rounds, std::int64_t applications,
             const Arguments& files) {
  std::ofstream(files[0]) << mappingText(applications, "");
  std::ofstream(files[1]) << mappingText(applications, "7,");
  for (int round = 0; round < rounds; ++round) {
    for (Way& way : ways) {
      const Arguments read(files.begin(), files.begin() + static_cast<int>(way.files));
      Arguments words = way.words;
      words.insert(words.end(), read.begin(), read.end());
      const Run whole = run(words);
      keepLeast(way.seconds, applications, whole.seconds);
      keepLeast(way.mebibytes, applications, whole.mebibytes);
      keepLeast(way.secondsInLibrary, applications, runLibrary(way.steps, read));
    }
  }
}

void print(const std::vector<Way>& ways) {
  std::cout << "| | time | memory | s | growth | library, s | growth | MiB |\n"
            << "|---|---|---|---|---|---|---|---|\n";
  for (const Way& way : ways) {
    const Way& bare = *std::ranges::find(ways, way.files, &Way::files);
    const std::string cells[] = {way.name,
                                 bench::joined(bench::ratiosOf(way.seconds, bare.seconds), 2),
                                 bench::joined(bench::ratiosOf(way.mebibytes, bare.mebibytes), 2),
                                 bench::joined(way.seconds, 2),
                                 bench::growthOf(way.seconds),
                                 bench::joined(way.secondsInLibrary, 2),
                                 bench::growthOf(way.secondsInLibrary),
                                 bench::joined(way.mebibytes, 0)};
    for (const std::string& cell : cells) std::cout << "| " << cell << " ";
    std::cout << "|\n";
  }
}

}  // namespace

int main(int argc, char** argv) {
  using Work = whole::Work;
  const Arguments arguments(argv + 1, argv + argc);
  if (arguments.empty()) return 2;
  if (arguments[0] == "--bare") return runBare({arguments.begin() + 1, arguments.end()});

  const std::string& orvane = arguments[0];
  const int rounds = argc > 2 ? std::atoi(argv[2]) : 9;
  std::vector<std::int64_t> sizes;
  for (int i = 3; i < argc; ++i) sizes.push_back(std::atoll(argv[i]));
  if (sizes.empty()) sizes = {100000, 300000, 1000000};
  const std::filesystem::path folder = std::filesystem::temp_directory_path() / "orvane-whole";
  std::filesystem::create_directories(folder);
  const std::string self = std::filesystem::read_symlink("/proc/self/exe");
  const Work::Steps read = {&Work::readReported};
  std::vector<Way> ways = {
      {"a bare program: read, written", {self, "--bare"}, 1, {&Work::read, &Work::getSection}},
      {"apps --section",
       {orvane, "apps", "--section"},
       1,
       {&Work::readReported, &Work::appendSections}},
      {"apps", {orvane, "apps"}, 1, {&Work::readReported, &Work::appendItems}},
      {"apps --json", {orvane, "apps", "--json"}, 1, read},
      {"lint", {orvane, "lint"}, 1, read},
      {"check --each",
       {orvane, "check", "--each"},
       1,
       {&Work::readReported, &Work::appendCollisions}},
      {"a bare program: two read, changes written",
       {self, "--bare"},
       2,
       {&Work::read, &Work::getUpdatedSection}},
      {"diff", {orvane, "diff"}, 2, {&Work::readReported, &Work::appendChanges}},
      {"diff --summary", {orvane, "diff", "--summary"}, 2, {&Work::readReported, &Work::findFacts}},
  };
  for (const std::int64_t size : sizes) {
    measure(ways, rounds, size, {folder / "older.apps", folder / "newer.apps"});
  }
  print(ways);
  std::filesystem::remove_all(folder);
  return 0;
}
