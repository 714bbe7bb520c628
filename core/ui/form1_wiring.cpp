#include "core/ui/form1.h"

#include "core/ui/results.h"
#include "stats/ui/logstats.h"
#include "ui/guard.h"
#include "ui/shortcutfirst.h"
#include "ui/statustext.h"
#include "ui_form1.h"

#include <QAbstractButton>
#include <QFileInfo>
#include <QShortcut>

#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

void Form1::on(QAbstractButton *button, void (Form1::*handler)())
{
    connect(button, &QAbstractButton::clicked, this, [this, handler] {
        // Nothing is done with another date than the one that was typed.
        m_copyTold = false;
        if (!m_form->takeRefusal() && m_form->checkFocusedField()) {
            guarded(this, [this, handler] { (this->*handler)(); });
        }
    });
}

void Form1::on(QAction *action, void (Form1::*handler)())
{
    connect(action, &QAction::triggered, this, [this, handler] {
        m_copyTold = false;
        guarded(this, [this, handler] { (this->*handler)(); });
    });
}

void Form1::wireEntryForm()
{
    const std::pair<QString, void (Form1::*)()> handlers[] = {
        {u"Command1"_s, &Form1::Command1_Click},
        {u"Command2"_s, &Form1::Command2_Click},
        {u"Command3"_s, &Form1::Command3_Click},
        {u"Command4"_s, &Form1::Command4_Click},
        {u"Command5"_s, &Form1::Command5_Click},
        {u"Command6"_s, &Form1::Command6_Click},
        {u"Command7"_s, &Form1::Command7_Click},
        {u"Command8"_s, &Form1::Command8_Click},
        {u"Command9"_s, &Form1::Command9_Click},
        {u"Command10"_s, &Form1::Command10_Click},
        {u"Command11"_s, &Form1::Command11_Click},
        {u"Command12"_s, &Form1::Command12_Click},
        {u"Command13"_s, &Form1::Command13_Click},
        {u"Command14"_s, &Form1::Command14_Click},
        {u"Command15"_s, &Form1::Command15_Click},
    };
    for (const auto &[name, handler] : handlers) {
        on(m_form->button(name), handler);
    }
    connect(m_form, &EntryForm::enterPressed, this, [this] { clickAddOrUpdate(); });
    connect(m_form, &EntryForm::escapePressed, this, [this] { guarded(this, [this] { escapePressed(); }); });
    connect(m_ui->Grid1, &Grid::rowChosen, this,
        [this](int row) { guarded(this, [this, row] { Grid1_RowSelect(row); }); });
    connect(m_ui->Grid1, &Grid::chosenChanged, this,
        [this] { m_form->setChosenCount(m_ui->Grid1->chosenCount()); });
    connect(m_ui->Grid1, &Grid::headerClicked, this,
        [this](int column) { guarded(this, [this, column] { Grid1_HeaderClick(column); }); });
    wireResultsMenu();
    connect(m_results, &Results::receptionActivated, this,
        [this](int line) { guarded(this, [this, line] { List1_DblClick(line); }); });
    connect(m_results, &Results::stationActivated, this,
        [this](int line) { guarded(this, [this, line] { List2_DblClick(line); }); });
    connect(m_results, &Results::candidateActivated, this,
        [this](int candidate) { guarded(this, [this, candidate] { candidates_DblClick(candidate); }); });
}

void Form1::wireMenus()
{
    on(m_ui->menuFileBackups, &Form1::menuFileBackups_Click);
    on(m_ui->MenuFileExit, &Form1::MenuFileExit_Click);
    on(m_ui->menuEditUndo, &Form1::menuEditUndo_Click);
    on(m_ui->menuEditRedo, &Form1::menuEditRedo_Click);
    on(m_ui->menuEditCopy, &Form1::menuEditCopy_Click);
    on(m_ui->menuEditMany, &Form1::menuEditMany_Click);
    on(m_ui->menuViewReset, &Form1::menuViewReset_Click);
    on(m_ui->menuToolsFind, &Form1::menuToolsFind_Click);
    on(m_ui->menuToolsFindAgain, &Form1::menuToolsFindAgain_Click);
    on(m_ui->menuFMListUploadLogs, &Form1::menuFMListUploadLogs_Click);
    on(m_ui->menuFMListAutoSearch, &Form1::menuFMListAutoSearch_Click);
    on(m_ui->menuFMLSearchPI, &Form1::menuFMLSearchPI_Click);
    on(m_ui->menuFMLAutoUpdateViewLog, &Form1::menuFMLAutoUpdateViewLog_Click);
    on(m_ui->menuFMLPropMap, &Form1::menuFMLPropMap_Click);
    on(m_ui->menuFMLYouProp, &Form1::menuFMLYouProp_Click);
    on(m_ui->menuHelpOnlineHelp, &Form1::menuHelpOnlineHelp_Click);
    on(m_ui->menuImportFile, &Form1::menuImportFile_Click);
    on(m_ui->menuImportRDSSpyLog, &Form1::menuImportRDSSpyLog_Click);
    on(m_ui->menuImportRDSDXLogCnv, &Form1::menuImportRDSDXLogCnv_Click);
    on(m_ui->menuImportStations, &Form1::menuImportStations_Click);
    on(m_ui->menuExportGoogleTX, &Form1::menuExportGoogleTX_Click);
    on(m_ui->menuExportGoogleLog, &Form1::menuExportGoogleLog_Click);
    on(m_ui->menuExportWebPage, &Form1::menuExportWebPage_Click);
    on(m_ui->menuExportEmail, &Form1::menuExportEmail_Click);
    on(m_ui->menuExportShown, &Form1::menuExportShown_Click);
    on(m_ui->menuToolsConverter, &Form1::menuToolsConverter_Click);
    on(m_ui->menuStats, &Form1::menuStats_Click);
    on(m_ui->menuStatsCollection, &Form1::menuStatsCollection_Click);
    on(m_ui->menuSetup, &Form1::menuSetup_Click);
    on(m_ui->menuAbout, &Form1::menuAbout_Click);
    m_ui->menuEditRedo->setShortcuts({QKeySequence(u"Ctrl+Shift+Z"_s), QKeySequence(u"Ctrl+Y"_s)});

    new ShortcutFirst(*this, {m_ui->menuExportShown->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_K)});

    const auto shortcut = [this](const QKeySequence &keys, const QString &button) {
        connect(new QShortcut(keys, this), &QShortcut::activated, m_form->button(button),
            &QAbstractButton::click);
    };
    shortcut(Qt::Key_F5, u"Command14"_s);
    shortcut(Qt::CTRL | Qt::Key_N, u"Command2"_s);
    connect(new QShortcut(Qt::CTRL | Qt::Key_S, this), &QShortcut::activated, this,
        [this] { clickAddOrUpdate(); });
}

void Form1::wireDocument()
{
    connect(&m_document, &LogDocument::changed, this, &Form1::documentChanged);
    connect(&m_document, &LogDocument::stepsChanged, this, &Form1::showSteps);
    connect(&m_document, &LogDocument::copyKept, this, [this](const QString &path) {
        m_status->setText(u"The file that was there before is kept as "_s + QFileInfo(path).fileName());
        m_copyTold = true;
    });
    showSteps();
}

} // namespace quillon
