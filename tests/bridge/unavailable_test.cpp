// Where no managed runtime can start (Windows without .NET, as wine here; a
// Linux machine without Mono, played by naming a library that does not
// exist): every way into the bridge says so with the framework's exception,
// and nothing is left half done.
#include "bridge_test_util.h"

#include <cadtools/bridge/dotnet_utils.h>
#include <cadtools/bridge/type_editor.h>
#include <cadtools/bridge/type_explorer.h>
#include <cadtools/dialog/wait_cursor.h>

#include <functional>

namespace cadtools::bridge::testing {
namespace {

// The reason given, or "" when f threw nothing or something else.
CString Unavailable(const std::function<void()>& f) {
  try {
    f();
  } catch (CException* e) {
    CString reason;
    if (auto* u = dynamic_cast<CRuntimeUnavailableException*>(e)) reason = u->Reason();
    // The host may catch it as the framework's not-supported exception.
    EXPECT_NE(dynamic_cast<CNotSupportedException*>(e), nullptr);
    e->Delete();
    return reason;
  }
  return CString();
}

class Counting final : public ui::WaitCursor {
 public:
  void Begin() override { ++depth; }
  void End() noexcept override { --depth; }
  int depth = 0;
};

TEST(NoRuntime, EveryEntryReportsWhy) {
  CString why;
  ASSERT_FALSE(Runtime::Available(&why)) << "this program runs where no runtime can start";
#if defined(_WIN32)
  EXPECT_NE(why.Find(W(".NET")), -1);
#else
  EXPECT_NE(why.Find(W("Mono is not installed")), -1);
#endif
  const std::function<void()> entries[] = {
      [] { Runtime::Get(); },
      [] { CDotNetUtils::CString2DotNetString(W("x")); },
      [] { gcroot<System::String> root; },
      [] { CDotNetTypeEditorWrapper().ShowDialog(W("Db"), W(""), W(""), W(""), W(""), 7, W("de-DE"), nullptr, nullptr); },
  };
  for (const auto& entry : entries) EXPECT_EQ(Unavailable(entry), why);  // the same reason every time

  Counting cursor;
  ui::WaitCursor* before = ui::SetWaitCursor(&cursor);
  CDotNetTypeExplorerWrapper browser;
  EXPECT_EQ(browser.GetSelectedAsString(), CString());  // nothing to ask yet
  EXPECT_EQ(Unavailable([&] {
              browser.ShowDialog(W("Db"), W(""), W(""), W(""), W(""), 7, W("de-DE"), W(""), 0, 0, nullptr);
            }),
            why);
  EXPECT_EQ(cursor.depth, 0);
  EXPECT_EQ(browser.GetSelectedAsString(), CString());
  ui::SetWaitCursor(before);
  // A null string needs no runtime.
  EXPECT_EQ(CDotNetUtils::DotNetString2CString(nullptr), CString());
}

}  // namespace
}  // namespace cadtools::bridge::testing
