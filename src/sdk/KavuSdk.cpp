// The C interface of a translator session. Nothing may pass through it but what C knows: every
// function catches what could be thrown, which is only a lack of memory.
#include "core/text/Text.h"
#include "pcm/PcmFormat.h"
#include "sdk/SdkHandle.h"
#include "sdk/kavu_sdk.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <new>
#include <utility>

namespace {

/// A session with what it needs.
struct OwnSession {
    kavu::SystemClock clock;
    kavu::SystemRandomSource random;
    kavu::TranslatorSdk session{kavu::Environment::ofProcess(), clock, random};
};

}  // namespace

struct kavu_sdk_group {
    kavu::SdkGroup group;
    std::string field;
    std::string value;
    std::string found;
};

namespace {

/// Runs a step; a failure of memory is that of the function.
template <typename Result, typename Step>
Result guarded(Result failure, const Step& step) noexcept {
    try {
        return step();
    } catch (...) {
        return failure;
    }
}

const char* keepText(std::string& kept, std::string_view stored) {
    kept.assign(stored);
    kavu::fromStoredForm(kept);
    return kept.c_str();
}

kavu_sdk_range rangeOfC(const kavu::SdkRange& range) {
    return {range.start, range.interval, range.end};
}

/// An index as the session counts; one that it cannot count is beyond all of its measurements.
unsigned indexOf(std::size_t index) {
    constexpr auto kBeyond = std::numeric_limits<unsigned>::max();
    return index < kBeyond ? static_cast<unsigned>(index) : kBeyond;
}

/// Null, and no error, for a place that is not: programs ask for one after the other until there
/// are no more.
const kavu::SdkFragment* fragmentAt(const kavu_sdk* session, std::size_t index, int location,
                                    int number) {
    if (session == nullptr || index >= session->session->measurementCount()) {
        return nullptr;
    }
    const auto& locations = session->session->measurement(indexOf(index)).locations;
    if (location < 1 || static_cast<std::size_t>(location) > locations.size()) {
        return nullptr;
    }
    const auto& fragments = locations[static_cast<std::size_t>(location) - 1].fragments;
    return number < 1 || static_cast<std::size_t>(number) > fragments.size()
               ? nullptr
               : &fragments[static_cast<std::size_t>(number) - 1];
}

kavu_sdk_group* newGroup(std::optional<kavu::SdkGroup> group) {
    return group ? new kavu_sdk_group{std::move(*group), {}, {}, {}} : nullptr;
}

}  // namespace

extern "C" {

int kavu_sdk_interface(void) {
    return KAVU_SDK_INTERFACE;
}

kavu_sdk* kavu_sdk_new(void) {
    return guarded<kavu_sdk*>(nullptr, [] {
        auto own = std::make_shared<OwnSession>();
        return new kavu_sdk{&own->session, own};
    });
}

void kavu_sdk_free(kavu_sdk* session) {
    delete session;
}

int kavu_sdk_open(kavu_sdk* session, const char* path) {
    return guarded(-1, [&] {
        return session != nullptr && path != nullptr && session->session->open(path, nullptr) ? 0
                                                                                              : -1;
    });
}

void kavu_sdk_close(kavu_sdk* session) {
    guarded(0, [&] {
        if (session != nullptr) {
            session->session->close();
        }
        return 0;
    });
}

size_t kavu_sdk_error_count(const kavu_sdk* session) {
    return session == nullptr ? 0 : session->session->errors().size();
}

const char* kavu_sdk_error(const kavu_sdk* session, size_t index) {
    return index < kavu_sdk_error_count(session) ? session->session->errors()[index].c_str()
                                                 : nullptr;
}

int kavu_sdk_version(const kavu_sdk* session) {
    return session == nullptr ? 0 : session->session->version();
}

int kavu_sdk_substitute(kavu_sdk* session, const char* from, const char* to) {
    return guarded(-1, [&] {
        if (session == nullptr || (from == nullptr) != (to == nullptr)) {
            return -1;
        }
        if (from == nullptr) {
            session->session->clearSubstitutions();
        } else {
            session->session->addSubstitution(from, to);
        }
        return 0;
    });
}

size_t kavu_sdk_source_count(const kavu_sdk* session) {
    return session == nullptr ? 0 : session->session->sources().size();
}

const char* kavu_sdk_source_name(const kavu_sdk* session, size_t index) {
    return index < kavu_sdk_source_count(session) ? session->session->sources()[index].name.c_str()
                                                  : nullptr;
}

const char* kavu_sdk_source_type(const kavu_sdk* session, size_t index) {
    return index < kavu_sdk_source_count(session) ? session->session->sources()[index].type.c_str()
                                                  : nullptr;
}

int kavu_sdk_stream_count(const kavu_sdk* session) {
    return session == nullptr ? 0 : session->session->streamCount();
}

int kavu_sdk_get_stream(const kavu_sdk* session, int number, kavu_sdk_stream* stream) {
    if (stream == nullptr || number < 1 || number > kavu_sdk_stream_count(session)) {
        return -1;
    }
    const auto& link = session->session->links()[static_cast<std::size_t>(number) - 1];
    *stream = {link.name.c_str(), link.type.c_str(), link.isNamed ? 1 : 0, link.group('P'),
               link.group('D'),   link.group('B'),   link.group('A'),      link.group('S')};
    return 0;
}

int kavu_sdk_find_stream(const kavu_sdk* session, const char* name) {
    return guarded(-1, [&] {
        const auto* const link =
            session == nullptr || name == nullptr ? nullptr : session->session->findLink(name);
        return link == nullptr ? -1 : link->number;
    });
}

int kavu_sdk_load_stream(kavu_sdk* session, int number) {
    return guarded(-1, [&] {
        return session == nullptr ? -1 : session->session->ParseTmatsPcmFormatInfo(number);
    });
}

int kavu_sdk_words_per_frame(const kavu_sdk* session) {
    return session == nullptr ? 0 : session->session->format().wordsPerMinorFrame;
}

int kavu_sdk_frame_count(const kavu_sdk* session) {
    return session == nullptr ? 0 : session->session->format().numberOfFrames;
}

int kavu_sdk_word_length(const kavu_sdk* session, int word) {
    return word < 0 || word >= kavu_sdk_words_per_frame(session)
               ? 0
               : session->session->format().wordLength(word);
}

size_t kavu_sdk_measurement_count(const kavu_sdk* session) {
    return session == nullptr ? 0 : session->session->measurementCount();
}

int kavu_sdk_get_measurement(kavu_sdk* session, size_t index, kavu_sdk_measurement* result) {
    if (result == nullptr || index >= kavu_sdk_measurement_count(session)) {
        return -1;
    }
    const auto& measurement = session->session->measurement(indexOf(index));
    *result = {measurement.name.c_str(), measurement.locationType.c_str(),
               measurement.wordLength,   static_cast<int>(measurement.locations.size()),
               measurement.bus,          measurement.message};
    return 0;
}

long kavu_sdk_find_measurement(const kavu_sdk* session, const char* name) {
    return guarded(-1L, [&] {
        const auto found = session == nullptr || name == nullptr
                               ? std::nullopt
                               : session->session->findMeasurement(name);
        return found ? static_cast<long>(*found) : -1L;
    });
}

int kavu_sdk_fragment_count(kavu_sdk* session, size_t index, int location) {
    if (fragmentAt(session, index, location, 1) == nullptr) {
        return -1;
    }
    const auto& measurement = session->session->measurement(indexOf(index));
    return static_cast<int>(
        measurement.locations[static_cast<std::size_t>(location) - 1].fragments.size());
}

int kavu_sdk_get_fragment(kavu_sdk* session, size_t index, int location, int number,
                          kavu_sdk_fragment* fragment) {
    return guarded(-1, [&] {
        const auto* const found = fragmentAt(session, index, location, number);
        if (found == nullptr || fragment == nullptr) {
            return -1;
        }
        *fragment = {found->number,
                     rangeOfC(found->word),
                     rangeOfC(found->frame),
                     found->wordLength,
                     found->bitMask().isFullWord() ? 1 : 0,
                     found->transferOrder};
        return 0;
    });
}

int kavu_sdk_mask(kavu_sdk* session, size_t index, int location, int number, char* buffer,
                  size_t size) {
    return guarded(-1, [&] {
        return session == nullptr ? -1
                                  : session->session->GetMeasurementBitMask(
                                        indexOf(index), location, number, buffer, size);
    });
}

int kavu_sdk_mask_words(kavu_sdk* session, size_t index, int location, int number,
                        uint32_t words[2]) {
    return guarded(-1, [&] {
        const auto* const found =
            session == nullptr || words == nullptr
                ? nullptr
                : session->session->findFragment(indexOf(index), location, number,
                                                 "kavu_sdk_mask_words");
        if (found == nullptr) {
            return -1;
        }
        const auto value = found->bitMask().value();
        words[0] = static_cast<uint32_t>(value >> 32U);
        words[1] = static_cast<uint32_t>(value & 0xFFFFFFFFU);
        return 0;
    });
}

int kavu_sdk_mask_bits(kavu_sdk* session, size_t index, int location, int number, int* bits,
                       size_t room) {
    return guarded(-1, [&] {
        std::vector<int> all;
        if (session == nullptr || session->session->GetMeasurementBitMaskBitLocations(
                                      indexOf(index), location, number, all) < 0) {
            return -1;
        }
        if (bits != nullptr) {
            std::copy_n(all.begin(), std::min(room, all.size()), bits);
        }
        return static_cast<int>(all.size());
    });
}

kavu_sdk_group* kavu_sdk_open_group(kavu_sdk* session, char letter, int number) {
    return guarded<kavu_sdk_group*>(nullptr, [&]() -> kavu_sdk_group* {
        return session == nullptr ? nullptr
                                  : newGroup(session->session->openGroup(
                                        letter, static_cast<std::int64_t>(number)));
    });
}

kavu_sdk_group* kavu_sdk_open_named_group(kavu_sdk* session, char letter, const char* name) {
    return guarded<kavu_sdk_group*>(nullptr, [&]() -> kavu_sdk_group* {
        return session == nullptr || name == nullptr
                   ? nullptr
                   : newGroup(session->session->openGroup(letter, std::string_view(name)));
    });
}

kavu_sdk_group* kavu_sdk_open_conversion(kavu_sdk* session, int64_t number) {
    return guarded<kavu_sdk_group*>(nullptr, [&]() -> kavu_sdk_group* {
        kavu::SdkGroup record;
        return session == nullptr ||
                       session->session->GetMeasurementEUInfoByIndex(number, record) < 0
                   ? nullptr
                   : newGroup(std::move(record));
    });
}

kavu_sdk_group* kavu_sdk_open_named_conversion(kavu_sdk* session, const char* name) {
    return guarded<kavu_sdk_group*>(nullptr, [&]() -> kavu_sdk_group* {
        const auto place = session == nullptr || name == nullptr
                               ? std::nullopt
                               : session->session->findConversion(std::string(name));
        return place ? newGroup(session->session->openConversion(*place)) : nullptr;
    });
}

void kavu_sdk_close_group(kavu_sdk_group* group) {
    delete group;
}

int kavu_sdk_coefficients(kavu_sdk* session, const kavu_sdk_group* record, double* coefficients,
                          size_t room, int* negative) {
    return guarded(-1, [&] {
        kavu::EuEvaluation found;
        if (session == nullptr || record == nullptr ||
            session->session->GetMeasurementEUCoefficients(record->group, found) < 0) {
            return -1;
        }
        const auto& all = found.coefficients();
        if (coefficients != nullptr) {
            std::copy_n(all.begin(), std::min(room, all.size()), coefficients);
        }
        if (negative != nullptr) {
            *negative = found.negativePowers() ? 1 : 0;
        }
        return static_cast<int>(all.size());
    });
}

int kavu_sdk_evaluate(kavu_sdk* session, const kavu_sdk_group* record, double telemetry,
                      double* value) {
    return guarded(-1, [&] {
        kavu::EuEvaluation found;
        if (session == nullptr || record == nullptr || value == nullptr ||
            session->session->GetMeasurementEUCoefficients(record->group, found) < 0) {
            return -1;
        }
        const auto result = found.value(telemetry);
        *value = result.value_or(0);
        return result ? 0 : -1;
    });
}

int64_t kavu_sdk_group_number(const kavu_sdk_group* group) {
    return group == nullptr ? 0 : group->group.number();
}

size_t kavu_sdk_group_size(const kavu_sdk_group* group) {
    return group == nullptr ? 0 : group->group.size();
}

const char* kavu_sdk_group_field(kavu_sdk_group* group, size_t index) {
    return guarded<const char*>(nullptr, [&]() -> const char* {
        return index < kavu_sdk_group_size(group)
                   ? keepText(group->field, group->group.at(index).field)
                   : nullptr;
    });
}

const char* kavu_sdk_group_value(kavu_sdk_group* group, size_t index) {
    return guarded<const char*>(nullptr, [&]() -> const char* {
        return index < kavu_sdk_group_size(group)
                   ? keepText(group->value, group->group.at(index).value)
                   : nullptr;
    });
}

const char* kavu_sdk_group_find(kavu_sdk_group* group, const char* field) {
    return guarded<const char*>(nullptr, [&]() -> const char* {
        const auto value =
            group == nullptr || field == nullptr ? std::nullopt : group->group.value(field);
        return value ? keepText(group->found, *value) : nullptr;
    });
}

}  // extern "C"
