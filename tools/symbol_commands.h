// `cadtools symbol`: three-dimensional symbols through the bridge.
//
//   cadtools symbol load Main\Terminals\UK5N          # the demonstration database
//   cadtools symbol load Main\Rails\TS35 --database DIR
//   cadtools symbol type '$Cable channel'             # 19102 (cable channel)
#pragma once

#include <ostream>
#include <span>
#include <string_view>

namespace cadtools::cli {

void RunSymbol(std::span<const std::string_view> words, std::ostream& out);

// What an object type number stands for ("cable channel"), or "".
std::string_view ObjectTypeKind(long type);

}  // namespace cadtools::cli
