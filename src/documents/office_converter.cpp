#include "documents/office_converter.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QUrl>
#include <QtEndian>

#include "documents/compound_file.h"
#include "runtime/fault.h"

#ifdef Q_OS_UNIX
#include <signal.h>
#include <unistd.h>
#endif

namespace tarnwick::documents {

namespace {

quint16 wordAt(const QByteArray& bytes, qsizetype at) {
    return at + 2 > bytes.size() ? 0 : qFromLittleEndian<quint16>(bytes.constData() + at);
}

// A workbook's stream starts with a begin record. If it is encrypted, one of the next few records
// describes the key.
bool startsEncryptedWorkbook(const QByteArray& head) {
    constexpr quint16 kBegin = 0x0809, kFilePass = 0x002f;
    if (wordAt(head, 0) != kBegin) return false;
    qsizetype at = 0;
    for (int record = 0; record < 4; ++record) {
        at += 4 + wordAt(head, at + 2);
        if (wordAt(head, at) == kFilePass) return true;
    }
    return false;
}

// The first word of a document's stream, since 1997 and before.
constexpr quint16 kMagic = 0xa5ec, kOldMagic = 0xa5dc;

bool startsEncryptedDocument(const QByteArray& head) {
    constexpr quint16 kEncrypted = 0x0100;
    const quint16 magic = wordAt(head, 0);
    return (magic == kMagic || magic == kOldMagic) && (wordAt(head, 10) & kEncrypted);
}

QString suiteProgram() {
    for (const char* name : {"soffice", "libreoffice"}) {
        const QString found = QStandardPaths::findExecutable(QString::fromLatin1(name));
        if (!found.isEmpty()) return found;
    }
    return {};
}

[[noreturn]] void failWithMissing(const Conversion& conversion) {
    throw runtime::Fault(QStringLiteral("LibreOffice is needed to read a .%1 file. Please install "
                                        "the package %2.")
                             .arg(conversion.from, conversion.package));
}

// True if the suite is installed without the part that reads these documents.
bool lacksComponent(const QString& program, const Conversion& conversion) {
    const QDir folder = QFileInfo(QFileInfo(program).canonicalFilePath()).dir();
    return folder.exists(QStringLiteral("soffice.bin")) && !folder.exists(conversion.component);
}

// The program only starts other processes, so after the time limit the whole group is killed.
void run(QProcess& process, int limitMs) {
#ifdef Q_OS_UNIX
    process.setChildProcessModifier([] { ::setsid(); });
#endif
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start();
    if (process.waitForFinished(limitMs)) return;
    const bool started = process.state() == QProcess::Running;
#ifdef Q_OS_UNIX
    if (started) ::kill(-static_cast<pid_t>(process.processId()), SIGKILL);
#endif
    process.kill();
    process.waitForFinished();
    throw runtime::Fault(started ? QStringLiteral("LibreOffice took too long to convert the file.")
                                 : QStringLiteral("LibreOffice cannot be started."));
}

}  // namespace

bool isPasswordProtected(const QByteArray& bytes) {
    constexpr qint64 kHead = 1024;  // bytes, enough to include the record of the key
    const CompoundFile file(bytes);
    return file.hasStream(u"EncryptedPackage") ||
           startsEncryptedWorkbook(file.stream(u"Workbook", kHead)) ||
           startsEncryptedWorkbook(file.stream(u"Book", kHead)) ||
           startsEncryptedDocument(file.stream(u"WordDocument", kHead));
}

const Conversion& documentConversion(const QByteArray& bytes) {
    const QByteArray head = CompoundFile(bytes).stream(u"WordDocument", 2);
    return wordAt(head, 0) == kOldMagic ? kOldDocumentConversion : kDocumentConversion;
}

QByteArray convertDocument(const QByteArray& bytes, const Conversion& conversion, int limitMs) {
    const QString program = suiteProgram();
    if (program.isEmpty()) failWithMissing(conversion);

    const QTemporaryDir folder;
    QFile source(folder.filePath(QStringLiteral("source.") + conversion.from));
    if (!folder.isValid() || !source.open(QIODevice::WriteOnly)) runtime::pathNotFound();
    if (source.write(bytes) != bytes.size() || !source.flush()) runtime::diskFull();
    source.close();

    QProcess process;
    process.setProgram(program);
    // Without the filter the suite reads a damaged document as plain text. The profile is a
    // separate one because two runs on one profile disturb each other, and the operator's own suite
    // may be open.
    process.setArguments({QStringLiteral("-env:UserInstallation=") +
                              QUrl::fromLocalFile(folder.filePath(QStringLiteral("profile")))
                                  .toString(QUrl::FullyEncoded),
                          QStringLiteral("--headless"), QStringLiteral("--norestore"),
                          QStringLiteral("--infilter=") + conversion.filter,
                          QStringLiteral("--convert-to"), conversion.to, QStringLiteral("--outdir"),
                          folder.path(), source.fileName()});
    run(process, limitMs);

    // The exit code is 0 even if nothing could be loaded, so check for the output file.
    QFile result(folder.filePath(QStringLiteral("source.") + conversion.to));
    if (result.open(QIODevice::ReadOnly)) return result.readAll();
    if (lacksComponent(program, conversion)) failWithMissing(conversion);
    return {};
}

}  // namespace tarnwick::documents
