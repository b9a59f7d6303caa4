#include "text_test_util.h"

#include <cadtools/text_tools.h>

#include <gtest/gtest.h>

namespace {

TEST(GetNextName, LettersAndNumbers) {
  const struct {
    const WCHAR *name, *next;
  } cases[] = {
      // One to three ASCII letters: a letter number, in the last letter's case.
      {W("A"), W("B")}, {W("Z"), W("AA")}, {W("z"), W("aa")}, {W("Az"), W("ba")}, {W("aZ"), W("BA")},
      {W("ZY"), W("ZZ")}, {W("ZZ"), W("A")}, {W("ABC"), W("D")}, {W("abz"), W("a")},  // two letters at most
      {W("ABCD"), W("ABCD")}, {W("\u00C4"), W("\u00C4")},  // no letter number, no digits
      // Every run of ASCII digits advances; one lost leading zero comes back.
      {W(""), W("")}, {W("K1"), W("K2")}, {W("12"), W("13")}, {W("1A"), W("2A")}, {W("A1B2"), W("A2B3")},
      {W("Motor"), W("Motor")}, {W("K99"), W("K100")}, {W("K099"), W("K100")}, {W("K0099"), W("K0100")},
      {W("X009"), W("X010")}, {W("X001"), W("X02")}, {W("X0"), W("X1")}, {W("=A1+B2-X15:7"), W("=A2+B3-X16:8")},
      {W("K\u0661"), W("K\u0661")},  // other scripts' digits stay text
      // The host's 32-bit int: saturated when read, wrapping when advanced.
      {W("K2147483647"), W("K-2147483648")}, {W("K99999999999"), W("K-2147483648")},
      {W("K002147483647"), W("K0-2147483648")},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(CTextTools::GetNextName(c.name), CString(c.next)) << testing::PrintToString(CString(c.name));
  }
}

}  // namespace
