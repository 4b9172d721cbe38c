#include "xml/bridge/read/ReadPlan.h"

#include "vocabulary/CGroupFields.h"
#include "vocabulary/DGroupFields.h"
#include "vocabulary/GGroupFields.h"
#include "vocabulary/PAsyncFields.h"
#include "vocabulary/PGroupFields.h"
#include "vocabulary/SchemaElements.h"
#include "vocabulary/Vocabularies.h"

#include <algorithm>
#include <map>
#include <utility>

namespace kavu {

namespace {

using Paths = std::vector<std::string_view>;

ReadPath splitPath(std::string_view path) {
    ReadPath split;
    while (!path.empty()) {
        const auto step = path.substr(0, path.find('/'));
        path.remove_prefix(std::min(path.size(), step.size() + 1));
        if (step.starts_with('@')) {
            split.attribute = step.substr(1);
        } else {
            split.steps.push_back(step);
        }
    }
    return split;
}

/// What is left of a path below an element; null if it is not below it.
const char* below(std::string_view path, std::string_view element) {
    if (!path.starts_with(element)) {
        return nullptr;
    }
    if (element.empty() || path.size() == element.size()) {
        return path.data() + element.size();
    }
    return path[element.size()] == '/' ? path.data() + element.size() + 1 : nullptr;
}

/// The paths below one of these elements, each once.
Paths pathsBelow(const Paths& paths, const Paths& elements) {
    Paths found;
    for (const auto path : paths) {
        for (const auto element : elements) {
            if (const auto* const rest = below(path, element)) {
                const std::string_view left(
                    rest, static_cast<std::size_t>(path.data() + path.size() - rest));
                if (std::find(found.begin(), found.end(), left) == found.end()) {
                    found.push_back(left);
                }
            }
        }
    }
    return found;
}

/// What is read with something else: the name of the source or link of a group, and the columns of
/// the lists of the general group.
bool isOutside(const Field& field, char letter) {
    return field.element.starts_with("../") || (field.element == "@Name" && letter != 'C') ||
           (letter == 'G' && (field.list == kContactCount || field.list == kSourceCount));
}

bool isCount(const Field& field, char letter) {
    if (!stemOf(field.code).ends_with("\\N")) {
        return false;
    }
    const auto* const element = findSchemaElement(letter, schemaElement(field));
    return element == nullptr ? governsRows(field) : element->repeats;
}

ReadAs howOf(const Field& field, XmlDialect dialect) {
    static const std::map<std::string_view, ReadAs> kOthers = {
        {p::kMf5.code, ReadAs::SyncPattern},     {p::kAdmMp.code, ReadAs::Presence},
        {p::kAef7.code, ReadAs::Subcommutation}, {p::kAdm8.code, ReadAs::Subcommutation},
        {c::kCoTerm.code, ReadAs::Coefficients}, {c::kNpcTerm.code, ReadAs::Coefficients},
        {kContactCount, ReadAs::Contacts},       {kSourceCount, ReadAs::Sources},
    };
    if (dialect == XmlDialect::Schema &&
        (field.code == c::kMcN.code || field.code == c::kMaN.code)) {
        return ReadAs::Calibrations;
    }
    if (dialect == XmlDialect::Schema && field.element == "Subcarriers/Other") {
        return ReadAs::SingleSubcarrier;
    }
    const auto other = kOthers.find(field.code);
    return other == kOthers.end() ? ReadAs::Text : other->second;
}

/// Rows that are read together with another one.
bool isPartOfAnother(const Field& field, XmlDialect dialect) {
    constexpr std::string_view kSubcommutation = "/Subcommutation/";
    if (field.element.find(kSubcommutation) != std::string_view::npos ||
        (field.element == c::kCo.element && field.code == c::kCo.code) ||
        (field.element == c::kNpc.element && field.code == c::kNpc.code)) {
        return true;
    }
    return dialect == XmlDialect::Schema && field.code != c::kMcN.code &&
           field.code != c::kMaN.code &&
           (field.element.starts_with(c::kMcN.element) ||
            field.element.starts_with(c::kMaN.element));
}

/// Builds the tree of one group.
class PlanMaker {
  public:
    PlanMaker(char letter, XmlDialect dialect) : letter_(letter), dialect_(dialect) {}

    ReadLevel make() {
        levels_.push_back({{""}, &root_});
        const auto fields = readFields();
        for (const auto* const field : fields) {
            add(*field);
        }
        return std::move(root_);
    }

  private:
    struct Place {
        Paths paths;
        ReadLevel* level = nullptr;
    };

    /// The rows that are read, in the order in which they are written.
    [[nodiscard]] std::vector<const Field*> readFields() const {
        std::vector<const Field*> fields;
        const auto all = findVocabulary(letter_)->fields;
        for (const auto& field : all) {
            const bool isReplaced =
                std::any_of(all.begin(), all.end(), [&field](const Field& other) {
                    return other.bridgeOnly && !field.codeFromXml.empty() &&
                           other.code == field.codeFromXml;
                });
            const auto paths = readPaths(field, dialect_);
            // A track has its data link as a column, and older editions had it among the details.
            const bool isTwice =
                std::any_of(fields.begin(), fields.end(), [&](const Field* earlier) {
                    return earlier->code == field.code && readPaths(*earlier, dialect_) == paths;
                });
            if (!paths.empty() && !isReplaced && !isTwice && !isOutside(field, letter_) &&
                !isPartOfAnother(field, dialect_)) {
                fields.push_back(&field);
            }
        }
        if (letter_ == 'C') {
            std::stable_sort(fields.begin(), fields.end(), [this](const Field* a, const Field* b) {
                return order(*a) < order(*b);
            });
        }
        return fields;
    }
    [[nodiscard]] std::size_t order(const Field& field) const {
        const auto all = schemaElements(letter_);
        const auto* const element = findSchemaElement(letter_, schemaElement(field));
        return element == nullptr ? all.size() : static_cast<std::size_t>(element - all.data());
    }

    void add(const Field& field) {
        const auto paths = readPaths(field, dialect_);
        const auto how = howOf(field, dialect_);
        if (isCount(field, letter_) && how == ReadAs::Text) {
            openLevel(paths, &field);
            return;
        }
        if (governsRows(field) && how == ReadAs::Text) {
            return;  // The default form reads no more than the first row.
        }
        openLevelsOf(paths);
        auto& place = placeOf(paths);
        auto& item = itemIn(place, paths);
        item.field = &field;
        item.code = codeFromXml(field, dialect_);
        item.how = how;
    }

    /// The innermost level that one of the paths is in.
    Place& placeOf(const Paths& paths) {
        std::size_t found = 0;
        for (std::size_t i = 1; i < levels_.size(); ++i) {
            if (!pathsBelow(paths, levels_[i].paths).empty() &&
                levels_[i].paths.front().size() > levels_[found].paths.front().size()) {
                found = i;
            }
        }
        return levels_[found];
    }
    static ReadItem& itemIn(Place& place, const Paths& paths) {
        auto& item = place.level->items.emplace_back();
        for (const auto path : pathsBelow(paths, place.paths)) {
            item.paths.push_back(splitPath(path));
        }
        return item;
    }

    void openLevel(const Paths& paths, const Field* count) {
        const bool isOpen =
            std::any_of(levels_.begin() + 1, levels_.end(),
                        [&](const Place& place) { return place.paths.front() == paths.front(); });
        if (isOpen) {
            return;
        }
        auto& item = itemIn(placeOf(paths), paths);
        item.field = count;
        item.code = count == nullptr ? std::string_view() : codeFromXml(*count, dialect_);
        item.level = std::make_unique<ReadLevel>();
        levels_.push_back({paths, item.level.get()});
        addDerived(*item.level, count);
    }

    /// Opens the levels without a count that a row is in: elements that the schema repeats.
    void openLevelsOf(const Paths& paths) {
        for (const auto path : paths) {
            for (const auto& element : schemaElements(letter_)) {
                if (element.repeats && below(path, element.path) != nullptr &&
                    howOfElement(element.path) == ReadAs::Text && !hasLevel(element.path)) {
                    openLevel({element.path}, nullptr);
                }
            }
        }
    }
    [[nodiscard]] bool hasLevel(std::string_view path) const {
        return std::any_of(levels_.begin(), levels_.end(), [path](const Place& place) {
            return std::find(place.paths.begin(), place.paths.end(), path) != place.paths.end();
        });
    }
    /// How the rows of a repeated element are read that are no level of their own.
    [[nodiscard]] ReadAs howOfElement(std::string_view path) const {
        for (const auto& field : findVocabulary(letter_)->fields) {
            if (schemaElement(field) == path && howOf(field, dialect_) != ReadAs::Text) {
                return howOf(field, dialect_);
            }
        }
        return ReadAs::Text;
    }

    /// What is written for each row of a list although no element of it says so.
    void addDerived(ReadLevel& level, const Field* count) const {
        const auto derive = [this, &level](const Field& field, ReadAs how) {
            auto& item = level.items.emplace_back();
            item.field = &field;
            item.code = codeFromXml(field, dialect_);
            item.how = how;
        };
        if (count == nullptr) {
            return;
        }
        if (count->code == word_frame_field::kCount.code) {
            derive(word_frame_field::kLength, ReadAs::LocationLength);
        } else if (count->code == word_frame_field::kFragments.code) {
            derive(word_frame_field::kPosition, ReadAs::FragmentNumber);
        } else if (count->code == tagged_field::kCount.code) {
            derive(tagged_field::kPosition, ReadAs::FragmentNumber);
        }
    }

    char letter_;
    XmlDialect dialect_;
    ReadLevel root_;
    std::vector<Place> levels_;
};

}  // namespace

std::vector<std::string_view> readPaths(const Field& field, XmlDialect dialect) {
    Paths paths;
    const auto add = [&paths](std::string_view path) {
        if (!path.empty() && std::find(paths.begin(), paths.end(), path) == paths.end()) {
            paths.push_back(path);
        }
    };
    if (dialect == XmlDialect::Schema) {
        add(schemaElement(field));
        return paths;
    }
    if (!field.isRead) {
        return paths;
    }
    add(field.elementRead.empty() ? field.element : field.elementRead);
    if (!field.readsExactly && !paths.empty()) {
        add(schemaElement(field));
    }
    return paths;
}

const ReadLevel& readPlan(char letter, XmlDialect dialect) {
    static const auto kPlans = [] {
        std::map<std::pair<char, XmlDialect>, ReadLevel> plans;
        for (const auto& group : vocabularies()) {
            for (const auto each : {XmlDialect::Classic, XmlDialect::Schema}) {
                plans.emplace(std::pair(group.letter, each), PlanMaker(group.letter, each).make());
            }
        }
        return plans;
    }();
    return kPlans.at({letter, dialect});
}

}  // namespace kavu
