#include "cli/terminal/text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cwchar>
#include <utility>

namespace orvane::cli {
namespace {

// The character that a text begins with. One that is no well-formed UTF-8 is a byte of its own.
struct Character {
  std::size_t length = 1;
  char32_t code = 0;
  bool wellFormed = false;
};

bool isContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80; }

Character firstCharacter(std::string_view text) {
  struct Form {
    unsigned char mask, lead;
    char32_t least;  // a longer form than needed is not well-formed
  };
  static constexpr std::array<Form, 4> kForms = {
      {{0x80, 0x00, 0x0}, {0xE0, 0xC0, 0x80}, {0xF0, 0xE0, 0x800}, {0xF8, 0xF0, 0x10000}}};
  const auto lead = static_cast<unsigned char>(text.front());
  for (std::size_t length = 1; length <= kForms.size(); ++length) {
    const Form form = kForms[length - 1];
    if ((lead & form.mask) != form.lead) continue;
    const std::string_view tail = text.substr(1, length - 1);
    if (tail.size() + 1 != length || !std::ranges::all_of(tail, isContinuation)) return {};
    auto code = static_cast<char32_t>(lead & static_cast<unsigned char>(~form.mask));
    for (const char c : tail) code = code << 6U | (static_cast<unsigned char>(c) & 0x3FU);
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    if (code < form.least || code > 0x10FFFF || surrogate) return {};
    return {length, code, true};
  }
  return {};
}

// Controls, and what turns or breaks the line on a terminal, or is not seen on it.
bool isUnsafe(char32_t code) {
  static constexpr std::array<std::pair<char32_t, char32_t>, 7> kUnsafe = {{{0x0, 0x1F},
                                                                            {0x7F, 0x9F},
                                                                            {0x61C, 0x61C},
                                                                            {0x200B, 0x200F},
                                                                            {0x2028, 0x202E},
                                                                            {0x2060, 0x206F},
                                                                            {0xFEFF, 0xFEFF}}};
  return std::ranges::any_of(
      kUnsafe, [=](auto range) { return range.first <= code && code <= range.second; });
}

}  // namespace

std::string escape(std::string_view text) {
  std::string escaped;
  while (!text.empty()) {
    const Character character = firstCharacter(text);
    const std::string_view bytes = text.substr(0, character.length);
    text.remove_prefix(character.length);
    if (bytes == "\\") {
      escaped += "\\\\";
    } else if (character.wellFormed && !isUnsafe(character.code)) {
      escaped += bytes;
    } else {
      for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        escaped.append("\\x").append(1, kHexDigits[byte >> 4U]).append(1, kHexDigits[byte & 0xFU]);
      }
    }
  }
  return escaped;
}

std::string escapeInJson(std::string_view json) {
  std::string escaped;
  while (!json.empty()) {
    const Character character = firstCharacter(json);
    if (json.front() == '\n' || !isUnsafe(character.code)) {
      escaped += json.substr(0, character.length);
    } else {
      escaped += "\\u";
      for (const unsigned int shift : {12U, 8U, 4U, 0U}) {
        escaped += kHexDigits[character.code >> shift & 0xFU];
      }
    }
    json.remove_prefix(character.length);
  }
  return escaped;
}

std::string quote(std::string_view text) {
  return std::string("'").append(escape(text)).append("'");
}

std::size_t width(std::string_view escaped) {
  std::size_t columns = 0;
  while (!escaped.empty()) {
    const Character character = firstCharacter(escaped);
    const int wide = ::wcwidth(static_cast<wchar_t>(character.code));
    columns += wide < 0 ? 1 : static_cast<std::size_t>(wide);
    escaped.remove_prefix(character.length);
  }
  return columns;
}

}  // namespace orvane::cli
