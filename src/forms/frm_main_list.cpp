// The lower half of the work area: detection settings, prompt list, content pane.
#include "forms/fonts.h"
#include "forms/frm_main.h"
#include "forms/makers.h"
#include "forms/prompt_list.h"

namespace tarnwick::forms {

namespace {

constexpr double kLabelHeight = 240;
constexpr double kBoxWidth = 675;
constexpr double kBoxHeight = 300;

}  // namespace

void frmMain::makeSpecs() {
    frSpecs = makeFrame(frTarnwick, QStringLiteral("frSpecs"), QStringLiteral("Detection"), {});
    const auto label = [this](const char* name, const char* text) {
        return makeLabel(frSpecs, QLatin1String(name), QLatin1String(text),
                         {0, 0, 0, kLabelHeight});
    };
    const auto box = [this](const char* name, const char* text, const QLabel* caption) {
        QLineEdit* made = makeText(frSpecs, QLatin1String(name), QLatin1String(text),
                                   {0, 0, kBoxWidth, kBoxHeight}, caption->text());
        made->setEnabled(false);
        return made;
    };
    Label32 = label("Label32", "Duration  ");
    txbSilence = box("txbSilence", "1500", Label32);
    Label33 = label("Label33", " msec.");
    Label10 = label("Label10", "Threshold  ");
    txbThreshold = box("txbThreshold", "-35", Label10);
    Label13 = label("Label13", " dB");
    Label38 = label("Label38", "Words/min  ");
    txbSpeed = box("txbSpeed", "150", Label38);
    Label16 = label("Label16", "Variance  ");
    txbVariance = box("txbVariance", "50", Label16);
    const auto working = [this](const char* name, const char* what, double left) {
        QLineEdit* made = makeText(frSpecs, QLatin1String(name), QString(),
                                   {left, 240, kBoxWidth, kBoxHeight}, QLatin1String(what));
        QPalette yellow = made->palette();
        yellow.setColor(QPalette::Base, Qt::yellow);
        yellow.setColor(QPalette::Text, Qt::black);
        made->setPalette(yellow);
        made->hide();
        return made;
    };
    txbSilencePerc = working("txbSilencePerc", "Threshold in percent", 4860);
    txbSilenceThreshold = working("txbSilenceThreshold", "Threshold of amplitude", 5610);
    cbProcess = makeButton(frSpecs, QStringLiteral("cbProcess"), QStringLiteral("Process"), {});
    cbProcess->setEnabled(false);
}

void frmMain::makeList() {
    cbContent =
        makeButton(frTarnwick, QStringLiteral("cbContent"), QStringLiteral("Expand Content"), {});
    cbContent->setFont(smallFont());
    cbContent->setEnabled(false);

    lvAudioDetails = makePromptList(frTarnwick, QStringLiteral("lvAudioDetails"));

    txbContent = new QTextEdit(frTarnwick);
    txbContent->setObjectName(QStringLiteral("txbContent"));
    txbContent->setAccessibleName(QStringLiteral("Content"));
    txbContent->setReadOnly(true);
    txbContent->setAcceptRichText(false);
    txbContent->hide();

    txbCalculating =
        makeText(frTarnwick, QStringLiteral("txbCalculating"), QStringLiteral("Calculating..."),
                 {4920, 7200, 3600, 480}, QStringLiteral("Progress"));
    txbCalculating->setReadOnly(true);
    txbCalculating->setFocusPolicy(Qt::NoFocus);
    txbCalculating->setStyleSheet(QStringLiteral(
        "border-radius: 3px; background: palette(highlight); color: palette(highlighted-text);"));
    txbCalculating->setAlignment(Qt::AlignCenter);
    txbCalculating->hide();
}

}  // namespace tarnwick::forms
