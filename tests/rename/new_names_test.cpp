#include "rename/new_names.h"

#include <gtest/gtest.h>

#include <QStringList>
#include <functional>

#include "support/fault_of.h"

using namespace tarnwick::rename;
using tarnwick::test::resultOf;

namespace {

const QString kCountFault = u"Invalid procedure call or argument"_qs;

TEST(NewNames, LettersAreRepeatedPastZ) {
    const std::pair<int, QString> cases[] = {
        {0, u"A"_qs},   {25, u"Z"_qs},   {26, u"AA"_qs},           {27, u"BB"_qs},
        {51, u"ZZ"_qs}, {52, u"AAA"_qs}, {300, u"OOOOOOOOOOOO"_qs}};
    for (const auto& [index, letters] : cases)
        EXPECT_EQ(lettersOf(index), letters) << index;
}

// File after file: "!" is an abnormal one.
TEST(NewNames, TheLengthOfAnExtensionIsCarriedOn) {
    const std::pair<QString, QString> cases[] = {
        {u"take01.wav"_qs, u"take01_x.wav"_qs},
        {u"a.b.wav"_qs, u"a.b_x.wav"_qs},
        {u"song.flac"_qs, u"song_x.flac"_qs},
        {u"x.z"_qs, u"x_x.z"_qs},
        {u".z"_qs, u"_x.z"_qs},
        {u"x..y"_qs, u"x._x.y"_qs},
        {u"x.tar.gz"_qs, u"x.tar_x.gz"_qs},
        {u"song.mpeg4"_qs, u"song.mpeg4_x !"_qs},
        {u"nodot"_qs, u"nodot_x !"_qs},
        {u"x.wav nodot"_qs, u"x_x.wav n_xodot !"_qs},
        {u"x.flac x.mpeg4 y.z"_qs, u"x_x.flac x._xmpeg4 ! y_x.z"_qs},
        {u"ends."_qs, u"ends._x !"_qs},
        {u"🎤🎤🎤🎤🎤"_qs, u"🎤🎤🎤🎤🎤_x !"_qs},
        {u"🎤.🎤🎤🎤🎤"_qs, u"🎤_x.🎤🎤🎤🎤"_qs},
        {u"four"_qs, kCountFault},
        {u"end."_qs, kCountFault},
        {u"a.wav b"_qs, kCountFault}};
    for (const auto& [names, wanted] : cases) {
        ExtensionLength extension;
        const QString result = resultOf([&, &names = names] {
            QStringList parts;
            for (const QString& name : names.split(u' ')) {
                const bool normal = extension.find(name);
                parts << withSuffix(name, extension.length(), u"_x"_qs);
                if (!normal) parts << u"!"_qs;
            }
            return parts.join(u' ');
        });
        EXPECT_EQ(result, wanted) << names.toStdString();
    }
}

TEST(NewNames, TextsAreReplacedInsertedAndRemoved) {
    const auto replaced = [](const char* search, const char* by, bool caseSensitive) {
        return withReplaced(u"Aa.wav"_qs, QString::fromUtf8(search), QString::fromUtf8(by),
                            caseSensitive);
    };
    const auto inserted = [](double start) {
        return resultOf([&] { return withInserted(u"abcdef"_qs, start, u"-"_qs); });
    };
    const auto removed = [](double start, double count) {
        return resultOf([&] { return withRemoved(u"ab_c.wav"_qs, start, count); });
    };
    const std::pair<QString, QString> cases[] = {
        {replaced("a", "b", false), u"bb.wbv"_qs},
        {replaced("a", "b", true), u"Ab.wbv"_qs},
        {replaced("a", "aa", false), u"aaaa.waav"_qs},
        {replaced("A.WAV", "x", false), u"Ax"_qs},
        {inserted(1), u"-abcdef"_qs},
        {inserted(3), u"ab-cdef"_qs},
        {inserted(7), u"abcdef-"_qs},
        {inserted(8), kCountFault},
        {inserted(0), kCountFault},
        {inserted(2.5), u"ab-cdef"_qs},  // 1.5 and 4.5 characters: 2 and 4
        {inserted(3.5), u"ab-cdef"_qs},  // 2.5 and 3.5: 2 and 4
        {inserted(1e10), u"Overflow"_qs},
        {removed(1, 2), u"_c.wav"_qs},
        {removed(3, 1), u"abc.wav"_qs},
        {removed(8, 1), u"ab_c.wa"_qs},
        {removed(8, 2), kCountFault},
        {removed(0, 1), kCountFault},
        {removed(1, 8), u""_qs},
        {removed(2, -1), u"aab_c.wav"_qs},
        {removed(1, -20), u"ab_c.wav"_qs},
        {withRemoved(u"🎤a🎤b"_qs, 3, 1), u"🎤ab"_qs},
        {withInserted(u"🎤a"_qs, 2, u"x"_qs), u"🎤xa"_qs},
        {withInserted(u"\xDCFF\xDCFFz"_qs, 2, u"x"_qs), u"\xDCFFx\xDCFFz"_qs},  // bytes, no text
        {withExtension(u"x.wav"_qs, u".wav"_qs, u".mp3"_qs), u"x.mp3"_qs},
        {withExtension(u"x.wav"_qs, u".WAV"_qs, u".mp3"_qs), u"x.wav"_qs},
        {withExtension(u"x.wav"_qs, u"."_qs, u".mp3"_qs), u"x.wav"_qs}};
    for (const auto& [name, wanted] : cases)
        EXPECT_EQ(name, wanted);
}

}  // namespace
