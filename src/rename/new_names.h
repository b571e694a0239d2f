#pragma once

#include <QString>

// The functions that the rules use to make a new name from a file name. All are pure. A name has
// its extension but no folder. Positions and lengths count whole characters, positions from 1. A
// negative count faults with "Invalid procedure call or argument".

namespace tarnwick::rename {

// A to Z for the files 0 to 25, then AA, BB to ZZ, then AAA.
QString lettersOf(int index);

// The length of the extension, for one file after the other.
class ExtensionLength {
  public:
    // Searches for a dot with one to four characters after it, from the end of `name`. False if
    // there is none; the length of the previous file is then kept. Faults with "Invalid procedure
    // call or argument" if the name is too short to check all four places.
    bool find(const QString& name);

    // Including the dot: 0 before the first one found, then 2 to 5.
    int length() const { return length_; }

  private:
    int length_ = 0;
};

// `extension`: the number of characters at the end that stay after the suffix.
QString withSuffix(const QString& name, int extension, const QString& suffix);

// Replaces all occurrences from the start; replaced text is not searched again.
QString withReplaced(const QString& name, const QString& search, const QString& replacement,
                     bool caseSensitive);

// Inserts `text` before the character `start`. If that is not a whole number, the two lengths
// computed from it are each rounded, halves to the even number.
QString withInserted(const QString& name, double start, const QString& text);

// Removes `count` characters from `start` on. Rounds like withInserted.
QString withRemoved(const QString& name, double start, double count);

// Replaces the ending `source`, which is compared exactly; other names are left unchanged.
QString withExtension(const QString& name, const QString& source, const QString& target);

}  // namespace tarnwick::rename
