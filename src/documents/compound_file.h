#pragma once

#include <QByteArray>
#include <QString>
#include <limits>
#include <vector>

namespace tarnwick::documents {

// True for bytes that start like a compound file, the container of the old office documents, and of
// the new ones when they are encrypted.
bool isCompoundFile(const QByteArray& bytes);

// The streams at the root of a compound file, after [MS-CFB]. Streams in its storages (embedded
// objects, macros) are left out. Nothing in the file is trusted: a damaged or circular stream is
// missing or cut short, and the time and memory of every operation are bounded by the file size.
class CompoundFile {
  public:
    explicit CompoundFile(const QByteArray& bytes);

    // Names are compared without regard to case.
    bool hasStream(QStringView name) const { return find(name) != nullptr; }

    // The first `most` bytes of a stream; empty if there is no such stream.
    QByteArray stream(QStringView name, qint64 most = std::numeric_limits<qint64>::max()) const;

  private:
    using Sectors = std::vector<quint32>;
    struct Entry {
        QString name;
        quint32 start;  // its first sector
        quint64 size;   // in bytes
    };

    quint32 number(qint64 at) const;
    qint64 position(quint32 sector) const;
    qint64 smallPosition(quint32 sector) const;
    quint32 after(quint32 sector, const Sectors& table) const;
    Sectors chain(quint32 start) const;
    void loadTable();
    void loadStreams(const Sectors& directory);
    const Entry* find(QStringView name) const;

    QByteArray bytes_;
    int shift_ = 9;            // the size of a sector, as a power of 2
    quint32 sectorCount_ = 0;  // in the file; the last may be cut short
    Sectors table_;            // the sectors of the table that gives the successor of each sector
    Sectors smallTable_;       // the same for the small sectors, which hold the short streams
    Sectors smallContent_;     // the sectors that hold the small sectors
    std::vector<Entry> streams_;
};

}  // namespace tarnwick::documents
