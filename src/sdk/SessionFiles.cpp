#include "sdk/SessionFiles.h"

#include "core/WorkingStore.h"
#include "core/files/FileIo.h"
#include "core/files/FileLink.h"

namespace kavu {

std::string SessionFiles::groupName(char letter, std::int64_t number) const {
    return formatPrintf("%dKavuTSDK_%c.%d", instance_, letter, number);
}

std::string SessionFiles::conversionsName() const {
    return formatPrintf("%dKavuTSDK_%ld.C_T", instance_, 0L);
}

std::string SessionFiles::errorName() const {
    return formatPrintf("%dKavuTSDK_.ERR", instance_);
}

std::string SessionFiles::pathOf(std::string_view name) const {
    return store_.pathOf(name);
}

void SessionFiles::removeAll() {
    store_.deleteFiles(nullptr, formatPrintf("%dKavuTSDK_*.*", instance_));
}

IoStatus SessionFiles::link(std::string_view from, const std::string& name) {
    const auto source = store_.pathOf(from);
    if (!fileExists(source)) {
        return {};
    }
    return linkOrCopyFile(source, store_.pathOf(name));
}

IoStatus SessionFiles::appendError(std::string_view text) {
    FileWriter file;
    if (auto status = file.open(store_.pathOf(errorName()), WriteMode::Append); !status.ok()) {
        return status;
    }
    file.write(text);
    return file.close();
}

}  // namespace kavu
