#include "orvane/ini.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

using Sections = std::vector<std::string>;

Sections sectionsOf(const OrvaneIni& ini) {
  Sections sections;
  try {
    for (int index = 0;; ++index) sections.emplace_back(ini.getSection(index, true));
  } catch (const std::out_of_range& error) {
    EXPECT_STREQ(error.what(), "invalid vector<T> subscript");
  }
  return sections;
}

TEST(Ini, CutsTextsIntoSections) {
  const std::pair<const char*, Sections> cases[] = {
      {"a=1\nb=2\n;\nc=3\n", {"a=1\nb=2\n;\n"}},
      {"A=1\na=2\n;\n", {"A=1\n;\n"}},
      {"ab=\naZ=\na=\n_x=\nZeta=\n\xE9=\n[=\n;", {"[=\n_x=\na=\nab=\naZ=\nZeta=\n\xE9=\n;\n"}},
      {";\n;\n", {";\n", ";\n"}},
      {"a=1\n\n\nend\nb=2\n[next]\n", {"a=1\n;\n", "b=2\n;\n"}},
      {"x=1=2\n=v\n==\n;\n", {"=v\nx=1=2\n;\n"}},
      {" k = v \n ;\n", {" k = v \n;\n"}},
      {"k=v\r\n\r\nm=w\r\n;\r\n", {"k=v\r\n;\n", "m=w\r\n;\n"}},
      {"Version=1", {}},
      {"Version=1\n\n", {}},
      {"", {}},
      {nullptr, {}}};
  for (const auto& [text, sections] : cases) {
    SCOPED_TRACE(text != nullptr ? text : "null");
    OrvaneIni ini("old=1\n;\nold=2\n;\n");
    ini.setSection(text);
    EXPECT_EQ(sectionsOf(ini), sections);
    EXPECT_EQ(sectionsOf(OrvaneIni(text)), sections);
    for (const std::string& section : sections) {
      EXPECT_EQ(sectionsOf(OrvaneIni(section.c_str())), Sections{section});
    }
  }
}

TEST(Ini, RefusesABadIndexAndCopiesDeeply) {
  OrvaneIni source("a=1\n;\nb=2\n;\n");
  const OrvaneIni copy(source);
  source.setSection(source.getSection(1, true));  // its own last result
  EXPECT_EQ(sectionsOf(source), Sections{"b=2\n;\n"});
  EXPECT_THROW(copy.getSection(-1, false), std::out_of_range);
  EXPECT_STREQ(copy.getSection(0, false), "a=1\n");
}

}  // namespace
