#include "cli/command.h"

#include <CLI/CLI.hpp>
#include <utility>

namespace orvane::cli {
namespace {

// Refuses "", which a script passes for a variable that it forgot to set.
const CLI::Validator& notEmpty() {
  static const CLI::Validator kNotEmpty(
      [](const std::string& text) { return text.empty() ? "the argument is empty" : ""; }, "");
  return kNotEmpty;
}

// A check that help does not tell in its own way.
CLI::Validator quiet(CLI::Validator check) { return check.description(""); }

}  // namespace

Option Option::isRequired() const {
  option_->required();
  return *this;
}

Option Option::excludes(const Option& other) const {
  option_->excludes(other.option_);
  return *this;
}

Option Option::needs(const Option& other) const {
  option_->needs(other.option_);
  return *this;
}

Option Command::flag(const std::string& name, bool& value, const std::string& meaning) const {
  return Option(parser_->add_flag(name, value, meaning));
}

Option Command::text(const std::string& name, const std::string& type, std::string& value,
                     const std::string& meaning) const {
  return Option(parser_->add_option(name, value, meaning)->type_name(type)->check(notEmpty()));
}

Option Command::texts(const std::string& name, const std::string& type,
                      std::vector<std::string>& values, const std::string& meaning) const {
  return Option(parser_->add_option(name, values, meaning)
                    ->type_name(type)
                    ->allow_extra_args(false)
                    ->check(notEmpty()));
}

Option Command::choice(const std::string& name, const std::string& type, std::string& value,
                       const std::vector<std::string>& words, const std::string& meaning) const {
  return Option(parser_->add_option(name, value, meaning)
                    ->type_name(type)
                    ->check(quiet(CLI::IsMember(words))));
}

Option Command::number(const std::string& name, const std::string& type, int& value, int least,
                       int most, const std::string& meaning) const {
  return Option(parser_->add_option(name, value, meaning)
                    ->type_name(type)
                    ->check(quiet(CLI::Range(least, most))));
}

Option Command::argument(const std::string& name, std::string& value,
                         const std::string& meaning) const {
  return text(name, "", value, meaning);
}

Option Command::arguments(const std::string& name, std::vector<std::string>& values,
                          const std::string& meaning) const {
  return Option(parser_->add_option(name, values, meaning)->type_name(""));
}

Command Command::oneOf() const {
  CLI::Option_group* const group = parser_->add_option_group("One of");
  group->require_option(0, 1);
  return {group, runs_};
}

Command Command::subcommand(const std::string& name, const std::string& meaning) const {
  return {parser_->add_subcommand(name, meaning), runs_};
}

void Command::standAlone() const {
  for (CLI::Option* const option : parser_->get_parent()->get_options()) parser_->excludes(option);
}

void Command::close(const std::string& text) const { parser_->footer(text); }

void Command::runs(std::function<ExitStatus()> run) const { (*runs_)[parser_] = std::move(run); }

}  // namespace orvane::cli
