#include "batch/level_boxes.h"

#include <QFocusEvent>
#include <cmath>
#include <limits>

#include "batch/words.h"
#include "forms/colours.h"
#include "forms/frm_batch_processor.h"
#include "runtime/events.h"
#include "runtime/levels.h"
#include "runtime/numbers.h"

namespace tarnwick::batch {

namespace {

constexpr QStringView kDecibels = u"dB";
constexpr QStringView kPercent = u"Perc";
constexpr double kHighestThresholdPercent = 10.0;
constexpr double kLowestMaximumPercent = 60.0;

// Ignores a fault of `statement`, because a half-typed number must not disturb the operator.
template <class Statement>
void ignoringFaults(Statement&& statement) {
    try {
        statement();
    } catch (const runtime::Fault&) {
    }
}

double percentOf(const QLineEdit* decibels) {
    return runtime::percentOfDecibels(runtime::strictDouble(decibels->text()));
}

double decibelsOf(const QLineEdit* percent) {
    return runtime::decibelsOfPercent(runtime::strictDouble(percent->text()));
}

// Replaces a level of 0, which has no decibel value, by one close to it.
void leaveNoZero(QLineEdit* percent) {
    if (runtime::shownValue(percent->text()) == 0.0) percent->setText(runtime::plainText(0.001));
}

// A text that is not a number is left unchanged.
void formatAsLevel(QLineEdit* box) {
    QString formatted = box->text();
    ignoringFaults(
        [&] { formatted = runtime::patternOneDecimal(runtime::strictDouble(formatted)); });
    box->setText(formatted);
}

}  // namespace

LevelBoxes::LevelBoxes(forms::frmBatchProcessor& form, const Services& services)
    : form_(form), services_(services) {
    const auto box = [this](QLineEdit* text, auto change) {
        runtime::onEvent(services_.failure, text, &QLineEdit::textChanged, this,
                         [this, change] { (this->*change)(); });
        text->installEventFilter(this);
    };
    box(form_.txbSilencedB, &LevelBoxes::txbSilencedB_Change);
    box(form_.txbSilencePerc, &LevelBoxes::txbSilencePerc_Change);
    box(form_.txbNormdB, &LevelBoxes::txbNormdB_Change);
    box(form_.txbNormPerc, &LevelBoxes::txbNormPerc_Change);
}

void LevelBoxes::decibelsDrive() {
    vsSilenceUnit = kDecibels.toString();
    vsNormUnit = kDecibels.toString();
}

void LevelBoxes::txbSilencedB_Change() {
    if (vsSilenceUnit != kDecibels) return;
    ignoringFaults([this] {
        form_.txbSilencePerc->setText(runtime::fixedOneDecimal(percentOf(form_.txbSilencedB)));
    });
    ignoringFaults([this] { writeSilenceThreshold(); });
}

void LevelBoxes::txbSilencePerc_Change() {
    if (vsSilenceUnit != kPercent) return;
    ignoringFaults([this] {
        form_.txbSilencedB->setText(runtime::fixedOneDecimal(decibelsOf(form_.txbSilencePerc)));
    });
    ignoringFaults([this] { writeSilenceThreshold(); });
}

void LevelBoxes::txbNormdB_Change() {
    if (vsNormUnit != kDecibels) return;
    ignoringFaults([this] {
        form_.txbNormPerc->setText(runtime::patternOneDecimal(percentOf(form_.txbNormdB)));
    });
}

void LevelBoxes::txbNormPerc_Change() {
    if (vsNormUnit != kPercent) return;
    ignoringFaults([this] {
        form_.txbNormdB->setText(runtime::patternOneDecimal(decibelsOf(form_.txbNormPerc)));
    });
}

bool LevelBoxes::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn) {
        services_.failure.unguarded([&] { gotFocus(watched); });
    } else if (event->type() == QEvent::FocusOut) {
        // The box has not lost the focus for good if another window or a menu is in front.
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason &&
            reason != Qt::MenuBarFocusReason)
            services_.failure.unguarded([&] { lostFocus(watched); });
    }
    return QObject::eventFilter(watched, event);
}

void LevelBoxes::gotFocus(const QObject* box) {
    if (box == form_.txbSilencedB) vsSilenceUnit = kDecibels.toString();
    if (box == form_.txbSilencePerc) vsSilenceUnit = kPercent.toString();
    if (box == form_.txbNormdB) vsNormUnit = kDecibels.toString();
    if (box == form_.txbNormPerc) vsNormUnit = kPercent.toString();
}

void LevelBoxes::lostFocus(const QObject* box) {
    if (box == form_.txbSilencePerc) leaveNoZero(form_.txbSilencePerc);
    if (box == form_.txbNormPerc) leaveNoZero(form_.txbNormPerc);
    if (box == form_.txbNormdB) formatAsLevel(form_.txbNormdB);
}

bool LevelBoxes::silenceThresholdAllowed() {
    if (runtime::shownValue(form_.txbSilencePerc->text()) > kHighestThresholdPercent) {
        services_.boxes.plain(
            u"Silence Threshold is too high. Typical values are -26 dB to -40 dB."_qs);
        forms::setBackground(form_.txbSilencedB, Qt::red);
        return false;
    }
    forms::clearBackground(form_.txbSilencedB);
    return true;
}

bool LevelBoxes::normMaximumAllowed() {
    if (runtime::shownValue(form_.txbNormPerc->text()) < kLowestMaximumPercent) {
        services_.boxes.plain(
            u"Normalization Maximum is too low. Typical values are -1.4 dB to -0.3 dB."_qs);
        forms::setBackground(form_.txbNormdB, Qt::red);
        return false;
    }
    forms::clearBackground(form_.txbNormdB);
    return true;
}

void LevelBoxes::writeSilenceThreshold() {
    const QString percent = form_.txbSilencePerc->text();
    form_.txbSilenceThreshold->setText(
        runtime::withDetail(typedFor(kThresholdPercent, percent),
                            [&] { return runtime::amplitudeOfPercent(percent); }));
}

float LevelBoxes::normPercent() const {
    const QString typed = form_.txbNormPerc->text();
    return runtime::withDetail(typedFor(kMaximumPercent, typed), [&] {
        const double percent = runtime::strictDouble(typed);
        if (std::fabs(percent) > std::numeric_limits<float>::max()) runtime::overflow();
        return static_cast<float>(percent);
    });
}

}  // namespace tarnwick::batch
