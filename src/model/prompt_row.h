#pragma once

#include <QString>

namespace tarnwick::model {

// One prompt of the script, all text as the list shows it.
struct PromptRow {
    QString FileName;  // without extension
    QString Content;   // the whole prompt
    QString Words;     // blanks in the prompt plus one, in decimal
};

}  // namespace tarnwick::model
