#include "sdk/TranslatorConfiguration.h"

#include "core/files/FileIo.h"
#include "core/files/ProfileFile.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"

#include <utility>

namespace kavu {

namespace {

constexpr std::string_view kSettings = "translat.ini";
constexpr std::string_view kVendorFile = "translat.dat";
constexpr std::string_view kItemFile = "[trans]KAVUTRN1.TMP";
constexpr std::string_view kItemCopy = "[trans]KAVUTRN2.TMP";
constexpr std::string_view kSection = "Translator";
constexpr std::string_view kVersionKey = "Version";
constexpr std::string_view kVersion = "Version 4.00";
constexpr std::string_view kEditorKey = "EditorName";
/// Gives the file to the program that the desktop has for texts.
constexpr std::string_view kEditor = "xdg-open";
constexpr std::string_view kStreamsKey = "ProcessAllStreams";

std::string textOf(const char* text) {
    return text == nullptr ? std::string() : std::string(text);
}

}  // namespace

TranslatorConfiguration::TranslatorConfiguration(std::string folder,
                                                 const kavu_translator* translator,
                                                 UserInterface* parent)
    : folder_(std::move(folder)) {
    const ProfileFile settings(path(kSettings));
    editor_ = settings.value(kSection, kEditorKey, kEditor);
    allStreams_ = settings.integer(kSection, kStreamsKey, 1) != 0;
    if (translator != nullptr) {
        setStatusText(parent, std::string(translator_text::kInitializing));
        vendor_ = textOf(translator->vendor);
        readItems(*translator, parent);
        setStatusText(parent, {});
    }
}

std::string TranslatorConfiguration::path(std::string_view name) const {
    return folder_ + (folder_.ends_with('/') ? "" : "/") + std::string(name);
}

/// What is kept of a vendor is in sections that begin with its name, so that two vendors may use
/// the same names.
void TranslatorConfiguration::readItems(const kavu_translator& translator, UserInterface* parent) {
    const ProfileFile kept(path(kVendorFile));
    bool isGood = true;
    for (std::size_t i = 0; i < translator.item_count; ++i) {
        const auto& from = translator.items[i];
        Item item{textOf(from.section), textOf(from.key), textOf(from.description),
                  textOf(from.value), textOf(from.value)};
        if (!ProfileFile::canBeSection(item.section) || !ProfileFile::canBeKey(item.key) ||
            !ProfileFile::canBeValue(item.initial)) {
            isGood = false;
            continue;
        }
        item.value = kept.value(vendor_ + "/" + item.section, item.key, item.initial);
        items_.push_back(std::move(item));
    }
    if (!isGood || !kept.load().ok()) {
        showBox(parent, std::string(translator_text::kVendorError),
                std::string(translator_text::kVendorErrorTitle));
    }
}

const std::string* TranslatorConfiguration::value(std::string_view section,
                                                  std::string_view key) const {
    for (const auto& item : items_) {
        if (item.section == section && item.key == key) {
            return &item.value;
        }
    }
    return nullptr;
}

std::vector<TranslatorConfiguration::Row> TranslatorConfiguration::rows() const {
    std::vector<Row> rows{
        {std::string(translator_text::kEditorPrompt), editor_},
        {std::string(allStreams_ ? translator_text::kAllStreams : translator_text::kAskStreams),
         allStreams_ ? "1" : "0"}};
    for (const auto& item : items_) {
        rows.push_back({item.description, item.value});
    }
    if (items_.empty()) {
        rows.push_back({std::string(translator_text::kNoItems), {}, false});
    }
    return rows;
}

bool TranslatorConfiguration::edit(std::size_t row, UserInterface* parent) {
    bool isEdited = false;
    if (parent == nullptr) {
        return false;
    }
    if (row == kEditorRow) {
        isEdited = editEditor(parent);
    } else if (row == kStreamsRow) {
        const int choice = parent->chooseFromList(
            std::string(translator_text::kDescription),
            {std::string(translator_text::kAllStreams), std::string(translator_text::kAskStreams)});
        isEdited = choice >= 0 && (choice == 0) != allStreams_;
        allStreams_ = isEdited ? choice == 0 : allStreams_;
    } else if (row - kFirstItemRow < items_.size()) {
        auto& item = items_[row - kFirstItemRow];
        const auto reply = parent->enterText(
            {std::string(translator_text::kValuePrompt), item.description, item.value});
        isEdited = reply && *reply != item.value && ProfileFile::canBeValue(*reply);
        item.value = isEdited ? *reply : item.value;
    }
    isChanged_ = isChanged_ || isEdited;
    return isEdited;
}

bool TranslatorConfiguration::editEditor(UserInterface* parent) {
    FilePrompt prompt;
    prompt.title = translator_text::kEditorPrompt;
    prompt.filters = {{"Programs (*.EXE)", "*"}};
    prompt.path = editor_;
    const auto choice = parent->chooseFile(prompt);
    if (!choice || choice->path.empty() || choice->path == editor_ ||
        !ProfileFile::canBeValue(choice->path)) {
        return false;
    }
    editor_ = choice->path;
    return true;
}

bool TranslatorConfiguration::restoreDefaults(UserInterface* parent) {
    if (showBox(parent, std::string(translator_text::kRestore),
                std::string(translator_text::kRestoreTitle), Icon::Question,
                Buttons::OkCancel) != Button::Ok) {
        return false;
    }
    for (auto& item : items_) {
        isChanged_ = isChanged_ || item.value != item.initial;
        item.value = item.initial;
    }
    return true;
}

IoStatus TranslatorConfiguration::save(UserInterface* parent) {
    setStatusText(parent, std::string(translator_text::kSaving));
    auto status = makeFolders(folder_);
    if (status.ok()) {
        ProfileFile settings(path(kSettings));
        settings.setValue(kSection, kVersionKey, kVersion);
        settings.setValue(kSection, kEditorKey, editor_);
        settings.setValue(kSection, kStreamsKey, allStreams_ ? "1" : "0");
        status = settings.flush(ProfileFile::Flush::Kept);
    }
    if (status.ok() && !items_.empty()) {
        status = saveItems();
    }
    isChanged_ = isChanged_ && !status.ok();
    setStatusText(parent, {});
    return status;
}

/// The items go to a file of their own first, and a copy of what was kept is there until the new
/// file is: a vendor's program may read either.
IoStatus TranslatorConfiguration::saveItems() {
    std::string text;
    std::string section;
    for (const auto& item : items_) {
        if (text.empty() || item.section != section) {
            section = item.section;
            text += formatPrintf("[%s]\n", section);
        }
        text += formatPrintf("%s=%s\n", item.key, item.value);
    }
    auto status = writeWholeFile(path(kItemFile), text);
    const bool hasFormer = fileExists(path(kVendorFile));
    if (status.ok() && hasFormer) {
        status = copyFile(path(kVendorFile), path(kItemCopy));
    }
    if (status.ok()) {
        ProfileFile kept(path(kVendorFile));
        for (const auto& item : items_) {
            kept.setValue(vendor_ + "/" + item.section, item.key, item.value);
        }
        status = kept.flush(ProfileFile::Flush::Kept);
    }
    if (status.ok() && hasFormer) {
        status = deleteFile(path(kItemCopy));
    }
    if (status.ok()) {
        status = deleteFile(path(kItemFile));
    }
    return status;
}

}  // namespace kavu
