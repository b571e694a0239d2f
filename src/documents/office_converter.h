#pragma once

#include <QByteArray>
#include <QString>

namespace tarnwick::documents {

// A kind of old office document that the installed office suite turns into its new form.
struct Conversion {
    QString from;       // file name extension of the old form, "xls"
    QString filter;     // the suite's name for the old form, "MS Excel 97"
    QString to;         // file name extension of the new form, "xlsx"
    QString package;    // what to install if the suite cannot do it, "libreoffice-calc"
    QString component;  // the suite's library for it, in the folder of its program
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
// For documents of 1993 to 1995, which the filter above refuses. (The workbook filter reads them.)
inline const Conversion kOldDocumentConversion =
    toDocument(QStringLiteral("doc"), QStringLiteral("MS Word 95"));
inline const Conversion kRichTextConversion =
    toDocument(QStringLiteral("rtf"), QStringLiteral("Rich Text Format"));

// kDocumentConversion or kOldDocumentConversion, as the document in that compound file needs.
const Conversion& documentConversion(const QByteArray& bytes);

// True for a compound file that cannot be read without a password.
bool isPasswordProtected(const QByteArray& bytes);

inline constexpr int kConversionLimitMs = 60'000;

// Converts an old office document and returns its new form. The caller must have checked that
// `bytes` begin like such a document, because the suite converts nearly anything. Empty if the
// suite cannot read the document. Blocks the caller for about a second. Throws runtime::Fault if
// the suite or its part for this conversion is missing (saying what to install), if it takes longer
// than `limitMs`, or if the disk is full.
QByteArray convertDocument(const QByteArray& bytes, const Conversion& conversion,
                           int limitMs = kConversionLimitMs);

}  // namespace tarnwick::documents
