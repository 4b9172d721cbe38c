// A TMATS file that a data source is imported from. It is searched once for what it offers,
// and read again for what is imported.
#pragma once

#include "core/TmatsDocument.h"
#include "core/files/FileIo.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kavu {

/// A data source of the file, with the one stream that can be imported with it.
struct ImportOffer {
    std::string name;
    std::string type;  ///< the stored `DST` value, if the file's list has the name
    char letter = 0;   ///< T or R
    int index = 0;     ///< of its T or R group
    int multiplex = 0;
    std::string link;        ///< empty without a stream
    std::string streamType;  ///< display text of its kind
    int format = 0;
    char dataLetter = 0;  ///< D, B or S
    int data = 0;
};

class SourceImportFile {
  public:
    SourceImportFile(DocumentContext& context, std::string path)
        : context_(context), path_(std::move(path)) {}

    /// Opens and searches the file. False if it was cancelled, could not be read, or ends
    /// within a command (157 "partial command"), which has been reported.
    bool open(UserInterface* parent);

    /// The data sources of one kind, R (transmitted) or T (recorder). The search for links
    /// ends at the first M group of a data source that does not have exactly one link: the
    /// data sources of that group and those after it are not offered.
    [[nodiscard]] std::vector<ImportOffer> offers(UserInterface* parent, char kind) const;

    /// Calls `take(letter, index, command)` for every command of an indexed group in the order
    /// of the file; the command is in stored form. `progress(percent)` is called now and then.
    /// False if it was cancelled or failed, which is reported, or `take` returned false.
    bool forEach(UserInterface* parent,
                 const std::function<bool(char letter, std::int64_t index,
                                          const std::string& command)>& take,
                 const std::function<void(double percent)>& progress);

    /// The index of the first C group that is the record of a measurement, or 0.
    [[nodiscard]] std::int64_t conversionOf(const std::string& measurement) const;

  private:
    struct Group {
        std::string name;                        ///< `ID` or `DLN`
        std::string format;                      ///< `TF`
        std::string baseband;                    ///< `BB\DLN`
        int count = 0;                           ///< `SI\N`
        std::map<int, std::string> subcarriers;  ///< `SI\DLN-k`
    };
    using Groups = std::map<int, Group>;

    void note(UserInterface* parent, char letter, std::int64_t index, std::string_view command);
    void noteGeneral(UserInterface* parent, std::string_view command);
    void noteField(UserInterface* parent, char letter, Group& group, std::string_view command);
    bool read(UserInterface* parent, const std::function<bool(std::string&)>& visit,
              const std::function<void(double)>& progress);
    [[nodiscard]] const Groups& groups(char letter) const;
    void findStreams(UserInterface* parent, std::vector<ImportOffer>& table) const;
    void findStream(ImportOffer& offer) const;

    DocumentContext& context_;
    std::string path_;
    ByteSource source_;
    std::unordered_map<char, Groups> groups_;
    std::map<int, std::string> listNames_;  ///< of the G group
    std::map<int, std::string> listTypes_;
    std::unordered_map<std::string, std::int64_t> conversions_;
};

}  // namespace kavu
