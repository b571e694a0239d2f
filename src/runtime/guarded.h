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
// goes to Fatal_Error and ends the program. The box also shows the detail of a Fault.
//     guarded(failure_, u"frmMain.Import_Excel: ", [&](Line& line) { line(10); …; line(20); … });
template <class Body>
void guarded(const FailurePath& failure, QStringView label, Body&& body) {
    Line line;
    QString text;
    QString shown;
    try {
        body(line);
        return;
    } catch (const std::exception& error) {
        const auto record = [&](const QString& description) {
            return label.toString() + description + QStringLiteral(", Line ") +
                   QString::number(line.number());
        };
        text = record(descriptionOf(error));
        shown = record(detailedDescriptionOf(error));
    }
    failure.Fatal_Error(text, shown);
}

}  // namespace tarnwick::runtime
