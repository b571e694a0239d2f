#pragma once

#include <QString>
#include <filesystem>
#include <string>
#include <string_view>

// File names as text. On disk a name can be any bytes; here it is a QString that converts back to
// the same bytes. Valid UTF-8 is decoded as usual. Every other byte becomes a lone surrogate,
// U+DC00 + byte, which does not occur in ordinary text (as in Python's PEP 383).

namespace tarnwick::runtime {

QString textOfFileName(std::string_view bytes);
std::string bytesOfFileName(QStringView text);

// The same for whole paths.
std::filesystem::path pathOf(QStringView text);

// The name for display. Undecodable bytes, and control characters, which would break the line or
// be invisible, are replaced by U+FFFD, the question mark in a lozenge.
QString readableFileName(QString name);

// The name of the file that a prompt is exported to. A separator in the prompt's name becomes '_',
// so that the file stays in the project folder.
QString promptFile(QString name);

// The sort order of all name lists: without regard to case, then with it where names are equal.
bool nameLess(const QString& a, const QString& b);

}  // namespace tarnwick::runtime
