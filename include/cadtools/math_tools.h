// CMathTools: the host's class of static mathematical functions. Its
// members are declared by subject in the headers below and called as
// CMathTools::Name:
//
//   CMathTools::Angle(0, 0, 1, 1, 0)          // 0.7853981633974483 (geometry)
//   CMathTools::MM2InchRound(3.175)           // 0.125 (numbers and units)
//   CMathTools::SplitStr(fields, L"a;b", ';') // 2 (field splitters)
#pragma once

#include <cadtools/export.h>
#include <cadtools/geometry/geometry_tools.h>
#include <cadtools/numbers/number_tools.h>
#include <cadtools/text/field_splitters.h>

class CADTOOLS_API CMathTools : public cadtools::GeometryTools,
                                public cadtools::NumberTools,
                                public cadtools::FieldSplitters {
 public:
  CMathTools() = default;
  CMathTools(const CMathTools&) = default;
  CMathTools& operator=(const CMathTools&) = default;
  virtual ~CMathTools();
};
