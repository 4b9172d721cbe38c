#include "core/command/CommandPath.h"
#include "vocabulary/Vocabularies.h"
#include "xml/bridge/read/ReadPlan.h"
#include "xml/bridge/read/XmlImport.h"

#include <map>
#include <set>

namespace kavu::test {
namespace {

/// A walk over every row of the vocabulary: a document with the element of this row alone.
class EveryRow : public XmlImport, public testing::WithParamInterface<XmlDialect> {
  protected:
    /// The element of a group with the text at the end of a path, with the source and link around.
    static std::string documentOf(char letter, std::string_view path, const std::string& text) {
        static const std::map<char, std::string> kOuter = {
            {'G', ""},
            {'T', "DataSource/TransmissionAttributes"},
            {'R', "DataSource/RecorderReproducerAttributes"},
            {'M', "DataSource/MultiplexModulationGroup"},
            {'P', "DataSource/DataLink/PCMFormatAttributes"},
            {'D', "DataSource/DataLink/PCMFormatAttributes/PCMMeasurements"},
            {'B', "DataSource/DataLink/BusAttributes"},
            {'S', "DataSource/DataLink/MessageDataAttributes"},
            {'A', "DataSource/DataLink/PAMAttributes"},
            {'C', "DataSource/DataLink/DataConversionAttributes/Measurement"},
        };
        std::string whole = "Tmats/" + kOuter.at(letter);
        whole += whole.ends_with('/') ? "" : "/";
        whole += path;
        std::string begin;
        std::string end;
        for (std::size_t at = 0; at != std::string::npos && at < whole.size();) {
            const auto slash = whole.find('/', at);
            const auto step = whole.substr(at, slash == std::string::npos ? slash : slash - at);
            at = slash == std::string::npos ? slash : slash + 1;
            if (step.starts_with('@')) {
                begin.insert(begin.size() - 1, " " + step.substr(1) + "=\"" + text + "\"");
                return begin + end;
            }
            const bool isRecord = step == "Coefficient" && letter == 'C';
            begin +=
                "<" + step +
                (step == "DataSource" && letter != 'G' ? " Type=\"" + typeOf(letter) + "\"" : "") +
                (isRecord ? " N=\"1\"" : "") + ">";
            end = "</" + step + ">" + end;
        }
        return begin + text + end;
    }
    static std::string typeOf(char letter) { return letter == 'R' ? "Storage" : "RF"; }

    /// A text of XML that the row makes a value of, and that value.
    static std::pair<std::string, std::string> sample(const Field& field, XmlDialect dialect) {
        const auto kind =
            dialect == XmlDialect::Classic ? field.kindRead.value_or(field.kind) : field.kind;
        if (kind == FieldKind::Date) {
            return {"2009-01-02", "01-02-2009"};
        }
        if (kind == FieldKind::DateTime) {
            return {"2009-01-02T03:04:05", "01-02-2009-03-04-05"};
        }
        for (const auto& choice : field.choices) {
            const auto text = dialect == XmlDialect::Schema ? schemaText(choice) : choice.xml;
            const auto value = valueForXmlText(field, text, dialect);
            if (value && text.find('&') == std::string_view::npos) {
                return {std::string(text), std::string(*value)};
            }
        }
        return {"17", "17"};
    }
    static std::string codeOf(const Field& field, XmlDialect dialect) {
        const auto code = codeFromXml(field, dialect);
        const std::vector<int> ones(static_cast<std::size_t>(indexCountOf(code)), 1);
        return fieldCode(code, ones);
    }
    /// Rows that are written by counting, or where another row says where they are.
    static bool isCounted(const Field& field) {
        return field.kind == FieldKind::Count || stemOf(field.code).ends_with("\\N") ||
               stemOf(field.code) == "AEF7" || stemOf(field.code) == "ADM8" ||
               field.code == "ADM\\MP-n" || field.code == "CO" || field.code == "NPC";
    }
};

TEST_P(EveryRow, IsReadIntoItsCommandOnceFromEachOfItsPaths) {
    const auto dialect = GetParam();
    int rows = 0;
    for (const auto& group : vocabularies()) {
        for (const auto& field : group.fields) {
            const bool isOfPage = field.code == "RI6" || field.code == "RI7";
            if (isCounted(field) || field.element.starts_with("../") ||
                (field.element == "@Name" && group.letter != 'C') ||
                (isOfPage && !field.bridgeOnly)) {
                continue;
            }
            const auto code = codeOf(field, dialect);
            for (const auto path : readPaths(field, dialect)) {
                const auto [text, value] = sample(field, dialect);
                const auto commands = importedFile(documentOf(group.letter, path, text), dialect);
                const auto number = group.letter == 'G' ? "" : "-1";
                const auto command =
                    std::string(1, group.letter) + number + "\\" + code + ":" + value + ";";
                EXPECT_TRUE(has(commands, command)) << command << " of " << path << "\n"
                                                    << commands;
                EXPECT_EQ(linesWith(commands, command), command + "\n") << path;
                EXPECT_TRUE(leftOut_.empty()) << path << " " << leftOutText(leftOut_);
                ++rows;
            }
        }
    }
    EXPECT_GT(rows, 400);
}

TEST_P(EveryRow, ThatIsNotReadIsNamedAsLeftOut) {
    const auto dialect = GetParam();
    for (const auto& group : vocabularies()) {
        for (const auto& field : group.fields) {
            const bool isRead = dialect == XmlDialect::Schema || field.isRead;
            if (isRead || isCounted(field) || field.element.empty() || field.bridgeOnly) {
                continue;
            }
            // The receive command without a number has the same element.
            if (field.list == "RNRT\\N-n-m") {
                continue;
            }
            (void)importedFile(documentOf(group.letter, field.element, "17"), dialect);
            EXPECT_EQ(leftOut_.size(), 1u) << group.letter << " " << field.code;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(InBothDialects, EveryRow,
                         testing::Values(XmlDialect::Classic, XmlDialect::Schema),
                         [](const auto& each) {
                             return each.param == XmlDialect::Classic ? "Classic" : "Schema";
                         });

}  // namespace
}  // namespace kavu::test
