#include "core/ui/form1.h"

#include "core/ui/results.h"
#include "ui/messages.h"
#include "ui_form1.h"

#include <algorithm>

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
    m_results->setReceptions(
        searchLog(log(), search, text), u"No earlier reception with %1 \"%2\"."_s.arg(fieldOf(search), text));
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
    for (const qint32 entry : m_rows.sorted()) {
        if (m_rows.text(entry, GridColumn::DateTime) == dateTime) {
            makeShown(entry);
            (void)loadRow(entry);
            m_ui->Grid1->setTopRow(m_ui->Grid1->rowOfEntry(entry));
            return;
        }
    }
}

// Find: the next row below the current one whose PI Code contains the answer.
void Form1::menuToolsFind_Click()
{
    const QString answer = inputBox(this, u"Enter PI to search for"_s, u"Find"_s).toUpper();
    if (!answer.isEmpty()) {
        find(answer);
    }
}

// Find Again.
void Form1::menuToolsFindAgain_Click()
{
    if (m_found.isEmpty()) {
        menuToolsFind_Click();
    } else {
        find(m_found);
    }
}

void Form1::find(const QString &text)
{
    m_found = text;
    const std::span<const qint32> rows = m_rows.sorted();
    const int row = m_ui->Grid1->row();
    auto next = rows.begin();
    if (row > 0) {
        next = std::ranges::find(rows, m_ui->Grid1->entryOfRow(row));
        next += next == rows.end() ? 0 : 1;
    }
    const auto found = std::find_if(next, rows.end(),
        [&](qint32 entry) { return m_rows.text(entry, GridColumn::PiCode).trimmed().contains(text); });
    if (found == rows.end()) {
        showMessage(this, text + u" Not Found"_s);
        return;
    }
    const qint32 entry = *found;
    makeShown(entry);
    (void)loadRow(entry);
    m_ui->Grid1->showRow(m_ui->Grid1->rowOfEntry(entry));
}

} // namespace quillon
