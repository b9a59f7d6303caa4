// The displays placement checks against, and the resource module's name.
#include <cadtools/dialog/displays.h>
#include <cadtools/dialog/resource_module.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#define W CADTOOLS_WIDE

namespace {

using cadtools::ui::AnyDisplayIntersects;
using cadtools::ui::PrimaryDisplaySize;

TEST(Displays, PrimaryDisplayHoldsItsOwnCornersOnly) {
  const CSize size = PrimaryDisplaySize();
  ASSERT_GT(size.cx, 0);
  ASSERT_GT(size.cy, 0);
  struct Case {
    CRect rect;
    bool touches;
  };
  const Case cases[] = {
      {CRect(0, 0, 1, 1), true},
      {CRect(size.cx - 1, size.cy - 1, size.cx + 50, size.cy + 50), true},
      {CRect(-32000, -32000, -31840, -31972), false},
      {CRect(100000, 0, 100100, 100), false},
      {CRect(10, 10, 10, 20), false},  // no area
      {CRect(20, 20, 10, 10), false},  // turned inside out
  };
  for (const Case& c : cases) {
    EXPECT_EQ(AnyDisplayIntersects(c.rect), c.touches) << c.rect.left << "," << c.rect.top;
  }
}

#if !defined(_WIN32)
TEST(Displays, LayoutTextOrTheDefault) {
  struct Case {
    const char* layout;
    CSize primary;
    CRect probe;  // touches a display only in this layout's second display
    bool touches;
  };
  const Case cases[] = {
      {"0,0,1280,1024;1280,0,1920,1080", CSize(1280, 1024), CRect(3000, 500, 3100, 600), true},
      {" -1920 , 0 , 1920 , 1200 ; 0,0,800,600", CSize(1920, 1200), CRect(-1000, 0, -900, 10), true},
      {"", CSize(1920, 1080), CRect(3000, 500, 3100, 600), false},
      {"0,0,1280", CSize(1920, 1080), CRect(1500, 0, 1600, 10), true},
      {"0,0,1280,1024;x", CSize(1920, 1080), CRect(1500, 0, 1600, 10), true},
      {"0,0,99999999999,10", CSize(1920, 1080), CRect(1500, 0, 1600, 10), true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.layout);
    cadtools::ui::SetDisplayLayout(c.layout);
    EXPECT_EQ(PrimaryDisplaySize(), c.primary);
    EXPECT_EQ(AnyDisplayIntersects(c.probe), c.touches);
  }
  cadtools::ui::SetDisplayLayout(nullptr);
}

TEST(Displays, EnvironmentIsReadOnEveryCall) {
  cadtools::ui::SetDisplayLayout(nullptr);
  ASSERT_EQ(setenv("CADTOOLS_DISPLAYS", "0,0,640,480", 1), 0);
  EXPECT_EQ(PrimaryDisplaySize(), CSize(640, 480));
  ASSERT_EQ(setenv("CADTOOLS_DISPLAYS", "nonsense", 1), 0);
  EXPECT_EQ(PrimaryDisplaySize(), CSize(1920, 1080));
  ASSERT_EQ(unsetenv("CADTOOLS_DISPLAYS"), 0);
  EXPECT_EQ(PrimaryDisplaySize(), CSize(1920, 1080));
}

TEST(ResourceModule, NameSetOrTheProgramsOwn) {
  cadtools::ui::SetResourceModuleName(W("Lib"));
  EXPECT_EQ(cadtools::ui::GetResourceModuleName(), CString(W("Lib")));
  cadtools::ui::SetResourceModuleName(CString());
  EXPECT_EQ(cadtools::ui::GetResourceModuleName(), CString(W("dialog_tests")));
}
#else
TEST(ResourceModule, HandleChosenOrTheProgram) {
  EXPECT_EQ(cadtools::ui::GetResourceModuleName(), CString(L"dialog_tests"));
  cadtools::ui::SetResourceModule(::GetModuleHandleW(L"kernel32.dll"));
  EXPECT_EQ(cadtools::ui::GetResourceModuleName().MakeLower(), CString(L"kernel32"));
  cadtools::ui::SetResourceModule(nullptr);
}
#endif

TEST(ResourceModule, BaseNameSplitsAsTheRuntimeDoes) {
  const std::basic_string<WCHAR> longDirectory(259, 'd');
  const std::basic_string<WCHAR> longName(255, 'n');
  struct Case {
    std::basic_string<WCHAR> path;
    std::basic_string<WCHAR> name;
  };
  const Case cases[] = {
      {W("C:\\Programs\\Host.exe"), W("Host")},
      {W("\\\\server\\share\\Lib.dll.mui"), W("Lib.dll")},
      {W("/opt/host/bin/host"), W("host")},
      {W("Host."), W("Host")},
      {W(".exe"), W("")},
      {W("\\") + longDirectory.substr(1) + W("\\Host.exe"), W("")},  // 260 with its backslash
      {longName + W("n.exe"), W("")},
      {longName + W(".exe"), longName},
      {W("Host.") + longName, W("")},  // the dot counts
      {W("Host.") + longName.substr(1), W("Host")},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(cadtools::ui::ModuleBaseName(CString(c.path.c_str())), CString(c.name.c_str()))
        << c.path.size() << " units";
  }
}

}  // namespace
