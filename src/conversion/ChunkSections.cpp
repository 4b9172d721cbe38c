#include "conversion/ChunkSections.h"

#include "conversion/ConversionFields.h"
#include "conversion/ConversionFiles.h"
#include "conversion/RawRecords.h"
#include "core/document/DocumentFiles.h"
#include "core/text/Text.h"

#include <unordered_map>
#include <vector>

namespace kavu {

namespace {

constexpr std::size_t kIndexFrom = 40;  // fields of a record from which on a hash pays
constexpr std::string_view kLineEnd = "\r\n";

/// The fields of a record, each code once: where it comes first, with the value that comes last.
class MergedFields {
  public:
    explicit MergedFields(const RawRecords::Record& record) {
        for (const auto& field : record.fields) {
            put(field);
        }
    }
    [[nodiscard]] const std::vector<RawRecords::Field>& all() const { return fields_; }

  private:
    void put(const RawRecords::Field& field) {
        if (fields_.size() < kIndexFrom) {
            for (auto& each : fields_) {
                if (equalsIgnoreCase(each.code, field.code)) {
                    each.value = field.value;
                    return;
                }
            }
        } else {
            for (std::size_t i = places_.size(); i < fields_.size(); ++i) {
                places_.emplace(lowerAscii(fields_[i].code), i);
            }
            if (const auto found = places_.find(lowerAscii(field.code)); found != places_.end()) {
                fields_[found->second].value = field.value;
                return;
            }
        }
        fields_.push_back(field);
    }

    std::vector<RawRecords::Field> fields_;
    std::unordered_map<std::string, std::size_t> places_;  ///< once there are many fields
};

}  // namespace

IoStatus appendSections(DocumentFiles& files, const RawRecords& records, bool commentsOutside,
                        std::string& text) {
    for (std::size_t i = 0; i < records.size(); ++i) {
        const auto& record = records[i];
        const MergedFields fields(record);
        text.append("[").append(record.name).append("]").append(kLineEnd);
        bool hasKeys = false;
        for (const auto& field : fields.all()) {
            if (commentsOutside && equalsIgnoreCase(field.code, kCommentCode)) {
                if (auto status = files.put(commentName(record.name), field.value); !status.ok()) {
                    return status;
                }
                continue;
            }
            text.append(field.code).append("=").append(field.value).append(kLineEnd);
            hasKeys = true;
        }
        if (!hasKeys) {
            // A section without a key would not be a record.
            text.append(kNameCode).append("=").append(record.name).append(kLineEnd);
        }
    }
    return {};
}

}  // namespace kavu
