// Applications, collections and catalogues while memory runs out.

#include <orvane/orvane.h>

#include <sstream>

#include "allocation.h"
#include "sample.h"

namespace allocation {
namespace {

using std::to_string;

// An application with `count` items, at every second address.
OrvaneApplication application(unsigned int upid, const char* name, unsigned int count,
                              const char* ports = "80,443,1000-2000", int id = 4) {
  OrvaneApplication application = makeApplication(upid, name);
  for (unsigned int i = 0; i < count; ++i) {
    application.addItem(makeItem(kHost + 2 * i, ports, static_cast<int>(i)));
  }
  application.setAction(kOrvaneActionAdd);
  application.setID(id);
  return application;
}

OrvaneApplication newApplication(int id, const char* name, unsigned int count) {
  return application(kOrvaneNoUpid, name, count, "25,600-700", id);
}

void drawApplications(const std::string& name, const OrvaneAppMapping& mapping, Picture& picture) {
  for (const OrvaneApplication& application : mapping) picture[name] += show(application);
}

struct ApplicationsWorld : Samples<OrvaneAppMapping, drawApplications> {
  OrvanePortMapping known = makeItem(kHost + 2, "81,443,500-600,1900-2100");
  OrvanePortMapping fresh = makeItem(kHost + 3, "81,443,500-600,1900-2100", 9);
  OrvaneApplication small = application(5, "Small", 1, "81,443,500-600");

  ApplicationsWorld() {
    few.assign({application(5, "Web", 3), newApplication(77, "Mail", 2), application(7, "Dns", 1),
                newApplication(78, "Log", 0)});
    many.assign({application(3, "Many", 20, "80"), application(5, "Web", 12, "81,443,500-600"),
                 application(8, "Far", 2), application(2, "Near", 2)});
    other.assign({newApplication(77, "Mail", 3), newApplication(79, "Log", 2),
                  application(6, "Web", 2, "80,9000,5000-6000"), newApplication(79, "Log", 3),
                  newApplication(80, "Dns", 1)});
  }
};

// Groups of a section text of the application with that key.
std::string groups(const std::string& key, unsigned int count, int step) {
  return repeated(count, [&](unsigned int i) {
    const auto address = static_cast<int>(kHost + 11) + static_cast<int>(i) * step;
    return key + "\nApplName=Group\nIPv4=" + to_string(address) +
           "\nPortRange=80,22-33\nSelectorTypeInfo=2\n;\n";
  });
}

TEST(Allocation, Application) {
  using World = ApplicationsWorld;
  static const auto knownRecord = makeRecord("7,9-12|167772163|1|1|7|Web|12|3");
  static const auto freshRecord = makeRecord("7,9-12|167772166|1|1|7|Web|12|3");
  static const std::string ascending = groups("UPID=5", 3, 1);
  static const std::string descending = groups("UPID=5", 12, -1);
  static const std::string large = groups("UPID=5", 20, 1);
  check<World>({STRONG(w.text = w.many[0].getSection(true)),
                STRONG(w.text = w.many[0].getInitialSection()),
                STRONG(w.text = w.few[0].getAddNewSection(true)),
                STRONG(w.text = w.many[0].getDeleteSection(true)),
                STRONG(w.text = w.many[0].getUpdatedSection(w.few[0], true)),
                STRONG(w.few[0].addItem(w.known)),
                STRONG(w.few[0].addItem(w.fresh)),
                STRONG(w.few[3].addItem(w.fresh)),
                STRONG(w.many[0].addItem(w.fresh)),
                STRONG(w.few[0].updateItem(w.known)),
                STRONG(w.few[0].updateItem(w.fresh)),
                STRONG(w.few[0].deleteItem(w.known)),
                STRONG(w.few[0].getItems().insert(w.fresh)),
                STRONG(w.few[0].getItems() = w.many[0].getItems()),
                STRONG(w.few[3].update(w.few[0])),
                STRONG(w.few[0].update(w.many[1])),
                STRONG(w.few[0].update(w.many[0])),
                STRONG(w.many[0].update(w.few[0])),
                STRONG(w.few[0].setValues(knownRecord.data())),
                STRONG(w.few[0].setValuesChecked(freshRecord)),
                STRONG(w.few[3].setSection(ascending.c_str())),
                STRONG(w.few[0].setSection(ascending.c_str())),
                STRONG(w.few[0].setSection(descending.c_str())),
                STRONG(w.few[0].setSection(large.c_str())),
                STRONG(w.many[0].setSection(descending.c_str())),
                STRONG(w.few.front() = w.many[0]),
                STRONG(w.many.front() = w.few[0]),
                STRONG(static_cast<tagApplication&>(w.few[0]) = w.many[0]),
                STRONG(static_cast<tagApplication&>(w.few[3]) = w.few[0]),
                STRONG(static_cast<tagApplication&>(w.many[0]) = w.few[0])});
  check<World>({STRONG(w.few[0].appendSection(w.to, true)),
                STRONG(w.few[0].appendInitialSection(w.to)),
                STRONG(w.few[0].appendAddNewSection(w.to, true)),
                STRONG(w.few[0].appendDeleteSection(w.to, true)),
                STRONG(w.many[0].appendUpdatedSection(w.to, w.few[0], true))});
}

TEST(Allocation, Collection) {
  using World = ApplicationsWorld;
  static const auto knownRecord = makeRecord("7,9-12|167772161|1|1|5|Web|12|3");
  static const auto freshRecord = makeRecord("7,9-12|167772166|1|1|9|Fresh|12|3");
  static const std::string together =
      groups("UPID=1", 3, 1) + groups("GroupID=7", 2, 1) + groups("UPID=2", 12, -1);
  static const std::string scattered =
      repeated(40, [](auto i) { return groups("UPID=" + to_string(i * 7 % 5), 2, -1); });
  static const std::string keyless = groups("A=", 5, 1);
  static const std::string faulty = scattered + "UPID=5\nx=\nUPID=z\r\n;\nAction=\nend";
  static const auto badKnown = makeRecord("7,x,12-9|1.2.3.x|z|-1|5|Mail||");
  static const auto bad = makeRecord("7,x,12-9|1.2.3.x|z|-1|y|Mail||");
  check<World>({STRONG(w.text = w.many.getSection(true)),
                STRONG(w.text = w.many.getInitialSection()),
                STRONG(w.text = w.many.getAddNewSection(true)),
                STRONG(w.text = w.many.getUpdatedSection(w.few, true)),
                STRONG(w.number = w.few.getSection(w.to.data())),
                STRONG(w.few.getSectionChecked(w.to)),
                STRONG(w.few.add(w.small)),
                STRONG(w.none.add(w.many[0])),
                STRONG(w.few.add(w.many[1])),
                STRONG(w.few.update(w.many[1])),
                STRONG(w.few.addEx(w.small)),
                STRONG(w.few.add(knownRecord.data())),
                STRONG(w.few.addChecked(knownRecord)),
                STRONG(w.few.addChecked(freshRecord)),
                STRONG(w.few.addReported(bad, w.found)),
                STRONG(w.few.addReported(badKnown, w.found)),
                STRONG(w.few[0].setValuesReported(bad, w.found)),
                STRONG(w.few.setDeleted(&w.few[1])),
                STRONG(w.few.remove(&w.few.back())),
                STRONG(w.few.remove(w.small)),
                STRONG(w.few.removeNew(w.other)),
                STRONG(w.none.removeNew(w.other)),
                STRONG(w.few.updateNew(w.other)),
                STRONG(w.many.sortByName()),
                STRONG(w.many.sortByUpid()),
                STRONG(w.number = OrvaneComparison(w.many, w.few).size()),
                STRONG(w.number = OrvaneComparison(w.few, w.many)[1].getFacts().size()),
                STRONG(w.few.setSection(together.c_str())),
                STRONG(w.few.setSection(scattered.c_str())),
                STRONG(w.few.setSection(keyless.c_str())),
                STRONG(w.few.setSectionReported(faulty, w.found)),
                STRONG(w.few[0].setSectionReported(faulty, w.found))});
  checkCopies<World>();
  check<World>({STRONG(w.few.appendSection(w.to, true)), STRONG(w.few.appendInitialSection(w.to)),
                STRONG(w.few.appendAddNewSection(w.to, true)),
                STRONG(w.many.appendUpdatedSection(w.to, w.few, true)),
                STRONG(OrvaneComparison(w.many, w.few).appendChangeSections(w.to, true))});
}

TEST(Allocation, Collisions) {
  using World = ApplicationsWorld;
  static OrvanePortCounter used;
  used.add("80,1500-1600");
  used.addSocket(kHost, "443,2000");
  static OrvaneCollision found;
  found.ports.assign(40, {1000, 2000});
  check<World>({STRONG(w.number = OrvaneCollisions(w.many).size()),
                STRONG(w.number = OrvaneCollisions(w.few, w.many).size()),
                STRONG(w.number = OrvaneCollisions(w.few, used).size()),
                STRONG(found.appendPorts(w.to))});
}

const std::string kManyPorts = repeated(20, [](auto i) { return to_string(2000 - 7 * i) + ","; });

OrvaneAppInfo entry(unsigned int upid, const char* ports) {
  OrvaneAppInfo entry;
  entry.setUPID(upid);
  entry.setVersion(3);
  entry.setPorts(ports);
  entry.setFQN("entry.example");
  return entry;
}

// The fields of each entry, and each of its ports, which may be added one by one.
void drawCatalogue(const std::string& name, const OrvaneAppInfoArray& catalogue, Picture& picture) {
  for (const OrvaneAppInfo& held : catalogue) {
    const std::string place = name + to_string(&held - catalogue.begin()) + " ";
    picture[place] = joined(held.getVersion(), held.getPortType(), held.getUPID(),
                            held.getReserved1(), held.getFQN());
    std::istringstream ports(held.getPorts());
    for (std::string port; std::getline(ports, port, ',');) picture[place + port];
  }
}

struct CatalogueWorld : Samples<OrvaneAppInfoArray, drawCatalogue> {
  OrvaneAppMapping mapping;

  CatalogueWorld() {
    for (const unsigned int upid : {5U, 6U, 8U}) few.add(entry(upid, "25,443,600-700"));
    many.add(entry(7, kManyPorts.c_str()));
    for (unsigned int upid = 1; upid < 10; ++upid) many.add(entry(upid, "80,90"));
    other.add(OrvaneAppInfo());
    mapping.assign({makeApplication(5, "Web", {makeItem(0, "7,80,90-99,900-1000")}),
                    makeApplication(7, "Dns", {makeItem(0, "53")}), application(6, "Far", 2)});
  }
};

TEST(Allocation, Catalogue) {
  using World = CatalogueWorld;
  static const auto record = makeRecord("3|2|5|80,443,90-99|1|2|3|a.example");
  static const std::string sections =
      repeated(5, [](auto i) { return "UPID=" + to_string(i) + "\nPortRange=443,80,90-99\n;\n"; });
  static const std::string faulty = sections + "UPID=1\nx=\nUPID=z\r\n;\nUPID=2\nend";
  static const auto bad = makeRecord("x|y|z|9-8,a,70000||-1|1 2|a");
  // The first ones have the texts of the process grow.
  check<World>(
      {STRONG(w.text = w.few.getAppMappingSection(w.mapping, w.upids, true)),
       STRONG(w.text = w.many.getAppMappingSection(w.mapping, w.upids, true)),
       STRONG(w.text = w.many.getMergedAppMappingSection(w.mapping, w.upids, true)),
       STRONG(w.text = w.many.getSection(true)), STRONG(w.text = w.many.getSection(w.upids, true)),
       STRONG(w.text = w.few.getPorts()), STRONG(w.few.getPortList(w.ports)),
       STRONG(w.few.getUnknownPortList(w.upids, w.upids)),
       STRONG(w.few.getCommonPortList(w.upids, w.upids)), STRONG(w.few.add(*w.few.begin())),
       STRONG(w.few.add(record.data())), STRONG(w.few.addChecked(record)),
       STRONG(w.few.setSection(sections.c_str())), STRONG(w.none.setSection(sections.c_str())),
       STRONG(w.few.addReported(record, w.found)),
       STRONG(w.few.begin()->setValuesReported(bad, w.found)),
       STRONG(w.few.begin()->setPortsReported("1-9,x,2-9,70000", w.found)),
       STRONG(w.few.begin()->setSectionReported(faulty, w.found)),
       STRONG(w.few.setSectionReported(faulty, w.found))});
  checkCopies<World>();
  check<World>({STRONG(w.many.appendSection(w.to, true)),
                STRONG(w.many.appendSection(w.to, w.upids, true)),
                STRONG(w.many.appendMergedAppMappingSection(w.to, w.mapping, w.upids, true)),
                STRONG(w.few.appendAppMappingSection(w.to, w.mapping, w.upids, true)),
                STRONG(w.few.appendPorts(w.to))});
}

TEST(Allocation, Entry) {
  using World = CatalogueWorld;
  check<World>(
      {STRONG(w.text = w.few.begin()->getPorts()), STRONG(w.text = w.many.begin()->getEnumPorts()),
       STRONG(w.text = w.many.begin()->getSection(true)), STRONG(*w.few.begin() = w.mapping[0]),
       STRONG(w.few.begin()->addPorts(w.mapping[0])), STRONG(*w.other.begin() = *w.few.begin()),
       STRONG(*w.few.begin() = *w.many.begin()), STRONG(*w.many.begin() = *w.few.begin())});
  static const auto record = makeRecord("3|2|5|443,80,90-99|1|2|3|a.example");
  static const std::string section = "UPID=9\nPortRange=443,80,90-99\nFQN=a.example\n;\n";
  check<World>({STRONG(w.few.begin()->setValues(record.data())),
                STRONG(w.few.begin()->setValuesChecked(record)),
                STRONG(w.few.begin()->setSection(section.c_str()))});
  for (const char* const text :
       {"80,443,1000-2000", "443,80,2000-1000,30-20", kManyPorts.c_str()}) {
    check<World>({STRONG(w.few.begin()->setPorts(text))}, std::string(" of ") + text);
  }
  check<World>({STRONG(w.few.begin()->appendPorts(w.to)),
                STRONG(w.few.begin()->appendEnumPorts(w.to)),
                STRONG(w.many.begin()->appendSection(w.to, true))});
}

}  // namespace
}  // namespace allocation
