#include "core/document/ConversionComments.h"

#include "core/TmatsReader.h"
#include "core/WorkingStore.h"
#include "core/command/CommandPath.h"
#include "core/document/DocumentFiles.h"
#include "core/document/GroupRewrite.h"
#include "core/text/Text.h"

#include <cerrno>

namespace kavu {

namespace {

constexpr std::string_view kNameCode = "DCN";
/// The name of a record is cut to so many bytes.
constexpr std::size_t kLongestName = 32;
// What the file holds of each place: the name of a record, a code, and the comments.
constexpr std::string_view kName = "NAME";
constexpr std::string_view kCode = "CODE";

std::string nameKey(std::string_view name) {
    return std::string(trimRight(cutToBytes(trimRight(name), kLongestName)));
}

std::int64_t indexOf(const CommandView& command) {
    return leadingInteger(command.head.substr(std::min<std::size_t>(2, command.head.size())));
}

bool isName(const CommandView& command) {
    return startsWithIgnoreCase(command.field, kNameCode);
}

std::string line(std::string_view code, std::string_view value) {
    return std::string(code).append(":").append(value).append(";").append("\r\n");
}

/// The comments by the records that they belong to.
class RecordComments {
  public:
    IoStatus read(TmatsReader& reader, const std::string& path) {
        ByteSource source;
        auto status = source.open(path);
        std::string command;
        Place* place = nullptr;
        std::string name;
        while (status.ok() && reader.nextRawCommand(source, command)) {
            const auto view = viewCommand(command);
            if (view.code == kName) {
                name = view.value;
            } else if (view.code == kCode) {
                const auto [it, isNew] = numbers_.try_emplace(name, records_.size());
                if (isNew) {
                    records_.emplace_back();
                }
                auto& places = records_[it->second];
                place = &places.emplace_back(Place{std::string(view.value), {}});
            } else if (place != nullptr) {
                fromStoredForm(command);
                place->lines.append(command).append("\r\n");
            }
        }
        return status.ok() ? source.status() : status;
    }

    /// The lines in front of a command, which are first what is left of the record before it.
    std::string before(const CommandView& command) {
        std::string lines;
        if (equalsIgnoreCase(command.field, kNameCode)) {
            lines = rest(record_);
            const auto found = numbers_.find(nameKey(command.value));
            record_ = found == numbers_.end() ? kNone : found->second;
        }
        if (record_ != kNone) {
            for (auto& place : records_[record_]) {
                if (equalsIgnoreCase(place.code, command.field)) {
                    lines += std::move(place.lines);
                    place.lines.clear();
                }
            }
        }
        return lines;
    }
    /// What is left when the group has ended.
    std::string last() {
        auto lines = rest(record_);
        for (std::size_t i = 0; i < records_.size(); ++i) {
            lines += rest(i);
        }
        return lines;
    }

  private:
    struct Place {
        std::string code;
        std::string lines;
    };
    static constexpr std::size_t kNone = ~std::size_t{0};

    std::string rest(std::size_t record) {
        std::string lines;
        if (record != kNone) {
            for (auto& place : records_[record]) {
                lines += place.lines;
            }
            records_[record].clear();
        }
        return lines;
    }

    std::unordered_map<std::string, std::size_t> numbers_;
    std::vector<std::vector<Place>> records_;
    std::size_t record_ = kNone;
};

}  // namespace

void ConversionComments::note(std::string_view command) {
    const auto view = viewCommand(command);
    last_ = indexOf(view);
    if (isName(view) && !view.value.empty()) {
        names_.try_emplace(last_, nameKey(view.value));
    }
}

void ConversionComments::add(std::string_view command, std::string_view lines) {
    const auto view = viewCommand(command);
    places_.push_back({command.empty() ? last_ : indexOf(view),
                       std::string(isName(view) ? kNameCode : trimRight(view.field)),
                       std::string(lines)});
}

IoStatus ConversionComments::store(DocumentFiles& files) const {
    if (places_.empty()) {
        return {};
    }
    auto writer = files.writer(working::kConversionComments);
    for (const auto& place : places_) {
        const auto name = names_.find(place.index);
        writer.write(line(kName, name == names_.end() ? std::string_view() : name->second));
        writer.write(line(kCode, place.code));
        writer.write(place.lines);
    }
    return writer.close();
}

IoStatus renameConversionComments(DocumentFiles& files, TmatsReader& reader,
                                  std::string_view oldName, std::string_view newName) {
    IoStatus status;
    const auto key = nameKey(oldName);
    rewriteGroup(
        files, reader, working::kConversionComments, Cut::Commands,
        [&](CommandEdit& edit) {
            const auto view = viewCommand(edit.text());
            if (view.code == kName && view.value == key) {
                edit.setValue(nameKey(newName));
            }
        },
        {}, status);
    return status.code() == ENOENT ? IoStatus() : status;
}

IoStatus joinConversionComments(const DocumentFiles& files, TmatsReader& reader,
                                const std::string& group, FileWriter& target) {
    RecordComments comments;
    if (auto status = comments.read(reader, files.path(working::kConversionComments));
        !status.ok()) {
        return status;
    }
    ByteSource source;
    if (auto status = source.open(group); !status.ok()) {
        return status;
    }
    std::string command;
    while (target.status().ok() && reader.nextRawCommand(source, command)) {
        target.write(comments.before(viewCommand(command)));
        target.write(command.append("\r\n"));
    }
    target.write(comments.last());
    return source.status();
}

}  // namespace kavu
