// The edit of one conversion record from its sheet: a working copy that is stored as a whole
// or leaves no trace.
#pragma once

#include "core/files/ProfileFile.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kavu {

struct DocumentContext;
class ConversionStore;
class UserInterface;

class DefinitionEdit {
  public:
    /// Opens the record, which is made if there is none. Nothing if that failed, which has
    /// been reported; an empty name gives "ERROR: No measurement name".
    [[nodiscard]] static std::optional<DefinitionEdit> open(DocumentContext& context,
                                                            ConversionStore& store,
                                                            UserInterface* parent,
                                                            const std::string& name);

    [[nodiscard]] const std::string& name() const { return name_; }
    /// True if the record was never edited before.
    [[nodiscard]] bool wasTemplate() const { return wasTemplate_; }

    /// A field of the working copy with real line breaks, and without trailing blanks.
    [[nodiscard]] std::string value(std::string_view code, std::string_view otherwise = {}) const;
    using Values = std::vector<std::pair<std::string, std::string>>;
    /// Stores fields in the working copy; an empty value removes its key.
    bool setValues(UserInterface* parent, const Values& values);
    /// The rows of a list: its count, then the items of each row by their codes. Rows behind the
    /// count are shown as well, up to the `most` that the list can have.
    [[nodiscard]] std::vector<std::vector<std::string>> rows(
        std::string_view countCode, std::span<const std::string_view> codes, int most = 0) const;
    /// Writes the count and the rows, and removes those left of a longer list, of `most` rows or
    /// fewer.
    bool setRows(UserInterface* parent, std::string_view countCode,
                 std::span<const std::string_view> codes,
                 const std::vector<std::vector<std::string>>& rows, int most = 0);

    /// The working copy as it is now.
    [[nodiscard]] ProfileFile copy() const;
    /// The edition of the document, which decides the fields of the record.
    [[nodiscard]] int edition() const;
    [[nodiscard]] std::string comment() const;
    bool setComment(UserInterface* parent, std::string text);

    /// Sets "CRT" to the present date for an edit of the page of EU information, unless it
    /// was set by hand.
    bool stampRelease(UserInterface* parent, bool setByHand);

    enum class Import { SameType, OtherType, NoSource, Failed };
    /// Takes all values and the comment of another record into the working copy, and
    /// remembers its name for the next time.
    Import importValues(UserInterface* parent, const std::string& source);

    /// OK: marks the record as changed, trims its sample rate if rates are checked, and
    /// replaces it by the working copy. The document counts as changed.
    bool store(UserInterface* parent);
    /// Cancel: the record stays as it was, and one that was only a template is deleted.
    bool cancel(UserInterface* parent);

  private:
    DefinitionEdit(DocumentContext& context, ConversionStore& store, std::string name,
                   bool wasTemplate)
        : context_(&context), store_(&store), name_(std::move(name)), wasTemplate_(wasTemplate) {}

    [[nodiscard]] std::string workingPath() const;
    bool report(UserInterface* parent, const IoStatus& status, std::string_view action) const;
    bool removeWorkingCopy(UserInterface* parent) const;

    DocumentContext* context_;
    ConversionStore* store_;
    std::string name_;
    bool wasTemplate_;
};

/// The present date and time in the format of "CRT".
[[nodiscard]] std::string releaseStamp(const DocumentContext& context);

/// The records that values can be imported from: all but the one that is edited. If there
/// are none message 435 ("no other measurements") is shown. `preselected` gets the name used
/// last, if it is among them.
[[nodiscard]] std::vector<std::string> importSources(DocumentContext& context,
                                                     ConversionStore& store, UserInterface* parent,
                                                     const std::string& name,
                                                     std::string* preselected = nullptr);

// --- Defaults for new records ------------------------------------------------------------

/// Asks with message 437 ("save ... values as defaults") and stores the first three
/// letters of both texts in `CBFM` and `CDCT`.
bool saveTypeDefaults(DocumentContext& context, UserInterface* parent, std::string_view format,
                      std::string_view type);
void saveLinkTypeDefault(DocumentContext& context, std::string_view linkType);
void saveClassificationDefault(DocumentContext& context, std::string_view classification);
/// `CPOC1` to `CPOC4`
void saveContactDefaults(DocumentContext& context, std::span<const std::string> contact);

// --- The list of all records ---------------------------------------------------------------

struct DefinitionRow {
    std::string measurement;
    std::string type;  ///< display text
};
/// All records in store order, or those of one type, by its display text. "All Measurements"
/// and an empty text are no filter.
[[nodiscard]] std::vector<DefinitionRow> definitionRows(DocumentContext& context,
                                                        ConversionStore& store,
                                                        std::string_view filter);
/// "All Measurements", then every type that the edition knows.
[[nodiscard]] std::vector<std::string> definitionFilters(int edition);
/// Asks with message 82 ("Are You Sure?") and deletes the record; the document counts as
/// changed. `selection`, an index into the rows, moves to the row that follows.
bool deleteDefinitionRow(DocumentContext& context, ConversionStore& store, UserInterface* parent,
                         std::vector<DefinitionRow>& rows, std::size_t& selection);

/// Asks with message 118 ("permanently delete the EU definitions") and deletes the
/// record; the document counts as changed.
bool deleteDefinitionAsked(DocumentContext& context, ConversionStore& store, UserInterface* parent,
                           const std::string& name);
/// Asks with message 436 ("rename the EU definition") and for the new name, and renames the
/// record, but nothing in the streams. An empty name is refused with message 326 ("enter a
/// measurement name"), a semi-colon with 402, a name that another record has with a text.
/// Returns the new name, or nothing.
std::optional<std::string> renameDefinitionAsked(DocumentContext& context, ConversionStore& store,
                                                 UserInterface* parent, const std::string& name);

// --- Strings of the comment ------------------------------------------------------------------

struct CommentString {
    bool enabled = true;
    bool inReports = true;
    std::string text;
    std::string value;  ///< default

    bool operator==(const CommentString&) const = default;
};
[[nodiscard]] std::vector<CommentString> readCommentStrings(const DocumentContext& context);
/// Replaces the whole section.
void writeCommentStrings(DocumentContext& context, std::span<const CommentString> strings);
/// The comment of a new record: a line for each enabled string, with its default value.
[[nodiscard]] std::string defaultComment(std::span<const CommentString> strings);
/// What follows a string's text on its line of a comment; empty if it is missing.
[[nodiscard]] std::string commentStringValue(std::string_view comment, std::string_view text);

}  // namespace kavu
