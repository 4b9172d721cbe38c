// The store of sections against one list that is searched from the front.
#include "../tests/support/KeyValueModel.h"
#include "Check.h"
#include "Choices.h"
#include "core/WorkingStore.h"
#include "core/document/KeyValueStore.h"
#include "core/text/Clock.h"

#include <cstdint>
#include <string>
#include <vector>

namespace {

using namespace kavu;

/// One folder for all runs of the process; each run closes its store and leaves it empty.
class Folder {
  public:
    Folder() : store_(Environment::ofProcess()) {
        SystemRandomSource random;
        KAVU_CHECK(store_.activate(nullptr, "KAVU-FUZZ", random));
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() { store_.deactivate(nullptr); }
    [[nodiscard]] const WorkingStore& store() const { return store_; }

  private:
    WorkingStore store_;
};

struct Names {
    std::string name;
    std::string key;
    std::string value;
};

Names choose(fuzz::Choices& choices) {
    static const std::string kNames[] = {"a", "A", "b", "0", "1", "   ", "[kavu]", "x]", "c;d"};
    static const std::string kKeys[] = {"k", "K", "n", "m"};
    Names names;
    names.name = choices.below(8) == 0 ? choices.text(4) : choices.oneOf(kNames);
    names.key = choices.below(8) == 0 ? choices.text(4) : choices.oneOf(kKeys);
    // Now and then a value that fills a file.
    names.value = choices.below(32) == 0 ? std::string(40001, 'v') : choices.text(4);
    return names;
}

bool canHold(const Names& names, bool withValue) {
    return names.name.find(';') == std::string::npos && ProfileFile::canBeSection(names.name) &&
           ProfileFile::canBeKey(names.key) && (!withValue || ProfileFile::canBeValue(names.value));
}

/// The model keeps values as they are written; a profile gives them without outer blanks.
std::string withoutOuterBlanks(const std::string& text) {
    const auto first = text.find_first_not_of(" \t");
    return first == std::string::npos
               ? std::string()
               : text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

void write(fuzz::Choices& choices, const Names& names, KeyValueStore& store,
           test::KeyValueModel& model) {
    const auto step = choices.below(8);
    if (step < 2) {
        const std::vector<KeyValueStore::Pair> pairs{{names.key, names.value}, {"both", "1"}};
        const bool empty = names.key.empty() || names.value.empty();
        const bool nameHeld =
            names.name.find(';') == std::string::npos && ProfileFile::canBeSection(names.name);
        const bool held = nameHeld && (empty || canHold(names, true));
        KAVU_CHECK(store.writeSection(nullptr, names.name, pairs) == held);
        if (held) {
            model.writeSection(names.name, pairs);
        }
    } else if (step == 2) {
        const bool held =
            names.name.find(';') == std::string::npos && ProfileFile::canBeSection(names.name);
        KAVU_CHECK(store.setValue(nullptr, names.name, std::nullopt, std::nullopt) == held);
        model.setValue(names.name, std::nullopt, std::nullopt);
    } else {
        const bool withValue = step > 3;
        const bool held = canHold(names, withValue);
        const auto value = withValue ? std::optional<std::string_view>(names.value) : std::nullopt;
        KAVU_CHECK(store.setValue(nullptr, names.name, names.key, value) == held);
        if (held) {
            model.setValue(names.name, names.key, value);
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Folder folder;
    fuzz::Choices choices(data, size);
    KeyValueStore store(folder.store());
    test::KeyValueModel model;
    // Fewer writes than there are files, so that the store never runs out of them.
    for (int steps = 0; steps < 400 && !choices.atEnd(); ++steps) {
        write(choices, choose(choices), store, model);
        const auto read = choose(choices);
        KAVU_CHECK(store.sectionExists(read.name) == model.exists(read.name));
        const auto expected = model.value(read.name, read.key);
        KAVU_CHECK(store.getString(read.name, read.key, "none") ==
                   (expected ? withoutOuterBlanks(*expected) : "none"));
        KAVU_CHECK(store.sectionCount() == model.count());
        const auto index = static_cast<int>(choices.below(40)) - 1;
        KAVU_CHECK(store.sectionName(index) == model.name(index));
    }
    KAVU_CHECK(store.directoryLength() >= model.directory().size());
    store.closeStore(nullptr);
    KAVU_CHECK(!folder.store().exists("KVU%5.5d.sdk", 0));
    KAVU_CHECK(store.sectionCount() == 0 && store.directoryLength() == 0);
    return 0;
}
