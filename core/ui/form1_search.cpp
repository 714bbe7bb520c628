#include "core/ui/form1.h"

#include "core/ui/results.h"
#include "ui/messages.h"
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

void Form1::searchPiDb(LogSearch search, const QString &text)
{
    m_results->showReceptions();
    m_results->setReceptions(searchLog(log(), search, text),
        u"No earlier reception with %1 \"%2\"."_s.arg(fieldOf(search), text));
}

// Search PI DB by PI Code.
void Form1::Command4_Click()
{
    searchPiDb(LogSearch::PiCodeContains, m_form->piCode());
}

// Search PI DB by RDS Name.
void Form1::Command6_Click()
{
    searchPiDb(LogSearch::RdsNameContains, m_form->rdsName());
}

// Search PI DB by Freq.
void Form1::Command7_Click()
{
    searchPiDb(LogSearch::FreqEquals, m_form->frequency());
}

// Search PI DB by transmitter name.
void Form1::Command8_Click()
{
    searchPiDb(LogSearch::TransmitterContains, m_form->site());
}

// Search PI DB by country.
void Form1::Command13_Click()
{
    searchPiDb(LogSearch::CountryEquals, m_form->country());
}

// A result of Search PI DB: shows it in the grid and the form.
void Form1::List1_DblClick(int line)
{
    const QString dateTime = m_results->dateTimeOf(line);
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
    for (int row = m_ui->Grid1->row() + 1; row < m_ui->Grid1->rows(); ++row) {
        if (m_ui->Grid1->text(row, GridColumn::PiCode).trimmed().contains(answer)) {
            makeCurrent(row);
            m_ui->Grid1->showRow(row);
            return;
        }
    }
    showMessage(this, answer + u" Not Found"_s);
}

} // namespace quillon
