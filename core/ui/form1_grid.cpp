#include "core/ui/form1.h"

#include "core/gridrows.h"
#include "core/logbooklines.h"
#include "ui/widgetstate.h"
#include "ui_form1.h"

#include <QFileInfo>
#include <QLabel>

namespace quillon {

using namespace Qt::StringLiterals;

void Form1::populateGrid()
{
    const RedrawOff redrawOff(*m_ui->Grid1);
    m_ui->Grid1->fill(gridRows(m_log));
    m_loadedRow = 0;
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
    m_logUnsaved = true;
    const QString path = m_config.path(m_config.settings().logbookFileName);
    tellOfCopy(m_logbookFile.save(path, m_config.applicationDir(), m_logbookLines.bytes()));
    m_logUnsaved = false;
}

void Form1::saveTransmitterList()
{
    m_transmittersUnsaved = true;
    tellOfCopy(m_transmitterFile.save(m_config.path(u"tx.lst"_s), m_config.applicationDir(),
        transmitterBytes(m_transmitters, m_options.regional.codePage)));
    m_transmittersUnsaved = false;
}

// Writes what an earlier save could not.
void Form1::saveUnsaved()
{
    if (m_logUnsaved) {
        saveLogbook();
    }
    if (m_transmittersUnsaved) {
        saveTransmitterList();
    }
}

void Form1::tellOfCopy(const std::optional<QString> &copy)
{
    if (copy) {
        m_status->setText(u"The file that was there before is kept as "_s + QFileInfo(*copy).fileName());
    }
}

// A click on a row, or the arrow keys: loads the entry into the form.
void Form1::Grid1_RowSelect(int row)
{
    const RedrawOff redrawOff(*m_ui->Grid1);
    m_ui->Text7->clear();
    m_ui->Text10->clear();
    if (row < 1) {
        return;
    }
    const Grid &grid = *m_ui->Grid1;
    const QString freq = grid.text(row, GridColumn::Freq);
    const DateTime dateTime = toDateTime(grid.text(row, GridColumn::DateTime), m_options.regional.months,
        u"Reading row %1 of the grid"_s.arg(row));
    if (freq.isEmpty()) {
        return;
    }
    m_selected = m_log.FindEntry(
        grid.text(row, GridColumn::PiCode), dateTime, grid.text(row, GridColumn::RdsName), freq);
    if (m_selected < 0) {
        return;
    }
    m_loadedRow = row;
    const LogEntry &entry = m_log.entry(m_selected);
    showEntry(entry);
    unlockEntryForm();
    m_ui->Command1->setEnabled(false);
    m_ui->Command3->setEnabled(true);
    m_ui->Command9->setEnabled(true);
    m_ui->Command15->setEnabled(true);
    m_ui->Grid1->setRow(row);
    listTransmittersForCountry(m_ui->Combo3->currentText());
    if (!entry.transmitter.isEmpty() && !entry.country.isEmpty()) {
        selectTransmitter(entry.transmitter, entry.country);
    }
    highlightEntryForm();
}

void Form1::showEntry(const LogEntry &entry)
{
    m_ui->Text1->setText(entry.piCode);
    m_ui->Text2->setText(generalText(entry.dateTime));
    m_ui->Text8->setText(entry.rdsName);
    m_ui->Text5->setText(entry.transmitter);
    m_ui->Combo3->setEditText(entry.country);
    showNotes(entry.notes);
    m_ui->Text9->setText(entry.freq);
    m_ui->Combo2->setEditText(entry.prop);
    m_ui->Text6->setText(entry.power);
    m_ui->uid->setText(entry.uid);
}

// A click on a heading sorts. Dates are sorted as dates: as text the days of all months would stand together.
void Form1::Grid1_HeaderClick(int column)
{
    const qint32 loaded = m_loadedRow > 0 ? m_selected : -1;
    const bool sameRow = m_loadedRow == m_ui->Grid1->row();
    if (column == static_cast<int>(GridColumn::DateTime)) {
        m_ui->Grid1->sortByDate(m_options.regional.months);
    } else {
        m_ui->Grid1->sortGridByColumn(column);
    }
    m_loadedRow = loaded < 0 ? 0 : sameRow ? m_ui->Grid1->row() : m_ui->Grid1->rowOfEntry(loaded);
}

// Makes a row current and loads its entry, as a click on it does.
void Form1::makeCurrent(int row)
{
    m_ui->Grid1->setRow(row);
    Grid1_RowSelect(row);
}

int Form1::rowOfLoadedEntry() const
{
    return m_loadedRow > 0 ? m_loadedRow : m_ui->Grid1->rowOfEntry(m_selected);
}

// Rewrites a row from the form. Dist and FMList are not in the form and stay.
void Form1::rewriteRow(int row)
{
    const RedrawOff redrawOff(*m_ui->Grid1);
    Grid &grid = *m_ui->Grid1;
    grid.setText(row, GridColumn::DateTime, m_ui->Text2->text());
    grid.setText(row, GridColumn::PiCode, m_ui->Text1->text());
    grid.setText(row, GridColumn::Freq, m_ui->Text9->text());
    grid.setText(row, GridColumn::RdsName, m_ui->Text8->text());
    grid.setText(row, GridColumn::Country, m_ui->Combo3->currentText());
    grid.setText(row, GridColumn::Transmitter, m_ui->Text5->text());
    grid.setText(row, GridColumn::Power, m_ui->Text6->text());
    grid.setText(row, GridColumn::Notes, m_log.entry(m_selected).notes);
    grid.setText(row, GridColumn::Prop, m_ui->Combo2->currentText());
    grid.setText(row, GridColumn::Uid, m_ui->uid->text());
    grid.setRow(row);
}

} // namespace quillon
