// The help texts. The question list comes from the question table, so the
// help cannot fall behind it.
#pragma once

#include <string>

namespace cadtools::cli {

// `cadtools --help`: everything.
std::string FullHelp();
// The synopsis shown after an error.
std::string ShortUsage();
// The geom synopsis with the question names, shown after an error.
std::string GeomShortUsage();
// `cadtools geom --help`: the questions and their options.
std::string GeomUsage();

}  // namespace cadtools::cli
