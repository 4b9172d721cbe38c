// Files of the measurement database, in each form: what is read can be written, an unchanged file
// has the same bytes, a record that was written reads back, and reads by name agree with a walk.
#include "Check.h"
#include "FuzzScratch.h"
#include "core/WorkingStore.h"
#include "core/talk/Messages.h"
#include "core/text/Clock.h"
#include "mdb/record/DiscreteText.h"
#include "mdb/storage/MeasurementDatabase.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace {

using namespace kavu;

struct World {
    World() : folder(fuzz::makeScratch()), path(folder + "/fuzz.mdb"), store(environment()) {}
    ~World() { (void)deleteFolder(folder); }
    static Environment environment() {
        Environment made;
        made.variable = [](const std::string&) { return std::nullopt; };
        made.programFolder = "/tmp";
        return made;
    }

    std::string folder;
    std::string path;
    WorkingStore store;
    Messages messages{store};
};

std::string bytesOf(const std::string& path) {
    std::string bytes;
    (void)readWholeFile(path, bytes);
    return bytes;
}

/// Adds a copy of every record to a new database of a form, and compares what comes back.
void checkCopy(World& world, MeasurementDatabase& database, MdbVersion version) {
    const auto path = world.folder + "/copy";
    (void)deleteFile(path);
    MeasurementDatabase copy(world.messages, path, version, {});
    KAVU_CHECK(copy.open() == MeasurementDatabase::Opening::Missing);
    MeasurementDatabase::Batch batch(copy, nullptr);
    KAVU_CHECK(batch.isOpen());
    std::vector<MdbRecord> added;
    for (auto record = database.first(); record && added.size() < 50; record = database.next()) {
        if (copy.add(nullptr, *record)) {
            added.push_back(*record);
        } else {
            KAVU_CHECK(version != MdbVersion::Xml);
        }
    }
    KAVU_CHECK(batch.commit(nullptr));
    const auto before = bytesOf(path);
    KAVU_CHECK(copy.open() != MeasurementDatabase::Opening::Failed);
    for (const auto& record : added) {
        const auto read = copy.next();
        if (!read) {
            break;  // a name of which nothing is left is none
        }
        if (version == MdbVersion::WithBus) {
            KAVU_CHECK(*read == record);
        }
    }
    bool removed = true;
    KAVU_CHECK(copy.remove(nullptr, "\x01no such name\x01", &removed) && !removed);
    KAVU_CHECK(bytesOf(path) == before);
}

void checkFile(World& world, std::string_view text, MdbVersion version) {
    KAVU_CHECK(writeWholeFile(world.path, text).ok());
    MeasurementDatabase database(world.messages, world.path, version, {});
    if (database.open() == MeasurementDatabase::Opening::Failed) {
        KAVU_CHECK(bytesOf(world.path) == text);
        return;
    }
    (void)database.validate(nullptr, 1999);
    std::size_t count = 0;
    std::string last;
    for (auto record = database.first(); record; record = database.next()) {
        ++count;
        KAVU_CHECK(!record->name().empty());
        last = record->name();
    }
    KAVU_CHECK(count == database.recordCount());
    KAVU_CHECK(count == 0 || database.contains(last));
    bool removed = true;
    KAVU_CHECK(database.remove(nullptr, "\x01no such name\x01", &removed));
    KAVU_CHECK(removed || bytesOf(world.path) == text);
    for (const auto other : {MdbVersion::Basic, MdbVersion::WithBus, MdbVersion::Xml}) {
        checkCopy(world, database, other);
    }
    if (count > 0 && database.canHold(MdbRecord(last))) {
        KAVU_CHECK(database.remove(nullptr, last, &removed) && removed);
        KAVU_CHECK(database.recordCount() < count);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static World world;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    checkFile(world, text, MdbVersion::Basic);
    checkFile(world, text, MdbVersion::WithBus);
    checkFile(world, text, MdbVersion::Xml);
    // Without a working store the log of the checks is in the current folder.
    (void)deleteFile(world.messages.logPath());
    const auto pairs = readDiscrete(text);
    KAVU_CHECK(pairs.empty() || readDiscrete(writeDiscrete(pairs)).size() == pairs.size());
    return 0;
}
