#include "exchange/tree_json.h"

#include <cstdint>
#include <nlohmann/json.hpp>
#include <set>

#include "exchange/text.h"
#include "exchange/tree_text.h"

namespace orvane::exchange {
namespace {

// Read with sorted keys: those that keep their order are looked for one by one.
using Json = nlohmann::json;

unsigned int wordOf(const Json& json, const Place& place, std::string_view field) {
  if (!json.is_number_unsigned() || json.get<std::uint64_t>() > 0xFFFFFFFFU) {
    place.fail(std::string(field) + " is no number of 32 bits");
  }
  return json.get<unsigned int>();
}

Place placeOfNode(std::size_t number) { return {0, "node " + std::to_string(number) + ": "}; }

// Refuses an object that gives a key twice: the parser would keep one of them.
class KeyCheck : public nlohmann::json_sax<Json> {
 public:
  bool key(string_t& key) override {
    if (!open_.back().insert(key).second) {
      const Place place = open_.size() == 2 ? placeOfNode(nodes_) : Place();
      place.fail("a second key " + inQuotes(key));
    }
    return true;
  }
  bool start_object(std::size_t /*elements*/) override {
    open_.emplace_back();
    if (open_.size() == 2) ++nodes_;
    return true;
  }
  bool end_object() override {
    open_.pop_back();
    return true;
  }
  bool null() override { return true; }
  bool boolean(bool /*value*/) override { return true; }
  bool number_integer(number_integer_t /*value*/) override { return true; }
  bool number_unsigned(number_unsigned_t /*value*/) override { return true; }
  bool number_float(number_float_t /*value*/, const string_t& /*text*/) override { return true; }
  bool string(string_t& /*value*/) override { return true; }
  bool binary(binary_t& /*value*/) override { return true; }
  bool start_array(std::size_t /*elements*/) override { return true; }
  bool end_array() override { return true; }
  bool parse_error(std::size_t /*offset*/, const std::string& /*token*/,
                   const Json::exception& /*error*/) override {
    return false;  // parsing it will tell
  }

 private:
  std::vector<std::set<std::string>> open_;  // the keys of each object around
  std::size_t nodes_ = 0;
};

Json parse(std::string_view text) {
  KeyCheck keys;
  Json::sax_parse(text, &keys);
  try {
    return Json::parse(text);
  } catch (const Json::exception& error) {
    throw FormError(error.what());
  }
}

void readHeader(const Json& words, TreeFile& file) {
  if (!words.is_array() || words.size() != kHeaderWords - 1) {
    throw FormError("a header has eight words");
  }
  auto& header = file.header.emplace();
  for (std::size_t i = 1; i < kHeaderWords; ++i) header[i] = wordOf(words[i - 1], Place(), "word");
}

void readNode(const Json& object, const Place& place, OrvaneUpidNode& node, GivenFields& given) {
  if (!object.is_object() || !object.contains("upid")) place.fail("there is no upid");
  for (const auto& [key, value] : object.items()) {
    const NodeField* const field = findField(key);
    if (field != nullptr) {
      node.*field->value = wordOf(value, place, key);
      given.insert(field);
    } else if (key != "name") {
      place.fail("unknown key " + inQuotes(key));
    } else if (!value.is_string()) {
      place.fail("name is no text");
    } else {
      setWrittenName(node, value.get_ref<const std::string&>(), place);
    }
  }
}

}  // namespace

std::string jsonOf(const TreeFile& file, const std::vector<std::string>& findings) {
  nlohmann::ordered_json json;
  if (file.header) {
    json["header"] = std::vector<unsigned int>(file.header->begin() + 1, file.header->end());
  }
  json["nodes"] = nlohmann::ordered_json::array();
  for (const OrvaneUpidNode& node : file.nodes) {
    nlohmann::ordered_json object;
    for (const NodeField& field : kNodeFields) object[field.name] = node.*field.value;
    object["name"] = writtenName(node);
    json["nodes"].push_back(std::move(object));
  }
  json["findings"] = findings;
  return json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
}

TreeFile readTreeJson(std::string_view text, bool nodesOnly) {
  const Json json = parse(text);
  if (!json.is_object() || !json.contains("nodes") || !json["nodes"].is_array()) {
    throw FormError("this is no object with an array \"nodes\"");
  }
  for (const auto& [key, value] : json.items()) {
    if (key != "header" && key != "nodes" && key != "findings") {
      throw FormError("unknown key " + inQuotes(key));
    }
  }
  TreeFile file;
  GivenFields given;
  if (json.contains("header")) readHeader(json["header"], file);
  for (const Json& object : json["nodes"]) {
    OrvaneUpidNode& node = file.nodes.emplace_back();
    readNode(object, placeOfNode(file.nodes.size()), node, given);
  }
  complete(file, given, nodesOnly);
  return file;
}

}  // namespace orvane::exchange
