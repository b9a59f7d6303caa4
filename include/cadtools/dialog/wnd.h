// CWnd: a window object of the host's framework, as the library's dialogs
// and bars see it: the Window it works on (window.h), once it has one.
//
//   CWnd bar;
//   bar.GetWindow();            // nullptr: no window yet
//   bar.SetWindow(&window);     // the host's glue, or the dialog framework
//   bar.SetFocus();             // the window takes the keyboard focus
//
// The object does not own the window unless it adopted it (AdoptWindow):
// a dialog's own window, made from its template, goes with it.
#pragma once

#include <cadtools/compat/win_types.h>
#include <cadtools/dialog/window.h>
#include <cadtools/export.h>

#include <memory>

class CADTOOLS_API CWnd {
 public:
  CWnd() = default;
  CWnd(const CWnd&) = delete;
  CWnd& operator=(const CWnd&) = delete;
  virtual ~CWnd();

  void SetWindow(cadtools::ui::Window* window) noexcept { m_pWindow = window; }
  cadtools::ui::Window* GetWindow() const noexcept { return m_pWindow; }
  // Takes ownership of a window made for this object.
  void AdoptWindow(std::unique_ptr<cadtools::ui::Window> window) noexcept;
  // Lets go of the window, destroying it when owned.
  virtual BOOL DestroyWindow();

  // Do nothing without a window.
  void SetFocus();
  BOOL IsWindowVisible() const;

 protected:
  cadtools::ui::Window* m_pWindow = nullptr;

 private:
  std::unique_ptr<cadtools::ui::Window> m_ownedWindow;
};

// The exchange of data between a dialog's controls and its members, passed
// to DoDataExchange; m_bSaveAndValidate is FALSE when controls are filled.
class CADTOOLS_API CDataExchange {
 public:
  CDataExchange(CWnd* pDlgWnd, BOOL bSaveAndValidate) noexcept
      : m_bSaveAndValidate(bSaveAndValidate), m_pDlgWnd(pDlgWnd) {}

  BOOL m_bSaveAndValidate;
  CWnd* m_pDlgWnd;
};
