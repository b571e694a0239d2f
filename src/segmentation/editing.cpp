#include "segmentation/editing.h"

#include "forms/frm_main.h"
#include "runtime/events.h"
#include "segmentation/field_value.h"

namespace tarnwick::segmentation {

Editing::Editing(forms::frmMain& form, const runtime::FailurePath& failure, model::Session& session,
                 engine::SoundEditor& EDT, std::function<void()> editAsked)
    : form_(form), session_(session), EDT_(EDT), editAsked_(std::move(editAsked)) {
    const auto command = [&](auto* control, auto signal, auto handler) {
        runtime::onEvent(failure, control, signal, &form_, handler);
    };
    command(form_.cbDeleteSelection, &QPushButton::clicked, [this] { cbDeleteSelection_Click(); });
    command(form_.cbFlattenSelection, &QPushButton::clicked,
            [this] { cbFlattenSelection_Click(); });
    command(form_.cbInsertSilence, &QPushButton::clicked, [this] { cbInsertSilence_Click(); });
    command(form_.cbUndo, &QPushButton::clicked, [this] { undo(); });
    command(form_.mnuUndo, &QAction::triggered, [this] { undo(); });
}

void Editing::undo() {
    editAsked_();
    EDT_.Undo();
}

Selection Editing::beginEdit() {
    EDT_.SoundStop();
    EDT_.waveform().GetDisplayRange(session_.vlSavedRangeBegin, session_.vlSavedRangeEnd);
    return selectionOf(EDT_.waveform());
}

void Editing::cbDeleteSelection_Click() {
    const Selection selection = beginEdit();
    if (!selection.available) return;
    editAsked_();
    EDT_.DeleteRange(selection.begin, selection.end);
    EDT_.waveform().SetSelection(0, 0, 0);
}

void Editing::cbFlattenSelection_Click() {
    const Selection selection = beginEdit();
    if (!selection.available) return;
    editAsked_();
    EDT_.effects().ApplyVolume(selection.begin, selection.end, 0, 0.0f, 0);
}

void Editing::cbInsertSilence_Click() {
    const Selection selection = beginEdit();
    EDT_.waveform().SetSelection(0, 0, 0);
    editAsked_();
    const qint32 length =
        fieldValue(u"Insert Silence"_qs, form_.txbInsertSilence->text(), leadingLong);
    EDT_.InsertSilence(selection.available ? selection.begin : 0, length);
}

}  // namespace tarnwick::segmentation
