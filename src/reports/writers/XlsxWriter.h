// Writes a workbook as an .xlsx file: the same content as the XML workbook, with heads that stay in
// sight and rows that can be filtered.
#pragma once

#include "core/files/IoStatus.h"
#include "reports/writers/WorkbookWriter.h"

#include <memory>
#include <string>
#include <string_view>

namespace kavu {

class XlsxWriter : public WorkbookWriter {
  public:
    /// Writes to a scratch file in an existing folder, with this time as that of the document.
    XlsxWriter(std::string folder, const CivilTime& created);
    /// Deletes the scratch file.
    ~XlsxWriter() override;

    /// A sheet without columns is refused.
    int addSheet(SheetSetup setup) override;
    void beginRow(int style, double height, int index) override;
    void endRow() override {}
    void textCell(std::string_view text, int style, CellSpan span) override;
    void numberCell(std::string_view number, int style, CellSpan span) override;
    void dateCell(const CivilTime& time, int style, CellSpan span) override;
    using WorkbookWriter::numberCell;

    /// Completes the file and gives its bytes. Nothing can be added after that.
    [[nodiscard]] IoStatus finish(std::string& bytes);

  private:
    struct Library;
    struct Place;
    [[nodiscard]] std::string path() const { return folder_ + "/Report.xlsx"; }
    [[nodiscard]] bool takePlace(CellSpan span, Place& place);
    void finishSheet();

    std::string folder_;
    std::unique_ptr<Library> library_;
    SheetSetup setup_{};
    int row_ = 0;  ///< the present one, from 1
    int column_ = 0;
    int columns_ = 0;
    bool inRow_ = false;
};

}  // namespace kavu
