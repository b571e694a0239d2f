#include "platform/desktop_boxes.h"

#include <QApplication>
#include <QInputDialog>
#include <QMessageBox>

namespace tarnwick::platform {

namespace {

// The product's texts use CR LF or CR as line breaks; the widgets understand only LF.
QString shown(QString text) { return text.replace(u"\r\n"_qs, u"\n"_qs).replace(u'\r', u'\n'); }

QMessageBox::StandardButton ask(QMessageBox::Icon icon, const QString& title, const QString& text,
                                QMessageBox::StandardButtons buttons) {
    QMessageBox box(icon, title, shown(text), buttons, QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    return static_cast<QMessageBox::StandardButton>(box.exec());
}

}  // namespace

void DesktopBoxes::plain(const QString& text) {
    ask(QMessageBox::NoIcon, QString(), text, QMessageBox::Ok);
}

void DesktopBoxes::critical(const QString& title, const QString& text) {
    ask(QMessageBox::Critical, title, text, QMessageBox::Ok);
}

bool DesktopBoxes::askYesNo(const QString& title, const QString& text) {
    return ask(QMessageBox::NoIcon, title, text, QMessageBox::Yes | QMessageBox::No) ==
           QMessageBox::Yes;
}

std::optional<QString> DesktopBoxes::input(const QString& prompt) {
    bool accepted{};
    const QString text = QInputDialog::getText(QApplication::activeWindow(), QString(), prompt,
                                               QLineEdit::Normal, QString(), &accepted);
    return accepted ? std::optional(text) : std::nullopt;
}

}  // namespace tarnwick::platform
