// Writing what has changed from applications to newer ones.

#ifndef ORVANE_APPS_CHANGE_WRITER_H_
#define ORVANE_APPS_CHANGE_WRITER_H_

#include "orvane/application.h"
#include "ports/differences.h"
#include "ports/text_out.h"

namespace orvane {

// The updated section of a collection, given what either side has and the other has not.
void writeChanges(TextOut& out, const Differences<OrvaneApplication>& changed, bool closeGroups);

}  // namespace orvane

#endif  // ORVANE_APPS_CHANGE_WRITER_H_
