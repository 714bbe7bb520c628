#pragma once

#include "core/ui/form1.h"
#include "ui/grid.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QThread>
#include <QTimer>

#include <ctime>
#include <functional>
#include <sys/resource.h>

// What measures the commands of the main window.

namespace quillon::bench {

using namespace Qt::StringLiterals;

/// Milliseconds of processor time of the whole process, and how many of them the kernel took.
struct Times
{
    double all = 0;
    double kernel = 0;
};

[[nodiscard]] inline Times processorTimes()
{
    timespec now {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    rusage usage {};
    getrusage(RUSAGE_SELF, &usage);
    return {static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6,
        static_cast<double>(usage.ru_stime.tv_sec) * 1e3 + static_cast<double>(usage.ru_stime.tv_usec) / 1e3};
}

/// Everything that is due, drawing included, is done.
inline void settle()
{
    for (int pass = 0; pass < 3; ++pass) {
        QApplication::sendPostedEvents();
        QApplication::processEvents();
    }
}

/// What some work takes, drawing included.
[[nodiscard]] inline Times measured(const std::function<void()> &work)
{
    settle();
    const Times before = processorTimes();
    work();
    settle();
    const Times after = processorTimes();
    return {after.all - before.all, after.kernel - before.kernel};
}

/// Closes every box that waits for an answer by Enter, after typing what is wanted of it.
class Answering : public QObject
{
public:
    QString text; ///< what is typed; empty for what the box offers
    QString yes; ///< how the question begins that is answered with Yes; empty for none

    Answering()
    {
        connect(&m_timer, &QTimer::timeout, this, [this] {
            auto *box = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            if (!box) {
                return;
            }
            auto *question = qobject_cast<QMessageBox *>(box);
            if (question && !yes.isEmpty() && question->text().startsWith(yes)) {
                question->button(QMessageBox::Yes)->click();
                return;
            }
            if (auto *edit = box->findChild<QLineEdit *>(); edit && !text.isEmpty()) {
                edit->setText(text);
            }
            box->accept();
        });
        m_timer.start(1);
    }

private:
    QTimer m_timer;
};

/// The real main window on a directory, its controls found by their names.
class Window
{
public:
    /// Daily backups are made when there is a folder for them.
    explicit Window(const QString &directory, const QString &backupFolder = {})
        : m_form({.applicationDir = directory,
            .suppliedDir = {},
            .regional = {CodePage(1252), NumberFormat(), MonthNames::of(QLocale::c())},
            .backupFolder = backupFolder})
    {
        m_form.Form_Load();
        m_form.show();
        settle();
    }
    /// What is put off until the window is there is done.
    static void rest()
    {
        constexpr unsigned long longEnough = 300;
        QThread::msleep(longEnough);
        settle();
    }
    template<typename Control>
    [[nodiscard]] Control &find(const QString &name)
    {
        auto *control = m_form.findChild<Control *>(name);
        if (!control) {
            qFatal("the window has no %s", qPrintable(name));
        }
        return *control;
    }
    [[nodiscard]] Form1 &form() { return m_form; }
    void click(const QString &name) { find<QAbstractButton>(name).click(); }
    void write(const QString &name, const QString &text) { find<QLineEdit>(name).setText(text); }
    void trigger(const QString &name) { find<QAction>(name).trigger(); }
    [[nodiscard]] Grid &grid() { return find<Grid>(u"Grid1"_s); }
    /// A new reception stands in the form, not added yet.
    void typeReception()
    {
        click(u"Command2"_s);
        write(u"Text9"_s, u"99.9"_s);
        write(u"Text1"_s, u"ABCD"_s);
        write(u"Text8"_s, u"BENCH"_s);
        find<QComboBox>(u"Combo3"_s).setEditText(u"Germany"_s);
    }
    /// A reception is loaded and changed, not stored yet.
    void typeOver(int row)
    {
        chooseRow(row);
        write(u"Text6"_s, u"5555"_s);
    }
    void chooseRow(int row)
    {
        grid().setRow(row);
        Q_EMIT grid().rowChosen(row);
    }

private:
    Form1 m_form;
};

} // namespace quillon::bench
