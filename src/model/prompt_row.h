#pragma once

#include <QString>

namespace tarnwick::model {

// One prompt of the script, with all values as the text that the list shows.
struct PromptRow {
    QString FileName;  // without extension
    QString Content;   // the whole prompt
    QString Words;     // number of blanks in the prompt plus one
};

}  // namespace tarnwick::model
