#pragma once

#include "documents/package_maker.h"
#include "journey.h"

namespace tarnwick::test {

struct Session : Launched {
    // Writes a workbook of `rows` rows with names and texts.
    void writeScript(int rows, bool twoColumns = true) const {
        const auto cell = [](const QByteArray& text) {
            return "<c t='inlineStr'><is><t>" + text + "</t></is></c>";
        };
        const QByteArray text = twoColumns ? cell("one two  four") : QByteArray();
        QByteArray cells;
        for (int i = 1; i <= rows; ++i)
            cells += "<row>" + cell("Prompt " + QByteArray::number(i)) + text + "</row>";
        write(u"script.xlsx"_qs, zipOf(workbookParts(cells)));
    }
};

}  // namespace tarnwick::test
