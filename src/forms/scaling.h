#pragma once

#include "forms/frm_frame.h"
#include "forms/frm_main.h"

namespace tarnwick::forms {

// Lays the main window out, larger by the factor vvScale (1.0 to 2.0 in normal use; 0 collapses
// it). Writes sizes of frame and form, places in the work area, and the list's columns, which
// are emptied and created afresh. Fonts are not touched. Creates no window; UI thread.
void Scaling(frmFrame& frame, frmMain& form, double vvScale);

// Heights of lvAudioDetails in twips, alone and above the open content pane.
inline constexpr double kListHeight = 4215;
inline constexpr double kListHeightAboveContent = 3255;

// Sets the height of lvAudioDetails to twips x vvScale.
void setListHeight(frmMain& form, double twips, double vvScale);

// Puts Picture1 at the waveform's rectangle inside the work area: at (50, 20) pixels, 10875 by
// 3375 twips, all x vvScale.
void placePicture(frmMain& form, double vvScale);

}  // namespace tarnwick::forms
