// Reports as one web page that needs nothing else: tables that can be searched and sorted, in light
// and dark, and printed.
#pragma once

#include "reports/content/ReportContent.h"

#include <string>
#include <vector>

namespace kavu {

[[nodiscard]] std::string htmlPage(const std::vector<ReportContent>& reports);

}  // namespace kavu
