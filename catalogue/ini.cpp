#include "orvane/ini.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "ports/section_lines.h"
#include "ports/text.h"

bool IniKeyLess::operator()(std::string_view a, std::string_view b) const {
  return std::ranges::lexicographical_compare(a, b, {}, orvane::foldCase, orvane::foldCase);
}

OrvaneIni::OrvaneIni(const char* text) { setSection(text); }

OrvaneIni::~OrvaneIni() = default;

void OrvaneIni::setSection(const char* text) {
  sections.clear();
  orvane::SectionLines lines(orvane::viewOf(text));
  IniSection current;
  for (auto line = lines.next(); line != orvane::SectionLine::kEnd; line = lines.next()) {
    if (line == orvane::SectionLine::kPair) {
      current.try_emplace(std::string(lines.key()), lines.value());
    } else {
      sections.push_back(std::exchange(current, {}));
    }
  }
}

char* OrvaneIni::getSection(int index, bool terminate) const {
  static std::string text;
  if (static_cast<std::size_t>(index) >= sections.size()) {
    throw std::out_of_range("invalid vector<T> subscript");
  }
  text.clear();
  for (const auto& [key, value] : sections[static_cast<std::size_t>(index)]) {
    text.append(key).append("=").append(value).append("\n");
  }
  if (terminate) text.append(";\n");
  return text.data();
}
