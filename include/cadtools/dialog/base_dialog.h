// CBaseDialog: a dialog that remembers where it was shown.
//
// Per dialog resource, primary-display resolution and resource module the
// dialog keeps its last normal window rectangle and whether it was closed
// maximised, in two 16-byte REG_BINARY values (left, top, right, bottom as
// 32-bit signed) below the registry root (reg_base.h), in
// "Settings\WindowPos":
//
//   IDD1301920x1080Host            the placement
//   IDD1301920x1080HostMaximized   (-1, -1, -1, -1) closed maximised, else zeros
//
// for dialog 130 on a 1920x1080 primary display with resources from module
// Host. Number, width, height and module run together without separators:
// that is how the host's users' placements are stored, so it stays.
//
// The host's window glue calls the handlers; a derived dialog restores
// itself after initialisation:
//
//   class CPartsDlg : public CBaseDialog {
//    public:
//     CPartsDlg(cadtools::ui::Window* w) : CBaseDialog(130, w) {}
//     BOOL OnInitDialog() override {
//       CBaseDialog::OnInitDialog();
//       RestorePos();
//       if (m_bMaximized) ShowMaximized();  // the derived dialog's business
//       return TRUE;
//     }
//   };
//
// Every operation opens its registry values afresh; each value reads when
// opened and writes its rectangle back when closed, so an operation also
// rewrites (or first creates) the values it looked at. Registry failures
// are silent: a placement that cannot be read is (0, 0, 0, 0), "none".
// A rectangle without area counts as no placement.
#pragma once

#include <cadtools/compat/carray.h>
#include <cadtools/compat/cstring.h>
#include <cadtools/compat/point_size_rect.h>
#include <cadtools/compat/win_types.h>
#include <cadtools/dialog/bcgp_dialog.h>
#include <cadtools/dialog/button_st.h>
#include <cadtools/dialog/window.h>
#include <cadtools/export.h>

class CADTOOLS_API CBaseDialog : public CBCGPDialog {
 public:
  // window may come later through SetWindow, or from the dialog framework
  // when the dialog is created or run; until there is one, the operations
  // that need it (RestorePos, SavePos, the modal-state pair) do nothing.
  explicit CBaseDialog(UINT nIDTemplate, cadtools::ui::Window* window = nullptr, CWnd* pParentWnd = nullptr);
  CBaseDialog(const CBaseDialog&) = delete;
  CBaseDialog& operator=(const CBaseDialog&) = delete;
  // Deletes buttons still registered, for a dialog whose window was never
  // destroyed.
  ~CBaseDialog() override;

  // While a modal window is over this one: disables, then enables again,
  // the dialog's own window.
  virtual void BeginModalState();
  virtual void EndModalState();

  // Validates the stored placement and reads the maximised state:
  //  - a saved placement that touches no present display (saved while
  //    minimised, at (-32000, -32000, ...), or on a display since removed)
  //    is reset to (0, 0, 0, 0), and its maximised marker with it;
  //  - m_bMaximized becomes 1 when the marker is (-1, -1, -1, -1).
  // Both values exist afterwards, (0, 0, 0, 0) on a first opening.
  // CBCGPDialog's start-up (the data exchange) runs first. Returns TRUE.
  BOOL OnInitDialog() override;

  // The placement value's key string below the root:
  // "Settings\WindowPos\IDD<m_nIDTemplate><width>x<height><module>".
  // Dialogs that need a placement of their own under another name override
  // it; the marker is always this text followed by "Maximized".
  virtual CString GetRegKey();

  // The saved placement (0, 0, 0, 0 when there is none); TRUE when it has
  // an area.
  BOOL GetDialogRect(CRect& rect);

  // Moves the window to the saved placement. A resizable window takes the
  // saved size too; a fixed frame keeps its own size and only moves. No
  // saved placement: the window stays where it is. The maximised state is
  // not applied here.
  void RestorePos();

  // Stores the marker: (-1, -1, -1, -1) when the window is maximised, else
  // zeros. Stores the window rectangle only when it is not maximised, so
  // that a dialog un-maximised next time comes back to its last normal
  // place.
  void SavePos();

  // Deletes "Settings\WindowPos" with every dialog's placement and marker,
  // then writes this dialog's placement, as it was read, back into a new
  // key: this dialog keeps its place and loses its marker, every other
  // dialog loses both. Hosts rely on this to reset all other dialogs from
  // the one that offers the command.
  void ClearAllSavedPosition();

  // When the window goes: SavePos, CBCGPDialog's handling, then deletes
  // every registered button and empties m_arrButtons.
  void OnDestroy() override;

  // The size handler: CBCGPDialog's first. Restored and other
  // non-minimised, non-maximised sizes also go to DefaultSizeHandling.
  void OnSize(UINT nType, int cx, int cy) override;

  // Whether the visual-manager look was requested (OnInitDialog does so
  // while m_bVisualManagerStyle is non-zero).
  bool IsVisualManagerStyleEnabled() const noexcept { return m_bVisualManagerStyleEnabled; }

  // Non-zero: OnInitDialog asks for the visual-manager look. 1 initially.
  int m_bVisualManagerStyle;
  // 1 when the dialog was closed maximised last time; derived dialogs
  // maximise themselves on it. Set by OnInitDialog, never read here.
  int m_bMaximized;
  UINT m_nIDTemplate;
  // Buttons owned by the dialog, deleted by OnDestroy. Null entries are
  // allowed and skipped.
  CArray<CButtonST*, CButtonST*> m_arrButtons;

 protected:
  // Records the request for the visual-manager look. The host's glue
  // overrides it to theme the window and its controls.
  virtual void EnableVisualManagerStyle(BOOL bEnable, BOOL bNCArea);
  // The window's own handling of a size change. Does nothing here: without
  // a framework underneath there is no default handling to pass it to; the
  // host's glue overrides it when it has one.
  virtual void DefaultSizeHandling(UINT nType, int cx, int cy);

 private:
  // The resource module's base name (resource_module.h).
  CString GetCurrentModuleName();
  void DeleteButtons() noexcept;

  bool m_bVisualManagerStyleEnabled = false;
};
