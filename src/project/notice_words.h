#pragma once

#include <QString>
#include <QStringList>

// Phrases that the notices of this room share.

namespace tarnwick::project {

// "One file name", or for more than one "3 file names".
QString counted(qsizetype count, const QString& one, const QString& many);

// "a", "a and b", "a, b and c", "a, b, c and 4 more".
QString firstFew(const QStringList& items);

// The bare name of a file for use in a sentence; the middle of a long one is left out.
QString shownName(const QString& path);

}  // namespace tarnwick::project
