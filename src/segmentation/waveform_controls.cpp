#include "segmentation/waveform_controls.h"

#include <QStyleOptionSlider>
#include <QToolTip>

#include "forms/frm_main.h"
#include "runtime/arithmetic.h"
#include "runtime/events.h"
#include "runtime/numbers.h"
#include "segmentation/selection.h"

namespace tarnwick::segmentation {

namespace {

constexpr int kSliderAtFullScale = 450;
constexpr int kSliderAndScale = 550;  // the slider is upside down: scale = 550 - value

// The handle of an upright slider, in the slider's own pixels.
QRect handleOf(const QSlider& slider) {
    QStyleOptionSlider option;
    option.initFrom(&slider);
    option.subControls = QStyle::SC_SliderHandle;
    option.orientation = slider.orientation();
    option.minimum = slider.minimum();
    option.maximum = slider.maximum();
    option.sliderPosition = slider.sliderPosition();
    option.sliderValue = slider.value();
    option.tickPosition = slider.tickPosition();
    option.upsideDown = !slider.invertedAppearance();
    return slider.style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle,
                                          &slider);
}

}  // namespace

WaveformControls::WaveformControls(forms::frmMain& form, const runtime::FailurePath& failure,
                                   engine::SoundEditor& EDT)
    : form_(form), failure_(failure), EDT_(EDT) {
    connectEvents();
    connectZoom();
    runtime::onEvent(failure_, form_.slWAVFormScale, &QSlider::valueChanged, &form_,
                     [this] { slWAVFormScale_Scroll(); });
    runtime::onEvent(failure_, form_.slWAVFormScale, &QSlider::sliderPressed, &form_,
                     [this] { showScale(); });
}

void WaveformControls::connectEvents() {
    const auto event = [this](auto signal, auto handler) {
        runtime::onEvent(failure_, &EDT_, signal, &form_, handler);
    };
    event(&engine::SoundEditor::WaveSelectionChanged,
          [this](qint16 available, qint32 begin, qint32 end) {
              EDT_WaveSelectionChanged(available, begin, end);
          });
    event(&engine::SoundEditor::WaveRangeChanged,
          [this](qint32 begin, qint32 end) { EDT_WaveRangeChanged(begin, end); });
    event(&engine::SoundEditor::WaveMouseNotification,
          [this](qint16 kind, qint32, qint32) { EDT_WaveMouseNotification(kind); });
}

void WaveformControls::connectZoom() {
    const auto click = [this](auto* control, auto signal, auto handler) {
        runtime::onEvent(failure_, control, signal, &form_, handler);
    };
    const auto zoomIn = [this] { EDT_.waveform().ZoomIn(); };
    const auto zoomOut = [this] { EDT_.waveform().ZoomOut(); };
    click(form_.cbZoomIn, &QPushButton::clicked, zoomIn);
    click(form_.mnuZoomIn, &QAction::triggered, zoomIn);
    click(form_.cbZoomOut, &QPushButton::clicked, zoomOut);
    click(form_.mnuZoomOut, &QAction::triggered, zoomOut);
    click(form_.cbZoomFull, &QPushButton::clicked, [this] { EDT_.waveform().ZoomFull(); });
    click(form_.cbZoomSelection, &QPushButton::clicked,
          [this] { EDT_.waveform().ZoomToSelection(1); });
}

void WaveformControls::setUp() {
    engine::WaveformSettings settings;
    EDT_.waveform().GetSettings(settings);
    settings.setByteAt(engine::WaveformSettings::kHideRuler, 0);
    settings.setByteAt(engine::WaveformSettings::kHideLevels, 0);
    EDT_.waveform().SetSettings(settings);
    form_.slWAVFormScale->setValue(kSliderAtFullScale);
}

void WaveformControls::EDT_WaveSelectionChanged(qint16 available, qint32 begin, qint32 end) {
    const qint32 length = runtime::subtract(end, begin);
    const bool isStretch = available == 1 && length >= 1;
    for (QPushButton* button :
         {form_.CommandPlaySelection, form_.cbDeleteSelection, form_.cbFlattenSelection})
        button->setEnabled(isStretch);
    if (available != 1) return;
    form_.LabelSelectionBegin->setText(EDT_.FormatMs(begin, 0, 1));
    form_.LabelSelectionEnd->setText(EDT_.FormatMs(end, 0, 1));
    form_.LabelSelectionDuration->setText(EDT_.FormatMs(length, 0, 1));
    form_.txbInsertSilence->setText(begin == end ? form_.txbSilence->text()
                                                 : QString::number(length));
}

void WaveformControls::EDT_WaveRangeChanged(qint32 begin, qint32 end) {
    form_.LabelRangeBegin->setText(EDT_.FormatMs(begin, 0, 1));
    form_.LabelRangeEnd->setText(EDT_.FormatMs(end, 0, 1));
    form_.LabelRangeDuration->setText(EDT_.FormatMs(runtime::subtract(end, begin), 0, 1));
}

void WaveformControls::EDT_WaveMouseNotification(qint16 kind) {
    if (kind == engine::kMouseClearsSelection && selectionOf(EDT_.waveform()).available)
        EDT_.waveform().SetSelection(0, 0, 0);
}

void WaveformControls::slWAVFormScale_Scroll() {
    engine::WaveformSettings settings;
    EDT_.waveform().GetSettings(settings);
    const qint16 viWaveScale = scale();
    form_.slWAVFormScale->setToolTip(QString::number(viWaveScale));
    settings.setVerticalScale(static_cast<float>(viWaveScale) / 100.0f);
    EDT_.waveform().SetSettings(settings);
    if (form_.slWAVFormScale->isSliderDown()) showScale();
}

// Percent.
qint16 WaveformControls::scale() const {
    return runtime::roundToInteger(kSliderAndScale - form_.slWAVFormScale->value());
}

// Shows the scale beside the handle while the slider is dragged. Letting go takes it away.
void WaveformControls::showScale() const {
    QSlider& slider = *form_.slWAVFormScale;
    const QPoint beside = handleOf(slider).topRight();
    QToolTip::showText(slider.mapToGlobal(beside), QString::number(scale()), &slider);
}

}  // namespace tarnwick::segmentation
