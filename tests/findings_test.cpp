// What the reported twins tell beside what lint shows of whole texts.

#include <gtest/gtest.h>
#include <orvane/orvane.h>

#include <functional>
#include <string>

namespace {

std::string linesOf(const OrvaneFindings& findings) {
  std::string lines;
  for (const OrvaneFinding& finding : findings) {
    lines += std::to_string(finding.line) + (finding.severity == kOrvaneFindingNote ? "n " : " ") +
             finding.kind + " " + finding.key + ": " + finding.message + "\n";
  }
  return lines;
}

std::span<const unsigned char> bytesOf(std::string_view text) {
  return {reinterpret_cast<const unsigned char*>(text.data()), text.size()};
}

// A record of these texts, which are joined by "/".
std::string record(std::string texts) {
  for (char& c : texts) {
    if (c == '/') c = '\0';
  }
  return texts + '\0';
}

TEST(Findings, EveryReaderTellsItsOwn) {
  struct Case {
    std::function<void(OrvaneFindings&)> read;
    const char* findings;
  };
  const Case cases[] = {
      {[](auto& f) { OrvanePortMapping().setPortsReported("80,x,9-8,1-9", f); },
       "1 token PortRange: 'x' is skipped: it is no port or range\n"
       "1n range PortRange: '9-8' is read as 8-9\n"
       "1n merged PortRange: range 1-9 is merged with an earlier one into 1-9\n"},
      {[](auto& f) {
         OrvanePortCounter counter;
         counter.add("10-20");
         counter.addReported("15-20,0", f);
         counter.removeReported("y", f);
         counter.addSocketReported(1, "80,5-6", f);
       },
       "1 port PortRange: port '0' is skipped: it is outside 1 to 65535\n"
       "1 range PortRange: range 15-20 is skipped: another range ends at its last port\n"
       "1 token PortRange: 'y' is skipped: it is no port or range\n"
       "1 range PortRange: range 5-6 is ignored: a socket has a single port\n"},
      {[](auto& f) { OrvaneAppInfo().setPortsReported("1-9,2-9,70000,x, 7,1-9", f); },
       "1 range PortRange: range 2-9 is dropped: 1-9 ends at its last port\n"
       "1 port PortRange: port '70000' is outside 1 to 65535: it is read as range 70000-70000\n"
       "1 token PortRange: 'x' is no port or range: it is read as range 0-0\n"},
      {[](auto& f) {
         OrvaneApplication application;
         application.setSection("IPv4=1\nPortRange=1-9\nUniqueBlockNumber=3\n;\n");
         application.setSectionReported(
             "UPID=1\nIPv4=2\n;\nUPID=2\nIPv4=1\nPortRange=5-9\nUniqueBlockNumber=4\n;\nx\n", f);
       },
       "4n replaced UPID: UPID '2' takes the place of that at line 1\n"
       "6 conflict PortRange: range 5-9 is ignored: an earlier group of the address has 1-9\n"
       "7 conflict UniqueBlockNumber: UniqueBlockNumber 4 is ignored: the first group of the "
       "address makes it 3\n"
       "9n terminator : 'x' has no \"=\" and so closes the group\n"
       "9 empty-group : the group closed here has no known key: it is read as an item without "
       "address and ports\n"},
      {[](auto& f) { OrvaneIni().setSectionReported("a=1\nA=2\n=\n;\n\n;\nb=", f); },
       "2 repeated-key A: A is ignored: the group has it already\n"
       "7 dropped : no terminator line follows: the text from here on is dropped\n"},
      {[](auto& f) {
         OrvaneAppInfoArray().setSectionReported("UPID=1\n;\nUPID=2\n;\nUPID=+1\nFQN=b\n;", f);
         OrvaneAppInfo().setSectionReported("UPID=1\nColour=\nUPID=2\ncut", f);
       },
       "5n repeated-upid UPID: UPID 1 has an entry at line 1, which look-ups take\n"
       "2 unknown-key : unknown key 'Colour' is ignored\n"
       "3 repeated-key UPID: UPID is ignored: the group has it at line 1\n"
       "4 cut-off : 'cut' has no \"=\" and so closes the group, but no line feed follows: the text "
       "may have been cut off\n"},
      {[](auto& f) {
         OrvaneAppInfo().setSectionReported("PortRange=1\nFQN=a\n;\n;\nPortRange=2\nFQN=a\n;\n", f);
       },
       "5n replaced PortRange: PortRange '2' takes the place of that at line 1\n"},
      {[](auto& f) {
         EXPECT_TRUE(
             OrvanePortMapping().setValuesReported(bytesOf(record("80,z/1.2.3/x/") + "ab"), f));
         EXPECT_FALSE(OrvanePortMapping().setValuesReported(bytesOf("80"), f));
         EXPECT_TRUE(OrvanePortMapping().setValuesReported(bytesOf(record("")), f));
       },
       "0n record : 2 bytes after the record are ignored\n"
       "0 token PortRange: 'z' is skipped: it is no port or range\n"
       "0 address IPv4: IPv4 '1.2.3' is ignored: it has 3 parts instead of 4\n"
       "0 number UniqueBlockNumber: UniqueBlockNumber 'x' has no digits: read as 0\n"
       "0 number SelectorTypeInfo: SelectorTypeInfo is empty: read as 0\n"
       "0 record : the record is cut short: nothing of it is read\n"
       "0 record : the record is ignored as a whole, since its first text is empty\n"},
      {[](auto& f) {
         OrvaneAppMapping mapping;
         EXPECT_TRUE(mapping.addReported(bytesOf(record("1-9/1/1/1/7/Web/1/0")), f));
         EXPECT_TRUE(mapping.addReported(bytesOf(record("5-9/1/2/1/7/Web/2/0")), f));
         EXPECT_TRUE(mapping[0].setValuesReported(bytesOf(record("80/2/1/1/x/Web/1/0")), f));
         EXPECT_TRUE(OrvaneAppInfo().setValuesReported(bytesOf(record("1/1/1/x/0/0/0/a")), f));
         EXPECT_FALSE(OrvaneAppInfoArray().addReported(bytesOf("1"), f));
       },
       "0 conflict Action: Action 2 is ignored: the first group of the application makes it 1\n"
       "0 conflict UniqueBlockNumber: UniqueBlockNumber 2 is ignored: the first group of the "
       "address makes it 1\n"
       "0 conflict PortRange: range 5-9 is ignored: an earlier group of the address has 1-9\n"
       "0 number UPID: UPID 'x' has no digits: read as 0\n"
       "0 token PortRange: 'x' is no port or range: it is read as range 0-0\n"
       "0 record : the record is cut short: nothing of it is read\n"},
  };
  for (const Case& test : cases) {
    OrvaneFindings findings;
    test.read(findings);
    EXPECT_EQ(linesOf(findings), test.findings);
  }
}

TEST(Findings, AreBounded) {
  std::string text;
  for (int i = 0; i < 500; ++i) text += "x,70000,";
  OrvaneFindings findings(3);
  OrvanePortMapping mapping;
  mapping.setPortsReported(text, findings);
  mapping.setPortsReported("9-8,80,1-90", findings);
  EXPECT_EQ(findings.size(), 9U);
  EXPECT_EQ(findings.getFound(kOrvaneFindingError), 1000U);
  EXPECT_EQ(findings.getFound(kOrvaneFindingNote), 3U);
  ASSERT_EQ(findings.getCounts().size(), 5U);
  EXPECT_EQ(findings.getCounts()[1].found, 500U);

  // A value is cut between two characters, whatever bytes there are.
  for (const auto& [value, shown] :
       {std::pair(std::string(80, 'a'), std::string(80, 'a')),
        std::pair(std::string(81, 'a'), std::string(80, 'a') + "..."),
        std::pair(std::string(79, 'a') + "\xC3\xA9", std::string(79, 'a') + "..."),
        std::pair(std::string(200, '\x80'), std::string(76, '\x80') + "...")}) {
    OrvaneFindings cut;
    mapping.setPortsReported(value, cut);
    ASSERT_EQ(cut.size(), 1U);
    EXPECT_EQ(cut[0].message, "'" + shown + "' is skipped: it is no port or range");
  }
  OrvaneFindings swallowed;
  std::string ports;
  for (int port = 1; port < 20000; ++port) ports += std::to_string(port) + ",";
  mapping.setPortsReported(ports + "1-30000", swallowed);
  ASSERT_EQ(swallowed.size(), 1U);
  EXPECT_LT(swallowed[0].message.size(), 160U);
}

// Every proper beginning of a text is told from the whole, unless it ends with a whole group.
TEST(Findings, NoCutIsTakenInSilence) {
  const std::string text = "UPID=1\nPortRange=22\nIPv4=1.2.3.4\n;\nUPID=2\nApplName=Web\n;\n";
  std::size_t silent = 0;
  for (std::size_t size = 1; size < text.size(); ++size) {
    OrvaneFindings findings;
    OrvaneAppMapping mapping;
    mapping.setSectionReported(std::string_view(text).substr(0, size), findings);
    if (findings.getFound(kOrvaneFindingError) == 0) ++silent;
  }
  EXPECT_EQ(silent, 3U);  // after each of both ";", and before the last line feed
}

TEST(Findings, TellsCataloguesFromApplications) {
  const std::pair<const char*, bool> cases[] = {
      {"", false},
      {"UPID=1\nPortRange=1\n;\n", false},
      {"upid=1\nfqn=a\n;\n", true},
      {"ApplName=a\nFQN=a\n;\n", false},
      {"FQN=a\n", true},
  };
  for (const auto& [text, is] : cases) EXPECT_EQ(OrvaneAppInfoArray::isCatalogue(text), is) << text;
}

}  // namespace
