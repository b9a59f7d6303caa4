// The native pieces of the bridge that need no runtime: arguments, values,
// the exception, the wait cursor and where the assembly is looked for.
#include "bridge_test_util.h"

#include <cadtools/dialog/wait_cursor.h>

#include "bridge/bridge_assembly.h"

#include <filesystem>
#include <string>
#include <vector>

namespace cadtools::bridge::testing {
namespace {

TEST(Arguments, KindsAsOverloadsNeedThem) {
  struct Row {
    Arg arg;
    Kind kind;
    std::int64_t number;
  };
  const WCHAR text[] = {'a', 0, 'b', 0};
  const Row rows[] = {
      {nullptr, Kind::kNull, 0},
      {true, Kind::kBool, 1},
      {std::int16_t{-3}, Kind::kInt, -3},
      {-7, Kind::kInt, -7},
      {4000000000U, Kind::kLong, 4000000000},  // unsigned int does not fit an int
      {std::int64_t{-1}, Kind::kLong, -1},
      {EnumValue{5}, Kind::kEnum, 5},
      {static_cast<const WCHAR*>(nullptr), Kind::kNull, 0},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(row.arg.kind(), row.kind);
    EXPECT_EQ(row.arg.number(), row.number);
  }
  EXPECT_EQ(Arg(static_cast<const WCHAR*>(text)).length(), 1);  // up to the NUL
  EXPECT_EQ(Arg(CString(text, 3)).length(), 3);                  // all of it
  EXPECT_EQ(Arg(0.25).kind(), Kind::kDouble);
  EXPECT_EQ(Arg(Object()).kind(), Kind::kNull);
}

TEST(ManagedExceptionText, TypeThenMessage) {
  CManagedException e(W("System.IO.IOException"), W("disk full"));
  WCHAR text[64];
  ASSERT_TRUE(e.GetErrorMessage(text, 64));
  EXPECT_EQ(CString(text), CString(W("System.IO.IOException: disk full")));
  ASSERT_TRUE(e.GetErrorMessage(text, 7));
  EXPECT_EQ(CString(text), CString(W("System")));  // cut to the buffer, terminated
}

class Recording final : public ui::WaitCursor {
 public:
  void Begin() override { calls += W("B"); }
  void End() noexcept override { calls += W("E"); }
  CString calls;
};

TEST(WaitCursor, EveryBeginHasItsEnd) {
  Recording cursor;
  ui::WaitCursor* before = ui::SetWaitCursor(&cursor);
  try {
    CWaitCursor outer;
    {
      CWaitCursor inner;
      inner.Restore();
    }
    throw 1;
  } catch (int) {
  }
  EXPECT_EQ(cursor.calls, CString(W("BBEBEE")));
  EXPECT_EQ(ui::SetWaitCursor(before), &cursor);
  EXPECT_EQ(&ui::CurrentWaitCursor(), before != nullptr ? before : &ui::CurrentWaitCursor());
}

TEST(BridgeAssembly, LookedForBesideTheLibraryNeverInTheWorkingDirectory) {
  namespace fs = std::filesystem;
  const fs::path lib = fs::path("opt") / "host" / "lib";
  const std::vector<fs::path> expected = {lib / "CadTools.Bridge.dll", lib / "cadtools" / "CadTools.Bridge.dll",
                                          lib.parent_path() / CADTOOLS_INSTALL_LIBDIR / "cadtools" /
                                              "CadTools.Bridge.dll"};
  EXPECT_EQ(detail::BridgeAssemblyCandidates(lib), expected);
  EXPECT_TRUE(detail::ModuleFolder().is_absolute());
}

}  // namespace
}  // namespace cadtools::bridge::testing
