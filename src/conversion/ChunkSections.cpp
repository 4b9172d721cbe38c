#include "conversion/ChunkSections.h"

#include "conversion/ConversionFields.h"
#include "conversion/ConversionFiles.h"
#include "conversion/RawRecords.h"
#include "core/document/DocumentFiles.h"
#include "core/text/PlaceIndex.h"
#include "core/text/Text.h"

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
            for (; indexed_ < fields_.size(); ++indexed_) {
                places_.add(foldedHash(fields_[indexed_].code), indexed_);
            }
            const auto found = places_.find(foldedHash(field.code), [&](std::size_t place) {
                return equalsIgnoreCase(fields_[place].code, field.code);
            });
            if (found != PlaceIndex::kNone) {
                fields_[found].value = field.value;
                return;
            }
        }
        fields_.push_back(field);
    }

    std::vector<RawRecords::Field> fields_;
    PlaceIndex places_;  ///< once there are many fields
    std::size_t indexed_ = 0;
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
