// Reads a mapping section text and tells, by line, what of it is skipped, cut or misread: of each
// kind the first three, and how many there are.

#include <orvane/orvane.h>

#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  std::ifstream file(argv[1]);
  const std::string text(std::istreambuf_iterator<char>(file), {});
  OrvaneAppMapping configuration;
  OrvaneFindings findings(3);
  configuration.setSectionReported(text, findings);

  for (const OrvaneFinding& finding : findings) {
    if (finding.severity == kOrvaneFindingNote) continue;
    std::cout << "line " << finding.line << ": " << finding.message << "\n";
  }
  for (const OrvaneFindings::Count& count : findings.getCounts()) {
    std::cout << count.kind << ": " << count.found << "\n";
  }
  return findings.getFound(kOrvaneFindingError) == 0 ? 0 : 1;
}
