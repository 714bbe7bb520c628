#include "core/fieldchecks.h"
#include "core/typedfields.h"
#include "core/ui/dialog1.h"
#include "core/ui/form1.h"
#include "ui/guard.h"
#include "ui/messages.h"
#include "ui/openwindow.h"
#include "ui_form1.h"

#include <QAbstractButton>
#include <QApplication>
#include <QScopeGuard>

#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

// New, or Cancel while a new entry is typed.
void Form1::Command2_Click()
{
    if (m_form->isCancelOffered()) {
        m_form->offerCancel(false);
        m_form->setState(EntryForm::State::AtRest);
        return;
    }
    tellUnstored();
    m_form->offerCancel(true);
    m_selected = -1;
    m_form->clearForNew(UtcNow());
    m_form->setState(EntryForm::State::New);
    m_form->focusFrequency();
}

// Add.
void Form1::Command1_Click()
{
    addEntry(u"Add"_s);
}

void Form1::addEntry(const QString &verb)
{
    const QString refusal =
        addRefusal(m_form->frequency(), m_form->piCode(), m_form->rdsName(), m_form->country());
    if (!refusal.isEmpty()) {
        showMessage(this, refusal);
        return;
    }
    LogEntry entry = m_form->entry();
    SiteChanges sites = siteOfForm();
    measure(entry, sites);
    const qint32 before = log().count();
    // The entry can be in the log although it could not be saved: the form then shows it no more, either.
    const auto shown = qScopeGuard([&] {
        if (log().count() > before) {
            closeEntry();
            m_form->setFrequency(entry.freq);
            m_ui->Grid1->setTopRow(m_ui->Grid1->rows() - 1);
            tellHidden(changeName(u"Added"_s, entry), before);
            showNewBadge(before);
        }
    });
    m_document.commit({changeName(verb, entry), LogChange::addition(entry), std::move(sites)},
        LogDocument::Saving::WithSites);
}

// What the site in the form changes in the list.
SiteChanges Form1::siteOfForm() const
{
    SiteChanges changes;
    if (auto change = transmitters().addition(m_form->transmitter())) {
        changes.push_back(std::move(*change));
    }
    return changes;
}

// Update.
void Form1::Command3_Click()
{
    if (mayChangeLoaded(u"Update"_s)) {
        storeUpdate(u"Update"_s);
    }
}

// Writes the form over the loaded entry, and lets its row show what was typed.
void Form1::storeUpdate(const QString &verb)
{
    const LogEntry stored = log().entry(m_selected);
    LogEntry changed = m_form->entryOver(stored);
    SiteChanges sites = siteOfForm();
    measure(changed, sites);
    const auto shown = qScopeGuard([&] {
        m_rows.setTyped(m_selected, GridColumn::DateTime, m_form->dateTimeText());
        m_rows.setTyped(m_selected, GridColumn::Notes, changed.notes);
        if (const int row = m_ui->Grid1->rowOfEntry(m_selected); row > 0) {
            m_ui->Grid1->setRow(row);
        }
        m_form->setFrequency(changed.freq);
        m_form->setState(EntryForm::State::AtRest);
        tellHidden(changeName(u"Updated"_s, changed), m_selected);
    });
    m_document.commit(
        {changeName(verb, changed), LogChange::between(m_selected, stored, changed), std::move(sites)},
        LogDocument::Saving::WithSites);
}

// Clone.
void Form1::Command9_Click()
{
    m_selected = -1;
    m_form->setDateTime(generalText(UtcNow()));
    m_form->clearUid();
    m_form->settle();
    m_form->setState(EntryForm::State::New);
    m_form->focusFrequency();
}

// Delete.
void Form1::Command15_Click()
{
    if (deleteChosen() || !mayChangeLoaded(u"Delete"_s)) {
        return;
    }
    const LogEntry stored = log().entry(m_selected);
    const auto shown = qScopeGuard([&] {
        if (const int row = m_ui->Grid1->rowOfEntry(m_selected); row > 0) {
            m_ui->Grid1->setRow(row);
        }
        m_form->setState(EntryForm::State::AtRest);
        m_form->setYellow(false);
        tell(changeName(u"Deleted"_s, stored));
    });
    LogChange change;
    change.setField(m_selected, stored, LogField::PiCode, deletedPiCode.toString());
    m_document.commit({changeName(u"Delete"_s, stored), change, {}});
}

// Asks first when the marked row is not the one of the reception in the form.
bool Form1::mayChangeLoaded(const QString &verb)
{
    const LogEntry &entry = log().entry(m_selected);
    const int row = m_ui->Grid1->row();
    if (row > 0 && m_ui->Grid1->entryOfRow(row) == m_selected) {
        return true;
    }
    const QStringList parts {generalText(entry.dateTime), entry.freq, entry.piCode, entry.rdsName,
        cellText(entry, GridColumn::Notes)};
    return askYesNo(this,
        u"The reception in the form is not the marked row. It is\n\n%1\n\n%2 this reception?"_s.arg(
            parts.join(u"  "_s), verb),
        verb);
}

// Quick Add (F5).
void Form1::Command14_Click()
{
    if (openWindow<Dialog1>(*this)) {
        return;
    }
    auto *window = new Dialog1(m_options.regional.codePage, this);
    window->offer(m_form->frequency(), m_form->piCode());
    connect(window, &Dialog1::quickAdd, this,
        [this](const QString &freq, const QString &piCode, const QString &name) {
            guarded(this, [&] { quickAdd(freq, piCode, name); });
        });
    window->show();
    window->raise();
    window->activateWindow();
}

void Form1::quickAdd(const QString &freq, const QString &piCode, const QString &rdsName)
{
    m_form->offerCancel(false);
    Command2_Click();
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    m_form->setFrequency(typedField(LogField::Freq, freq.trimmed()));
    m_form->setPiCode(piCode.trimmed());
    m_form->setRdsName(rdsName);
    m_form->setCountry(u"TBD"_s);
    addEntry(u"Quick Add"_s);
}

// Ctrl+S, or Enter in a field: whichever of Add and Update is possible.
void Form1::clickAddOrUpdate()
{
    const bool editing = m_form->state() == EntryForm::State::Editing;
    m_form->button(editing ? u"Command3"_s : u"Command1"_s)->click();
}

// Esc: a new entry is cancelled, a loaded one gets its values back.
void Form1::escapePressed()
{
    if (m_form->state() == EntryForm::State::Editing) {
        m_form->clearPosition();
        m_form->show(log().entry(m_selected));
    } else if (m_form->state() == EntryForm::State::New) {
        m_form->offerCancel(false);
        m_form->setState(EntryForm::State::AtRest);
    }
}

} // namespace quillon
