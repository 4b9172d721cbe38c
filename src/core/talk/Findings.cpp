#include "core/talk/Findings.h"

#include "core/text/Printf.h"
#include "core/text/Text.h"

#include <cctype>
#include <cstdlib>

namespace kavu {

namespace {

constexpr std::string_view kLettersOfGroups = "GTRMPDBSACHV";
constexpr std::string_view kLastCommands = "Last TMATS commands read:";

bool isWordCharacter(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0;
}

/// The characters of a command's code, which ends before its value and the words around it.
bool isCodeCharacter(char c) {
    return isWordCharacter(c) || c == '-' || c == '\\';
}

/// The first command that a text names, as in "P-1\D2".
void findCommand(std::string_view text, FindingPlace& place) {
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool begins = at == 0 || !isWordCharacter(text[at - 1]);
        if (!begins || kLettersOfGroups.find(text[at]) == std::string_view::npos) {
            continue;
        }
        auto rest = text.substr(at + 1);
        int group = 0;
        if (rest.starts_with('-')) {
            const auto digits = rest.find_first_not_of("0123456789", 1);
            if (digits == 1 || digits == std::string_view::npos) {
                continue;
            }
            group = leadingInt(rest.substr(1));
            rest.remove_prefix(digits);
        }
        if (!rest.starts_with('\\')) {
            continue;
        }
        place.letter = text[at];
        place.group = group;
        auto end = at;
        while (end < text.size() && isCodeCharacter(text[end])) {
            ++end;
        }
        place.code = text.substr(at, end - at);
        return;
    }
}

/// The name in quotes that follows one of the words, directly or after ":" and other marks.
std::string nameAfter(std::string_view text, std::string_view lower, std::string_view word) {
    for (auto at = lower.find(word); at != std::string_view::npos; at = lower.find(word, at + 1)) {
        auto quote = at + word.size();
        while (quote < text.size() && (text[quote] == ' ' || text[quote] == ':')) {
            ++quote;
        }
        if (quote >= text.size() || text[quote] != '\'') {
            continue;
        }
        if (const auto end = text.find('\'', quote + 1); end != std::string_view::npos) {
            return std::string(text.substr(quote + 1, end - quote - 1));
        }
    }
    return {};
}

/// A text with one blank for each run of white space: the log breaks and indents it.
std::string withSingleBlanks(std::string_view text) {
    std::string result;
    for (const char c : text) {
        const bool isBlank = std::isspace(static_cast<unsigned char>(c)) != 0;
        if (!isBlank) {
            result.push_back(c);
        } else if (!result.empty() && result.back() != ' ') {
            result.push_back(' ');
        }
    }
    return std::string(trim(result));
}

/// What stands behind a message in the log: the heading of the next one, or the commands that were
/// read last, and then the heading.
void takeCommands(std::vector<Finding>& findings, std::string_view told) {
    told = trim(told);
    if (!findings.empty() && told.starts_with(kLastCommands)) {
        told.remove_prefix(kLastCommands.size());
        findings.back().commands = trim(told.substr(0, told.rfind(';') + 1));
    }
}

}  // namespace

FindingPlace placeIn(std::string_view text) {
    FindingPlace place;
    findCommand(text, place);
    const auto lower = lowerAscii(text);
    place.measurement = nameAfter(text, lower, "measurement");
    for (const std::string_view word : {"stream", "data link", "format", "datalink"}) {
        if (place.stream.empty()) {
            place.stream = nameAfter(text, lower, word);
        }
    }
    return place;
}

std::string placeText(const FindingPlace& place) {
    if (!place.code.empty()) {
        return place.code;
    }
    return place.measurement.empty() ? place.stream : place.measurement;
}

Finding findingOfText(std::string text, std::string source) {
    Finding finding;
    finding.place = placeIn(text);
    finding.text = std::move(text);
    finding.source = std::move(source);
    return finding;
}

std::vector<Finding> findingsOfLog(const std::vector<LoggedMessage>& logged,
                                   const std::vector<std::string>& lines,
                                   const std::string& source) {
    std::string log;
    for (const auto& line : lines) {
        log += line;
        log.push_back('\n');
    }
    log = withSingleBlanks(log);
    std::vector<Finding> findings;
    std::size_t end = 0;
    for (const auto& message : logged) {
        const auto body = withSingleBlanks(message.text);
        const auto at = body.empty() ? std::string::npos : log.find(body, end);
        if (at == std::string::npos) {
            continue;
        }
        takeCommands(findings, std::string_view(log).substr(end, at - end));
        auto finding = findingOfText(message.text, source);
        finding.id = std::abs(message.id);
        finding.title = message.title;
        findings.push_back(std::move(finding));
        end = at + body.size();
    }
    takeCommands(findings, std::string_view(log).substr(end));
    if (findings.empty()) {
        for (const auto& line : lines) {
            if (!trim(line).empty()) {
                findings.push_back(findingOfText(line, source));
            }
        }
    }
    return findings;
}

std::vector<std::string> linesOfFindings(const std::vector<Finding>& findings) {
    std::vector<std::string> lines;
    for (const auto& finding : findings) {
        auto heading = finding.title;
        if (finding.id > 0) {
            heading += formatPrintf(" - (KAVU Error #%d)", finding.id);
        }
        if (!heading.empty()) {
            lines.push_back(heading);
            lines.emplace_back();
        }
        for (auto& line : splitLines(finding.text)) {
            lines.push_back(std::move(line));
        }
        lines.emplace_back();
    }
    return lines;
}

}  // namespace kavu
