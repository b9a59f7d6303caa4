// CBCGPDockingControlBar: the host's docking bar, as far as the pane host
// builds on it, and the docking framework underneath.
//
// What the framework does with a bar (where it keeps the bar's state, how
// it shows the bar, how the frame lays its bars out, the bar's context
// menu) is the host's: it installs its own DockingFramework. The default
// keeps a bar's state in the registry below the root (reg_base.h), in the
// key "<profile>DockingBar-<index>" with the values Visible (REG_DWORD 0 or
// 1), Rect (the bar's window rectangle, 16 bytes as CRegRect stores it) and
// Id (the bar's id), so that the command line and tests can see it:
//
//   bar.SaveState(u"WorkspaceTree-", 2221, 7);   // Settings of "WorkspaceTree-DockingBar-2221"
//   bar.LoadState(u"WorkspaceTree-", 2221, 7);   // TRUE, the bar shown or hidden as it was
#pragma once

#include <cadtools/compat/cstring.h>
#include <cadtools/compat/point_size_rect.h>
#include <cadtools/compat/win_types.h>
#include <cadtools/dialog/wnd.h>
#include <cadtools/export.h>

class CBCGPDockingControlBar;

namespace cadtools::ui {

class CADTOOLS_API DockingFramework {
 public:
  DockingFramework() = default;
  DockingFramework(const DockingFramework&) = delete;
  DockingFramework& operator=(const DockingFramework&) = delete;
  virtual ~DockingFramework() = default;

  // The bar's WM_CREATE: 0, or -1 when the bar cannot be made.
  virtual int CreateBar(CBCGPDockingControlBar& bar) = 0;
  virtual BOOL LoadState(CBCGPDockingControlBar& bar, const CString& profile, int index, UINT id) = 0;
  virtual BOOL SaveState(CBCGPDockingControlBar& bar, const CString& profile, int index, UINT id) = 0;
  virtual void ShowBar(CBCGPDockingControlBar& bar, BOOL show, BOOL delay, BOOL activate) = 0;
  virtual void RecalcLayout(CBCGPDockingControlBar& bar) = 0;
  virtual void ShowContextMenu(CBCGPDockingControlBar& bar, CPoint point) = 0;
};

// The default: state in the registry, the bar's window shown and hidden,
// no layout of its own to recalculate, no menu.
class CADTOOLS_API RegistryDockingFramework : public DockingFramework {
 public:
  int CreateBar(CBCGPDockingControlBar& bar) override;
  // FALSE, with nothing changed, when no state was stored.
  BOOL LoadState(CBCGPDockingControlBar& bar, const CString& profile, int index, UINT id) override;
  BOOL SaveState(CBCGPDockingControlBar& bar, const CString& profile, int index, UINT id) override;
  void ShowBar(CBCGPDockingControlBar& bar, BOOL show, BOOL delay, BOOL activate) override;
  void RecalcLayout(CBCGPDockingControlBar& bar) override;
  void ShowContextMenu(CBCGPDockingControlBar& bar, CPoint point) override;

  // The key string of a bar's state below the root.
  static CString StateKey(const CString& profile, int index);
};

// The framework in use; SetDockingFramework(nullptr) restores the default
// and returns the one before.
CADTOOLS_API DockingFramework& CurrentDockingFramework();
CADTOOLS_API DockingFramework* SetDockingFramework(DockingFramework* framework) noexcept;

}  // namespace cadtools::ui

class CADTOOLS_API CBCGPDockingControlBar : public CWnd {
 public:
  CBCGPDockingControlBar() = default;

  // The bar's handlers and operations: each goes to the docking framework.
  virtual int OnCreate(LPCREATESTRUCTW lpCreateStruct);
  virtual void OnSize(UINT nType, int cx, int cy);
  virtual void OnSetFocus(CWnd* pOldWnd);
  virtual void OnContextMenu(CWnd* pWnd, CPoint point);
  virtual void ShowControlBar(BOOL bShow, BOOL bDelay, BOOL bActivate);
  virtual BOOL LoadState(LPCWSTR lpszProfileName = nullptr, int nIndex = -1, UINT uiID = static_cast<UINT>(-1));
  virtual BOOL SaveState(LPCWSTR lpszProfileName = nullptr, int nIndex = -1, UINT uiID = static_cast<UINT>(-1));

  // Shown on screen.
  BOOL IsVisible() const;
  // The frame lays its bars out again.
  void RecalcLayout();
};
