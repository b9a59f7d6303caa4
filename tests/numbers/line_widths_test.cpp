#include "numbers_test_util.h"

#include <climits>

namespace {

// The host's lookup holds no entries: every index is 0 in every unit.
TEST(LineWidths, EveryIndexIsZero) {
  for (const UINT index : {0U, 1U, 5U, 17U, 255U, UINT_MAX}) {
    for (const int unit : {0, 1, 2, -1, INT_MAX}) {
      EXPECT_EQ(CMathTools::GetLineWidth(index, unit), 0) << index << ", " << unit;
      EXPECT_EQ(CMathTools::GetLineWidthAsFloat(index, unit), 0.0) << index << ", " << unit;
    }
    EXPECT_EQ(CMathTools::GetLineWidthAsString(index, 0, 0), CString(u"0")) << index;
    EXPECT_EQ(CMathTools::GetLineWidthAsString(index, 0, 1), CString(u"0")) << index;
    EXPECT_EQ(CMathTools::GetLineWidthAsString(index, 1, 1), CString(u"0.000")) << index;
    EXPECT_EQ(CMathTools::GetLineWidthAsString(index, 1, 0), CString(u"0.00")) << index;
    EXPECT_EQ(CMathTools::GetLineWidthAsString(index, -3, 7), CString(u"0.000")) << index;
  }
}

}  // namespace
