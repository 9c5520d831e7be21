#include <string>

#include "cli/files/output.h"
#include "cli/section_file.h"
#include "cli/subcommands.h"
#include "cli/terminal/json.h"
#include "cli/terminal/table.h"
#include "cli/terminal/terminal.h"
#include "cli/terminal/text.h"

namespace orvane::cli {
namespace {

// One item per line; the application's own fields stand on its first.
std::string tableOf(const OrvaneAppMapping& applications, const Screen& screen) {
  Table table;
  table.add({"UPID", "NAME", "TYPE", "ACTION", "CATEGORY", "ITEMS"});
  for (const OrvaneApplication& application : applications) {
    Table::Row row = {upidText(application),
                      escape(application.getName()),
                      std::to_string(application.getType()),
                      std::to_string(application.getAction()),
                      std::to_string(application.getAppCategory()),
                      ""};
    for (const OrvanePortMapping& item : application.getItems()) {
      const std::string& text = item.getMappingAsString();
      row.back() = text.empty() ? "(no ports)" : text;
      table.add(row);
      row.assign(row.size(), "");
    }
  }
  return table.text(screen);
}

std::string jsonOf(const OrvaneAppMapping& applications) {
  auto array = Json::array();
  for (const OrvaneApplication& application : applications) {
    auto items = Json::array();
    for (const OrvanePortMapping& item : application.getItems()) {
      auto ranges = Json::array();
      for (const OrvanePortRange& range : item.getRanges()) {
        ranges.push_back(Json::array({range.getStart(), range.getEnd()}));
      }
      items.push_back({{"address", addressOf(item)},
                       {"ports", item.getPorts()},
                       {"ranges", ranges},
                       {"blockNumber", item.getUniqueBlockNumber()},
                       {"selectorInfo", static_cast<int>(item.getSelectorInfo())}});
    }
    array.push_back({{"upid", upidOf(application)},
                     {"id", application.getID()},
                     {"name", application.getName()},
                     {"type", static_cast<int>(application.getType())},
                     {"action", static_cast<int>(application.getAction())},
                     {"category", static_cast<int>(application.getAppCategory())},
                     {"items", items}});
  }
  return toText(array);
}

}  // namespace

ExitStatus showApplications(const AppsOptions& options) {
  const OrvaneAppMapping applications = readApplications(options.file);
  writeOutput(options.json      ? jsonOf(applications)
              : options.section ? applications.getSection(true)
                                : tableOf(applications, screenFor(options.color, options.output)),
              options.output, {options.file});
  return kSuccess;
}

}  // namespace orvane::cli
