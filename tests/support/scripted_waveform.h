#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "engine/waveform.h"

namespace tarnwick::test {

// A waveform whose picture the test determines: a constant swing in the first half of the sound and
// silence in the second, or given samples. Records the calls of the view.
class ScriptedWaveform : public engine::Waveform {
  public:
    int channelCount = 1;
    int rate = 8000;
    qint32 durationMs = 10000;
    double playMs = -1;
    bool isPlaying = false;
    float swing = 0.5f;
    std::vector<float> samples;
    qint32 rangeBegin = 0, rangeEnd = -1;
    qint16 selected = 0;
    qint32 selectionBegin = 0, selectionEnd = 0;
    engine::WaveformSettings settings;
    bool wasScanned = false;
    std::vector<engine::SilenceMs> pauses;
    std::vector<qint16> notifications;
    int zooms = 0;
    mutable int renderings = 0;

    ScriptedWaveform() { settings.setVerticalScale(1.0f); }
    void tell(engine::DisplayChange what) { Q_EMIT displayChanged(what); }

    void Create(engine::WindowHandle, int, int, int, int) override {}
    void AnalyzeSound() override {}
    void GetDisplayRange(qint32& beginMs, qint32& endMs) const override {
        beginMs = rangeBegin;
        endMs = rangeEnd;
    }
    void SetDisplayRange(qint32 beginMs, qint32 endMs) override {
        rangeBegin = beginMs;
        rangeEnd = endMs;
        tell(engine::DisplayChange::Range);
    }
    void GetSelection(qint16& available, qint32& beginMs, qint32& endMs) const override {
        available = selected;
        beginMs = selectionBegin;
        endMs = selectionEnd;
    }
    void SetSelection(qint16 available, qint32 beginMs, qint32 endMs) override {
        selected = available;
        selectionBegin = beginMs;
        selectionEnd = endMs;
        tell(engine::DisplayChange::Selection);
    }
    void ZoomIn() override { ++zooms; }
    void ZoomOut() override { --zooms; }
    void ZoomFull() override {}
    void ZoomToSelection(qint32) override {}
    void GetSettings(engine::WaveformSettings& out) const override { out = settings; }
    void SetSettings(const engine::WaveformSettings& in) override {
        settings = in;
        tell(engine::DisplayChange::Settings);
    }
    int channels() const override { return channelCount; }
    int sampleRate() const override { return rate; }
    qint32 duration() const override { return channelCount ? durationMs : 0; }
    double playPosition() const override { return playMs; }
    bool playing() const override { return isPlaying; }
    bool columns(int channel, double beginMs, double endMs,
                 std::span<engine::WaveColumn> columns) const override {
        EXPECT_LT(channel, channelCount);
        if (channel == 0) ++renderings;
        const double step = (endMs - beginMs) / double(columns.size());
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const double at = beginMs + double(i) * step;
            if (samples.empty() && at < durationMs / 2.0) columns[i] = {-swing, swing};
            const auto frame = static_cast<std::size_t>(std::max(at, 0.0) * rate / 1000.0);
            const auto end = static_cast<std::size_t>(std::max(at + step, 0.0) * rate / 1000.0);
            if (frame >= samples.size() || at + step <= 0.0) continue;
            const auto last = std::min(std::max(end, frame + 1), samples.size());
            const auto [low, high] = std::minmax_element(samples.begin() + qsizetype(frame),
                                                         samples.begin() + qsizetype(last));
            columns[i] = {*low, *high};
        }
        return true;
    }
    bool scanned() const override { return wasScanned; }
    std::span<const engine::SilenceMs> silences() const override { return pauses; }
    void notifyMouse(qint16 kind) override { notifications.push_back(kind); }
};

}  // namespace tarnwick::test
