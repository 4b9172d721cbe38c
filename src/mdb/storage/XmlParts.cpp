#include "mdb/storage/XmlParts.h"

#include "xml/XmlText.h"

#include <algorithm>

namespace kavu {

namespace {

enum class Tag { Start, End, Empty, Other };

/// The markup at the front of a text, which begins with '<'.
std::string_view markupAt(std::string_view text, Tag& tag) {
    tag = Tag::Other;
    const auto until = [text](std::string_view end, std::size_t from) {
        const auto at = text.find(end, from);
        return text.substr(0, at == std::string_view::npos ? text.size() : at + end.size());
    };
    const char second = text.size() > 1 ? text[1] : '\0';
    if (second == '!') {
        return text.starts_with("<!--") ? until("-->", 4) : until("]]>", 9);  // or a CDATA section
    }
    if (second == '?') {
        return until("?>", 2);
    }
    std::size_t at = 1;
    while (at < text.size() && text[at] != '>') {
        if (text[at] == '"' || text[at] == '\'') {
            at = std::min(text.find(text[at], at + 1), text.size() - 1);
        }
        ++at;
    }
    const auto markup = text.substr(0, std::min(at + 1, text.size()));
    tag = second == '/' ? Tag::End : markup.ends_with("/>") ? Tag::Empty : Tag::Start;
    return markup;
}

}  // namespace

XmlParts splitXml(std::string_view text) {
    XmlParts parts;
    std::size_t depth = 0;
    std::size_t gap = 0;    // where the next child's gap begins
    std::size_t begin = 0;  // where the child begins that is open
    std::size_t at = text.find('<');
    while (at != std::string_view::npos) {
        Tag tag{};
        const auto markup = markupAt(text.substr(at), tag);
        const auto end = at + markup.size();
        if (tag == Tag::Start || tag == Tag::Empty) {
            if (depth == 0) {
                parts.rootName = markup.substr(1, xmlNameLength(markup.substr(1)));
                parts.isClosed = tag == Tag::Empty;
                parts.head = text.substr(0, parts.isClosed ? end - 2 : end);
                gap = end;
            } else if (depth == 1) {
                begin = at;
            }
            depth += tag == Tag::Start ? 1 : 0;
        } else if (tag == Tag::End) {
            --depth;
        }
        const bool ended = tag == Tag::End || tag == Tag::Empty;
        if (ended && depth == 1) {
            parts.children.push_back(
                {text.substr(gap, begin - gap), text.substr(begin, end - begin)});
            gap = end;
        }
        at = text.find('<', end);
    }
    parts.tail = text.substr(std::min(gap, text.size()));
    return parts;
}

}  // namespace kavu
