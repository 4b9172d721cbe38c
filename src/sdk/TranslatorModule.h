// The modules of translators: where they are, which of them may be loaded, and what they say of
// themselves.
#pragma once

#include "sdk/kavu_translator.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

struct Environment;

/// A translator that is loaded, for as long as the object lives. Copies share it.
class TranslatorModule {
  public:
    /// Loads a module. One that is refused, or is no module, has no translator; `fault` says why.
    [[nodiscard]] static TranslatorModule load(const std::string& path);

    /// One that is not loaded, for this reason.
    [[nodiscard]] static TranslatorModule refuse(std::string path, std::string fault);

    [[nodiscard]] bool isLoaded() const { return translator_ != nullptr; }
    [[nodiscard]] const std::string& path() const { return path_; }
    [[nodiscard]] const std::string& fault() const { return fault_; }
    /// REQUIRES: loaded.
    [[nodiscard]] const kavu_translator& translator() const { return *translator_; }
    [[nodiscard]] std::string vendor() const;

  private:
    std::string path_;
    std::string fault_;
    std::shared_ptr<void> library_;
    const kavu_translator* translator_ = nullptr;
};

/// The folder of translators and of their log, with a separator at its end.
[[nodiscard]] std::string translatorFolder(const Environment& environment);
/// All folders with modules: that one, and those that come with the program.
[[nodiscard]] std::vector<std::string> translatorFolders(const Environment& environment);
/// Why a file, or a folder of such files, may not be trusted: it belongs to somebody else than the
/// user and root, or others can write it. Empty if it may.
[[nodiscard]] std::string whyNotTrusted(const std::string& path);
/// The modules in folders by name, those that are refused among them. Of those of one vendor only
/// the first is taken. A missing folder has none; of one that is not trusted none is loaded.
[[nodiscard]] std::vector<TranslatorModule> loadTranslators(
    const std::vector<std::string>& folders);

/// The entries of the menu that have a name of their own, whether or not there is a module for
/// them: what each is called, and the vendor of the module that it stands for.
struct NamedTranslator {
    std::string_view title;
    std::string_view vendor;
    bool isConversion;  ///< else the defaults of it
};
inline constexpr NamedTranslator kNamedTranslators[] = {
    {"Convert TMATS file To &Wyle Export Format", "Wyle", true},
    {"Convert TMATS file To &L-3Com 550 Format", "L-3Com 550", true},
    {"Convert TMATS file To L-3Com &VTS Format", "L-3Com VTS", true},
    {"Edit &Wyle Translator Defaults", "Wyle", false},
    {"Edit &L-3Com 550 Translator Defaults", "L-3Com 550", false},
    {"Edit L-3Com &VTS Translator Defaults", "L-3Com VTS", false},
};
/// The prompt of such an entry without a module.
inline constexpr std::string_view kNoTranslator = "No translator is installed";

}  // namespace kavu
