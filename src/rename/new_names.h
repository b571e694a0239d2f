#pragma once

#include <QString>

// How the rules make a new name of a file's name. Pure functions. A name has its extension and no
// folder; positions and lengths count characters as a person counts them, from 1. Counts that come
// out negative fault with "Invalid procedure call or argument".

namespace tarnwick::rename {

// A, B and on to Z for the files 0 to 25, then AA, BB and on to ZZ, then AAA.
QString lettersOf(int index);

// How long the extensions of the files are, one file after the other.
class ExtensionLength {
  public:
    // Finds the dot one to four characters before the end of `name`, the hindmost first. False when
    // there is none: the length stays that of the file before. A name that ends before all four
    // places have been looked at faults with "Invalid procedure call or argument".
    bool find(const QString& name);

    // With the dot: 0 before the first that was found, then 2 to 5.
    int length() const { return length_; }

  private:
    int length_ = 0;
};

// `extension`: how many characters at the end stay behind the suffix.
QString withSuffix(const QString& name, int extension, const QString& suffix);

// All occurrences, from the start on; what is put in is not searched again.
QString withReplaced(const QString& name, const QString& search, const QString& replacement,
                     bool caseSensitive);

// Before the character `start`. A figure between two whole numbers rounds each of the counts that
// it makes, halves to the even number.
QString withInserted(const QString& name, double start, const QString& text);

// Without `count` characters from `start` on.
QString withRemoved(const QString& name, double start, double count);

// Another ending in place of `source`, which is compared exactly; other names stay as they are.
QString withExtension(const QString& name, const QString& source, const QString& target);

}  // namespace tarnwick::rename
