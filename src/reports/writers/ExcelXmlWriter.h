// Writes a workbook as one text file, a spreadsheet of the XML format of 2003; or, with the same
// calls, as delimited text.
#pragma once

#include "reports/writers/WorkbookWriter.h"

#include <string>
#include <string_view>
#include <vector>

namespace kavu {

class UserInterface;

class ExcelXmlWriter : public WorkbookWriter {
  public:
    enum class Mode { Excel, Delimited };

    /// Reports what is wrong with a sheet to `parent`, which may be null.
    explicit ExcelXmlWriter(UserInterface* parent, Mode mode = Mode::Excel)
        : parent_(parent), mode_(mode) {}

    /// A sheet without columns is refused, and one of more than 256 is made with a warning.
    int addSheet(SheetSetup setup) override;
    void beginRow(int style, double height, int index) override;
    void endRow() override;
    void textCell(std::string_view text, int style, CellSpan span) override;
    void numberCell(std::string_view number, int style, CellSpan span) override;
    void dateCell(const CivilTime& time, int style, CellSpan span) override;
    using WorkbookWriter::numberCell;

    /// The whole file. Nothing can be added after that.
    [[nodiscard]] std::string document();

  private:
    struct Sheet {
        SheetSetup setup{};
        std::vector<std::string> pieces{};  ///< of the rows that are complete, but for the last
        std::string rows{};
        int rowCount = 0;
        int lastRow = 0;  ///< of the cells that reach down
        int columnCount = 0;
    };

    void cell(std::string_view type, std::string_view data, int style, CellSpan span);
    static void addRows(std::string& text, Sheet& sheet);
    void writeStyles(std::string& text) const;
    void writeSheet(std::string& text, Sheet& sheet, bool isFirst) const;

    UserInterface* parent_;
    Mode mode_;
    std::vector<Sheet> sheets_{};
    bool hasSheet_ = false;
    bool inRow_ = false;
    int column_ = 0;
};

/// Escapes a text for an element or an attribute of such a file.
[[nodiscard]] std::string escapeForWorkbook(std::string_view bytes);

}  // namespace kavu
