#include "pcm/edit/BlockQuestion.h"

#include "core/talk/MessageFor.h"
#include "core/talk/Titles.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"

namespace kavu {

namespace {

constexpr std::size_t kNamesShown = 10;

/// A heading with a line for each text; what a box cannot hold is counted.
template <typename Texts, typename LineOf>
void addLines(std::string& text, const char* heading, const Texts& texts, const LineOf& lineOf) {
    if (texts.empty()) {
        return;
    }
    text += std::string("\n\n") + heading;
    std::size_t shown = 0;
    for (const auto& each : texts) {
        if (shown++ == kNamesShown) {
            text += formatPrintf("\n  and %d more", static_cast<int>(texts.size() - kNamesShown));
            break;
        }
        text += "\n  " + lineOf(each);
    }
}

std::string itself(const std::string& text) {
    return text;
}

std::string placesText(std::size_t count) {
    return formatPrintf("%d %s", static_cast<int>(count), count == 1 ? "place" : "places");
}

std::string lossText(const BlockQuestion::Occupant& occupant) {
    if (!occupant.goes) {
        return occupant.name + formatPrintf(": loses %d of its %s", static_cast<int>(occupant.here),
                                            placesText(occupant.all));
    }
    auto text = occupant.name + ": is deleted";
    if (occupant.all > occupant.here) {
        text += ", also at " + placesText(occupant.all - occupant.here) + " elsewhere";
    }
    return text + (occupant.isShared ? "; its conversion stays, another stream needs it"
                                     : ", with its conversion");
}

}  // namespace

std::string BlockQuestion::remarks() const {
    std::string text;
    addLines(text, "These names are in use, so the copies get others:", renamed,
             [](const auto& names) { return names.first + " becomes " + names.second; });
    addLines(text, "These are put together from fragments and stay as they are:", leftOut, itself);
    addLines(text, "Their masks are cut to the shorter word:", cutMasks, itself);
    return text;
}

BlockAnswer BlockQuestion::ask(UserInterface* parent, const std::string& title,
                               const std::string& what) const {
    std::string text = what;
    addLines(text, "In the way, and if replaced:", inTheWay, lossText);
    addLines(text, "These async streams take the same bits, and stay:", asyncStreams, itself);
    text += remarks();
    if (parent == nullptr || text == what) {
        return BlockAnswer::Beside;
    }
    ChoicePrompt prompt{.title = title, .text = text};
    if (inTheWay.empty()) {
        prompt.choices = {"&Go On"};
        return parent->choose(prompt) == 0 ? BlockAnswer::Beside : BlockAnswer::Cancel;
    }
    prompt.choices = {"&Replace", "Put &Beside"};
    const int choice = parent->choose(prompt);
    return choice == 0   ? BlockAnswer::Replace
           : choice == 1 ? BlockAnswer::Beside
                         : BlockAnswer::Cancel;
}

FillAnswer BlockQuestion::askFill(UserInterface* parent) const {
    if (parent == nullptr) {
        return FillAnswer::SameMeasurements;
    }
    std::string text =
        "Fill the block with copies under new names, or with further places of the "
        "same measurements?";
    addLines(text, "This is replaced:", inTheWay, lossText);
    addLines(text, "These async streams take the same bits, and stay:", asyncStreams, itself);
    text += remarks();
    const int choice = parent->choose(
        {.title = "Fill", .text = text, .choices = {"&New Names", "&Further Places"}});
    return choice == 0   ? FillAnswer::NewNames
           : choice == 1 ? FillAnswer::SameMeasurements
                         : FillAnswer::Cancel;
}

bool BlockQuestion::mayDelete(UserInterface* parent) const {
    if (parent == nullptr) {
        return true;
    }
    MessageBox box{.title = std::string(loadText(title::kDeleteEntry).value_or("")),
                   .text = "Delete what is in this block?",
                   .icon = Icon::Question,
                   .buttons = Buttons::YesNo,
                   .defaultButton = Button::No};
    addLines(box.text, "Measurements:", inTheWay, lossText);
    addLines(box.text, "Async streams, with all of their places:", asyncStreams, itself);
    if (inTheWay.size() > kNamesShown) {
        for (const auto& occupant : inTheWay) {
            box.details += lossText(occupant) + "\n";
        }
    }
    return parent->message(box) == Button::Yes;
}

}  // namespace kavu
