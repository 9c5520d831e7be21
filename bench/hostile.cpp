// What 1 MiB of hostile text costs each reader: for every text that is meant to be slow or to take
// much memory, the time and the peak of what it takes; the worst of each reader as a table.
// Then what hostile input costs beside friendly input as large.
//   hostile [COMMAND]
//   hostile --twins [OPERATION]
//   hostile --large
// COMMAND is the orvane command; it measures that one's readers instead of the library's. With
// --twins only the second comparison is made, of the operations whose name contains OPERATION, and
// with --large only the cost of groups without any key, in collections of millions of them.

#include "hostile.h"

#include <malloc.h>
#include <orvane/orvane.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iomanip>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

#include "counted_memory.h"

namespace {

constexpr std::size_t kSize = 1 << 20;

// As many pieces as make 1 MiB.
std::string fill(const std::function<std::string(unsigned int)>& piece) {
  std::string text;
  for (unsigned int i = 0; text.size() < kSize; ++i) text += piece(i);
  return text;
}

std::string number(unsigned int value) { return std::to_string(value); }

// Spreads numbers so that each is far from the one before it.
unsigned int spread(unsigned int i) { return i * 2654435761U % 2000000000U + 1; }

using Texts = std::vector<std::pair<std::string, std::string>>;

Texts portLists() {
  return {{"one number of a million digits", std::string(kSize, '9')},
          {"separators alone", std::string(kSize, ',')},
          {"single ports in descending order",
           fill([](auto i) { return number(65535 - i % 65535) + ","; })},
          {"ranges in ascending order",
           fill([](auto i) { return number(2 * i + 1) + "-" + number(2 * i + 2) + ","; })},
          {"ranges in descending order", fill([](auto i) {
             return number(1000000 - 3 * i) + "-" + number(1000001 - 3 * i) + ",";
           })},
          {"ranges in random order",
           fill([](auto i) { return number(spread(i)) + "-" + number(spread(i) + 1) + ","; })},
          {"ranges each around the one before",
           fill([](auto i) { return number(1000000 - i) + "-" + number(1000000 + i) + ","; })},
          {"ranges and ports by turns", fill([](auto i) {
             return i % 2 == 0 ? number(spread(i) % 65535 + 1) + ","
                               : number(spread(i)) + "-" + number(spread(i) + 9) + ",";
           })},
          {"whole ranges of ports", fill([](auto) { return "1-65535,"; })}};
}

// Section texts; `keys` are a reader's own.
Texts sections(const std::string& key, const std::string& portKey) {
  Texts texts = {
      {"terminators alone", fill([](auto) { return ";\n"; })},
      {"line ends alone", std::string(kSize, '\n')},
      {"one line without end", std::string(kSize, 'x')},
      {"pairs without terminator", fill([&](auto i) { return key + "=" + number(i) + "\n"; })},
      {"different keys", fill([](auto i) { return number(i) + "=\n"; }) + ";\n"},
      {"small groups, each of its own",
       fill([&](auto i) { return key + "=" + number(i) + "\n;\n"; })},
      {"small groups in random order",
       fill([&](auto i) { return key + "=" + number(spread(i)) + "\n;\n"; })},
      {"small groups of two by turns", fill([&](auto i) {
         return key + "=" + number(i % 2) + "\nIPv4=" + number(spread(i)) + "\n;\n";
       })},
      {"items in descending order",
       fill([&](auto i) { return key + "=1\nIPv4=" + number(90000000 - i) + "\n;\n"; })},
      {"new groups without a name", fill([](auto) { return "A=\n;\n"; })},
      {"new groups with names",
       fill([](auto i) { return "GroupID=" + number(spread(i)) + "\n;\n"; })}};
  for (const auto& [name, list] : portLists()) {
    texts.emplace_back(name, key + "=1\n" + portKey + "=" + list + "\n;\n");
  }
  return texts;
}

struct Worst {
  double seconds = 0;
  std::string slowest;
  std::size_t peak = 0;
  std::string largest;

  void take(const std::string& text, double took, std::size_t bytes) {
    if (took > seconds) seconds = took, slowest = text;
    if (bytes > peak) peak = bytes, largest = text;
  }
};

void write(const std::string& reader, const Worst& worst) {
  std::cout << "| " << reader << " | " << worst.seconds * 1000 << " | " << worst.slowest << " | "
            << static_cast<double>(worst.peak) / kSize << " | " << worst.largest << " |\n"
            << std::flush;
}

using bench::Clock;
using bench::since;

// Reads each text three times; the quickest counts.
template <typename Read>
void measure(const std::string& reader, const Texts& texts, Read read) {
  Worst worst;
  for (const auto& entry : texts) {
    double took = 1e9;
    bench::Use use{};
    for (int round = 0; round < 3; ++round) {
      const auto start = Clock::now();
      use = bench::measure([&] {
        auto made = read(entry.second);
        took = std::min(took, since(start));
        return made;
      });
    }
    worst.take(entry.first, took, use.peak);
  }
  write(reader, worst);
}

template <typename Object>
auto reading(void (Object::*method)(const char*)) {
  return [method](const std::string& text) {
    Object object;
    (object.*method)(text.c_str());
    return object;
  };
}

template <typename Object>
Object readRecord(const std::string& text) {
  Object object;
  object.setValuesChecked({reinterpret_cast<const unsigned char*>(text.data()), text.size()});
  return object;
}

// Tree and node buffers: as many records as 1 MiB has, by the UPIDs that `upid` gives.
std::string nodes(const std::function<unsigned int(unsigned int)>& upid, bool header) {
  constexpr unsigned int kNodes = kSize / sizeof(UPID_TREE_NODE_S);
  OrvaneUpidArray array;
  for (unsigned int i = 0; i < kNodes; ++i) array.emplace_back().setUpid(upid(i));
  std::string buffer(kNodes * sizeof(UPID_TREE_NODE_S), '\0');
  array.getBufferChecked(buffer);
  std::string words(36, '\0');
  for (unsigned int i = 0; i < 4; ++i) words[i] = static_cast<char>(kNodes >> 8 * i);
  return header ? words + buffer : buffer;
}

// Runs the command on a file with each text; its output goes nowhere. The memory that a process
// starts from counts as its own, so all that is not needed any more is given back before.
void measureCommand(const std::string& command, const std::string& reader,
                    const std::vector<std::string>& arguments, const std::string& ending,
                    Texts&& texts) {
  Worst worst;
  const std::string path =
      std::filesystem::temp_directory_path() / ("hostile-" + std::to_string(getpid()) + ending);
  for (auto& [name, text] : texts) {
    std::ofstream(path, std::ios::binary) << text;
    std::string().swap(text);
    malloc_trim(0);
    std::vector<char*> argv = {const_cast<char*>(command.c_str())};
    for (const std::string& argument : arguments) {
      argv.push_back(const_cast<char*>(argument.c_str()));
    }
    argv.push_back(const_cast<char*>(path.c_str()));
    argv.push_back(nullptr);
    const auto start = Clock::now();
    const pid_t child = fork();
    if (child == 0) {
      if (std::freopen("/dev/null", "w", stdout) != nullptr &&
          std::freopen("/dev/null", "w", stderr) != nullptr) {
        execv(argv[0], argv.data());
      }
      _exit(127);
    }
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    if (!WIFEXITED(status) || WEXITSTATUS(status) > 2) {
      std::cerr << reader << ", " << name << ": the command fails\n";
    }
    worst.take(name, since(start), static_cast<std::size_t>(usage.ru_maxrss) * 1024);
  }
  std::remove(path.c_str());
  write(reader, worst);
}

// Trees of a header and nodes, or of nodes alone.
Texts trees(bool header) {
  return {{"ascending nodes", nodes([](auto i) { return i; }, header)},
          {"nodes in random order", nodes(spread, header)},
          {"one UPID", nodes([](auto) { return 7; }, header)}};
}

void measureLibrary() {
  const Texts lists = portLists();
  measure("range and port text", lists, reading<OrvanePort>(&OrvanePort::setPort));
  measure("address",
          {{"one number of a million digits", std::string(kSize, '9')},
           {"dots alone", std::string(kSize, '.')}},
          reading<OrvanePortMapping>(&OrvanePortMapping::setIp));
  measure("port list", lists, reading<OrvanePortMapping>(&OrvanePortMapping::setPorts));
  const Texts groups = sections("UPID", "PortRange");
  measure("application section", groups,
          reading<OrvaneApplication>(&OrvaneApplication::setSection));
  measure("mapping section", groups, reading<OrvaneAppMapping>(&OrvaneAppMapping::setSection));
  measure("catalogue section", groups,
          reading<OrvaneAppInfoArray>(&OrvaneAppInfoArray::setSection));
  measure("section store", groups, [](const std::string& text) { return OrvaneIni(text.c_str()); });
  Texts records = {{"NULs alone", "1" + std::string(kSize, '\0')}};
  for (const auto& [name, list] : lists) {
    records.emplace_back(name, list + std::string("\0001\0001\0001\0001\0001\0001\0001\0", 15));
  }
  measure("mapping record", records, readRecord<OrvanePortMapping>);
  measure("application record", records, readRecord<OrvaneApplication>);
  Texts entries;
  for (const auto& [name, list] : lists) {
    entries.emplace_back(
        name, std::string("1\0001\0001\0", 6) + list + std::string("\0001\0001\0001\0n\0", 9));
  }
  measure("catalogue record", entries, readRecord<OrvaneAppInfo>);
  measure("tree buffer", trees(true), [](const std::string& buffer) {
    OrvaneUpidTree tree;
    tree.setBufferChecked(buffer);
    return tree;
  });
  measure("node buffer", trees(false), [](const std::string& buffer) {
    OrvaneUpidArray array;
    array.setBufferChecked(buffer);
    return array;
  });
}

void measureCommands(const std::string& command) {
  measureCommand(command, "`orvane lint`", {"lint"}, "", sections("UPID", "PortRange"));
  measureCommand(command, "`orvane apps`", {"apps"}, "", sections("UPID", "PortRange"));
  measureCommand(command, "`orvane catalogue`", {"catalogue"}, "", sections("UPID", "PortRange"));
  measureCommand(command, "`orvane import services`", {"import", "services"}, "",
                 {{"line ends alone", std::string(kSize, '\n')},
                  {"names alone", fill([](auto i) { return number(i) + "\n"; })},
                  {"one name", fill([](auto i) { return "n " + number(i % 65535 + 1) + "/x\n"; })},
                  {"different names", fill([](auto i) { return number(i) + " 1/x\n"; })}});
  measureCommand(command, "`orvane tree`", {"tree"}, "", trees(true));
  measureCommand(
      command, "`orvane tree pack`, CSV",
      {"tree", "pack", "--output", std::filesystem::temp_directory_path() / "hostile.tree"}, ".csv",
      {{"line ends alone", std::string(kSize, '\n')},
       {"commas alone", "upid\n" + std::string(kSize, ',')},
       {"nodes of one parent",
        "upid,parentUpid\n" + fill([](auto i) { return number(i + 1) + ",1\n"; })},
       {"nodes of one UPID", "upid\n" + fill([](auto) { return "1\n"; })}});
  measureCommand(
      command, "`orvane tree pack`, JSON",
      {"tree", "pack", "--output", std::filesystem::temp_directory_path() / "hostile.tree"},
      ".json",
      {{"brackets alone", std::string(kSize, '[')},
       {"nested arrays",
        "{\"nodes\":" + std::string(kSize / 2, '[') + std::string(kSize / 2, ']') + "}"},
       {"small nodes", "{\"nodes\":[{\"upid\":0}" +
                           fill([](auto i) { return ",{\"upid\":" + number(i) + "}"; }) + "]}"},
       {"empty objects", "{\"nodes\":[{}" + fill([](auto) { return ",{}"; }) + "]}"}});
}

}  // namespace

int main(int argc, char** argv) {
  std::cout << std::fixed << std::setprecision(1);
  const std::string first = argc > 1 ? argv[1] : "";
  if (first == "--twins") {
    bench::compareTwins(argc > 2 ? argv[2] : "");
    return 0;
  }
  if (first == "--large") {
    bench::measureNameless(true);
    return 0;
  }
  std::cout << "| reader | slowest, ms | text | largest, MiB | text |\n|---|---|---|---|---|\n"
            << std::flush;
  if (!first.empty()) {
    measureCommands(first);
    return 0;
  }
  measureLibrary();
  bench::compareTwins("");
  bench::measureNameless(false);
  return 0;
}
