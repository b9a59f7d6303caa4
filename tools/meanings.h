// What the result codes of the geometry functions mean, in words, shared by
// the answers and the tour so both say the same thing.
#pragma once

#include <cadtools/geometry/wrect.h>

#include <string_view>

namespace cadtools::cli {

// CMathTools::ll_Intersection, codes 0 to 5.
std::string_view IntersectionMeaning(int code);
// CMathTools::On_Entity, codes 1 to 6.
std::string_view OnEntityMeaning(int code);
// CMathTools::aa_Intersection, 0 to 2 crossings.
std::string_view CirclesMeaning(int count);
// WRect::WPtPostoWRect by name, "Bottom"; "?" outside the enumeration.
std::string_view ZoneName(int zone);

}  // namespace cadtools::cli
