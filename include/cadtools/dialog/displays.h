// The displays a dialog can be placed on.
//
//   cadtools::ui::PrimaryDisplaySize();                       // (1920, 1080)
//   cadtools::ui::AnyDisplayIntersects(CRect(-32000, -32000, -31840, -31972));  // false
//
// On Windows these ask the system: the desktop window's size, and
// MonitorFromRect told to return no default monitor. Elsewhere they read a
// display layout: one 1920x1080 primary display at (0, 0) unless
// CADTOOLS_DISPLAYS lists others as "x,y,w,h;x,y,w,h" (the first one is the
// primary display). Text that does not parse as such a list, or that holds
// a display without area, gives the default layout: a stray setting must
// never leave the host without a screen.
#pragma once

#include <cadtools/compat/point_size_rect.h>
#include <cadtools/compat/win_types.h>
#include <cadtools/export.h>

namespace cadtools::ui {

// The width and height of the primary display in pixels.
CADTOOLS_API CSize PrimaryDisplaySize();

// True when rect shares at least one pixel with a present display. A
// rectangle without area touches none.
CADTOOLS_API bool AnyDisplayIntersects(const RECT& rect);

#if !defined(_WIN32)
// Replaces the layout with one in CADTOOLS_DISPLAYS's form; nullptr goes
// back to reading CADTOOLS_DISPLAYS on every call.
CADTOOLS_API void SetDisplayLayout(const char* layout);
#endif

}  // namespace cadtools::ui
