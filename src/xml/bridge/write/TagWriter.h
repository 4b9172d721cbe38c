// The elements of an XML document as text, written as they come. Nothing is written of an element
// until it has content, so an empty group leaves no trace.
#pragma once

#include "xml/bridge/write/SchemaTree.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

class TagWriter {
  public:
    /// Takes the text of the document in pieces.
    using Sink = std::function<void(std::string_view)>;
    explicit TagWriter(Sink sink);
    TagWriter(const TagWriter&) = delete;
    TagWriter& operator=(const TagWriter&) = delete;
    /// Hands on what is left.
    ~TagWriter();

    /// A line of its own, without indent.
    void line(std::string_view text);
    /// A comment at the present level. Line feeds at the front of the text become blank lines.
    void comment(std::string_view text);

    /// Opens an element. `tag` is its name, followed by its attributes; line feeds at its front
    /// become blank lines. With `comment` a comment goes in front of it, if it is written at all.
    void open(std::string tag, std::string comment = {});
    /// Writes the start tags that are waiting.
    void writeWaiting();
    /// An element with a text, which must be escaped. One that is empty but for white space is not
    /// written, unless the tag has an attribute.
    /// `code` is that of its command, for a part that the schema is to allow.
    void value(std::string_view tag, std::string_view text, std::string_view code = {});
    /// Text on lines of its own, as it is.
    void block(std::string_view text);
    /// Closes the innermost element. Without content it is not written, unless `isKept`: then it is
    /// an empty element.
    void close(bool isKept = false);

    /// How many elements are open.
    [[nodiscard]] std::size_t depth() const { return open_.size(); }
    /// The name of the innermost open element; empty if there is none.
    [[nodiscard]] std::string_view innermost() const;
    /// True if the innermost open element has content.
    [[nodiscard]] bool isWritten() const { return open_.size() == written_; }

    /// From here to `endChecked` elements are collected, and written as far as the schema allows
    /// them. Such parts may be within each other. REQUIRES: as many elements are open at the end.
    void beginChecked();
    void endChecked(const SchemaTree& schema);

  private:
    struct Element {
        std::string tag;
        std::string comment;
    };
    void indent(std::size_t level);
    void lead(std::string_view& text);
    void writeComment(std::string_view text);
    void handOn();
    void emit(const SchemaPart& part);

    Sink sink_;
    std::string out_;
    std::vector<Element> open_;
    std::size_t written_ = 0;  ///< start tags that were written, of those that are open
    /// The elements that are open within parts that are collected; each part begins with one
    /// without a tag.
    std::vector<SchemaPart> collected_;
};

}  // namespace kavu
