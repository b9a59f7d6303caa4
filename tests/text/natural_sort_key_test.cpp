#include "random_tags.h"
#include "text/natural_sort_key.h"
#include "text_test_util.h"

#include <cadtools/compat/wide_ctype.h>
#include <cadtools/text_tools.h>

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace {

using cadtools::WString;
using cadtools::text::kNoSortKey;

std::optional<std::string> Key(cadtools::WStringView name) {
  std::string key(cadtools::text::NaturalSortKeyBound(name.size()), '\0');
  const std::size_t size = cadtools::text::WriteNaturalSortKey(name, key.data());
  if (size == kNoSortKey) return std::nullopt;
  key.resize(size);
  return key;
}

std::optional<std::string> KeyUtf8(const std::string& name) {
  std::string key(cadtools::text::NaturalSortKeyBound(name.size()), '\0');
  const std::size_t size = cadtools::text::WriteNaturalSortKeyUtf8(name, key.data());
  if (size == kNoSortKey) return std::nullopt;
  key.resize(size);
  return key;
}

int Order(const std::string& a, const std::string& b) { return a < b ? -1 : a == b ? 0 : 1; }

bool HasOtherDigit(const CString& name) {
  for (const WCHAR* p = name; *p != 0; ++p) {
    if (cadtools::IsWideDigit(*p) && *p > u'9') return true;
  }
  return false;
}

TEST(NaturalSortKey, OrdersAsNaturalCompare) {
  const struct {
    const WCHAR *a, *b;
    int expected;
  } cases[] = {
      {W("X2"), W("x10"), -1},   {W("a b"), W("AB"), 0},     {W("x010"), W("x02"), -1},  // after a '0', digit by digit
      {W("x1 2"), W("x12"), -1}, {W("a01"), W("a1"), -1},    {W("a0"), W("a00"), -1},
      {W("a1"), W("aa"), -1},    {W("_"), W("a"), 1},        {W("a"), W("a\u3000"), 0},
      {W("a!"), W("a1"), -1},    {W("a\u00E9"), W("a1"), 1}, {W("\uFF21"), W("z"), 1},
      {W("ab\0c"), W("ab"), 0},  {W(""), W("\x01"), -1},     {W("K\U0001F600"), W("K\uFFFD"), -1},  // units, unsigned
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(cadtools::test::Pair(c.a, c.b));
    ASSERT_EQ(CTextTools::NaturalCompare(c.a, c.b), c.expected);
    EXPECT_EQ(Order(*Key(c.a), *Key(c.b)), c.expected);
  }
  // Runs around the lengths where the key writes its length another way.
  for (const std::size_t shorter : {1U, 7U, 8U, 9U, 254U, 255U, 256U, 65024U, 65025U}) {
    const WString a = W("K") + WString(shorter, u'9');
    const WString b = W("K1") + WString(shorter, u'0');
    SCOPED_TRACE(shorter);
    ASSERT_EQ(CTextTools::NaturalCompare(a.c_str(), b.c_str()), -1);
    EXPECT_EQ(Order(*Key(a), *Key(b)), -1);
  }
}

TEST(NaturalSortKey, NoKeyForDigitsBeyondAscii) {
  // "10" < "A" < "\u0661" < "10": no key can place the third.
  EXPECT_EQ(CTextTools::NaturalCompare(W("10"), W("A")), -1);
  EXPECT_EQ(CTextTools::NaturalCompare(W("A"), W("\u0661")), -1);
  EXPECT_EQ(CTextTools::NaturalCompare(W("\u0661"), W("10")), -1);
  for (const WCHAR* name : {W("\u0661"), W("K1\u0663"), W("\uFF13"), W("x \u0660")}) {
    EXPECT_FALSE(Key(name).has_value()) << testing::PrintToString(CString(name));
  }
  EXPECT_TRUE(Key(W("K1\0\u0663")).has_value());  // not after the end
  EXPECT_TRUE(Key(W("\u00B2")).has_value());      // superscript two is no decimal digit
}

TEST(NaturalSortKey, MatchesNaturalCompareOnRandomTags) {
  std::mt19937 rng(1414);
  for (int i = 0; i < 40000; ++i) {
    const cadtools::test::TagShapes shapes{.otherDigits = i % 4 == 0};
    const std::string a = cadtools::test::RandomTag(rng, shapes);
    const std::string b =
        i % 2 == 0 ? cadtools::test::RelatedTag(rng, a, shapes) : cadtools::test::RandomTag(rng, shapes);
    const CString wa = cadtools::FromUtf8(a);
    const CString wb = cadtools::FromUtf8(b);
    SCOPED_TRACE(cadtools::test::Pair(wa, wb));
    const std::optional<std::string> ka = KeyUtf8(a);
    const std::optional<std::string> kb = KeyUtf8(b);
    // The same key from UTF-8 and from UTF-16, and none exactly for names
    // with a digit beyond ASCII.
    ASSERT_EQ(ka, Key(wa.View()));
    ASSERT_EQ(ka.has_value(), !HasOtherDigit(wa));
    ASSERT_EQ(kb.has_value(), !HasOtherDigit(wb));
    if (ka && kb) {
      ASSERT_EQ(ka->find('\0'), std::string::npos);
      ASSERT_LE(ka->size(), cadtools::text::NaturalSortKeyBound(a.size()));
      ASSERT_EQ(Order(*ka, *kb), CTextTools::NaturalCompare(wa, wb));
    }
  }
}

}  // namespace
