#include "core/ui/form1.h"

#include "ui/messages.h"
#include "ui/statustext.h"
#include "ui_form1.h"

#include <QScopeGuard>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

void showStep(QAction &action, const QString &verb, const QString &name, bool possible)
{
    // Names come from the log: an "&" in them is no mnemonic.
    action.setText(name.isEmpty() ? verb : QString(verb + u' ' + QString(name).replace(u'&', u"&&"_s)));
    action.setEnabled(possible && !name.isEmpty());
}

} // namespace

void Form1::showSteps()
{
    showStep(*m_ui->menuEditUndo, u"&Undo"_s, m_document.undoName(), !m_longWork);
    showStep(*m_ui->menuEditRedo, u"&Redo"_s, m_document.redoName(), !m_longWork);
}

// Undo.
void Form1::menuEditUndo_Click()
{
    undoOrRedo(m_document.undoName(), u"Undone: "_s, &LogDocument::undo);
}

// Redo.
void Form1::menuEditRedo_Click()
{
    undoOrRedo(m_document.redoName(), u"Redone: "_s, &LogDocument::redo);
}

void Form1::undoOrRedo(const QString &name, const QString &done, void (LogDocument::*work)())
{
    if (m_form->hasChanges()
        && !askYesNo(this,
            u"What is typed in the form is not stored and would be lost.\n\nGo on all the same?"_s,
            done.first(done.indexOf(u':')))) {
        return;
    }
    m_form->clear();
    closeEntry();
    // It is done even if it could not be saved.
    const auto told = qScopeGuard([&] { tellHidden(done + name, m_lastChanged); });
    m_lastChanged.clear();
    (m_document.*work)();
}

} // namespace quillon
