#include "orvane/ini.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "ports/section_lines.h"
#include "ports/text_in.h"
#include "ports/text_out.h"
#include "ports/watcher.h"

namespace {

template <typename Watcher>
std::vector<IniSection> readSections(std::string_view text, Watcher& watcher) {
  std::vector<IniSection> read;
  orvane::SectionLines lines(text);
  IniSection current;
  for (auto line = lines.next(); line != orvane::SectionLine::kEnd; line = lines.next()) {
    if (line == orvane::SectionLine::kPair) {
      watcher.pair(lines.value());
      if (!current.try_emplace(std::string(lines.key()), lines.value()).second) {
        watcher.repeatedKey(lines.key(), lines.value());
      }
    } else {
      watcher.closed(lines.terminator(), lines.isCutOff(), current.empty());
      read.push_back(std::exchange(current, {}));
    }
  }
  watcher.end();
  return read;
}

}  // namespace

bool IniKeyLess::operator()(std::string_view a, std::string_view b) const {
  return std::ranges::lexicographical_compare(a, b, {}, orvane::foldCase, orvane::foldCase);
}

OrvaneIni::OrvaneIni(const char* text) { setSection(text); }

OrvaneIni::~OrvaneIni() = default;

OrvaneIni::OrvaneIni(std::string_view text) { setSection(text); }

void OrvaneIni::setSection(const char* text) { setSection(orvane::viewOf(text)); }

void OrvaneIni::setSection(std::string_view text) {
  orvane::Unwatched unwatched;
  std::vector<IniSection> read = readSections(text, unwatched);
  sections.swap(read);
}

void OrvaneIni::setSectionReported(std::string_view text, OrvaneFindings& findings) {
  orvane::Reporter reporter(text, findings);
  std::vector<IniSection> read = readSections(text, reporter);
  sections.swap(read);
}

char* OrvaneIni::getSection(int index, bool terminate) const {
  std::string& text = orvane::resultText(orvane::Result::kIniSection);
  std::string written;
  appendSection(written, index, terminate);
  text.swap(written);
  return text.data();
}

void OrvaneIni::appendSection(std::string& to, int index, bool terminate) const {
  if (static_cast<std::size_t>(index) >= sections.size()) {
    throw std::out_of_range("invalid vector<T> subscript");
  }
  std::string text;
  for (const auto& [key, value] : sections[static_cast<std::size_t>(index)]) {
    text.append(key).append("=").append(value).append("\n");
  }
  if (terminate) text.append(";\n");
  to.append(text);
}
