#include "gallery/Screenshots.h"

#include <algorithm>
#include <cassert>

namespace kavu {

void ScreenshotList::add(std::string name,
                         std::function<std::unique_ptr<QWidget>(ScreenshotStage&)> make) {
    assert(std::none_of(entries_.begin(), entries_.end(),
                        [&](const Screenshot& entry) { return entry.name == name; }));
    entries_.push_back({std::move(name), std::move(make)});
}

void ScreenshotList::addSheet(
    const std::vector<std::string>& names,
    const std::function<std::unique_ptr<PropertySheet>(ScreenshotStage&)>& make) {
    for (int i = 0; i < static_cast<int>(names.size()); ++i) {
        add(names[static_cast<std::size_t>(i)],
            [make, i](ScreenshotStage& stage) -> std::unique_ptr<QWidget> {
                auto sheet = make(stage);
                if (sheet) {
                    sheet->openFirst(i);
                }
                return sheet;
            });
    }
}

}  // namespace kavu
