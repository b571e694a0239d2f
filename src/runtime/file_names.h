#pragma once

#include <QString>
#include <filesystem>
#include <string>
#include <string_view>

// File names as texts. On the disk a name is any bytes; here it is a QString that gives the same
// bytes back. What is UTF-8 is the text that it spells. Each byte that belongs to no UTF-8 becomes
// a lone surrogate, U+DC00 + byte, which no text from elsewhere contains (the way of Python's
// PEP 383).

namespace tarnwick::runtime {

QString textOfFileName(std::string_view bytes);
std::string bytesOfFileName(QStringView text);

// The same for whole paths.
std::filesystem::path pathOf(QStringView text);

// What a person can read of a name: U+FFFD, the question mark in a lozenge, for what is no text and
// for control characters, which would break the line or vanish.
QString readableFileName(QString name);

// The order of every list of names: without regard to case, and exactly where that is equal.
bool nameLess(const QString& a, const QString& b);

}  // namespace tarnwick::runtime
