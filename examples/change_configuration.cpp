// Reads a mapping section text, changes what it describes, and prints the change sections that a
// device with the older state needs.

#include <orvane/orvane.h>

#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  std::ifstream file(argv[1]);
  const std::string text(std::istreambuf_iterator<char>(file), {});
  OrvaneAppMapping older;
  older.setSection(text.c_str());
  OrvaneAppMapping newer = older;

  // The mail server takes plain IMAP as well.
  OrvanePortMapping& mail = newer.find(7001)->getItems().front();
  mail.getPorts().insert(143);

  // Nobody uses telnet any more.
  newer.remove(newer.find(7002));

  // The secure shell takes its place.
  OrvaneApplication shell;
  shell.setUpid(7005);
  shell.setID(7005);
  shell.setName("Secure shell");
  shell.setAction(kOrvaneActionAdd);
  OrvanePortMapping item;
  item.setIp("10.0.9.1");
  item.setPorts("22");
  shell.addItem(item);
  newer.add(shell);

  std::cout << older.getUpdatedSection(newer, true);
}
