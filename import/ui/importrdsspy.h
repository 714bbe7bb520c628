#pragma once

#include "core/config.h"
#include "import/rdsspy.h"
#include "platform/regional.h"
#include "platform/runtimeerror.h"

#include <QDialog>

#include <functional>
#include <memory>

namespace quillon {

namespace Ui {
class importRDSSpy;
}

/// A reception is in the log, but the log could not be saved.
class AddedNotSaved : public RuntimeError
{
public:
    using RuntimeError::RuntimeError;
};

/// Import RDS Spy Logs: lists the receptions that RDS Spy wrote on a day, and adds the selected ones to the
/// log through the entry form.
class importRDSSpy : public QDialog
{
    Q_OBJECT

public:
    /// Fills the entry form with a reception and presses Add. The answer is what Add says when it refuses,
    /// empty for a reception that was added. May throw a RuntimeError, which stops the import; an
    /// AddedNotSaved says that the reception is in the log all the same.
    using AddEntry = std::function<QString(const RdsSpyReception &)>;
    /// Writes what of the log is not on the disk yet, if anything; may throw a RuntimeError.
    using SaveRest = std::function<void()>;

    /// `config` and `regional` must outlive the window.
    importRDSSpy(Config &config, const Regional &regional, AddEntry addEntry, SaveRest saveRest,
        QWidget *parent = nullptr);
    ~importRDSSpy() override;

    /// Shows the window with the settings of `config`, asks for a day and lists it. Throws what populateList1
    /// throws.
    void start();

    /// Asks for a day and lists the receptions of that day in `folder`. Throws when the folder cannot be
    /// read, and, after listing the others, when one of its files is not named like a reception.
    void populateList1(const QString &folder);

Q_SIGNALS:
    /// An import begins or, whether it went well or not, is over.
    void importing(bool runs);
    /// So many of the selected receptions are in the log or refused.
    void progress(int done, int total);
    /// An import is over: how many receptions were imported, how many refused.
    void summary(const QString &text);

public Q_SLOTS:
    /// Closes the window. An import that runs stops after the present reception instead.
    void reject() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    class Importing;
    struct Tally;

    void List1_Click();
    void List1_DblClick();
    void Command1_Click();
    void Command2_Click();
    void Command3_Click();
    void Command4_Click();
    void Command5_Click();
    void Command6_Click();

    void markRow(int row);
    void unmarkRow(int row);
    void replaceRow(int row, const QString &line);
    void runImport(Tally &tally);
    void importSelected(Tally &tally);
    void importRow(int row, Tally &tally);
    void tellRefusal(int row, const QString &refusal);
    void deselectImported(int end, const Tally &tally);
    void saveRest(const Tally &tally);
    [[nodiscard]] RuntimeError failedAt(int row, const Tally &tally, const RuntimeError &error, bool isInLog);
    [[nodiscard]] QStringList lines() const;
    [[nodiscard]] int selectedCount() const;
    void setLines(const QStringList &lines);
    void showCounts();
    void showFolder(const QString &folder);

    Config &m_config;
    const Regional &m_regional;
    AddEntry m_addEntry;
    SaveRest m_saveRest;
    QString m_day; // as it was answered
    bool m_importing = false;
    bool m_stopWanted = false; // of the import that runs
    std::unique_ptr<Ui::importRDSSpy> ui;
};

} // namespace quillon
