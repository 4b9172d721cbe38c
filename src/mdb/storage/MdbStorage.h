// The contents of a database file in one of its forms, in memory. What nobody changes keeps its
// bytes.
#pragma once

#include "mdb/record/MdbRecord.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

class FileWriter;

class MdbStorage {
  public:
    /// What a file was taken for.
    enum class Reading {
        Database,
        Unreadable,  ///< of no form at all: it counts as an empty database
        NoDatabase,  ///< a file of another kind, which is never written
    };

    MdbStorage() = default;
    MdbStorage(const MdbStorage&) = delete;
    MdbStorage& operator=(const MdbStorage&) = delete;
    virtual ~MdbStorage() = default;

    [[nodiscard]] static std::unique_ptr<MdbStorage> make(MdbVersion version);

    /// Takes the bytes of a file in place of what was there.
    virtual Reading read(std::string bytes) = 0;
    virtual void write(FileWriter& writer) const = 0;

    /// The lines or elements, those without a name included; they count from 0.
    [[nodiscard]] virtual std::size_t entryCount() const = 0;
    /// The first field of an entry, without outer blanks; empty for one that is no record.
    [[nodiscard]] virtual std::string_view name(std::size_t entry) const = 0;
    /// What a read by name compares the name with.
    [[nodiscard]] virtual std::string_view readName(std::size_t entry) const = 0;
    [[nodiscard]] virtual MdbRecord record(std::size_t entry) const = 0;
    /// The fields that the entry has.
    [[nodiscard]] virtual std::size_t columns(std::size_t entry) const = 0;
    /// False for a record that the form cannot hold.
    [[nodiscard]] virtual bool canHold(const MdbRecord& record) const = 0;

    // Changes of records. REQUIRES: `canHold`.

    virtual void append(const MdbRecord& record) = 0;
    /// Puts the record in the place of what bears its name; false if nothing does.
    virtual bool replace(const MdbRecord& record) = 0;
    /// False if nothing bears the name.
    virtual bool remove(std::string_view name) = 0;
    virtual void clear() = 0;
    /// The same of single entries; the others stay in their order.
    virtual void replaceAt(std::size_t entry, const MdbRecord& record) = 0;
    /// REQUIRES: the entries rise.
    virtual void removeAt(const std::vector<std::size_t>& entries) = 0;
};

}  // namespace kavu
