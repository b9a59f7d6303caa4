// CBCGPDockingControlBar and the default docking framework.
#include <cadtools/bridge/docking_bar.h>
#include <cadtools/registry/reg_base.h>
#include <cadtools/registry/reg_values.h>

#include <atomic>

namespace cadtools::ui {

namespace {

std::atomic<DockingFramework*>& Installed() noexcept {
  static std::atomic<DockingFramework*> installed{nullptr};
  return installed;
}

CString Value(const CString& key, const WCHAR* name) { return key + CADTOOLS_WIDE("\\") + name; }

}  // namespace

DockingFramework& CurrentDockingFramework() {
  static RegistryDockingFramework fallback;
  DockingFramework* f = Installed().load();
  return f != nullptr ? *f : fallback;
}

DockingFramework* SetDockingFramework(DockingFramework* framework) noexcept {
  return Installed().exchange(framework);
}

CString RegistryDockingFramework::StateKey(const CString& profile, int index) {
  CString key;
  key.Format(CADTOOLS_WIDE("%sDockingBar-%d"), profile.GetString(), index);
  return key;
}

int RegistryDockingFramework::CreateBar(CBCGPDockingControlBar&) { return 0; }

BOOL RegistryDockingFramework::LoadState(CBCGPDockingControlBar& bar, const CString& profile, int index, UINT) {
  const CString key = StateKey(profile, index);
  {
    // Reading a typed value would create it: look first.
    CRegEnumerator state(key);
    CString name;
    DWORD type = 0;
    DWORD size = 0;
    if (!state.EnumerateValues(0, name, type, nullptr, &size)) return FALSE;
  }
  const DWORD visible = CRegDWORD(Value(key, CADTOOLS_WIDE("Visible")), 1);
  const CRect rect = CRegRect(Value(key, CADTOOLS_WIDE("Rect")), CRect());
  if (Window* w = bar.GetWindow()) {
    if (!rect.IsRectEmpty()) w->MoveWindow(rect.left, rect.top, rect.Width(), rect.Height(), TRUE);
    w->Show(visible != 0);
  }
  return TRUE;
}

BOOL RegistryDockingFramework::SaveState(CBCGPDockingControlBar& bar, const CString& profile, int index, UINT id) {
  const CString key = StateKey(profile, index);
  CRegDWORD(Value(key, CADTOOLS_WIDE("Visible")), 0) = bar.IsVisible() ? 1U : 0U;
  if (const Window* w = bar.GetWindow()) CRegRect(Value(key, CADTOOLS_WIDE("Rect")), CRect()) = w->GetWindowRect();
  CRegDWORD(Value(key, CADTOOLS_WIDE("Id")), 0) = id;
  return TRUE;
}

void RegistryDockingFramework::ShowBar(CBCGPDockingControlBar& bar, BOOL show, BOOL, BOOL) {
  if (Window* w = bar.GetWindow()) w->Show(show != FALSE);
}

void RegistryDockingFramework::RecalcLayout(CBCGPDockingControlBar&) {}

void RegistryDockingFramework::ShowContextMenu(CBCGPDockingControlBar&, CPoint) {}

}  // namespace cadtools::ui

using cadtools::ui::CurrentDockingFramework;

int CBCGPDockingControlBar::OnCreate(LPCREATESTRUCTW) { return CurrentDockingFramework().CreateBar(*this); }

void CBCGPDockingControlBar::OnSize(UINT, int, int) {}

void CBCGPDockingControlBar::OnSetFocus(CWnd*) {}

void CBCGPDockingControlBar::OnContextMenu(CWnd*, CPoint point) {
  CurrentDockingFramework().ShowContextMenu(*this, point);
}

void CBCGPDockingControlBar::ShowControlBar(BOOL bShow, BOOL bDelay, BOOL bActivate) {
  CurrentDockingFramework().ShowBar(*this, bShow, bDelay, bActivate);
}

BOOL CBCGPDockingControlBar::LoadState(LPCWSTR lpszProfileName, int nIndex, UINT uiID) {
  return CurrentDockingFramework().LoadState(*this, CString(lpszProfileName), nIndex, uiID);
}

BOOL CBCGPDockingControlBar::SaveState(LPCWSTR lpszProfileName, int nIndex, UINT uiID) {
  return CurrentDockingFramework().SaveState(*this, CString(lpszProfileName), nIndex, uiID);
}

BOOL CBCGPDockingControlBar::IsVisible() const { return IsWindowVisible(); }

void CBCGPDockingControlBar::RecalcLayout() { CurrentDockingFramework().RecalcLayout(*this); }
