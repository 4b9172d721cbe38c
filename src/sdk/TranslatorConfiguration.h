// The settings of the translators: the rows that every translator has, and the items of one vendor.
// They are read when a configuration is opened, changed in memory, and written by `save`.
#pragma once

#include "core/files/IoStatus.h"
#include "sdk/kavu_translator.h"

#include <string>
#include <string_view>
#include <vector>

namespace kavu {

class UserInterface;

namespace translator_text {
inline constexpr std::string_view kDialogTitle = "Edit Configuration";
inline constexpr std::string_view kNoDialog = "Unable to display Edit Configuration dialog";
inline constexpr std::string_view kErrorTitle = "Translator Error";
inline constexpr std::string_view kListTitle = "\nDefault Values (double-click any item to edit)";
inline constexpr std::string_view kDescription = "Description";
inline constexpr std::string_view kValue = "Current Default Value";
inline constexpr std::string_view kEditorPrompt =
    "Enter Editor/File Viewer To Use With This Application";
inline constexpr std::string_view kAllStreams = "Process all streams found in TMATS file";
inline constexpr std::string_view kAskStreams =
    "Ask which streams to process, in multi-stream TMATS file";
inline constexpr std::string_view kInitializing = "Initializing Vendor Configuration Items";
inline constexpr std::string_view kSaving = "Saving Vendor Configuration Items";
inline constexpr std::string_view kNoItems = "(No Vendor configurable items available)";
inline constexpr std::string_view kValuePrompt = "Enter New Default Value";
inline constexpr std::string_view kRestoreTitle = "Restore Vendor Defaults?";
inline constexpr std::string_view kRestore =
    "This feature will restore all vendor configuration items to their original default values.";
inline constexpr std::string_view kVendorError =
    "Internal error attempting to initialize vendor information. Conversion may be invalid";
inline constexpr std::string_view kVendorErrorTitle = "KAVU Translator Error";
}  // namespace translator_text

class TranslatorConfiguration {
  public:
    struct Item {
        std::string section;
        std::string key;
        std::string description;
        std::string initial;  ///< what the module says
        std::string value;
    };
    /// A line of the dialog. A line without a value cannot be edited.
    struct Row {
        std::string description;
        std::string value;
        bool canEdit = true;
    };
    static constexpr std::size_t kEditorRow = 0;
    static constexpr std::size_t kStreamsRow = 1;
    static constexpr std::size_t kFirstItemRow = 2;

    /// The settings in a folder, and the items of a translator, which may be null. Files that do
    /// not exist give the defaults. An item that cannot be read is reported to `parent`.
    TranslatorConfiguration(std::string folder, const kavu_translator* translator,
                            UserInterface* parent);

    [[nodiscard]] const std::string& editor() const { return editor_; }
    [[nodiscard]] bool processesAllStreams() const { return allStreams_; }
    [[nodiscard]] const std::vector<Item>& items() const { return items_; }
    /// Null for an item that the translator does not have.
    [[nodiscard]] const std::string* value(std::string_view section, std::string_view key) const;

    [[nodiscard]] std::vector<Row> rows() const;
    /// Asks for the value of a row. True if it has changed.
    bool edit(std::size_t row, UserInterface* parent);
    /// Gives every item what the module says, if the user agrees.
    bool restoreDefaults(UserInterface* parent);
    [[nodiscard]] bool isChanged() const { return isChanged_; }

    /// Writes the settings and the items.
    IoStatus save(UserInterface* parent);

  private:
    bool editEditor(UserInterface* parent);
    void readItems(const kavu_translator& translator, UserInterface* parent);
    IoStatus saveItems();
    [[nodiscard]] std::string path(std::string_view name) const;

    std::string folder_;
    std::string vendor_;
    std::string editor_;
    bool allStreams_ = true;
    bool isChanged_ = false;
    std::vector<Item> items_;
};

}  // namespace kavu
