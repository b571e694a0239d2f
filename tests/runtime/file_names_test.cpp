#include "runtime/file_names.h"

#include <gtest/gtest.h>

#include <QSet>

using namespace tarnwick::runtime;

namespace {

TEST(FileNames, EveryNameLeadsBackToItsBytesAndNoTwoShareAText) {
    std::vector<std::string> names{"take01.wav",   "l\xc3\xa4nge.txt",   "\xf0\x9f\x8e\xa4.wav",
                                   "\xef\xbb\xbf", "x\xed\xb2\x80y.wav", "\xe2\x82",
                                   "\xf0\x9f\x8e", "\xf3\xb0\x80\x80"};
    for (int a = 1; a < 256; ++a)
        for (int b = 1; b < 256; ++b)
            names.push_back({static_cast<char>(a), static_cast<char>(b), '.', 'w'});
    QSet<QString> texts;
    for (const std::string& name : names) {
        texts << textOfFileName(name);
        ASSERT_EQ(bytesOfFileName(textOfFileName(name)), name);
    }
    EXPECT_EQ(texts.size(), static_cast<qsizetype>(names.size()));
    EXPECT_EQ(textOfFileName("l\xc3\xa4nge.txt"), u"länge.txt");
    EXPECT_EQ(textOfFileName("\xc3\xa4\xff\xe0\xa4\x85\xff\xf0\x9f\x8e\xa4\xff"),
              u"ä\xDCFF\u0905\xDCFF🎤\xDCFF");
    EXPECT_EQ(textOfFileName("\xef\xbb\xbf.x").size(), 3) << "a byte order mark is part of it";
    EXPECT_EQ(pathOf(u"/a/"_qs + textOfFileName("\xff")).native(), "/a/\xff");
}

TEST(FileNames, AreDrawnOnOneLine) {
    EXPECT_EQ(readableFileName(textOfFileName("\na\x7f\xff.wav")), u"\uFFFDa\uFFFD\uFFFD.wav");
    EXPECT_EQ(readableFileName(u"é\u2028'\"🎤"_qs), u"é\uFFFD'\"🎤");
}

TEST(FileNames, AreOrderedWithoutRegardToCaseUnlessTheyAreEqualThen) {
    const QStringList ordered{u"A.wav"_qs, u"a.wav"_qs, u"ab"_qs, u"B"_qs,
                              u"ba"_qs,    u"𐐨a"_qs,    u"𐐀z"_qs};
    for (qsizetype a = 0; a < ordered.size(); ++a)
        for (qsizetype b = 0; b < ordered.size(); ++b)
            EXPECT_EQ(nameLess(ordered[a], ordered[b]), a < b) << a << " and " << b;
}

}  // namespace
