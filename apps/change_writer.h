// Writing what has changed from applications to newer ones.

#ifndef ORVANE_APPS_CHANGE_WRITER_H_
#define ORVANE_APPS_CHANGE_WRITER_H_

#include <span>

#include "orvane/application.h"
#include "ports/text_out.h"

namespace orvane {

// The updated section from one list of applications, or of pointers to them, to another.
void writeChanges(TextOut& out, std::span<const OrvaneApplication> older,
                  std::span<const OrvaneApplication> newer, bool closeGroups);
void writeChanges(TextOut& out, std::span<const OrvaneApplication* const> older,
                  std::span<const OrvaneApplication* const> newer, bool closeGroups);

}  // namespace orvane

#endif  // ORVANE_APPS_CHANGE_WRITER_H_
