#pragma once

#include <QHash>
#include <QListView>
#include <QStringListModel>

namespace tarnwick::forms {

// The names of a list, and marks on some of them. A mark is a sentence that says what is wrong with
// the entry. It is the entry's tool tip and accessible description.
class MarkedNames : public QStringListModel {
  public:
    QVariant data(const QModelIndex& index, int role) const override;
    void setMarks(const QHash<QString, QString>& marks);

  private:
    QHash<QString, QString> marks_;  // by name
};

// A list of file names, always in alphabetical order, of which any number can be highlighted. The
// entries are the names as they are; what is drawn of them can be read (runtime/file_names.h).
// Long lists are set at once: twenty thousand names take no longer than a key press. UI thread.
class NameList : public QListView {
  public:
    explicit NameList(QWidget* parent);

    QStringList names() const { return model_.stringList(); }
    int count() const { return model_.rowCount(); }

    // Replaces all entries; nothing is highlighted, and the list begins at its top.
    void setNames(const QStringList& names);
    void clear() { setNames({}); }
    // Further entries at their places. What is highlighted stays so, and the list does not scroll.
    void add(const QStringList& names);

    // Marks the entries with these names in red with a warning sign, each with its sentence, and
    // removes all other marks. A mark stays with its name when entries are added or removed;
    // setNames removes all marks.
    void mark(const QHash<QString, QString>& sentences) { model_.setMarks(sentences); }

    // Draws the entries as they stand, for who keeps the event loop waiting.
    void drawNow();

    // Takes entries out and returns them.
    QStringList takeHighlighted();
    QStringList takeAll();

  protected:
    // A press soon after another is a press as well: two quick Ctrl+clicks highlight nothing.
    void mouseDoubleClickEvent(QMouseEvent* event) override;

  private:
    void replaceNames(const QStringList& names);
    QStringList highlighted() const;
    void highlight(const QStringList& sortedNames);

    MarkedNames model_;
};

// Draws the entries of a list as readable file names. One that is too long for its line ends in
// dots, and all of it stands in a tool tip. An entry's kLevelRole, if any, indents it; one with a
// tool tip of its own is marked.
inline constexpr int kLevelRole = Qt::UserRole;
void drawAsFileNames(QListView& list);

}  // namespace tarnwick::forms
