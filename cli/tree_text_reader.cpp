// Reading trees from JSON and CSV.

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <set>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "cli/files/failure.h"
#include "cli/files/input.h"
#include "cli/terminal/json.h"
#include "cli/terminal/text.h"
#include "cli/tree_file.h"

namespace orvane::cli {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// Which fields a text gives; those that it never gives may be derived.
using GivenFields = std::set<const NodeField*>;

// Null for a field that texts do not have.
const NodeField* findField(std::string_view name) {
  const auto* const found =
      std::ranges::find_if(kNodeFields, [&](const NodeField& field) { return name == field.name; });
  return found == kNodeFields.end() ? nullptr : found;
}

void setName(OrvaneUpidNode& node, const std::string& written, const std::string& where) {
  const auto name = readName(written);
  if (!name) {
    throw Failure(where + "name " + quote(written) +
                  " has more than 32 bytes or a backslash that is no \\xNN");
  }
  std::ranges::fill(node.name, '\0');
  std::ranges::copy(*name, node.name);
}

// The cells of a CSV line; a quoted cell may hold commas, and quotes doubled.
std::vector<std::string> cellsOf(std::string_view line, const std::string& where) {
  std::vector<std::string> cells(1);
  bool quoted = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == '"') {
      if (quoted && i + 1 < line.size() && line[i + 1] == '"') {
        cells.back().push_back(line[++i]);
      } else {
        quoted = !quoted;
      }
    } else if (line[i] == ',' && !quoted) {
      cells.emplace_back();
    } else {
      cells.back().push_back(line[i]);
    }
  }
  if (quoted) throw Failure(where + "a quote is not closed");
  return cells;
}

unsigned int numberOf(const std::string& cell, const std::string& where, std::string_view field) {
  const auto number = parseDecimal<unsigned int>(cell);
  if (!number) throw Failure(where + std::string(field) + " " + quote(cell) + " is no number");
  return *number;
}

using Cells = std::vector<std::string>;

void readHeader(const Cells& cells, const std::string& where, TreeFile& file) {
  if (file.header) throw Failure(where + "this is a second header");
  if (cells.size() != kHeaderWords) throw Failure(where + "a header has eight words");
  auto& header = file.header.emplace();
  for (std::size_t i = 1; i < kHeaderWords; ++i) header[i] = numberOf(cells[i], where, "word");
}

// The fields that the columns give; null is the name.
using Columns = std::vector<const NodeField*>;

Columns readColumns(const Cells& cells, const std::string& where) {
  Columns columns;
  for (const std::string& cell : cells) {
    const NodeField* const field = findField(cell);
    if (field == nullptr && cell != "name") throw Failure(where + "unknown column " + quote(cell));
    if (std::ranges::find(columns, field) != columns.end()) {
      throw Failure(where + "a second column " + quote(cell));
    }
    columns.push_back(field);
  }
  if (std::ranges::find(columns, findField("upid")) == columns.end()) {
    throw Failure(where + "there is no column upid");
  }
  return columns;
}

void readRow(const Cells& cells, const Columns& columns, const std::string& where,
             OrvaneUpidNode& node) {
  if (cells.size() != columns.size()) {
    throw Failure(where + "there are " + std::to_string(cells.size()) + " cells instead of " +
                  std::to_string(columns.size()));
  }
  for (std::size_t i = 0; i < cells.size(); ++i) {
    if (columns[i] == nullptr) {
      setName(node, cells[i], where);
    } else {
      node.*columns[i]->value = numberOf(cells[i], where, columns[i]->name);
    }
  }
}

void readCsv(const Input& input, TreeFile& file, GivenFields& given) {
  Columns columns;
  std::string_view rest = input.text;
  if (rest.starts_with(kByteOrderMark)) rest.remove_prefix(kByteOrderMark.size());
  for (std::size_t number = 1; !rest.empty(); ++number) {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    std::string_view line = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    if (line.ends_with('\r')) line.remove_suffix(1);
    const bool isHeader = line.substr(0, line.find(',')) == "#header";
    if (line.empty() || (line.front() == '#' && !isHeader)) continue;
    const std::string where = lineLabel(input, number);
    const Cells cells = cellsOf(line, where);
    if (isHeader) {
      readHeader(cells, where, file);
    } else if (columns.empty()) {
      columns = readColumns(cells, where);
    } else {
      readRow(cells, columns, where, file.nodes.emplace_back());
    }
  }
  if (columns.empty()) throw Failure(input.name + ": there is no line of columns");
  given.insert(columns.begin(), columns.end());
}

unsigned int wordOf(const Json& json, const std::string& where, std::string_view field) {
  if (!json.is_number_unsigned() || json.get<std::uint64_t>() > 0xFFFFFFFFU) {
    throw Failure(where + std::string(field) + " is no number of 32 bits");
  }
  return json.get<unsigned int>();
}

// Refuses an object that gives a key twice: the parser would keep one of them.
class KeyCheck : public nlohmann::json_sax<Json> {
 public:
  explicit KeyCheck(std::string where) : where_(std::move(where)) {}

  bool key(string_t& key) override {
    if (open_.back().insert(key).second) return true;
    const std::string which = open_.size() == 2 ? "node " + std::to_string(nodes_) + ": " : "";
    throw Failure(where_ + which + "a second key " + quote(key));
  }
  bool start_object(std::size_t /*elements*/) override {
    open_.emplace_back();
    if (open_.size() == 2) ++nodes_;
    return true;
  }
  bool end_object() override {
    open_.pop_back();
    return true;
  }
  bool null() override { return true; }
  bool boolean(bool /*value*/) override { return true; }
  bool number_integer(number_integer_t /*value*/) override { return true; }
  bool number_unsigned(number_unsigned_t /*value*/) override { return true; }
  bool number_float(number_float_t /*value*/, const string_t& /*text*/) override { return true; }
  bool string(string_t& /*value*/) override { return true; }
  bool binary(binary_t& /*value*/) override { return true; }
  bool start_array(std::size_t /*elements*/) override { return true; }
  bool end_array() override { return true; }
  bool parse_error(std::size_t /*offset*/, const std::string& /*token*/,
                   const Json::exception& /*error*/) override {
    return false;  // parsing it will tell
  }

 private:
  std::string where_;
  std::vector<std::set<std::string>> open_;  // the keys of each object around
  std::size_t nodes_ = 0;
};

Json parseJson(const Input& input) {
  KeyCheck keys(input.name + ": ");
  Json::sax_parse(input.text, &keys);
  try {
    return Json::parse(input.text);
  } catch (const Json::exception& error) {
    throw Failure(input.name + ": " + escape(error.what()));
  }
}

void readJson(const Input& input, TreeFile& file, GivenFields& given) {
  const Json json = parseJson(input);
  const std::string where = input.name + ": ";
  if (!json.is_object() || !json.contains("nodes") || !json["nodes"].is_array()) {
    throw Failure(where + "this is no object with an array \"nodes\"");
  }
  for (const auto& [key, value] : json.items()) {
    if (key != "header" && key != "nodes" && key != "findings") {
      throw Failure(where + "unknown key " + quote(key));
    }
  }
  if (json.contains("header")) {
    const Json& words = json["header"];
    if (!words.is_array() || words.size() != kHeaderWords - 1) {
      throw Failure(where + "a header has eight words");
    }
    auto& header = file.header.emplace();
    for (std::size_t i = 1; i < kHeaderWords; ++i) header[i] = wordOf(words[i - 1], where, "word");
  }
  for (const Json& object : json["nodes"]) {
    const std::string which = where + "node " + std::to_string(file.nodes.size() + 1) + ": ";
    if (!object.is_object() || !object.contains("upid")) throw Failure(which + "there is no upid");
    OrvaneUpidNode& node = file.nodes.emplace_back();
    for (const auto& [key, value] : object.items()) {
      const NodeField* const field = findField(key);
      if (field != nullptr) {
        node.*field->value = wordOf(value, which, key);
        given.insert(field);
      } else if (key != "name") {
        throw Failure(which + "unknown key " + quote(key));
      } else if (!value.is_string()) {
        throw Failure(which + "name is no text");
      } else {
        setName(node, value.get<std::string>(), which);
      }
    }
  }
}

// Links the children of each node in the order of the file, in those fields that it does not give.
void deriveLinks(TreeFile& file, const GivenFields& given) {
  const auto isGiven = [&](std::string_view name) { return given.contains(findField(name)); };
  std::unordered_map<unsigned int, OrvaneUpidNode*> byUpid;
  for (OrvaneUpidNode& node : file.nodes) byUpid.try_emplace(node.upid, &node);
  std::unordered_map<unsigned int, OrvaneUpidNode*> lastChild;
  for (OrvaneUpidNode& node : file.nodes) {
    if (byUpid.at(node.upid) != &node) continue;  // a tree keeps the first of a UPID only
    const auto parent = byUpid.find(node.parentUpid);
    if (node.parentUpid == 0 || node.parentUpid == node.upid || parent == byUpid.end()) continue;
    OrvaneUpidNode*& last = lastChild[node.parentUpid];
    if (last == nullptr && !isGiven("firstChild")) parent->second->firstChild = node.upid;
    if (last != nullptr && !isGiven("sibling")) last->sibling = node.upid;
    if (!isGiven("numOfChildren")) ++parent->second->numOfChildren;
    last = &node;
  }
}

// The UPID of the first node with that name, whatever its letter case.
unsigned int upidNamed(const TreeFile& file, std::string_view name) {
  for (const OrvaneUpidNode& node : file.nodes) {
    const auto same = [](char a, char b) {
      return std::tolower(static_cast<unsigned char>(a)) == b;
    };
    if (std::ranges::equal(writtenName(node), name, same)) return node.upid;
  }
  return 0;
}

}  // namespace

TreeFile parseTreeText(const Input& input, bool nodesOnly) {
  TreeFile file{input.name, std::nullopt, {}};
  GivenFields given{};
  if (input.name.ends_with(".json")) {
    readJson(input, file, given);
  } else if (input.name.ends_with(".csv")) {
    readCsv(input, file, given);
  } else {
    throw Failure(input.name + ": the name ends in neither .json nor .csv");
  }
  deriveLinks(file, given);
  if (nodesOnly) {
    file.header.reset();
  } else if (!file.header) {
    file.header.emplace() = {0, upidNamed(file, "tcp"), upidNamed(file, "udp")};
  }
  if (file.header) file.header->front() = static_cast<unsigned int>(file.nodes.size());
  return file;
}

}  // namespace orvane::cli
