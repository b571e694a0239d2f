#include <gtest/gtest.h>

#include "project/naming_scheme.h"
#include "project/script_rows.h"
#include "runtime/fault.h"

using namespace tarnwick;

namespace {

TEST(ScriptRows, SpecifiedRangeIsLenientButBounded) {
    const project::RowRange rows = project::specifiedRows(u"101 first"_qs, u"195.5"_qs);
    EXPECT_EQ(rows.viFirstRow, 101);
    EXPECT_EQ(rows.viLastRow, 196);
    EXPECT_THROW(project::specifiedRows(u"1"_qs, u"40000"_qs), runtime::Fault);
}

// The preview shows what the boxes do; it ends at the third name and at 32767.
TEST(NamingScheme, NamesReachFurtherThanTheirPreview) {
    const auto name = [](const QString& start, const QString& increment, int position) {
        return project::readScheme(u"ACME_"_qs, start, increment, u"_a"_qs).nameAt(position);
    };
    EXPECT_EQ(name(u"1000"_qs, u"5"_qs, -1), u"ACME_995_a");
    EXPECT_EQ(name(u"0"_qs, u"32767"_qs, 499), u"ACME_16350733_a");
    EXPECT_THROW(name(u"2147483647"_qs, u"1"_qs, 1), runtime::Fault);
}

}  // namespace
