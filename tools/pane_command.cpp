// `cadtools pane`: the docked pane's and the symbol selector's layouts, as
// CDockWndWrapper, CDockDlgWrapper and CSymbol3DSelectorDlg lay them out.
// No managed control is made: the placeholder stands where it would be.
#include "pane_command.h"

#include "errors.h"
#include "help.h"
#include "svg.h"

#include <cadtools/bridge/dock_wrappers.h>
#include <cadtools/bridge/symbol_selector.h>
#include <cadtools/dialog/window.h>

#include <charconv>
#include <optional>
#include <string>
#include <vector>

namespace cadtools::cli {
namespace {

int Size(std::string_view word) {
  int n = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), n);
  if (error != std::errc() || end != word.data() + word.size() || n < 1 || n > 100000) {
    throw UsageError("'" + std::string(word) + "' is not a size in pixels (1 to 100000)", PaneUsage());
  }
  return n;
}

}  // namespace

std::string LayoutText(const CRect& r) {
  return std::to_string(r.left) + "," + std::to_string(r.top) + " " + std::to_string(r.Width()) + "x" +
         std::to_string(r.Height());
}

std::vector<LayoutPart> PaneLayout(int cx, int cy) {
  ui::MemoryWindow bar_window(CRect(0, 0, cx, cy));
  ui::MemoryWindow dialog_window(CRect(0, 0, 1, 1));
  dialog_window.AddItem(CDockDlgWrapper::kPlaceholderId, CRect(0, 0, 1, 1));
  CDockWndWrapper bar;
  bar.SetWindow(&bar_window);
  bar.m_pDlg->SetWindow(&dialog_window);
  bar.OnSize(0, cx, cy);
  const CRect dialog = dialog_window.GetWindowRect();
  bar.m_pDlg->OnSize(0, dialog.Width(), dialog.Height());
  CRect control = dialog_window.GetItemRect(CDockDlgWrapper::kPlaceholderId);
  control.OffsetRect(dialog.left, dialog.top);
  bar.m_pDlg->SetWindow(nullptr);
  return {{"bar", bar_window.GetClientRect(), Role::kGuide},
          {"dialog", dialog, Role::kFirst},
          {"control", control, Role::kAnswer}};
}

std::vector<LayoutPart> SelectorLayout(int cx, int cy) {
  ui::MemoryWindow window(CRect(0, 0, cx, cy));
  window.AddItem(CSymbol3DSelectorDlg::kControlId, CRect());
  window.AddItem(IDOK, CRect(0, 0, 75, 23));
  window.AddItem(IDCANCEL, CRect(0, 0, 75, 23));  // the size both buttons take
  CSymbol3DSelectorDlg dialog;
  dialog.SetWindow(&window);
  dialog.OnSize(0, cx, cy);
  dialog.SetWindow(nullptr);
  return {{"dialog", window.GetClientRect(), Role::kGuide},
          {"control", window.GetItemRect(CSymbol3DSelectorDlg::kControlId), Role::kAnswer},
          {"OK", window.GetItemRect(IDOK), Role::kFirst},
          {"Cancel", window.GetItemRect(IDCANCEL), Role::kSecond}};
}

void RunPane(std::span<const std::string_view> words, std::ostream& out) {
  bool selector = false;
  std::optional<std::string> svg;
  std::vector<int> sizes;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string_view w = words[i];
    if (w == "--help" || w == "-h") {
      out << PaneUsage();
      return;
    }
    if (w == "--selector") {
      selector = true;
    } else if (w == "--svg") {
      if (++i == words.size()) throw UsageError("--svg needs a file", PaneUsage());
      svg = std::string(words[i]);
    } else {
      sizes.push_back(Size(w));
    }
  }
  if (sizes.size() != 2) throw UsageError("give a width and a height", PaneUsage());
  const std::vector<LayoutPart> parts = selector ? SelectorLayout(sizes[0], sizes[1]) : PaneLayout(sizes[0], sizes[1]);
  Scene scene;
  scene.title = selector ? "symbol selector, client " : "docked pane, bar ";
  scene.title += std::to_string(sizes[0]) + "x" + std::to_string(sizes[1]);
  for (const LayoutPart& p : parts) {
    const std::string line = p.name + " " + LayoutText(p.rect);
    out << line << '\n';
    const WRect r(p.rect.left, p.rect.top, p.rect.right, p.rect.bottom);
    scene.shapes.emplace_back(Outline(r, p.role));
    scene.legend.push_back({p.role, line});
  }
  out.flush();
  if (svg) WriteFile(*svg, RenderSvg(scene));
}

}  // namespace cadtools::cli
