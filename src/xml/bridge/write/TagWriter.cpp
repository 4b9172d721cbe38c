#include "xml/bridge/write/TagWriter.h"

#include "core/text/Text.h"

#include <algorithm>
#include <utility>

namespace kavu {

namespace {

constexpr std::size_t kPiece = std::size_t{1} << 16;

std::string_view nameOf(std::string_view tag) {
    tag.remove_prefix(std::min(tag.find_first_not_of('\n'), tag.size()));
    return tag.substr(0, tag.find(' '));
}

}  // namespace

TagWriter::TagWriter(Sink sink) : sink_(std::move(sink)) {}

TagWriter::~TagWriter() {
    if (!out_.empty()) {
        sink_(out_);
    }
}

void TagWriter::indent(std::size_t level) {
    out_.append(level, '\t');
}

/// Line feeds at the front of a text become blank lines in front of its line.
void TagWriter::lead(std::string_view& text) {
    while (text.starts_with('\n')) {
        out_ += '\n';
        text.remove_prefix(1);
    }
}

void TagWriter::handOn() {
    if (out_.size() >= kPiece) {
        sink_(out_);
        out_.clear();
    }
}

void TagWriter::line(std::string_view text) {
    out_ += text;
    out_ += '\n';
    handOn();
}

void TagWriter::comment(std::string_view text) {
    writeWaiting();
    writeComment(text);
    handOn();
}

void TagWriter::writeComment(std::string_view text) {
    if (text.empty()) {
        return;
    }
    lead(text);
    indent(written_);
    out_ += "<!-- ";
    out_ += text;
    out_ += " -->\n";
}

void TagWriter::open(std::string tag, std::string comment) {
    if (!collected_.empty()) {
        collected_.push_back({.tag = std::move(tag), .comment = std::move(comment)});
        return;
    }
    open_.push_back({std::move(tag), std::move(comment)});
}

void TagWriter::writeWaiting() {
    while (written_ < open_.size()) {
        const auto& element = open_[written_];
        writeComment(element.comment);
        std::string_view tag = element.tag;
        lead(tag);
        indent(written_);
        out_ += '<';
        out_ += tag;
        out_ += ">\n";
        ++written_;
    }
}

void TagWriter::value(std::string_view tag, std::string_view text, std::string_view code) {
    const bool isEmpty = trim(text).empty();
    if (isEmpty && tag.find('=') == std::string_view::npos) {
        return;
    }
    if (!collected_.empty()) {
        collected_.back().inside.push_back({.tag = std::string(tag),
                                            .text = std::string(text),
                                            .code = std::string(code),
                                            .isValue = true});
        return;
    }
    writeWaiting();
    indent(written_);
    out_ += '<';
    out_ += tag;
    if (isEmpty) {
        out_ += " />\n";
    } else {
        out_ += '>';
        out_ += text;
        out_ += "</";
        out_ += nameOf(tag);
        out_ += ">\n";
    }
    handOn();
}

void TagWriter::block(std::string_view text) {
    writeWaiting();
    out_ += text;
    if (!text.ends_with('\n')) {
        out_ += '\n';
    }
    handOn();
}

void TagWriter::close(bool isKept) {
    if (!collected_.empty()) {
        auto part = std::move(collected_.back());
        collected_.pop_back();
        part.isKept = isKept;
        if (isKept || !part.inside.empty()) {
            collected_.back().inside.push_back(std::move(part));
        }
        return;
    }
    auto element = std::move(open_.back());
    open_.pop_back();
    if (written_ > open_.size()) {
        --written_;
        indent(written_);
        out_ += "</";
        out_ += nameOf(element.tag);
        out_ += ">\n";
        handOn();
        return;
    }
    if (!isKept) {
        return;
    }
    writeWaiting();
    writeComment(element.comment);
    std::string_view tag = element.tag;
    lead(tag);
    indent(written_);
    out_ += '<';
    out_ += tag;
    out_ += " />\n";
    handOn();
}

std::string_view TagWriter::innermost() const {
    return open_.empty() ? std::string_view{} : nameOf(open_.back().tag);
}

void TagWriter::beginChecked() {
    collected_.emplace_back();
}

void TagWriter::endChecked(const SchemaTree& schema) {
    auto part = std::move(collected_.back());
    collected_.pop_back();
    if (!schema.check(part)) {
        return;
    }
    for (auto& inner : part.inside) {
        if (collected_.empty()) {
            emit(inner);
        } else {
            inner.isChecked = true;
            collected_.back().inside.push_back(std::move(inner));
        }
    }
}

void TagWriter::emit(const SchemaPart& part) {
    if (part.isValue) {
        if (part.isKept && part.text.empty()) {
            open(part.tag);
            close(true);
        } else {
            value(part.tag, part.text);
        }
        return;
    }
    open(part.tag, part.comment);
    for (const auto& inner : part.inside) {
        emit(inner);
    }
    close(part.isKept);
}

}  // namespace kavu
