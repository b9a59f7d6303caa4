// CButtonST: the owner-drawn button that dialogs register with their base
// dialog, which deletes it when the window goes (see base_dialog.h).
//
// Only its lifetime matters here; the drawing lives in the host's glue,
// which derives from it. Deleted through the base, so the destructor is
// virtual.
#pragma once

#include <cadtools/export.h>

class CADTOOLS_API CButtonST {
 public:
  CButtonST() = default;
  CButtonST(const CButtonST&) = delete;
  CButtonST& operator=(const CButtonST&) = delete;
  virtual ~CButtonST() = default;
};
