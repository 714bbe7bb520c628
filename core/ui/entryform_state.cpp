#include "core/ui/entryform.h"

#include "ui_entryform.h"

#include <QAbstractButton>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

void setBackground(QWidget *field, const QColor &background, const QColor &text)
{
    QPalette palette;
    if (background.isValid()) {
        for (const QPalette::ColorRole role : {QPalette::Base, QPalette::Button}) {
            palette.setColor(role, background);
        }
        for (const QPalette::ColorRole role :
            {QPalette::Text, QPalette::ButtonText, QPalette::PlaceholderText}) {
            palette.setColor(role, text);
        }
    }
    field->setPalette(palette);
}

} // namespace

QList<QWidget *> EntryForm::editableFields() const
{
    return {m_ui->Text1, m_ui->Text2, m_ui->Text3, m_ui->Combo3, m_ui->Text5, m_ui->Text6, m_ui->Text7,
        m_ui->Text8, m_ui->Text9, m_ui->Text10, m_ui->Combo1, m_ui->Combo2};
}

// At rest the fields that also serve the searches stay enabled.
void EntryForm::setState(State state)
{
    m_state = state;
    const bool open = state != State::AtRest;
    if (open) {
        showBadge({});
    }
    for (QWidget *widget : std::initializer_list<QWidget *> {m_ui->Text2, m_ui->Text3, m_ui->Text6,
             m_ui->Text7, m_ui->Text10, m_ui->Combo1, m_ui->Combo2, m_ui->Command5, m_ui->Command11}) {
        widget->setEnabled(open);
    }
    m_ui->Command1->setEnabled(state == State::New);
    for (QWidget *button : {m_ui->Command3, m_ui->Command9}) {
        button->setEnabled(state == State::Editing);
    }
    showLeg();
    offerDelete();
}

void EntryForm::setChosenCount(int count)
{
    m_chosenCount = count;
    offerDelete();
    m_ui->chosenCount->setText(count > 1 ? u"%1 chosen"_s.arg(count) : QString());
    m_ui->chosenCount->setVisible(count > 1);
}

// The one in the form, or all that are chosen.
void EntryForm::offerDelete()
{
    m_ui->Command15->setEnabled(m_state == State::Editing || m_chosenCount > 1);
}

void EntryForm::showBadge(const QString &text)
{
    m_ui->newBadge->setText(text);
    m_ui->newBadge->setVisible(!text.isEmpty());
}

void EntryForm::setYellow(bool yellow)
{
    const QList<QWidget *> fields = editableFields();
    for (QWidget *field : fields) {
        setBackground(field, yellow ? QColor(255, 255, 0) : QColor(), Qt::black);
    }
}

void EntryForm::offerCancel(bool offered)
{
    m_cancelOffered = offered;
    m_ui->Command2->setText(offered ? u"Cancel"_s : u"Ne&w"_s);
}

QStringList EntryForm::texts() const
{
    return {m_ui->Text9->text(), m_ui->Text1->text(), m_ui->Text8->text(), m_ui->Text2->text(),
        m_ui->Combo2->currentText(), m_ui->uid->text(), m_ui->Combo3->currentText(), m_ui->Text5->text(),
        m_ui->Text6->text(), m_ui->Text7->text(), m_ui->Text10->text()};
}

bool EntryForm::hasChanges() const
{
    return m_state != State::AtRest && m_edited
        && (texts() != m_settled || m_ui->Text3->document()->isModified());
}

void EntryForm::settle()
{
    m_settled = texts();
    m_edited = false;
}

EntryForm::Draft EntryForm::draft() const
{
    return {m_state, texts(), notes(), m_ui->Text3->document()->isModified(), m_ui->Text9->isModified(),
        m_cancelOffered};
}

void EntryForm::restore(const Draft &draft)
{
    setState(draft.state);
    offerCancel(draft.cancelOffered);
    qsizetype next = 0;
    for (QLineEdit *field : {m_ui->Text9, m_ui->Text1, m_ui->Text8, m_ui->Text2, m_ui->Combo2->lineEdit(),
             m_ui->uid, m_ui->Combo3->lineEdit(), m_ui->Text5, m_ui->Text6, m_ui->Text7, m_ui->Text10}) {
        field->setText(draft.texts.value(next++));
    }
    listSites(country());
    showNotes(draft.notes);
    m_ui->Text3->document()->setModified(draft.notesTouched);
    m_ui->Text9->setModified(draft.frequencyTouched);
    tellStored();
    m_edited = true;
}

QAbstractButton *EntryForm::button(const QString &name) const
{
    return findChild<QAbstractButton *>(name);
}

void EntryForm::focusFrequency()
{
    m_ui->Text9->setFocus(Qt::OtherFocusReason);
    m_ui->Text9->selectAll();
}

} // namespace quillon
