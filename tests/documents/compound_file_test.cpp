#include "documents/compound_file.h"

#include <gtest/gtest.h>

#include <QFile>
#include <random>

#include "documents/office_converter.h"

using namespace tarnwick::documents;

namespace {

QByteArray bytesOf(const char* name) {
    QFile file(QStringLiteral(TARNWICK_TEST_DATA "/documents/") + QString::fromLatin1(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray utf16(QStringView text) {
    return QByteArray(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
}

QByteArray with(QByteArray bytes, qsizetype at, const QByteArray& piece) {
    return bytes.replace(at, piece.size(), piece);
}

QByteArray number(quint32 value) { return QByteArray(reinterpret_cast<const char*>(&value), 4); }

// A file with a workbook's stream of eight sectors in reverse order, and a storage that holds a
// stream of the given name.
QByteArray madeFile(QStringView inner) {
    const auto entry = [](QStringView name, char type, quint32 next, quint32 child, quint32 start,
                          quint32 size) {
        return utf16(name).leftJustified(66, '\0') + type + '\1' + number(~0u) + number(next) +
               number(child) + QByteArray(36, '\0') + number(start) + number(size) + number(0);
    };
    const auto header = bytesOf("script.xls").left(44) + number(1) + number(8) +
                        QByteArray(8, '\0') + number(~1u) + number(0) + number(~1u) + number(0) +
                        number(9);
    QByteArray file = header.leftJustified(512, '\xff');
    QByteArray table = number(~1u);
    for (char sector = 7; sector >= 0; --sector)
        file += QByteArray(512, sector);
    for (quint32 sector = 1; sector < 8; ++sector)
        table += number(sector - 1);
    file += entry(u"Root Entry", 5, ~0u, 1, ~1u, 0) + entry(u"BOOK", 2, 2, ~0u, 7, 4096) +
            entry(u"Embedded", 1, ~0u, 3, 0, 0) + entry(inner, 2, ~0u, ~0u, 7, 4096);
    return file + (table + number(~1u) + number(~2u)).leftJustified(512, '\xff');
}

}  // namespace

TEST(CompoundFile, StreamsOfTheRoot) {
    const QByteArray made = madeFile(u"EncryptedPackage");
    const CompoundFile large(made);
    const QByteArray book = large.stream(u"Book");
    ASSERT_EQ(book.size(), 4096);
    for (int i = 0; i < 4096; ++i)
        ASSERT_EQ(book[i], i / 512) << i;
    EXPECT_EQ(large.stream(u"book", 700), book.left(700));
    EXPECT_FALSE(large.hasStream(u"EncryptedPackage"));
    // A chain in a circle, said to be longer than the file.
    const QByteArray longer = with(made, 9 * 512 + 128 + 120, number(~0u));
    EXPECT_EQ(CompoundFile(longer).stream(u"Book").size(), 4096);
    const CompoundFile circle(with(longer, made.size() - 512, number(7)));
    EXPECT_EQ(circle.stream(u"Book").size(), made.size());
    const CompoundFile small(bytesOf("letter.doc"));
    EXPECT_TRUE(small.stream(u"WordDocument").startsWith("\xec\xa5"));
    EXPECT_EQ(small.stream(u"WordDocument").size(), 3631);
    EXPECT_EQ(small.stream(u"1Table").size(), 1461);
}

TEST(CompoundFile, OnlyWhatNeedsAPasswordIsProtected) {
    const QByteArray letter = bytesOf("letter.doc"), script = bytesOf("script.xls");
    const qsizetype head = letter.indexOf("\xec\xa5"),
                    name = letter.indexOf(utf16(u"WordDocument"));
    const QByteArray locked = with(letter, head + 11, QByteArray(1, letter[head + 11] | 1));
    const struct {
        const char* what;
        QByteArray bytes;
        bool isProtected;
    } files[] = {
        {"workbook", script, false},
        {"locked workbook", bytesOf("encrypted.xls"), true},
        {"workbook with the bytes of a locked document", script + locked, false},
        {"document", letter, false},
        {"locked document", locked, true},
        {"new form", with(letter, name, utf16(u"EncryptedPackage")), true},
        {"new form inside of a document", madeFile(u"EncryptedPackage"), false},
    };
    for (const auto& [what, bytes, isProtected] : files)
        EXPECT_EQ(isPasswordProtected(bytes), isProtected) << what;
}

TEST(CompoundFile, HostileBytesEndInTime) {
    std::mt19937 random(7);
    const QByteArray good = bytesOf("letter.doc");
    const auto use = [](const QByteArray& bytes) {
        isPasswordProtected(bytes);
        for (QStringView name : {u"WordDocument", u"1Table"})
            EXPECT_LE(CompoundFile(bytes).stream(name).size(), bytes.size());
    };
    for (int round = 0; round < 2000; ++round) {
        QByteArray noise = good.left(512 + static_cast<qsizetype>(random() % 8192));
        // All behind the header, or a few numbers of any place.
        if (round % 2)
            for (qsizetype at = 512; at < noise.size(); ++at)
                noise[at] = static_cast<char>(random());
        else
            for (int change = 0; change < 8; ++change)
                noise =
                    with(noise, 28 + 4 * static_cast<qsizetype>(random() % (noise.size() / 4 - 8)),
                         number(random() % 3 ? random() % 16 : random()));
        use(noise);
    }
    // Every number leads back: the table, the directory and the list of the table's sectors.
    for (quint32 value : {0u, 1u, 0xfffffffeu}) {
        QByteArray circle = good.left(44);
        while (circle.size() < 4 << 20)
            circle += number(value).repeated(1 << 10);
        circle[512 + 66] = 5;  // a root in the first sector
        use(circle);
    }
}
