#pragma once

#include <QString>

namespace tarnwick::runtime {

// State shared by all windows. Owned by the application, passed by reference; UI thread only.
struct ProcessState {
    QString vsConnection;      // how to open the settings database
    double vvScale = 0.0;      // window scale factor, 1.53 for a stored 153
    qint16 viScaleAtLoad = 0;  // value of the scale slider at loading, in percent
    QString vsProjectFolder;   // full path, no trailing separator except the root's own; empty
                               // before the first load
    QString vsSelectedSheet;   // worksheet chosen for the import
    QString perListEnd;        // why the last Rename Per List ended early; empty if it did not
};

}  // namespace tarnwick::runtime
