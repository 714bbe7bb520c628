#pragma once

#include "core/ui/form1.h"
#include "support/dialogs.h"
#include "support/testfiles.h"
#include "ui/grid.h"
#include "ui/resultlist.h"

#include <QStringList>
#include <QTest>

#include <functional>
#include <memory>

namespace quillon::test {

/// File calls of which one kind fails as long as the test wishes.
class FailingCalls : public FileCalls
{
public:
    int failOpen = 0; ///< errno of every attempt to make a file, 0 for none
    int failWrite = 0; ///< errno of every write
    int failSync = 0; ///< errno of every sync
    int failRename = 0; ///< errno of every renaming
    int failRemove = 0; ///< errno of every removal
    std::function<void(const QByteArray &to)> beforeRename; ///< sees each file before it is in its place

    int openNameless(const QByteArray &directory, mode_t mode) override;
    int openNew(const QByteArray &path, mode_t mode) override;
    ssize_t write(int file, QByteArrayView bytes) override;
    int sync(int file) override;
    int rename(const QByteArray &from, const QByteArray &to) override;
    int remove(const QByteArray &path) override;
};

/// The real main window on a directory of its own, its controls found by their names, driven by keys and
/// clicks.
class MainWindow
{
public:
    TestDirectory directory;
    TestDirectory look; ///< where the look of the windows is kept
    QString backupFolder; ///< where backups go; none are made without one
    DialogAnswers answers;
    FailingCalls calls;

    /// Loads and shows the window; a window that is open is closed first.
    void start();
    /// As start, on a directory that holds these three files; a null one is left out.
    void start(
        const QByteArray &logbook, const QByteArray &transmitters = {}, const QByteArray &countries = {});
    void stop();

    [[nodiscard]] Form1 &form() { return *m_form; }
    /// The control of this name; fails the run when there is none.
    template<typename Control>
    [[nodiscard]] Control *find(QAnyStringView name)
    {
        auto *control = m_form->findChild<Control *>(name.toString());
        if (!control) {
            qFatal("the window has no %s", qPrintable(name.toString()));
        }
        return control;
    }

    /// What a field or a label shows.
    [[nodiscard]] QString text(QAnyStringView name);
    /// The thirteen fields, as "NAME=text".
    [[nodiscard]] QStringList fields();
    /// The caption of a button without its mnemonic.
    [[nodiscard]] QString caption(QAnyStringView name);
    [[nodiscard]] bool enabled(QAnyStringView name);
    /// The names of those editable fields that are yellow.
    [[nodiscard]] QStringList yellow();

    /// Types over what a field holds, key by key, and leaves the focus there.
    void type(QAnyStringView name, const QString &text);
    /// Fills several fields: name, text, name, text ...
    void fill(const QStringList &namesAndTexts);
    void click(QAnyStringView button);
    /// Presses a key where the focus is.
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    void trigger(QAnyStringView action);

    [[nodiscard]] Grid &grid() { return *find<Grid>("Grid1"); }
    /// The cells of a row, joined by "|".
    [[nodiscard]] QString row(int row);
    /// The PI codes of all rows, top to bottom.
    [[nodiscard]] QStringList piCodes();
    void clickRow(int row);
    void clickHeading(int column);
    /// True when the row is wholly within the grid's view.
    [[nodiscard]] bool isRowVisible(int row);

    [[nodiscard]] ResultList &list() { return *find<ResultList>("List1"); }
    [[nodiscard]] QStringList resultLines();

    [[nodiscard]] QByteArray logbook() const { return directory.read(QStringLiteral("RDSLog.log")); }
    [[nodiscard]] QByteArray transmitterFile() const { return directory.read(QStringLiteral("tx.lst")); }
    /// The dated copies in the directory.
    [[nodiscard]] QStringList copies() const;

private:
    std::unique_ptr<Form1> m_form;
};

/// True when the text is a moment in UTC of the last few seconds, in the program's one form.
[[nodiscard]] bool isNow(const QString &text);

} // namespace quillon::test
