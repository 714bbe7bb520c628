#include "import/ui/importrdsspy.h"

#include "ui/busypointer.h"
#include "ui/messages.h"
#include "ui/widgetstate.h"

#include "ui_importrdsspy.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <algorithm>
#include <initializer_list>

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

// The progress shown in place of the list, every control disabled and the window kept open, as long as it
// lives.
class importRDSSpy::Importing
{
public:
    explicit Importing(importRDSSpy &window)
        : m_window(window)
        , m_ui(*window.ui)
    {
        m_window.m_importing = true;
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
        m_ui.List1->setFocus();
        m_window.m_importing = false;
    }
    Importing(const Importing &) = delete;
    Importing &operator=(const Importing &) = delete;

private:
    void enable(bool enabled)
    {
        for (QWidget *control :
            std::initializer_list<QWidget *> {m_ui.fields, m_ui.choices, m_ui.Command3, m_ui.Command4}) {
            control->setEnabled(enabled);
        }
    }

    importRDSSpy &m_window;
    Ui::importRDSSpy &m_ui;
};

// Import: adds the selected rows to the log.
void importRDSSpy::Command3_Click()
{
    {
        const BusyPointer busy;
        m_config.changeConfig(u"TIME_OFFSET="_s, ui->Text2->text());
        const Importing importing(*this);
        importSelected();
        saveRest();
    }
    showMessage(this, u"Imported"_s);
    close();
}

void importRDSSpy::importSelected()
{
    constexpr qint64 responsiveMs = 50;
    const int total = selectedCount();
    int done = 0;
    ui->progressBar->setRange(0, std::max(total, 1));
    ui->progressBar->setValue(0);
    QElapsedTimer sinceEvents;
    sinceEvents.start();
    for (int row = 0; row < ui->List1->count(); ++row) {
        ui->List1->setListIndex(row);
        if (isMarked(ui->List1->text(row))) {
            continue;
        }
        try {
            importRow(row);
        } catch (const AddedNotSaved &error) {
            throw failedAt(row, done, total, error, true);
        } catch (const RuntimeError &error) {
            throw failedAt(row, done, total, error, false);
        }
        ++done;
        showQuietly(*ui->progressBar, done);
        Q_EMIT progress(done, total);
        if (sinceEvents.elapsed() >= responsiveMs) {
            QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
            sinceEvents.restart();
        }
    }
}

void importRDSSpy::importRow(int row)
{
    m_addEntry(
        rdsSpyReception(ui->List1->text(row), ui->Text1->text(), ui->Text2->text(), m_regional.months));
}

// What an import that failed before has left in the log alone must be on the disk before this one is done.
// When it cannot be, nothing is selected any more, so that nothing is added twice.
void importRDSSpy::saveRest()
{
    try {
        m_saveRest();
    } catch (const RuntimeError &error) {
        Command2_Click();
        throw RuntimeError(error.name(),
            error.doing()
                + u"\nAll receptions are in the log, but not all on the disk. Import tries again to save them."_s);
    }
}

// The rows that are in the log already are deselected, so that Import can go on with the rest.
RuntimeError importRDSSpy::failedAt(int row, int done, int total, const RuntimeError &error, bool isInLog)
{
    const QString line = ui->List1->text(row);
    QString doing = u"Importing reception %1 of %2, \"%3\": %4"_s.arg(
        QString::number(done + 1), QString::number(total), QString(line).replace(u'\t', u' '), error.doing());
    if (done > 0 || isInLog) {
        QStringList all = lines();
        std::transform(all.begin(), all.begin() + row + (isInLog ? 1 : 0), all.begin(), marked);
        std::ranges::sort(all);
        setLines(all);
        ui->List1->setListIndex(static_cast<int>(all.indexOf(isInLog ? marked(line) : line)));
    }
    if (isInLog) {
        doing += u"\nIt is in the log, and not selected any more: Import or the next save writes it."_s;
    }
    if (done > 0) {
        doing += u"\nThe %1 before it are in the log, and not selected any more."_s.arg(done);
    }
    return {error.name(), doing};
}

} // namespace quillon
