#include "rename/name_check.h"

#include <QHash>
#include <QSet>

#include "rename/bare_name.h"
#include "runtime/file_names.h"

namespace tarnwick::rename {

namespace {

constexpr std::size_t kLongestName = 255;  // bytes

// What is wrong with a name, regardless of the other files.
QString whyNoName(const QString& name) {
    const QString reason = whyNoBareName(name);
    if (!reason.isEmpty()) return reason;
    return runtime::bytesOfFileName(name).size() > kLongestName ? u"it is longer than 255 bytes"_qs
                                                                : QString();
}

QString whyTaken(const model::RenameRecord& record, bool byOneThatWaits) {
    if (record.Renamed == record.Original) return u"the file already has it"_qs;
    return byOneThatWaits ? u"a file later in the list still has it"_qs
                          : u"another file or folder has it"_qs;
}

// The names in the folder after the records before were renamed.
class Folder {
  public:
    explicit Folder(const std::function<bool(const QString&)>& isTaken) : isTaken_(isTaken) {}

    bool isTaken(const QString& name) const {
        const auto change = changes_.find(name);
        return change != changes_.end() ? *change : isTaken_(name);
    }
    void move(const model::RenameRecord& record) {
        changes_[record.Original] = false;
        changes_[record.Renamed] = true;
    }

  private:
    const std::function<bool(const QString&)>& isTaken_;
    QHash<QString, bool> changes_;  // whether a name is taken now, for names that changed
};

}  // namespace

QStringList whyNotGiven(std::span<const model::RenameRecord> records,
                        const std::function<bool(const QString& name)>& isTaken) {
    QHash<QString, int> uses;
    QSet<QString> waiting;  // present names of the files that are renamed later
    for (const model::RenameRecord& record : records) {
        ++uses[record.Renamed];
        waiting << record.Original;
    }
    Folder folder(isTaken);
    QStringList reasons;
    for (const model::RenameRecord& record : records) {
        const QString& name = record.Renamed;
        waiting.remove(record.Original);
        const QString invalid = whyNoName(name);
        if (!invalid.isEmpty()) {
            reasons << invalid;
        } else if (!folder.isTaken(record.Original)) {
            reasons << u"its file is no longer there"_qs;
        } else if (!folder.isTaken(name)) {
            folder.move(record);
            reasons << QString();
        } else {
            reasons << (uses[name] > 1 ? u"it appears more than once in the list"_qs
                                       : whyTaken(record, waiting.contains(name)));
        }
    }
    return reasons;
}

}  // namespace tarnwick::rename
