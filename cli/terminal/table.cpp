#include "cli/terminal/table.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "cli/terminal/text.h"

namespace orvane::cli {
namespace {

// The list in lines that begin at `column` and, where an element is not wider by itself, end at
// most at `end`. A terminal with hardly any room beside the other columns breaks the line better
// itself.
std::string wrapList(std::string_view list, std::size_t column, std::size_t end) {
  constexpr std::size_t kLeastRoom = 12;
  std::string lines;
  while (end >= column + kLeastRoom && list.size() > end - column) {
    std::size_t comma = list.rfind(',', end - column - 1);
    if (comma == std::string_view::npos) comma = list.find(',');
    if (comma == std::string_view::npos) break;
    lines.append(list.substr(0, comma + 1)).append(1, '\n').append(column, ' ');
    list.remove_prefix(comma + 1);
  }
  return lines.append(list);
}

}  // namespace

std::string Table::text(const Screen& screen) const {
  std::vector<std::size_t> widths;
  for (const Row& row : rows_) {
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], width(row[i]));
  }
  std::size_t listColumn = 0;
  for (std::size_t i = 0; i + 1 < widths.size(); ++i) listColumn += widths[i] + 2;
  std::string text;
  for (const Row& row : rows_) {
    std::string line;
    std::size_t gap = 0;  // spaces are written before the next cell, never at the end of a line
    for (std::size_t i = 0; i < row.size(); ++i) {
      if (!row[i].empty()) {
        line.append(gap, ' ');
        line += i + 1 == widths.size() ? wrapList(row[i], listColumn, screen.width) : row[i];
        gap = 0;
      }
      gap += widths[i] + 2 - width(row[i]);
    }
    text += (&row == &rows_.front() ? paint(line, kBold, screen) : line) + "\n";
  }
  return text;
}

}  // namespace orvane::cli
