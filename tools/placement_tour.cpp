// The tour's steps through a dialog's stored placement.
#include "placement.h"
#include "settings.h"

#include <cadtools/dialog/base_dialog.h>
#include <cadtools/dialog/window.h>

#include <string>

namespace cadtools::cli {
namespace {

std::string Corners(const RECT& r) {
  return "(" + std::to_string(r.left) + ", " + std::to_string(r.top) + ", " + std::to_string(r.right) + ", " +
         std::to_string(r.bottom) + ")";
}

// What `placement list` says about the dialog's value, or its marker.
std::string Stored(CBaseDialog& dialog, bool marker) {
  const CString key = dialog.GetRegKey() + (marker ? CString(CADTOOLS_WIDE("Maximized")) : CString());
  const SettingsLocation at = ResolveSettingsKey(ToUtf8(key), SettingsRoot(), true);
  const TypedValue value = ReadSetting(at);
  const std::string text = DescribePlacement(at.name, value.type, value.data);
  return text.substr(text.find(": ") + 2);
}

}  // namespace

void PlacementWalk(Tour& t) {
  ui::MemoryWindow window(CRect(100, 80, 740, 560));
  CBaseDialog dialog(130, &window);
  t.Step("CBaseDialog(130).GetRegKey()", Quoted(dialog.GetRegKey()), "number, display and module run together");
  dialog.OnInitDialog();
  t.Step("first OnInitDialog()", Stored(dialog, false) + ", " + Stored(dialog, true), "both values created");

  window.MoveWindow(200, 150, 800, 600, TRUE);
  dialog.OnDestroy();
  t.Step("closed at (200, 150, 1000, 750)", Stored(dialog, false));
  window.MoveWindow(-8, -8, 1936, 1096, TRUE);
  window.SetZoomed(true);
  dialog.OnDestroy();
  t.Step("closed maximised", Stored(dialog, true) + ", placement " + Stored(dialog, false),
         "the last normal place is kept");

  ui::MemoryWindow fixed(CRect(0, 0, 300, 200), false);
  CBaseDialog reopened(130, &fixed);
  reopened.OnInitDialog();
  reopened.RestorePos();
  t.Step("reopened, fixed frame: RestorePos()", Corners(fixed.GetWindowRect()) + ", m_bMaximized " +
         std::to_string(reopened.m_bMaximized), "a fixed frame only moves");

  fixed.SetWindowRect(CRect(-32000, -32000, -31840, -31972));
  reopened.OnDestroy();
  CBaseDialog(130, &fixed).OnInitDialog();
  t.Step("closed minimised, reopened", Stored(dialog, false) + ", " + Stored(dialog, true),
         "a place on no display is forgotten");

  fixed.SetWindowRect(CRect(10, 10, 310, 210));
  CBaseDialog(131, &fixed).OnDestroy();
  window.SetZoomed(false);
  window.MoveWindow(200, 150, 800, 600, TRUE);
  dialog.SavePos();
  dialog.ClearAllSavedPosition();
  CRect other;
  t.Step("ClearAllSavedPosition() from dialog 130",
         "130 " + Stored(dialog, false) + ", 131 " + (CBaseDialog(131).GetDialogRect(other) ? "kept" : "gone"),
         "only the caller keeps its place");
}

}  // namespace cadtools::cli
