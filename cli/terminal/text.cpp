#include "cli/terminal/text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cwchar>
#include <iterator>
#include <utility>

namespace orvane::cli {
namespace {

constexpr std::string_view kHexDigits = "0123456789abcdef";

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

// What neither way of escaping changes.
bool isPlain(char c) { return c >= ' ' && c <= '~' && c != '\\' && c != '"'; }

// How many bytes a text begins with that begin a character, which is not well-formed as a whole.
std::size_t lengthOfBegun(std::string_view text) {
  // The second bytes that can follow a lead byte; others are those of a longer form than needed, of
  // a surrogate, or beyond the last code.
  struct Lead {
    unsigned char first, last, leastSecond, mostSecond;
    std::size_t length;
  };
  static constexpr std::array<Lead, 8> kLeads = {{{0xC2, 0xDF, 0x80, 0xBF, 2},
                                                  {0xE0, 0xE0, 0xA0, 0xBF, 3},
                                                  {0xE1, 0xEC, 0x80, 0xBF, 3},
                                                  {0xED, 0xED, 0x80, 0x9F, 3},
                                                  {0xEE, 0xEF, 0x80, 0xBF, 3},
                                                  {0xF0, 0xF0, 0x90, 0xBF, 4},
                                                  {0xF1, 0xF3, 0x80, 0xBF, 4},
                                                  {0xF4, 0xF4, 0x80, 0x8F, 4}}};
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const auto lead = std::ranges::find_if(
      kLeads, [&](const Lead& form) { return form.first <= byte(0) && byte(0) <= form.last; });
  if (lead == kLeads.end() || text.size() < 2 || byte(1) < lead->leastSecond ||
      byte(1) > lead->mostSecond) {
    return 1;
  }
  std::size_t length = 2;
  while (length < std::min(lead->length, text.size()) && isContinuation(text[length])) ++length;
  return length;
}

void appendUnicodeEscape(std::string& to, char32_t code) {
  to += "\\u";
  for (const unsigned int shift : {12U, 8U, 4U, 0U}) to += kHexDigits[code >> shift & 0xFU];
}

}  // namespace

std::string escape(std::string_view text) {
  if (std::ranges::all_of(text, isPlain)) return std::string(text);
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

void appendJsonText(std::string& to, std::string_view text) {
  static constexpr std::string_view kNamed = "\"\\\b\f\n\r\t";
  static constexpr std::string_view kNames = "\"\\bfnrt";
  while (!text.empty()) {
    const auto plain = static_cast<std::size_t>(
        std::distance(text.begin(), std::ranges::find_if_not(text, isPlain)));
    to.append(text.substr(0, plain));
    text.remove_prefix(plain);
    if (text.empty()) return;
    const Character character = firstCharacter(text);
    const std::size_t named = kNamed.find(text.front());
    if (!character.wellFormed) {
      to += "\xEF\xBF\xBD";
      text.remove_prefix(lengthOfBegun(text));
      continue;
    }
    if (named != std::string_view::npos) {
      to.append(1, '\\').append(1, kNames[named]);
    } else if (isUnsafe(character.code)) {
      appendUnicodeEscape(to, character.code);
    } else {
      to += text.substr(0, character.length);
    }
    text.remove_prefix(character.length);
  }
}

std::string quote(std::string_view text) {
  return std::string("'").append(escape(text)).append("'");
}

std::size_t width(std::string_view escaped) {
  if (std::ranges::all_of(escaped, isPlain)) return escaped.size();
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
