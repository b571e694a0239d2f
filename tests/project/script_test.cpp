#include <gtest/gtest.h>

#include "project/naming_scheme.h"
#include "project/script_rows.h"
#include "runtime/fault.h"

using namespace tarnwick;

namespace {

TEST(ScriptRows, CountsBlanksAndNothingElse) {
    const std::vector<std::pair<QString, QString>> cases{
        {u""_qs, u"1"_qs},     {u"one"_qs, u"1"_qs},     {u"one  two"_qs, u"3"_qs},
        {u" one"_qs, u"2"_qs}, {u"a\nb\tc"_qs, u"1"_qs}, {u"a b c "_qs, u"4"_qs}};
    for (const auto& [content, words] : cases)
        EXPECT_EQ(project::wordCount(content), words) << content.toStdString();
}

TEST(ScriptRows, SpecifiedRangeIsLenientButBounded) {
    const project::RowRange rows = project::specifiedRows(u"101 first"_qs, u"195.5"_qs);
    EXPECT_EQ(rows.viFirstRow, 101);
    EXPECT_EQ(rows.viLastRow, 196);
    EXPECT_THROW(project::specifiedRows(u"1"_qs, u"40000"_qs), runtime::Fault);
}

TEST(NamingScheme, NamesHaveNoPaddingAndMayGoDown) {
    struct Case {
        const char16_t *start, *increment, *suffix;
        int position;
        const char16_t* name;
    };
    for (const Case& c :
         std::initializer_list<Case>{{u"1000", u"5", u"", 0, u"ACME_1000"},
                                     {u"1000", u"5", u"", 2, u"ACME_1010"},
                                     {u"1000", u"5", u"", -1, u"ACME_995"},
                                     {u"1000", u"-5", u"_a", 2, u"ACME_990_a"},
                                     {u"", u"5", u"", 2, u"ACME_10"},
                                     {u"1000.5", u"", u"", 2, u"ACME_1000"},
                                     {u"3", u"-5", u"", 1, u"ACME_-2"},
                                     {u"0", u"32767", u"", 499, u"ACME_16350733"}}) {
        const auto text = [](const char16_t* literal) { return QString::fromUtf16(literal); };
        EXPECT_EQ(project::readScheme(u"ACME_"_qs, text(c.start), text(c.increment), text(c.suffix))
                      .nameAt(c.position),
                  text(c.name));
    }
    EXPECT_THROW(project::readScheme({}, u"1"_qs, u"40000"_qs, {}), runtime::Fault);
    EXPECT_THROW(project::readScheme({}, u"2147483647"_qs, u"1"_qs, {}).nameAt(1), runtime::Fault);
}

}  // namespace
