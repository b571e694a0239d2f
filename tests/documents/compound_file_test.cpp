#include "documents/compound_file.h"

#include <gtest/gtest.h>

#include <QtEndian>
#include <map>

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

// A compound file that is put together sector by sector; what is not set has all bits on, which
// ends every chain.
class Made {
  public:
    Made(int shift, quint32 sectors)
        : shift_(shift), bytes_((sectors + qsizetype{1}) << shift, '\xff') {
        bytes_.replace(0, 8, "\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1");
        put(30, 0xfffe0000 + static_cast<quint32>(shift));
    }
    qsizetype at(quint32 sector) const { return (sector + qsizetype{1}) << shift_; }
    void put(qsizetype at, quint32 value) { qToLittleEndian(value, bytes_.data() + at); }
    // That sector holds that piece of the table, and that place names it.
    void piece(quint32 index, quint32 sector, qsizetype namedAt) {
        table_[index] = sector;
        put(namedAt, sector);
    }
    void link(const std::vector<quint32>& sectors) {
        for (std::size_t i = 1; i < sectors.size(); ++i) {
            const quint32 from = sectors[i - 1], perPiece = 1u << (shift_ - 2);
            put(at(table_.at(from / perPiece)) + 4 * (from % perPiece), sectors[i]);
        }
    }
    // `place` of an entry of the directory; its siblings, its child and where its stream starts.
    void entry(qsizetype place, const char16_t* name, char type, std::array<quint32, 3> kin,
               quint32 start, quint32 size, quint32 high) {
        bytes_.replace(place, 64, QByteArray(64, '\0'));
        bytes_.replace(place, utf16(name).size(), utf16(name));
        bytes_[place + kType] = type;
        const quint32 numbers[] = {kin[0], kin[1], kin[2]};
        for (int i = 0; i < 3; ++i)
            put(place + kLeft + 4 * i, numbers[i]);
        put(place + kStart, start);
        put(place + kStart + 4, size);
        put(place + kStart + 8, high);
    }
    void write(qsizetype at, QByteArrayView piece) { bytes_.replace(at, piece.size(), piece); }
    const QByteArray& bytes() const { return bytes_; }

  private:
    int shift_;
    QByteArray bytes_;
    std::map<quint32, quint32> table_;
};

QByteArray content(qsizetype size) {
    QByteArray bytes;
    for (qsizetype i = 0; i < size; ++i)
        bytes += static_cast<char>(i % 251);
    return bytes;
}

constexpr quint32 kNo = ~0u;
constexpr char kRoot = 5, kStream = 2, kStorage = 1;

// With sectors of 4096 bytes. The second sectors of the directory and of a stream of 5000 bytes.
QByteArray largeSectors(quint32 directory, quint32 second) {
    Made made(12, 10);
    made.piece(0, 0, 76);
    made.put(48, 1);
    made.put(60, 3);
    made.link({1, directory});
    made.link({4, 5});
    made.link({6, second});
    made.entry(made.at(1), u"Root Entry", kRoot, {kNo, kNo, 33}, 4, 8192, 0);
    made.entry(made.at(directory) + 128, u"Short", kStream, {63, kNo, kNo}, 63, 100, 0);
    made.entry(made.at(directory) + 31 * 128, u"Long", kStream, {kNo, kNo, kNo}, 6, 5000, 0);
    made.put(made.at(3) + 4 * 63, 64);
    made.write(made.at(4) + 63 * 64, content(100).first(64));
    made.write(made.at(5), content(100).sliced(64));
    made.write(made.at(6), content(4096));
    made.write(made.at(second), content(5000).sliced(4096));
    return made.bytes();
}

}  // namespace

TEST(CompoundFile, LargeSectors) {
    const CompoundFile file(largeSectors(9, 7));
    EXPECT_EQ(file.stream(u"Short"), content(100));
    EXPECT_EQ(file.stream(u"long"), content(5000));
    EXPECT_FALSE(CompoundFile(largeSectors(9, 7).chopped(1)).hasStream(u"Long"))
        << "its entry is cut short";
    for (const qsizetype left : {1, 900}) {
        const QByteArray cut = largeSectors(2, 9).first((10 << 12) + left);
        EXPECT_EQ(CompoundFile(cut).stream(u"Long"), content(4096 + left));
    }
    const QByteArray header = with(largeSectors(9, 7).first(10 << 12), 128 + kType, "\2");
    EXPECT_FALSE(CompoundFile(header).hasStream(QString(31, QChar(0xffff))))
        << "taken for the second sector of the directory, which is missing";
    EXPECT_FALSE(CompoundFile(with(largeSectors(9, 7), 7, "x")).hasStream(u"Long"));
    EXPECT_FALSE(CompoundFile(with(largeSectors(9, 7), 30, "\x0a")).hasStream(u"Long"));
    EXPECT_FALSE(CompoundFile(with(largeSectors(9, 7), 8192 + kType, "\1")).hasStream(u"Long"));
}

// So many that the header does not name all pieces of the table: a list in two parts names others.
TEST(CompoundFile, ManySmallSectors) {
    constexpr quint32 kLast = 30299;
    Made made(9, kLast + 1);
    made.piece(0, kLast, 76);
    made.piece(1, 1, 80);
    made.put(68, 4);
    made.piece(110, 2, made.at(4) + 4);
    made.put(made.at(4) + 508, 5);
    made.piece(109 + 127, 3, made.at(5));
    made.put(48, 10);
    made.link({10, 11});
    made.put(60, 20);
    made.link({20, 21});
    std::vector<quint32> holders;
    for (quint32 sector = 30; sector < 60; ++sector)
        holders.push_back(sector);
    made.link(holders);
    const std::vector<quint32> sectors{127, 128, 14080, 14081, 30208, 30209, 100, 101};
    made.link(sectors);
    for (qsizetype i = 0; i < 8; ++i)
        made.write(made.at(sectors[static_cast<std::size_t>(i)]),
                   content(4096).sliced(i * 512, 512));
    const auto follow = [&](quint32 small, quint32 next) {
        made.put(made.at(small < 128 ? 20 : 21) + 4 * (small % 128), next);
    };
    const auto fill = [&](quint32 small, const QByteArray& piece) {
        made.write(made.at(30 + small / 8) + 64 * (small % 8), piece);
    };
    follow(127, 128);
    fill(127, content(100).first(64));
    fill(128, content(100).sliced(64));
    for (quint32 i = 0; i < 64; ++i) {
        follow(60 + i, i < 63 ? 61 + i : kNo);
        fill(60 + i, content(4095).sliced(64 * i).first(std::min(64, 4095 - 64 * int(i))));
    }
    const char16_t* const longest = u"a name of thirty-one characters";
    const auto entry = [&](quint32 index, const char16_t* name, char type,
                           std::array<quint32, 3> kin, quint32 start, quint32 size) {
        made.entry(made.at(index < 4 ? 10 : 11) + 128 * (index % 4), name, type, kin, start, size,
                   7);
    };
    entry(0, u"Root Entry", kRoot, {kNo, kNo, 1}, 30, 30 * 512);
    entry(1, u"Large", kStream, {2, 3, kNo}, 127, 4096);
    entry(2, u"Short", kStream, {1, kNo, kNo}, 127, 100);  // leads back
    entry(3, u"Store", kStorage, {4, kNo, 5}, 127, 100);
    entry(4, longest, kStream, {kNo, kNo, kNo}, 60, 4095);
    entry(5, u"Inside", kStream, {kNo, kNo, kNo}, 127, 100);
    made.write(made.at(11) + 62, "xx");  // behind the longest name
    const CompoundFile file(made.bytes());
    EXPECT_EQ(file.stream(u"Large"), content(4096));
    EXPECT_EQ(file.stream(u"Short"), content(100));
    EXPECT_EQ(file.stream(longest), content(4095));
    EXPECT_EQ(file.stream(u"Large", 0), "");
    EXPECT_FALSE(file.hasStream(u"Store") || file.hasStream(u"Inside"));
}

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
