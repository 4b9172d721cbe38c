// A conversion of a TMATS text to XML, and what it said.
#pragma once

#include "sdk/SessionStage.h"
#include "xml/bridge/write/XmlExport.h"

#include <string>
#include <string_view>

namespace kavu::test {

struct ExportStage : SessionStage {
    /// Converts a text; the document without the lines of its head, empty after a failure.
    std::string convert(std::string_view tmats, XmlDialect dialect = XmlDialect::Classic) {
        EXPECT_TRUE(open(tmats));
        options.dialect = dialect;
        options.now = clock.now();
        whole.clear();
        report = {};
        const bool isDone = tmatsToXml(
            sdk, nullptr, options, [&](std::string_view text) { whole += text; }, report);
        sdk.close();
        if (!isDone) {
            return {};
        }
        constexpr std::string_view kHead = "<!-- G Group -->\n";
        const auto head = whole.find(kHead);
        EXPECT_NE(head, std::string::npos);
        return whole.substr(head + kHead.size());
    }

    XmlExportOptions options;
    XmlExportReport report;
    std::string whole;
};

/// True if a text holds another; lines are without their indent.
inline bool holds(const std::string& text, std::string_view part) {
    std::string flat;
    bool isIndent = true;
    for (const char c : text) {
        if (isIndent && c == '\t') {
            continue;
        }
        isIndent = c == '\n';
        flat += c;
    }
    return flat.find(part) != std::string::npos;
}

}  // namespace kavu::test
