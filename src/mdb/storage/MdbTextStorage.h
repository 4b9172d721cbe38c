// A database as delimited text: a record is a line of fields with semicolons between.
#pragma once

#include "mdb/storage/MdbStorage.h"

#include <deque>
#include <vector>

namespace kavu {

/// Names compare without regard to case for changes, which meet every line of the name.
class MdbTextStorage : public MdbStorage {
  public:
    explicit MdbTextStorage(MdbVersion version) : version_(version) {}

    Reading read(std::string bytes) override;
    void write(FileWriter& writer) const override;
    [[nodiscard]] std::size_t entryCount() const override { return lines_.size(); }
    [[nodiscard]] std::string_view name(std::size_t entry) const override;
    /// The first 32 characters of the line, up to its first semicolon.
    [[nodiscard]] std::string_view readName(std::size_t entry) const override;
    [[nodiscard]] MdbRecord record(std::size_t entry) const override;
    [[nodiscard]] std::size_t columns(std::size_t entry) const override;
    /// False for a semicolon in any field.
    [[nodiscard]] bool canHold(const MdbRecord& record) const override;
    void append(const MdbRecord& record) override;
    bool replace(const MdbRecord& record) override;
    bool remove(std::string_view name) override;
    void clear() override;
    void replaceAt(std::size_t entry, const MdbRecord& record) override;
    void removeAt(const std::vector<std::size_t>& entries) override;

  private:
    struct Line {
        std::string_view bytes;  ///< with the line end
        /// Without it, and with carriage returns within it in stored form.
        std::string_view text;
    };
    [[nodiscard]] std::string_view keep(std::string line);
    [[nodiscard]] Line lineAt(std::string_view bytes);
    [[nodiscard]] std::string lineOf(const MdbRecord& record) const;

    MdbVersion version_;
    std::vector<Line> lines_;
    std::deque<std::string> texts_;  ///< what the lines are parts of
};

}  // namespace kavu
