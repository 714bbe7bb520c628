#include "core/manyentries.h"
#include "core/ui/editmany.h"
#include "core/ui/form1.h"
#include "live/ui/receiverdock.h"
#include "ui/guard.h"
#include "ui/messages.h"
#include "ui/openwindow.h"
#include "ui_form1.h"

#include <QAbstractButton>
#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>
#include <QScopeGuard>

#include <algorithm>

namespace quillon {

using namespace Qt::StringLiterals;

// Edit Chosen Receptions.
void Form1::menuEditMany_Click()
{
    if (openWindow<EditMany>(*this)) {
        return;
    }
    const std::vector<qint32> chosen = m_ui->Grid1->chosenEntries();
    if (chosen.empty()) {
        tell(u"Choose receptions in the log first: Shift, Ctrl or Ctrl+A with a click"_s);
        return;
    }
    auto *window = new EditMany(log(), chosen, m_form->countries(), m_options.regional.codePage, this);
    window->setAttribute(Qt::WA_DeleteOnClose);
    if (m_ui->menuViewDistances->isChecked()) {
        window->tellAlso([this](const LogChange &change) {
            const LogChange all = measured({{}, change, {}}, Measured::All).log;
            const auto count = static_cast<qsizetype>(all.fields.size() - change.fields.size());
            return count > 0 ? u"Dist of %1: measured from home"_s.arg(receptionCount(count)) : QString();
        });
    }
    connect(window, &EditMany::editChosen, this, [this](const LogChange &change, const QString &name) {
        if (!m_longWork) {
            guarded(this, [&] { commitMany(measured({name, change, {}}, Measured::All)); });
        }
    });
    window->show();
}

// A change of many; what the form holds of them is not theirs any more.
void Form1::commitMany(const Change &change)
{
    // That what was typed is not stored matters more than what is seen in the grid.
    const bool unstored = m_form->hasChanges();
    tellUnstored();
    m_form->clear();
    closeEntry();
    const auto told = qScopeGuard([&] {
        if (!unstored) {
            tellHidden(u"Done: "_s + change.name, m_lastChanged);
        }
    });
    m_lastChanged.clear();
    m_document.commit(change);
}

// Delete, when more than one row is chosen. False when it is not this that is to be done.
bool Form1::deleteChosen()
{
    const std::vector<qint32> chosen = m_ui->Grid1->chosenEntries();
    if (chosen.size() < 2) {
        return false;
    }
    const LogChange change = deleteMany(log(), chosen);
    const QString count = receptionCount(static_cast<qsizetype>(change.fields.size()));
    if (!change.isEmpty() && askYesNo(this, u"Delete %1?"_s.arg(count), u"Delete"_s)) {
        commitMany({u"Delete "_s + count, change, {}});
    }
    return true;
}

// Copy: the chosen rows as the grid shows them.
void Form1::menuEditCopy_Click()
{
    const Grid &grid = *m_ui->Grid1;
    const std::vector<qint32> chosen = grid.chosenEntries();
    if (!chosen.empty()) {
        QGuiApplication::clipboard()->setText(tabSeparated(m_rows, chosen, grid.shownColumns()));
        tell(u"Copied "_s + receptionCount(static_cast<qsizetype>(chosen.size())));
    }
}

// The menu of a row of the log.
void Form1::showGridMenu(const QPoint &position)
{
    const QModelIndex cell = m_ui->Grid1->indexAt(position);
    if (!cell.isValid()) {
        return;
    }
    QMenu menu(this);
    menu.setObjectName(u"gridMenu"_s);
    const auto button = [&](const QString &caption, const QString &name) {
        QAction *action = menu.addAction(caption);
        QAbstractButton *pressed = m_form->button(name);
        action->setEnabled(pressed->isEnabled());
        connect(action, &QAction::triggered, pressed, &QAbstractButton::click);
    };
    menu.addAction(m_ui->menuEditMany);
    button(u"C&lone"_s, u"Command9"_s);
    button(u"&Delete"_s, u"Command15"_s);
    menu.addAction(m_ui->menuEditCopy);
    menu.addSeparator();
    button(u"Search &FMList"_s, u"Command11"_s);
    button(u"Search &PI DB"_s, u"Command4"_s);
    button(u"&Google"_s, u"Command5"_s);
    menu.addSeparator();
    menu.addAction(u"Show on the &Map"_s, this, [this] { showOnMap(); });
    const auto column = static_cast<GridColumn>(cell.column());
    const QString text = m_ui->Grid1->text(cell.row() + 1, column);
    QAction *filter = menu.addAction(u"Filter by This &Cell's Value"_s, this,
        [this, column, text] { m_ui->filterBar->setText(filterTextOf(column, text)); });
    // The filter's km are kilometres.
    const bool isMiles = column == GridColumn::Dist && m_config.settings().inMiles();
    filter->setEnabled(!isMiles && !filterTextOf(column, text).isEmpty());
    if (m_receiver && m_receiver->mayTune()) {
        menu.addAction(u"&Tune"_s, this, [this, row = cell.row() + 1] { tuneTo(row); });
    }
    menu.exec(m_ui->Grid1->viewport()->mapToGlobal(position));
}

// The filter's word for a cell; empty where it has none.
QString Form1::filterTextOf(GridColumn column, const QString &text)
{
    const auto key = [](GridColumn of) -> QString {
        switch (of) {
        case GridColumn::DateTime:
            return u"date"_s;
        case GridColumn::PiCode:
            return u"pi"_s;
        case GridColumn::Freq:
            return u"freq"_s;
        case GridColumn::RdsName:
            return u"ps"_s;
        case GridColumn::Country:
            return u"itu"_s;
        case GridColumn::Transmitter:
            return u"site"_s;
        case GridColumn::Dist:
            return u"km"_s;
        case GridColumn::Power:
            return u"kw"_s;
        case GridColumn::Notes:
            return u"notes"_s;
        case GridColumn::Prop:
            return u"prop"_s;
        case GridColumn::FMList:
            return u"fml"_s;
        case GridColumn::Uid:
            return u"uid"_s;
        default:
            return {};
        }
    }(column);
    if (key.isEmpty()) {
        return {};
    }
    // A moment stands for its day, a text for what is before a quotation mark, in quotes with its blanks.
    const QString value =
        column == GridColumn::DateTime ? text.section(u' ', 0, 0) : text.section(u'"', 0, 0);
    if (value.isEmpty() && !text.isEmpty()) {
        return {};
    }
    const bool hasBlanks = std::ranges::any_of(value, [](QChar sign) { return sign.isSpace(); });
    return key + u':' + (hasBlanks ? u'"' + value + u'"' : value);
}

} // namespace quillon
