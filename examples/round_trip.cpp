// Reads an older and a newer state of two applications and prints what changed.

#include <orvane/orvane.h>

#include <iostream>

int main() {
  OrvaneAppMapping older;
  older.setSection(
      "PortRange=80,443\nIPv4=167772161\nAction=1\nUPID=7000\nApplName=Web\n;\n"
      "PortRange=25\nIPv4=167772162\nAction=1\nUPID=7001\nApplName=Mail\n;\n");

  OrvaneAppMapping newer = older;
  newer.remove(newer.find(7001));
  OrvanePortMapping item;
  item.setIp("10.0.0.1");
  item.setPorts("8080,9000-9010");
  newer.find(7000)->addItem(item);

  std::cout << newer.find(7000)->getItems()[0].getMappingAsString() << "\n\n"
            << older.getUpdatedSection(newer, true);
}
