#include "core/ui/form1.h"

#include "core/linebreaks.h"
#include "core/ui/dialog1.h"
#include "ui/guard.h"
#include "ui/messages.h"
#include "ui/openwindow.h"
#include "ui_form1.h"

#include <QApplication>

#include <exception>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView newCaption = u"Ne&w";

// The texts of a multi-line box end their lines with CR LF in the log.
QString withLineEnds(QString text)
{
    return text.replace(QChar::ParagraphSeparator, "\r\n"_L1).replace(QChar::LineSeparator, "\r\n"_L1);
}

// A line of the files is one entry, whatever a field was filled with.
QString fieldText(const QString &text)
{
    return withoutLineBreaks(text);
}

} // namespace

QString Form1::utcNowText() const
{
    return generalText(UtcNow());
}

void Form1::showNotes(const QString &notes)
{
    m_ui->Text3->setPlainText(notes);
    m_shownNotes = notes;
}

// Notes that nobody touched are as they were; the text box knows one kind of line end.
QString Form1::notesOfForm() const
{
    const QTextDocument &notes = *m_ui->Text3->document();
    return notes.isModified() ? withLineEnds(notes.toRawText()) : m_shownNotes;
}

LogEntry Form1::entryOfForm() const
{
    return {fieldText(m_ui->Text1->text()),
        toDateTime(m_ui->Text2->text(), m_options.regional.months, u"The field Date / Time"_s),
        fieldText(m_ui->Combo2->currentText()), fieldText(m_ui->Text9->text()),
        fieldText(m_ui->Text5->text()), fieldText(m_ui->Combo3->currentText()), notesOfForm(),
        fieldText(m_ui->Text8->text()), fieldText(m_ui->Text6->text()), {}, {}, fieldText(m_ui->uid->text())};
}

void Form1::addTransmitterOfForm()
{
    m_transmittersUnsaved = true;
    m_transmitters.add(
        {fieldText(m_ui->Text5->text()).trimmed(), fieldText(m_ui->Combo3->currentText()).trimmed(),
            fieldText(m_ui->Text7->text()), fieldText(m_ui->Text10->text()), {}});
}

// New, or Cancel while a new entry is typed.
void Form1::Command2_Click()
{
    if (m_ui->Command2->text() != newCaption) {
        m_ui->Command2->setText(newCaption.toString());
        lockEntryForm();
        return;
    }
    m_ui->Command2->setText(u"Cancel"_s);
    m_selected = -1;
    m_ui->Text2->setText(utcNowText());
    // Freq, Country and Prop stay, so that a run of stations needs little typing.
    for (QLineEdit *field :
        {m_ui->Text1, m_ui->Text6, m_ui->Text7, m_ui->Text10, m_ui->Text8, m_ui->Text5, m_ui->uid}) {
        field->clear();
    }
    showNotes({});
    unlockEntryForm();
    m_ui->Command3->setEnabled(false);
    m_ui->Command9->setEnabled(false);
    m_ui->Command15->setEnabled(false);
}

// Add.
void Form1::Command1_Click()
{
    if (m_ui->Text9->text().isEmpty()) {
        showMessage(this, u"Frequency Empty"_s);
        return;
    }
    if (m_ui->Text1->text().isEmpty() && m_ui->Text8->text().isEmpty()) {
        showMessage(this, u"PI Code and RDS Name Empty"_s);
        return;
    }
    if (m_ui->Combo3->currentText().isEmpty()) {
        showMessage(this, u"Country Empty"_s);
        return;
    }
    std::exception_ptr failure;
    const qint32 before = m_log.count();
    try {
        m_log.AddEntry(entryOfForm());
    } catch (const RuntimeError &) {
        if (m_log.count() == before) {
            throw;
        }
        // The log could not grow behind the entry, which is in it.
        failure = std::current_exception();
    }
    // The form shows no entry any more: what was loaded before must not be changed through it.
    m_selected = -1;
    m_loadedRow = 0;
    addTransmitterOfForm();
    lockEntryForm();
    try {
        saveLogbook();
        saveTransmitterList();
    } catch (const RuntimeError &) {
        // The entry is in the log all the same: it is shown, and the next save writes it.
        failure = std::current_exception();
    }
    populateGrid();
    m_ui->Command2->setText(newCaption.toString());
    normalEntryForm();
    m_ui->Grid1->setTopRow(m_ui->Grid1->rows() - 1);
    if (failure) {
        std::rethrow_exception(failure);
    }
}

// Update.
void Form1::Command3_Click()
{
    LogEntry changed = entryOfForm();
    const LogEntry &entry = m_log.entry(m_selected);
    changed.dist = entry.dist;
    changed.fmlist = entry.fmlist;
    if (!m_ui->Text3->document()->isModified()) {
        // The text box knows one kind of line end and of blank: notes that nobody touched keep theirs.
        changed.notes = entry.notes;
    }
    m_log.changeEntry(m_selected, [&](LogEntry &loaded) { loaded = changed; });
    rewriteRow(rowOfLoadedEntry());
    addTransmitterOfForm();
    lockEntryForm();
    saveLogbook();
    saveTransmitterList();
}

// Clone.
void Form1::Command9_Click()
{
    m_selected = -1;
    m_ui->Text2->setText(utcNowText());
    m_ui->uid->clear();
    unlockEntryForm();
    m_ui->Command3->setEnabled(false);
    m_ui->Command9->setEnabled(false);
    m_ui->Command15->setEnabled(false);
}

// Delete.
void Form1::Command15_Click()
{
    m_log.changeEntry(m_selected, [](LogEntry &entry) { entry.piCode = deletedPiCode.toString(); });
    const int row = rowOfLoadedEntry();
    m_ui->Grid1->setText(row, GridColumn::PiCode, deletedPiCode.toString());
    m_ui->Grid1->setRow(row);
    lockEntryForm();
    normalEntryForm();
    saveLogbook();
}

// Quick Add (F5).
void Form1::Command14_Click()
{
    if (auto *open = openWindow<Dialog1>(*this)) {
        open->offer(m_ui->Text9->text(), m_ui->Text1->text());
        return;
    }
    auto *window = new Dialog1(this);
    window->offer(m_ui->Text9->text(), m_ui->Text1->text());
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
    m_ui->Command2->setText(newCaption.toString());
    Command2_Click();
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    m_ui->Text9->setText(freq.trimmed());
    m_ui->Text1->setText(piCode.trimmed());
    m_ui->Text8->setText(rdsName);
    m_ui->Combo3->setEditText(u"TBD"_s);
    Command1_Click();
}

// Ctrl+S: whichever of Add and Update is possible.
void Form1::addOrUpdate()
{
    if (m_ui->Command1->isEnabled()) {
        m_ui->Command1->click();
    } else if (m_ui->Command3->isEnabled()) {
        m_ui->Command3->click();
    }
}

// Enter in a field of a new entry adds it.
void Form1::enterPressed()
{
    if (m_ui->Command1->isEnabled()) {
        m_ui->Command1->click();
    }
}

// A button pressed by a key leaves the focus in the field, whose check is due all the same. False when the
// field was wrong.
bool Form1::checkFocusedField()
{
    QWidget *field = focusWidget();
    if (!field || !editableFields().contains(field)) {
        return true;
    }
    if (field == m_ui->Text2 && !parseDateTime(m_ui->Text2->text(), m_options.regional.months)) {
        Text2_LostFocus();
        return false;
    }
    fieldLostFocus(field);
    return true;
}

} // namespace quillon
