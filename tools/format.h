// Numbers as text, the same on every target and in every locale.
#pragma once

#include <cadtools/geometry/wpt.h>
#include <cadtools/geometry/wrect.h>

#include <string>

namespace cadtools::cli {

// The shortest text that reads back as the same double: plain decimals
// from 1e-5 up to 1e15 ("0.0005", "999999999999999"), exponents outside
// ("1e+20", "5e-07"), and "nan", "inf", "-inf". Negative zero prints as "0": in an answer it is the same
// coordinate, and "-0" only makes people look twice.
std::string FormatNumber(double v);
// "x y": a point in an answer line.
std::string FormatPoint(WPt p);
// "(x, y)": a point in running text.
std::string FormatPointText(WPt p);
// "l t r b" and "(l, t, r, b)".
std::string FormatRect(const WRect& r);
std::string FormatRectText(const WRect& r);
// At most `decimals` decimals, trailing zeros dropped: pixel coordinates.
std::string FormatFixed(double v, int decimals);
// `digits` significant digits: grid labels, where k * step carries noise
// such as 0.30000000000000004.
std::string FormatRounded(double v, int digits);

}  // namespace cadtools::cli
