#pragma once

#include <QString>
#include <QStringView>

namespace tarnwick::batch {

// Values of vsFilterStep: the step of the chain to which the end of an edit belongs.
inline constexpr QStringView kCutFileStart = u"CutFileStart";
inline constexpr QStringView kCutFileEnd = u"CutFileEnd";
inline constexpr QStringView kSetSilenceEnd = u"Set Silence End";
inline constexpr QStringView kAllFiltersDone = u"All Filters Done";

// Edits by their number in SoundEditDone. An insertion and a removal of silence are treated alike.
enum ChainCommand : qint16 {
    kCutEnded = 1,
    kSilenceEnded = 2,
    kOtherSilenceEnded = 14,
    kHissEnded = 16,
    kNormalizeEnded = 19
};

// What continues the chain: a timer armed by an engine event, or the operator's answer to the box
// of ChainStep::ErrorBox.
enum class ChainEvent { SoundLoaded, EditEnded, ErrorAnswered, ExportEnded };

// The state of the chain at that moment.
struct ChainMoment {
    // Ticked by the operator.
    bool chCutEnd = false;
    bool chSilenceEnds = false;
    bool chHissFilter = false;
    bool chNormalize = false;

    bool cutsStart = false;        // txbCutStart is above 0
    bool cutsEnd = false;          // txbCutEnd is above 0
    QString vsFilterStep;          // one of the texts above, or empty
    qint16 nCommand = 0;           // of the last edit that ended, 0 before the first of the window
    bool lastFile = false;         // the current file is the last of the list
    bool appliesToEditor = false;  // the sound goes back to the main window's editor
};

enum class ChainStep {
    Wait,  // nothing: the chain continues when the current operation ends, if there is one
    CutStart,
    CutEnd,
    Detect,
    SetHead,  // the tail is set by the handler of the detection's event
    Hiss,
    Normalize,
    Export,
    ErrorBox,
    NextFile,
    Finish,
    Reload
};

struct Following {
    ChainStep step;
    QString vsFilterStep;  // the new value
};

// The step that follows an event.
Following following(ChainEvent event, const ChainMoment& moment);

}  // namespace tarnwick::batch
