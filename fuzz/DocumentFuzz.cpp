// Opens any bytes as a document and saves it, with replies, a cancel and editions that the
// input chooses. What opened must save, and what was saved must open again and save as the
// same bytes: a second pass may not lose anything. In the first pass every command must be in the
// file that is saved, unless a message or a remark says that it is not.
#include "FuzzRun.h"
#include "LostCommands.h"
#include "core/WorkingStore.h"
#include "core/document/BuildDocument.h"
#include "core/document/OpenDocument.h"
#include "core/talk/ProfileSettings.h"

#include <algorithm>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace {

using kavu::fuzz::makeScratch;
using kavu::fuzz::read;
using kavu::fuzz::Run;
using kavu::test::RecordingInterface;

/// The edition of a document without a `G\106`, and one to convert to, or 0.
struct Editions {
    std::string_view input = "2011";
    std::string_view output;
};

Editions editionsOf(std::uint8_t choice) {
    constexpr std::string_view kYears[] = {"1996", "1999", "2000", "2001", "2004",
                                           "2005", "2007", "2009", "2011"};
    Editions editions;
    editions.input = kYears[choice % 9];
    const auto output = static_cast<std::size_t>(choice / 9);
    editions.output = output < 9 ? kYears[output] : std::string_view();
    return editions;
}

void setEditions(Run& run, const Editions& editions) {
    auto& settings = run.application.context().settings;
    settings.overrideForThisRun(kavu::setting::kInputEdition, editions.input);
    if (!editions.output.empty()) {
        settings.overrideForThisRun(kavu::setting::kOutputMethod, 2);
        settings.overrideForThisRun(kavu::setting::kOutputEdition, editions.output);
    }
}

void keepComments(Run& run, bool keep) {
    run.application.context().settings.overrideForThisRun(kavu::setting::kKeepComments.name,
                                                          keep ? "1" : "0");
}

/// True if the input has the two bytes that stand for line breaks in a group file: they
/// come out as line breaks.
bool holdsStoredBytes(std::span<const std::uint8_t> data) {
    return std::any_of(data.begin(), data.end(),
                       [](std::uint8_t byte) { return byte == 0x14 || byte == 0x15; });
}

/// True if a cut-off value has swallowed a file name command, which is taken for a command:
/// the whole value is replaced, and a second save adds the command that is then missing.
bool holdsSwallowedFileName(std::string_view text) {
    constexpr std::string_view kCode = "G\\FN:";
    constexpr std::string_view kBetween = " \t\r\n\v\f\x1a";
    for (auto at = text.find(kCode); at != std::string_view::npos; at = text.find(kCode, at + 1)) {
        const auto before = text.substr(0, at).find_last_not_of(kBetween);
        if (before != std::string_view::npos && text[before] != ';') {
            return true;
        }
    }
    return false;
}

/// A text as messages show it.
std::string shownText(std::string text) {
    std::erase(text, '\r');
    return text;
}

/// A command of the G group that a save, or a new data source, writes.
bool isRewritten(const kavu::fuzz::FileCommand& command, const RecordingInterface& ui) {
    const auto field = kavu::lowerAscii(command.field);
    return command.letter == 'G' && (field == "fn" || (field == "dsi\\n" && ui.hasBox(304)));
}

/// Checks what became of the commands of the groups.
void checkGroups(const std::vector<kavu::fuzz::FileCommand>& before,
                 const std::vector<kavu::fuzz::FileCommand>& after, const RecordingInterface& ui,
                 int edition) {
    using namespace kavu::fuzz;
    const auto told = shownText(everythingTold(ui));
    for (const auto* const lost :
         lostCommands(before, after, [](const FileCommand& command) { return command.text; })) {
        const bool isNewer =
            (lost->letter == 'S' && edition < 2005) || (lost->letter == 'V' && edition < 2004);
        const auto remark = std::string("has no ") + lost->letter + " groups";
        if (!isOfSavedGroup(*lost) || isOfConversions(*lost) || isRewritten(*lost, ui) ||
            (isNewer && told.find(remark) != std::string::npos) ||
            told.find(shownText(lost->text)) != std::string::npos) {
            continue;
        }
        std::fprintf(stderr, "lost: %s\n", lost->text.c_str());
        KAVU_CHECK(false);
    }
}

/// Checks that what is in no group was counted, or kept.
void checkRemarks(const std::vector<kavu::fuzz::FileCommand>& before,
                  const std::vector<kavu::fuzz::FileCommand>& after, const RecordingInterface& ui,
                  bool keepsComments) {
    using namespace kavu::fuzz;
    std::vector<FileCommand> comments;
    long unknown = 0;
    long outside = 0;
    for (const auto& command : before) {
        if (command.isComment) {
            comments.push_back(command);
        } else if (!isOfKnownGroup(command)) {
            ++unknown;
        } else if (!isOfSavedGroup(command)) {
            ++outside;
        }
    }
    KAVU_CHECK(numberTold(ui, "of no known group") == unknown);
    KAVU_CHECK(numberTold(ui, "is not 1 to 99") == outside);
    if (keepsComments) {
        const auto text = [](const FileCommand& command) { return command.text; };
        // Comments of a group that the edition does not have are left out with it.
        KAVU_CHECK(lostCommands(comments, after, text).empty() ||
                   everythingTold(ui).find(" file has no ") != std::string::npos);
    } else {
        KAVU_CHECK(numberTold(ui, "of the file") == static_cast<long>(comments.size()));
    }
}

/// Opens and saves; returns the edition of the document, or 0 if it did not open.
int roundTrip(Run& run, const std::string& from, const std::string& to) {
    auto& context = run.application.context();
    if (!kavu::loadDocument(context, &run.ui, from)) {
        KAVU_CHECK(!context.document.open);
        KAVU_CHECK(!kavu::fileExists(context.store.pathOf(kavu::working::kGeneral)));
        return 0;
    }
    const int edition = context.document.version;
    const bool saved = kavu::saveDocumentTo(context, &run.ui, to);
    KAVU_CHECK(saved || run.ui.cancelAtPoll > 0);
    return saved ? edition : 0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string scratch = makeScratch();
    if (size < 3) {
        return 0;
    }
    const auto editions = editionsOf(data[0]);
    const auto reply = data[1] % 2 == 0 ? kavu::Button::Yes : kavu::Button::No;
    const int cancelAt = data[2] < 200 ? 0 : data[2] - 199;
    const std::string in = scratch + "/in.tma";
    const std::string folders[] = {scratch + "/one", scratch + "/two"};
    KAVU_CHECK(kavu::writeWholeFile(in, {reinterpret_cast<const char*>(data) + 3, size - 3}).ok());
    for (const auto& folder : folders) {
        KAVU_CHECK(kavu::makeFolder(folder).ok());
    }

    const bool keepsComments = data[1] % 4 > 1;
    int edition = 0;
    {
        Run run(scratch);
        run.ui.otherwise = reply;
        run.ui.cancelAtPoll = cancelAt;
        setEditions(run, editions);
        keepComments(run, keepsComments);
        edition = roundTrip(run, in, folders[0] + "/out.tma");
        if (edition > 0 && editions.output.empty()) {
            const auto before = kavu::fuzz::commandsOf(read(in));
            const auto after = kavu::fuzz::commandsOf(read(folders[0] + "/out.tma"));
            checkGroups(before, after, run.ui, edition);
            kavu::fuzz::checkConversions(before, after, run.ui);
            checkRemarks(before, after, run.ui, keepsComments);
        }
    }
    if (edition > 0) {
        Run run(scratch);
        run.ui.otherwise = reply;
        const auto year = std::to_string(edition);
        setEditions(run, {year, {}});
        keepComments(run, keepsComments);
        const int again = roundTrip(run, folders[0] + "/out.tma", folders[1] + "/out.tma");
        if (again > 0 && !holdsStoredBytes({data, size}) && !holdsSwallowedFileName(read(in))) {
            KAVU_CHECK(read(folders[0] + "/out.tma") == read(folders[1] + "/out.tma"));
        }
    }
    (void)kavu::deleteFolder(folders[0]);
    (void)kavu::deleteFolder(folders[1]);
    return 0;
}
