#include "pcm/model/FrameCells.h"

#include "core/text/Text.h"
#include "vocabulary/LocationTypes.h"

#include <algorithm>
#include <numeric>
#include <tuple>
#include <utility>

namespace kavu {

namespace {

// An entry of the index: the place, and a mark for a removed one.
constexpr std::uint32_t kGone = 1U << 31U;

std::uint32_t keyOf(std::uint16_t word, std::uint16_t index) {
    return (static_cast<std::uint32_t>(word) << 16U) | index;
}

}  // namespace

bool isFragmented(const FixedText<4>& locationType) {
    return equalsIgnoreCase(locationType, location_type::kMinorFrameFragments) ||
           equalsIgnoreCase(locationType, location_type::kSubframeFragments) ||
           equalsIgnoreCase(locationType, location_type::kWordFrame);
}

bool isWordFrame(const Measurement& measurement) {
    return equalsIgnoreCase(measurement.locationType, location_type::kWordFrame);
}

FrameCells::FrameCells() {
    reset(0);
}

void FrameCells::reset(int words) {
    words_.clear();
    words_.resize(static_cast<std::size_t>(std::max(0, words)));
    blocks_.clear();
    chainedEnd_ = 1;
    freeChained_ = 0;
    chainedUsed_ = 0;
    records_.assign(1, Record{});
    measurements_.assign(1, Measurement{});
    freeRecords_.clear();
    names_.clear();
    names_.emplace_back();
    nameIndex_.clear();
    liveNames_ = 0;
    lastStored_ = 0;
}

WordWatcher* FrameCells::watch(WordWatcher* watcher) {
    return std::exchange(watcher_, watcher);
}

void FrameCells::setWordCount(int words) {
    words = std::max(0, words);
    for (int fwp = words; fwp < wordCount(); ++fwp) {
        resizeWord(fwp, 0);
    }
    words_.resize(static_cast<std::size_t>(words));
}

void FrameCells::permuteWords(const std::vector<int>& sources) {
    if (watcher_ != nullptr) {
        watcher_->beforeMove(sources);
    }
    std::vector<Word> words;
    words.reserve(words_.size());
    std::vector<std::uint32_t> positions(words_.size());
    for (const int source : sources) {
        positions[static_cast<std::size_t>(source)] = static_cast<std::uint32_t>(words.size());
        words.push_back(std::move(words_[static_cast<std::size_t>(source)]));
    }
    words_ = std::move(words);
    for (auto& name : names_) {
        std::erase_if(name.places, [](const Entry& entry) { return (entry.place & kGone) != 0; });
        for (auto& entry : name.places) {
            entry.place = (positions[entry.place >> 16U] << 16U) | (entry.place & 0xFFFFU);
        }
        if (!std::is_sorted(name.places.begin(), name.places.end(), placeLess)) {
            std::sort(name.places.begin(), name.places.end(), placeLess);
        }
        name.sorted = name.places.size();
        name.dead = 0;
    }
}

// --- cells ----------------------------------------------------------------------------------

FrameCells::HeadCell& FrameCells::headOf(CellRef at) {
    return words_[at.word].heads[at.index - 1U];
}
const FrameCells::HeadCell& FrameCells::headOf(CellRef at) const {
    return words_[at.word].heads[at.index - 1U];
}
FrameCells::Cell& FrameCells::chained(std::uint32_t number) {
    return blocks_[number / kBlock][number % kBlock];
}
const FrameCells::Cell& FrameCells::chained(std::uint32_t number) const {
    return blocks_[number / kBlock][number % kBlock];
}
FrameCells::Cell& FrameCells::cellOf(CellRef at) {
    return at.chained == 0 ? headOf(at).cell : chained(at.chained);
}
const FrameCells::Cell& FrameCells::cellOf(CellRef at) const {
    return at.chained == 0 ? headOf(at).cell : chained(at.chained);
}

std::uint32_t FrameCells::takeChained() {
    if (chainedUsed_ >= mostChained_) {
        return 0;
    }
    ++chainedUsed_;
    if (freeChained_ != 0) {
        const auto number = freeChained_;
        freeChained_ = chained(number).next;
        chained(number) = Cell{};
        return number;
    }
    if (chainedEnd_ / kBlock == blocks_.size()) {
        blocks_.push_back(std::make_unique<Cell[]>(kBlock));
    }
    return chainedEnd_++;
}

void FrameCells::giveChained(std::uint32_t number) {
    chained(number) = Cell{0, freeChained_, 0};
    freeChained_ = number;
    --chainedUsed_;
}

int FrameCells::cellCount(int fwp) const {
    return fwp >= 0 && fwp < wordCount()
               ? static_cast<int>(words_[static_cast<std::size_t>(fwp)].heads.size())
               : 0;
}

CellRef FrameCells::cell(int fwp, int index) const {
    if (index < 1 || index > cellCount(fwp)) {
        return {};
    }
    return {static_cast<std::uint16_t>(fwp), static_cast<std::uint16_t>(index), 0};
}

CellRef FrameCells::next(CellRef at) const {
    const auto number = cellOf(at).next;
    return number == 0 ? CellRef{} : CellRef{at.word, at.index, number};
}

void FrameCells::freeChain(CellRef head) {
    for (auto number = headOf(head).cell.next; number != 0;) {
        const CellRef at{head.word, head.index, number};
        const auto following = chained(number).next;
        setContents(at, 0, 0);
        giveChained(number);
        number = following;
    }
    auto& owner = headOf(head);
    owner.cell.next = 0;
    owner.tail = 0;
    owner.free = isFreeCell(owner.cell) ? 1 : 0;
}

void FrameCells::resizeWord(int fwp, int count) {
    if (fwp < 0 || fwp >= wordCount()) {
        return;
    }
    announce(fwp);
    auto& heads = words_[static_cast<std::size_t>(fwp)].heads;
    const auto wanted = static_cast<std::size_t>(std::clamp(count, 0, kMostIndex));
    for (std::size_t i = wanted; i < heads.size(); ++i) {
        const CellRef head = cell(fwp, static_cast<int>(i) + 1);
        freeChain(head);
        setContents(head, 0, 0);
    }
    heads.resize(wanted);
    if (wanted == 0) {
        heads.shrink_to_fit();
    }
}

// --- contents -------------------------------------------------------------------------------

const Measurement& FrameCells::measurement(CellRef at) const {
    return measurements_[at ? cellOf(at).record : 0];
}
int FrameCells::asyncNumber(CellRef at) const {
    return at ? cellOf(at).async : 0;
}
bool FrameCells::isFree(CellRef at) const {
    return isFreeCell(cellOf(at));
}
bool FrameCells::isMeasurement(CellRef at) const {
    return isMeasurementCell(cellOf(at));
}
bool FrameCells::sameRecord(CellRef a, CellRef b) const {
    return cellOf(a).record == cellOf(b).record;
}
std::uint32_t FrameCells::recordNumber(CellRef at) const {
    return at ? cellOf(at).record : 0;
}

std::uint32_t FrameCells::findName(std::string_view name) const {
    const auto it = nameIndex_.find(lowerAscii(name));
    return it == nameIndex_.end() ? 0 : it->second;
}

std::uint32_t FrameCells::nameFor(std::string_view name) {
    if (name.empty()) {
        return 0;
    }
    auto folded = lowerAscii(name);
    const auto [it, isNew] =
        nameIndex_.try_emplace(folded, static_cast<std::uint32_t>(names_.size()));
    if (isNew) {
        names_.emplace_back().folded = std::move(folded);
    }
    return it->second;
}

std::uint32_t FrameCells::newRecord(Measurement measurement, std::uint32_t name) {
    std::uint32_t number = 0;
    if (freeRecords_.empty()) {
        number = static_cast<std::uint32_t>(records_.size());
        records_.emplace_back();
        measurements_.emplace_back();
    } else {
        number = freeRecords_.back();
        freeRecords_.pop_back();
    }
    auto& first = names_[name].firstRecord;
    records_[number] = {0, name, first, 0};
    measurements_[number] = measurement;
    if (first != 0) {
        records_[first].previous = number;
    }
    first = number;
    return number;
}

std::uint32_t FrameCells::recordFor(const Measurement& measurement) {
    if (lastStored_ != 0 && measurements_[lastStored_] == measurement) {
        return lastStored_;
    }
    if (measurement == Measurement{}) {
        return 0;
    }
    const auto name = nameFor(measurement.name);
    const auto shared = names_[name].lastRecord;
    if (shared != 0 && measurements_[shared] == measurement) {
        return lastStored_ = shared;
    }
    lastStored_ = newRecord(measurement, name);
    return names_[name].lastRecord = lastStored_;
}

void FrameCells::release(std::uint32_t record) {
    if (record == 0 || --records_[record].uses != 0) {
        return;
    }
    auto& name = names_[records_[record].name];
    if (name.lastRecord == record) {
        name.lastRecord = 0;
    }
    lastStored_ = lastStored_ == record ? 0 : lastStored_;
    const auto next = records_[record].next;
    const auto previous = records_[record].previous;
    (previous == 0 ? name.firstRecord : records_[previous].next) = next;
    if (next != 0) {
        records_[next].previous = previous;
    }
    records_[record] = Record{};
    measurements_[record] = Measurement{};
    freeRecords_.push_back(record);
}

void FrameCells::setContents(CellRef at, std::uint32_t record, std::uint8_t async) {
    announce(at.word);
    auto& target = cellOf(at);
    auto& head = headOf(at);
    const auto old = target;
    if (record != 0) {
        ++records_[record].uses;
    }
    head.free -= isFreeCell(old) ? 1U : 0U;
    if (isMeasurementCell(old)) {
        leave(at, records_[old.record].name);
    }
    target.record = record;
    target.async = async;
    release(old.record);
    head.free += isFreeCell(target) ? 1U : 0U;
    if (isMeasurementCell(target)) {
        enter(at, records_[record].name);
    }
}

void FrameCells::store(CellRef at, const Measurement& measurement, int asyncNumber) {
    const auto async =
        asyncNumber > 0 ? static_cast<std::uint8_t>(std::min(asyncNumber, 255)) : cellOf(at).async;
    setContents(at, recordFor(measurement), async);
}

void FrameCells::setAsyncNumber(CellRef at, int number) {
    setContents(at, cellOf(at).record, static_cast<std::uint8_t>(std::clamp(number, 0, 255)));
}

void FrameCells::clear(CellRef at) {
    setContents(at, 0, 0);
}

CellRef FrameCells::freeCell(CellRef head) {
    head.chained = 0;
    if (headOf(head).free != 0) {
        for (CellRef at = head; at; at = next(at)) {
            if (isFree(at)) {
                return at;
            }
        }
    }
    announce(head.word);
    const auto number = takeChained();
    if (number == 0) {
        return {};
    }
    auto& owner = headOf(head);
    (owner.tail == 0 ? owner.cell : chained(owner.tail)).next = number;
    owner.tail = number;
    ++owner.free;
    return {head.word, head.index, number};
}

void FrameCells::remove(CellRef at) {
    setContents(at, 0, 0);
    if (at.chained == 0) {
        return;
    }
    CellRef before{at.word, at.index, 0};
    while (cellOf(before).next != at.chained) {
        before = next(before);
    }
    cellOf(before).next = chained(at.chained).next;
    auto& head = headOf(at);
    head.tail = head.tail == at.chained ? before.chained : head.tail;
    --head.free;
    giveChained(at.chained);
}

void FrameCells::prepareSort() {
    std::vector<std::uint32_t> order(names_.size());
    std::iota(order.begin(), order.end(), 0U);
    std::sort(order.begin(), order.end(), [this](std::uint32_t a, std::uint32_t b) {
        return names_[a].folded < names_[b].folded;
    });
    for (std::uint32_t rank = 0; rank < order.size(); ++rank) {
        names_[order[rank]].rank = rank;
    }
}

void FrameCells::sortList(CellRef head) {
    std::vector<CellRef> cells;
    bool sorted = true;
    const auto rank = [this](std::uint32_t record) { return names_[records_[record].name].rank; };
    for (CellRef at = head; at; at = next(at)) {
        const auto& cell = cellOf(at);
        if (cell.async != 0) {
            break;
        }
        sorted =
            sorted && (cells.empty() || rank(cellOf(cells.back()).record) <= rank(cell.record));
        cells.push_back(at);
    }
    if (sorted || cells.size() < 2) {
        return;
    }
    announce(head.word);
    std::vector<std::uint32_t> records;
    records.reserve(cells.size());
    for (const auto& at : cells) {
        records.push_back(cellOf(at).record);
    }
    std::stable_sort(records.begin(), records.end(),
                     [&rank](std::uint32_t a, std::uint32_t b) { return rank(a) < rank(b); });
    for (std::size_t i = 0; i < cells.size(); ++i) {
        cellOf(cells[i]).record = records[i];
    }
    relocate(head, cells);
}

/// Updates the index of a list whose contents have changed their cells. They are sorted,
/// so the cells of one name are adjacent.
void FrameCells::relocate(CellRef head, const std::vector<CellRef>& moved) {
    const Entry wanted{keyOf(head.word, head.index), 0};
    std::uint32_t before = 0;
    std::vector<Entry>::iterator it;
    std::vector<Entry>::iterator end;
    for (const auto& at : moved) {
        const auto number = records_[cellOf(at).record].name;
        if (number == 0) {
            continue;
        }
        if (number != before) {
            auto& name = names_[number];
            settle(name);
            std::tie(it, end) =
                std::equal_range(name.places.begin(), name.places.end(), wanted, placeLess);
            before = number;
        }
        while (it != end && (it->place & kGone) != 0) {
            ++it;
        }
        if (it != end) {
            it->chained = at.chained;
            ++it;
        }
    }
}

// --- names ----------------------------------------------------------------------------------

bool FrameCells::placeLess(const Entry& a, const Entry& b) {
    return (a.place & ~kGone) < (b.place & ~kGone);
}

void FrameCells::settle(const Name& name) {
    const auto middle = name.places.begin() + static_cast<std::ptrdiff_t>(name.sorted);
    if (middle == name.places.end()) {
        return;
    }
    std::sort(middle, name.places.end(), placeLess);
    std::inplace_merge(name.places.begin(), middle, name.places.end(), placeLess);
    name.sorted = name.places.size();
}

void FrameCells::enter(CellRef at, std::uint32_t number) {
    auto& name = names_[number];
    const Entry entry{keyOf(at.word, at.index), at.chained};
    if (name.sorted == name.places.size() &&
        (name.places.empty() || !placeLess(entry, name.places.back()))) {
        ++name.sorted;
    }
    name.places.push_back(entry);
    liveNames_ += name.live++ == 0 ? 1 : 0;
}

std::vector<FrameCells::Entry>::iterator FrameCells::entryOf(Name& name, CellRef at) {
    settle(name);
    const Entry wanted{keyOf(at.word, at.index), at.chained};
    auto it = std::lower_bound(name.places.begin(), name.places.end(), wanted, placeLess);
    while (it != name.places.end() &&
           (it->place != wanted.place || it->chained != wanted.chained)) {
        ++it;
    }
    return it;
}

void FrameCells::leave(CellRef at, std::uint32_t number) {
    auto& name = names_[number];
    if (const auto it = entryOf(name, at); it != name.places.end()) {
        it->place |= kGone;
        ++name.dead;
        liveNames_ -= --name.live == 0 ? 1 : 0;
    }
    if (name.dead > 16 && name.dead > name.live) {
        std::erase_if(name.places, [](const Entry& entry) { return (entry.place & kGone) != 0; });
        name.sorted = name.places.size();
        name.dead = 0;
    }
}

bool FrameCells::holds(std::string_view name) const {
    return names_[findName(name)].live > 0;
}

std::vector<FrameCells::Place> FrameCells::places(std::string_view name) const {
    std::vector<Place> result;
    const auto& entry = names_[findName(name)];
    settle(entry);
    result.reserve(entry.live);
    for (const auto& [key, chained] : entry.places) {
        if ((key & kGone) == 0) {
            result.push_back({static_cast<std::uint16_t>(key >> 16U),
                              static_cast<std::uint16_t>(key & 0xFFFFU)});
        }
    }
    return result;
}

CellRef FrameCells::findFrom(CellRef from, std::string_view name) const {
    const auto number = findName(name);
    if (number == 0 || names_[number].live == 0) {
        return {};
    }
    for (CellRef at = from; at; at = next(at)) {
        const auto& cell = cellOf(at);
        if (cell.async == 0 && records_[cell.record].name == number) {
            return at;
        }
    }
    return {};
}

void FrameCells::cellsAt(int fwp, int index, int nameNumber, std::vector<CellRef>& cells) const {
    cells.clear();
    const CellRef head = cell(fwp, index);
    if (!head || nameNumber <= 0) {
        return;
    }
    const auto& name = names_[static_cast<std::size_t>(nameNumber)];
    settle(name);
    const Entry wanted{keyOf(head.word, head.index), 0};
    const auto [first, last] =
        std::equal_range(name.places.begin(), name.places.end(), wanted, placeLess);
    for (auto it = first; it != last; ++it) {
        if ((it->place & kGone) == 0) {
            cells.push_back({head.word, head.index, it->chained});
        }
    }
    if (cells.size() < 2) {
        return;
    }
    // Several are in the order of the list.
    const auto count = cells.size();
    cells.clear();
    for (CellRef at = head; at && cells.size() < count; at = next(at)) {
        const auto& found = cellOf(at);
        if (found.async == 0 &&
            records_[found.record].name == static_cast<std::uint32_t>(nameNumber)) {
            cells.push_back(at);
        }
    }
}

CellRef FrameCells::firstAt(int fwp, int index, std::string_view name) const {
    std::vector<CellRef> found;
    cellsAt(fwp, index, static_cast<int>(findName(name)), found);
    return found.empty() ? CellRef{} : found.front();
}

void FrameCells::updateAll(std::string_view name, const std::function<void(Measurement&)>& change) {
    const auto number = findName(name);
    if (number == 0) {
        return;
    }
    if (watcher_ != nullptr) {
        for (const auto& place : places(name)) {
            announce(place.word);
        }
    }
    for (auto i = names_[number].firstRecord; i != 0; i = records_[i].next) {
        auto& record = measurements_[i];
        const auto kept = record.name;
        change(record);
        record.name = kept;
    }
}

bool FrameCells::any(const std::function<bool(const Measurement&)>& test) const {
    for (std::size_t i = 0; i < records_.size(); ++i) {
        if (records_[i].uses > 0 && names_[records_[i].name].live > 0 && test(measurements_[i])) {
            return true;
        }
    }
    return false;
}

int FrameCells::nameCount() const {
    return liveNames_;
}
int FrameCells::nameNumber(std::string_view name) const {
    const auto number = findName(name);
    return names_[number].live > 0 ? static_cast<int>(number) : -1;
}
int FrameCells::nameNumber(CellRef at) const {
    return static_cast<int>(records_[cellOf(at).record].name);
}

std::size_t FrameCells::memory() const {
    std::size_t bytes =
        blocks_.size() * kBlock * sizeof(Cell) + records_.capacity() * sizeof(Record) +
        measurements_.capacity() * sizeof(Measurement) + names_.capacity() * sizeof(Name);
    for (const auto& word : words_) {
        bytes += word.heads.capacity() * sizeof(HeadCell);
    }
    for (const auto& name : names_) {
        bytes += name.places.capacity() * sizeof(Entry);
    }
    return bytes;
}

}  // namespace kavu
