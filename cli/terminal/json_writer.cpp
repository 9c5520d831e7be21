#include "cli/terminal/json_writer.h"

#include <array>
#include <charconv>

#include "cli/terminal/text.h"

namespace orvane::cli {

void JsonWriter::key(std::string_view name) {
  value(name);
  output_.next().append(": ");
  hasKey_ = true;
}

void JsonWriter::value(std::string_view text) {
  std::string& to = beginValue();
  to.push_back('"');
  appendJsonText(to, text);
  to.push_back('"');
}

// Puts the value behind its key, or on a line of its own behind the one before it.
std::string& JsonWriter::beginValue() {
  std::string& to = output_.next();
  if (!hasKey_ && depth_ > 0) {
    if (!isFirst_) to.push_back(',');
    beginLine(to);
  }
  hasKey_ = false;
  isFirst_ = false;
  return to;
}

void JsonWriter::beginLine(std::string& to) const { to.append(1, '\n').append(2 * depth_, ' '); }

void JsonWriter::open(char bracket) {
  beginValue().push_back(bracket);
  ++depth_;
  isFirst_ = true;
}

void JsonWriter::close(char bracket) {
  --depth_;
  std::string& to = output_.next();
  if (!isFirst_) beginLine(to);
  isFirst_ = false;
  to.push_back(bracket);
  if (depth_ == 0) to.push_back('\n');
}

void JsonWriter::writeNumber(std::int64_t number) {
  std::array<char, 24> digits{};
  const auto written = std::to_chars(digits.begin(), digits.end(), number);
  beginValue().append(digits.begin(), written.ptr);
}

}  // namespace orvane::cli
