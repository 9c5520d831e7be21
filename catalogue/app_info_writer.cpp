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
namespace {

template <typename Number>
Pen writeField(Pen pen, const ShortText& key, Number number) {
  pen.put(key);
  pen.putNumber(number);
  return pen;
}

}  // namespace

Pen PortWriter::write(Pen pen, const PortSet& ports) {
  const char* const begin = pen.place();
  for (const OrvanePort& port : ports) {
    if (port.getPort() != 0) {
      pen.putNumber(port.getPort());
      lastSingle_ = port.getPort();
    } else {
      pen = writeRange(pen, port);
      lastRange_ = {port.getStart(), port.getEnd()};
    }
    pen.put(',');
  }
  pen.endList(begin);
  return pen;
}

void PortWriter::publish() const {
  if (lastSingle_ != 0) {
    OrvanePort single;
    single.setPort(lastSingle_);
    single.getPortStr();
  }
  if (lastRange_) OrvanePortRange(lastRange_->start, lastRange_->end).getRange();
}

AppInfoWriter::AppInfoWriter(std::string& text, bool terminate)
    : out_(text), terminate_(terminate), fieldsRoom_(sizeof "\n;\n" + ShortText::kRoom) {
  const AppInfoKeys keys = currentKeys();
  for (std::size_t i = 0; i < kAppInfoFields; ++i) {
    keys_[i] = ShortText((i == 0 ? "" : "\n") + std::string(keys[i]) + "=");
    fieldsRoom_ += keys_[i].size() + kNumberRoom;
  }
}

void AppInfoWriter::append(const OrvaneAppInfo& entry, const PortSet& ports,
                           unsigned int reserved1) {
  const std::string_view fqn = fqnOf(entry);
  wrote_ = true;
  section_.begin = out_.size();
  Pen pen = out_.pen(fieldsRoom_ + fqn.size() + PortWriter::room(ports));
  pen = writeField(pen, keys_[kEntryVersion], entry.getVersion());
  pen = writeField(pen, keys_[kEntryPortType], static_cast<int>(entry.getPortType()));
  pen = writeField(pen, keys_[kEntryUpid], entry.getUPID());
  pen.put(keys_[kEntryPortRange]);
  out_.putDown(pen);
  ports_.begin = out_.size();
  pen = portWriter_.write(pen, ports);
  out_.putDown(pen);
  ports_.end = out_.size();
  pen = writeField(pen, keys_[kEntryReserved1], reserved1);
  pen = writeField(pen, keys_[kEntryReserved2], entry.getReserved2());
  pen = writeField(pen, keys_[kEntryReserved3], entry.getReserved3());
  pen.put(keys_[kEntryFqn]);
  pen.put(fqn);
  pen.put(terminate_ ? std::string_view("\n;\n") : "\n");
  out_.putDown(pen);
  section_.end = out_.size();
}

void AppInfoWriter::publish() {
  const std::string& text = out_.finish();
  if (!wrote_) return;
  entryPortsText().assign(out_.view(ports_.begin, ports_.end));
  if (&text != &entrySectionText()) {  // it may be the text itself
    entrySectionText().assign(out_.view(section_.begin, section_.end));
  }
  portWriter_.publish();
}

void appendNumbers(TextBuilder& out, Bounds numbers) {
  if (numbers.start > numbers.end) return;
  const std::size_t count = std::size_t{numbers.end} - numbers.start + 1;
  Pen pen = out.pen(count > 1 ? count * kPortRoom : kNumberRoom + 1);
  for (std::uint64_t number = numbers.start; number <= numbers.end; ++number) {
    pen.putNumber(static_cast<std::uint32_t>(number));
    pen.put(',');
  }
  out.putDown(pen);
}

void endNumbers(TextBuilder& out) {
  Pen pen = out.pen(0);
  if (out.size() > 0) pen.endList(nullptr);
  out.putDown(pen);
}

}  // namespace orvane

char* OrvaneAppInfo::getPorts() const {
  std::string& text = entryPortsText();
  orvane::TextBuilder out(text);
  orvane::PortWriter writer;
  out.putDown(writer.write(out.pen(orvane::PortWriter::room(ports)), ports));
  writer.publish();
  return out.finish().data();
}

char* OrvaneAppInfo::getEnumPorts() const {
  static std::string text;
  orvane::TextBuilder out(text);
  for (const OrvanePort& port : ports) {
    if (port.getPort() != 0) port.getText();  // replaces the text of getPortStr()
    orvane::appendNumbers(out, orvane::numbersOf(port));
  }
  orvane::endNumbers(out);
  return out.finish().data();
}

char* OrvaneAppInfo::getSection(bool terminate) const {
  std::string& text = entrySectionText();
  orvane::AppInfoWriter writer(text, terminate);
  writer.append(*this);
  writer.publish();
  return text.data();
}
