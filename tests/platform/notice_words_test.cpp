#include "platform/notice_words.h"

#include <gtest/gtest.h>

using namespace tarnwick;

namespace {

TEST(NoticeWords, CountAndListAndShorten) {
    const auto list = [](const QString& items) { return platform::listed(items.split(u' '), 3); };
    const QString n(60, u'n');
    const auto face = QString::fromUcs4(U"\U0001F600");
    const std::pair<QString, QString> cases[] = {
        {platform::counted(1, u"file"_qs, u"files"_qs), u"1 file"_qs},
        {platform::counted(0, u"file"_qs, u"files"_qs), u"0 files"_qs},
        {platform::listed({}, 3), {}},
        {list(u"a"_qs), u"a"_qs},
        {list(u"a b"_qs), u"a and b"_qs},
        {list(u"a b c d"_qs), u"a, b, c and d"_qs},
        {list(u"a b c d e"_qs), u"a, b, c and 2 more"_qs},
        {platform::listedByReason({}, 3), {}},
        {platform::listedByReason(
             {{u"a"_qs, u"full"_qs}, {u"b"_qs, {}}, {u"c"_qs, u"full"_qs}, {u"a"_qs, u"full"_qs}},
             3),
         u"a and c (full); b"_qs},
        {platform::listedByReason({{u"a"_qs, {}}, {u"a"_qs, {}}, {u"b"_qs, {}}, {u"c"_qs, {}}}, 1),
         u"a and 3 more"_qs},
        {platform::bareName(u"/in/a\nb.wav"_qs), u"a\uFFFDb.wav"_qs},
        {platform::bareName(u"/in/folder/"_qs), u"folder"_qs},
        {platform::bareName(u"/in/"_qs + n), n},
        {platform::shownName(u"a/"_qs + n), u"a/"_qs + n.left(37) + u'…' + n.left(20)},
        {platform::shownName(n.left(38) + face + n.left(20) + face + n.left(19)),
         n.left(38) + u'…' + n.left(19)},
        {platform::sizeText(1'240'000'000), u"1.2 GB"_qs},
        {platform::sentencesOf({u"What."_qs, {u"a"_qs}, {}, u"Remedy."_qs}), u"What. Remedy."_qs}};
    for (const auto& [text, wanted] : cases)
        EXPECT_EQ(text, wanted);
}

}  // namespace
