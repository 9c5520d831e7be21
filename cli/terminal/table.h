// Aligned tables for people.

#ifndef ORVANE_CLI_TERMINAL_TABLE_H_
#define ORVANE_CLI_TERMINAL_TABLE_H_

#include <string>
#include <utility>
#include <vector>

#include "cli/terminal/terminal.h"

namespace orvane::cli {

// An aligned table with one line per row, the first in bold face. Its last column holds lists; one
// that is too wide for the screen goes on in further lines after a comma.
class Table {
 public:
  using Row = std::vector<std::string>;

  void add(Row row) { rows_.push_back(std::move(row)); }

  std::string text(const Screen& screen) const;

 private:
  std::vector<Row> rows_;
};

}  // namespace orvane::cli

#endif  // ORVANE_CLI_TERMINAL_TABLE_H_
