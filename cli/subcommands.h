// What each subcommand is told, and what runs it. A new one is one file with its function, a
// declaration here, and its options in main.cpp.

#ifndef ORVANE_CLI_SUBCOMMANDS_H_
#define ORVANE_CLI_SUBCOMMANDS_H_

#include <string>
#include <vector>

#include "cli/in_use.h"
#include "orvane/application.h"

namespace orvane::cli {

enum ExitStatus : int {
  kSuccess = 0,
  kFound = 1,     // a difference or a finding
  kUnusable = 2,  // input, output or usage that the command can do nothing with
};

struct AppsOptions {
  std::string file;
  std::string output;
  std::string color = "auto";
  bool json = false;
  bool section = false;
};

ExitStatus showApplications(const AppsOptions& options);

struct DiffOptions {
  std::string older;
  std::string newer;
  std::string output;
  std::string color = "auto";
  int assumedAction = kOrvaneActionNone;
  bool summary = false;
  bool json = false;
};

ExitStatus compareTexts(const DiffOptions& options);

struct PortsOptions {
  std::vector<std::string> lists;
  std::string output;
  bool diff = false;
};

ExitStatus normalisePorts(const PortsOptions& options);

struct CheckOptions {
  std::string file;
  std::string against;
  std::string output;
  InUseOptions inUse;
  bool each = false;
  bool json = false;
};

ExitStatus checkCollisions(const CheckOptions& options);

struct UsedOptions {
  InUseOptions inUse;
  std::string output;
};

ExitStatus showUsed(const UsedOptions& options);

struct CatalogueOptions {
  std::string file;
  std::string with;
  std::string add;
  std::string known;
  std::string unknown;
  std::string output;
  std::string color = "auto";
  std::vector<std::string> upids;
  bool json = false;
  bool section = false;
  bool expand = false;
};

ExitStatus showCatalogue(const CatalogueOptions& options);

struct TreeOptions {
  std::string file;
  std::string format = "text";
  std::string children;
  std::string upid;
  std::string output;
  bool nodesOnly = false;
};

ExitStatus showTree(const TreeOptions& options);
ExitStatus packTree(const TreeOptions& options);

struct ImportOptions {
  std::string file = "/etc/services";
  std::string output;
  std::string firstUpid = "1000";
  std::string form = "apps";
};

ExitStatus importServices(const ImportOptions& options);

struct LintOptions {
  std::string file;
  std::string output;
  bool json = false;
};

ExitStatus lintText(const LintOptions& options);

}  // namespace orvane::cli

#endif  // ORVANE_CLI_SUBCOMMANDS_H_
