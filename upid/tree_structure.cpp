// The structure of a tree, as its links draw it, and what is wrong with them.

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "orvane/upid_tree.h"
#include "upid/node_report.h"

namespace {

struct UnwatchedLinks {
  template <typename What>
  void add(unsigned int /*upid*/, const char* /*kind*/, What /*what*/) {}
};

class LinkReport {
 public:
  explicit LinkReport(OrvaneFindings& findings) : findings_(findings) {}

  template <typename What>
  void add(unsigned int upid, const char* kind, What what) {
    orvane::report(findings_, {0, kOrvaneFindingError, kind, std::to_string(upid), ""}, what);
  }

 private:
  OrvaneFindings& findings_;
};

// Follows the links from the roots, without recursion.
template <typename Watch>
class TreeWalk {
 public:
  TreeWalk(const OrvaneUpidTree& tree, Watch watch) : watch_(watch) {
    visits_.reserve(tree.size());
    for (const auto& [upid, node] : tree) visits_.push_back({&node, upid});
    places_.reserve(tree.size());
  }

  void drawRoots() {
    for (Visit& visit : visits_) {
      if (isRoot(visit) && !visit.isReached) draw(visit);  // else it has been drawn as a child
    }
  }

  // What drawRoots() has left over.
  void reportRest() {
    for (const Visit& visit : visits_) {
      if (visit.isClosing) continue;
      const unsigned int parent = visit.node->parentUpid;
      if (!isRoot(visit) && find(parent) == nullptr) {
        watch_.add(visit.upid, "missing-parent",
                   [&] { return "its parent " + std::to_string(parent) + " is missing"; });
      }
      if (visit.isReached) continue;
      watch_.add(visit.upid, "unreachable", [] { return "no root reaches it"; });
    }
  }

  std::vector<OrvaneUpidPlace>& places() { return places_; }

 private:
  // A node by the UPID under which the tree holds it.
  struct Visit {
    const OrvaneUpidNode* node;
    unsigned int upid;
    bool isLinked = false;  // from a root on; a link too many does not reach it
    bool isReached = false;
    bool isClosing = false;
  };

  struct Pending {
    const Visit* visit;
    const OrvaneUpidNode* parent;
    std::size_t depth;
  };

  static bool isRoot(const Visit& visit) {
    return visit.node->parentUpid == 0 || visit.node->parentUpid == visit.upid;
  }

  Visit* find(unsigned int upid) {
    const auto found = std::ranges::lower_bound(visits_, upid, {}, &Visit::upid);
    return found == visits_.end() || found->upid != upid ? nullptr : &*found;
  }

  void draw(Visit& root) {
    root.isLinked = root.isReached = true;
    pending_.push_back({&root, nullptr, 0});
    while (!pending_.empty()) {
      const Pending next = pending_.back();
      pending_.pop_back();
      places_.push_back({next.visit->node, next.parent, next.depth});
      const std::size_t begin = pending_.size();
      followChildren(*next.visit, next.depth + 1);
      std::reverse(pending_.begin() + static_cast<std::ptrdiff_t>(begin), pending_.end());
    }
  }

  // Whether a node that follows `count` children ends the chain without being a child. A parent
  // that counts its children may do without; what names it as parent then is a child too many.
  static bool closes(const OrvaneUpidNode& node, const Visit& parent, std::size_t count) {
    if (node.sibling != 0) return false;
    const unsigned int counted = parent.node->numOfChildren;
    return counted == 0 || (counted == count && node.parentUpid != parent.upid);
  }

  // Each node is followed once, so that all chains together take no longer than the tree is large.
  void followChildren(const Visit& parent, std::size_t depth) {
    const std::size_t counted = parent.node->numOfChildren;
    std::size_t count = 0;
    const Visit* from = &parent;
    for (unsigned int upid = parent.node->firstChild; upid != 0; upid = from->node->sibling) {
      const auto link = [&] {
        return (from == &parent ? "its first child " : "its sibling ") + std::to_string(upid);
      };
      Visit* const child = find(upid);
      if (child == nullptr) {
        watch_.add(from->upid, "broken-link", [&] { return link() + " is missing"; });
        return;
      }
      if (closes(*child->node, parent, count)) {
        child->isClosing = true;
        break;
      }
      if (child->isLinked) {
        watch_.add(from->upid, "cycle",
                   [&] { return link() + " is linked already: a cycle or a second parent"; });
        return;
      }
      child->isLinked = true;
      if (child->node->parentUpid != parent.upid) {
        watch_.add(upid, "parent", [&] {
          return "its parent is " + std::to_string(child->node->parentUpid) +
                 ", but it is a child of " + std::to_string(parent.upid);
        });
      }
      if (counted == 0 || count < counted) {
        child->isReached = true;
        pending_.push_back({child, parent.node, depth});
      }
      ++count;
      from = child;
    }
    if (counted != 0 && count != counted) {
      watch_.add(parent.upid, "count", [&] {
        return "it counts " + std::to_string(counted) + " children, but " + std::to_string(count) +
               " are linked";
      });
    }
  }

  Watch watch_;
  std::vector<Visit> visits_;  // ascending by UPID
  std::vector<Pending> pending_;
  std::vector<OrvaneUpidPlace> places_;
};

}  // namespace

std::vector<OrvaneUpidPlace> OrvaneUpidTree::outline() const {
  TreeWalk walk(*this, UnwatchedLinks());
  walk.drawRoots();
  return std::move(walk.places());
}

void OrvaneUpidTree::addFindings(OrvaneFindings& findings) const {
  TreeWalk walk(*this, LinkReport(findings));
  walk.drawRoots();
  walk.reportRest();
}
