#include <memory>
#include <string>

#include "cli/command.h"
#include "cli/files/output.h"
#include "cli/files/section_file.h"
#include "cli/shared_options.h"
#include "cli/terminal/json_writer.h"
#include "cli/terminal/table.h"
#include "cli/terminal/terminal.h"
#include "cli/terminal/text.h"

namespace orvane::cli {
namespace {

struct AppsOptions {
  std::string file;
  std::string output;
  std::string color = "auto";
  bool json = false;
  bool section = false;
  bool all = false;
};

void setCells(const OrvaneApplication& application, Table::Cells& cells) {
  cells = {upidText(application), escape(application.getName()),
           std::to_string(application.getType()), std::to_string(application.getAction()),
           std::to_string(application.getAppCategory())};
}

// One item per line; the application's own fields stand on its first.
void writeTable(const OrvaneAppMapping& applications, const Screen& screen, Output& output) {
  Table table({"UPID", "NAME", "TYPE", "ACTION", "CATEGORY"}, "ITEMS", screen);
  Table::Cells cells;
  for (const OrvaneApplication& application : applications) {
    setCells(application, cells);
    table.measure(cells);
  }
  table.appendHeading(output.next());
  std::string list;
  for (const OrvaneApplication& application : applications) {
    setCells(application, cells);
    for (const OrvanePortMapping& item : application.getItems()) {
      list.clear();
      item.appendMapping(list);
      table.appendRow(output.next(), cells, list.empty() ? "(no ports)" : list);
      cells.assign(cells.size(), "");
    }
  }
}

void writeItem(const OrvanePortMapping& item, JsonWriter& json) {
  json.object([&] {
    json.member("address", addressOf(item));
    json.arrayMember("ports", [&] {
      for (const unsigned short port : item.getPorts()) json.value(port);
    });
    json.arrayMember("ranges", [&] {
      for (const OrvanePortRange& range : item.getRanges()) {
        json.array([&] {
          json.value(range.getStart());
          json.value(range.getEnd());
        });
      }
    });
    json.member("blockNumber", item.getUniqueBlockNumber());
    json.member("selectorInfo", static_cast<int>(item.getSelectorInfo()));
  });
}

void writeApplication(const OrvaneApplication& application, JsonWriter& json) {
  json.object([&] {
    json.member("upid", upidOf(application));
    json.member("id", application.getID());
    json.member("name", application.getName());
    json.member("type", static_cast<int>(application.getType()));
    json.member("action", static_cast<int>(application.getAction()));
    json.member("category", static_cast<int>(application.getAppCategory()));
    json.arrayMember("items", [&] {
      for (const OrvanePortMapping& item : application.getItems()) writeItem(item, json);
    });
  });
}

ExitStatus showApplications(const AppsOptions& options) {
  const OrvaneAppMapping applications = readApplications(options.file, options.all);
  Output output(options.output, {options.file});
  if (options.json) {
    JsonWriter json(output);
    json.array([&] {
      for (const OrvaneApplication& application : applications) writeApplication(application, json);
    });
  } else if (options.section) {
    for (const OrvaneApplication& application : applications) {
      application.appendSection(output.next(), true);
    }
  } else {
    writeTable(applications, screenFor(options.color, options.output), output);
  }
  output.finish();
  return kSuccess;
}

}  // namespace

void describeApps(const Command& command) {
  const auto options = std::make_shared<AppsOptions>();
  addSectionText(command, "FILE", options->file);
  const Option json = command.flag("--json", options->json, "Write all facts as JSON");
  command.flag("--section", options->section, "Write the mapping text in canonical form")
      .excludes(json);
  addAll(command, options->all);
  addColor(command, options->color);
  addOutput(command, options->output);
  command.close(
      "What the text holds that is not read is reported on standard error.\n"
      "Example: orvane apps --section --output canonical.txt running.txt");
  command.runs([options] { return showApplications(*options); });
}

}  // namespace orvane::cli
