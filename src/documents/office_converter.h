#pragma once

#include <QByteArray>
#include <QString>

namespace tarnwick::documents {

// A kind of old office document that the installed office suite turns into its new form.
struct Conversion {
    QString from;     // file name extension of the old form, "xls"
    QString to;       // file name extension of the new form, "xlsx"
    QString package;  // what to install when the suite cannot do it, "libreoffice-calc"
};

inline const Conversion kWorkbookConversion{QStringLiteral("xls"), QStringLiteral("xlsx"),
                                            QStringLiteral("libreoffice-calc")};
inline const Conversion kDocumentConversion{QStringLiteral("doc"), QStringLiteral("docx"),
                                            QStringLiteral("libreoffice-writer")};

// True for the bytes of a compound file, the container of the old office documents, and of the new
// ones when they are encrypted.
bool isCompoundFile(const QByteArray& bytes);

// True for a compound file that cannot be read without a password.
bool isPasswordProtected(const QByteArray& bytes);

// Turns an old office document into its new form and gives that. `bytes` must be a compound file;
// an empty result means that the suite could not make sense of it. Takes about a second and holds
// the caller, for a minute at most; throws runtime::Fault when the suite is missing (what to
// install), when it takes too long, or when there is no room for the work.
QByteArray convertDocument(const QByteArray& bytes, const Conversion& conversion);

}  // namespace tarnwick::documents
