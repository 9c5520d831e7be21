// The command, from start to end, against bare programs that do nothing but the work itself: they
// read whole files, call the library and write what it gives. Writes a table of ratios of time and
// of the most memory held, medians of runs in turns.
//   whole ORVANE [ROUNDS [APPLICATIONS]]

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
#include <iomanip>
#include <iostream>
#include <string>
#include <vector>

#include "workload.h"

namespace {

using Arguments = std::vector<std::string>;

// One to three items of one to six ports and a range each.
std::string mappingText(std::int64_t applications, std::uint64_t seed) {
  workload::Random random(seed);
  const auto below = [&](unsigned int limit) {
    return static_cast<unsigned int>(random() % limit);
  };
  std::string text;
  for (std::int64_t i = 1; i <= applications; ++i) {
    const std::string number = std::to_string(i);
    const unsigned int items = 1 + below(3);
    for (unsigned int item = 0; item < items; ++item) {
      text += "PortRange=";
      unsigned int port = 0;
      const unsigned int ports = 1 + below(6);
      for (unsigned int k = 0; k < ports; ++k) {
        port += 1 + below(4000);
        text += std::to_string(port) + ",";
      }
      text += std::to_string(port + 10) + "-" + std::to_string(port + 500) + "\nIPv4=10." +
              std::to_string(item) + "." + std::to_string(i / 256 % 256) + "." +
              std::to_string(i % 256) + "\nAction=1\nSelectorType=1\nUPID=" + number +
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
  double kibibytes;
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
  return {took.count(), static_cast<double>(usage.ru_maxrss)};
}

double median(std::vector<double> values) {
  std::ranges::nth_element(values, values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2));
  return values[values.size() / 2];
}

double median(const std::vector<Run>& runs, double Run::*value) {
  std::vector<double> values;
  values.reserve(runs.size());
  for (const Run& one : runs) values.push_back(one.*value);
  return median(values);
}

struct Way {
  const char* name;
  Arguments arguments;
  std::size_t bare;  // the way that it is compared with
  std::vector<Run> runs;
};

void measure(std::vector<Way>& ways, int rounds) {
  for (int round = 0; round < rounds; ++round) {
    for (Way& way : ways) way.runs.push_back(run(way.arguments));
  }
  std::cout << "| | time | memory | s | MiB |\n|---|---|---|---|---|\n" << std::fixed;
  for (const Way& way : ways) {
    const auto ratio = [&](double Run::*value) {
      return median(way.runs, value) / median(ways[way.bare].runs, value);
    };
    std::cout << std::setprecision(2) << "| " << way.name << " | " << ratio(&Run::seconds) << " | "
              << ratio(&Run::kibibytes) << " | " << median(way.runs, &Run::seconds) << " | "
              << std::setprecision(0) << median(way.runs, &Run::kibibytes) / 1024 << " |\n";
  }
}

}  // namespace

int main(int argc, char** argv) {
  const Arguments arguments(argv + 1, argv + argc);
  if (arguments.empty()) return 2;
  if (arguments[0] == "--bare") return runBare({arguments.begin() + 1, arguments.end()});

  const std::string& orvane = arguments[0];
  const int rounds = argc > 2 ? std::atoi(argv[2]) : 9;
  const std::int64_t applications = argc > 3 ? std::atoll(argv[3]) : 100000;
  const std::filesystem::path folder = std::filesystem::temp_directory_path() / "orvane-whole";
  std::filesystem::create_directories(folder);
  const std::string older = folder / "older.apps";
  const std::string newer = folder / "newer.apps";
  std::ofstream(older) << mappingText(applications, 1);
  // One application in twenty differs, in the first port of an item.
  const std::string text = readFile(older);
  std::string changed;
  changed.reserve(text.size() + text.size() / 100);
  std::size_t written = 0;
  for (std::size_t at = 0, n = 0; (at = text.find("PortRange=", at)) != std::string::npos; ++n) {
    at += sizeof "PortRange=" - 1;
    if (n % 40 != 0) continue;
    changed.append(text, written, at - written).append("7,");
    written = at;
  }
  changed.append(text, written);
  std::ofstream(newer) << changed;
  const std::string self = std::filesystem::read_symlink("/proc/self/exe");
  std::vector<Way> ways = {
      {"a bare program: read, written", {self, "--bare", older}, 0, {}},
      {"apps --section", {orvane, "apps", "--section", older}, 0, {}},
      {"apps", {orvane, "apps", older}, 0, {}},
      {"apps --json", {orvane, "apps", "--json", older}, 0, {}},
      {"lint", {orvane, "lint", older}, 0, {}},
      {"check --each", {orvane, "check", "--each", older}, 0, {}},
      {"a bare program: two read, changes written", {self, "--bare", older, newer}, 6, {}},
      {"diff", {orvane, "diff", older, newer}, 6, {}},
      {"diff --summary", {orvane, "diff", "--summary", older, newer}, 6, {}},
  };
  measure(ways, rounds);
  std::filesystem::remove_all(folder);
  return 0;
}
