// Turns a raw chunk into sections: the commands of a group index are regrouped under the
// name of its measurement.
#pragma once

#include "core/files/FileIo.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kavu {

struct DocumentContext;
class KeyValueStore;
struct RawCommand;
class StagedChunks;
class UserInterface;

class ChunkConverter {
  public:
    /// `names` holds the measurement names of the whole load; `edition` decides the
    /// limits; the chunks go to `chunks`.
    ChunkConverter(DocumentContext& context, KeyValueStore& names, StagedChunks& chunks,
                   UserInterface* parent, int edition)
        : context_(context), names_(names), chunks_(chunks), parent_(parent), edition_(edition) {}

    /// Makes the working files of a conversion: "DATA2.TMP" holds the names by group index
    /// (message 313 "Unable to" if it cannot be made), "DATA1.TMP" the sections by group
    /// index (314 "Unable to read").
    bool open();
    /// Makes a chunk of raw commands. `percent` is for the progress bar. With
    /// `commentsOutside` a comment goes to a file of its own. False if it was cancelled
    /// or has failed; messages 313 and 314 then have named the file. Logs 318 for a name
    /// and 315 for a value that is too long, 317 for a duplicate measurement.
    bool convert(std::int64_t number, std::string& bytes, double percent, bool commentsOutside);
    /// Closes the working files; false if one of them was not complete.
    bool close();

  private:
    /// What the chunk holds of one group index. The texts are views into the bytes of the
    /// chunk.
    struct Record {
        std::int64_t index = 0;
        std::string name;
        bool refused = false;     ///< its name belongs to another record, as 317 has reported
        std::size_t nameAt = 0;   ///< the position of its first name among the commands
        std::size_t firstAt = 0;  ///< that of its first field
        struct Field {
            std::string_view code;
            std::string_view value;
        };
        std::vector<Field> fields;
        std::unordered_map<std::string, std::size_t> places;  ///< once there are many fields

        void put(std::string_view code, std::string_view value);
    };

    bool collect(std::string& bytes, double percent);
    bool takeName(const RawCommand& command, std::string_view name, double percent);
    void takeField(const RawCommand& command);
    Record& record(std::int64_t index);
    [[nodiscard]] std::vector<const Record*> ordered() const;
    bool writeChunk(std::int64_t number, bool commentsOutside);

    DocumentContext& context_;
    KeyValueStore& names_;
    StagedChunks& chunks_;
    UserInterface* parent_;
    int edition_;
    unsigned measurements_ = 0;
    unsigned unnamed_ = 0;  ///< group indices without a name
    unsigned polled_ = 0;

    FileWriter namesFile_;
    FileWriter sectionsFile_;

    // The chunk being converted.
    std::size_t at_ = 0;
    std::vector<Record> records_;
    std::unordered_map<std::int64_t, std::size_t> byIndex_;
};

}  // namespace kavu
