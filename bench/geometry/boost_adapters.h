// Registers our types with Boost.Geometry, as a user who has WPt and WRect in
// a drawing would do: the peers then take the same objects as our functions,
// without a conversion on either side.
//
// WRect is registered as a box with min corner (left, top) and max corner
// (right, bottom); that holds for the normalised rectangles of inputs.h.
#pragma once

#include "geometry/inputs.h"

#include <boost/geometry.hpp>
#include <boost/geometry/geometries/register/box.hpp>
#include <boost/geometry/geometries/register/point.hpp>
#include <boost/geometry/geometries/register/segment.hpp>

BOOST_GEOMETRY_REGISTER_POINT_2D(WPt, double, boost::geometry::cs::cartesian, x, y)
BOOST_GEOMETRY_REGISTER_BOX_2D_4VALUES(WRect, WPt, left, top, right, bottom)
BOOST_GEOMETRY_REGISTER_SEGMENT(bench::Seg, WPt, a, b)

namespace bench {

namespace bg = boost::geometry;

using Linestring = bg::model::linestring<WPt>;
using MultiLinestring = bg::model::multi_linestring<Linestring>;

}  // namespace bench
