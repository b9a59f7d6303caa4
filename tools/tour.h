// `cadtools tour`: a short walk through the library, each call shown with
// the result it gives now.
#pragma once

#include <iosfwd>

namespace cadtools::cli {

void PrintTour(std::ostream& out);

}  // namespace cadtools::cli
