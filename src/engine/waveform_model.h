#pragma once

#include <functional>

#include "engine/delivered_sound.h"
#include "engine/playback.h"
#include "engine/view_range.h"
#include "engine/waveform.h"

namespace tarnwick::engine {

class SoundEditor;

// What an editor's display shows: the view, the selection, the settings, and the sound to paint.
// The editor emits the events before a call returns. UI thread.
class WaveformModel final : public Waveform {
  public:
    // `analyse` starts the analysis. All references must outlive this object.
    WaveformModel(SoundEditor& editor, const DeliveredSound& sound, const Playback& playback,
                  std::function<void()> analyse);

    void Create(WindowHandle parent, int left, int top, int width, int height) override;
    void AnalyzeSound() override { analyse_(); }

    void GetDisplayRange(qint32& beginMs, qint32& endMs) const override;
    void SetDisplayRange(qint32 beginMs, qint32 endMs) override;
    void GetSelection(qint16& available, qint32& beginMs, qint32& endMs) const override;
    void SetSelection(qint16 available, qint32 beginMs, qint32 endMs) override;

    void ZoomIn() override;
    void ZoomOut() override;
    void ZoomFull() override;
    void ZoomToSelection(qint32 mode) override;

    void GetSettings(WaveformSettings& settings) const override { settings = settings_; }
    void SetSettings(const WaveformSettings& settings) override;

    int channels() const override;
    int sampleRate() const override;
    qint32 duration() const override { return sound_.durationMs(); }
    double playPosition() const override;
    bool playing() const override { return playback_.running(); }
    bool columns(int channel, double beginMs, double endMs,
                 std::span<WaveColumn> columns) const override;
    bool scanned() const override { return sound_.scanned; }
    std::span<const SilenceMs> silences() const override;

    void notifyMouse(qint16 kind) override;

    // Call when an edit was delivered. Marks the picture as out of date and clips the selection to
    // the sound; one that lies entirely past the end is cleared.
    void soundEdited();

    // Call when the sound was dropped. The next sound is then shown completely, without a
    // selection. Returns true if there was a selection; the caller must report that it is gone.
    bool reset();

    bool displayed() const { return displayed_; }  // Create was called

  private:
    void show(ViewRange view);
    double zoomCentre() const;

    SoundEditor& editor_;
    const DeliveredSound& sound_;
    const Playback& playback_;
    std::function<void()> analyse_;
    bool displayed_ = false;
    WaveformSettings settings_;
    ViewRange view_;
    bool selected_ = false;
    ViewRange selection_{0, 0};  // begin equal to end is a cursor
};

}  // namespace tarnwick::engine
