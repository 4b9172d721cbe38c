#include "xml/bridge/write/XmlLosses.h"

#include "core/command/CommandPath.h"

namespace kavu {

void XmlLosses::add(std::string_view code) {
    ++total_;
    std::string_view field = afterHead(code);
    if (const auto path = parseField(field)) {
        field = path->stem;
    }
    std::string key(code.substr(0, 1));
    key += '\\';
    key += field;
    const auto place = places_.try_emplace(key, list_.size()).first->second;
    if (place == list_.size()) {
        list_.push_back({std::move(key), std::string(code), 0});
    }
    ++list_[place].count;
}

}  // namespace kavu
