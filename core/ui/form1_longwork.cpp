#include "core/ui/form1_longwork.h"

#include "ui_form1.h"

#include <QApplication>
#include <QPushButton>
#include <QTimer>

#include <exception>

namespace quillon {

using namespace Qt::StringLiterals;

Form1::LongWork::LongWork(Form1 &window, const QString &progressFormat)
    : m_window(window)
    , m_progress(*window.m_progress, progressFormat)
    , m_focus(window.focusWidget())
{
    Ui::Form1 &ui = *window.m_ui;
    disable(ui.formPane);
    disable(ui.Grid1);
    // The other windows that add to the log, or say which log it is.
    for (const QString &name : {u"Dialog1"_s, u"editMany"_s, u"importFile"_s, u"importRDSSpy"_s,
             u"rdsdxlist"_s, u"Form2"_s, u"fileBackups"_s}) {
        const QList<QWidget *> open = window.findChildren<QWidget *>(name, Qt::FindDirectChildrenOnly);
        for (QWidget *child : open) {
            disable(child);
        }
    }
    for (QAction *action : {ui.menuFileBackups, ui.menuEditMany, ui.menuImportFile, ui.menuImportRDSSpyLog,
             ui.menuImportRDSDXLogCnv, ui.menuImportStations, ui.menuExportEmail, ui.menuFMListUploadLogs,
             ui.menuFMListAutoSearch, ui.menuFMLSearchPI, ui.menuToolsFind, ui.menuSetup}) {
        if (action->isEnabled()) {
            action->setEnabled(false);
            m_actions.emplace_back(action);
        }
    }
    window.m_longWork = true;
    window.showSteps();
    QPushButton &stop = *window.m_autoStop;
    stop.setEnabled(true);
    stop.show();
    QObject::connect(&stop, &QPushButton::clicked, &stop, [this, &stop] {
        m_stopped = true;
        stop.setEnabled(false);
    });
}

Form1::LongWork::~LongWork()
{
    if (std::uncaught_exceptions() == 0) {
        QApplication::processEvents();
    }
    m_window.m_autoStop->disconnect();
    m_window.m_autoStop->hide();
    for (const QPointer<QWidget> &widget : m_widgets) {
        if (widget) {
            widget->setEnabled(true);
        }
    }
    for (const QPointer<QAction> &action : m_actions) {
        if (action) {
            action->setEnabled(true);
        }
    }
    m_window.m_longWork = false;
    m_window.showSteps();
    // The step of this work ends after it.
    QTimer::singleShot(0, &m_window, [&window = m_window] { window.logWaiting(); });
    if (m_focus) {
        m_focus->setFocus();
    }
}

void Form1::LongWork::disable(QWidget *widget)
{
    if (widget->isEnabled()) {
        widget->setEnabled(false);
        m_widgets.emplace_back(widget);
    }
}

void Form1::LongWork::setProgress(int done, int count)
{
    m_window.m_progress->setRange(0, count);
    m_window.m_progress->setValue(done);
}

} // namespace quillon
