#include "forms/scaling.h"

#include <cmath>

#include <optional>

#include "forms/prompt_list.h"
#include "forms/units.h"

namespace tarnwick::forms {

namespace {

// A design value in twips; none leaves the control's own.
using Design = std::optional<double>;
constexpr std::nullopt_t kOwn = std::nullopt;

// Any control of the main window, whatever its kind.
using Pick = QWidget* (*)(frmMain&);

template <auto member>
QWidget* pick(frmMain& form) {
    return form.*member;
}

struct Placed {
    Pick control;
    Design left, top, width, height;
};

const std::array kPlaced{
    Placed{pick<&frmMain::slWAVFormScale>, 260, 240, 315, 3375},
    Placed{pick<&frmMain::frAction>, 480, 3960, 7935, 375},
    Placed{pick<&frmMain::cbZoomIn>, 360, 0, 1400, 360},
    Placed{pick<&frmMain::cbZoomOut>, 1800, 0, 1400, 360},
    Placed{pick<&frmMain::cbZoomSelection>, 3240, 0, 1400, 360},
    Placed{pick<&frmMain::cbZoomFull>, 4680, 0, 1400, 360},
    Placed{pick<&frmMain::cbUndo>, 6480, 0, 1400, 360},
    Placed{pick<&frmMain::frLocations>, 840, 4440, 7530, 660},
    Placed{pick<&frmMain::frSpecs>, 840, 5100, 12450, 660},
    Placed{pick<&frmMain::cbProcess>, 11040, 210, 1140, 315},
    Placed{pick<&frmMain::lvAudioDetails>, 120, 5880, 13200, kListHeight},
    Placed{pick<&frmMain::frEdit>, 11880, 180, 1395, 2475},
    Placed{pick<&frmMain::cbDeleteSelection>, 120, 240, 1155, 435},
    Placed{pick<&frmMain::cbFlattenSelection>, 120, 840, 1155, 435},
    Placed{pick<&frmMain::txbInsertSilence>, 320, 1440, 735, kOwn},
    Placed{pick<&frmMain::cbInsertSilence>, 120, 1800, 1155, 435},
    Placed{pick<&frmMain::frTransport>, 11880, 2700, 1395, 1875},
    Placed{pick<&frmMain::CommandPlay>, 120, 320, 1140, 315},
    Placed{pick<&frmMain::CommandPause>, 120, 810, 1140, 315},
    Placed{pick<&frmMain::CommandStop>, 120, 1320, 1140, 315},
    Placed{pick<&frmMain::lbStatus>, 8640, 3840, 3015, 195},
    Placed{pick<&frmMain::pbWAVFormBuilding>, 8520, 4060, 3135, 255},
    Placed{pick<&frmMain::frFiles>, 8520, 4440, 3135, 660},
    Placed{pick<&frmMain::txbCalculating>, 4920, 7200, kOwn, kOwn},
    Placed{pick<&frmMain::lbSpecs>, 840, 3720, 7540, kOwn},
    Placed{pick<&frmMain::txbContent>, 140, 9240, 13140, 800},
    Placed{pick<&frmMain::cbContent>, 11880, 4660, 1360, 440},
};

// A value with its caption on the left, ending where the value begins, and perhaps its unit behind.
struct Captioned {
    Pick value;
    double left, top;
    Pick caption;
    Pick unit;
};

constexpr double kCaptionTop = 260;

const std::array kCaptioned{
    Captioned{pick<&frmMain::LabelTotalDuration>, 720, 260, pick<&frmMain::Label37>, nullptr},
    Captioned{pick<&frmMain::LabelSelectionDuration>, 3120, 240, pick<&frmMain::Label36>, nullptr},
    Captioned{pick<&frmMain::LabelSelectionBegin>, 4800, 240, pick<&frmMain::Label34>, nullptr},
    Captioned{pick<&frmMain::LabelSelectionEnd>, 6240, 240, pick<&frmMain::Label18>, nullptr},
    Captioned{pick<&frmMain::txbSilence>, 960, 240, pick<&frmMain::Label32>,
              pick<&frmMain::Label33>},
    Captioned{pick<&frmMain::txbThreshold>, 3600, 240, pick<&frmMain::Label10>,
              pick<&frmMain::Label13>},
    Captioned{pick<&frmMain::txbSpeed>, 7440, 240, pick<&frmMain::Label38>, nullptr},
    Captioned{pick<&frmMain::txbVariance>, 9330, 240, pick<&frmMain::Label16>, nullptr},
    Captioned{pick<&frmMain::txbNberFileNames>, 860, 240, pick<&frmMain::Label41>, nullptr},
    Captioned{pick<&frmMain::txbNberAudioFiles>, 2160, 240, pick<&frmMain::Label42>, nullptr},
};

// A scaled value is held as a float before it becomes pixels.
float scaled(double design, double vvScale) { return static_cast<float>(design * vvScale); }

int scaledPx(double twips, double vvScale) { return px(scaled(twips, vvScale)); }

void place(frmMain& form, const Placed& row, double vvScale) {
    QWidget* control = row.control(form);
    const QRect own = control->geometry();
    const auto value = [vvScale](const Design& design, int otherwise) {
        return design ? scaledPx(*design, vvScale) : otherwise;
    };
    control->setGeometry(value(row.left, own.x()), value(row.top, own.y()),
                         value(row.width, own.width()), value(row.height, own.height()));
}

void place(frmMain& form, const Captioned& row, double vvScale) {
    QWidget* value = row.value(form);
    value->move(scaledPx(row.left, vvScale), scaledPx(row.top, vvScale));
    const int top = scaledPx(kCaptionTop, vvScale);
    QWidget* caption = row.caption(form);
    caption->move(value->x() - caption->width(), top);
    if (row.unit != nullptr) {
        row.unit(form)->move(value->x() + value->width(), top);
    }
}

QSize scaledSize(double width, double height, double vvScale) {
    return {scaledPx(width, vvScale), scaledPx(height, vvScale)};
}

// The work area lies in pixels on a form that is in pixels.
void placeWorkArea(frmMain& form, double vvScale) {
    const auto pixels = [vvScale](double design) {
        return px(scaled(design, vvScale) * static_cast<float>(kTwipsPerPixel));
    };
    form.frTarnwick->setGeometry(pixels(3), pixels(1), pixels(900), pixels(684));
}

}  // namespace

void Scaling(frmFrame& frame, frmMain& form, double vvScale) {
    frame.resize(scaledSize(14075, 11200, vvScale));
    const QSize formSize = scaledSize(13750, 10250, vvScale);
    form.setMinimumSize(formSize);  // also inside a child window, which asks for no size of its own
    form.resize(formSize);
    placeWorkArea(form, vvScale);
    for (const Placed& row : kPlaced) {
        place(form, row, vvScale);
    }
    for (const Captioned& row : kCaptioned) {
        place(form, row, vvScale);
    }
    makePromptColumns(*form.lvAudioDetails, vvScale);
}

void setListHeight(frmMain& form, double twips, double vvScale) {
    form.lvAudioDetails->resize(form.lvAudioDetails->width(), scaledPx(twips, vvScale));
}

void placePicture(frmMain& form, double vvScale) {
    // Whole pixels by the product's own rule: halves to the even number.
    const auto pixels = [vvScale](double design) {
        return static_cast<int>(std::nearbyint(static_cast<float>(design * vvScale)));
    };
    form.Picture1->setGeometry(pixels(50), pixels(20), pixels(10875 / kTwipsPerPixel),
                               pixels(3375 / kTwipsPerPixel));
}

}  // namespace tarnwick::forms
