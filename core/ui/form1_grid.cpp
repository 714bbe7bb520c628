#include "core/ui/editmany.h"
#include "core/ui/form1.h"
#include "core/ui/form1_stations.h"
#include "import/ui/importfile.h"
#include "live/ui/receiverdock.h"
#include "stats/ui/logstats.h"
#include "ui/guard.h"
#include "ui/statustext.h"
#include "ui_form1.h"

#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

void Form1::populateGrid(std::span<const qint32> changed)
{
    m_ui->Grid1->refill(changed);
    const int last = m_ui->Grid1->rows() - 1;
    if (last == 0) {
        return;
    }
    m_ui->Grid1->setRow(last);
    constexpr int rowsThatScroll = 4;
    if (m_ui->Grid1->rows() >= rowsThatScroll) {
        m_ui->Grid1->setTopRow(last);
    }
}

void Form1::saveLogbook()
{
    m_document.saveLog();
}

// The views follow the document: new entries refill the grid, changed ones are shown where they stand, and
// after an undo or a redo the entry that it concerned is marked and in view.
void Form1::documentChanged(const DocumentChange &what)
{
    Grid &grid = *m_ui->Grid1;
    grid.forgetHidden();
    m_lastChanged = what.entries;
    if (what.kind == DocumentChange::Kind::Restored) {
        m_rows.restore(what.entries);
        for (const qint32 entry : what.entries) {
            if (const int row = grid.rowOfEntry(entry); row > 0) {
                grid.setRow(row);
                grid.showRow(row);
                break;
            }
        }
    } else if (what.added) {
        populateGrid(what.entries);
    } else if (!what.entries.empty()) {
        m_rows.entriesChanged(what.entries);
    }
    for (auto *many : findChildren<EditMany *>(QString(), Qt::FindDirectChildrenOnly)) {
        many->logChanged();
    }
    for (auto *import : findChildren<importFile *>(QString(), Qt::FindDirectChildrenOnly)) {
        import->logChanged();
    }
    if (what.sites) {
        m_rows.entriesChanged({});
    }
    listsChanged();
    m_receiver->logChanged(what.entries);
    m_probably->logChanged();
    if (auto *statistics = findChild<logStats *>(QString(), Qt::FindDirectChildrenOnly)) {
        guarded(this, [statistics] { statistics->logChanged(); });
    }
}

// A click on a row, or the arrow keys: loads the entry into the form.
void Form1::Grid1_RowSelect(int row)
{
    if (row < 1) {
        m_form->clearPosition();
        return;
    }
    (void)loadRow(m_ui->Grid1->entryOfRow(row));
}

// Loads the entry that a row leads to by what it shows.
bool Form1::loadRow(qint32 entry)
{
    tellUnstored();
    const int row = m_ui->Grid1->rowOfEntry(entry);
    // The row that the user chose is current already, perhaps among others that are chosen, too.
    if (row > 0 && row != m_ui->Grid1->row()) {
        m_ui->Grid1->setRow(row);
    }
    m_form->clearPosition();
    const QString freq = m_rows.text(entry, GridColumn::Freq);
    const DateTime dateTime = m_rows.moment(entry, u"Reading row %1 of the grid"_s.arg(row));
    const qint32 found = freq.isEmpty() ? -1
                                        : log().FindEntry(m_rows.text(entry, GridColumn::PiCode), dateTime,
                                            m_rows.text(entry, GridColumn::RdsName), freq);
    if (found < 0) {
        return false;
    }
    m_selected = found;
    m_form->show(log().entry(m_selected));
    m_form->setState(EntryForm::State::Editing);
    m_form->setYellow(true);
    showPath();
    return true;
}

// The form holds no reception of the log any more.
void Form1::closeEntry()
{
    m_selected = -1;
    m_form->setState(EntryForm::State::AtRest);
    m_form->offerCancel(false);
    m_form->setYellow(false);
}

// A click on a heading sorts.
void Form1::Grid1_HeaderClick(int column)
{
    m_ui->Grid1->sortByNext(column);
}

// False when the status line says already where a file was kept, or how far a work has come.
bool Form1::mayTell()
{
    return !std::exchange(m_copyTold, false) && !m_longWork;
}

// Says in the status line what was done.
void Form1::tell(const QString &text)
{
    if (mayTell()) {
        m_status->setText(text);
    }
}

// What was typed and is about to be replaced by another entry can be had back.
void Form1::tellUnstored()
{
    if (!m_form->hasChanges()) {
        return;
    }
    m_unstored = m_form->draft();
    m_unstoredEntry = m_form->state() == EntryForm::State::Editing ? m_selected : -1;
    LogEntry typed;
    typed.piCode = m_form->piCode();
    typed.freq = m_form->frequency();
    typed.rdsName = m_form->rdsName();
    m_status->tell(changeName(u"Changes to"_s, typed) + u" were not stored"_s, u"Restore"_s,
        [this] { guarded(this, [this] { restoreUnstored(); }); });
}

void Form1::restoreUnstored()
{
    if (!m_unstored || m_unstoredEntry >= log().count() || m_longWork || m_importing) {
        return;
    }
    const EntryForm::Draft draft = *std::exchange(m_unstored, std::nullopt);
    const qint32 entry = m_unstoredEntry;
    m_status->clear();
    // What was typed meanwhile can be had back in its turn.
    tellUnstored();
    m_selected = entry;
    if (m_selected >= 0) {
        if (const int row = m_ui->Grid1->rowOfEntry(m_selected); row > 0) {
            m_ui->Grid1->setRow(row);
            m_ui->Grid1->showRow(row);
        }
    }
    m_form->setYellow(m_selected >= 0);
    m_form->restore(draft);
}

} // namespace quillon
