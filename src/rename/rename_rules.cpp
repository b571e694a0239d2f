#include "rename/rename_rules.h"

#include "forms/frm_rename_wiz.h"
#include "rename/bare_name.h"
#include "rename/name_check.h"
#include "rename/new_names.h"
#include "rename/rename_notices.h"
#include "runtime/events.h"
#include "runtime/numbers.h"

namespace tarnwick::rename {

RenameRules::RenameRules(forms::frmRenameWiz& form, WorkingTable& table, const Services& services)
    : form_(form),
      table_(table),
      services_(services),
      buttons_{form.cbPreview, form.cbCancel, form.cbRename} {
    const runtime::FailurePath& failure = services_.failure;
    runtime::onEvent(failure, form_.cbPreview, &QPushButton::clicked, this,
                     [this] { cbPreview_Click(); });
    runtime::onEvent(failure, form_.cbCancel, &QPushButton::clicked, this,
                     [this] { cbCancel_Click(); });
    runtime::onEvent(failure, form_.cbRename, &QPushButton::clicked, this,
                     [this] { cbRename_Click(); });
}

void RenameRules::cbPreview_Click() {
    buttons_.showPreviewing(true);
    form_.repaint();
    takeSelection();
    if (table_.viLastFile < 0) {
        buttons_.showPreviewing(false);
        services_.boxes.plain(u"No file selected."_qs);
        return;
    }
    if (runRules()) return checkNewNames();
    services_.boxes.plain(u"Nothing to preview."_qs);
    buttons_.showPreviewing(false);
}

void RenameRules::takeSelection() {
    const QStringList names = form_.lbxSelectedFiles->names();
    if (names.size() > model::kRenameSlots)
        throw runtime::Fault(
            u"%1 files are selected; no more than %2 can be renamed at once."_qs.arg(names.size())
                .arg(model::kRenameSlots));
    table_.viLastFile = static_cast<qint16>(names.size() - 1);
    std::transform(names.begin(), names.end(), table_.vaFileNames.begin(), [](const QString& name) {
        return model::RenameRecord{name, name};
    });
}

// Every rule works on the result of the previous one. False if no rule is active.
bool RenameRules::runRules() {
    const auto filled = [](const QLineEdit* box) { return !box->text().isEmpty(); };
    const auto& f = form_;
    const std::pair<bool, void (RenameRules::*)()> rules[] = {
        {filled(f.txbAddPrefix), &RenameRules::AddPrefix},
        {f.chIncrNumberPrefix->isChecked(), &RenameRules::IncrNumberPrefix},
        {f.chIncrLetterPrefix->isChecked(), &RenameRules::IncrLetterPrefix},
        {filled(f.txbAddSuffix), &RenameRules::AddSuffix},
        {f.chIncrNumberSuffix->isChecked(), &RenameRules::IncrNumberSuffix},
        {f.chIncrLetterSuffix->isChecked(), &RenameRules::IncrLetterSuffix},
        {filled(f.txbSearchFor) && filled(f.txbReplaceWith), &RenameRules::SearchReplace},
        {filled(f.txbInsert) && filled(f.txbStartingAt), &RenameRules::InsertString},
        {filled(f.txbRemove) && filled(f.txbStartingAt), &RenameRules::RemoveCharacters},
        {filled(f.txbSourceExt) && filled(f.txbTargetExt), &RenameRules::ChangeExtension}};
    bool done = false;
    for (const auto& [runs, rule] : rules)
        if (runs) {
            (this->*rule)();
            done = true;
        }
    return done;
}

// Marks the new names that Rename cannot give, and counts them in a notice.
void RenameRules::checkNewNames() {
    const auto records = table_.used();
    const QStringList reasons = whyNotGiven(records, [this](const QString& name) {
        return services_.files.isTaken(table_.vsFolder + name);
    });
    form_.lbxSelectedFiles->mark(marksOfNewNames(records, reasons));
    if (reasons.count(QString()) < reasons.size())
        services_.notices.tell(newNamesNotGiven(records, reasons, table_.vsFolder));
}

void RenameRules::rewrite(const std::function<QString(int, const QString&)>& rule) {
    int viIndex = 0;
    for (model::RenameRecord& record : table_.used()) {
        try {
            record.Renamed = rule(viIndex++, record.Renamed);
        } catch (const runtime::Fault& fault) {
            throw runtime::Fault(u"There is no new name for \"%1\": %2"_qs.arg(
                record.Original, fault.description()));
        }
    }
    ShowNewNames();
}

void RenameRules::rewriteEnds(const std::function<QString(int)>& suffix) {
    ExtensionLength extension;
    rewrite([&](int index, const QString& name) {
        if (!extension.find(name)) services_.boxes.plain(u"Abnormal Extension on file "_qs + name);
        return withSuffix(name, extension.length(), suffix(index));
    });
}

void RenameRules::ShowNewNames() {
    QStringList names;
    for (const model::RenameRecord& record : table_.used())
        names << record.Renamed;
    form_.lbxSelectedFiles->setNames(names);
}

void RenameRules::AddPrefix() {
    const QString prefix = form_.txbAddPrefix->text();
    rewrite([&](int, const QString& name) { return prefix + name; });
}

void RenameRules::IncrNumberPrefix() {
    rewrite([](int index, const QString& name) { return QString::number(index) + u'_' + name; });
}

void RenameRules::IncrLetterPrefix() {
    rewrite([](int index, const QString& name) { return lettersOf(index) + u'_' + name; });
}

void RenameRules::AddSuffix() {
    const QString suffix = form_.txbAddSuffix->text();
    rewriteEnds([&](int) { return suffix; });
}

void RenameRules::IncrNumberSuffix() {
    rewriteEnds([](int index) { return u'_' + QString::number(index); });
}

void RenameRules::IncrLetterSuffix() {
    rewriteEnds([](int index) { return u'_' + lettersOf(index); });
}

void RenameRules::SearchReplace() {
    const QString search = form_.txbSearchFor->text();
    const QString replacement = form_.txbReplaceWith->text();
    const bool caseSensitive = form_.chCaseSensitive->isChecked();
    rewrite([&](int, const QString& name) {
        return withReplaced(name, search, replacement, caseSensitive);
    });
}

void RenameRules::InsertString() {
    const QString text = form_.txbInsert->text();
    rewrite([&](int, const QString& name) {
        return withInserted(name, runtime::strictDouble(form_.txbStartingAt->text()), text);
    });
}

void RenameRules::RemoveCharacters() {
    const double start = runtime::val(form_.txbStartingAt->text());
    const double count = runtime::val(form_.txbRemove->text());
    rewrite([&](int, const QString& name) { return withRemoved(name, start, count); });
}

void RenameRules::ChangeExtension() {
    const QString source = form_.txbSourceExt->text();
    const QString target = form_.txbTargetExt->text();
    rewrite([&](int, const QString& name) { return withExtension(name, source, target); });
}

void RenameRules::cbCancel_Click() {
    QStringList names;
    for (const model::RenameRecord& record : table_.used())
        names << record.Original;
    form_.lbxSelectedFiles->setNames(names);
    buttons_.showPreviewing(false);
}

// Stops at the first file that cannot be renamed; the files before it keep their new names.
void RenameRules::cbRename_Click() {
    int viIndex = 0;
    for (const model::RenameRecord& record : table_.used())
        give(record, viIndex++);
    form_.lbxSelectedFiles->mark({});
    buttons_.showPreviewing(false);
}

void RenameRules::give(const model::RenameRecord& record, int before) {
    try {
        requireBareName(record.Original);
        requireBareName(record.Renamed);
        services_.files.MoveFile(table_.vsFolder + record.Original,
                                 table_.vsFolder + record.Renamed);
    } catch (const runtime::Fault& fault) {
        throw runtime::Fault(
            u"\"%1\" could not be renamed to \"%2\": %3.\nFiles renamed before it: %4."_qs.arg(
                record.Original, record.Renamed, fault.description(), QString::number(before)));
    }
}

}  // namespace tarnwick::rename
