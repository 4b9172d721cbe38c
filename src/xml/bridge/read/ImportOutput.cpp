#include "xml/bridge/read/ImportOutput.h"

#include "core/text/Text.h"
#include "vocabulary/DGroupFields.h"
#include "xml/XmlWriter.h"

#include <algorithm>
#include <map>

namespace kavu {

namespace {

FieldKind kindOf(const Field& field, XmlDialect dialect) {
    return dialect == XmlDialect::Classic ? field.kindRead.value_or(field.kind) : field.kind;
}

std::string dateFromXml(FieldKind kind, std::string_view text, XmlDialect dialect) {
    auto date = kind == FieldKind::Date ? tmatsDate(text) : tmatsDateTime(text);
    // By the schema a text that is no date is kept.
    return date.empty() && dialect == XmlDialect::Schema ? std::string(text) : date;
}

std::string pathOf(XmlNode element) {
    std::string path;
    for (; element.type() == pugi::node_element; element = element.parent()) {
        path = "/" + std::string(localName(element.name())) + path;
    }
    return path;
}

/// An attribute that is no part of the data: a namespace, or what a parser is told.
bool isDeclaration(std::string_view name) {
    return name == "xmlns" || name.starts_with("xmlns:") || name.starts_with("xsi:") ||
           name.starts_with("xml:");
}

}  // namespace

// --- Names and texts ------------------------------------------------------------------------

std::string_view localName(std::string_view name) {
    return name.substr(name.rfind(kNamespaceEnd) + 1);
}

pugi::xml_attribute attributeOf(XmlNode element, std::string_view name) {
    for (const auto attribute : element.attributes()) {
        if (localName(attribute.name()) == name) {
            return attribute;
        }
    }
    return {};
}

std::string textOfXml(XmlNode element, std::string_view attribute) {
    return attribute.empty() ? xmlTextOf(element) : attributeOf(element, attribute).value();
}

std::string valueFromXml(const Field& field, std::string_view text, XmlDialect dialect) {
    const auto kind = kindOf(field, dialect);
    if (kind == FieldKind::Date || kind == FieldKind::DateTime) {
        return dateFromXml(kind, text, dialect);
    }
    if (isMaskElement(field.element) && equalsIgnoreCase(trim(text), kXmlFullWord)) {
        return dialect == XmlDialect::Schema ? std::string(kFullWord) : std::string();
    }
    return std::string(valueForXmlText(field, text, dialect).value_or(text));
}

// --- Commands -------------------------------------------------------------------------------

void ImportOutput::write(std::string_view prefix, std::string_view code, std::string_view value) {
    if (prefix.empty() || code.empty() || value.empty()) {
        return;
    }
    const auto begin = text_.size();
    text_.append(prefix).append("\\").append(code);
    const auto end = text_.size();
    text_.append(":").append(value).append(";\n");
    if (value.find(';') == std::string_view::npos) {
        return;
    }
    if (semicolons_++ == 0) {
        firstSemicolon_ = text_.substr(begin, end - begin);
    }
    if (dialect_ == XmlDialect::Schema) {
        std::replace(text_.begin() + static_cast<std::ptrdiff_t>(end), text_.end() - 2, ';', ',');
    }
}

void ImportOutput::writeText(std::string_view prefix, const Field& field, std::string_view code,
                             XmlNode element, std::string_view attribute) {
    const auto text = textOfXml(element, attribute);
    const auto value = valueFromXml(field, text, dialect_);
    write(prefix, code, value);
    const bool isMask = isMaskElement(field.element);
    // Of a date and time with more than its seconds not all is kept.
    const bool isShortened =
        field.kind == FieldKind::DateTime && value != text && trim(text).size() > kDateTimeWidth;
    if ((!value.empty() || isMask) && !isShortened) {
        markRead(element, attribute);
    }
}

// --- What is left out -----------------------------------------------------------------------

void ImportOutput::markRead(XmlNode element, std::string_view attribute) {
    if (attribute.empty()) {
        read_.insert(element.internal_object());
    } else {
        read_.insert(attributeOf(element, attribute).internal_object());
    }
}

std::vector<XmlLeftOut> ImportOutput::leftOut(XmlNode root) const {
    std::vector<XmlLeftOut> all;
    std::map<std::string, std::size_t> places;
    const auto add = [&](const std::string& path, const std::string& text) {
        const auto place = places.emplace(path, all.size());
        if (place.second) {
            all.push_back({path, text, 0});
        }
        ++all[place.first->second].count;
    };
    // Elements are no deeper within each other than a file may have them.
    const auto look = [&](const auto& self, XmlNode element) -> void {
        for (const auto attribute : element.attributes()) {
            const std::string_view value(attribute.value());
            if (!value.empty() && !isDeclaration(attribute.name()) &&
                !read_.contains(attribute.internal_object())) {
                add(pathOf(element) + "/@" + std::string(localName(attribute.name())),
                    std::string(value));
            }
        }
        if (read_.contains(element.internal_object())) {
            return;
        }
        const bool isMakers = localName(element.name()) == kVendorElement ||
                              localName(element.name()) == kHardwareElement;
        std::string own;
        for (const auto child : element.children()) {
            if (isXmlText(child)) {
                own += child.value();
            } else if (isMakers && child.type() == pugi::node_comment) {
                add(pathOf(element), child.value());
            } else if (child.type() == pugi::node_element) {
                self(self, child);
            }
        }
        if (!trim(own).empty()) {
            add(pathOf(element), own);
        }
    };
    look(look, root);
    return all;
}

}  // namespace kavu
