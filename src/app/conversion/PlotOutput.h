// A plot on paper and in files.
#pragma once

#include "app/framework/FormContext.h"

#include <functional>
#include <string>

namespace kavu {

class DrawingSurface;

/// Draws a page; false if there is nothing to show.
using DrawPage = std::function<bool(DrawingSurface&)>;

/// Asks for a file and writes the page as PDF, or the picture as SVG or PNG by the file's ending.
/// What fails is reported under `title`; what cannot be drawn leaves the file alone.
void savePlot(FormContext& form, const std::string& title, const DrawPage& draw);

/// Asks for a file and writes a table there, of values with commas between them. What fails is
/// reported under `title`.
void savePairTable(FormContext& form, const std::string& title, const std::string& table);

}  // namespace kavu
