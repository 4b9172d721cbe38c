#include "mdb/import/ImportSource.h"

#include "core/talk/Messages.h"
#include "core/talk/OpenFileChecked.h"
#include "core/text/Text.h"
#include "mdb/dbase/DbaseTable.h"
#include "mdb/import/TextRecords.h"
#include "mdb/record/MdbFields.h"

#include <algorithm>
#include <optional>

namespace kavu {

namespace {

/// Where the value of a field is, once the file is known.
struct Place {
    std::size_t field = 0;
    std::size_t at = 0;    ///< a column or field from 0, or a starting column from 1
    std::size_t size = 0;  ///< of fixed columns
};

constexpr std::int64_t kMostPlace = 1'000'000'000;

/// A number from 1; 0 for what is none.
std::size_t numberOf(std::string_view text) {
    text = trimBlanks(text);
    const bool isNumber = !text.empty() && std::all_of(text.begin(), text.end(), isDigit);
    return isNumber ? static_cast<std::size_t>(std::min(leadingInteger(text), kMostPlace)) : 0;
}

void store(ImportRow& row, std::size_t field, std::string_view value) {
    std::string text(trimBlanks(value));
    toStoredForm(text);
    row.record[field] = std::move(text);
}

/// What is wrong with a layout is reported here, unless nobody is to be asked.
class Report {
  public:
    Report(const Messages& messages, UserInterface* parent, const ImportInput& input, bool isQuiet)
        : messages_(messages),
          parent_(isQuiet ? nullptr : parent),
          input_(input),
          isQuiet_(isQuiet) {}

    [[nodiscard]] const ImportInput& input() const { return input_; }
    [[nodiscard]] const Messages& messages() const { return messages_; }
    [[nodiscard]] UserInterface* parent() const { return parent_; }

    bool noName() {
        messages_.show(parent_, 425, title::kError, kErrorBox);
        return false;
    }
    bool noFields() {
        messages_.show(parent_, 419, title::kNote, kErrorBox);
        return false;
    }
    bool noSize(std::size_t field, std::size_t start) {
        messages_.show(parent_, 421, title::kError, kErrorBox, importRowOf(field, input_.version),
                       start);
        return false;
    }
    bool noColumn(const std::string& name) {
        messages_.show(parent_, 423, title::kError, kErrorBox, name);
        return false;
    }
    bool noText(const DbaseColumn& column) {
        showBox(parent_,
                formatPrintf("Unable to import column '%s' of the Dbase file. Its type '%s' is "
                             "none of C, N, F, D and L.",
                             column.name, std::string(1, column.type)),
                "ERROR: Unable To Import Dbase File");
        return false;
    }

    void missing(const ImportReference& reference) {
        const auto number = numberOf(reference.first);
        missing_ += "Field #" +
                    (number > 0 ? std::to_string(number) : "'" + reference.first + "'") + " " +
                    std::string(mdbFields()[reference.field].label) + "\n";
    }
    /// Whether the import goes on without the fields that are missing.
    bool mayGoOn(std::size_t count) {
        return missing_.empty() || isQuiet_ ||
               messages_.show(parent_, 420, title::kWarning, kYesNoBox, count, missing_) ==
                   Button::Yes;
    }

  private:
    const Messages& messages_;
    UserInterface* parent_;
    const ImportInput& input_;
    bool isQuiet_;
    std::string missing_;
};

// --- dBase --------------------------------------------------------------------------------

class DbaseSource : public ImportSource {
  public:
    explicit DbaseSource(const Messages& messages) : table_(messages) {}

    bool open(Report& report) {
        if (!table_.open(report.parent(), report.input().path)) {
            return false;
        }
        for (const auto& reference : report.input().layout.references) {
            const std::string name(trimBlanks(reference.first));
            if (name.empty()) {
                continue;
            }
            const int column = table_.columnIndexByName(name);
            if (column < 0) {
                return report.noColumn(name);
            }
            const auto& at = table_.columns()[static_cast<std::size_t>(column)];
            if (!isDbaseTextType(at.type)) {
                return report.noText(at);
            }
            places_.push_back({reference.field, static_cast<std::size_t>(column)});
        }
        return true;
    }

    bool next(ImportRow& row) override {
        if (row_ >= table_.rowCount()) {
            return false;
        }
        row = {};
        for (const auto& place : places_) {
            bool isDeleted = false;
            const auto text =
                table_.readCell(nullptr, row_, static_cast<int>(place.at), &isDeleted);
            if (!text) {
                status_ = {table_.path(), EIO};
                return false;
            }
            row.skip = isDeleted ? ImportSkip::Deleted : ImportSkip::None;
            store(row, place.field, *text);
        }
        row.number = ++row_;
        return true;
    }
    [[nodiscard]] double percent() const override {
        return table_.rowCount() > 0
                   ? 100.0 * static_cast<double>(row_) / static_cast<double>(table_.rowCount())
                   : 0;
    }
    [[nodiscard]] IoStatus status() const override { return status_; }

  private:
    DbaseTable table_;
    std::vector<Place> places_;
    std::int64_t row_ = 0;
    IoStatus status_;
};

// --- text ---------------------------------------------------------------------------------

class TextSource : public ImportSource {
  public:
    [[nodiscard]] double percent() const override { return lines_.percent(); }
    [[nodiscard]] IoStatus status() const override {
        const auto& status = lines_.status();
        return status.ok() ? IoStatus() : IoStatus(path_, status.code());
    }

  protected:
    bool openFile(const Report& report) {
        path_ = report.input().path;
        return openFileChecked(report.parent(), path_, source_);
    }

    std::string path_;
    ByteSource source_;
    LineReader lines_{source_};
    std::vector<Place> places_;
    std::int64_t line_ = 0;
};

class DelimitedSource : public TextSource {
  public:
    bool open(Report& report) {
        const auto& layout = report.input().layout;
        delimiter_ = layout.delimiter;
        if (!openFile(report)) {
            return false;
        }
        hasRow_ = takeDelimited(lines_, delimiter_, fields_);
        const auto count = fields_.size();
        if (count < 1) {
            return report.noFields();
        }
        for (const auto& reference : layout.references) {
            if (trimBlanks(reference.first).empty()) {
                continue;
            }
            const auto number = fieldOf(reference, layout.hasHeader);
            if ((number == 0 || number > count) && reference.field == mdbfield::kName) {
                return report.noName();
            }
            if (number == 0 || number > count) {
                report.missing(reference);
            }
            if (number > 0) {
                places_.push_back({reference.field, number - 1});
            }
        }
        if (layout.hasHeader) {
            hasRow_ = false;
            ++line_;
        }
        return report.mayGoOn(count);
    }

    bool next(ImportRow& row) override {
        if (!hasRow_ && !takeDelimited(lines_, delimiter_, fields_)) {
            return false;
        }
        hasRow_ = false;
        row = {};
        row.number = ++line_;
        row.skip = fields_.empty() ? ImportSkip::Blank : ImportSkip::None;
        for (const auto& place : places_) {
            if (place.at < fields_.size()) {
                store(row, place.field, fields_[place.at]);
            }
        }
        return true;
    }

  private:
    /// The number of a field from 1, or 0: by its name in the header, else by its number.
    [[nodiscard]] std::size_t fieldOf(const ImportReference& reference, bool hasHeader) const {
        const auto found = std::find_if(fields_.begin(), fields_.end(), [&](const auto& name) {
            return equalsIgnoreCase(name, trimBlanks(reference.first));
        });
        return hasHeader && found != fields_.end()
                   ? static_cast<std::size_t>(found - fields_.begin()) + 1
                   : numberOf(reference.first);
    }

    char delimiter_ = ',';
    std::vector<std::string> fields_;
    bool hasRow_ = false;  ///< the first line was read for its fields
};

class FixedSource : public TextSource {
  public:
    bool open(Report& report) {
        if (!openFile(report)) {
            return false;
        }
        for (const auto& reference : report.input().layout.references) {
            const auto start = numberOf(reference.first);
            const auto size = numberOf(reference.second);
            if (start > 0 && size == 0) {
                return report.noSize(reference.field, start);
            }
            if (start > 0) {
                places_.push_back({reference.field, start, size});
            }
        }
        return true;
    }

    bool next(ImportRow& row) override {
        if (lines_.ahead(0) == nullptr) {
            return false;
        }
        const auto line = lines_.take();
        row = {};
        row.number = ++line_;
        if (trimBlanks(line).empty()) {
            row.skip = ImportSkip::Blank;
            return true;
        }
        for (const auto& place : places_) {
            const auto value = cutColumns(line, place.at, place.size);
            if (!value) {
                row.skip = ImportSkip::TooShort;
            } else {
                store(row, place.field, *value);
            }
        }
        return true;
    }
};

std::unique_ptr<ImportSource> openWith(Report& report) {
    const auto& layout = report.input().layout;
    const auto* const name = layout.referenceOf(mdbfield::kName);
    const bool isNamed = name != nullptr && !trimBlanks(name->first).empty() &&
                         (layout.kind != ImportKind::Fixed || numberOf(name->first) > 0);
    if (!isNamed) {
        report.noName();
        return nullptr;
    }
    const auto opened = [&](auto source) -> std::unique_ptr<ImportSource> {
        return source->open(report) ? std::move(source) : nullptr;
    };
    switch (layout.kind) {
        case ImportKind::Dbase:
            return opened(std::make_unique<DbaseSource>(report.messages()));
        case ImportKind::Delimited:
            return opened(std::make_unique<DelimitedSource>());
        case ImportKind::Fixed:
            break;
    }
    return opened(std::make_unique<FixedSource>());
}

}  // namespace

std::unique_ptr<ImportSource> openImport(const Messages& messages, UserInterface* parent,
                                         const ImportInput& input) {
    Report report(messages, parent, input, false);
    return openWith(report);
}

std::unique_ptr<ImportSource> openImportQuietly(const Messages& messages,
                                                const ImportInput& input) {
    Report report(messages, nullptr, input, true);
    return openWith(report);
}

std::vector<std::string> importNames(const Messages& messages, const std::string& path,
                                     ImportKind kind, char delimiter) {
    std::vector<std::string> names;
    if (kind == ImportKind::Dbase) {
        DbaseTable table(messages);
        if (table.open(nullptr, path)) {
            for (const auto& column : table.columns()) {
                names.push_back(column.name);
            }
        }
    } else if (ByteSource source; kind == ImportKind::Delimited && source.open(path).ok()) {
        LineReader lines(source);
        (void)takeDelimited(lines, delimiter, names);
    }
    return names;
}

void showDbaseFields(const Messages& messages, UserInterface* parent, const std::string& path) {
    DbaseTable table(messages);
    if (!table.open(parent, path)) {
        return;
    }
    const auto log = messages.logPath();
    auto text = formatPrintf("Dbase File: %s\nNumber of columns in this database: %d\n\n", path,
                             table.columnCount());
    for (int column = 0; column < table.columnCount(); ++column) {
        text += formatPrintf("#%d:\t%s\n", column + 1,
                             table.columns()[static_cast<std::size_t>(column)].name);
    }
    if (const auto status = replaceWorkingFile(log, text); !status.ok()) {
        reportUnableToOpen(parent, status);
        return;
    }
    messages.showDialog(parent, "Database Contents", formatPrintf("Dbase File: %s", path), log);
}

}  // namespace kavu
