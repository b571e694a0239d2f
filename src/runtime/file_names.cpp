#include "runtime/file_names.h"

#include <QDir>
#include <algorithm>

namespace tarnwick::runtime {

namespace {

constexpr char16_t kLoneByte = 0xDC00;  // + 0x80 to 0xFF

bool isLoneByte(QStringView text, qsizetype at) {
    const char16_t unit = text[at].unicode();
    const bool low = unit >= kLoneByte + 0x80 && unit <= kLoneByte + 0xFF;
    return low && (at == 0 || !text[at - 1].isHighSurrogate());
}

// Length in bytes of the first character of `bytes`; 0 if it is not valid UTF-8. The bytes are
// decoded with a letter in front because Qt drops a leading byte order mark.
int utf8Length(std::string_view bytes) {
    const auto lead = static_cast<unsigned char>(bytes.front());
    const int length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    const std::string tried = 'x' + std::string(bytes.substr(0, static_cast<std::size_t>(length)));
    return QString::fromStdString(tried).toStdString() == tried ? length : 0;
}

}  // namespace

QString textOfFileName(std::string_view bytes) {
    const auto size = static_cast<qsizetype>(bytes.size());
    QString text = QString::fromUtf8(bytes.data(), size);
    if (text.toStdString() == bytes) return text;
    text.clear();
    while (!bytes.empty()) {
        const int length = utf8Length(bytes);
        if (length > 0)
            text += QString::fromUtf8('x' + QByteArray(bytes.data(), length)).mid(1);
        else
            text += QChar(kLoneByte + static_cast<unsigned char>(bytes.front()));
        bytes.remove_prefix(static_cast<std::size_t>(std::max(length, 1)));
    }
    return text;
}

std::string bytesOfFileName(QStringView text) {
    std::string bytes;
    qsizetype begin = 0;
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (!isLoneByte(text, at)) continue;
        bytes += text.mid(begin, at - begin).toUtf8().toStdString();
        bytes += static_cast<char>(text[at].unicode() - kLoneByte);
        begin = at + 1;
    }
    return bytes + text.mid(begin).toUtf8().toStdString();
}

std::filesystem::path pathOf(QStringView text) { return {bytesOfFileName(text)}; }

QString readableFileName(QString name) {
    for (qsizetype at = 0; at < name.size(); ++at) {
        const QChar::Category kind = name[at].category();
        if (kind == QChar::Other_Control || kind == QChar::Separator_Line ||
            kind == QChar::Separator_Paragraph || isLoneByte(name, at))
            name[at] = QChar::ReplacementCharacter;
    }
    return name;
}

QString promptFile(QString name) {
    return name.replace(QDir::separator(), u'_') + QStringLiteral(".wav");
}

bool nameLess(const QString& a, const QString& b) {
    // Case folding is slow, so skip the common beginning that neighbours in a list often have.
    qsizetype same = std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first - a.begin();
    if (same > 0 && a[same - 1].isHighSurrogate()) --same;
    const QStringView restOfA = QStringView(a).mid(same), restOfB = QStringView(b).mid(same);
    const int order = restOfA.compare(restOfB, Qt::CaseInsensitive);
    return order < 0 || (order == 0 && restOfA < restOfB);
}

}  // namespace tarnwick::runtime
