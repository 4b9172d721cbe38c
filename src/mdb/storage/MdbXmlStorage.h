// A database as an XML document: a record is an element.
#pragma once

#include "mdb/storage/MdbStorage.h"
#include "mdb/storage/XmlParts.h"

#include <deque>
#include <vector>

namespace kavu {

/// Names compare exactly, and a change meets the first element of the name. After a removal the
/// elements are in the order of their names.
class MdbXmlStorage : public MdbStorage {
  public:
    MdbXmlStorage();

    /// Bytes that are not valid UTF-8 are Windows-1252, and are UTF-8 from then on.
    Reading read(std::string bytes) override;
    void write(FileWriter& writer) const override;
    [[nodiscard]] std::size_t entryCount() const override { return entries_.size(); }
    [[nodiscard]] std::string_view name(std::size_t entry) const override {
        return entries_[entry].name;
    }
    [[nodiscard]] std::string_view readName(std::size_t entry) const override {
        return entries_[entry].name;
    }
    [[nodiscard]] MdbRecord record(std::size_t entry) const override;
    [[nodiscard]] std::size_t columns(std::size_t) const override { return mdbfield::kCount; }
    [[nodiscard]] bool canHold(const MdbRecord&) const override { return true; }
    void append(const MdbRecord& record) override;
    bool replace(const MdbRecord& record) override;
    bool remove(std::string_view name) override;
    void clear() override;
    void replaceAt(std::size_t entry, const MdbRecord& record) override;
    void removeAt(const std::vector<std::size_t>& entries) override;

  private:
    struct Entry {
        XmlPart part;
        std::string name;
    };
    [[nodiscard]] std::size_t find(std::string_view name) const;
    std::string_view keep(std::string text);
    void startEmpty();
    void take(const XmlParts& parts);

    std::string_view head_;
    std::vector<Entry> entries_;
    std::string_view tail_;
    std::deque<std::string> texts_;  ///< what all these are parts of
};

}  // namespace kavu
