#include "app/framework/TableClipboard.h"

#include "app/framework/QtText.h"

#include <algorithm>

#include <QClipboard>
#include <QDataStream>
#include <QGuiApplication>
#include <QIODevice>
#include <QMimeData>

namespace kavu {

namespace {

constexpr quint32 kTableVersion = 1;
/// More than the largest frame has cells; a table from elsewhere may claim any number.
constexpr quint32 kMostTableRows = 1U << 20U;
constexpr quint32 kMostTableColumns = 1U << 16U;

QByteArray toArray(const std::string& text) {
    return {text.data(), static_cast<qsizetype>(text.size())};
}

void writeRows(QDataStream& out, const TableRows& rows) {
    out << static_cast<quint32>(rows.size());
    for (const auto& row : rows) {
        out << static_cast<quint32>(row.size());
        for (const auto& cell : row) {
            out << toArray(cell);
        }
    }
}

bool readRows(QDataStream& in, TableRows& rows) {
    quint32 count = 0;
    in >> count;
    for (quint32 i = 0; i < std::min(count, kMostTableRows) && in.status() == QDataStream::Ok;
         ++i) {
        quint32 columns = 0;
        in >> columns;
        auto& row = rows.emplace_back();
        for (quint32 k = 0;
             k < std::min(columns, kMostTableColumns) && in.status() == QDataStream::Ok; ++k) {
            QByteArray cell;
            in >> cell;
            row.push_back(cell.toStdString());
        }
    }
    return in.status() == QDataStream::Ok;
}

QByteArray ownBytes(const TableClip& clip) {
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setVersion(QDataStream::Qt_6_0);
    out << kTableVersion << toArray(clip.kind);
    writeRows(out, clip.rows);
    writeRows(out, clip.own);
    return bytes;
}

std::optional<TableClip> clipOfBytes(const QByteArray& bytes) {
    QDataStream in(bytes);
    in.setVersion(QDataStream::Qt_6_0);
    quint32 version = 0;
    QByteArray kind;
    in >> version >> kind;
    TableClip clip;
    clip.kind = kind.toStdString();
    if (version != kTableVersion || !readRows(in, clip.rows) || !readRows(in, clip.own)) {
        return std::nullopt;
    }
    return clip;
}

std::string quoted(const std::string& cell) {
    if (cell.find_first_of("\t\r\n\"") == std::string::npos) {
        return cell;
    }
    std::string text = "\"";
    for (const char c : cell) {
        text += c == '"' ? "\"\"" : std::string(1, c);
    }
    return text + '"';
}

/// Takes a cell from the front of a text; what ends it stays.
std::string takeCell(std::string_view& text) {
    std::string cell;
    if (text.starts_with('"')) {
        text.remove_prefix(1);
        while (!text.empty()) {
            const char c = text.front();
            text.remove_prefix(1);
            if (c == '"' && !text.starts_with('"')) {
                break;
            }
            if (c == '"') {
                text.remove_prefix(1);
            }
            cell += c;
        }
    }
    const auto end = std::min(text.find_first_of("\t\r\n"), text.size());
    cell += text.substr(0, end);
    text.remove_prefix(end);
    return cell;
}

}  // namespace

std::string tableText(const TableRows& rows) {
    std::string text;
    for (const auto& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            text += (i > 0 ? "\t" : "") + quoted(row[i]);
        }
        text += '\n';
    }
    return text;
}

TableRows tableFromText(std::string_view text) {
    TableRows rows;
    while (!text.empty()) {
        auto& row = rows.emplace_back();
        row.push_back(takeCell(text));
        while (text.starts_with('\t')) {
            text.remove_prefix(1);
            row.push_back(takeCell(text));
        }
        text.remove_prefix(text.starts_with("\r\n") ? 2 : text.empty() ? 0 : 1);
    }
    return rows;
}

void copyTable(const TableClip& clip) {
    auto* const data = new QMimeData;  // the clipboard takes it
    data->setText(toQString(tableText(clip.rows)));
    data->setData(QLatin1String(kTableMimeType), ownBytes(clip));
    QGuiApplication::clipboard()->setMimeData(data);
}

std::optional<TableClip> pasteTable() {
    const auto* const data = QGuiApplication::clipboard()->mimeData();
    if (data == nullptr) {
        return std::nullopt;
    }
    if (data->hasFormat(QLatin1String(kTableMimeType))) {
        if (auto clip = clipOfBytes(data->data(QLatin1String(kTableMimeType)))) {
            return clip;
        }
    }
    if (!data->hasText() || data->text().isEmpty()) {
        return std::nullopt;
    }
    return TableClip{.rows = tableFromText(toBytes(data->text()))};
}

}  // namespace kavu
