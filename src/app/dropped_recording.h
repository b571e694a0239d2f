#pragma once

#include <QObject>
#include <QString>
#include <functional>

#include "platform/file_system.h"
#include "runtime/failure_path.h"

class QDropEvent;
class QMimeData;
class QWidget;

namespace tarnwick::app {

// Full path of the recording that is dragged: one file with the extension of a recording, or the
// only such file of one folder. Empty for anything else. The name may have any bytes.
QString droppedRecording(const QMimeData& data, const platform::FileSystem& files);

// Takes a recording that is dropped anywhere on a window. Its text boxes keep their own drops, such
// as text. Nothing is taken while a box or a modal dialog is open. UI thread.
class RecordingDrop : public QObject {
  public:
    // Watches `window` and the parts that it has now. `load` gets the full path from the event
    // loop, after the drop has ended: what waits within the drop holds up the other program. A
    // fault of `load` goes to `failure`.
    RecordingDrop(QWidget& window, const runtime::FailurePath& failure,
                  const platform::FileSystem& files, std::function<void(const QString& path)> load);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    bool taken(QDropEvent& event) const;
    void loadSoon();

    const runtime::FailurePath& failure_;
    const platform::FileSystem& files_;
    std::function<void(const QString&)> load_;
    QString dragged_;  // the recording above the window; empty for none
};

}  // namespace tarnwick::app
