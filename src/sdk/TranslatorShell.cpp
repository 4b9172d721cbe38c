#include "sdk/TranslatorShell.h"

#include "core/files/FileIo.h"
#include "core/talk/FilePrompts.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "sdk/SdkHandle.h"
#include "sdk/TranslatorSdk.h"

#include <utility>

namespace kavu {

namespace {

constexpr std::string_view kLog = "TranslatLog.txt";
constexpr std::string_view kShellVersion = "Version 4.00";

/// What a module reaches through its host.
struct ModuleHost {
    const TranslatorConfiguration& configuration;
    FileWriter& log;
    UserInterface* parent;
    int messages = 0;

    void write(std::string_view text) {
        ++messages;
        log.write(trimRight(text));
        log.put('\n');
    }
};

// The functions of a module's host; none may throw into the module.

const char* itemOfHost(void* host, const char* section, const char* key) {
    const auto* const value =
        section == nullptr || key == nullptr
            ? nullptr
            : static_cast<ModuleHost*>(host)->configuration.value(section, key);
    return value == nullptr ? nullptr : value->c_str();
}

void messageToHost(void* host, const char* text) {
    if (text != nullptr) {
        static_cast<ModuleHost*>(host)->write(text);
    }
}

int progressOfHost(void* host, const char* text) {
    auto* const parent = static_cast<ModuleHost*>(host)->parent;
    if (text != nullptr && parent != nullptr) {
        setStatusText(parent, text);
        yieldToInterface(parent);
    }
    return cancelRequested(parent) ? 1 : 0;
}

kavu_translator_run runOf(const std::string& input, const std::string& output, kavu_sdk* session,
                          const std::vector<int>& streams, ModuleHost& host) {
    kavu_translator_run run{};
    run.input = input.c_str();
    run.output = output.c_str();
    run.session = session;
    run.streams = streams.data();
    run.stream_count = streams.size();
    run.host = &host;
    run.item = &itemOfHost;
    run.message = &messageToHost;
    run.progress = &progressOfHost;
    run.get_stream = &kavu_sdk_get_stream;
    run.load_stream = &kavu_sdk_load_stream;
    run.words_per_frame = &kavu_sdk_words_per_frame;
    run.frame_count = &kavu_sdk_frame_count;
    run.word_length = &kavu_sdk_word_length;
    run.measurement_count = &kavu_sdk_measurement_count;
    run.get_measurement = &kavu_sdk_get_measurement;
    run.fragment_count = &kavu_sdk_fragment_count;
    run.get_fragment = &kavu_sdk_get_fragment;
    run.mask = &kavu_sdk_mask;
    run.mask_bits = &kavu_sdk_mask_bits;
    run.open_group = &kavu_sdk_open_group;
    run.open_named_conversion = &kavu_sdk_open_named_conversion;
    run.close_group = &kavu_sdk_close_group;
    run.group_size = &kavu_sdk_group_size;
    run.group_field = &kavu_sdk_group_field;
    run.group_value = &kavu_sdk_group_value;
    run.group_find = &kavu_sdk_group_find;
    return run;
}

std::string durationText(std::int64_t seconds) {
    return formatPrintf("%2.2d:%2.2d:%2.2d", seconds / 3600, seconds / 60 % 60, seconds % 60);
}

}  // namespace

TranslatorShell::TranslatorShell(const kavu_translator* translator, std::string folder,
                                 Environment environment, const Clock& clock, RandomSource& random,
                                 ViewFile viewFile)
    : translator_(translator),
      folder_(std::move(folder)),
      environment_(std::move(environment)),
      clock_(clock),
      random_(random),
      viewFile_(std::move(viewFile)) {}

std::string TranslatorShell::logPath() const {
    return folder_ + (folder_.ends_with('/') ? "" : "/") + std::string(kLog);
}

TranslatorConfiguration TranslatorShell::EditConfiguration(UserInterface* parent) const {
    return {folder_, translator_, parent};
}

bool TranslatorShell::openLog(UserInterface* parent, const std::string& tmatsFile,
                              FileWriter& log) {
    auto status = makeFolders(folder_);
    if (status.ok()) {
        status = log.open(logPath(), WriteMode::Truncate);
    }
    if (!status.ok()) {
        showBox(parent, formatPrintf("Unable to open log file: '%s'.", logPath()),
                "ERROR: Unable To Open Log File");
        return false;
    }
    const auto now = clock_.now();
    log.write(formatPrintf("KAVU Translator %s\nDate: %s\nTime: %s\nTMATS File: %s\n\n",
                           kShellVersion, dateText(now), timeText(now), tmatsFile));
    log.write(formatPrintf("Conversion started at: %s", timeText(now)) + "\n\n");
    return true;
}

bool TranslatorShell::chooseStreams(UserInterface* parent,
                                    const TranslatorConfiguration& configuration,
                                    const TranslatorSdk& sdk, std::vector<int>& streams) const {
    for (const auto& link : sdk.links()) {
        streams.push_back(link.number);
    }
    if (configuration.processesAllStreams() || parent == nullptr || streams.size() < 2) {
        return true;
    }
    TablePrompt prompt;
    prompt.title = "Select Streams To Convert";
    prompt.columns = {"#", "Data Link", "Type"};
    for (const auto& link : sdk.links()) {
        prompt.rows.push_back({std::to_string(link.number), link.name, link.type});
    }
    streams.clear();
    for (const int row : parent->selectRowsFromTable(prompt)) {
        streams.push_back(sdk.links()[static_cast<std::size_t>(row)].number);
    }
    return !streams.empty();
}

bool TranslatorShell::Convert(UserInterface* parent, const std::string& tmatsFile,
                              const std::string& output) {
    FileWriter log;
    if (absolutePath(tmatsFile) == absolutePath(output)) {
        showBox(parent, formatPrintf("'%s' cannot be its own setup file.", tmatsFile),
                std::string(translator_text::kErrorTitle));
        return false;
    }
    if (translator_ == nullptr || !openLog(parent, tmatsFile, log)) {
        return false;
    }
    const auto started = clock_.steadySeconds();
    const TranslatorConfiguration configuration(folder_, translator_, parent);
    ModuleHost host{configuration, log, parent};
    const ProgressScope window(parent, ProgressMode::WithCancel, false);
    setStatusText(parent, "Translating TMATS file.");
    TranslatorSdk sdk(environment_, clock_, random_);
    std::vector<int> streams;
    bool isConverted = sdk.open(tmatsFile, parent);
    if (isConverted && chooseStreams(parent, configuration, sdk, streams)) {
        kavu_sdk session{&sdk, nullptr};
        const auto run = runOf(tmatsFile, output, &session, streams, host);
        isConverted = translator_->convert(&run) == 0;
    } else {
        isConverted = false;
    }
    for (const auto& error : sdk.errors()) {
        host.write(error);
    }
    sdk.close();
    setStatusText(parent, "TMATS translation complete.");
    log.write(formatPrintf("\nConversion ended at: %s", timeText(clock_.now())) + "\n");
    log.write(
        formatPrintf("Conversion duration: %s", durationText(clock_.steadySeconds() - started)) +
        "\n");
    if (const auto status = log.close(); !status.ok()) {
        showBox(parent,
                formatPrintf("Unable to write '%s'\n\nReason: %s", status.path(), status.reason()),
                "ERROR: Unable To Open Log File");
    } else if (host.messages > 0) {
        offerLog(parent, configuration);
    }
    return isConverted;
}

void TranslatorShell::offerLog(UserInterface* parent,
                               const TranslatorConfiguration& configuration) const {
    const auto reply =
        showBox(parent, "Do you wish to view, save or print the conversion messages?",
                "You Have Messages Waiting", Icon::Question, Buttons::YesNo);
    if (reply == Button::Yes && viewFile_) {
        viewFile_(logPath(), configuration.editor());
    }
}

std::string setupFileOf(const std::string& tmatsFile, const kavu_translator& translator) {
    return withOtherExtension(tmatsFile,
                              translator.extension == nullptr ? ".txt" : translator.extension);
}

}  // namespace kavu
