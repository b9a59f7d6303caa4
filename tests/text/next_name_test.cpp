#include "text_test_util.h"

#include <cadtools/text_tools.h>

#include <gtest/gtest.h>

namespace {

TEST(GetNextName, LetterNumbers) {
  const struct {
    const WCHAR* name;
    const WCHAR* next;
  } cases[] = {
      {W("A"), W("B")},    {W("Z"), W("AA")},   {W("z"), W("aa")},  {W("AZ"), W("BA")},
      {W("Az"), W("ba")},  {W("aZ"), W("BA")},  // the last letter decides the case
      {W("ZY"), W("ZZ")},  {W("ZZ"), W("A")},   // a first letter past 'Z' is dropped
      {W("ABC"), W("D")},  {W("abz"), W("a")}, {W("ZZZ"), W("A")},  // three letters give two
      {W("ABCD"), W("ABCD")},                   // four letters are a name without number
      {W("\u00C4"), W("\u00C4")},               // only ASCII letters count
  };
  for (const auto& c : cases) {
    EXPECT_EQ(CTextTools::GetNextName(c.name), CString(c.next)) << testing::PrintToString(CString(c.name));
  }
}

TEST(GetNextName, Numbers) {
  const struct {
    const WCHAR* name;
    const WCHAR* next;
  } cases[] = {
      {W(""), W("")},
      {W("K1"), W("K2")},
      {W("12"), W("13")},
      {W("1A"), W("2A")},
      {W("A1B2"), W("A2B3")},  // every number advances
      {W("Motor"), W("Motor")},
      {W("K99"), W("K100")},
      {W("K099"), W("K100")},
      {W("K0099"), W("K0100")},
      {W("X009"), W("X010")},
      {W("X001"), W("X02")},   // one zero back, however many were lost
      {W("X0"), W("X1")},      // same length: nothing to put back
      {W("-M3.2"), W("-M4.3")},
      {W("=A1+B2-X15:7"), W("=A2+B3-X16:8")},
      {W("K\u0661"), W("K\u0661")},                // other scripts' digits stay text
      {W("K2147483647"), W("K-2147483648")},      // the host's int wraps
      {W("K99999999999"), W("K-2147483648")},     // read saturated, then wraps
      {W("K002147483647"), W("K0-2147483648")},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(CTextTools::GetNextName(c.name), CString(c.next)) << testing::PrintToString(CString(c.name));
  }
}

}  // namespace
