// CBCGPDialog: the host's themed dialog class, as far as the library's
// dialogs build on it. Its window comes from the dialog framework
// (dialog_framework.h), which calls the handlers as the window's messages
// arrive:
//
//   class CPaneDlg : public CBCGPDialog {
//    public:
//     CPaneDlg() : CBCGPDialog(2218) {}
//     void OnSize(UINT nType, int cx, int cy) override { ... }
//   };
//   CPaneDlg pane;
//   pane.Create(2218, &bar);   // a child window of the bar, from template 2218
//   CPaneDlg modal;
//   modal.DoModal();           // IDOK, IDCANCEL, or -1 when no window could be made
//
// OnOK and OnCancel end the dialog with IDOK and IDCANCEL: a modal dialog
// returns, a modeless one hides, as Windows ends dialogs.
#pragma once

#include <cadtools/compat/win_types.h>
#include <cadtools/dialog/wnd.h>
#include <cadtools/export.h>

namespace cadtools::ui {
class DialogFramework;
}

class CADTOOLS_API CBCGPDialog : public CWnd {
 public:
  explicit CBCGPDialog(UINT nIDTemplate, CWnd* pParentWnd = nullptr) noexcept;

  UINT GetTemplateId() const noexcept { return m_nTemplateId; }
  CWnd* GetParentWnd() const noexcept { return m_pParentWnd; }

  // Makes the window from template nIDTemplate, a child of pParentWnd's
  // window (top level without one), and runs OnInitDialog. FALSE when no
  // window could be made.
  virtual BOOL Create(UINT nIDTemplate, CWnd* pParentWnd = nullptr);
  // Runs the dialog modally: what EndDialog was given, or -1 when no
  // window could be made.
  virtual INT_PTR DoModal();
  // Ends the dialog with nResult: a modal one returns it from DoModal, a
  // modeless one is hidden.
  void EndDialog(int nResult);
  bool IsEnded() const noexcept { return m_bEnded; }
  int GetResult() const noexcept { return m_nResult; }
  bool IsModal() const noexcept { return m_bModal; }

  // Destroys the dialog's own window (OnDestroy runs); a window the host
  // attached is only let go of.
  BOOL DestroyWindow() override;

  // Fills the controls (FALSE) or reads them back (TRUE) through
  // DoDataExchange.
  BOOL UpdateData(BOOL bSaveAndValidate = TRUE);

  // The handlers. The framework's own handling, which these stand for,
  // belongs to the host: here they do what the library's dialogs rely on.
  virtual void DoDataExchange(CDataExchange* pDX);
  // UpdateData(FALSE); TRUE.
  virtual BOOL OnInitDialog();
  virtual void OnOK();
  virtual void OnCancel();
  virtual void OnSize(UINT nType, int cx, int cy);
  virtual void OnGetMinMaxInfo(MINMAXINFO* lpMMI);
  virtual void OnDestroy();

 private:
  friend class CBCGPDialogAccess;
  cadtools::ui::DialogFramework* m_pFramework = nullptr;
  UINT m_nTemplateId;
  CWnd* m_pParentWnd;
  bool m_bModal = false;
  bool m_bEnded = false;
  int m_nResult = 0;
};

// For dialog frameworks: the state they keep in the dialog.
class CADTOOLS_API CBCGPDialogAccess {
 public:
  // A run begins: made by framework, modal or not, not ended.
  static void BeginRun(CBCGPDialog& dialog, cadtools::ui::DialogFramework& framework, bool modal) noexcept;
  static void MarkEnded(CBCGPDialog& dialog, int result) noexcept;
};
