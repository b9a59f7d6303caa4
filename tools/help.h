// The help texts. The question list comes from the question table, so the
// help cannot fall behind it.
#pragma once

#include <string>
#include <string_view>

namespace cadtools::cli {

// `cadtools --help`: everything.
std::string FullHelp();
// The synopsis shown after an error.
std::string ShortUsage();
// The geom synopsis with the question names, shown after an error.
std::string GeomShortUsage();
// `cadtools geom --help`: the questions and their options.
std::string GeomUsage();
// The usage of the commands over names and numbers.
std::string NatsortUsage();
std::string LikeUsage();
std::string NextnameUsage();
std::string UnitsUsage();
// `cadtools settings --help`, and one command's usage with the notes on
// keys and types (`cadtools settings get --help`).
std::string SettingsUsage();
std::string SettingsCommandUsage(std::string_view command);
// `cadtools placement --help`.
std::string PlacementUsage();
// The commands over character sets and code pages.
std::string ConvertUsage();
std::string CharsetUsage();
std::string FontUsage();
// `cadtools symbol --help`.
std::string SymbolUsage();
// `cadtools pane --help`.
std::string PaneUsage();

}  // namespace cadtools::cli
