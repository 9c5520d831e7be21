#include "cli/terminal/help.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

namespace orvane::cli {
namespace {

constexpr std::size_t kColumns = 80;
constexpr std::size_t kOptionWidth = 28;
constexpr std::size_t kSubcommandWidth = 13;

// The text in lines that leave room for `indent` columns, with which all but the first begin.
std::string wrap(std::string_view text, std::size_t indent) {
  const std::size_t room = kColumns - indent;
  std::string lines;
  for (;;) {
    std::size_t length = std::min(text.find('\n'), text.size());
    if (length > room) {
      const std::size_t blank = text.rfind(' ', room);
      if (blank != std::string_view::npos) length = blank;
    }
    lines.append(text.substr(0, length));
    if (length == text.size()) return lines;
    text.remove_prefix(length + 1);
    lines.append(1, '\n').append(indent, ' ');
  }
}

// A word, and beginning in the given column what it means.
std::string entry(const std::string& word, const std::string& meaning, std::size_t column) {
  std::string line = "  " + word;
  if (line.size() + 2 > column) {
    line.append(1, '\n').append(column, ' ');
  } else {
    line.resize(column, ' ');
  }
  return line + wrap(meaning, column) + "\n";
}

bool isOptionGroup(const CLI::App& command) { return command.get_name().empty(); }

// Options or arguments, those of its option groups included.
std::vector<const CLI::Option*> membersOf(const CLI::App& command, bool positional) {
  std::vector<const CLI::Option*> members =
      command.get_options([=, &command](const CLI::Option* option) {
        const bool isHelpOfGroup = isOptionGroup(command) && option == command.get_help_ptr();
        return option->get_positional() == positional && !isHelpOfGroup;
      });
  for (const CLI::App* const group : command.get_subcommands({})) {
    if (!isOptionGroup(*group)) continue;
    const auto more = membersOf(*group, positional);
    members.insert(members.end(), more.begin(), more.end());
  }
  return members;
}

std::vector<const CLI::App*> subcommandsOf(const CLI::App& command) {
  return command.get_subcommands([](const CLI::App* part) { return !isOptionGroup(*part); });
}

std::string wordOf(const CLI::Option& option) {
  const std::string names = option.get_name(false, true);
  std::string word = names.starts_with("-h,") ? "-h, --help" : names;
  if (option.get_type_size() != 0) word += " " + option.get_type_name();
  return word;
}

std::string usageOf(const CLI::App& command, const std::string& name) {
  std::string usage = "Usage: " + name + " [OPTIONS]";
  const auto arguments = membersOf(command, true);
  for (const CLI::Option* const argument : arguments) {
    const std::string word =
        argument->get_name(true) + (argument->get_expected_max() > 1 ? "..." : "");
    usage += argument->get_required() ? " " + word : " [" + word + "]";
  }
  if (!subcommandsOf(command).empty()) usage += arguments.empty() ? " SUBCOMMAND" : " [SUBCOMMAND]";
  return usage + "\n";
}

// How many characters are to be put in, taken away, changed, or swapped with the next one to get
// from one word to the other.
std::size_t distanceOf(std::string_view a, std::string_view b) {
  std::vector<std::vector<std::size_t>> distance(a.size() + 1,
                                                 std::vector<std::size_t>(b.size() + 1));
  for (std::size_t i = 0; i <= a.size(); ++i) {
    for (std::size_t j = 0; j <= b.size(); ++j) {
      if (i == 0 || j == 0) {
        distance[i][j] = i + j;
        continue;
      }
      const std::size_t changed = distance[i - 1][j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
      distance[i][j] = std::min({distance[i - 1][j] + 1, distance[i][j - 1] + 1, changed});
      if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
        distance[i][j] = std::min(distance[i][j], distance[i - 2][j - 2] + 1);
      }
    }
  }
  return distance[a.size()][b.size()];
}

}  // namespace

std::string HelpFormatter::make_help(const CLI::App* command, std::string name,
                                     CLI::AppFormatMode /*mode*/) const {
  std::string help = wrap(command->get_description(), 0) + "\n" + usageOf(*command, name);
  const auto arguments = membersOf(*command, true);
  if (!arguments.empty()) help += "\n";
  for (const CLI::Option* const argument : arguments) {
    help += entry(argument->get_name(true), argument->get_description(), kOptionWidth);
  }
  help += "\nOptions:\n";
  for (const CLI::Option* const option : membersOf(*command, false)) {
    help += entry(wordOf(*option), option->get_description(), kOptionWidth);
  }
  const auto subcommands = subcommandsOf(*command);
  if (!subcommands.empty()) help += "\nSubcommands:\n";
  for (const CLI::App* const subcommand : subcommands) {
    help += entry(subcommand->get_name(), subcommand->get_description(), kSubcommandWidth);
  }
  return help + "\n" + wrap(command->get_footer(), 0) + "\n";
}

std::string nearestWord(const CLI::App& command, const std::string& word) {
  std::vector<std::string> known;
  for (const CLI::Option* const option : membersOf(command, false)) {
    for (const std::string& name : option->get_lnames()) known.push_back("--" + name);
  }
  for (const CLI::App* const subcommand : subcommandsOf(command)) {
    known.push_back(subcommand->get_name());
  }
  std::string nearest;
  std::size_t least = 2 + word.size() / 4;  // so far away nothing is near any more
  for (const std::string& candidate : known) {
    const bool isBegun = word.size() > 1 && word != "--" && candidate.starts_with(word);
    const std::size_t distance = isBegun ? 1 : distanceOf(word, candidate);
    if (candidate != word && distance < least) {
      least = distance;
      nearest = candidate;
    }
  }
  return nearest;
}

}  // namespace orvane::cli
