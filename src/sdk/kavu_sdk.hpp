// Read access to TMATS files for programs in C++17 or later: the C interface (kavu_sdk.h) with
// owners and texts. Link with -lkavu_sdk.
#ifndef KAVU_SDK_HPP
#define KAVU_SDK_HPP

#include <cstdint>
#include <kavu_sdk.h>
#include <memory>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace kavu_sdk_cpp {

/// What a session could not do; the text is its last error.
struct SdkError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// The commands of a group or of a conversion record, in the order of the file.
class Group {
  public:
    explicit Group(kavu_sdk_group* group) : group_(group, &kavu_sdk_close_group) {}

    std::int64_t number() const { return kavu_sdk_group_number(group_.get()); }
    std::size_t size() const { return kavu_sdk_group_size(group_.get()); }
    /// REQUIRES: index < size().
    std::string field(std::size_t index) const { return kavu_sdk_group_field(group_.get(), index); }
    std::string value(std::size_t index) const { return kavu_sdk_group_value(group_.get(), index); }
    std::optional<std::string> find(const std::string& name) const {
        const char* const found = kavu_sdk_group_find(group_.get(), name.c_str());
        return found == nullptr ? std::nullopt : std::optional<std::string>(found);
    }

  private:
    std::unique_ptr<kavu_sdk_group, decltype(&kavu_sdk_close_group)> group_;
};

/// A session on a file, from construction to destruction.
class Session {
  public:
    /// Throws an `SdkError` if the file cannot be read.
    explicit Session(const std::string& path) : session_(kavu_sdk_new(), &kavu_sdk_free) {
        if (session_ == nullptr) {
            throw std::bad_alloc();
        }
        check(kavu_sdk_open(get(), path.c_str()));
    }

    kavu_sdk* get() const { return session_.get(); }
    int version() const { return kavu_sdk_version(get()); }
    std::vector<std::string> errors() const {
        std::vector<std::string> all;
        for (std::size_t i = 0; i < kavu_sdk_error_count(get()); ++i) {
            all.emplace_back(kavu_sdk_error(get(), i));
        }
        return all;
    }

    int streamCount() const { return kavu_sdk_stream_count(get()); }
    kavu_sdk_stream stream(int number) const {
        kavu_sdk_stream result{};
        check(kavu_sdk_get_stream(get(), number, &result));
        return result;
    }
    void loadStream(int number) { check(kavu_sdk_load_stream(get(), number)); }

    std::size_t measurementCount() const { return kavu_sdk_measurement_count(get()); }
    kavu_sdk_measurement measurement(std::size_t index) const {
        kavu_sdk_measurement result{};
        check(kavu_sdk_get_measurement(get(), index, &result));
        return result;
    }
    std::vector<kavu_sdk_fragment> fragments(std::size_t index, int location) const {
        std::vector<kavu_sdk_fragment> all;
        const int count = kavu_sdk_fragment_count(get(), index, location);
        check(count);
        for (int n = 1; n <= count; ++n) {
            kavu_sdk_fragment fragment{};
            check(kavu_sdk_get_fragment(get(), index, location, n, &fragment));
            all.push_back(fragment);
        }
        return all;
    }

    std::optional<Group> openGroup(char letter, int number = 0) const {
        return groupOf(kavu_sdk_open_group(get(), letter, number));
    }
    std::optional<Group> openConversion(const std::string& measurement) const {
        return groupOf(kavu_sdk_open_named_conversion(get(), measurement.c_str()));
    }

  private:
    static std::optional<Group> groupOf(kavu_sdk_group* group) {
        return group == nullptr ? std::nullopt : std::optional<Group>(Group(group));
    }
    void check(int result) const {
        if (result < 0) {
            const auto count = kavu_sdk_error_count(get());
            throw SdkError(count == 0 ? "there is no such stream, measurement or place"
                                      : kavu_sdk_error(get(), count - 1));
        }
    }

    std::unique_ptr<kavu_sdk, decltype(&kavu_sdk_free)> session_;
};

}  // namespace kavu_sdk_cpp

#endif
