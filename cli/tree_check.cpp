#include "cli/tree_check.h"

#include <algorithm>
#include <iterator>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace orvane::cli {
namespace {

class Walk {
 public:
  explicit Walk(const TreeFile& file) : file_(file) {}

  TreeCheck run() {
    for (const OrvaneUpidNode& node : file_.nodes) index(node);
    for (const OrvaneUpidNode& node : file_.nodes) {
      if (isHeld(node) && isRoot(node)) draw(node);
    }
    for (const OrvaneUpidNode& node : file_.nodes) {
      if (!isHeld(node) || closing_.contains(&node)) continue;
      if (!isRoot(node) && !byUpid_.contains(node.parentUpid)) {
        report(node, "its parent " + std::to_string(node.parentUpid) + " is missing");
      }
      if (!reached_.contains(&node)) report(node, "no root reaches it");
    }
    return std::move(check_);
  }

 private:
  static bool isRoot(const OrvaneUpidNode& node) {
    return node.parentUpid == 0 || node.parentUpid == node.upid;
  }

  bool isHeld(const OrvaneUpidNode& node) const { return byUpid_.at(node.upid) == &node; }

  void report(const OrvaneUpidNode& node, const std::string& what) {
    check_.findings.push_back(std::to_string(node.upid) + " '" + writtenName(node) +
                              "', record at offset " + std::to_string(offsetOf(node)) + ": " +
                              what);
  }

  std::size_t offsetOf(const OrvaneUpidNode& node) const {
    return file_.offsetOf(static_cast<std::size_t>(&node - file_.nodes.data()));
  }

  void index(const OrvaneUpidNode& node) {
    const auto [held, isFirst] = byUpid_.try_emplace(node.upid, &node);
    if (!isFirst) {
      report(node, "the UPID is that of the record at offset " +
                       std::to_string(offsetOf(*held->second)) + ", which a tree keeps");
    }
    const auto high = std::ranges::find_if(
        node.name, [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
    if (high != std::end(node.name) && high < std::ranges::find(node.name, '\0')) {
      report(node, "the name is no 7-bit text: a flat list leaves the node out");
    }
  }

  // Draws a root and what it reaches, without recursion: chains may be as long as the file.
  void draw(const OrvaneUpidNode& root) {
    if (!reached_.insert(&root).second) return;  // it has been drawn as a child
    std::vector<DrawnNode> pending = {{&root, nullptr, 0}};
    while (!pending.empty()) {
      const DrawnNode next = pending.back();
      pending.pop_back();
      check_.drawn.push_back(next);
      const std::size_t begin = pending.size();
      followChildren(*next.node, next.depth + 1, pending);
      std::reverse(pending.begin() + static_cast<std::ptrdiff_t>(begin), pending.end());
    }
  }

  // Whether a node that follows `count` children ends the chain without being a child. A parent
  // that counts its children may do without; what names it as parent then is a child too many.
  static bool isClosing(const OrvaneUpidNode& node, const OrvaneUpidNode& parent,
                        std::size_t count) {
    if (node.sibling != 0) return false;
    return parent.numOfChildren == 0 ||
           (parent.numOfChildren == count && node.parentUpid != parent.upid);
  }

  // A chain that breaks is one finding: its length is none.
  void followChildren(const OrvaneUpidNode& parent, std::size_t depth,
                      std::vector<DrawnNode>& pending) {
    std::size_t count = 0;
    const OrvaneUpidNode* from = &parent;
    const char* link = "first child ";
    for (unsigned int upid = parent.firstChild; upid != 0; upid = from->sibling) {
      const auto child = byUpid_.find(upid);
      if (child == byUpid_.end()) {
        report(*from, std::string("its ") + link + std::to_string(upid) + " is missing");
        return;
      }
      if (isClosing(*child->second, parent, count)) {
        closing_.insert(child->second);
        break;
      }
      if (!reached_.insert(child->second).second) {
        report(*from, std::string("its ") + link + std::to_string(upid) +
                          " is linked already: a cycle or a second parent");
        return;
      }
      if (child->second->parentUpid != parent.upid) {
        report(*child->second, "its parent is " + std::to_string(child->second->parentUpid) +
                                   ", but it is a child of " + std::to_string(parent.upid));
      }
      const bool isChild = parent.numOfChildren == 0 || count < parent.numOfChildren;
      if (isChild) pending.push_back({child->second, &parent, depth});
      ++count;
      from = child->second;
      link = "sibling ";
    }
    if (parent.numOfChildren != 0 && count != parent.numOfChildren) {
      report(parent, "it counts " + std::to_string(parent.numOfChildren) + " children, but " +
                         std::to_string(count) + " are linked");
    }
  }

  const TreeFile& file_;
  TreeCheck check_;
  std::unordered_map<unsigned int, const OrvaneUpidNode*> byUpid_;
  std::unordered_set<const OrvaneUpidNode*> reached_;
  std::unordered_set<const OrvaneUpidNode*> closing_;
};

}  // namespace

TreeCheck checkTree(const TreeFile& file) { return Walk(file).run(); }

}  // namespace orvane::cli
