#pragma once

#include "runtime/failure_path.h"

namespace tarnwick::runtime {

// The current step of a guarded procedure. Steps are numbered 10, 20, 30 … from the top.
class Line {
  public:
    void operator()(int number) { number_ = number; }
    int number() const { return number_; }

  private:
    int number_ = 0;
};

// Runs a guarded procedure. Any exception becomes label + description + ", Line " + step, which
// goes to Fatal_Error and ends the program.
//     guarded(failure_, u"frmMain.Import_Excel: ", [&](Line& line) { line(10); …; line(20); … });
template <class Body>
void guarded(const FailurePath& failure, QStringView label, Body&& body) {
    Line line;
    QString text;
    try {
        body(line);
        return;
    } catch (const std::exception& error) {
        text = label.toString() + descriptionOf(error) + QStringLiteral(", Line ") +
               QString::number(line.number());
    }
    failure.Fatal_Error(text);
}

}  // namespace tarnwick::runtime
