#include "import/ui/importrdsspy.h"

#include "ui/busypointer.h"
#include "ui/inputonlyin.h"
#include "ui/messages.h"
#include "ui/widgetstate.h"

#include "ui_importrdsspy.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <algorithm>
#include <initializer_list>
#include <vector>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

// A bar draws itself and all that is due in its window at once; here it waits for the next events.
void showQuietly(QProgressBar &bar, int value)
{
    const RedrawOff redrawOff(bar);
    bar.setValue(value);
}

} // namespace

// How far an import is.
struct importRDSSpy::Tally
{
    int total = 0;
    int imported = 0;
    std::vector<int> refused; // their rows, in order
    bool stopped = false;

    [[nodiscard]] int done() const { return imported + static_cast<int>(refused.size()); }
    [[nodiscard]] QString text() const
    {
        const QString counts = u"%1 imported, %2 refused"_s.arg(imported).arg(refused.size());
        return done() < total ? u"RDS Spy import stopped: %1, %2 left"_s.arg(counts).arg(total - done())
                              : u"RDS Spy import: "_s + counts;
    }
};

// The progress shown in place of the list, every control but Cancel disabled, every other window out of
// reach and this one kept open, as long as it lives.
class importRDSSpy::Importing
{
public:
    explicit Importing(importRDSSpy &window)
        : m_window(window)
        , m_ui(*window.ui)
        , m_inputOnlyHere(window)
        , m_cancelToolTip(m_ui.Command4->toolTip())
    {
        m_window.m_importing = true;
        m_window.m_stopWanted = false;
        m_ui.Command4->setToolTip(u"Stop after the present reception (Esc)"_s);
        enable(false);
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        m_ui.pages->setCurrentWidget(m_ui.progressPage);
        Q_EMIT m_window.importing(true);
    }
    ~Importing()
    {
        Q_EMIT m_window.importing(false);
        m_ui.pages->setCurrentWidget(m_ui.listPage);
        enable(true);
        m_ui.Command4->setToolTip(m_cancelToolTip);
        m_ui.List1->setFocus();
        m_window.m_importing = false;
    }
    Importing(const Importing &) = delete;
    Importing &operator=(const Importing &) = delete;

private:
    void enable(bool enabled)
    {
        for (QWidget *control : std::initializer_list<QWidget *> {m_ui.fields, m_ui.choices, m_ui.Command3}) {
            control->setEnabled(enabled);
        }
    }

    importRDSSpy &m_window;
    Ui::importRDSSpy &m_ui;
    InputOnlyIn m_inputOnlyHere;
    QString m_cancelToolTip;
};

// Import: adds the selected rows to the log.
void importRDSSpy::Command3_Click()
{
    Tally tally;
    {
        const BusyPointer busy;
        m_config.changeConfig(u"TIME_OFFSET="_s, ui->Text2->text());
        runImport(tally);
    }
    if (tally.stopped) {
        return;
    }
    showMessage(this, u"Imported"_s);
    close();
}

// However it ends, its sum is told.
void importRDSSpy::runImport(Tally &tally)
{
    try {
        const Importing importing(*this);
        importSelected(tally);
        saveRest(tally);
    } catch (const RuntimeError &) {
        Q_EMIT summary(tally.text());
        throw;
    }
    Q_EMIT summary(tally.text());
}

void importRDSSpy::importSelected(Tally &tally)
{
    constexpr qint64 responsiveMs = 50;
    tally.total = selectedCount();
    ui->progressBar->setRange(0, std::max(tally.total, 1));
    ui->progressBar->setValue(0);
    QElapsedTimer sinceEvents;
    sinceEvents.start();
    for (int row = 0; row < ui->List1->count(); ++row) {
        ui->List1->setListIndex(row);
        if (isMarked(ui->List1->text(row))) {
            continue;
        }
        importRow(row, tally);
        showQuietly(*ui->progressBar, tally.done());
        Q_EMIT progress(tally.done(), tally.total);
        if (sinceEvents.elapsed() >= responsiveMs) {
            QCoreApplication::processEvents();
            sinceEvents.restart();
        }
        // Where nothing is left to be done there is nothing to stop.
        if (m_stopWanted && (tally.done() < tally.total || !tally.refused.empty())) {
            tally.stopped = true;
            deselectImported(row + 1, tally);
            return;
        }
    }
}

void importRDSSpy::importRow(int row, Tally &tally)
{
    QString refusal;
    try {
        refusal = m_addEntry(
            rdsSpyReception(ui->List1->text(row), ui->Text1->text(), ui->Text2->text(), m_regional.months));
    } catch (const AddedNotSaved &error) {
        const RuntimeError failure = failedAt(row, tally, error, true);
        ++tally.imported;
        throw failure;
    } catch (const RuntimeError &error) {
        throw failedAt(row, tally, error, false);
    }
    if (refusal.isEmpty()) {
        ++tally.imported;
    } else {
        tally.refused.push_back(row);
        tellRefusal(row, refusal);
    }
}

void importRDSSpy::tellRefusal(int row, const QString &refusal)
{
    const QString line = QString(ui->List1->text(row)).replace(u'\t', u' ').trimmed();
    if (!showMessageOr(this, refusal + u'\n' + line, u"Stop &Importing"_s)) {
        m_stopWanted = true;
    }
}

// The rows before `end` that are in the log are deselected, so that Import can go on with the rest.
void importRDSSpy::deselectImported(int end, const Tally &tally)
{
    QStringList all = lines();
    for (int row = 0; row < end; ++row) {
        if (!std::ranges::binary_search(tally.refused, row)) {
            all[row] = marked(all[row]);
        }
    }
    std::ranges::sort(all);
    setLines(all);
    ui->List1->setListIndex(std::min(end, ui->List1->count() - 1));
}

// What an import that failed before has left in the log alone must be on the disk before this one is done.
// When it cannot be, no reception that is in the log is selected any more, so that none is added twice.
void importRDSSpy::saveRest(const Tally &tally)
{
    try {
        m_saveRest();
    } catch (const RuntimeError &error) {
        if (!tally.stopped) {
            deselectImported(ui->List1->count(), tally);
        }
        const QString which = tally.imported == tally.total ? u"All"_s : u"The imported"_s;
        throw RuntimeError(error.name(),
            error.doing() + u'\n' + which
                + u" receptions are in the log, but not all on the disk. Import tries again to save them."_s);
    }
}

RuntimeError importRDSSpy::failedAt(int row, const Tally &tally, const RuntimeError &error, bool isInLog)
{
    const QString line = ui->List1->text(row);
    QString doing = u"Importing reception %1 of %2, \"%3\": %4"_s.arg(QString::number(tally.done() + 1),
        QString::number(tally.total), QString(line).replace(u'\t', u' '), error.doing());
    if (tally.imported > 0 || isInLog) {
        deselectImported(row + (isInLog ? 1 : 0), tally);
        ui->List1->setListIndex(static_cast<int>(lines().indexOf(isInLog ? marked(line) : line)));
    }
    if (isInLog) {
        doing += u"\nIt is in the log, and not selected any more: Import or the next save writes it."_s;
    }
    if (tally.imported > 0) {
        doing += u"\nThe %1 before it are in the log, and not selected any more."_s.arg(tally.imported);
    }
    return {error.name(), doing};
}

} // namespace quillon
