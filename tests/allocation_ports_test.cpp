// Port mappings, counters, section stores and protocol trees while memory runs out.

#include <orvane/orvane.h>

#include <algorithm>
#include <set>
#include <stdexcept>

#include "allocation.h"
#include "sample.h"

namespace allocation {
namespace {

using std::to_string;

struct PortList {
  std::string kind;
  std::string text;
};
const PortList kPortLists[] = {
    {" in order", "22,80,443,1000-2000,3000-3010,5000"},
    {" out of order", "443,80,2000-1000,22,30-20,1500"},
    {" with overlaps", "1-5,3-9,8-20,100-200,150-160,7"},
    {" of many ports", repeated(20, [](auto i) { return to_string(2000 - 7 * i) + ","; })},
    {" of very many", repeated(40, [](auto i) {
       const unsigned int start = 1 + i * 37 * 97 % 65521;
       return to_string(start) + (i % 2 == 0 ? "," : "-" + to_string(start + 30) + ",");
     })}};
const std::string& kVeryMany = std::end(kPortLists)[-1].text;

void drawItem(const std::string& name, const OrvanePortMapping& item, Picture& picture) {
  picture[name] = show(item);
}

struct PortsWorld : Samples<OrvanePortMapping, drawItem> {
  PortsWorld() {
    few = makeItem(kHost, "80,443,1000-2000,3000-3010", 7);
    many = makeItem(kHost, "1,2,3,4,5,6,7,8,9,10,11,100-200,300-400,500-600", 8);
    many.getRanges().insert(OrvanePortRange(1, 70000));  // which ends last and starts first
    other = makeItem(0, "80,8080,9000,1500-1700,5000-6000,6001-7000");
  }
};

TEST(Allocation, PortMapping) {
  using World = PortsWorld;
  using Mapping = OrvanePortMapping;
  static const auto record = makeRecord("9,8,1-7,20-22|9|8|2");
  static const auto bad = makeRecord("9,x,8-7,1.2-9|1.2.3.x|-8|z");
  check<World>(
      {STRONG(w.text = w.few.getPortsAsString().c_str()),
       STRONG(w.text = w.few.getIpAsString().c_str()),
       STRONG(w.text = w.many.getMappingAsString().c_str()),
       STRONG(w.text = w.few.getDiffAsString(w.many).c_str()),
       STRONG(w.text = Mapping::PortArrayToString(w.many.getPorts()).c_str()),
       STRONG(w.few.setPorts(w.other.getPorts())), STRONG(w.few.setRanges(w.other.getRanges())),
       STRONG(w.few.replacePorts(w.many.getPorts())), STRONG(w.few.addPorts(w.other.getPorts())),
       STRONG(w.few.addRanges(w.other.getRanges())), STRONG(w.few.addRange({4000, 4010})),
       STRONG(w.few.addRange({400, 1100})), STRONG(w.few.setNewPorts("9,8,1-7,20-22")),
       SILENT(w.few.setValues(record.data())), STRONG(w.few.setValuesChecked(record)),
       STRONG(w.few.setValuesReported(bad, w.found))});
  checkCopies<World>();
  checkCopies<World, tagPortMapping>(" as records");
  for (const PortList& list : kPortLists) {
    const char* const text = list.text.c_str();
    check<World>(
        {STRONG(w.few.setPorts(text)), STRONG(w.none.setPorts(text)),
         STRONG(w.few.setPortsReported(text, w.found)), STRONG(w.text = Mapping::sortPorts(text)),
         STRONG(w.text = Mapping::parse(kOrvaneParsePorts, text)),
         STRONG(w.text = Mapping::parse(kOrvaneParseRanges, text))},
        list.kind);
    check<World>({STRONG(Mapping::appendSortedPorts(w.to, text)),
                  STRONG(Mapping::appendParsed(w.to, kOrvaneParsePorts, text)),
                  STRONG(Mapping::appendParsed(w.to, kOrvaneParseRanges, text))},
                 list.kind);
  }
  check<World>({STRONG(OrvanePortRange(4294967294, 4294967295).appendRange(w.to)),
                STRONG(OrvanePort("65535").appendPortStr(w.to)),
                STRONG(OrvanePort("10000000-20000000").appendText(w.to)),
                STRONG(w.few.appendPorts(w.to)), STRONG(w.many.appendPorts(w.to)),
                STRONG(w.few.appendIp(w.to)), STRONG(w.many.appendMapping(w.to)),
                STRONG(w.few.appendDiff(w.to, w.many)),
                STRONG(Mapping::appendPortArray(w.to, w.many.getPorts()))});
}

void drawCounter(const std::string& name, const OrvanePortCounter& counter, Picture& picture) {
  for (const OrvaneSock& socket : counter.getSockets()) {
    picture[name + std::to_string(socket.address) + ":" + socket.port.getText()] = "in use";
  }
  OrvanePortMapping everywhere;
  everywhere.setPorts(counter.getPorts());
  everywhere.setRanges(counter.getRanges());
  picture[name] = everywhere.getPortsAsString();
}

struct CounterWorld : Samples<OrvanePortCounter, drawCounter> {
  OrvanePortMapping item = makeItem(kHost, kVeryMany.c_str());

  CounterWorld() {
    few.add("80,443,1000-2000,3000-3010");
    few.addSocket(kHost, "53,8080");
    many.add(kPortLists[3].text.c_str());
    many.addSocket(kHost, kPortLists[0].text.c_str());
  }
};

TEST(Allocation, PortCounter) {
  using World = CounterWorld;
  check<World>({STRONG(w.text = w.many.toString().c_str()),
                STRONG(w.number = w.few.checkPorts(w.item.getPorts())),
                STRONG(w.number = w.few.overlap({65400, 65535})),
                STRONG(w.number = w.few.checkRanges(w.item.getRanges())),
                STRONG(w.number = w.few.sockOverlap(kHost, {65400, 65535})),
                STRONG(w.number = w.many.checkSocket(kHost, w.item, true))});
  checkCopies<World>();
  for (const PortList& list : kPortLists) {
    const char* const text = list.text.c_str();
    check<World>(
        {STRONG(w.few.add(text)), STRONG(w.many.remove(text)), BASIC(w.few.addSocket(kHost, text)),
         STRONG(w.few.addReported(text, w.found)), STRONG(w.many.removeReported(text, w.found)),
         BASIC(w.few.addSocketReported(kHost, text, w.found))},
        list.kind);
  }
  check<World>({STRONG(w.few.add(w.item.getPorts())), STRONG(w.few.add(w.item.getRanges())),
                BASIC(w.few.addSocket(kHost, w.item.getPorts())), STRONG(w.many.appendText(w.to)),
                STRONG(w.number = w.few.collides(OrvanePortRange(65400, 65535))),
                STRONG(w.number = w.few.collides(w.item.getRanges())),
                STRONG(w.number = w.few.collides(kHost, OrvanePortRange(65400, 65535))),
                STRONG(w.number = w.many.collides(kHost, w.item))});
}

void drawStore(const std::string& name, const OrvaneIni& store, Picture& picture) {
  try {
    for (int i = 0;; ++i) picture[name + to_string(i)] = store.getSection(i, true);
  } catch (const std::out_of_range&) {
    picture.erase(std::prev(picture.end()));
  }
}

struct StoreWorld : Samples<OrvaneIni, drawStore> {
  StoreWorld() {
    few.setSection("UPID=5\nname=Web\n;\nIPv4=1\n;\n;\n");
    many.setSection(
        repeated(20, [](auto i) { return "a long key " + to_string(i) + "=v\n;\n"; }).c_str());
  }
};

TEST(Allocation, SectionStore) {
  using World = StoreWorld;
  static const std::string text = repeated(9, [](auto i) {
    return "a key too long to lie in a string=\nA=\na=2\n" + std::string(i % 2 != 0 ? ";\n" : "");
  });
  check<World>({STRONG(w.text = w.many.getSection(3, true)), STRONG(w.made.emplace(text.c_str())),
                STRONG(w.few.setSection(text.c_str())),
                STRONG(w.few.setSectionReported(text + "a=1\na=2\r\n", w.found))});
  checkCopies<World>();
  check<World>({STRONG(w.many.appendSection(w.to, 3, true))});
}

// Nodes with the UPIDs from `first`, each the sibling of the one before it.
OrvaneUpidArray chain(unsigned int first, unsigned int count) {
  OrvaneUpidArray nodes;
  for (unsigned int upid = first; upid < first + count; ++upid) {
    OrvaneUpidNode node;
    node.setUpid(upid);
    node.setFirstChild(first + 1);
    node.setSibling(upid + 1);
    nodes.add(node);
  }
  return nodes;
}

std::string bufferOf(const OrvaneUpidArray& nodes) {
  std::string buffer(nodes.size() * sizeof(UPID_TREE_NODE_S), '\0');
  nodes.getBuffer(buffer.data());
  return buffer;
}

// A tree buffer; its header only counts.
std::string treeBufferOf(const OrvaneUpidArray& nodes) {
  std::string header(sizeof OrvaneUpidTree::header, '\0');
  header[0] = static_cast<char>(nodes.size());
  return header + bufferOf(nodes);
}

void drawArray(const std::string& name, const OrvaneUpidArray& nodes, Picture& picture) {
  picture[name] = bufferOf(nodes);
}

void drawTree(const std::string& name, const OrvaneUpidTree& tree, Picture& picture) {
  picture[name] = to_string(tree.header[0]);
  for (const auto& [upid, node] : tree) picture[name + to_string(upid)] = to_string(node.sibling);
}

// Findings have no guarantee: the list may hold a part.
struct ArrayWorld : Samples<OrvaneUpidArray, drawArray> {
  OrvaneFindings findings;

  ArrayWorld() { few = chain(10, 3), many = chain(8, 20), other = chain(99, 1); }
};

struct TreeWorld : Samples<OrvaneUpidTree, drawTree> {
  OrvaneFindings findings;

  TreeWorld() {
    few.setBuffer(treeBufferOf(chain(10, 3)).data(), 0);
    many.setBuffer(treeBufferOf(chain(8, 300)).data(), 0);  // the chain is looked up in a table
    to.resize(300 * sizeof(UPID_TREE_NODE_S));
    other.setBuffer(treeBufferOf(chain(99, 1)).data(), 0);
  }
};

TEST(Allocation, UpidArray) {
  using World = ArrayWorld;
  OrvaneUpidArray nodes = chain(11, 12);
  static const std::string records = bufferOf(nodes);
  for (const std::size_t odd : {0U, 7U}) nodes[odd].name[0] = '\x80';
  static const std::string named = bufferOf(nodes);
  check<World>({STRONG(w.few.add(w.other[0])), STRONG(w.few.setBuffer(records.data(), 12 * 72)),
                STRONG(w.few.setBufferChecked(records)), STRONG(w.many.getBufferChecked(w.to)),
                STRONG(w.few.setBufferReported(named, w.findings))});
  checkCopies<World>();
}

TEST(Allocation, UpidTree) {
  using World = TreeWorld;
  OrvaneUpidArray nodes = chain(11, 12);
  static const std::string ascending = treeBufferOf(nodes);
  std::reverse(nodes.begin(), nodes.end());
  static const std::string descending = treeBufferOf(nodes);
  static const std::string records = bufferOf(nodes);
  check<World>({STRONG(w.few.add(w.other[99])), STRONG(w.few.setBuffer(ascending.data(), 0)),
                STRONG(w.few.setBufferChecked(ascending)),
                STRONG(w.none.setBufferChecked(descending)), STRONG(w.many.getBufferChecked(w.to)),
                STRONG(w.many.getChildrenBuffer(8, w.to.data())),
                STRONG(w.many.getChildrenBufferChecked(8, w.to))});
  check<World>({STRONG(w.few.setBufferReported(ascending, w.findings)),
                STRONG(w.none.setBufferReported(descending, w.findings)),
                STRONG(w.few.addNodesChecked(records)),
                STRONG(w.few.addNodesReported(records, w.findings)),
                STRONG(w.few.addFindings(w.findings)), STRONG(w.number = w.many.outline().size())});
  checkCopies<World>();
}

}  // namespace
}  // namespace allocation
