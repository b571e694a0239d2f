#include "settings/quote.h"

namespace tarnwick::settings {

QString Quote_Doubled(const QString& text) {
    return QString(text).replace(u'\'', QStringLiteral("''"));
}

}  // namespace tarnwick::settings
