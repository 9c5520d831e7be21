// The section texts of a collection.

#include <cstring>
#include <span>

#include "apps/change_writer.h"
#include "apps/group_writer.h"
#include "orvane/app_mapping.h"
#include "ports/text_out.h"

namespace {

using orvane::Result;
using orvane::TextOut;

void writeSections(TextOut& out, const OrvaneAppMapping& mapping, bool closeGroups) {
  for (const OrvaneApplication& application : mapping) {
    orvane::writeSection(out, application, application.action, closeGroups);
  }
}

void writeInitialSections(TextOut& out, const OrvaneAppMapping& mapping) {
  for (const OrvaneApplication& application : mapping) {
    orvane::writeInitialSection(out, application);
  }
}

void writeAddNewSections(TextOut& out, const OrvaneAppMapping& mapping, bool closeGroups) {
  for (const OrvaneApplication& application : mapping) {
    orvane::writeAddNewSection(out, application, closeGroups);
  }
}

void writeUpdatedSections(TextOut& out, const OrvaneAppMapping& older,
                          const OrvaneAppMapping& newer, bool closeGroups) {
  orvane::writeChanges(out, std::span(older), std::span(newer), closeGroups);
}

}  // namespace

char* OrvaneAppMapping::getSection(bool closeGroups) const {
  return orvane::publishText(Result::kMappingSection, writeSections, *this, closeGroups);
}

void OrvaneAppMapping::appendSection(std::string& to, bool closeGroups) const {
  orvane::append(to, writeSections, *this, closeGroups);
}

unsigned int OrvaneAppMapping::getSection(char* buffer) const {
  if (buffer == nullptr) return 0;
  getSection(true);
  const std::string& text = orvane::resultText(Result::kMappingSection);
  std::memcpy(buffer, text.c_str(), text.size() + 1);
  return static_cast<unsigned int>(text.size());
}

std::optional<std::size_t> OrvaneAppMapping::getSectionChecked(std::span<char> buffer) const {
  std::string text;
  appendSection(text, true);
  if (buffer.size() <= text.size()) return std::nullopt;
  std::memcpy(buffer.data(), text.c_str(), text.size() + 1);
  return text.size();
}

char* OrvaneAppMapping::getInitialSection() const {
  return orvane::publishText(Result::kMappingInitialSection, writeInitialSections, *this);
}

void OrvaneAppMapping::appendInitialSection(std::string& to) const {
  orvane::append(to, writeInitialSections, *this);
}

char* OrvaneAppMapping::getAddNewSection(bool closeGroups) const {
  return orvane::publishText(Result::kMappingAddNewSection, writeAddNewSections, *this,
                             closeGroups);
}

void OrvaneAppMapping::appendAddNewSection(std::string& to, bool closeGroups) const {
  orvane::append(to, writeAddNewSections, *this, closeGroups);
}

char* OrvaneAppMapping::getUpdatedSection(const OrvaneAppMapping& newer, bool closeGroups) const {
  return orvane::publishText(Result::kMappingUpdatedSection, writeUpdatedSections, *this, newer,
                             closeGroups);
}

void OrvaneAppMapping::appendUpdatedSection(std::string& to, const OrvaneAppMapping& newer,
                                            bool closeGroups) const {
  orvane::append(to, writeUpdatedSections, *this, newer, closeGroups);
}
