// What a vocabulary table says of a command: its code, how it is shown, its limits and its
// editions. A group has one `constexpr` table of these, in the order in which its commands
// are written; its reader, writer, page, XML elements and manual page walk it.
#pragma once

#include "core/command/CommandPath.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace kavu {

enum class FieldKind { Text, Choice, Date, DateTime, Count, Digits, Comment };

/// Of `Choice::schema` and `Field::elementSchema`: the schema of IRIG 106-11 has no such thing.
inline constexpr std::string_view kNotInSchema = "-";

/// One entry of a choice. An edition of 0 is no restriction. An entry that the page and
/// XML store differently is two entries: one without `xml`, one without `text`.
struct Choice {
    std::string_view value{};  ///< as stored in the file
    std::string_view text{};   ///< as shown; empty if only XML has it and no page offers it
    std::string_view xml{};    ///< as written to XML; empty if XML does not have it
    int firstEdition = 0;
    int lastEdition = 0;
    /// As the schema of IRIG 106-11 spells it; empty if that is `xml`.
    std::string_view schema{};
    /// False for a text that the default form of XML writes, but reads as it stands.
    bool isRead = true;
};

/// The text of a choice in the schema's dialect of XML; empty if the schema does not have it.
[[nodiscard]] constexpr std::string_view schemaText(const Choice& choice) {
    if (choice.schema == kNotInSchema) {
        return {};
    }
    return choice.schema.empty() ? choice.xml : choice.schema;
}

/// What the value of a command names. One command defines a name: the row of a data source in the
/// G group, the group of a stream, the definition of a measurement. All others refer to it.
enum class Refers {
    No,
    SourceName,
    Source,
    LinkName,
    Link,         ///< gives the stream a home: it is multiplexed, recorded or embedded there
    LinkMention,  ///< follows when the link is renamed, but is no home
    OtherSource,  ///< names a source, and follows its rename only if the user agrees
    OtherLink,    ///< the same with a link; is no home
    MeasurementName,
    Measurement,
};

/// A command of a group. The rows of a list are fields with one index more than the count
/// that governs them, and name it:
///
///     {.code = "SCO\\N", .kind = FieldKind::Count, .rows = 99},
///     {.code = "SCO1-n", .label = "Number", .limit = 5, .list = "SCO\\N"},
///     {.code = "SCO2-n", .label = "Modulation Index", .limit = 4, .list = "SCO\\N"},
///
/// They follow their count in the order in which a row is written. A list within a row works
/// the same way: a count "EV\PM\N-n" with `list = "EV\\N"`, followed by fields "-n-m" with
/// `list = "EV\\PM\\N-n"`.
struct Field {
    std::string_view code{};   ///< with "-n", "-n-m" and so on where the command has indices
    std::string_view label{};  ///< as on the page; empty if the page does not show it
    std::string_view box{};    ///< title of the box of the page that holds it, or empty
    std::string_view page{};   ///< resource name of its page
    std::size_t limit = 0;     ///< characters; 0 is no limit. See `limitIn`
    FieldKind kind = FieldKind::Text;
    int firstEdition = 0;            ///< 0 is from the first
    int lastEdition = 0;             ///< 0 is still in use
    std::string_view element{};      ///< XML path that is written, relative to the group's
    std::string_view elementRead{};  ///< XML path that is read, if it differs
    std::span<const Choice> choices{};
    std::size_t limit1996 = 0;       ///< in documents of 106-96; 0 is `limit` as well
    std::size_t limit1999 = 0;       ///< in documents of 106-99; 0 is `limit` as well
    std::string_view unit{};         ///< shown after the value, as "KHz"
    std::string_view codeRead{};     ///< code that the page reads, if not `code`
    std::string_view codeToXml{};    ///< code whose value goes to XML, if not `code`
    std::string_view codeFromXml{};  ///< code that is written from XML, if not `code`
    std::string_view prompt{};       ///< title of the prompt that edits it, of a field of a list
    std::string_view list{};         ///< code of the count that governs it; empty outside of lists
    std::size_t rows = 0;            ///< of a count: the max rows of its list; 0 governs no list
    bool writesZero = false;         ///< of a count: is also written for a list without rows
    /// The value assumed for a missing command, which the next save writes; "%d" in it is the
    /// number of the row.
    std::string_view missing{};
    /// What a list shows in a cell without a value. It is never stored.
    std::string_view placeholder{};
    /// Only the XML bridge reads or writes it, no page; `code` may then also be that of a
    /// field of a page.
    bool bridgeOnly = false;
    Refers refersTo = Refers::No;  ///< what the value is a name of
    /// XML path in the schema's dialect, if it differs from `element`. A step "@Name" is an
    /// attribute; a row of a list whose path is that of its count is the text of that element.
    std::string_view elementSchema{};
    /// The default form of XML has the value as it stands, whatever the texts of its choices.
    bool isPlainInXml = false;
    /// The default form of XML reads no other path than the one that is named here; otherwise it
    /// looks at the schema's as well.
    bool readsExactly = false;
    bool isRead = true;                   ///< false if the default form of XML only writes it
    std::optional<FieldKind> kindRead{};  ///< how the default form of XML reads it, if not `kind`
};

[[nodiscard]] constexpr bool isKnownIn(int edition, int firstEdition, int lastEdition) {
    return edition >= firstEdition && (lastEdition == 0 || edition <= lastEdition);
}
[[nodiscard]] constexpr bool isKnownIn(int edition, const Field& field) {
    return isKnownIn(edition, field.firstEdition, field.lastEdition);
}
[[nodiscard]] constexpr bool isKnownIn(int edition, const Choice& choice) {
    return isKnownIn(edition, choice.firstEdition, choice.lastEdition);
}

/// The limit of a field in documents of an edition; 0 is no limit.
[[nodiscard]] constexpr std::size_t limitIn(int edition, const Field& field) {
    if (edition <= 1996 && field.limit1996 != 0) {
        return field.limit1996;
    }
    return edition == 1999 && field.limit1999 != 0 ? field.limit1999 : field.limit;
}

/// The path of a field in the schema's dialect of XML; empty if the schema does not have it.
[[nodiscard]] constexpr std::string_view schemaElement(const Field& field) {
    if (field.elementSchema == kNotInSchema) {
        return {};
    }
    return field.elementSchema.empty() ? field.element : field.elementSchema;
}

/// The same field with its XML path, and that of the schema if it differs.
[[nodiscard]] constexpr Field inXml(Field field, std::string_view element,
                                    std::string_view schema = {}) {
    field.element = element;
    field.elementSchema = schema;
    return field;
}

/// True for the count of a list of rows.
[[nodiscard]] constexpr bool governsRows(const Field& field) {
    return field.kind == FieldKind::Count && field.rows > 0;
}

}  // namespace kavu
