#pragma once

#include "live/autolog.h"

#include <QDialog>

#include <memory>

namespace quillon {

namespace Ui {
class autoLog;
}

/// Automatic Logging: when a station is logged without a key.
class AutoLogDialog : public QDialog
{
    Q_OBJECT

public:
    AutoLogDialog(const AutoLogRules &rules, bool isLearning, QWidget *parent);
    ~AutoLogDialog() override;

    /// More locals, learnt while the dialog is open.
    void addLocals(const QList<Local> &locals);

Q_SIGNALS:
    /// OK was pressed.
    void rulesChosen(const quillon::AutoLogRules &rules);
    /// The locals are to be learnt in the next ten minutes.
    void learnLocals();

private:
    void OKButton_Click();
    void autoLogLearn_Click();

    std::unique_ptr<Ui::autoLog> m_ui;
};

} // namespace quillon
