#include "core/ui/form1.h"

#include "ui/guard.h"
#include "ui_form1.h"

#include <QFocusEvent>
#include <QShortcut>

#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

void Form1::on(QAbstractButton *button, void (Form1::*handler)())
{
    // The field was left before the press, and the wrong date in it is not yet told.
    connect(button, &QAbstractButton::pressed, this, [this] { m_pressRefused = m_dateRefused; });
    connect(button, &QAbstractButton::clicked, this, [this, handler] {
        if (mayRun()) {
            guarded(this, [this, handler] { (this->*handler)(); });
        }
    });
}

// False when the date in the form was wrong: nothing is done with another one behind the user's back.
bool Form1::mayRun()
{
    return !std::exchange(m_pressRefused, false) && checkFocusedField();
}

void Form1::on(QAction *action, void (Form1::*handler)())
{
    connect(action, &QAction::triggered, this,
        [this, handler] { guarded(this, [this, handler] { (this->*handler)(); }); });
}

void Form1::wireEntryForm()
{
    on(m_ui->Command1, &Form1::Command1_Click);
    on(m_ui->Command2, &Form1::Command2_Click);
    on(m_ui->Command3, &Form1::Command3_Click);
    on(m_ui->Command4, &Form1::Command4_Click);
    on(m_ui->Command6, &Form1::Command6_Click);
    on(m_ui->Command7, &Form1::Command7_Click);
    on(m_ui->Command8, &Form1::Command8_Click);
    on(m_ui->Command9, &Form1::Command9_Click);
    on(m_ui->Command13, &Form1::Command13_Click);
    on(m_ui->Command5, &Form1::Command5_Click);
    on(m_ui->Command11, &Form1::Command11_Click);
    on(m_ui->Command14, &Form1::Command14_Click);
    on(m_ui->Command15, &Form1::Command15_Click);

    for (QWidget *field : editableFields()) {
        field->installEventFilter(this);
    }
    for (QLineEdit *field : {m_ui->Text1, m_ui->Text2, m_ui->Text5, m_ui->Text6, m_ui->Text7, m_ui->Text8,
             m_ui->Text9, m_ui->Text10, m_ui->uid, m_ui->Combo2->lineEdit(), m_ui->Combo3->lineEdit()}) {
        connect(
            field, &QLineEdit::returnPressed, this, [this] { guarded(this, [this] { enterPressed(); }); });
    }
    connect(m_ui->Combo1, &QComboBox::activated, this, [this] { guarded(this, [this] { Combo1_Click(); }); });
    connect(m_ui->Combo3, &QComboBox::activated, this,
        [this] { guarded(this, [this] { listTransmittersForCountry(m_ui->Combo3->currentText()); }); });
    connect(m_ui->Grid1, &Grid::rowChosen, this,
        [this](int row) { guarded(this, [this, row] { Grid1_RowSelect(row); }); });
    connect(m_ui->Grid1, &Grid::headerClicked, this,
        [this](int column) { guarded(this, [this, column] { Grid1_HeaderClick(column); }); });
    connect(m_ui->List1, &ResultList::lineActivated, this,
        [this](int line) { guarded(this, [this, line] { List1_DblClick(line); }); });
    connect(m_ui->List2, &ResultList::lineActivated, this,
        [this](int line) { guarded(this, [this, line] { List2_DblClick(line); }); });
}

void Form1::wireMenus()
{
    on(m_ui->MenuFileExit, &Form1::MenuFileExit_Click);
    on(m_ui->menuToolsFind, &Form1::menuToolsFind_Click);
    on(m_ui->menuFMListUploadLogs, &Form1::menuFMListUploadLogs_Click);
    on(m_ui->menuFMListAutoSearch, &Form1::menuFMListAutoSearch_Click);
    on(m_ui->menuFMLSearchPI, &Form1::menuFMLSearchPI_Click);
    on(m_ui->menuFMLAutoUpdateViewLog, &Form1::menuFMLAutoUpdateViewLog_Click);
    on(m_ui->menuFMLPropMap, &Form1::menuFMLPropMap_Click);
    on(m_ui->menuFMLYouProp, &Form1::menuFMLYouProp_Click);
    on(m_ui->menuHelpOnlineHelp, &Form1::menuHelpOnlineHelp_Click);
    on(m_ui->menuImportRDSSpyLog, &Form1::menuImportRDSSpyLog_Click);
    on(m_ui->menuImportRDSDXLogCnv, &Form1::menuImportRDSDXLogCnv_Click);
    on(m_ui->menuExportGoogleTX, &Form1::menuExportGoogleTX_Click);
    on(m_ui->menuExportGoogleLog, &Form1::menuExportGoogleLog_Click);
    on(m_ui->menuExportWebPage, &Form1::menuExportWebPage_Click);
    on(m_ui->menuExportEmail, &Form1::menuExportEmail_Click);
    on(m_ui->Command10, &Form1::Command10_Click);
    on(m_ui->menuToolsConverter, &Form1::menuToolsConverter_Click);
    on(m_ui->menuStats, &Form1::menuStats_Click);
    on(m_ui->Command12, &Form1::Command12_Click);
    on(m_ui->menuSetup, &Form1::menuSetup_Click);
    on(m_ui->menuAbout, &Form1::menuAbout_Click);

    const auto shortcut = [this](const QKeySequence &keys, auto work) {
        auto *made = new QShortcut(keys, this);
        connect(made, &QShortcut::activated, this, [this, work] { guarded(this, work); });
    };
    shortcut(Qt::Key_F5, [this] { Command14_Click(); });
    shortcut(Qt::CTRL | Qt::Key_N, [this] { m_ui->Command2->click(); });
    shortcut(Qt::CTRL | Qt::Key_S, [this] { addOrUpdate(); });
}

bool Form1::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusOut) {
        const auto reason = static_cast<QFocusEvent *>(event)->reason();
        // Another window or a drop-down list takes the focus only for a while.
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason
            && reason != Qt::MenuBarFocusReason) {
            guarded(this, [this, watched] { fieldLostFocus(watched); });
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

} // namespace quillon
