// Reports as plain text, and the lines that a printed page has.
#pragma once

#include "reports/content/ReportContent.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

class UserInterface;

/// Takes a report line by line. A caption and its value come apart, since a page prints them in
/// fonts of their own.
class LineSink {
  public:
    LineSink() = default;
    LineSink(const LineSink&) = delete;
    LineSink& operator=(const LineSink&) = delete;
    virtual ~LineSink() = default;

    /// A new report begins: on a page of its own.
    virtual void startReport(const ReportHead& head) = 0;
    virtual void line(std::string_view text) = 0;
    virtual void captionLine(const ReportLine& line) = 0;
    /// The lines that each page repeats before the lines that follow; none for nothing. They are
    /// written by the caller where they stand at first.
    virtual void setTableHead(const std::vector<std::string>& lines) = 0;
};

/// How a text is laid out.
struct TextLayout {
    std::size_t pageWidth = 132;  ///< characters that blocks of columns of a grid fit into
    std::size_t pageLines = 0;    ///< lines of a page; 0 for no page breaks
};

/// Gives a report to a sink, its head first. Stops when `parent`, who may be null, has cancelled.
void writeLines(const ReportContent& report, std::size_t pageWidth, LineSink& sink,
                UserInterface* parent = nullptr);

/// Collects lines as a text: a form feed divides reports, and pages of the length that is asked
/// for.
class TextPages : public LineSink {
  public:
    explicit TextPages(std::size_t pageLines) : pageLines_(pageLines) {}

    void startReport(const ReportHead& head) override;
    void line(std::string_view text) override;
    void captionLine(const ReportLine& line) override;
    void setTableHead(const std::vector<std::string>& lines) override { tableHead_ = lines; }
    [[nodiscard]] const std::string& text() const { return text_; }

  private:
    void put(std::string_view text);

    std::size_t pageLines_;
    std::size_t onPage_ = 0;
    std::vector<std::string> tableHead_{};
    std::string text_{};
};

/// The text of several reports. Lines end with a line feed. Stops when `parent`, who may be null,
/// has cancelled; what was written until then stays.
[[nodiscard]] std::string reportText(const std::vector<ReportContent>& reports,
                                     const TextLayout& layout, UserInterface* parent = nullptr);
/// A table as delimited text, the names of its columns first; ";" divides fields.
[[nodiscard]] std::string delimitedTable(const ReportTable& table);

}  // namespace kavu
