#include "xml/bridge/write/ExportRun.h"

#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"

#include <utility>

namespace kavu {

void ExportRun::status(std::string text) {
    setStatusText(parent, text);
    report.status.push_back(std::move(text));
}

void ExportRun::progress(const std::string& text, std::size_t number, std::size_t count) {
    setStatusText(parent, text);
    if (count > 0) {
        setProgressBar(parent, 100.0 * static_cast<double>(number) / static_cast<double>(count));
    }
}

bool ExportRun::isCancelled() {
    yieldToInterface(parent);
    isCancelled_ = isCancelled_ || cancelRequested(parent);
    return isCancelled_;
}

void ExportRun::sort(std::string text) {
    auto& list = text.starts_with("Warning") ? report.warnings : report.errors;
    list.push_back(std::move(text));
}

void ExportRun::collect() {
    for (; collected_ < session.errors().size(); ++collected_) {
        sort(session.errors()[collected_]);
    }
}

void ExportRun::say(std::string text) {
    collect();
    if (isSilent) {
        sort(std::move(text));
        return;
    }
    session.writeError(std::move(text));
    collect();
}

void ExportRun::sayAsWarning(std::string text) {
    collect();
    if (!isSilent) {
        session.writeError(text);
        ++collected_;
    }
    report.warnings.push_back(std::move(text));
}

void ExportRun::loseRest(const GroupRows& rows, std::string_view link) {
    seen_.insert({rows.letter(), rows.number()});
    rows.forEachLeft([&](std::string_view field, std::string_view) {
        if (!equalsIgnoreCase(field, link)) {
            lose(rows.prefix() + std::string(field));
        }
    });
}

void ExportRun::closeNamed(std::string_view nameCode, bool mayBeEmpty) {
    const bool isKept = isSchema() && mayBeEmpty;
    if (!tags.isWritten() && !isKept && !nameCode.empty()) {
        lose(nameCode);
    }
    tags.close(isKept);
}

void ExportRun::loseOtherGroups() {
    // Links that were not asked for are no loss.
    const std::string_view letters = options.links.empty() ? "TRMVPDBAS" : "TRMV";
    for (const char letter : letters) {
        for (const int number : session.groupNumbers(letter)) {
            if (seen_.contains({letter, number})) {
                continue;
            }
            if (auto group = session.openGroup(letter, number)) {
                loseRest(GroupRows(std::move(*group)), {});
            }
        }
    }
}

std::string ExportRun::attribute(std::string_view name, std::string_view original) const {
    // A name of the lists of a session is as the file has it, where a value that is read has been
    // changed by the session.
    const auto text = isSchema() ? std::string(original) : session.substituted(original);
    return " " + std::string(name) + "=\"" + values.plain(text) + "\"";
}

std::string ExportRun::attribute(std::string_view name, const Field& field, std::string_view value,
                                 const std::string& code) {
    const auto text = values.text(field, name, value, code);
    if (text.starts_with(kNoChoice)) {
        lose(code);
        return {};
    }
    // A date that is none is noted already.
    return text.empty() ? std::string() : " " + std::string(name) + "=\"" + text + "\"";
}

void ExportRun::sayLosses() {
    for (const auto& code : values.dropped()) {
        lose(code);
    }
    if (!isSchema()) {
        return;
    }
    for (const auto& loss : report.losses.list()) {
        say(loss.count == 1
                ? formatPrintf("Warning: The schema has no place for the TMATS command '%s'.",
                               loss.code)
                : formatPrintf("Warning: The schema has no place for the TMATS command '%s' and %d "
                               "others of this kind.",
                               loss.code, static_cast<int>(loss.count - 1)));
    }
}

const XmlPlan& ExportRun::plan(char letter, std::span<const PlanStep> steps,
                               std::string_view within) {
    const auto it = plans_.find(steps.data());
    return it != plans_.end()
               ? it->second
               : plans_.emplace(steps.data(), makeXmlPlan(letter, steps, options.dialect, within))
                     .first->second;
}

}  // namespace kavu
