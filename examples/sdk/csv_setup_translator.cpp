// A translator that writes the measurements of a TMATS file as a setup file of comma-separated
// values, one line for each fragment of each location.
//
//     c++ -std=c++17 -shared -fPIC csv_setup_translator.cpp -o csv_setup.so
#include <array>
#include <cstdio>
#include <cstring>
#include <kavu_translator.h>
#include <string>

namespace {

constexpr kavu_translator_item kItems[] = {
    {"CSV Setup", "Separator", "Character between two values", ","},
    {"CSV Setup", "Header", "Write a line of column names (1: yes, 0: no)", "1"},
};

/// The setup file that is being written. A value that holds a separator, a quote or a line break is
/// quoted.
class SetupFile {
  public:
    SetupFile(const kavu_translator_run& run, std::string separator)
        : run_(run), separator_(std::move(separator)), file_(std::fopen(run.output, "wb")) {}
    SetupFile(const SetupFile&) = delete;
    SetupFile& operator=(const SetupFile&) = delete;
    ~SetupFile() {
        if (file_ != nullptr) {
            (void)std::fclose(file_);
        }
    }

    [[nodiscard]] bool isOpen() const { return file_ != nullptr; }
    void put(const std::string& value) {
        line_ += line_.empty() && !hasValue_ ? "" : separator_;
        hasValue_ = true;
        if (value.find_first_of("\"\r\n" + separator_) == std::string::npos) {
            line_ += value;
            return;
        }
        line_ += '"';
        for (const char c : value) {
            line_ += c == '"' ? "\"\"" : std::string(1, c);
        }
        line_ += '"';
    }
    void put(int value) { put(std::to_string(value)); }
    void endLine() {
        line_ += '\n';
        isGood_ = std::fwrite(line_.data(), 1, line_.size(), file_) == line_.size() && isGood_;
        line_.clear();
        hasValue_ = false;
    }
    /// False if anything could not be written, which is reported.
    bool close() {
        isGood_ = std::fclose(file_) == 0 && isGood_;
        file_ = nullptr;
        if (!isGood_) {
            run_.message(run_.host, "The setup file could not be written.");
        }
        return isGood_;
    }

  private:
    const kavu_translator_run& run_;
    std::string separator_;
    std::FILE* file_;
    std::string line_;
    bool hasValue_ = false;
    bool isGood_ = true;
};

std::string conversionType(const kavu_translator_run& run, const char* measurement) {
    kavu_sdk_group* const record = run.open_named_conversion(run.session, measurement);
    if (record == nullptr) {
        return {};
    }
    const char* const type = run.group_find(record, "DCT");
    std::string text = type == nullptr ? "" : type;
    run.close_group(record);
    return text;
}

void writeMeasurement(const kavu_translator_run& run, const char* stream, std::size_t index,
                      SetupFile& file) {
    kavu_sdk_measurement measurement{};
    if (run.get_measurement(run.session, index, &measurement) < 0) {
        return;
    }
    const std::string name = measurement.name;
    const auto type = conversionType(run, name.c_str());
    if (measurement.locations == 0) {
        run.message(run.host, ("Measurement '" + name + "' has no place.").c_str());
    }
    for (int location = 1; location <= measurement.locations; ++location) {
        kavu_sdk_fragment fragment{};
        for (int n = 1; run.get_fragment(run.session, index, location, n, &fragment) == 0; ++n) {
            std::array<char, 128> mask{};
            (void)run.mask(run.session, index, location, n, mask.data(), mask.size());
            file.put(stream);
            file.put(name);
            for (const int value :
                 {measurement.word_length, location, fragment.number, fragment.word.start,
                  fragment.word.interval, fragment.word.end, fragment.frame.start,
                  fragment.frame.interval, fragment.frame.end}) {
                file.put(value);
            }
            file.put(mask.data());
            file.put(type);
            file.endLine();
        }
    }
}

/// False if the user has cancelled.
bool writeStream(const kavu_translator_run& run, int number, SetupFile& file) {
    kavu_sdk_stream stream{};
    if (run.get_stream(run.session, number, &stream) < 0) {
        return true;
    }
    const std::string name = stream.name;
    if (run.load_stream(run.session, number) < 0) {
        run.message(run.host, ("Stream '" + name + "' is left out.").c_str());
        return true;
    }
    for (std::size_t i = 0; i < run.measurement_count(run.session); ++i) {
        if (i % 100 == 0 &&
            run.progress(run.host, ("Translating stream '" + name + "'").c_str()) != 0) {
            return false;
        }
        writeMeasurement(run, name.c_str(), i, file);
    }
    return true;
}

int convertAll(const kavu_translator_run& run) {
    const char* const separator = run.item(run.host, "CSV Setup", "Separator");
    const char* const header = run.item(run.host, "CSV Setup", "Header");
    SetupFile file(run, separator == nullptr || *separator == 0 ? "," : separator);
    if (!file.isOpen()) {
        run.message(run.host, "The setup file could not be made.");
        return -1;
    }
    if (header == nullptr || std::strcmp(header, "0") != 0) {
        for (const char* const name : {"stream", "measurement", "bits", "location", "fragment",
                                       "first word", "word interval", "last word", "first frame",
                                       "frame interval", "last frame", "mask", "conversion"}) {
            file.put(std::string(name));
        }
        file.endLine();
    }
    for (std::size_t i = 0; i < run.stream_count; ++i) {
        if (!writeStream(run, run.streams[i], file)) {
            return -1;
        }
    }
    return file.close() ? 0 : -1;
}

int convert(const kavu_translator_run* run) {
    try {
        return convertAll(*run);
    } catch (...) {
        return -1;
    }
}

constexpr kavu_translator kTranslator = {KAVU_TRANSLATOR_INTERFACE,
                                         "CSV Setup",
                                         "Convert TMATS file To &CSV Setup Format",
                                         ".csv",
                                         kItems,
                                         sizeof kItems / sizeof kItems[0],
                                         &convert};

}  // namespace

extern "C" KAVU_SDK_API const kavu_translator* kavu_translator_module(void) {
    return &kTranslator;
}
