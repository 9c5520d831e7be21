#include "exchange/tree_text.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <functional>
#include <optional>
#include <vector>

#include "exchange/text.h"

namespace orvane::exchange {
namespace {

// Nothing when the text is malformed or longer than the field.
std::optional<std::string> readName(std::string_view written) {
  std::string name;
  while (!written.empty()) {
    if (written.front() != '\\') {
      name.push_back(written.front());
      written.remove_prefix(1);
      continue;
    }
    unsigned int byte = 0;
    const std::string_view digits = written.substr(0, 4);
    if (digits.size() < 4 || digits[1] != 'x' ||
        std::from_chars(digits.data() + 2, digits.data() + 4, byte, 16).ptr != digits.data() + 4) {
      return std::nullopt;
    }
    name.push_back(static_cast<char>(byte));
    written.remove_prefix(4);
  }
  if (name.size() > sizeof UPID_TREE_NODE_S::name) return std::nullopt;
  return name;
}

// A node that a tree keeps, and the last of its children so far.
struct Kept {
  unsigned int upid;
  OrvaneUpidNode* node;
  OrvaneUpidNode* lastChild = nullptr;
};

// The first node of each UPID, ascending.
std::vector<Kept> keptNodes(OrvaneUpidArray& nodes) {
  std::vector<Kept> kept;
  kept.reserve(nodes.size());
  for (OrvaneUpidNode& node : nodes) kept.push_back({node.upid, &node});
  std::ranges::stable_sort(kept, {}, &Kept::upid);
  const auto repeats = [](const Kept& a, const Kept& b) { return a.upid == b.upid; };
  kept.erase(std::unique(kept.begin(), kept.end(), repeats), kept.end());
  return kept;
}

void deriveLinks(TreeFile& file, const GivenFields& given) {
  const bool firstChildIsGiven = given.contains(findField("firstChild"));
  const bool siblingIsGiven = given.contains(findField("sibling"));
  const bool countIsGiven = given.contains(findField("numOfChildren"));
  std::vector<Kept> kept = keptNodes(file.nodes);
  const auto find = [&](unsigned int upid) -> Kept* {
    const auto found = std::ranges::lower_bound(kept, upid, {}, &Kept::upid);
    return found == kept.end() || found->upid != upid ? nullptr : &*found;
  };
  for (OrvaneUpidNode& node : file.nodes) {
    if (find(node.upid)->node != &node) continue;  // a tree keeps the first of a UPID only
    if (node.parentUpid == 0 || node.parentUpid == node.upid) continue;
    Kept* const parent = find(node.parentUpid);
    if (parent == nullptr) continue;
    OrvaneUpidNode* const last = parent->lastChild;
    if (last == nullptr && !firstChildIsGiven) parent->node->firstChild = node.upid;
    if (last != nullptr && !siblingIsGiven) last->sibling = node.upid;
    if (!countIsGiven) ++parent->node->numOfChildren;
    parent->lastChild = &node;
  }
}

// The UPID of the first node with that name, whatever its letter case.
unsigned int upidNamed(const TreeFile& file, std::string_view name) {
  for (const OrvaneUpidNode& node : file.nodes) {
    const auto same = [](char a, char b) {
      return std::tolower(static_cast<unsigned char>(a)) == b;
    };
    if (std::ranges::equal(writtenName(node), name, same)) return node.upid;
  }
  return 0;
}

}  // namespace

const NodeField* findField(std::string_view name) {
  const auto* const found =
      std::ranges::find_if(kNodeFields, [&](const NodeField& field) { return name == field.name; });
  return found == kNodeFields.end() ? nullptr : found;
}

std::string writtenName(const OrvaneUpidNode& node) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string_view name(node.name, sizeof node.name);
  name = name.substr(0, name.find_last_not_of('\0') + 1);
  std::string text;
  for (const char c : name) {
    if (c >= ' ' && c <= '~' && c != '\\') {
      text.push_back(c);
    } else {
      const auto byte = static_cast<unsigned char>(c);
      text += {'\\', 'x', kDigits[byte >> 4U], kDigits[byte & 0xFU]};
    }
  }
  return text;
}

void setWrittenName(OrvaneUpidNode& node, std::string_view written, const Place& place) {
  const auto name = readName(written);
  if (!name) {
    place.fail("name " + inQuotes(written) +
               " has more than 32 bytes or a backslash without xNN after it");
  }
  std::ranges::fill(node.name, '\0');
  std::ranges::copy(*name, node.name);
}

void complete(TreeFile& file, const GivenFields& given, bool nodesOnly) {
  deriveLinks(file, given);
  if (nodesOnly) {
    file.header.reset();
  } else if (!file.header) {
    file.header.emplace() = {0, upidNamed(file, "tcp"), upidNamed(file, "udp")};
  }
  if (file.header) file.header->front() = static_cast<unsigned int>(file.nodes.size());
}

}  // namespace orvane::exchange
