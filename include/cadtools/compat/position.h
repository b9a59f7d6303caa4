// POSITION: the opaque iteration handle of the framework's lists and maps
// (CObList, CMap).
//
//   POSITION pos = list.GetHeadPosition();   // nullptr when the list is empty
//   while (pos != nullptr) use(list.GetNext(pos));
//
// A map's GetStartPosition() returns BEFORE_START_POSITION for a non-empty
// map; host code compares against it, so the value is the framework's.
#pragma once

#include <cadtools/compat/win_types.h>

struct __POSITION {};
using POSITION = __POSITION*;

#define BEFORE_START_POSITION (reinterpret_cast<POSITION>(static_cast<INT_PTR>(-1)))
