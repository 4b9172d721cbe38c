#include "app/framework/QtText.h"

#include "core/text/TextEncoding.h"

#include <algorithm>

namespace kavu {

QString toQString(std::string_view bytes) {
    if (std::all_of(bytes.begin(), bytes.end(),
                    [](char c) { return static_cast<unsigned char>(c) < 0x80; })) {
        return QString::fromLatin1(bytes.data(), static_cast<qsizetype>(bytes.size()));
    }
    const auto utf8 = toUtf8(bytes);
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

std::string toBytes(const QString& text) {
    return text.toUtf8().toStdString();
}

QStringList toQStrings(const std::vector<std::string>& texts) {
    QStringList list;
    list.reserve(static_cast<qsizetype>(texts.size()));
    for (const auto& text : texts) {
        list.append(toQString(text));
    }
    return list;
}

}  // namespace kavu
