// The SVG writer: a Scene as a picture with a light coordinate grid, a title,
// a legend and the answer lines underneath.
#pragma once

#include "scene.h"

#include <string>

namespace cadtools::cli {

// The complete SVG document. Throws OutputError when a coordinate is beyond
// kDrawableLimit (see view.h).
std::string RenderSvg(const Scene& scene);

// Writes text to path as it is (no newline translation). Throws OutputError
// naming the path and the reason.
void WriteFile(const std::string& path, const std::string& text);

}  // namespace cadtools::cli
