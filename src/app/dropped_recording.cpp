#include "app/dropped_recording.h"

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QTimer>
#include <QUrl>

#include "platform/desktop_open_dialog.h"
#include "platform/wildcards.h"
#include "runtime/file_names.h"

namespace tarnwick::app {

namespace {

// The path of a local file's URI; empty for another URI. It is decoded here because QUrl replaces
// bytes that are not UTF-8, and the path would then lead to no file.
QString pathOfUri(QByteArray uri) {
    const QUrl url = QUrl::fromEncoded(uri);
    if (!url.isLocalFile() || !(url.host().isEmpty() || url.host() == u"localhost")) return {};
    uri = uri.mid(uri.indexOf(':') + 1);
    for (const char mark : {'#', '?'})
        if (const qsizetype end = uri.indexOf(mark); end >= 0) uri.truncate(end);
    if (uri.startsWith("//")) uri = uri.mid(uri.indexOf('/', 2));
    return runtime::textOfFileName(QByteArray::fromPercentEncoding(uri).toStdString());
}

// The URIs of a list, without its comments.
QByteArrayList urisIn(const QMimeData& data) {
    QByteArrayList uris;
    for (const QByteArray& line : data.data(QStringLiteral("text/uri-list")).split('\n'))
        if (const QByteArray uri = line.trimmed(); !uri.isEmpty() && !uri.startsWith('#'))
            uris << uri;
    return uris;
}

}  // namespace

QString droppedRecording(const QMimeData& data, const platform::FileSystem& files) {
    const QByteArrayList uris = urisIn(data);
    const QString path = uris.size() == 1 ? pathOfUri(uris.front()) : QString();
    if (path.isEmpty()) return {};
    const QStringList& patterns = platform::recordingPatterns();
    if (files.FolderExists(path)) {
        const QStringList there = files.list(path, patterns);
        return there.size() == 1 ? platform::pathIn(path, there.front()) : QString();
    }
    const bool named = platform::Wildcards(patterns).match(path.section(u'/', -1));
    return named && files.FileExists(path) ? path : QString();
}

RecordingDrop::RecordingDrop(QWidget& window, const runtime::FailurePath& failure,
                             const platform::FileSystem& files,
                             std::function<void(const QString&)> load)
    : failure_(failure), files_(files), load_(std::move(load)) {
    window.setAcceptDrops(true);
    window.installEventFilter(this);
    for (QWidget* part : window.findChildren<QWidget*>())
        if (part->acceptDrops()) part->installEventFilter(this);
}

bool RecordingDrop::eventFilter(QObject*, QEvent* event) {
    switch (event->type()) {
        case QEvent::DragEnter:
            dragged_ = droppedRecording(*static_cast<QDropEvent*>(event)->mimeData(), files_);
            return taken(*static_cast<QDropEvent*>(event));
        case QEvent::DragMove:
            return taken(*static_cast<QDropEvent*>(event));
        case QEvent::Drop: {
            const bool mine = taken(*static_cast<QDropEvent*>(event));
            if (mine) loadSoon();
            return mine;
        }
        default:
            return false;
    }
}

// Accepts the event for a recording. Only to copy: after a move the other program may delete the
// file.
bool RecordingDrop::taken(QDropEvent& event) const {
    if (dragged_.isEmpty() || QApplication::activeModalWidget() != nullptr ||
        !event.possibleActions().testFlag(Qt::CopyAction))
        return false;
    event.setDropAction(Qt::CopyAction);
    event.accept();
    return true;
}

void RecordingDrop::loadSoon() {
    QTimer::singleShot(0, this, [this, path = std::exchange(dragged_, {})] {
        failure_.unguarded([&] { load_(path); });
    });
}

}  // namespace tarnwick::app
