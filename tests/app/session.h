#pragma once

#include "documents/package_maker.h"
#include "journey.h"

namespace tarnwick::test {

struct Session : Launched {
    // Writes a workbook of `rows` rows with names and texts.
    void writeScript(int rows) const {
        Rows script;
        for (int i = 1; i <= rows; ++i)
            script.push_back({u"Prompt %1"_qs.arg(i), u"one two  four"_qs});
        write(u"script.xlsx"_qs, zipOf(workbookParts(cellsOf(script))));
    }
};

}  // namespace tarnwick::test
