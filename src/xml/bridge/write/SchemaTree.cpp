#include "xml/bridge/write/SchemaTree.h"

#include "core/text/Text.h"
#include "vocabulary/CGroupFields.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace kavu {

namespace {

/// Elements of which the one around them takes one kind.
struct Alternatives {
    char letter;
    std::string_view around;
    std::string_view names;     ///< each between two blanks
    std::string_view selector;  ///< the element whose text tells which, or empty
    std::string_view texts;     ///< "text=name" between two bars
};

constexpr auto kAlternatives = std::to_array<Alternatives>({
    {'R', "RecordingEventDefinitions/RecordingIndex", " TimeValue CountValue ", "Type",
     "|Time=TimeValue|Count=CountValue|"},
    {'R', "Data",
     " PCMDataTypeAttributes MIL-STD-1553BusDataTypeAttributes AnalogDataTypeAttributes "
     "DiscreteDataTypeAttributes ARINC429BusDataTypeAttributes VideoDataTypeAttributes "
     "TimeDataTypeAttributes ImageDataTypeAttributes UARTDataTypeAttributes "
     "MessageDataTypeAttributes IEEE1394DataTypeAttributes ParallelDataTypeAttributes "
     "EthernetDataTypeAttributes TSPICTSDataTypeAttributes ",
     "ChannelDataType",
     "|PCM Input=PCMDataTypeAttributes|1553 Input=MIL-STD-1553BusDataTypeAttributes|"
     "Analog Input=AnalogDataTypeAttributes|Discrete Input=DiscreteDataTypeAttributes|"
     "ARINC-429 Input=ARINC429BusDataTypeAttributes|Video Input=VideoDataTypeAttributes|"
     "Time Input=TimeDataTypeAttributes|Image Data Input=ImageDataTypeAttributes|"
     "UART Input=UARTDataTypeAttributes|Message Data Input=MessageDataTypeAttributes|"
     "IEEE 1394 Input=IEEE1394DataTypeAttributes|Parallel Input=ParallelDataTypeAttributes|"
     "Ethernet Input=EthernetDataTypeAttributes|TSPI/CTS Input=TSPICTSDataTypeAttributes|"},
    {'R', "Data/MIL-STD-1553BusDataTypeAttributes/MessageFilteringDefinitions",
     " CommandWord Address ", "CommandWordEntry",
     "|Command Word=CommandWord|Address Fields=Address|"},
    {'R', "Data/MIL-STD-1553BusDataTypeAttributes/MessageFilteringDefinitions/RTRT",
     " CommandWord Address ", "CommandWordEntry",
     "|Command Word=CommandWord|Address Fields=Address|"},
    {'M', "BasebandSignal", " DataLinkName MeasurementName ", "", ""},
    {'M', "Subcarriers/IRIGSubcarrier", " DataLinkName MeasurementName ", "", ""},
    {'C', "TelemetryValueDefinition", " FloatingPointFormat BitWeight ", "BinaryFormat",
     "|Floating Point=FloatingPointFormat|Bit Weight=BitWeight|"},
    {'C', "DataConversion",
     " PairSets Coefficients NegativePowersOfX Other Derived Discrete PCMTime Time1553 "
     "DigitalVoice "
     "DigitalVideo ",
     "@Type",
     "|Pair Sets=PairSets|Coefficients=Coefficients|Coefficients (Negative Powers Of X)="
     "NegativePowersOfX|Derived=Derived|Discrete=Discrete|PCM Time=PCMTime|1553 Time=Time1553|"
     "Voice=DigitalVoice|Video=DigitalVideo|Special Processing=Other|Other=Other|"},
    {'P', "FormatChange", " MeasurementListChange FormatStructureChange ", "", ""},
    {'D', "MeasurementList/Measurement", " WordAndFrame TaggedData ", "LocationType",
     "|Word and Frame=WordAndFrame|Tagged Data=TaggedData|"},
    {'B', "Bus/Message", " CommandWordValue Address ", "CommandWordType",
     "|Command Word=CommandWordValue|Address Fields=Address|"},
    {'B', "Bus/Message/RTRTReceiveCommandList", " CommandWordValue Address ", "CommandWordType",
     "|Command Word=CommandWordValue|Address Fields=Address|"},
    {'S', "Stream", " Fixed Delimited ", "Layout", "|Fixed=Fixed|Delimited=Delimited|"},
});

/// The records of measurements that a multiplex group names.
constexpr std::string_view kConversions = "DataConversionAttributes";

std::string below(const std::string& path, std::string_view name) {
    return path.empty() ? std::string(name) : path + "/" + std::string(name);
}

std::string attributeOf(const SchemaPart& part, std::string_view name) {
    const auto key = " " + std::string(name) + "=\"";
    const auto at = part.tag.find(key);
    if (at == std::string::npos) {
        return {};
    }
    const auto start = at + key.size();
    return part.tag.substr(start, part.tag.find('"', start) - start);
}

std::string selectorText(const SchemaPart& part, std::string_view selector) {
    if (selector.starts_with('@')) {
        return attributeOf(part, selector.substr(1));
    }
    for (const auto& inner : part.inside) {
        if (inner.name() == selector) {
            return inner.text;
        }
    }
    return {};
}

bool isListed(std::string_view names, std::string_view name) {
    return names.find(" " + std::string(name) + " ") != std::string_view::npos;
}

/// Numbers, dates and masks are what they are without the blanks around them.
bool keepsBlanks(SchemaType type) {
    return type == SchemaType::Text || type == SchemaType::Choice;
}

bool mayBeEmpty(SchemaType type) {
    return type == SchemaType::Text || type == SchemaType::Binary ||
           type == SchemaType::BinaryOrAny || type == SchemaType::HexBinary;
}

}  // namespace

std::string_view SchemaPart::name() const {
    return std::string_view(tag).substr(0, tag.find(' '));
}

void SchemaTree::lose(const SchemaPart& part) const {
    if (part.isChecked) {
        return;
    }
    if (!part.code.empty()) {
        lose_(part.code);
    }
    for (const auto& inner : part.inside) {
        lose(inner);
    }
}

bool SchemaTree::check(SchemaPart& part) const {
    return part.isValue ? checkValue(part, path_) : checkInside(part, path_);
}

bool SchemaTree::checkValue(SchemaPart& part, const std::string& path) const {
    const auto* const element = findSchemaElement(letter_, path);
    const bool isNoChoice = part.text.starts_with(kNoChoice);
    if (isNoChoice) {
        part.text.erase(0, 1);
    }
    const bool wantsChoice =
        element != nullptr && element->type == SchemaType::Choice && element->words.empty();
    if (element != nullptr && !(isNoChoice && wantsChoice)) {
        if (!keepsBlanks(element->type)) {
            part.text = std::string(trim(part.text));
        }
        const bool isEmptyWithAttribute = part.text.empty() &&
                                          part.tag.find('=') != std::string::npos &&
                                          mayBeEmpty(element->type);
        if (isEmptyWithAttribute ||
            (element->type != SchemaType::Group && isSchemaText(*element, part.text))) {
            return true;
        }
    }
    lose(part);
    return false;
}

/// Of alternatives the one stays that is meant, or the first one.
void SchemaTree::chooseOne(SchemaPart& part, const std::string& path) const {
    for (const auto& alternatives : kAlternatives) {
        if (alternatives.letter != letter_ || alternatives.around != path) {
            continue;
        }
        std::string chosen;
        const auto key = "|" + selectorText(part, alternatives.selector) + "=";
        if (const auto at = alternatives.texts.find(key);
            !alternatives.selector.empty() && at != std::string_view::npos) {
            const auto start = at + key.size();
            chosen = alternatives.texts.substr(start, alternatives.texts.find('|', start) - start);
        }
        const auto isThere = [&](std::string_view name) {
            return std::any_of(part.inside.begin(), part.inside.end(),
                               [&](const SchemaPart& inner) { return inner.name() == name; });
        };
        if (chosen.empty() || !isThere(chosen)) {
            for (const auto& inner : part.inside) {
                if (isListed(alternatives.names, inner.name())) {
                    chosen = inner.name();
                    break;
                }
            }
        }
        std::erase_if(part.inside, [&](const SchemaPart& inner) {
            const bool isOther =
                isListed(alternatives.names, inner.name()) && inner.name() != chosen;
            if (isOther) {
                lose(inner);
            }
            return isOther;
        });
    }
}

/// An element that must be there is empty where it may be. False if one cannot be.
bool SchemaTree::addRequired(SchemaPart& part, const std::string& path) const {
    std::size_t place = 0;
    for (const auto& element : schemaElements(letter_)) {
        const auto slash = element.path.rfind('/');
        const auto around =
            slash == std::string_view::npos ? std::string_view{} : element.path.substr(0, slash);
        if (around != path || element.path.empty()) {
            continue;
        }
        const auto name =
            slash == std::string_view::npos ? element.path : element.path.substr(slash + 1);
        if (name.starts_with('@')) {
            if (element.isRequired && !part.tag.empty() &&
                part.tag.find(" " + std::string(name.substr(1)) + "=\"") == std::string::npos) {
                return false;
            }
            continue;
        }
        const auto first = place;
        while (place < part.inside.size() && part.inside[place].name() == name) {
            ++place;
        }
        if (place > first || !element.isRequired) {
            continue;
        }
        SchemaPart added{.tag = std::string(name)};
        added.isValue = true;
        added.isKept = true;
        if (letter_ == 'B' && element.path == "Bus/Type") {
            // Before there were others every bus was one.
            added.text = "1553";
        } else if (!mayBeEmpty(element.type)) {
            return false;
        }
        part.inside.insert(part.inside.begin() + static_cast<std::ptrdiff_t>(place),
                           std::move(added));
        ++place;
    }
    return true;
}

/// Of an element that the schema has once, further ones have no place. In a calibration the schema
/// repeats its three elements together, and each of them may lack.
void SchemaTree::dropFurther(SchemaPart& part, const std::string& path) const {
    if (letter_ == 'C' && (path == c::kMcN.element || path == c::kMaN.element)) {
        return;
    }
    std::string last;
    std::erase_if(part.inside, [&](const SchemaPart& inner) {
        const std::string name(inner.name());
        const auto* const element = findSchemaElement(letter_, below(path, name));
        const bool isFurther =
            !inner.isChecked && name == last && element != nullptr && !element->repeats;
        last = name;
        if (isFurther) {
            lose(inner);
        }
        return isFurther;
    });
}

bool SchemaTree::checkInside(SchemaPart& part, const std::string& path) const {
    if (part.isChecked) {
        return true;
    }
    const auto holdsChecked = [](const SchemaPart& inner) {
        return !inner.inside.empty() &&
               std::all_of(inner.inside.begin(), inner.inside.end(),
                           [](const SchemaPart& own) { return own.isChecked; });
    };
    chooseOne(part, path);
    dropFurther(part, path);
    std::erase_if(part.inside, [&](SchemaPart& inner) {
        const auto innerPath = below(path, inner.name());
        // Another group in this one has a table of its own, and its parts are checked by it.
        if (inner.isChecked || holdsChecked(inner) || inner.name() == kConversions) {
            return false;
        }
        if (findSchemaElement(letter_, innerPath) == nullptr || isListed(without_, inner.name())) {
            lose(inner);
            return true;
        }
        return inner.isValue ? !checkValue(inner, innerPath) : !checkInside(inner, innerPath);
    });
    if (part.inside.empty() && !part.isKept) {
        return false;
    }
    // The parts of most groups are checked one by one, and their groups take any of them.
    const bool isWhole = !path.empty() || letter_ == 'B';
    if (isWhole && !addRequired(part, path)) {
        lose(part);
        return false;
    }
    return true;
}

}  // namespace kavu
