// Half of the new inputs, made by what texts consist of: lines and groups, keys, port lists, fields
// and numbers. The other half is left to the fuzzer's own changes of bytes.

#include <orvane/orvane.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

// Not every fuzzer has it.
extern "C" __attribute__((weak)) std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size,
                                                              std::size_t maxSize);

namespace {

using Random = std::minstd_rand;
using Pieces = std::vector<std::string>;

constexpr std::array<std::string_view, 26> kValues = {
    "",           "0",          "1",         "2",     "3",       "-1",          "+5",
    " 7",         "007",        "65534",     "65535", "65536",   "2147483647",  "2147483648",
    "4294967295", "4294967296", "10-20",     "20-10", "0-65535", "65535-70000", "10.0.0.1",
    "1.2.3",      "1..2.3",     "256.0.0.1", "a-b",   "name"};
constexpr std::array<std::string_view, 8> kTerminators = {";",   ";;", " ;",  "end",
                                                          "[x]", "#",  ";\r", "\n;"};

std::size_t pick(std::size_t count, Random& random) { return random() % count; }

template <typename List>
const auto& pickFrom(const List& list, Random& random) {
  return *std::next(std::begin(list), static_cast<std::ptrdiff_t>(pick(std::size(list), random)));
}

// The text in pieces, each with the end that makes it one.
template <typename IsEnd>
Pieces split(std::string_view text, char separator, IsEnd isEnd) {
  Pieces pieces;
  std::string piece;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find(separator, at), text.size() - 1) + 1;
    const std::string_view part = text.substr(at, end - at);
    piece += part;
    at = end;
    if (!isEnd(part) && at < text.size()) continue;
    pieces.push_back(piece);
    piece.clear();
  }
  return pieces;
}

Pieces linesOf(std::string_view text) {
  return split(text, '\n', [](std::string_view /*part*/) { return true; });
}

void join(const Pieces& pieces, std::string& text) {
  text.clear();
  for (const std::string& piece : pieces) text += piece;
}

// Puts one of the pieces elsewhere, once more, in the place of another one, or nowhere.
void arrange(Pieces& pieces, Random& random) {
  const auto from = pieces.begin() + static_cast<std::ptrdiff_t>(pick(pieces.size(), random));
  const auto to = pieces.begin() + static_cast<std::ptrdiff_t>(pick(pieces.size(), random));
  switch (pick(4, random)) {
    case 0:
      std::swap(*from, *to);
      break;
    case 1:
      pieces.insert(to, std::string(*from));
      break;
    case 2:
      *to = std::string(*from);
      break;
    default:
      pieces.erase(from);
  }
}

void arrangeLines(std::string& text, Random& random) {
  Pieces lines = linesOf(text);
  arrange(lines, random);
  join(lines, text);
}

void arrangeGroups(std::string& text, Random& random) {
  Pieces groups = split(text, '\n', [](std::string_view line) {
    return line.size() > 1 && line.find('=') == std::string_view::npos;
  });
  arrange(groups, random);
  join(groups, text);
}

// Fields of records, and the texts of an input that has several.
void arrangeFields(std::string& text, Random& random) {
  const char separator = text.find('\xFF') == std::string::npos ? '\0' : '\xFF';
  Pieces fields = split(text, separator, [](std::string_view /*part*/) { return true; });
  arrange(fields, random);
  join(fields, text);
}

// One of the stretches of text of such characters; an empty one where there is none.
template <typename IsPart>
std::string_view stretchOf(std::string_view text, IsPart isPart, Random& random) {
  const auto begin = text.begin() + static_cast<std::ptrdiff_t>(pick(text.size(), random));
  auto first = std::find_if(begin, text.end(), isPart);
  if (first == text.end()) first = std::find_if(text.begin(), text.end(), isPart);
  while (first != text.begin() && first != text.end() && isPart(first[-1])) --first;
  return {first, std::find_if_not(first, text.end(), isPart)};
}

std::string_view numberOf(std::string_view text, Random& random) {
  return stretchOf(
      text, [](char c) { return c >= '0' && c <= '9'; }, random);
}

void put(std::string& text, std::string_view stretch, std::string_view by) {
  text.replace(static_cast<std::size_t>(stretch.data() - text.data()), stretch.size(), by);
}

void arrangeList(std::string& text, Random& random) {
  const auto isPart = [](char c) { return (c >= '0' && c <= '9') || c == ',' || c == '-'; };
  const std::string_view list = stretchOf(text, isPart, random);
  if (list.empty()) return;
  Pieces items =
      split(std::string(list) + ',', ',', [](std::string_view /*part*/) { return true; });
  arrange(items, random);
  std::string arranged;
  join(items, arranged);
  put(text, list, arranged.substr(0, arranged.size() - (arranged.empty() ? 0 : 1)));
}

// A port or range beside a number, around it, up to it or back to it.
void addNeighbour(std::string& text, Random& random) {
  const std::string_view number = numberOf(text, random);
  if (number.empty()) return;
  const unsigned long value = std::stoul(std::string(number.substr(0, 10)));
  constexpr std::array<int, 7> kSteps = {-100, -2, -1, 0, 1, 2, 100};
  const auto near = [&] {
    return std::to_string(value + static_cast<unsigned long>(pickFrom(kSteps, random)));
  };
  std::string list = std::string(number) + "," + near();
  if (pick(4, random) != 0) list += "-" + near();
  put(text, number, list);
}

void changeNumber(std::string& text, Random& random) {
  const std::string_view number = numberOf(text, random);
  if (number.empty()) return;
  const std::string other(numberOf(text, random));
  put(text, number, pick(3, random) == 0 ? other : pickFrom(kValues, random));
}

std::string keyIn(std::string_view instead, Random& random) {
  constexpr std::array<std::string_view, 3> kOthers = {"GroupID", "", "x"};
  const std::size_t chosen = pick(20, random);
  std::string key(chosen < 8    ? OrvaneApplication::key_names[chosen]
                  : chosen < 16 ? OrvaneAppInfo::appinfo_key_names[chosen - 8]
                  : chosen < 19 ? kOthers[chosen - 16]
                                : instead);
  if (pick(4, random) != 0) return key;
  for (char& c : key) {
    const auto byte = static_cast<unsigned char>(c);
    c = static_cast<char>(random() % 2 == 0 ? std::tolower(byte) : std::toupper(byte));
  }
  return key;
}

void changeKey(std::string& text, Random& random) {
  Pieces lines = linesOf(text);
  std::string& line = lines[pick(lines.size(), random)];
  const std::size_t end = line.find('=');
  if (end == std::string::npos) return;
  line.replace(0, end, keyIn(line.substr(0, end), random));
  join(lines, text);
}

void addLine(std::string& text, Random& random) {
  Pieces lines = linesOf(text);
  const std::string line = pick(2, random) == 0
                               ? std::string(pickFrom(kTerminators, random))
                               : keyIn("=", random).append("=").append(pickFrom(kValues, random));
  lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(pick(lines.size() + 1, random)),
               line + "\n");
  join(lines, text);
}

// Ends a line otherwise, or joins it with the next one.
void changeEnd(std::string& text, Random& random) {
  constexpr std::array<std::string_view, 7> kEnds = {"\r\n", "\n\n", " \n", "",
                                                     "\n ",  "=\n",  ";\n"};
  Pieces lines = linesOf(text);
  std::string& line = lines[pick(lines.size(), random)];
  if (line.ends_with('\n')) line.pop_back();
  line += pickFrom(kEnds, random);
  join(lines, text);
}

constexpr std::array kChanges = {arrangeLines, arrangeGroups, arrangeFields,
                                 arrangeList,  addNeighbour,  changeNumber,
                                 changeKey,    addLine,       changeEnd};

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t maxSize, unsigned int seed) {
  Random random(seed);
  if (LLVMFuzzerMutate != nullptr && pick(2, random) == 0) {
    return LLVMFuzzerMutate(data, size, maxSize);
  }
  std::string text(reinterpret_cast<const char*>(data), size);
  for (std::size_t left = 1 + pick(3, random); left > 0; --left) {
    if (text.empty()) text = "\n";
    pickFrom(kChanges, random)(text, random);
  }
  text.resize(std::min(text.size(), maxSize));
  std::ranges::copy(text, data);
  return text.size();
}
