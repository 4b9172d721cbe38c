#include "pcm/read/TaggedData.h"

#include "core/TmatsDocument.h"
#include "core/TmatsReader.h"
#include "core/WorkingStore.h"
#include "core/document/DocumentFiles.h"
#include "core/files/FileIo.h"
#include "core/talk/FileReports.h"
#include "core/talk/Messages.h"
#include "core/text/Text.h"
#include "groups/GroupScan.h"
#include "pcm/PcmFormat.h"
#include "pcm/PcmLoad.h"

#include <algorithm>
#include <array>
#include <map>

namespace kavu {

namespace {

using tagged_code::kName;

/// A field of one measurement or tag, outside a list.
constexpr Field ofOne(Field field) {
    field.code = codeHead(field.code);
    field.list = {};
    return field;
}

constexpr auto kFields = std::to_array<Field>({
    ofOne(measurement_field::kName),
    ofOne(measurement_field::kParity),
    ofOne(measurement_field::kParityOrder),
    ofOne(measurement_field::kTransferOrder),
    ofOne(tagged_field::kWordLength),
});
constexpr auto kTagFields = std::to_array<Field>({
    ofOne(tagged_field::kTagNumber),
    ofOne(tagged_field::kMask),
    ofOne(tagged_field::kTransferOrder),
    ofOne(tagged_field::kPosition),
});

const Field* findField(std::span<const Field> fields, std::string_view code) {
    const auto it = std::find_if(fields.begin(), fields.end(), [code](const Field& field) {
        return equalsIgnoreCase(field.code, code);
    });
    return it == fields.end() ? nullptr : &*it;
}

/// Collects the measurements by their numbers, in whatever order the file has them.
class TagReader {
  public:
    bool take(const std::string& command) {
        // "TD2-1-3-2" is field "TD2" of list 1, measurement 3, tag 2.
        const auto parts = viewCommand(command);
        const auto path = parseField(parts.field);
        if (!path || path->count < 2) {
            return true;
        }
        auto& entry = entries_[{path->at[0], path->at[1]}];
        if (path->count == 2) {
            if (const auto* const field = findField(kFields, path->stem)) {
                entry.values[std::string(field->code)] = parts.value;
            }
        } else if (const auto* const field = findField(kTagFields, path->stem)) {
            entry.tags[path->at[2]].values[std::string(field->code)] = parts.value;
        }
        return true;
    }

    [[nodiscard]] std::vector<TaggedMeasurement> result() {
        std::vector<TaggedMeasurement> measurements;
        for (auto& [numbers, entry] : entries_) {
            if (!entry.values.contains(kName)) {
                continue;
            }
            auto& measurement = measurements.emplace_back();
            measurement.list = numbers.first;
            measurement.values = std::move(entry.values);
            for (auto& [number, tag] : entry.tags) {
                measurement.tags.push_back(std::move(tag));
            }
        }
        return measurements;
    }

  private:
    struct Entry {
        FieldValues values;
        std::map<int, TaggedTag> tags;
    };
    std::map<std::pair<int, int>, Entry> entries_;
};

std::string_view tagValue(const FieldValues& values, std::string_view code) {
    const auto it = values.find(code);
    return it == values.end() ? std::string_view() : std::string_view(it->second);
}

void writeMeasurement(FileWriter& writer, const std::string& prefix,
                      const TaggedMeasurement& measurement, int number) {
    const auto write = [&](const Field& field, std::string_view value) {
        writeCommand(
            writer, prefix,
            fieldCode(std::string(codeHead(field.code)) + "-n-m", {measurement.list, number}),
            value);
    };
    for (const auto& field : kFields) {
        if (field.code == tagged_code::kWordLength) {
            write(measurement_field::kLocationType, kTaggedType);
            write(tagged_field::kCount, std::to_string(measurement.tags.size()));
        }
        write(field, tagValue(measurement.values, field.code));
    }
    int f = 0;
    for (const auto& tag : measurement.tags) {
        ++f;
        for (const auto& field : kTagFields) {
            writeCommand(writer, prefix,
                         fieldCode(tagPattern(field), {measurement.list, number, f}),
                         tagValue(tag.values, field.code));
        }
    }
}

}  // namespace

std::string TaggedMeasurement::name() const {
    return std::string(tagValue(values, kName));
}

std::span<const Field> taggedFields() {
    return kFields;
}
std::span<const Field> taggedTagFields() {
    return kTagFields;
}
std::string tagPattern(const Field& field) {
    return std::string(field.code) + "-n-m-k";
}

bool hasTaggedData(const PcmFormat& format) {
    constexpr int kFirstEdition = 2011;
    return format.edition() >= kFirstEdition;
}

std::optional<std::vector<TaggedMeasurement>> readTaggedData(PcmFormat& format,
                                                             UserInterface* parent) {
    TagReader reader;
    const auto status = forEachCommand(
        format.context().reader, format.context().store.path(kTagFormat, format.dGroup),
        [&](const std::string& command) { return reader.take(command); });
    if (!status.ok() && !isMissing(status)) {
        reportUnableToRead(parent, status);
        return std::nullopt;
    }
    return reader.result();
}

namespace {

IoStatus writeTaggedData(const PcmFormat& format,
                         const std::vector<TaggedMeasurement>& measurements) {
    auto& files = format.context().files;
    const auto name = formatPrintf(kTagFormat, format.dGroup);
    if (measurements.empty()) {
        return files.removeIfThere(name);  // an empty file would be an edit to an undo
    }
    const auto prefix = groupHead('D', format.dGroup);
    auto writer = files.writer(name);
    std::map<int, int> numbers;  // each list has a count of its own
    for (const auto& measurement : measurements) {
        writeMeasurement(writer.out(), prefix, measurement, ++numbers[measurement.list]);
    }
    return writer.close();
}

}  // namespace

bool storeTaggedData(PcmFormat& format, UserInterface* parent,
                     const std::vector<TaggedMeasurement>& measurements) {
    if (!hasTaggedData(format)) {
        return false;
    }
    giveMeasurementGroup(format, parent);  // a stream that was never saved has none
    const auto status = writeTaggedData(format, measurements);
    if (!status.ok()) {
        reportUnableToWrite(parent, status);
        return false;
    }
    format.changed = true;
    return true;
}

bool checkTaggedName(const PcmFormat& format, UserInterface* parent,
                     std::span<const TaggedMeasurement> others, std::string_view name) {
    const auto& messages = format.context().messages;
    if (name.empty()) {
        showBox(parent, "Please enter a name for this measurement.",
                std::string(loadText(title::kError).value_or("")));
        return false;
    }
    if (const auto first = Occurrences(format, name).next()) {
        messages.show(parent, 334, title::kError, kErrorBox, first->fwp, first->fn);
        return false;
    }
    const bool taken = std::any_of(
        others.begin(), others.end(),
        [name](const TaggedMeasurement& other) { return equalsIgnoreCase(other.name(), name); });
    if (taken) {
        messages.show(parent, 339, title::kError, kErrorBox);
    }
    return !taken;
}

}  // namespace kavu
