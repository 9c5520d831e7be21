// Aligned tables for people.

#ifndef ORVANE_CLI_TERMINAL_TABLE_H_
#define ORVANE_CLI_TERMINAL_TABLE_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "cli/terminal/terminal.h"

namespace orvane::cli {

// An aligned table with one line per row, the heading in bold face. Its last column holds lists;
// one that is too wide for the screen goes on in further lines after a comma. It holds no rows:
// they are measured first, then written, so that it may be as long as it likes.
class Table {
 public:
  using Cells = std::vector<std::string>;  // of all columns but the last

  Table(Cells heading, std::string listHeading, const Screen& screen);

  // Makes room for these cells.
  void measure(const Cells& cells);

  void appendHeading(std::string& to) const;
  void appendRow(std::string& to, const Cells& cells, std::string_view list) const;

 private:
  void appendLine(std::string& to, const Cells& cells, std::string_view list) const;

  Cells heading_;
  std::string listHeading_;
  Screen screen_;
  std::vector<std::size_t> widths_;
};

}  // namespace orvane::cli

#endif  // ORVANE_CLI_TERMINAL_TABLE_H_
