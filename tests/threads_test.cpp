#include <gtest/gtest.h>
#include <orvane/orvane.h>

#include <latch>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "sample.h"

namespace {

// Objects that every thread reads and none changes.
struct Shared {
  OrvaneAppMapping older = Random(1).mapping();
  OrvaneAppMapping newer = Random(2).mapping();
  OrvanePortMapping item = makeItem(0x0A000001, "443,80,1000-2000,10-20", 1);
  OrvaneAppInfoArray catalogue;
  std::vector<unsigned int> upids = {3, 1, 4, 1, 9};
  OrvanePortCounter counter;
  OrvaneUpidArray nodes;
  OrvaneUpidTree tree;
  std::string mappingText, catalogueText;

  Shared() {
    newer.push_back(makeApplication(1, "Web", {item}));
    for (OrvaneApplication& application : older) application.setAction(kOrvaneActionAdd);
    newer.appendSection(mappingText, true);
    catalogueText = "UPID=1\nPortRange=80,1000-1010\n;\nUPID=4\nPortRange=53\n;\n";
    catalogue.setSection(catalogueText);
    counter.add("80,2000-3000");
    counter.addSocket(item.getIpAddress(), "443,8080");
    for (unsigned int upid = 1; upid < 9; ++upid) {
      OrvaneUpidNode node;
      node.setUpid(upid);
      node.setFirstChild(2);
      node.setSibling(upid + 1);
      nodes.add(node);
      tree.add(node);
    }
  }
};

// What a thread does, mostly with objects of its own, and the text that comes of it.
struct Work {
  const char* name;
  void (*run)(const Shared& s, std::string& to);
};

const Work kWork[] = {
    {"mapping texts",
     [](const Shared& s, std::string& to) {
       OrvaneAppMapping mapping;
       mapping.setSection(std::string_view(s.mappingText));
       to += joined(mapping.addChecked(makeRecord("80,443|1|1|1|99|Web|12|3")));
       mapping.back().setID(5);
       mapping.appendSection(to, true);
       s.older.appendInitialSection(to);
       s.older.appendAddNewSection(to, true);
       s.older.appendUpdatedSection(to, s.newer, true);
     }},
    {"comparisons",
     [](const Shared& s, std::string& to) {
       const OrvaneComparison comparison(s.older, s.newer);
       for (const OrvaneDifference& difference : comparison) {
         difference.forEachFact([&](const OrvaneFact& fact) { to += fact.getName(); });
       }
       comparison.appendChangeSections(to, true);
     }},
    {"applications",
     [](const Shared& s, std::string& to) {
       for (const OrvaneApplication& newer : s.newer) {
         OrvaneApplication application;
         application.setID(3);
         application.setSection(std::string_view(s.mappingText));
         application.update(newer);
         newer.appendUpdatedSection(to, application, true);
         application.appendSection(to, true);
         application.appendInitialSection(to);
         application.appendAddNewSection(to, true);
         application.appendDeleteSection(to, true);
       }
     }},
    {"port lists",
     [](const Shared& s, std::string& to) {
       OrvanePortMapping item(s.item);
       item.setPorts(std::string_view("9,8,7-6,80"));
       to += joined(item.setValuesChecked(makeRecord("443,22-33|10.0.0.1|1|2")));
       item.appendMapping(to);
       s.item.appendPorts(to);
       s.item.appendIp(to);
       s.item.appendDiff(to, item);
       OrvanePortMapping::appendSortedPorts(to, "3,2,1-9");
       OrvanePortMapping::appendPortArray(to, s.item.getPorts());
       OrvanePortMapping::appendParsed(to, kOrvaneParseRanges, "3,2,1-9");
       s.item.getRanges().begin()->appendRange(to);
       OrvanePort("80").appendPortStr(to);
       OrvanePort("80-90").appendText(to);
     }},
    {"catalogues",
     [](const Shared& s, std::string& to) {
       OrvaneAppInfoArray own(s.catalogue);
       own.setSection(std::string_view(s.catalogueText));
       own.appendAppMappingSection(to, s.newer, s.upids, true);
       s.catalogue.appendSection(to, true);
       s.catalogue.appendSection(to, s.upids, true);
       s.catalogue.appendMergedAppMappingSection(to, s.newer, s.upids, true);
       s.catalogue.appendPorts(to);
       s.catalogue.begin()->appendPorts(to);
       s.catalogue.begin()->appendEnumPorts(to);
       s.catalogue.begin()->appendSection(to, false);
       OrvaneIni(std::string_view(s.catalogueText)).appendSection(to, 1, true);
     }},
    {"counters",
     [](const Shared& s, std::string& to) {
       OrvanePortCounter own(s.counter);
       own.add(std::string_view("1-9,7"));
       own.remove(std::string_view("80"));
       own.appendText(to);
       s.counter.appendText(to);
       const unsigned int address = s.item.getIpAddress();
       const OrvanePortRange range(440, 450);
       to += joined(s.counter.collides(range), s.counter.collides(s.item.getRanges()),
                    s.counter.collides(address, range), s.counter.collides(address, s.item),
                    s.counter.checkPorts(s.item.getPorts()), s.counter.overlap(2500U));
       for (const OrvaneCollisions& collisions :
            {OrvaneCollisions(s.newer), OrvaneCollisions(s.newer, s.older),
             OrvaneCollisions(s.newer, s.counter)}) {
         for (const OrvaneCollision& collision : collisions) collision.appendPorts(to);
       }
     }},
    {"protocol trees", [](const Shared& s, std::string& to) {
       std::string list(s.nodes.size() * sizeof(UPID_TREE_NODE_S), '\0');
       std::string all(list);
       std::string children(list);
       const auto length = s.nodes.getBufferChecked(list);
       OrvaneUpidArray nodes(s.nodes);
       OrvaneUpidTree tree(s.tree);
       to +=
           joined(*length, nodes.setBufferChecked(list), nodes.size(), tree.setBufferChecked(list),
                  *s.tree.getBufferChecked(all), *s.tree.getChildrenBufferChecked(1, children),
                  s.tree[4].record().sibling, s.tree[99].record().sibling);
       to += list + all + children;
     }}};

TEST(Threads, GiveWhatOneGives) {
  const Shared shared;
  std::vector<std::string> expected;
  for (const Work& work : kWork) work.run(shared, expected.emplace_back());

  constexpr std::size_t kThreads = 8;
  constexpr int kRounds = 100;
  std::latch start(kThreads);
  std::vector<std::vector<std::string>> given(kThreads);
  std::vector<std::thread> threads;
  threads.reserve(kThreads);
  for (std::vector<std::string>& texts : given) {
    threads.emplace_back([&] {
      start.arrive_and_wait();
      for (int round = 0; round < kRounds; ++round) {
        for (const Work& work : kWork) work.run(shared, texts.emplace_back());
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (const std::vector<std::string>& texts : given) {
    for (std::size_t i = 0; i < texts.size(); ++i) {
      const std::size_t work = i % expected.size();
      EXPECT_EQ(texts[i], expected[work]) << kWork[work].name;
    }
  }
}

}  // namespace
