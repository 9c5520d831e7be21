#include "exchange/tree_json.h"

#include <cstdint>
#include <nlohmann/json.hpp>
#include <set>
#include <span>

#include "exchange/text.h"
#include "exchange/tree_text.h"

namespace orvane::exchange {
namespace {

// Neither direction makes the text a tree of JSON values: those take memory to be destroyed, and
// end the process when there is none.
using Json = nlohmann::json;

// What the next value is.
enum Part : int { kFile, kMember, kWord, kNode, kField, kIgnored };

// Fills a file as the text is read.
class Reader : public nlohmann::json_sax<Json> {
 public:
  explicit Reader(TreeFile& file) : file_(file) {}

  // Which fields the text gave. Throws FormError when it had no nodes.
  const GivenFields& finish() const {
    if (!keys_.contains("nodes")) throw FormError(kNoNodes);
    return given_;
  }

  bool key(string_t& key) override {
    if (part_ == kIgnored) return true;
    const bool isField = part_ == kField;
    if (!(isField ? fields_ : keys_).insert(key).second) {
      place().fail("a second key " + inQuotes(key));
    }
    key_ = key;
    field_ = isField ? findField(key) : nullptr;
    const bool isKnown = isField ? field_ != nullptr || key == "name"
                                 : key == "header" || key == "nodes" || key == "findings";
    if (!isKnown) place().fail("unknown key " + inQuotes(key));
    if (key == "findings") begin(kIgnored);
    return true;
  }

  bool start_object(std::size_t /*elements*/) override {
    if (part_ == kFile) return begin(kMember);
    if (part_ == kIgnored) return deeper();
    if (part_ != kNode) return refuse();
    file_.nodes.emplace_back();
    fields_.clear();
    return begin(kField);
  }
  bool end_object() override {
    if (part_ == kIgnored) return higher();
    if (part_ == kField && !fields_.contains("upid")) place().fail(kNoUpid);
    return begin(part_ == kField ? kNode : kFile);
  }
  bool start_array(std::size_t /*elements*/) override {
    if (part_ == kIgnored) return deeper();
    if (part_ != kMember) return refuse();
    if (key_ == "nodes") return begin(kNode);
    file_.header.emplace();
    words_ = 0;
    return begin(kWord);
  }
  bool end_array() override {
    if (part_ == kIgnored) return higher();
    if (part_ == kWord && words_ != kHeaderWords - 1) throw FormError(kNoHeader);
    return begin(kMember);
  }

  bool number_unsigned(number_unsigned_t value) override {
    if (value > 0xFFFFFFFFU) return other();
    const auto word = static_cast<unsigned int>(value);
    if (part_ == kField && field_ != nullptr) {
      file_.nodes.back().*field_->value = word;
      given_.insert(field_);
      return true;
    }
    if (part_ != kWord) return other();
    if (++words_ == kHeaderWords) throw FormError(kNoHeader);
    (*file_.header)[words_] = word;
    return true;
  }
  bool string(string_t& value) override {
    if (part_ != kField || field_ != nullptr) return other();
    setWrittenName(file_.nodes.back(), value, place());
    return true;
  }
  bool null() override { return other(); }
  bool boolean(bool /*value*/) override { return other(); }
  bool number_integer(number_integer_t /*value*/) override { return other(); }
  bool number_float(number_float_t /*value*/, const string_t& /*text*/) override { return other(); }
  bool binary(binary_t& /*value*/) override { return other(); }

  bool parse_error(std::size_t /*offset*/, const std::string& /*token*/,
                   const Json::exception& error) override {
    throw FormError(error.what());
  }

 private:
  static constexpr const char* kNoNodes = "this is no object with an array \"nodes\"";
  static constexpr const char* kNoHeader = "a header has eight words";
  static constexpr const char* kNoUpid = "there is no upid";

  bool begin(Part part) {
    part_ = part;
    return true;
  }

  // Goes into something of the part that is ignored, or out of it. Its last end is that of the
  // part.
  bool deeper() {
    ++depth_;
    return true;
  }
  bool higher() { return --depth_ > 0 || begin(kMember); }

  // A value that is ignored, or none of those that can stand here.
  bool other() {
    if (part_ != kIgnored) return refuse();
    return depth_ > 0 || begin(kMember);
  }

  [[noreturn]] bool refuse() const {
    if (part_ == kFile || (part_ == kMember && key_ == "nodes")) throw FormError(kNoNodes);
    if (part_ == kMember) throw FormError(kNoHeader);
    if (part_ == kWord) throw FormError("word is no number of 32 bits");
    if (part_ == kNode) placeOfNode(file_.nodes.size() + 1).fail(kNoUpid);
    place().fail(field_ != nullptr ? key_ + " is no number of 32 bits" : "name is no text");
  }

  static Place placeOfNode(std::size_t number) {
    return {0, "node " + std::to_string(number) + ": "};
  }
  Place place() const { return part_ == kField ? placeOfNode(file_.nodes.size()) : Place(); }

  TreeFile& file_;
  GivenFields given_;
  Part part_ = kFile;
  std::set<std::string> keys_;
  std::set<std::string> fields_;  // of the node that is read
  std::string key_;
  const NodeField* field_ = nullptr;  // null for the name of a node
  std::size_t words_ = 0;
  std::size_t depth_ = 0;  // in what is ignored
};

std::string quoted(const std::string& text) {
  return Json(text).dump(-1, ' ', false, Json::error_handler_t::replace);
}

// Appends what stands between brackets, an element a line.
template <typename Elements, typename Append>
void appendLines(std::string& to, const char* brackets, const std::string& margin,
                 const Elements& elements, Append append) {
  const char* before = "\n";
  to += brackets[0];
  for (const auto& element : elements) {
    to += before + margin + "  ";
    append(element);
    before = ",\n";
  }
  if (*before == ',') to += "\n" + margin;
  to += brackets[1];
}

void appendNode(std::string& to, const OrvaneUpidNode& node) {
  appendLines(to, "{}", "    ", kNodeFields, [&](const NodeField& field) {
    to += quoted(field.name) + ": " + std::to_string(node.*field.value);
    if (&field == &kNodeFields.back()) to += ",\n      \"name\": " + quoted(writtenName(node));
  });
}

}  // namespace

std::string jsonOf(const TreeFile& file, const std::vector<std::string>& findings) {
  std::string json = "{\n";
  if (file.header) {
    json += "  \"header\": ";
    const std::span words = std::span(*file.header).subspan(1);
    appendLines(json, "[]", "  ", words, [&](unsigned int word) { json += std::to_string(word); });
    json += ",\n";
  }
  json += "  \"nodes\": ";
  appendLines(json, "[]", "  ", file.nodes, [&](const auto& node) { appendNode(json, node); });
  json += ",\n  \"findings\": ";
  appendLines(json, "[]", "  ", findings, [&](const auto& text) { json += quoted(text); });
  return json + "\n}\n";
}

TreeFile readTreeJson(std::string_view text, bool nodesOnly) {
  TreeFile file;
  Reader reader(file);
  Json::sax_parse(text, &reader);
  complete(file, reader.finish(), nodesOnly);
  return file;
}

}  // namespace orvane::exchange
