#include <orvane/orvane.h>

#include <iostream>

int main() {
  OrvanePortMapping item;
  item.setIp("10.0.0.1");
  item.setPorts("443,80");
  OrvaneApplication application;
  application.addItem(item);
  std::cout << application.getItems()[0].getMappingAsString() << '\n';
}
