// Profile files: what is written is read the same, look-ups find what a search from the
// front finds, and edits have the same result as in a model without an index.
#include "../tests/support/ProfileModel.h"
#include "Check.h"
#include "Choices.h"
#include "core/files/ProfileFile.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace {

using namespace kavu;

std::string_view withoutOuterBlanks(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) {
        text.remove_prefix(1);
    }
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) {
        text.remove_suffix(1);
    }
    return text;
}

/// The section that a search from the front finds.
const ProfileFile::Section* search(const ProfileFile& profile, std::string_view name, bool exact) {
    const auto& sections = profile.sections();
    for (std::size_t i = 1; i < sections.size(); ++i) {
        if (exact ? sections[i].name() == name : equalsIgnoreCase(sections[i].name(), name)) {
            return &sections[i];
        }
    }
    return exact ? search(profile, name, false) : nullptr;
}

void checkLookUps(const ProfileFile& profile) {
    std::size_t tried = 0;
    for (const auto& section : profile.sections()) {
        for (const auto& line : section.lines()) {
            if (line.key.empty() || ++tried > 200) {
                continue;
            }
            const ProfileFile::Line* first = nullptr;
            for (const auto& other : section.lines()) {
                if (first == nullptr && equalsIgnoreCase(other.key, line.key)) {
                    first = &other;
                }
            }
            KAVU_CHECK(section.find(lowerAscii(line.key)) == withoutOuterBlanks(first->text));
        }
        const auto* const found = search(profile, section.name(), true);
        KAVU_CHECK(profile.hasSection(section.name()) == (found != nullptr && found->hasKeys()));
        KAVU_CHECK(profile.containsExactly(section.name()) ==
                   (found != nullptr && found->name() == section.name()));
    }
}

void checkText(std::string_view text, ProfileFile::LineEnd lineEnd) {
    ProfileFile first("", lineEnd);
    first.parse(text);
    const auto written = first.serialise();
    KAVU_CHECK(written.size() == first.serialisedSize());
    ProfileFile second("", lineEnd);
    second.parse(written);
    KAVU_CHECK(test::sameSections(first, second));
    KAVU_CHECK(second.serialise() == written);
    checkLookUps(first);
}

void checkEdits(fuzz::Choices choices) {
    static const std::string kSections[] = {"a", "A", "b", "[kavu]", "x]", "c "};
    ProfileFile profile("");
    test::ProfileModel model;
    while (!choices.atEnd()) {
        const auto section = choices.below(8) == 0 ? choices.text(3) : choices.oneOf(kSections);
        const auto key =
            choices.below(8) == 0 ? choices.text(3) : "k" + std::to_string(choices.below(60));
        const auto step = choices.below(16);
        if (step == 0) {
            profile.removeSection(section);
            model.removeSection(section);
        } else if (step == 1) {
            const auto& name = choices.oneOf(kSections);
            KAVU_CHECK(profile.renameSection(section, name) == model.rename(section, name));
        } else if (step == 2 && ProfileFile::canBeSection(section)) {
            profile.appendSection(section);
            model.append(section);
        } else if (step < 5) {
            profile.removeKey(section, key);
            model.removeKey(section, key);
        } else {
            const auto value = choices.text(5);
            const bool held = ProfileFile::canBeSection(section) && ProfileFile::canBeKey(key) &&
                              ProfileFile::canBeValue(value);
            KAVU_CHECK(profile.setValue(section, key, value) == held);
            if (held) {
                model.set(section, key, value);
            }
        }
        const auto expected = model.value(section, key);
        const auto actual = profile.value(section, key);
        KAVU_CHECK(actual.has_value() == expected.has_value());
        KAVU_CHECK(!actual || *actual == withoutOuterBlanks(*expected));
    }
    KAVU_CHECK(profile.sectionNames() == model.sectionNames());
    KAVU_CHECK(profile.serialise() == model.text());
    KAVU_CHECK(profile.serialisedSize() == model.text().size());
    checkText(model.text(), ProfileFile::LineEnd::CrLf);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    checkText(text, ProfileFile::LineEnd::CrLf);
    checkText(text, ProfileFile::LineEnd::Lf);
    checkEdits(fuzz::Choices(data, size));
    return 0;
}
