#pragma once

#include <QByteArray>
#include <QString>

namespace tarnwick::documents {

// A kind of old office document that the installed office suite turns into its new form.
struct Conversion {
    QString from;       // file name extension of the old form, "xls"
    QString filter;     // the suite's name for the old form, "MS Excel 97"
    QString to;         // file name extension of the new form, "xlsx"
    QString package;    // what to install when the suite cannot do it, "libreoffice-calc"
    QString component;  // the suite's own component for it, in the folder of its program
};

inline const Conversion kWorkbookConversion{
    QStringLiteral("xls"), QStringLiteral("MS Excel 97"), QStringLiteral("xlsx"),
    QStringLiteral("libreoffice-calc"), QStringLiteral("libsclo.so")};
inline Conversion toDocument(const QString& from, const QString& filter) {
    return {from, filter, QStringLiteral("docx"), QStringLiteral("libreoffice-writer"),
            QStringLiteral("libswlo.so")};
}
inline const Conversion kDocumentConversion =
    toDocument(QStringLiteral("doc"), QStringLiteral("MS Word 97"));
// The form of 1993 to 1995: unlike the filter for workbooks, the one above refuses it.
inline const Conversion kOldDocumentConversion =
    toDocument(QStringLiteral("doc"), QStringLiteral("MS Word 95"));
inline const Conversion kRichTextConversion =
    toDocument(QStringLiteral("rtf"), QStringLiteral("Rich Text Format"));

// Which of the two is for the document in that compound file.
const Conversion& documentConversion(const QByteArray& bytes);

// True for a compound file that cannot be read without a password.
bool isPasswordProtected(const QByteArray& bytes);

inline constexpr int kConversionLimitMs = 60'000;

// Turns an old office document into its new form and gives that. `bytes` must have been seen to
// begin like such a document: the suite makes something of nearly everything. An empty result means
// that it could not make sense of it. Takes about a second and holds the caller until then. Throws
// runtime::Fault when the suite or its part for this conversion is missing (what to install), when
// it takes longer than `limitMs`, or when there is no room for it.
QByteArray convertDocument(const QByteArray& bytes, const Conversion& conversion,
                           int limitMs = kConversionLimitMs);

}  // namespace tarnwick::documents
