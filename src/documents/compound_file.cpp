#include "documents/compound_file.h"

#include <QtEndian>
#include <algorithm>

namespace tarnwick::documents {

namespace {

constexpr quint32 kNone = 0xffffffff;
constexpr int kSmallShift = 6;
constexpr quint64 kSmallLimit = 4096;  // bytes; shorter streams are in small sectors
constexpr int kEntryShift = 7;
constexpr qint64 kNowhere = 0;  // no sector lies there, but the header
constexpr std::size_t kMostEntries = 1 << 16;

}  // namespace

bool isCompoundFile(const QByteArray& bytes) {
    return bytes.startsWith(QByteArrayView("\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1", 8));
}

CompoundFile::CompoundFile(const QByteArray& bytes) : bytes_(bytes) {
    if (!isCompoundFile(bytes_)) return;
    shift_ = static_cast<int>(number(30) & 0xffff);
    if (shift_ != 9 && shift_ != 12) return;
    sectorCount_ = static_cast<quint32>(std::min<qint64>((bytes_.size() - 1) >> shift_, 1 << 30));
    loadTable();
    smallTable_ = chain(number(60));
    loadStreams(chain(number(48)));
}

// kNone past the end of the file.
quint32 CompoundFile::number(qint64 at) const {
    if (at > bytes_.size() - 4) return kNone;
    return qFromLittleEndian<quint32>(bytes_.constData() + at);
}

// Both return kNowhere for a sector that the file does not have. This includes the marks for the
// end of a chain and for a free sector.
qint64 CompoundFile::position(quint32 sector) const {
    return sector < sectorCount_ ? (static_cast<qint64>(sector) + 1) << shift_ : kNowhere;
}

qint64 CompoundFile::smallPosition(quint32 sector) const {
    const qint64 at = static_cast<qint64>(sector) << kSmallShift;
    const auto holder = static_cast<std::size_t>(at >> shift_);
    if (holder >= smallContent_.size()) return kNowhere;
    return position(smallContent_[holder]) + at % (1 << shift_);
}

quint32 CompoundFile::after(quint32 sector, const Sectors& table) const {
    const int perSector = shift_ - 2;
    const std::size_t holder = sector >> perSector;
    if (holder >= table.size()) return kNone;
    const qint64 at = position(table[holder]);
    return at == kNowhere ? kNone : number(at + 4 * (sector % (1u << perSector)));
}

// Stops at the number of sectors in the file, so a circular chain ends.
CompoundFile::Sectors CompoundFile::chain(quint32 start) const {
    Sectors sectors;
    for (quint32 sector = start; sector < sectorCount_ && sectors.size() < sectorCount_;
         sector = after(sector, table_))
        sectors.push_back(sector);
    return sectors;
}

// The header lists the first sectors of the table; a chain of extra sectors lists the others. Only
// as many are loaded as are needed to cover the file.
void CompoundFile::loadTable() {
    constexpr int kInHeader = 109;
    const qint64 last = (1 << shift_) - 4;  // where a listing sector names the next one
    const std::size_t needed = (sectorCount_ >> (shift_ - 2)) + 1;
    for (qint64 i = 0; i < kInHeader; ++i)
        table_.push_back(number(76 + 4 * i));
    for (qint64 at = position(number(68)); at != kNowhere && table_.size() < needed;
         at = position(number(at + last)))
        for (qint64 i = 0; i < last; i += 4)
            table_.push_back(number(at + i));
}

// The entries of a storage form a tree sorted by name. The whole tree is read because some writers
// do not keep the order.
void CompoundFile::loadStreams(const Sectors& directory) {
    constexpr quint8 kStream = 2, kRoot = 5;
    const int perSector = shift_ - kEntryShift;
    const auto entryAt = [&](quint32 index) {
        const std::size_t holder = index >> perSector;
        if (holder >= directory.size()) return kNowhere;
        const qint64 at = position(directory[holder]) + (index % (1u << perSector) << kEntryShift);
        return at + (1 << kEntryShift) <= bytes_.size() ? at : kNowhere;
    };
    const auto typeAt = [&](qint64 at) { return static_cast<quint8>(bytes_[at + 66]); };

    const qint64 root = entryAt(0);
    if (root == kNowhere || typeAt(root) != kRoot) return;
    smallContent_ = chain(number(root + 116));
    std::vector<bool> seen(std::min(directory.size() << perSector, kMostEntries));
    std::vector<quint32> waiting{number(root + 76)};
    while (!waiting.empty()) {
        const quint32 index = waiting.back();
        waiting.pop_back();
        const qint64 at = entryAt(index);
        if (at == kNowhere || index >= seen.size() || seen[index]) continue;
        seen[index] = true;
        waiting.push_back(number(at + 68));
        waiting.push_back(number(at + 72));
        if (typeAt(at) != kStream) continue;
        QString name;  // up to 31 characters and a null
        for (int i = 0; i < 31 && (number(at + 2 * i) & 0xffff); ++i)
            name += QChar(static_cast<char16_t>(number(at + 2 * i) & 0xffff));
        // In files with 512-byte sectors, the upper half of the size is not always cleared.
        const quint64 high = shift_ == 9 ? 0 : number(at + 124);
        streams_.push_back({name, number(at + 116), high << 32 | number(at + 120)});
    }
}

const CompoundFile::Entry* CompoundFile::find(QStringView name) const {
    for (const Entry& entry : streams_)
        if (name.compare(entry.name, Qt::CaseInsensitive) == 0) return &entry;
    return nullptr;
}

QByteArray CompoundFile::stream(QStringView name, qint64 most) const {
    const Entry* entry = find(name);
    if (!entry) return {};
    // Never more than the file size, so a circular chain ends.
    const auto limit = static_cast<quint64>(std::clamp<qint64>(most, 0, bytes_.size()));
    const auto wanted = static_cast<qsizetype>(std::min(entry->size, limit));
    const bool isSmall = entry->size < kSmallLimit;
    const qsizetype sectorSize = 1 << (isSmall ? kSmallShift : shift_);
    QByteArray content;
    quint32 sector = entry->start;
    while (content.size() < wanted) {
        const qint64 at = isSmall ? smallPosition(sector) : position(sector);
        if (at == kNowhere) break;
        const QByteArrayView piece =
            QByteArrayView(bytes_).sliced(std::min<qsizetype>(at, bytes_.size()));
        content.append(piece.first(std::min({piece.size(), sectorSize, wanted - content.size()})));
        if (piece.size() < sectorSize) break;  // cut short
        sector = after(sector, isSmall ? smallTable_ : table_);
    }
    return content;
}

}  // namespace tarnwick::documents
