// Helpers of the dialog tests: a root of the test's own, a fixed display
// and module where the platform lets us choose them, and the stored
// placement values as raw bytes.
#pragma once

#include <cadtools/dialog/base_dialog.h>
#include <cadtools/dialog/displays.h>
#include <cadtools/dialog/resource_module.h>
#include <cadtools/registry/reg_base.h>

#include <gtest/gtest.h>

#include <string>

#include "values/values_test_util.h"

namespace cadtools::test {

// Little-endian 32-bit fields, as the host reads them.
inline Bytes RectBytes(const RECT& r) {
  Bytes out;
  for (const LONG v : {r.left, r.top, r.right, r.bottom}) {
    const Bytes b = DwordBytes(static_cast<DWORD>(v));
    out.insert(out.end(), b.begin(), b.end());
  }
  return out;
}

// The first resource module is the program on Windows, "Host" elsewhere;
// the second the system's kernel32 on Windows, "Other" elsewhere.
inline void UseModule(bool second) {
#if defined(_WIN32)
  ui::SetResourceModule(second ? ::GetModuleHandleW(L"kernel32.dll") : nullptr);
#else
  ui::SetResourceModuleName(second ? W("Other") : W("Host"));
#endif
}

// The root is a fresh scratch key; off Windows the primary display is
// 1920x1080 and the module "Host".
class DialogPlacement : public ::testing::Test {
 protected:
  void SetUp() override {
    CRegBase::SetRegBase(CString(scratch_.path()) + W("\\"));
#if !defined(_WIN32)
    ui::SetDisplayLayout("0,0,1920,1080");
#endif
    UseModule(false);
  }
  void TearDown() override {
    CRegBase::SetRegBase(CString());
#if defined(_WIN32)
    ui::SetResourceModule(nullptr);
#else
    ui::SetResourceModuleName(CString());
    ui::SetDisplayLayout(nullptr);
#endif
  }

  // A value in "Settings\WindowPos" below the root.
  Stored Value(const CString& name) const {
    return ReadRaw(HKEY_CURRENT_USER, scratch_.Below(W("Settings\\WindowPos")), name.GetString());
  }
  // The value name a dialog's key string ends in.
  static CString ValueName(CBaseDialog& dialog) {
    const CString key = dialog.GetRegKey();
    return key.Mid(key.ReverseFind('\\') + 1);
  }
  void Store(const CString& name, const RECT& r) {
    WriteRaw(HKEY_CURRENT_USER, scratch_.Below(W("Settings\\WindowPos")), name.GetString(), REG_BINARY, RectBytes(r));
  }

  testing::ScratchKey scratch_{"dialog"};
};

}  // namespace cadtools::test
