#ifndef ORVANE_ORVANE_H_
#define ORVANE_ORVANE_H_

/// The whole of OrvaneUpid.

#include "orvane/ini.h"
#include "orvane/port_mapping.h"
#include "orvane/port_range.h"

#endif  // ORVANE_ORVANE_H_
