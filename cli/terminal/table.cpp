#include "cli/terminal/table.h"

#include <algorithm>
#include <utility>

#include "cli/terminal/text.h"

namespace orvane::cli {
namespace {

constexpr std::size_t kGap = 2;

// The list in lines that begin at `column` and, where an element is not wider by itself, end at
// most at `end`. A terminal with hardly any room beside the other columns breaks the line better
// itself.
void appendWrapped(std::string& to, std::string_view list, std::size_t column, std::size_t end) {
  constexpr std::size_t kLeastRoom = 12;
  while (end >= column + kLeastRoom && list.size() > end - column) {
    std::size_t comma = list.rfind(',', end - column - 1);
    if (comma == std::string_view::npos) comma = list.find(',');
    if (comma == std::string_view::npos) break;
    to.append(list.substr(0, comma + 1)).append(1, '\n').append(column, ' ');
    list.remove_prefix(comma + 1);
  }
  to.append(list);
}

}  // namespace

Table::Table(Cells heading, std::string listHeading, const Screen& screen)
    : heading_(std::move(heading)),
      listHeading_(std::move(listHeading)),
      screen_(screen),
      widths_(heading_.size()) {
  measure(heading_);
}

void Table::measure(const Cells& cells) {
  for (std::size_t i = 0; i < cells.size(); ++i) {
    widths_[i] = std::max(widths_[i], width(cells[i]));
  }
}

void Table::appendHeading(std::string& to) const {
  std::string line;
  appendLine(line, heading_, listHeading_);
  to.append(paint(line, kBold, screen_)).append(1, '\n');
}

void Table::appendRow(std::string& to, const Cells& cells, std::string_view list) const {
  appendLine(to, cells, list);
  to.push_back('\n');
}

void Table::appendLine(std::string& to, const Cells& cells, std::string_view list) const {
  std::size_t column = 0;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    to.append(cells[i]).append(widths_[i] + kGap - width(cells[i]), ' ');
    column += widths_[i] + kGap;
  }
  appendWrapped(to, list, column, screen_.width);
}

}  // namespace orvane::cli
