#include "catalogue/app_info_writer.h"

namespace {

std::string& entryPortsText() {
  static std::string text;
  return text;
}

std::string& entrySectionText() {
  static std::string text;
  return text;
}

}  // namespace

namespace orvane {

void PortWriter::append(std::string& out, const PortSet& ports) {
  const std::size_t begin = out.size();
  const OrvanePort* lastSingle = nullptr;
  const OrvanePort* lastRange = nullptr;
  for (const OrvanePort& port : ports) {
    appendSeparator(out, begin);
    if (port.getPort() != 0) {
      appendNumber(out, port.getPort());
      lastSingle = &port;
    } else {
      appendRange(out, port);
      lastRange = &port;
    }
  }
  if (lastSingle != nullptr) lastSingle_ = *lastSingle;
  if (lastRange != nullptr) lastRange_ = *lastRange;
}

void PortWriter::publish() const {
  if (lastSingle_) lastSingle_->getText();
  if (lastRange_) lastRange_->getText();
}

void AppInfoWriter::append(const OrvaneAppInfo& entry, const PortSet& ports,
                           unsigned int reserved1) {
  wrote_ = true;
  section_.begin = out_.size();
  appendLine(kEntryVersion, entry.getVersion());
  appendLine(kEntryPortType, static_cast<int>(entry.getPortType()));
  appendLine(kEntryUpid, entry.getUPID());
  appendKey(kEntryPortRange);
  ports_.begin = out_.size();
  portWriter_.append(out_, ports);
  ports_.end = out_.size();
  out_.push_back('\n');
  appendLine(kEntryReserved1, reserved1);
  appendLine(kEntryReserved2, entry.getReserved2());
  appendLine(kEntryReserved3, entry.getReserved3());
  appendKey(kEntryFqn);
  out_.append(fqnOf(entry)).push_back('\n');
  if (terminate_) out_.append(";\n");
  section_.end = out_.size();
}

void AppInfoWriter::publish() const {
  if (!wrote_) return;
  const auto copy = [this](Extent part, std::string& text) {
    text.assign(out_, part.begin, part.end - part.begin);
  };
  copy(ports_, entryPortsText());
  if (&out_ != &entrySectionText()) copy(section_, entrySectionText());  // it may be `out` itself
  portWriter_.publish();
}

void AppInfoWriter::appendKey(AppInfoField key) { out_.append(keys_[key]).push_back('='); }

template <typename Number>
void AppInfoWriter::appendLine(AppInfoField key, Number number) {
  appendKey(key);
  appendNumber(out_, number);
  out_.push_back('\n');
}

void appendNumbers(std::string& out, std::size_t listBegin, Bounds numbers) {
  for (std::uint32_t number = numbers.start; number <= numbers.end; ++number) {
    appendSeparator(out, listBegin);
    appendNumber(out, number);
  }
}

}  // namespace orvane

char* OrvaneAppInfo::getPorts() const {
  std::string& text = entryPortsText();
  text.clear();
  orvane::PortWriter writer;
  writer.append(text, ports);
  writer.publish();
  return text.data();
}

char* OrvaneAppInfo::getEnumPorts() const {
  static std::string text;
  text.clear();
  for (const OrvanePort& port : ports) {
    if (port.getPort() != 0) {
      orvane::appendSeparator(text, 0);
      text.append(port.getText());
    } else {
      orvane::appendNumbers(text, 0, orvane::numbersOf(port));
    }
  }
  return text.data();
}

char* OrvaneAppInfo::getSection(bool terminate) const {
  std::string& text = entrySectionText();
  text.clear();
  orvane::AppInfoWriter writer(text, terminate);
  writer.append(*this);
  writer.publish();
  return text.data();
}
