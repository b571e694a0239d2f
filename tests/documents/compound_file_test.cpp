#include "documents/compound_file.h"

#include <gtest/gtest.h>

#include "documents/office_converter.h"
#include "documents/package_maker.h"

using namespace tarnwick::documents;

namespace {

// Where letter.doc has its table, and the directory's entries of a short stream and of the text.
constexpr qsizetype kTable = 512, kOther = 8192, kText = 8320;
constexpr qsizetype kType = 66, kLeft = 68, kChild = 76, kStart = 116;

QByteArray number(quint32 value) { return QByteArray(reinterpret_cast<const char*>(&value), 4); }

QByteArray with(QByteArray bytes, qsizetype at, const QByteArray& piece) {
    return bytes.replace(at, piece.size(), piece);
}

}  // namespace

TEST(CompoundFile, StreamsInSmallAndLargeSectors) {
    const QByteArray letter = bytesOf("letter.doc");
    const QByteArray text = CompoundFile(letter).stream(u"worddocument");
    EXPECT_EQ(text.size(), 3631);
    EXPECT_TRUE(text.startsWith("\xec\xa5"));
    EXPECT_EQ(CompoundFile(letter).stream(u"WordDocument", 700), text.left(700));
    // Said to be what holds the small sectors, 3 to 13, and then endless in a circle of these.
    const QByteArray large = with(letter, kText + kStart, number(3) + number(5632));
    EXPECT_EQ(CompoundFile(large).stream(u"WordDocument").mid(29 * 64, 3631), text);
    const QByteArray endless = with(letter, kText + kStart, number(3) + number(~0u));
    EXPECT_EQ(CompoundFile(endless).stream(u"WordDocument").size(), 5632);
    const CompoundFile circle(with(endless, kTable + 4 * 13, number(3)));
    EXPECT_EQ(circle.stream(u"WordDocument").size(), letter.size());
}

TEST(CompoundFile, OnlyWhatNeedsAPasswordIsProtected) {
    const QByteArray letter = bytesOf("letter.doc"), script = bytesOf("script.xls");
    const qsizetype cell = script.indexOf(utf16(u"“quoted” & <mark"));
    const QByteArray locked = with(letter, letter.indexOf("\xec\xa5") + 11, "\x13");
    const QByteArray package = with(letter, kText, utf16(u"EncryptedPackage"));
    const QByteArray inner = with(with(package, kOther + kType, "\1"), kOther + kLeft, number(~0u));
    const std::tuple<const char*, QByteArray, bool> files[] = {
        {"locked workbook", bytesOf("encrypted.xls"), true},
        {"workbook with a word in a cell", with(script, cell, utf16(u"EncryptedPackage")), false},
        {"workbook with the bytes of a locked document", script + locked, false},
        {"document", letter, false},
        {"locked document", locked, true},
        {"new form", package, true},
        {"new form embedded", with(inner, kOther + kChild, number(5)), false}};
    for (const auto& [what, bytes, isProtected] : files)
        EXPECT_EQ(isPasswordProtected(bytes), isProtected) << what;
}

TEST(CompoundFile, NumbersThatAllLeadBackToTheFirstSectorEndInTime) {
    const QByteArray bytes =
        with(bytesOf("letter.doc").left(44).leftJustified(4 << 20, '\0'), 512 + kType, "\5");
    isPasswordProtected(bytes);
    EXPECT_LE(CompoundFile(bytes).stream(u"WordDocument").size(), bytes.size());
}
