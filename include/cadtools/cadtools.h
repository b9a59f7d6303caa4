// cadtools: the whole public interface in one include.
//
//   #include <cadtools/cadtools.h>
//
//   WRect r(0, 0, 10, 10);
//   r.GetPtPosToRect(WPt(5, 11), 0, 0);        // WRect::Bottom
//   double x, y;
//   CMathTools::ll_Intersection(0, 0, 2, 0, 1, -1, 1, 1, &x, &y, 0, 0);  // 2, (1, 0)
#pragma once

// Framework value types.
#include <cadtools/compat/win_types.h>
#include <cadtools/compat/exceptions.h>
#include <cadtools/compat/point_size_rect.h>
#include <cadtools/compat/carray.h>
#include <cadtools/compat/wide_ctype.h>
#include <cadtools/compat/cstring.h>
#include <cadtools/compat/cstring_array.h>
#include <cadtools/compat/cbyte_array.h>
#include <cadtools/compat/position.h>
#include <cadtools/compat/cmap.h>
#include <cadtools/compat/coblist.h>
#include <cadtools/compat/cstring_a.h>
#include <cadtools/compat/logfont.h>

// Plane geometry, numbers and units, text tools.
#include <cadtools/geometry/wpt.h>
#include <cadtools/geometry/wrect.h>
#include <cadtools/math_tools.h>
#include <cadtools/text_tools.h>
#include <cadtools/text/host_strings.h>

// Registry-backed settings, and .reg files.
#include <cadtools/registry/application_name.h>
#include <cadtools/registry/reg_base.h>
#include <cadtools/registry/reg_file.h>
#include <cadtools/registry/reg_values.h>

// Dialog placement.
#include <cadtools/dialog/window.h>
#include <cadtools/dialog/hwnd_window.h>
#include <cadtools/dialog/displays.h>
#include <cadtools/dialog/resource_module.h>
#include <cadtools/dialog/button_st.h>
#include <cadtools/dialog/wnd.h>
#include <cadtools/dialog/bcgp_dialog.h>
#include <cadtools/dialog/dialog_framework.h>
#include <cadtools/dialog/base_dialog.h>

// The managed bridge.
#include <cadtools/dialog/wait_cursor.h>
#include <cadtools/bridge/runtime.h>
#include <cadtools/bridge/managed_exception.h>
#include <cadtools/bridge/gcroot.h>
#include <cadtools/bridge/dotnet_utils.h>
#include <cadtools/bridge/host_types.h>
#include <cadtools/bridge/type_explorer.h>
#include <cadtools/bridge/type_editor.h>
#include <cadtools/bridge/com_objects.h>
#include <cadtools/bridge/winforms_control.h>
#include <cadtools/bridge/docking_bar.h>
#include <cadtools/bridge/dock_wrappers.h>
#include <cadtools/bridge/symbol_selector.h>

// Library version.
#include <cadtools/version.h>
