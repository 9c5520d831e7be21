// JSON as every command writes it, one value after the other: a library that holds each application
// as a tree of values takes twice as long over apps --json as a whole.

#ifndef ORVANE_CLI_TERMINAL_JSON_WRITER_H_
#define ORVANE_CLI_TERMINAL_JSON_WRITER_H_

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "cli/files/output.h"
#include "orvane/application.h"

namespace orvane::cli {

// Writes one array or object, a value per line, as its elements become known. Texts may hold any
// bytes: what is no UTF-8 is replaced, and what a terminal would obey is escaped.
class JsonWriter {
 public:
  explicit JsonWriter(Output& output) : output_(output) {}

  // An array or object; `write` writes what it holds.
  template <typename Write>
  void array(Write write) {
    open('[');
    write();
    close(']');
  }
  template <typename Write>
  void object(Write write) {
    open('{');
    write();
    close('}');
  }

  // The name of the value that is written next.
  void key(std::string_view name);

  void value(std::string_view text);
  void value(std::integral auto number) { writeNumber(static_cast<std::int64_t>(number)); }
  void value(std::nullopt_t /*null*/) { beginValue().append("null"); }
  template <typename Value>
  void value(const std::optional<Value>& held) {
    held ? value(*held) : value(std::nullopt);
  }

  template <typename Value>
  void member(std::string_view name, const Value& held) {
    key(name);
    value(held);
  }
  template <typename Write>
  void arrayMember(std::string_view name, Write write) {
    key(name);
    array(write);
  }

 private:
  std::string& beginValue();
  void beginLine(std::string& to) const;
  void open(char bracket);
  void close(char bracket);
  void writeNumber(std::int64_t number);

  Output& output_;
  std::size_t depth_ = 0;
  bool isFirst_ = true;  // in its array or object
  bool hasKey_ = false;
};

// Null for a new application.
inline std::optional<unsigned int> upidOf(const OrvaneApplication& application) {
  if (application.getUpid() == kOrvaneNoUpid) return std::nullopt;
  return application.getUpid();
}

// Null for an item without address.
inline std::optional<std::string> addressOf(const OrvanePortMapping& item) {
  if (item.getIpAddress() == 0) return std::nullopt;
  std::string address;
  item.appendIp(address);
  return address;
}

}  // namespace orvane::cli

#endif  // ORVANE_CLI_TERMINAL_JSON_WRITER_H_
