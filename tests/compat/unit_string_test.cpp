// CString's storage across the boundary between units kept in the object
// and units on the heap: copies, moves and edits must not care which side
// a string is on, also when the source lies inside the string itself.
#include <cadtools/compat/unit_string.h>

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace {

using cadtools::detail::UnitString;
using Units = std::basic_string<WCHAR>;
constexpr std::size_t kInline = UnitString::kInlineUnits;

Units Sample(std::size_t n) {
  Units s;
  for (std::size_t i = 0; i < n; ++i) s.push_back(static_cast<WCHAR>('a' + i % 26));
  return s;
}

UnitString Make(const Units& u) {
  UnitString s;
  s.assign(u);
  return s;
}

void ExpectHolds(const UnitString& s, const Units& want) {
  EXPECT_EQ(Units(UnitString::View(s)), want);
  EXPECT_EQ(s.c_str()[s.size()], 0) << "terminator";
}

TEST(UnitStringTest, CopiesAndMovesOnEitherSide) {
  for (const std::size_t n : {std::size_t{0}, kInline - 1, kInline, kInline + 1, 3 * kInline}) {
    const Units want = Sample(n);
    const UnitString original = Make(want);
    UnitString copy(original);
    ExpectHolds(copy, want);
    UnitString moved(std::move(copy));
    ExpectHolds(moved, want);
    ExpectHolds(copy, Units());  // NOLINT: a moved-from string is empty
    for (const std::size_t m : {std::size_t{1}, 4 * kInline}) {
      UnitString target = Make(Sample(m));
      target = original;
      ExpectHolds(target, want);
      UnitString other = Make(Sample(m));
      other = std::move(target);
      ExpectHolds(other, want);
    }
    ExpectHolds(original, want);
  }
}

TEST(UnitStringTest, EditsThatReadTheirOwnUnits) {
  for (const std::size_t n : {std::size_t{5}, kInline - 2, kInline, 2 * kInline}) {
    const Units base = Sample(n);
    UnitString s = Make(base);
    s.append(s);  // grows past the inline room for most n
    ExpectHolds(s, base + base);
    s.assign(UnitString::View(s).substr(1, n));
    ExpectHolds(s, base.substr(1) + base.substr(0, 1));
    s.insert(2, UnitString::View(s));
    Units want = base.substr(1) + base.substr(0, 1);
    want.insert(2, Units(want));
    ExpectHolds(s, want);
  }
}

TEST(UnitStringTest, ResizeEraseAndSearch) {
  UnitString s = Make(Sample(10));
  s.resize(kInline + 5, u'x');
  ExpectHolds(s, Sample(10) + Units(kInline - 5, u'x'));
  s.erase(3, 100);
  ExpectHolds(s, Sample(3));
  s.push_back(0);  // an embedded NUL is a unit like any other
  s.push_back(u'c');
  EXPECT_EQ(s.size(), 5U);
  EXPECT_EQ(s.find(u'c'), 2U);
  EXPECT_EQ(s.find(u'c', 3), 4U);
  EXPECT_EQ(s.rfind(u'c'), 4U);
  EXPECT_EQ(s.find(UnitString::View(CADTOOLS_WIDE("zz"))), UnitString::npos);
  s.erase(s.begin() + 1, s.end());
  ExpectHolds(s, Units(CADTOOLS_WIDE("a")));
  s.clear();
  ExpectHolds(s, Units());
}

}  // namespace
