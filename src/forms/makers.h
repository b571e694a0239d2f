#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QStringList>
#include <QTimer>
#include <array>
#include <initializer_list>
#include <type_traits>

#include "forms/texts.h"
#include "forms/units.h"

// The source of a form is a table: a row makes one control.
//
//     const Maker in(frAction);
//     in.button(NAMED(cbZoomIn), u"Zoom In"_s, {360, 0, 1400, 360});
//     in.button(NAMED(cbUndo), u"Undo"_s, {6480, 0, 1400, 360}, u"Undo Last Edit"_s).disabled();
//
// A row gives the member, whose name is the object name, the caption, which is also announced, the
// place and the tool tip, and then the traits in which the control differs from a new one. The
// order of the rows is the tab order, and a later row lies over an earlier one. UI thread only; the
// parent owns what is made.
namespace tarnwick::forms {

// A member of a form, still to be made, and its name.
template <class Member>
struct Named {
    Member& member;
    QString name;
};
template <class Member>
Named(Member&, QString) -> Named<Member>;

// This is a macro because only the preprocessor turns the name of a member into a text.
#define NAMED(member) \
    ::tarnwick::forms::Named { member, QStringLiteral(#member) }

// One control of an array: "opFormat(0)".
template <class Control, std::size_t N>
Named<Control*> element(const Named<std::array<Control*, N>>& array, std::size_t index) {
    return {array.member[index], QStringLiteral("%1(%2)").arg(array.name).arg(index)};
}

// The control that a row has made, for the traits at the end of the row.
template <class Control>
class Made {
  public:
    explicit Made(Control* control) : control_(control) {}

    Made disabled() const {
        control_->setEnabled(false);
        return *this;
    }
    Made hidden() const {
        control_->hide();
        return *this;
    }
    Made readOnly() const {
        control_->setReadOnly(true);
        return *this;
    }

    Control* operator->() const { return control_; }

  private:
    Control* control_;
};

// One option of an array.
struct OptionRow {
    QString caption;
    Place place;
};

// Makes the controls inside one parent. A control without a place takes its size hint and stands at
// the parent's corner until it is moved.
class Maker {
  public:
    explicit Maker(QWidget* parent) : parent_(parent) {}

    // A width of 0 is that of the caption with its trailing blanks.
    Made<QLabel> label(const Named<QLabel*>& named, const QString& caption, const Place& place = {},
                       Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter) const;
    Made<QPushButton> button(const Named<QPushButton*>& named, const QString& caption,
                             const Place& place = {}, const QString& toolTip = {}) const;
    // `caption` is only announced: the text of the label beside the box.
    Made<QLineEdit> text(const Named<QLineEdit*>& named, const QString& caption,
                         const Place& place = {}, const QString& text = {}) const;
    // A read-only box for a name or path that may be longer than the box: its end is shown, and all
    // of it in the tool tip.
    Made<QLineEdit> readOut(const Named<QLineEdit*>& named, const QString& caption,
                            const Place& place) const;
    Made<QCheckBox> check(const Named<QCheckBox*>& named, const QString& caption,
                          const Place& place = {}, bool on = false) const;
    Made<QRadioButton> option(const Named<QRadioButton*>& named, const QString& caption,
                              const Place& place, bool on) const;
    // An array of options, of which the one with the index `on` is on.
    template <std::size_t N>
    void options(const Named<std::array<QRadioButton*, N>>& named, const OptionRow (&rows)[N],
                 std::size_t on) const {
        for (std::size_t i = 0; i < N; ++i)
            option(element(named, i), rows[i].caption, rows[i].place, i == on);
    }
    // An editable combo box: `text` need not be in the list and nothing typed is added to it.
    // `caption` is only announced.
    Made<QComboBox> combo(const Named<QComboBox*>& named, const QString& caption,
                          const Place& place, const QString& text = {},
                          const QStringList& items = {}) const;
    // A bar of 0 to 100 at 0, without a text of its own.
    Made<QProgressBar> progress(const Named<QProgressBar*>& named, const Place& place = {}) const;
    Made<QGroupBox> frame(const Named<QGroupBox*>& named, const QString& title,
                          const Place& place = {}) const;
    // A frame whose caption is only announced.
    Made<QGroupBox> untitledFrame(const Named<QGroupBox*>& named, const QString& caption,
                                  const Place& place) const;
    // A frame to be laid over other controls; hidden.
    Made<QGroupBox> overlayFrame(const Named<QGroupBox*>& named, const QString& title,
                                 const Place& place) const;

    // A control of any other kind, as Qt makes it. `caption` is only announced. Without a place the
    // size is Qt's, too.
    template <class Control>
    Made<Control> control(const Named<Control*>& named, const QString& caption = {}) const {
        return add(named, new Control(parent_), caption);
    }
    template <class Control>
    Made<Control> control(const Named<Control*>& named, const QString& caption,
                          const Place& place) const {
        return add(named, new Control(parent_), caption, place);
    }

    // A child of the parent that exists already, of the member's class or one derived from it.
    template <class Control>
    Made<Control> add(const Named<Control*>& named, std::type_identity_t<Control>* made,
                      const QString& caption) const {
        named.member = made;
        made->setObjectName(named.name);
        made->setAccessibleName(announced(caption));
        return Made<Control>(made);
    }
    template <class Control>
    Made<Control> add(const Named<Control*>& named, std::type_identity_t<Control>* made,
                      const QString& caption, const Place& place) const {
        add(named, made, caption);
        put(made, place);
        return Made<Control>(made);
    }

    // 100 ms each, at rest.
    void timers(std::initializer_list<Named<QTimer*>> timers) const;

  private:
    QWidget* parent_;
};

// Gives a form its object name, its title, which is also announced, and the font.
void setUpForm(QWidget& form, const QString& name, const QString& title);

// The same for a child window of the design's size, 13750 by 10250 twips. It cannot grow: what is
// parked beyond its edges stays out of sight.
void setUpChildForm(QWidget& form, const QString& name, const QString& title);

}  // namespace tarnwick::forms
