// A stream in memory with the layout of the settings, and its reports as text.
#pragma once

#include "conversion/ConversionStore.h"
#include "pcm/LoadFixture.h"
#include "reports/StreamReports.h"
#include "reports/layout/ReportLayout.h"
#include "reports/writers/TextWriter.h"

#include <initializer_list>
#include <string>
#include <string_view>

namespace kavu::test {

class ReportStage : public LoadFixture {
  public:
    explicit ReportStage(int edition = 2011) : LoadFixture(edition) {}

    void set(std::string_view key, std::string_view value) { EXPECT_TRUE(layout.set(key, value)); }
    void choose(std::initializer_list<int> columns, std::string_view prefix = "M") {
        for (const int column : columns) {
            set(std::string(prefix) + std::to_string(column), "1");
        }
    }
    /// A chunk with these conversion records.
    void records(std::string_view sections) {
        write("[kavu]00000001.C_O", sections);
        conversions.forget();
    }
    [[nodiscard]] ReportSource source() {
        return {context, layout, conversions, &ui, &format, nullptr};
    }
    [[nodiscard]] std::string text(ReportKind kind, TextLayout pages = {}) {
        const auto made = makeReport(source(), kind);
        return made ? reportText({*made}, pages) : "(none)";
    }
    /// Without the lines of its head, of a title of one line.
    [[nodiscard]] std::string body(ReportKind kind, TextLayout pages = {}) {
        auto all = text(kind, pages);
        for (int lines = kind == ReportKind::Frame ? 9 : 6; lines > 0; --lines) {
            all.erase(0, all.find('\n') + 1);
        }
        return all;
    }
    [[nodiscard]] std::string delimited(ReportKind kind) {
        return makeDelimitedReport(source(), kind).value_or("(none)");
    }

    ReportLayout layout{settings};
    ConversionStore conversions{context};
};

/// A measurement in every frame of a word, for `listOf`.
inline Commands inEveryFrame(const std::string& name, int word, int frames) {
    return wordFrame(name, word, 1, 1, frames);
}

}  // namespace kavu::test
