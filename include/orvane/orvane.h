#ifndef ORVANE_ORVANE_H_
#define ORVANE_ORVANE_H_

/// The whole of OrvaneUpid.

#include "orvane/app_info.h"
#include "orvane/app_info_array.h"
#include "orvane/app_mapping.h"
#include "orvane/application.h"
#include "orvane/collisions.h"
#include "orvane/comparison.h"
#include "orvane/findings.h"
#include "orvane/ini.h"
#include "orvane/port_counter.h"
#include "orvane/port_mapping.h"
#include "orvane/port_range.h"
#include "orvane/sorted_vector.h"
#include "orvane/upid_array.h"
#include "orvane/upid_node.h"
#include "orvane/upid_tree.h"

#endif  // ORVANE_ORVANE_H_
