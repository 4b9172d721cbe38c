// What becomes of the values of a TMATS file on their way to XML, and what was wrong with them.
#pragma once

#include "vocabulary/Field.h"
#include "xml/bridge/write/XmlValueText.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

/// A value that no text of the schema stands for.
struct XmlBadValue {
    std::string description;
    std::string value;  ///< as the file has it
};

class XmlValues {
  public:
    explicit XmlValues(XmlDialect dialect) : dialect_(dialect) {}

    [[nodiscard]] XmlDialect dialect() const { return dialect_; }
    [[nodiscard]] bool isSchema() const { return dialect_ == XmlDialect::Schema; }

    /// The text of an element, escaped. `code` is that of the command, for a value that is bad;
    /// `element` its name. Empty for a date that is none.
    [[nodiscard]] std::string text(const Field& field, std::string_view element,
                                   std::string_view value, std::string_view code);
    /// The text of a choice; the value itself, which is then bad by this description, if the table
    /// has no text for it. In the schema's dialect `kNoChoice` is then in front of it.
    [[nodiscard]] std::string choiceText(std::span<const Choice> choices, std::string_view value,
                                         const std::string& description);
    /// A text as it is, escaped.
    [[nodiscard]] std::string plain(std::string_view value) const;
    /// What the file has: without what the session has put in place of markup, and with real line
    /// breaks.
    [[nodiscard]] std::string original(std::string_view value) const;

    [[nodiscard]] const std::vector<XmlBadValue>& badValues() const { return badValues_; }
    /// The codes of dates that could not be written.
    [[nodiscard]] const std::vector<std::string>& dropped() const { return dropped_; }
    void addBadValue(std::string description, std::string value);

  private:
    [[nodiscard]] std::string_view xmlOf(const Choice& choice) const;

    XmlDialect dialect_;
    std::vector<XmlBadValue> badValues_;
    std::vector<std::string> dropped_;
};

}  // namespace kavu
