#include "sdk/TranslatorModule.h"

#include "core/WorkingStore.h"
#include "core/files/Environment.h"
#include "core/files/FileIo.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace kavu {

namespace {

constexpr const char* kEntry = "kavu_translator_module";
constexpr std::string_view kEnding = ".so";

/// A file that is open while it is looked at.
class OpenFile {
  public:
    explicit OpenFile(const std::string& path)
        : descriptor_(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {}
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    ~OpenFile() {
        if (descriptor_ >= 0) {
            ::close(descriptor_);
        }
    }
    [[nodiscard]] int get() const { return descriptor_; }

  private:
    int descriptor_;
};

std::string faultOf(const OpenFile& file) {
    struct stat info {};
    if (file.get() < 0 || ::fstat(file.get(), &info) != 0) {
        return std::strerror(errno);
    }
    if (info.st_uid != 0 && info.st_uid != ::geteuid()) {
        return "it belongs to another user";
    }
    if ((info.st_mode & (S_IWGRP | S_IWOTH)) != 0) {
        return "others can write it";
    }
    return {};
}

/// What a module says of itself that cannot be used; empty if all of it can.
std::string faultOf(const kavu_translator* translator) {
    if (translator == nullptr || translator->interface != KAVU_TRANSLATOR_INTERFACE) {
        return "it is made for another version of this program";
    }
    if (translator->vendor == nullptr || *translator->vendor == 0 || translator->title == nullptr ||
        translator->convert == nullptr ||
        (translator->items == nullptr && translator->item_count > 0)) {
        return "it does not say what it converts";
    }
    return {};
}

}  // namespace

std::string whyNotTrusted(const std::string& path) {
    return faultOf(OpenFile(path));
}

TranslatorModule TranslatorModule::load(const std::string& path) {
    TranslatorModule module;
    module.path_ = path;
    const OpenFile file(path);
    module.fault_ = faultOf(file);
    if (!module.fault_.empty()) {
        return module;
    }
    // By its name, not by the open file: what is loaded under a name once is what that name gives,
    // and the numbers of files are used again.
    module.library_ =
        std::shared_ptr<void>(::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL), [](void* library) {
            if (library != nullptr) {
                ::dlclose(library);
            }
        });
    void* const entry =
        module.library_ == nullptr ? nullptr : ::dlsym(module.library_.get(), kEntry);
    if (entry == nullptr) {
        const char* const reason = ::dlerror();
        module.fault_ = reason == nullptr ? "it is no translator" : reason;
        return module;
    }
    const auto* const translator = reinterpret_cast<const kavu_translator* (*)()>(entry)();
    module.fault_ = faultOf(translator);
    if (module.fault_.empty()) {
        module.translator_ = translator;
    }
    return module;
}

TranslatorModule TranslatorModule::refuse(std::string path, std::string fault) {
    TranslatorModule module;
    module.path_ = std::move(path);
    module.fault_ = std::move(fault);
    return module;
}

std::string TranslatorModule::vendor() const {
    return translator_ == nullptr ? std::string() : std::string(translator_->vendor);
}

std::string translatorFolder(const Environment& environment) {
    return supportFolderPath(environment, "TranslatorSupportFiles", environment.userName, true);
}

std::vector<std::string> translatorFolders(const Environment& environment) {
    return {translatorFolder(environment), environment.programFolder + "/TranslatorSupportFiles/",
            environment.programFolder + "/../lib/kavu/TranslatorSupportFiles/"};
}

namespace {

std::vector<std::string> moduleNames(const std::string& folder) {
    std::vector<std::string> names;
    if (DIR* const entries = ::opendir(folder.c_str()); entries != nullptr) {
        while (const dirent* const entry = ::readdir(entries)) {
            if (std::string name = entry->d_name; name.ends_with(kEnding)) {
                names.push_back(std::move(name));
            }
        }
        ::closedir(entries);
    }
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace

std::vector<TranslatorModule> loadTranslators(const std::vector<std::string>& folders) {
    std::vector<TranslatorModule> modules;
    for (const auto& folder : folders) {
        // Who can write the folder can put another file in place of a module.
        const auto fault = whyNotTrusted(folder);
        for (const auto& name : moduleNames(folder)) {
            auto module = fault.empty() ? TranslatorModule::load(folder + "/" + name)
                                        : TranslatorModule::refuse(folder + "/" + name, fault);
            const bool isKnown =
                module.isLoaded() &&
                std::any_of(modules.begin(), modules.end(), [&](const auto& other) {
                    return other.isLoaded() && other.vendor() == module.vendor();
                });
            if (!isKnown) {
                modules.push_back(std::move(module));
            }
        }
    }
    return modules;
}

}  // namespace kavu
