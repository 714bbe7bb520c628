#pragma once

#include "receptions.h"
#include "support/dialogs.h"
#include "support/opened.h"
#include "told.h"

#include <QRandomGenerator>
#include <QString>
#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

class QAbstractItemView;

namespace quillon::rdssignal {
struct SignalStation;
}

namespace quillon::standin {
class StandIn;
}

namespace quillon::soak {

/// Where the program keeps its backups by itself, when its state is kept below that folder.
[[nodiscard]] QString backupsBelow(const QString &root);

/// Somebody who works with a main window. Its parts are known by their names and as what the toolkit makes of
/// them, so that the window may be that of another program, into which this one was loaded.
class User
{
public:
    /// Receptions are numbered from `first` on; the same seed does the same.
    User(const QString &root, Teller &teller, int first, quint32 seed);

    /// Takes the window, which has read its files, and tells what it found.
    void workWith(QWidget &window);

    /// A thing that somebody does with the window.
    struct Command
    {
        const char *name;
        void (User::*run)();
        /// What it does to the log is one step, which is in memory even if it could not be stored.
        bool isOneStep = false;
    };
    [[nodiscard]] static const std::vector<Command> &commands();
    /// Does it and tells of it. Error messages are told and answered.
    void run(const Command &command);
    /// Receptions, and whatever else is made up, are numbered from `number` on.
    void numberFrom(int number) { m_next = number; }
    /// Does any of the commands.
    void runAny();

    /// True when the last command ended with an error message.
    [[nodiscard]] bool failed() const { return m_failed; }

    // commands.cpp: what is typed and chosen
    void add();
    void quickAdd();
    void update();
    void editMany();
    void remove();
    void removeMany();
    void undoAndRedo();
    void distances();
    void restore();
    // commands_import.cpp: what comes from elsewhere
    void importSpy();
    void importDx();
    void importAFile();
    void importWithRefused();
    void importToRefuse(); ///< leaves the window open
    void saveRefused();
    void importStations();
    void autoSearch();
    // commands_online.cpp: what the service knows, and what a receiver hears
    void takeOver();
    void upload();
    void logHeard();
    void logByItself();
    void keepReceiver();
    // commands_files.cpp: what writes other files, or none
    void exportTransmitters();
    void exportLog();
    void exportPages();
    void exportText();
    void exportShown();
    void setUp();
    void writeScratchPad();
    void backUp();
    void pictureStatistics();
    void saveCollection();
    void pictureCollection();
    void pictureMap();
    void search();
    void look();

protected:
    [[nodiscard]] const QString &root() const { return m_root; }

private:
    template<typename Control>
    [[nodiscard]] static Control *find(const QWidget &in, const QString &name)
    {
        auto *control = in.findChild<Control *>(name);
        if (!control) {
            qFatal("the window has no %s", qPrintable(name));
        }
        return control;
    }
    template<typename Control>
    [[nodiscard]] Control *find(const QString &name) const
    {
        return find<Control>(*m_window, name);
    }
    void click(const QString &button);
    static void click(const QWidget &in, const QString &button);
    void trigger(const QString &action);
    /// The window of that name, which the action opens.
    [[nodiscard]] QWidget *open(const QString &action, const QString &window);
    void set(const QString &field, const QString &text);
    void type(const QString &name, const QString &date);
    /// Loads one of the receptions into the form; its name, or nothing when there is none.
    [[nodiscard]] QString choose();
    /// Chooses several receptions in the grid; their names, or nothing when there are not as many.
    [[nodiscard]] QStringList chooseSome();
    [[nodiscard]] std::vector<int> rowsThatAreKept() const;
    [[nodiscard]] QString cell(int row, const QString &heading) const;
    void clickRow(int row, Qt::KeyboardModifiers keys);
    /// The fields of a reception of which no more is known; whoever adds one with more sets it.
    [[nodiscard]] static QByteArrayList fieldsOf(int number, const QByteArray &pi, const QByteArray &freq);
    /// Types one and stores it; its fields.
    QByteArrayList addOne();
    /// Ends the command as one that did not come to its work.
    void giveUp(const QByteArray &why);
    void finish();
    void chooseFile(const QString &path);
    void backUpFor(const QWidget &list);
    void saveOfCollection(const QString &button, const QString &file);
    [[nodiscard]] QByteArray fileOfReceptions(const QByteArray &moreLines);
    [[nodiscard]] QWidget *bringIn(const QByteArray &file);
    [[nodiscard]] quint16 portOfService() const;
    [[nodiscard]] bool serves(standin::StandIn &service);
    void chooseOption(const QString &caption);
    void setAutomaticLog(bool on);
    [[nodiscard]] static QByteArrayList fieldsHeard(int number, const QByteArray &freq);
    void listenTo(
        const rdssignal::SignalStation &station, bool byItself, const std::function<bool()> &isHeard);
    void connectReceiver(quint16 port);
    [[nodiscard]] bool waitUntil(const std::function<bool()> &isSo);

    QString m_root;
    Teller &m_teller;
    int m_next;
    QRandomGenerator m_random;
    test::Opened m_opened;
    QWidget *m_window = nullptr;
    QAbstractItemView *m_grid = nullptr;
    std::unique_ptr<test::DialogAnswers> m_answers = std::make_unique<test::DialogAnswers>();
    bool m_failed = false;
};

} // namespace quillon::soak
