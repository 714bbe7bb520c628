#include "core/ui/form1.h"

#include "ui/messages.h"
#include "ui/widgetstate.h"
#include "ui_form1.h"

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

QString fieldOf(LogSearch search)
{
    switch (search) {
    case LogSearch::PiCodeContains:
        return u"PI Code"_s;
    case LogSearch::RdsNameContains:
        return u"RDS Name"_s;
    case LogSearch::TransmitterContains:
        return u"Name/Locale"_s;
    case LogSearch::FreqEquals:
        return u"Freq"_s;
    case LogSearch::CountryEquals:
        return u"Country"_s;
    }
    return {};
}

} // namespace

void Form1::showList1()
{
    m_ui->List1->setEmptyText(
        u"Search PI DB lists earlier receptions here.\nDouble-click one to show it in the log."_s);
    m_ui->List2->hide();
    m_ui->List1->show();
}

void Form1::showList2()
{
    m_ui->List2->setEmptyText(
        u"Search FMList lists matching stations here.\nDouble-click one to take it over."_s);
    m_ui->List1->hide();
    m_ui->List2->show();
}

void Form1::searchPiDb(LogSearch search, const QString &text)
{
    showList1();
    m_ui->List1->clear();
    m_ui->List1->setLines(searchLog(m_log, search, text));
    m_ui->List1->setEmptyText(u"No earlier reception with %1 \"%2\"."_s.arg(fieldOf(search), text));
}

// Search PI DB by PI Code.
void Form1::Command4_Click()
{
    searchPiDb(LogSearch::PiCodeContains, m_ui->Text1->text());
}

// Search PI DB by RDS Name.
void Form1::Command6_Click()
{
    searchPiDb(LogSearch::RdsNameContains, m_ui->Text8->text());
}

// Search PI DB by Freq.
void Form1::Command7_Click()
{
    searchPiDb(LogSearch::FreqEquals, m_ui->Text9->text());
}

// Search PI DB by transmitter name.
void Form1::Command8_Click()
{
    searchPiDb(LogSearch::TransmitterContains, m_ui->Text5->text());
}

// Search PI DB by country.
void Form1::Command13_Click()
{
    searchPiDb(LogSearch::CountryEquals, m_ui->Combo3->currentText());
}

// A result of Search PI DB: shows it in the grid and the form.
void Form1::List1_DblClick(int line)
{
    const RedrawOff redrawOff(*m_ui->Grid1);
    const QString dateTime = m_ui->List1->text(line).section(u'\t', 1, 1);
    for (int row = 1; row < m_ui->Grid1->rows(); ++row) {
        if (m_ui->Grid1->text(row, GridColumn::DateTime) == dateTime) {
            makeCurrent(row);
            m_ui->Grid1->setTopRow(row);
            return;
        }
    }
}

// Find: the next row below the current one whose PI Code contains the answer.
void Form1::menuToolsFind_Click()
{
    const QString answer = inputBox(this, u"Enter PI to search for"_s, {}).toUpper();
    if (answer.isEmpty()) {
        return;
    }
    {
        const RedrawOff redrawOff(*m_ui->Grid1);
        for (int row = m_ui->Grid1->row() + 1; row < m_ui->Grid1->rows(); ++row) {
            if (m_ui->Grid1->text(row, GridColumn::PiCode).trimmed().contains(answer)) {
                makeCurrent(row);
                m_ui->Grid1->showRow(row);
                return;
            }
        }
    }
    showMessage(this, answer + u" Not Found"_s);
}

} // namespace quillon
