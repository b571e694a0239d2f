#include "batch/trace.h"

#include <QPlainTextEdit>

namespace tarnwick::batch {

namespace {

// More than any file needs; limits the memory that a run in an endless loop uses.
constexpr int kLines = 10000;

}  // namespace

Trace::Trace(QPlainTextEdit& box) : box_(box) { box_.setMaximumBlockCount(kLines); }

void Trace::clear() { box_.clear(); }
void Trace::start(const QString& line) { box_.setPlainText(line); }
void Trace::add(const QString& line) { box_.appendPlainText(line); }

}  // namespace tarnwick::batch
