#include "app/shell/CommandModel.h"

#include "app/framework/QtText.h"
#include "app/framework/ToolTip.h"

#include <algorithm>

#include <QElapsedTimer>
#include <QFontDatabase>
#include <QGuiApplication>

namespace kavu {

namespace {

constexpr int kSliceMilliseconds = 12;
constexpr std::size_t kStep = 1000;
/// What a cell shows of a value; the whole of it can be copied.
constexpr std::size_t kMostShown = 20000;

bool isUtf8Continuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

/// As large as all other text.
QFont codeFont() {
    auto font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSizeF(QGuiApplication::font().pointSizeF());
    return font;
}

}  // namespace

CommandModel::CommandModel(QObject* parent) : QAbstractTableModel(parent) {
    timer_.setInterval(0);
    connect(&timer_, &QTimer::timeout, this, [this] {
        slice();
        if (!commands_.status().ok()) {
            emit failed();
        }
    });
}

void CommandModel::clear() {
    beginResetModel();
    commands_.clear();
    shown_.clear();
    looked_ = 0;
    rows_ = 0;
    longestCode_ = 0;
    timer_.stop();
    endResetModel();
    emit progressed();
}

IoStatus CommandModel::open(const std::string& path) {
    clear();
    auto status = commands_.open(path);
    start();
    return status.ok() ? commands_.status() : status;
}

void CommandModel::setPairs(std::vector<std::pair<std::string, std::string>> pairs) {
    clear();
    commands_.setPairs(std::move(pairs));
    start();
}

void CommandModel::setFilter(const QString& text) {
    beginResetModel();
    filter_ = CommandFilter(toBytes(text));
    shown_.clear();
    looked_ = 0;
    rows_ = 0;
    endResetModel();
    start();
}

void CommandModel::start() {
    // The first slice at once: what fits into it is there without a flicker.
    timer_.start();
    slice();
}

void CommandModel::slice() {
    QElapsedTimer clock;
    clock.start();
    auto found = static_cast<std::size_t>(rows_);
    do {
        commands_.findMore(kStep);
        const auto end = std::min(commands_.size(), looked_ + 4 * kStep);
        for (; looked_ < end; ++looked_) {
            longestCode_ = std::max(longestCode_, static_cast<int>(commands_.code(looked_).size()));
            if (filter_.empty()) {
                ++found;
            } else if (commands_.matches(looked_, filter_)) {
                shown_.push_back(static_cast<std::uint32_t>(looked_));
                ++found;
            }
        }
        if (commands_.complete() && looked_ == commands_.size()) {
            timer_.stop();
            break;
        }
    } while (clock.elapsed() < kSliceMilliseconds);
    if (const int now = static_cast<int>(found); now > rows_) {
        beginInsertRows({}, rows_, now - 1);
        rows_ = now;
        endInsertRows();
    }
    emit progressed();
}

std::size_t CommandModel::commandOf(int row) const {
    const auto at = static_cast<std::size_t>(row);
    return filter_.empty() ? at : shown_[at];
}

int CommandModel::lines(int row) const {
    return commands_.lines(commandOf(row));
}

QString CommandModel::rowText(int row) const {
    const auto command = commandOf(row);
    return toQString(commands_.code(command)) + u'\t' + toQString(commands_.value(command));
}

int CommandModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_;
}

int CommandModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : 2;
}

QString CommandModel::shownText(const QModelIndex& index) const {
    const auto command = commandOf(index.row());
    if (index.column() == kCode) {
        return toQString(commands_.code(command));
    }
    auto value = commands_.value(command);
    if (value.size() > kMostShown) {
        auto end = kMostShown;
        // Half a character would make the whole text one of another encoding.
        while (end > 0 && isUtf8Continuation(value[end])) {
            --end;
        }
        value.resize(end);
        value += "...";
    }
    return toQString(value);
}

QVariant CommandModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rows_) {
        return {};
    }
    switch (role) {
        case Qt::DisplayRole:
        case Qt::ToolTipRole: {
            const auto text = shownText(index);
            return role == Qt::ToolTipRole ? plainToolTip(text) : text;
        }
        case Qt::FontRole:
            return index.column() == kCode ? QVariant(codeFont()) : QVariant();
        case Qt::TextAlignmentRole:
            return QVariant::fromValue(Qt::AlignLeft |
                                       (lines(index.row()) > 1 ? Qt::AlignTop : Qt::AlignVCenter));
        default:
            return {};
    }
}

QVariant CommandModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) {
        return {};
    }
    if (role == Qt::TextAlignmentRole) {
        return QVariant::fromValue(Qt::AlignLeft | Qt::AlignVCenter);
    }
    if (role != Qt::DisplayRole) {
        return {};
    }
    return section == kCode ? QStringLiteral("Code") : QStringLiteral("Value");
}

}  // namespace kavu
