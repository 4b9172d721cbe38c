// The commands that an import writes, and what of the document has become part of one.
#pragma once

#include "vocabulary/Field.h"
#include "xml/XmlDocument.h"
#include "xml/bridge/BridgeValues.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace kavu {

/// Texts of a document that no command holds, those of one element together.
struct XmlLeftOut {
    std::string path;  ///< of the element or attribute, as "/Tmats/DataSource/@Name"
    std::string text;  ///< of the first one
    std::size_t count = 0;
};

class ImportOutput {
  public:
    explicit ImportOutput(XmlDialect dialect) : dialect_(dialect) {}

    /// Writes "prefix\code:value;". Nothing is written without a value.
    void write(std::string_view prefix, std::string_view code, std::string_view value);
    /// The same for a text of the document: the text as a field has it, which may be none.
    void writeText(std::string_view prefix, const Field& field, std::string_view code,
                   XmlNode element, std::string_view attribute = {});

    [[nodiscard]] XmlDialect dialect() const { return dialect_; }
    [[nodiscard]] const std::string& text() const { return text_; }

    /// The text of an element has become part of a command, with all in it; or an attribute has.
    void markRead(XmlNode element, std::string_view attribute = {});
    /// What of a document has not, in the order of the document.
    [[nodiscard]] std::vector<XmlLeftOut> leftOut(XmlNode root) const;

    /// Commands with a ";" in their text, and the code of the first.
    [[nodiscard]] std::size_t semicolons() const { return semicolons_; }
    [[nodiscard]] const std::string& firstSemicolon() const { return firstSemicolon_; }

  private:
    XmlDialect dialect_;
    std::string text_;
    std::unordered_set<const void*> read_;
    std::size_t semicolons_ = 0;
    std::string firstSemicolon_;
};

/// The text of an element as it stands, or that of an attribute.
[[nodiscard]] std::string textOfXml(XmlNode element, std::string_view attribute = {});
/// Ends the prefix of a name, which stands for its namespace.
inline constexpr char kNamespaceEnd = ':';
/// The name of an element or attribute without its namespace.
[[nodiscard]] std::string_view localName(std::string_view name);
/// The attribute of this local name, or null.
[[nodiscard]] pugi::xml_attribute attributeOf(XmlNode element, std::string_view name);

/// What a field makes of a text of the document; empty if it has no command.
[[nodiscard]] std::string valueFromXml(const Field& field, std::string_view text,
                                       XmlDialect dialect);

}  // namespace kavu
