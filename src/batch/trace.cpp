#include "batch/trace.h"

#include <QPlainTextEdit>

namespace tarnwick::batch {

namespace {

// More than the steps of any file that ends; a run that repeats itself must not fill the memory.
constexpr int kLines = 10000;

}  // namespace

Trace::Trace(QPlainTextEdit& box) : box_(box) { box_.setMaximumBlockCount(kLines); }

void Trace::clear() { box_.clear(); }
void Trace::start(const QString& line) { box_.setPlainText(line); }
void Trace::add(const QString& line) { box_.appendPlainText(line); }

}  // namespace tarnwick::batch
