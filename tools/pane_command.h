// `cadtools pane`: where the bridge's windows put their parts, computed by
// the library's own layout code on in-memory windows.
//
//   cadtools pane 300 200               # a docked pane's dialog and control in a 300x200 bar
//   cadtools pane --selector 600 400    # the symbol selector's control and buttons
//   cadtools pane 300 200 --svg pane.svg
#pragma once

#include "scene.h"

#include <cadtools/compat/point_size_rect.h>

#include <ostream>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cadtools::cli {

void RunPane(std::span<const std::string_view> words, std::ostream& out);

// One part of a layout, in the outer window's client coordinates.
struct LayoutPart {
  std::string name;
  CRect rect;
  Role role;
};
// A docked pane in a bar of cx by cy: the bar, its dialog, the control.
std::vector<LayoutPart> PaneLayout(int cx, int cy);
// The symbol selector in a client area of cx by cy with 75x23 buttons.
std::vector<LayoutPart> SelectorLayout(int cx, int cy);
// "x,y WxH".
std::string LayoutText(const CRect& r);

}  // namespace cadtools::cli
