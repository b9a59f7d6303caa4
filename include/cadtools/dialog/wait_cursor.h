// The wait cursor, shown while the host waits for something slow (a
// managed dialog loading its catalogues).
//
//   {
//     CWaitCursor wait;   // the wait cursor from here...
//     LoadCatalogues();
//   }                     // ...to here, also when LoadCatalogues throws
//
// On Windows the cursor is the system's: IDC_WAIT while at least one
// CWaitCursor lives, then the cursor that was there before. Elsewhere the
// default does nothing; the host installs its own with SetWaitCursor:
//
//   class HostCursor : public cadtools::ui::WaitCursor { ... };
//   HostCursor mine;
//   cadtools::ui::SetWaitCursor(&mine);    // nullptr puts the default back
#pragma once

#include <cadtools/export.h>

namespace cadtools::ui {

class CADTOOLS_API WaitCursor {
 public:
  WaitCursor() = default;
  WaitCursor(const WaitCursor&) = delete;
  WaitCursor& operator=(const WaitCursor&) = delete;
  virtual ~WaitCursor() = default;

  // Shows the wait cursor.
  virtual void Begin() = 0;
  // Puts back what Begin replaced; called once per Begin, in reverse order.
  virtual void End() noexcept = 0;
};

// The cursor CWaitCursor uses.
CADTOOLS_API WaitCursor& CurrentWaitCursor() noexcept;
// Installs the host's cursor (nullptr: the default); returns the one before.
CADTOOLS_API WaitCursor* SetWaitCursor(WaitCursor* cursor) noexcept;

}  // namespace cadtools::ui

// The wait cursor for the lifetime of the object, as the framework's.
class CADTOOLS_API CWaitCursor {
 public:
  CWaitCursor();
  CWaitCursor(const CWaitCursor&) = delete;
  CWaitCursor& operator=(const CWaitCursor&) = delete;
  ~CWaitCursor();

  // Shows the wait cursor again after something (a dialog) replaced it.
  void Restore();

 private:
  cadtools::ui::WaitCursor& m_cursor;
};
