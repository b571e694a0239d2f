#pragma once

#include <QListView>
#include <QStringListModel>

namespace tarnwick::forms {

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

    QStringListModel model_;
};

// Draws the entries of a list as readable file names. One that is too long for its line ends in
// dots, and all of it stands in a tool tip. An entry's kLevelRole, if any, indents it.
inline constexpr int kLevelRole = Qt::UserRole;
void drawAsFileNames(QListView& list);

}  // namespace tarnwick::forms
