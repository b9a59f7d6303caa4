// Shared by the bridge tests: the runtime with the stand-ins loaded, or a
// skip that says why there is none.
#pragma once

#include <cadtools/bridge/managed_exception.h>
#include <cadtools/bridge/runtime.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

// A UTF-16 literal on every target.
#define W(s) CADTOOLS_WIDE(s)

namespace cadtools::bridge::testing {

// The demonstration symbol database.
inline CString SymbolDatabase() { return FromUtf8(CADTOOLS_TEST_SYMBOLS); }

// Path of an assembly built for the tests.
inline CString TestAssembly(const char* file) {
  return FromUtf8(std::string(CADTOOLS_TEST_ASSEMBLY_DIR) + "/" + file);
}

// Starts the runtime and loads the test assemblies once; false, with the
// reason, when no runtime can start.
inline bool RuntimeReady(std::string* why) {
  static const std::string failure = [] {
    CString reason;
    if (!Runtime::Available(&reason)) {
      return "no managed runtime: " + ToUtf8(reason);
    }
    Runtime& rt = Runtime::Get();
    for (const char* file : {"CadTools.StandIns.dll", "OrvDatabaseControls.dll", "Orv.API.Manager.dll",
                             "OrvCADBaseModel.dll", "Orv3DEditor.dll", "CADInterface.dll", "BridgeProbe.dll"}) {
      rt.LoadAssembly(TestAssembly(file).View());
    }
    return std::string();
  }();
  *why = failure;
  return failure.empty();
}

// A test fixture whose tests skip, saying why, when no runtime runs.
class RuntimeTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string why;
    if (!RuntimeReady(&why)) GTEST_SKIP() << why;
  }
  Runtime& rt() { return Runtime::Get(); }
};

// Runs f, which should throw CManagedException*; returns its type name and
// message, or "(nothing thrown)".
template <class F>
std::pair<CString, CString> ManagedFailure(F&& f) {
  try {
    f();
  } catch (CManagedException* e) {
    std::pair<CString, CString> what(e->TypeName(), e->Text());
    e->Delete();
    return what;
  }
  return {CString(W("(nothing thrown)")), CString()};
}

// The stand-ins' call log, and a fresh start for it.
inline std::vector<CString> CallLog() {
  std::vector<CString> lines;
  for (const Value& v : Runtime::Get().CallStatic(W("CadTools.StandIns.Script"), W("Log")).AsObject().Items()) {
    lines.push_back(v.AsString());
  }
  return lines;
}
inline void ResetScript() { Runtime::Get().CallStatic(W("CadTools.StandIns.Script"), W("Reset")); }
inline void ScriptReturns(const WCHAR* member, Arg value) {
  Runtime::Get().CallStatic(W("CadTools.StandIns.Script"), W("Returns"), {member, value});
}
inline void ScriptThrows(const WCHAR* member, const WCHAR* type, const WCHAR* message) {
  Runtime::Get().CallStatic(W("CadTools.StandIns.Script"), W("Throws"), {member, type, message});
}

}  // namespace cadtools::bridge::testing
