#pragma once

#include "core/ui/form1.h"
#include "fmlist-standin/standin.h"
#include "support/dialogs.h"
#include "support/opened.h"
#include "told.h"

#include <QRandomGenerator>
#include <QString>

#include <memory>
#include <vector>

namespace quillon::soak {

/// Lays out the folder of a case: `log` with an INI and a log of so many receptions, and beside it what the
/// commands need. The stand-in of the service will be on that port of loopback.
void layOut(const QString &root, int receptions, quint16 port);

/// A port of loopback on which nobody listens.
[[nodiscard]] quint16 freePort();

/// The name of a reception, which it has in common with no other of its case, and when it was heard.
[[nodiscard]] QString nameOf(int number);
[[nodiscard]] QString dateOf(int number);

/// The real main window on the folder of a case, and somebody who works with it.
class Session
{
public:
    /// Receptions are numbered from `first` on; the same seed does the same.
    Session(const QString &root, FileCalls &calls, Teller &teller, int first, quint32 seed);

    /// Starts the window and tells what it found.
    void start();

    /// A thing that somebody does with the window.
    struct Command
    {
        const char *name;
        void (Session::*run)();
    };
    [[nodiscard]] static const std::vector<Command> &commands();
    /// Does it and tells of it. Error messages are told and answered.
    void run(const Command &command);
    /// Does any of the commands.
    void runAny();

    [[nodiscard]] Form1 &form() { return *m_form; }
    /// True when the last command ended with an error message.
    [[nodiscard]] bool failed() const { return m_failed; }

    // commands.cpp: what changes the log
    void add();
    void update();
    void remove();
    void undoAndRedo();
    void importSpy();
    void importDx();
    void importAFile();
    void autoSearch();
    void distances();
    // commands_files.cpp: what writes other files, or none
    void exportTransmitters();
    void exportLog();
    void exportPages();
    void exportText();
    void exportShown();
    void setUp();
    void backUp();
    void search();
    void look();

private:
    template<typename Control>
    [[nodiscard]] Control *find(const QString &name) const
    {
        auto *control = m_form->findChild<Control *>(name);
        if (!control) {
            qFatal("the window has no %s", qPrintable(name));
        }
        return control;
    }
    void click(const QString &button);
    void trigger(const QString &action);
    void set(const QString &field, const QString &text);
    void type(const QString &name, const QString &date);
    /// Loads one of the receptions into the form; its name, or nothing when there is none.
    [[nodiscard]] QString choose();
    void intend(int number, const QByteArray &pi);
    void finish();
    void chooseFile(const QString &path);
    [[nodiscard]] QString dayOf(int number) const;

    QString m_root;
    FileCalls &m_calls;
    Teller &m_teller;
    int m_next;
    QRandomGenerator m_random;
    test::Opened m_opened;
    std::unique_ptr<Form1> m_form;
    std::unique_ptr<test::DialogAnswers> m_answers = std::make_unique<test::DialogAnswers>();
    bool m_failed = false;
};

} // namespace quillon::soak
