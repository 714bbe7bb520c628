#include "core/manyentries.h"
#include "core/ui/form1.h"
#include "export/shownfile.h"
#include "platform/files.h"
#include "txdb/derivedcells.h"
#include "ui/busypointer.h"
#include "ui/desktop.h"
#include "ui/documentsfolder.h"
#include "ui/statustext.h"
#include "ui_form1.h"

#include <QFileDialog>
#include <QFileInfo>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

struct Target
{
    QString path;
    ShownKind kind {};
};

QString filterOf(const ShownFormat &format)
{
    return u"%1 (*.%2)"_s.arg(format.caption, format.suffix);
}

const ShownFormat &formatOf(const QString &filter)
{
    return *std::ranges::find_if(
        shownFormats, [&](const ShownFormat &format) { return filterOf(format) == filter; });
}

// Asks where to; `last` is offered. The end of the name says the kind, else the list of kinds does.
std::optional<Target> askForTarget(QWidget *parent, const QString &title, const QString &last)
{
    QFileDialog dialog(parent, title);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    QStringList filters;
    for (const ShownFormat &format : shownFormats) {
        filters += filterOf(format);
    }
    dialog.setNameFilters(filters);
    const auto follow = [&](const QString &filter) {
        dialog.setDefaultSuffix(formatOf(filter).suffix.toString());
    };
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, follow);
    const auto kind = static_cast<qsizetype>(shownKindOf(last).value_or(ShownKind::Csv));
    dialog.selectNameFilter(filters.at(kind));
    follow(filters.at(kind));
    dialog.setDirectory(QFileInfo(last).path());
    dialog.selectFile(QFileInfo(last).fileName());
    if (dialog.exec() != QDialog::Accepted) {
        return std::nullopt;
    }
    const QString path = dialog.selectedFiles().value(0);
    return Target {path, shownKindOf(path).value_or(formatOf(dialog.selectedNameFilter()).kind)};
}

} // namespace

// Shown Receptions: the rows that the filter shows, or those of them that are chosen.
void Form1::menuExportShown_Click()
{
    const std::vector<qint32> chosen = m_ui->Grid1->chosenEntries();
    const bool onlyChosen = chosen.size() > 1;
    const ShownLog shown {m_rows, transmitters(), homePosition(m_config.settings()),
        m_config.settings().callsign, UtcNow(), withoutDeleted(log(), onlyChosen ? chosen : m_rows.shown()),
        m_ui->Grid1->shownColumns()};
    if (shown.entries.empty()) {
        tell(u"No receptions are shown: there is nothing to export"_s);
        return;
    }
    const QString count = receptionCount(static_cast<qsizetype>(shown.entries.size()));
    const QString offered =
        m_shownFile.isEmpty() ? filePath(documentsFolder(), u"receptions.csv"_s) : m_shownFile;
    const auto target =
        askForTarget(this, u"Export %1 (%2)"_s.arg(count, onlyChosen ? u"chosen"_s : u"shown"_s), offered);
    if (!target) {
        return;
    }
    {
        const BusyPointer busy;
        writeFile(target->path, shownBytes(shown, target->kind), *m_options.fileCalls);
    }
    m_shownFile = target->path;
    const int without = leftOut(shown, target->kind);
    QString done = count + u" exported to "_s + target->path;
    if (without > 0) {
        done += u"; left out, as their sites have no place: "_s + QString::number(without);
    }
    if (!m_longWork) {
        m_status->tell(done, u"Open"_s, [path = target->path] { openFile(path); });
    }
}

} // namespace quillon
