#include "exchange/tree_csv.h"

#include <algorithm>
#include <vector>

#include "exchange/text.h"
#include "exchange/tree_text.h"

namespace orvane::exchange {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

using Cells = std::vector<std::string>;

// The fields that the columns give; null is the name.
using Columns = std::vector<const NodeField*>;

// The cells of a line; a quoted cell may hold commas, and quotes doubled.
Cells cellsOf(std::string_view line, const Place& place) {
  Cells cells(1);
  bool isQuoted = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == '"') {
      if (isQuoted && i + 1 < line.size() && line[i + 1] == '"') {
        cells.back().push_back(line[++i]);
      } else {
        isQuoted = !isQuoted;
      }
    } else if (line[i] == ',' && !isQuoted) {
      cells.emplace_back();
    } else {
      cells.back().push_back(line[i]);
    }
  }
  if (isQuoted) place.fail("a quote is not closed");
  return cells;
}

unsigned int numberOf(const std::string& cell, const Place& place, std::string_view field) {
  const auto number = parseDecimal<unsigned int>(cell);
  if (!number) place.fail(std::string(field) + " " + inQuotes(cell) + " is no number");
  return *number;
}

void readHeader(const Cells& cells, const Place& place, TreeFile& file) {
  if (file.header) place.fail("this is a second header");
  if (cells.size() != kHeaderWords) place.fail("a header has eight words");
  auto& header = file.header.emplace();
  for (std::size_t i = 1; i < kHeaderWords; ++i) header[i] = numberOf(cells[i], place, "word");
}

Columns readColumns(const Cells& cells, const Place& place) {
  Columns columns;
  for (const std::string& cell : cells) {
    const NodeField* const field = findField(cell);
    if (field == nullptr && cell != "name") place.fail("unknown column " + inQuotes(cell));
    if (std::ranges::find(columns, field) != columns.end()) {
      place.fail("a second column " + inQuotes(cell));
    }
    columns.push_back(field);
  }
  if (std::ranges::find(columns, findField("upid")) == columns.end()) {
    place.fail("there is no column upid");
  }
  return columns;
}

void readRow(const Cells& cells, const Columns& columns, const Place& place, OrvaneUpidNode& node) {
  if (cells.size() != columns.size()) {
    place.fail("the line has " + counted(cells.size(), "cell") + " instead of " +
               std::to_string(columns.size()));
  }
  for (std::size_t i = 0; i < cells.size(); ++i) {
    if (columns[i] == nullptr) {
      setWrittenName(node, cells[i], place);
    } else {
      node.*columns[i]->value = numberOf(cells[i], place, columns[i]->name);
    }
  }
}

}  // namespace

std::string csvOf(const TreeFile& file) {
  std::string text;
  if (file.header) {
    text += "#header";
    for (std::size_t i = 1; i < kHeaderWords; ++i) text += "," + std::to_string((*file.header)[i]);
    text += "\n";
  }
  for (const NodeField& field : kNodeFields) text += std::string(field.name) + ",";
  text += "name\n";
  for (const OrvaneUpidNode& node : file.nodes) {
    for (const NodeField& field : kNodeFields) text += std::to_string(node.*field.value) + ",";
    text.push_back('"');
    for (const char c : writtenName(node)) {
      if (c == '"') text.push_back('"');
      text.push_back(c);
    }
    text += "\"\n";
  }
  return text;
}

TreeFile readTreeCsv(std::string_view text, bool nodesOnly) {
  TreeFile file;
  Columns columns;
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  for (Place place{1, ""}; !text.empty(); ++place.line) {
    std::string_view line = takeLine(text);
    if (line.ends_with('\r')) line.remove_suffix(1);
    const bool isHeader = line.substr(0, line.find(',')) == "#header";
    if (line.empty() || (line.front() == '#' && !isHeader)) continue;
    const Cells cells = cellsOf(line, place);
    if (isHeader) {
      readHeader(cells, place, file);
    } else if (columns.empty()) {
      columns = readColumns(cells, place);
    } else {
      readRow(cells, columns, place, file.nodes.emplace_back());
    }
  }
  if (columns.empty()) throw FormError("there is no line of columns");
  complete(file, GivenFields(columns.begin(), columns.end()), nodesOnly);
  return file;
}

}  // namespace orvane::exchange
