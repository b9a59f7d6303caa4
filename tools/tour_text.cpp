// The tour's sections on numbers, units and text.
#include "tour_steps.h"

#include <cadtools/compat/carray.h>
#include <cadtools/math_tools.h>
#include <cadtools/text_tools.h>

#include <algorithm>
#include <vector>

namespace cadtools::cli {

void NumbersTour(Tour& t) {
  t.Heading("Millimetres and inches: the usual sizes snap to their counterparts");
  t.Step("MM2InchRound(3.175)", Num(CMathTools::MM2InchRound(3.175)), "a standard size");
  t.Step("MM2InchRound(7)", Num(CMathTools::MM2InchRound(7.0)), "no standard size: 5 decimals");
  t.Step("Inch2MMRound(0.25)", Num(CMathTools::Inch2MMRound(0.25)));
  t.Step("Inch2MMRound(0.125)", Num(CMathTools::Inch2MMRound(0.125)), "2 decimals: 3.175 is just below in binary");
  t.Step("Inch2MMRound(0.03)", Num(CMathTools::Inch2MMRound(0.03)), "the table's first key is 0.03 in");
  t.Step("RoundDouble(0.7, 0)", Num(CMathTools::RoundDouble(0.7, 0)), "integer part 0 with fraction >= 0.5 goes to -1");
  t.Step("RoundDouble(-2.5, 0)", Num(CMathTools::RoundDouble(-2.5, 0)));

  t.Heading("Numeric strings and labels");
  t.Step("IsDouble(\"0,25\")", Int(CMathTools::IsDouble(L"0,25")), "either separator");
  t.Step("IsDouble(\"-1.5\")", Int(CMathTools::IsDouble(L"-1.5")), "no sign");
  t.Step("IsNumeric(\"\")", Int(CMathTools::IsNumeric(L"")), "empty passes here, fails in IsDigit");
  t.Step("itohex(4096, 2)", Quoted(CMathTools::itohex(4096, 2)), "only the last 2 digits");
  t.Step("hextoi(\"1A2z\")", Int(CMathTools::hextoi(L"1A2z")));
  t.Step("CreateABCDuplicate(651)", Quoted(CMathTools::CreateABCDuplicate(651)), "base 25, with its gaps");
}

void TextTour(Tour& t) {
  t.Heading("Natural order: digit runs compare as numbers, case is ignored");
  t.Step("NaturalCompare(\"X2\", \"X10\")", Int(CTextTools::NaturalCompare(CString(L"X2"), CString(L"X10"))));
  t.Step("NaturalCompare(\"a01\", \"a1\")", Int(CTextTools::NaturalCompare(CString(L"a01"), CString(L"a1"))),
         "a leading zero compares digit by digit");
  std::vector<CString> tags = {L"-K10", L"-k2", L"-K1.3", L"-K1.10", L"-K02"};
  std::stable_sort(tags.begin(), tags.end(),
                   [](const CString& a, const CString& b) { return CTextTools::NaturalCompare(a, b) < 0; });
  std::string sorted;
  for (const CString& tag : tags) sorted += (sorted.empty() ? "" : " ") + ToUtf8(tag);
  t.Step("sorted -K10 -k2 -K1.3 -K1.10 -K02", sorted);

  t.Heading("Wildcards and next names");
  t.Step("IsTextLike(\"Motor12\", \"mot*12\")", Int(CTextTools::IsTextLike(L"Motor12", L"mot*12")));
  t.Step("IsTextLike(\"abab\", \"*ab\")", Int(CTextTools::IsTextLike(L"abab", L"*ab")),
         "each piece at its first occurrence");
  t.Step("GetNextName(\"K099\")", Quoted(CTextTools::GetNextName(L"K099")));
  t.Step("GetNextName(\"X001\")", Quoted(CTextTools::GetNextName(L"X001")), "one zero restored");
  t.Step("GetNextName(\"AZ\")", Quoted(CTextTools::GetNextName(L"AZ")));
  t.Step("GetNextName(\"ZZ\")", Quoted(CTextTools::GetNextName(L"ZZ")), "at most two letters");

  t.Heading("Splitting and trimming");
  CArray<CString, CString> fields;
  const int count = CMathTools::SplitStr(fields, L";a;;b;", L';');
  std::string shown;
  for (const CString& f : fields) shown += (shown.empty() ? "" : ", ") + Quoted(f);
  t.Step("SplitStr(\";a;;b;\", ';')", Int(count) + ": " + shown, "every separator is a boundary");
  t.Step("TrimChar(\"  --ab--  \", '-')", Quoted(CTextTools::TrimChar(L"  --ab--  ", L'-')));
  t.Step("TrimStringBySeparatorEx(\"Motor (spare) A\", \"(\", \")\")",
         Quoted(CTextTools::TrimStringBySeparatorEx(L"Motor (spare) A", L"(", L")")));
}

}  // namespace cadtools::cli
