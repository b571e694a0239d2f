#include "project/script_notices.h"

#include <gtest/gtest.h>

#include "documents/sheet.h"

using namespace tarnwick;

namespace {

QStringList whatOf(const QList<platform::Notice>& notices) {
    QStringList sentences;
    for (const platform::Notice& notice : notices) {
        sentences << notice.what;
        EXPECT_FALSE(notice.files.isEmpty() || notice.remedy.isEmpty());
    }
    return sentences;
}

TEST(ScriptNotices, EachKindOfBadNameIsToldOnce) {
    const QString longName(252, u'n');
    const std::pair<QStringList, QStringList> cases[] = {
        {{u"a"_qs, u"b c"_qs, u"B c"_qs, longName.left(251)}, {}},
        {{u"take"_qs, u"Take"_qs},
         {u"The recording's own name is also the file name of row 1 (take.wav). The export will "
          u"replace the recording with the prompt."_qs}},
        {{u"a/b"_qs, u"c"_qs, u"a_b"_qs},
         {u"1 file name has a slash, which becomes an underscore: row 1 (a_b.wav)."_qs,
          u"1 file name belongs to more than one prompt: a_b.wav (rows 1 and 3). Each later row "
          u"overwrites the file of the row before."_qs}},
        {{u".a"_qs, u"b"_qs, u".c"_qs, u".d"_qs, u".e"_qs, u".%2"_qs},
         {u"5 file names begin with a dot: row 1 (.a.wav), row 3 (.c.wav), row 4 (.d.wav) and 2 "
          u"more. Such files are hidden, and the Batch Processor skips them."_qs}},
        {{u""_qs, u"x"_qs, u""_qs},
         {u"2 prompts have no file name: row 1 (.wav) and row 3 (.wav). The file is hidden, the "
          u"Batch Processor skips it, and each further prompt without a name overwrites it."_qs}},
        {{longName},
         {u"1 file name is longer than the disk allows (255 bytes with .wav) and cannot be "
          u"written: row 1 (%1…%2.wav)."_qs.arg(longName.left(39), longName.left(16))}},
        {{QString(126, u'ä')},
         {u"1 file name is longer than the disk allows (255 bytes with .wav) and cannot be "
          u"written: row 1 (%1…%2.wav)."_qs.arg(QString(39, u'ä'), QString(16, u'ä'))}}};
    for (const auto& [names, told] : cases)
        EXPECT_EQ(whatOf(project::nameNotices(names, u"take.wav"_qs)), told);
    const auto all = project::nameNotices(QStringList(500, u"/"_qs) + QStringList(9, u"."_qs), {});
    EXPECT_EQ(all.size(), 3);
    EXPECT_EQ(all[0].files.size(), 500) << "the list of files has them all";
    EXPECT_EQ(all[2].files, QStringList({u"..wav"_qs, u"_.wav"_qs}));
}

TEST(ScriptNotices, FormulasWithoutResultTellWhatIsMissing) {
    documents::Sheet two;
    for (int row = 1; row <= 5; ++row)
        two.setText(row, 1, u"name"_qs);
    two.setText(1, 2, u"text"_qs);
    documents::Sheet one;
    one.setText(1, 1, u"text"_qs);
    const auto told = [](documents::Sheet sheet, std::initializer_list<std::pair<int, int>> cells,
                         project::RowRange rows, bool toTheEnd) {
        for (const auto& [row, column] : cells)
            sheet.setLacksResult(row, column);
        return whatOf(project::formulaNotices(sheet, rows, toTheEnd)).join(u'|');
    };
    const QString because = u", because the workbook has a formula without a stored result in "_qs;
    EXPECT_EQ(told(two, {}, {1, 5}, true), QString());
    EXPECT_EQ(told(two, {{3, 2}, {1, 3}, {7, 1}, {6, 2}}, {2, 5}, true),
              u"1 prompt is empty%1B3."_qs.arg(because));
    EXPECT_EQ(told(two, {{2, 2}, {3, 2}, {6, 1}}, {1, 5}, true),
              u"2 prompts are empty%1B2 and B3.|The script was read only up to row 5%1A6."_qs.arg(
                  because));
    EXPECT_EQ(told(two, {{6, 1}}, {1, 5}, false), QString()) << "the operator chose the rows";
    EXPECT_EQ(told(one, {{1, 2}, {2, 1}}, {1, 3}, false),
              u"1 prompt is empty%1A2.|The script was read as one column of texts, and its file "
              u"names are numbered%1B1."_qs.arg(because));
}

}  // namespace
