#include "xml/XmlWriter.h"

#include "core/text/Markup.h"
#include "core/text/Text.h"

#include <algorithm>
#include <string_view>

namespace kavu {

namespace {

constexpr std::string_view kBlank = " \t\r\n";

/// The entity for a character, empty if it stands for itself. A carriage return that is written
/// as it is would be read as a line feed, and in an attribute a line feed as a blank.
std::string_view entityFor(char c, bool isAttribute) {
    switch (c) {
        case '\r':
            return "&#13;";
        case '"':
            return isAttribute ? markupEntity(c) : "";
        case '\n':
            return isAttribute ? "&#10;" : "";
        case '\t':
            return isAttribute ? "&#9;" : "";
        default:
            return markupEntity(c);
    }
}

bool isBlank(std::string_view text) {
    return text.find_first_not_of(kBlank) == std::string_view::npos;
}

/// True for an element in which there is white space and nothing else.
bool holdsBlankAlone(pugi::xml_node element) {
    const auto children = element.children();
    return std::all_of(children.begin(), children.end(), isBlankXmlText);
}

class Writer {
  public:
    std::string write(const pugi::xml_document& document) {
        for (const auto node : document.children()) {
            writeNode(node, 0, false);
            text_ += '\n';
        }
        return std::move(text_);
    }

  private:
    void escape(std::string_view text, bool isAttribute) {
        for (const char c : text) {
            if (const auto entity = entityFor(c, isAttribute); entity.empty()) {
                text_ += c;
            } else {
                text_ += entity;
            }
        }
    }

    void writeAttributes(pugi::xml_node node) {
        for (const auto attribute : node.attributes()) {
            text_ += ' ';
            text_ += attribute.name();
            text_ += "=\"";
            escape(attribute.value(), true);
            text_ += '"';
        }
    }

    void writeNode(pugi::xml_node node, std::size_t depth, bool isInline) {
        switch (node.type()) {
            case pugi::node_element:
                writeElement(node, depth, isInline);
                break;
            case pugi::node_pcdata:
                escape(node.value(), false);
                break;
            case pugi::node_cdata:
                text_ += "<![CDATA[" + replaceAll(node.value(), "]]>", "]]]]><![CDATA[>") + "]]>";
                break;
            case pugi::node_comment:
                text_ += "<!--" + std::string(node.value()) + "-->";
                break;
            case pugi::node_pi:
                text_ += "<?" + std::string(node.name());
                text_ += *node.value() == '\0' ? "" : " " + std::string(node.value());
                text_ += "?>";
                break;
            case pugi::node_declaration:
                text_ += "<?" + std::string(node.name());
                writeAttributes(node);
                text_ += "?>";
                break;
            default:
                break;
        }
    }

    void writeElement(pugi::xml_node element, std::size_t depth, bool isInline) {
        const std::string name = element.name();
        text_ += '<' + name;
        writeAttributes(element);
        if (element.first_child().empty() && *element.value() == '\0') {
            const bool isRoot = element.parent().type() == pugi::node_document;
            text_ += isRoot ? ">\n</" + name + '>' : "/>";
            return;
        }
        text_ += '>';
        writeContent(element, depth,
                     isInline || holdsXmlText(element) || holdsBlankAlone(element) ||
                         !element.attribute("xml:space").empty());
        text_ += "</" + name + '>';
    }

    void writeContent(pugi::xml_node element, std::size_t depth, bool isInline) {
        if (isInline) {
            escape(element.value(), false);
        }
        for (const auto child : element.children()) {
            if (isInline) {
                writeNode(child, depth + 1, true);
            } else if (!isBlankXmlText(child)) {
                startLine(depth + 1);
                writeNode(child, depth + 1, false);
            }
        }
        if (!isInline) {
            startLine(depth);
        }
    }

    void startLine(std::size_t depth) {
        text_ += '\n';
        text_.append(depth, '\t');
    }

    std::string text_;
};

void appendTextOf(pugi::xml_node element, std::string& text) {
    const bool keepsBlanks = holdsXmlText(element) || holdsBlankAlone(element);
    if (keepsBlanks) {
        text += element.value();
    }
    for (const auto child : element.children()) {
        if (child.type() == pugi::node_element) {
            appendTextOf(child, text);
        } else if (isXmlText(child) && (keepsBlanks || !isBlankXmlText(child))) {
            text += child.value();
        }
    }
}

}  // namespace

bool isXmlText(pugi::xml_node node) {
    return node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata;
}

bool isBlankXmlText(pugi::xml_node node) {
    return node.type() == pugi::node_pcdata && isBlank(node.value());
}

bool holdsXmlText(pugi::xml_node element) {
    const auto children = element.children();
    return !isBlank(element.value()) ||
           std::any_of(children.begin(), children.end(), [](pugi::xml_node child) {
               return isXmlText(child) && !isBlankXmlText(child);
           });
}

std::string xmlTextOf(pugi::xml_node element) {
    std::string text;
    appendTextOf(element, text);
    return text;
}

std::string writeXml(const pugi::xml_document& document, XmlLineEnd lineEnd) {
    auto text = Writer().write(document);
    return lineEnd == XmlLineEnd::Lf ? text : replaceAll(text, "\n", "\r\n");
}

}  // namespace kavu
