#include "numbers_test_util.h"

#include "numbers/host_format.h"

#include <limits>

using cadtools::test::Units;
using cadtools::detail::IsFloatFormat;

namespace {

// Assigns a host text for one test and empties it again afterwards.
class HostText {
 public:
  HostText(CString& member, const CString& text) : m_member(member) { m_member = text; }
  ~HostText() { m_member.Empty(); }
  HostText(const HostText&) = delete;
  HostText& operator=(const HostText&) = delete;

 private:
  CString& m_member;
};

TEST(HostFormat, ValidatorTable) {
  struct Case {
    const char16_t* text;
    int numbers;
    bool accepted;
  };
  const Case cases[] = {
      // Floating conversions with flags, width, precision and l / L.
      {u"%f", 1, true},           {u"%.2f mm (%.3f\")", 2, true}, {u"%F%e%E%g", 4, true},   {u"%G %a %A", 4, true},
      {u"%-08.3lf", 1, true},     {u"%+ #0-12.10Le", 1, true},    {u"%10f", 1, true},
      {u"%.f", 1, true},  // an empty precision is 0
      {u"%lf x %lf", 2, true},    {u"%%", 2, true},               {u"100%% %f", 1, true},
      {u"%%d %%s %%n", 0, true},  // literal percents, then letters
      {u"no numbers", 2, true},
      {u"%.2f", 4, true},  // fewer conversions than numbers
      {u"%f %f %f %f", 4, true},
      // The empty (unassigned) text.
      {u"", 2, false},
      // Other conversions.
      {u"%s", 2, false},          {u"%S", 2, false},              {u"%d", 2, false},        {u"%i %f", 2, false},
      {u"%f %u", 2, false},       {u"%x", 2, false},              {u"%c", 2, false},        {u"%p", 2, false},
      {u"%n", 2, false},          {u"%y", 2, false},
      {u"%5%", 2, false},  // only "%%" is a literal percent
      // Widths and precisions from arguments.
      {u"%*f", 2, false},         {u"%.*f", 2, false},            {u"%*.*f", 4, false},
      // Other length modifiers, or more than one.
      {u"%hf", 2, false},         {u"%llf", 2, false},            {u"%lLf", 2, false},      {u"%I64f", 2, false},
      {u"%zf", 2, false},         {u"%wf", 2, false},
      // Positional arguments, grouping, a misplaced part.
      {u"%1$f", 2, false},        {u"%'f", 2, false},             {u"%.2.3f", 2, false},    {u"%l.2f", 2, false},
      // A lone or unfinished '%' at the end.
      {u"%", 2, false},           {u"50%", 2, false},             {u"%f %", 2, false},      {u"%.2", 2, false},
      {u"%-", 2, false},          {u"%%%", 2, false},
      // Too many conversions.
      {u"%f %f %f", 2, false},    {u"%f", 0, false},              {u"%f%f%f%f%f", 4, false},
  };
  for (const Case& c : cases) {
    const CString text(c.text);
    EXPECT_EQ(IsFloatFormat(text.View(), c.numbers), c.accepted) << testing::PrintToString(text) << ", " << c.numbers;
  }
  static_assert(IsFloatFormat(CADTOOLS_WIDE("%.3f x %.3f"), 2));
  static_assert(!IsFloatFormat(CADTOOLS_WIDE("%.3f x %s"), 2));
}

TEST(HostFormat, TextEndsAtTheFirstNul) {
  EXPECT_EQ(cadtools::detail::HostFormatText(Units(std::u16string_view(u"%f\0%s", 5))),
            cadtools::WString(CADTOOLS_WIDE("%f")));
  EXPECT_EQ(cadtools::detail::HostFormatText(CString(u"%f")), cadtools::WString(CADTOOLS_WIDE("%f")));
  EXPECT_TRUE(cadtools::detail::HostFormatText(CString()).empty());
}

TEST(HostTexts, AreEmptyUntilTheHostAssignsThem) {
  EXPECT_TRUE(CMathTools::m_strCadMes_031.IsEmpty());
  EXPECT_TRUE(CMathTools::m_strCadMes_036.IsEmpty());
  EXPECT_TRUE(CMathTools::m_strCadMes_037.IsEmpty());
  EXPECT_TRUE(CMathTools::m_strCadMes_113.IsEmpty());
  EXPECT_TRUE(CMathTools::m_strCadMes_114.IsEmpty());
  EXPECT_TRUE(CMathTools::m_strCadMes_115.IsEmpty());
  EXPECT_EQ(CMathTools::FormatStringMMInch(1, 2), CString());
  EXPECT_EQ(CMathTools::FormatStringMMInch(1, 2, 3, 4), CString());
  EXPECT_EQ(CMathTools::FormatStringMMInchRectangle(1, 2, 3, 4), CString());
}

// Each text is read only by its own call: two numbers (037), four (031),
// a rectangle (036).
TEST(HostTexts, FormattingWithTheHostsTexts) {
  constexpr double kInf = std::numeric_limits<double>::infinity();
  struct Case {
    CString* member;
    CString text;
    double a, b, c, d;
    CString two, four, rect;
  };
  const Case cases[] = {
      {&CMathTools::m_strCadMes_037, u"%.2f mm (%.3f\")", 2.5, 0.1, 0, 0, u"2.50 mm (0.100\")", u"", u""},
      {&CMathTools::m_strCadMes_037, u"%.2f mm (%.3f\")", 3.175, 0.125, 0, 0, u"3.17 mm (0.125\")", u"", u""},
      {&CMathTools::m_strCadMes_031, u"%.1f x %.1f mm (%.2f x %.2f\")", 25.4, 50.8, 1, 2, u"",
       u"25.4 x 50.8 mm (1.00 x 2.00\")", u""},
      {&CMathTools::m_strCadMes_036, u"(%g, %g) - (%g, %g)", 0, 0.5, 10, 1e20, u"", u"", u"(0, 0.5) - (10, 1e+20)"},
      // Fewer conversions than numbers, and literal percents.
      {&CMathTools::m_strCadMes_037, u"%.0f%% of %.0f", 50, 8, 0, 0, u"50% of 8", u"", u""},
      {&CMathTools::m_strCadMes_036, u"width %.3f", 1.5, 2, 3, 4, u"", u"", u"width 1.500"},
      {&CMathTools::m_strCadMes_031, u"fixed", 1, 2, 3, 4, u"", u"fixed", u""},
      {&CMathTools::m_strCadMes_037, u"%.2f/%F", kInf, -kInf, 0, 0, u"inf/-INF", u"", u""},
      // What follows a NUL is not seen, as in the host's C string.
      {&CMathTools::m_strCadMes_037, Units(std::u16string_view(u"%.1f\0%s", 7)), 1.25, 2, 0, 0, u"1.2", u"", u""},
      {&CMathTools::m_strCadMes_036, Units(std::u16string_view(u"\0%f", 3)), 1, 2, 3, 4, u"", u"", u""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::PrintToString(c.text));
    const HostText text(*c.member, c.text);
    EXPECT_EQ(CMathTools::FormatStringMMInch(c.a, c.b), c.two);
    EXPECT_EQ(CMathTools::FormatStringMMInch(c.a, c.b, c.c, c.d), c.four);
    EXPECT_EQ(CMathTools::FormatStringMMInchRectangle(c.a, c.b, c.c, c.d), c.rect);
  }
}

TEST(HostTexts, TextsThatDoNotFitGiveTheEmptyString) {
  for (const char16_t* bad : {u"%s mm", u"%d", u"%n", u"%*f", u"%.*f", u"50 %", u"%f %f %f", u"%lu", u"%.2f %p"}) {
    const HostText two(CMathTools::m_strCadMes_037, bad);
    EXPECT_EQ(CMathTools::FormatStringMMInch(1, 2), CString()) << testing::PrintToString(CString(bad));
  }
  const HostText four(CMathTools::m_strCadMes_031, u"%f %f %f %f %f");
  EXPECT_EQ(CMathTools::FormatStringMMInch(1, 2, 3, 4), CString());
  const HostText rect(CMathTools::m_strCadMes_036, u"%f %f %f %s");
  EXPECT_EQ(CMathTools::FormatStringMMInchRectangle(1, 2, 3, 4), CString());
}

TEST(HostTexts, RemoveInchMMFromString) {
  struct Case {
    const char16_t* text;
    int unit;
    const char16_t* expected;
  };
  const Case cases[] = {
      {u"12.5 mm", 0, u"12.5"}, {u"3 mm 4 mm", 0, u"3"},     {u"12.5mm", 2, u"12.5"}, {u"  7 mm", -1, u"7"},
      {u"0.5\"", 1, u"0.5"},     {u" 0.5 \" x 2\"", 1, u"0.5"},
      {u"\u3000" u"4\u00A0\"", 1, u"4"},  // Trim removes Unicode white space
      {u"mm", 0, u""},           {u"\"", 1, u""},
      // No marker: nothing is kept (on purpose).
      {u"12.5", 0, u""},         {u"12.5", 1, u""},         {u"", 0, u""},
      {u"12.5 MM", 0, u""},    // case-sensitive
      {u"12.5 mm", 1, u""},    // unit 1 looks for the inch sign only
      {u"0.5\"", 0, u""},      // any other unit looks for "mm" only
      {u"0.5 in", 1, u""},       {u"1 m m", 0, u""},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(CMathTools::RemoveInchMMFromString(c.text, c.unit), CString(c.expected))
        << testing::PrintToString(CString(c.text)) << ", " << c.unit;
  }
}

}  // namespace
