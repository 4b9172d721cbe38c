#include "app/pcm/WordFrameEntryDialog.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/pcm/EditDataWordControls.h"
#include "app/pcm/MaskControl.h"
#include "app/pcm/WordFrameMap.h"
#include "core/text/Printf.h"
#include "pcm/PcmFormat.h"
#include "pcm/edit/MeasurementEditWordFrame.h"
#include "vocabulary/DGroupFields.h"

#include <algorithm>

#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace kavu {

namespace {

constexpr int kEntryDigits = 4;

}  // namespace

WordFrameEntryDialog::WordFrameEntryDialog(FormContext& form, PcmFormat& format, Setup setup,
                                           QWidget* parent)
    : EditDialog(form, "EditWordFrameEntry", QStringLiteral("Edit Word/Frame Entry"), parent),
      format_(format),
      setup_(std::move(setup)) {
    auto* layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    auto* sides = new QHBoxLayout;
    sides->setSpacing(look::unit(*this) * 2);
    layout->addLayout(sides, 1);
    sides->addWidget(makeFields());
    sides->addWidget(makeMapSide(), 1);
    layout->addWidget(look::makeDialogButtons(*this));
    connectFields();
    if (setup_.location.fragments.empty()) {
        setup_.location.fragments.push_back(newWordFrameFragment(format_, 1, 1));
    }
    length_->setNumber(setup_.location.wordLength);
    const int count = setup_.location.fragmentCount();
    if (count > kMostFragments) {  // a file may have more
        for (int n = kMostFragments + 1; n <= count; ++n) {
            count_->addItem(QString::number(n));
        }
    }
    setFragmentCount(count);
    showFragment(0);
    startWord_->setFocus();
    if (setup_.isNew) {
        setNew();
    }
}

QWidget* WordFrameEntryDialog::makeFields() {
    auto* owner = new QWidget(this);
    auto* grid = makeFieldGrid(*owner);
    grid->setContentsMargins(0, 0, 0, 0);
    owner->setLayout(grid);
    length_ = new NumberEdit("measurementWordLength", 3, owner);
    addField(*grid, u"Measurement Word Length:", *length_);
    count_ = new QComboBox(owner);
    count_->setObjectName(QStringLiteral("numberOfFragments"));
    for (int n = 1; n <= kMostFragments; ++n) {
        count_->addItem(QString::number(n));
    }
    addField(*grid, u"Number Of Fragments:", *count_);
    fragments_ = new QComboBox(owner);
    fragments_->setObjectName(QStringLiteral("fragment"));
    addField(*grid, u"Fragment:", *fragments_);
    const auto add = [&](NumberEdit*& edit, const char* name, const char16_t* label) {
        edit = new NumberEdit(name, kEntryDigits, owner);
        addField(*grid, label, *edit);
    };
    add(startWord_, "startWord", u"Start Word:");
    add(wordInterval_, "wordInterval", u"Word Interval:");
    add(endWord_, "endWord", u"End Word:");
    add(startFrame_, "startFrame", u"Start Frame:");
    add(frameInterval_, "frameInterval", u"Frame Interval:");
    add(endFrame_, "endFrame", u"End Frame:");
    for (auto* end : {endWord_, endFrame_}) {
        end->setEnabled(writesFragmentEnds(format_));
    }
    mask_ = new MaskControl(form(), format_.context(), "bitMask", owner);
    const int row = grid->rowCount();
    grid->addWidget(look::addLabel(QStringLiteral("Bit Mask:"), mask_->field()), row, 0);
    grid->addWidget(mask_, row, 1);
    order_ = new CodeBox("fragmentTransferOrder", word_frame_field::kTransferOrder.choices, owner);
    addField(*grid, u"Fragment Transfer Order:", *order_);
    grid->setRowStretch(grid->rowCount(), 1);
    return owner;
}

QWidget* WordFrameEntryDialog::makeMapSide() {
    auto* owner = new QWidget(this);
    auto* layout = new QVBoxLayout(owner);
    look::arrangePart(*layout, *owner);
    map_ = new WordFrameMap(owner);
    auto* label = new QLabel(QStringLiteral("Words (left to right) and frames (down):"), owner);
    label->setBuddy(map_);
    layout->addWidget(label);
    layout->addWidget(map_, 1);
    covered_ = new QLabel(owner);
    covered_->setObjectName(QStringLiteral("covered"));
    covered_->setTextFormat(Qt::PlainText);
    layout->addWidget(covered_);
    problem_ = new QLabel(owner);
    problem_->setObjectName(QStringLiteral("problem"));
    problem_->setTextFormat(Qt::PlainText);
    problem_->setWordWrap(true);
    problem_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    problem_->setMinimumHeight(problem_->fontMetrics().height() * 5);
    layout->addWidget(problem_);
    return owner;
}

void WordFrameEntryDialog::connectFields() {
    connect(count_, &QComboBox::activated, this, [this](int index) {
        keepFragment();
        setFragmentCount(index + 1);
        showFragment(std::min(shown_, index));
        edited();
    });
    connect(fragments_, &QComboBox::currentIndexChanged, this, [this](int row) {
        if (!showing_ && row >= 0) {
            keepFragment();
            showFragment(row);
        }
    });
    connect(startWord_, &QLineEdit::textEdited, this, [this] {
        const auto& fragment = setup_.location.fragments[static_cast<std::size_t>(shown_)];
        followStartWord(fragment.startWord);
        edited();
    });
    for (auto* edit : {length_, wordInterval_, endWord_, startFrame_, frameInterval_, endFrame_}) {
        connect(edit, &QLineEdit::textEdited, this, &WordFrameEntryDialog::edited);
    }
    connect(mask_, &MaskControl::changed, this, &WordFrameEntryDialog::edited);
    connect(order_, &QComboBox::currentIndexChanged, this, &WordFrameEntryDialog::edited);
}

/// The end of a single word is the word itself.
void WordFrameEntryDialog::followStartWord(int before) {
    if (wordInterval_->number() == 0 && endWord_->number() == before) {
        endWord_->setNumber(startWord_->number());
    }
    mask_->setWordLength(format_.wordLength(startWord_->number()));
}

void WordFrameEntryDialog::setFragmentCount(int count) {
    auto& fragments = setup_.location.fragments;
    while (static_cast<int>(fragments.size()) < count) {
        auto next = fragments.back();  // most fragments of a sample are side by side
        const int step = next.endWord + 1 < format_.wordsPerMinorFrame ? 1 : 0;
        next.startWord += step;
        next.endWord += step;
        fragments.push_back(next);
    }
    fragments.resize(static_cast<std::size_t>(count));
    count_->setCurrentIndex(count - 1);
    showing_ = true;
    fragments_->clear();
    for (int n = 1; n <= count; ++n) {
        fragments_->addItem(QString::number(n));
    }
    showing_ = false;
    fragments_->setEnabled(count > 1);
    length_->setEnabled(count > 1);
    shown_ = std::min(shown_, count - 1);
}

void WordFrameEntryDialog::showFragment(int index) {
    showing_ = true;
    shown_ = index;
    fragments_->setCurrentIndex(index);
    const auto& fragment = setup_.location.fragments[static_cast<std::size_t>(index)];
    startWord_->setNumber(fragment.startWord);
    wordInterval_->setNumber(fragment.wordInterval);
    endWord_->setNumber(fragment.endWord);
    startFrame_->setNumber(fragment.startFrame);
    frameInterval_->setNumber(fragment.frameInterval);
    endFrame_->setNumber(fragment.endFrame);
    mask_->setMask(fragment.mask.view(), format_.wordLength(fragment.startWord));
    order_->setCode(std::string_view(&fragment.transferOrder, 1));
    showing_ = false;
    check();
}

void WordFrameEntryDialog::keepFragment() {
    auto& fragment = setup_.location.fragments[static_cast<std::size_t>(shown_)];
    fragment.startWord = startWord_->number();
    fragment.wordInterval = wordInterval_->number();
    fragment.endWord = endWord_->number();
    fragment.startFrame = startFrame_->number();
    fragment.frameInterval = frameInterval_->number();
    fragment.endFrame = endFrame_->number();
    takeUnwrittenEnds(format_, fragment);
    if (!endWord_->isEnabled()) {
        endWord_->setNumber(fragment.endWord);
        endFrame_->setNumber(fragment.endFrame);
    }
    fragment.mask = mask_->mask();
    const auto order = order_->code();
    fragment.transferOrder = order.empty() ? 'D' : order[0];
    setup_.location.wordLength = length_->number();
}

void WordFrameEntryDialog::edited() {
    if (showing_) {
        return;
    }
    keepFragment();
    markChanged();
    check();
}

/// What the check will say on OK, while it can still be mended.
void WordFrameEntryDialog::check() {
    WordFrameMap::Places current;
    WordFrameMap::Places others;
    std::optional<std::string> problem;
    int number = 0;
    for (const auto& fragment : setup_.location.fragments) {
        const auto why = wordFrameProblem(format_, setup_.name, fragment);
        if (why && !problem) {
            problem = setup_.location.fragmentCount() > 1
                          ? formatPrintf("Fragment %d: %s", number + 1, *why)
                          : *why;
        }
        auto places = coveredPlaces(format_, fragment);
        auto& target = number == shown_ ? current : others;
        target.insert(target.end(), places.begin(), places.end());
        ++number;
    }
    problem_->setText(toQString(problem.value_or("")));
    map_->setPlaces(format_.wordsPerMinorFrame - 1, format_.numberOfFrames, current, others);
    tellCovered(current);
}

void WordFrameEntryDialog::tellCovered(const std::vector<std::pair<int, int>>& places) {
    std::vector<bool> words(static_cast<std::size_t>(format_.wordsPerMinorFrame) + 1);
    std::vector<bool> frames(static_cast<std::size_t>(format_.numberOfFrames) + 1);
    for (const auto& [word, frame] : places) {
        words[static_cast<std::size_t>(word)] = true;
        frames[static_cast<std::size_t>(frame)] = true;
    }
    const auto countOf = [](const std::vector<bool>& marked) {
        return static_cast<std::size_t>(std::count(marked.begin(), marked.end(), true));
    };
    const auto count = [](std::size_t number, const char* one, const char* many) {
        return std::to_string(number) + " " + (number == 1 ? one : many);
    };
    const auto text = places.empty() ? std::string("Covers no place of the frame.")
                                     : "Covers " + count(countOf(words), "word", "words") + " in " +
                                           count(countOf(frames), "frame", "frames") + " (" +
                                           count(places.size(), "place", "places") + ").";
    covered_->setText(toQString(text));
    map_->setAccessibleDescription(covered_->text());
}

bool WordFrameEntryDialog::store() {
    keepFragment();
    auto location = setup_.location;
    if (!completeWordFrameLocation(format_, &form().ui, setup_.name, location)) {
        return false;
    }
    setup_.location = location;
    return true;
}

}  // namespace kavu
