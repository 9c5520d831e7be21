// The services(5) file.

#ifndef ORVANE_EXCHANGE_SERVICES_H_
#define ORVANE_EXCHANGE_SERVICES_H_

#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "orvane/app_info_array.h"
#include "orvane/app_mapping.h"
#include "orvane/findings.h"

namespace orvane::exchange {

struct Service {
  std::string name;
  std::size_t line;                // where it appears first
  std::set<unsigned short> ports;  // those of all its protocols
};

// The services of such a text, in the order in which their names appear. Malformed lines are
// skipped and reported, of the kind "service".
std::vector<Service> readServices(std::string_view text, OrvaneFindings& findings);

// An application or a catalogue entry for each service, with the UPIDs from `firstUpid` on and, in
// applications, identifiers that equal them; so the same services always give the same. A name that
// the library cuts is reported, of the kind "service-name".
// REQUIRES: no UPID that this gives is 0 or kOrvaneNoUpid.
OrvaneAppMapping applicationsOf(const std::vector<Service>& services, unsigned int firstUpid,
                                OrvaneFindings& findings);
OrvaneAppInfoArray catalogueOf(const std::vector<Service>& services, unsigned int firstUpid,
                               OrvaneFindings& findings);

}  // namespace orvane::exchange

#endif  // ORVANE_EXCHANGE_SERVICES_H_
